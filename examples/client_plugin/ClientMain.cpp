// The entry point: the host's messages to the client, one function each.
#include <cstring>

#include "ClientSuites.h"
#include "DemoCommand.h"

namespace client {

namespace {

// What the host keeps for the client while its library is unloaded.
struct ClientGlobals {
  DWPluginRef pluginRef;
  DWMenuItemHandle demoItem;
  int32_t started;
};

ClientGlobals* gGlobals = nullptr;

constexpr const char* kGlobalsName = "Rasterize client globals";

bool is(const char* a, const char* b) { return std::strcmp(a, b) == 0; }

DWErr allocateGlobals(MessageHeader& header) {
  const void* table = nullptr;
  if (header.basicSuite->AcquireSuite(kDWBlocksSuite, kDWBlocksSuiteVersion, &table) != kDWNoErr) return kSuiteMissing;
  const auto* blocks = static_cast<const DWBlocksSuite*>(table);
  void* block = nullptr;
  const DWErr error = blocks->AllocateBlock(sizeof(ClientGlobals), kGlobalsName, &block);
  if (error == kDWNoErr) {
    gGlobals = static_cast<ClientGlobals*>(block);
    *gGlobals = ClientGlobals{};
    header.globals = gGlobals;
  }
  header.basicSuite->ReleaseSuite(kDWBlocksSuite, kDWBlocksSuiteVersion);
  return error;
}

void freeGlobals(MessageHeader& header) {
  const void* table = nullptr;
  if (header.basicSuite->AcquireSuite(kDWBlocksSuite, kDWBlocksSuiteVersion, &table) != kDWNoErr) return;
  if (static_cast<const DWBlocksSuite*>(table)->FreeBlock(gGlobals) == kDWNoErr) {
    gGlobals = nullptr;
    header.globals = nullptr;
  }
  header.basicSuite->ReleaseSuite(kDWBlocksSuite, kDWBlocksSuiteVersion);
}

// First load: a global block. Reload after an unload: the block comes back, the suites do not.
DWErr Reload(MessageHeader& header) {
  if (!header.globals) return allocateGlobals(header);
  gGlobals = static_cast<ClientGlobals*>(header.globals);
  if (!gGlobals->started) return kDWNoErr;
  if (const DWErr error = acquireHostSuites()) return error;
  rasterizeSuite();
  return kDWNoErr;
}

// The library goes away: everything it holds goes back, and the host keeps the block.
DWErr Unload(MessageHeader& header) {
  releaseRasterizeSuite();
  releaseHostSuites();
  header.globals = gGlobals;
  return kDWNoErr;
}

DWErr Startup(MessageHeader& header) {
  if (!gGlobals) return kSuiteMissing;
  if (const DWErr error = acquireHostSuites()) return error;
  gGlobals->pluginRef = header.pluginRef;
  const DWMenuItemData item = {"Document Utilities", "$$$/RasterizeClient/Menu/Demo=Rasterize Suite Demo"};
  if (const DWErr error = gSuites.menu->AddMenuItem(header.pluginRef, "Rasterize Suite Demo", &item, 0,
                                                    &gGlobals->demoItem))
    return error;
  // Not fatal when missing: the plug-in that adds it may start after this one.
  rasterizeSuite();
  gGlobals->started = 1;
  return kDWNoErr;
}

DWErr Shutdown(MessageHeader& header) {
  releaseRasterizeSuite();
  releaseHostSuites();
  if (gGlobals) freeGlobals(header);
  return kDWNoErr;
}

DWErr Menu(MenuMessage& message) {
  if (!gGlobals || message.menuItem != gGlobals->demoItem) return kDWNoErr;
  return RunRasterizeSuiteDemo();
}

}  // namespace

}  // namespace client

extern "C" __attribute__((visibility("default"))) DWErr PluginMain(const char* caller, const char* selector,
                                                                   void* message) {
  using namespace client;
  if (!caller || !selector || !message) return kBadParameter;
  auto& header = *static_cast<MessageHeader*>(message);
  // Every message brings the basic suite to use while it runs.
  gSuites.basic = header.basicSuite;
  // Nothing may be thrown back into the host.
  try {
    if (is(caller, kDWAccessCaller) && is(selector, kDWReloadSelector)) return Reload(header);
    if (is(caller, kDWAccessCaller) && is(selector, kDWUnloadSelector)) return Unload(header);
    if (is(caller, kDWInterfaceCaller) && is(selector, kDWStartupSelector)) return Startup(header);
    if (is(caller, kDWInterfaceCaller) && is(selector, kDWShutdownSelector)) return Shutdown(header);
    if (is(caller, kDWMenuCaller) && is(selector, kDWMenuGoSelector)) return Menu(*static_cast<MenuMessage*>(message));
    return kDWNoErr;
  } catch (...) {
    return kOutOfMemory;
  }
}
