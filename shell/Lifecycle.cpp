#include "shell/Lifecycle.h"

#include "basic_thread_cache.h"
#include "commands/Actions.h"
#include "commands/LiveEffect.h"
#include "commands/MenuCommand.h"
#include "commands/RasterizeSuite.h"
#include "shell/ErrorCodes.h"
#include "shell/HostSuites.h"
#include "shell/Interactive.h"
#include "shell/PluginGlobals.h"

namespace dw {

namespace {

// Held from reload to unload; a failure is not reported (playback and recording then do nothing).
void acquireActionSuite(const MessageHeader& message) {
  if (!message.basicSuite) return;
  const void* suite = nullptr;
  if (message.basicSuite->AcquireSuite(kDWActionManagerSuite, kDWActionManagerSuiteVersion, &suite) == kDWNoErr)
    gSuites.actionManager = static_cast<const DWActionManagerSuite*>(suite);
  else
    gSuites.actionManager = nullptr;
}

void releaseActionSuite(const MessageHeader& message) {
  if (message.basicSuite && gSuites.actionManager)
    message.basicSuite->ReleaseSuite(kDWActionManagerSuite, kDWActionManagerSuiteVersion);
  gSuites.actionManager = nullptr;
}

void allocateGlobals(MessageHeader& message) {
  const auto* blocks = acquireSuiteAs<DWBlocksSuite>(kDWBlocksSuite, kDWBlocksSuiteVersion);
  if (!blocks) return;
  void* block = nullptr;
  if (blocks->AllocateBlock(sizeof(PluginGlobals), kGlobalsBlockName, &block) == kDWNoErr && block) {
    gGlobals = static_cast<PluginGlobals*>(block);
    message.globals = block;
  }
  releaseSuite(kDWBlocksSuite, kDWBlocksSuiteVersion);
}

DWErr nameThePlugin(DWPluginRef plugin) {
  const auto* plugins = acquireSuiteAs<DWPluginsSuite>(kDWPluginsSuite, kDWPluginsSuiteVersion);
  if (!plugins) return SuiteMissingError;
  const DWErr result = plugins->SetPluginName(plugin, kPluginName);
  releaseSuite(kDWPluginsSuite, kDWPluginsSuiteVersion);
  return result;
}

DWErr setPluginOptionBit(DWPluginRef plugin) {
  uint32_t options = 0;
  if (DWErr result = gSuites.plugin->GetPluginOptions(plugin, &options)) return result;
  return gSuites.plugin->SetPluginOptions(plugin, options | kPluginOptionBit);
}

}  // namespace

DWErr ReloadPlugin(MessageHeader& message) {
  if (message.globals) {
    gGlobals = static_cast<PluginGlobals*>(message.globals);
    if (DWErr result = AcquireRequiredSuites()) return result;
    AcquireOptionalSuites();
    // The library may sit at another address now: the host's copy of the table must point here.
    fillRasterizeSuite(gGlobals->rasterizeSuite);
    acquireActionSuite(message);
    return kDWNoErr;
  }
  allocateGlobals(message);
  acquireActionSuite(message);
  return kDWNoErr;
}

DWErr UnloadPlugin(MessageHeader& message) {
  message.globals = gGlobals;
  if (gGlobals) {
    clearRasterizeSuite(gGlobals->rasterizeSuite);
    ReleaseRequiredSuites();
    ReleaseOptionalSuites();
  }
  releaseActionSuite(message);
  return kDWNoErr;
}

DWErr StartupPlugin(MessageHeader& message) {
  if (DWErr result = AcquireRequiredSuites()) return result;
  // Every later step keeps its state in the block; a host that could not give one gets a clear
  // failure rather than a half-registered plug-in.
  if (!gGlobals) return OutOfMemoryError;
  gGlobals->pluginRef = message.pluginRef;
  const DWPluginRef plugin = gGlobals->pluginRef;

  if (DWErr result = nameThePlugin(plugin)) return result;
  if (DWErr result = setPluginOptionBit(plugin)) return result;
  if (DWErr result = RegisterRasterizeEffect(message)) return result;
  if (hostIsInteractive()) {
    if (DWErr result = InstallRasterizeMenu(message)) return result;
  }
  if (DWErr result = AddRasterizeSuite(message)) return result;

  // The reference taken at reload is dropped without a release; registration takes its own.
  gSuites.actionManager = nullptr;
  if (hostIsInteractive()) RegisterActions(message);

  return gSuites.notifier->AddNotifier(plugin, kAppStartedNotifierName, kDWApplicationStartedNotifier, nullptr);
}

DWErr ShutdownPlugin(MessageHeader& message) {
  if (gGlobals) {
    const auto* blocks = acquireSuiteAs<DWBlocksSuite>(kDWBlocksSuite, kDWBlocksSuiteVersion);
    if (blocks) {
      if (blocks->FreeBlock(gGlobals) == kDWNoErr) {
        gGlobals = nullptr;
        message.globals = nullptr;
      }
      releaseSuite(kDWBlocksSuite, kDWBlocksSuiteVersion);
    }
  }
  if (hostIsInteractive() && gSuites.actionManager && message.basicSuite) {
    message.basicSuite->ReleaseSuite(kDWActionManagerSuite, kDWActionManagerSuiteVersion);
    gSuites.actionManager = nullptr;
  }
  // Parked workers run code of this library: they must be gone before the host unloads it.
  basic::clear_thread_cache();
  return kDWNoErr;
}

}  // namespace dw
