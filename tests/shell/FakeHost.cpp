#include "tests/shell/FakeHost.h"

#include <algorithm>
#include <cstdlib>
#include <stdexcept>

#include "shell/HostSuites.h"
#include "shell/PluginGlobals.h"

namespace {

FakeHost* gHost = nullptr;
constexpr DWErr kMissing = 0x4E4F5045;  // 'NOPE'

DWErr acquire(const char* name, int32_t, const void** suite) {
  FakeHost& host = FakeHost::current();
  host.events.push_back(std::string("acquire ") + name);
  *suite = nullptr;
  if (host.missing.count(name)) return kMissing;
  ++host.held[name];
  *suite = host.dummyTable(name);
  return kDWNoErr;
}

DWErr release(const char* name, int32_t) {
  FakeHost& host = FakeHost::current();
  host.events.push_back(std::string("release ") + name);
  --host.held[name];
  return kDWNoErr;
}

const DWBasicSuite kBasic = {acquire, release};

DWBool isInteractive() {
  ++FakeHost::current().interactiveQueries;
  return FakeHost::current().interactive;
}
uint32_t memoryFigure() { return 1u << 30; }
const DWRuntimeSuite kRuntime = {isInteractive, memoryFigure};

DWErr allocateBlock(size_t size, const char* name, void** block) {
  *block = std::calloc(size, 1);
  FakeHost::current().blockNames.push_back(name);
  FakeHost::current().liveBlocks.push_back(*block);
  return kDWNoErr;
}

DWErr freeBlock(void* block) {
  FakeHost& host = FakeHost::current();
  if (host.freeFails) return kMissing;
  auto found = std::find(host.liveBlocks.begin(), host.liveBlocks.end(), block);
  if (found == host.liveBlocks.end()) return kMissing;
  host.liveBlocks.erase(found);
  std::free(block);
  return kDWNoErr;
}
const DWBlocksSuite kBlocks = {allocateBlock, freeBlock};

}  // namespace

FakeHost::FakeHost() {
  if (gHost) throw std::logic_error("one FakeHost at a time");
  gHost = this;
  dw::gSuites = dw::HostSuites{};
  dw::gGlobals = nullptr;
  // As if the dispatcher had stored it from the message being handled.
  dw::gSuites.basic = &kBasic;
}

FakeHost::~FakeHost() {
  for (void* block : liveBlocks) std::free(block);
  dw::gSuites = dw::HostSuites{};
  dw::gGlobals = nullptr;
  gHost = nullptr;
}

FakeHost& FakeHost::current() { return *gHost; }

const DWBasicSuite* FakeHost::basic() const { return &kBasic; }

MessageHeader FakeHost::header(void* globals) const {
  MessageHeader header = {};
  header.pluginRef = reinterpret_cast<DWPluginRef>(0x1000);
  header.globals = globals;
  header.basicSuite = &kBasic;
  return header;
}

int FakeHost::acquisitionsOf(const std::string& name) const {
  return int(std::count(events.begin(), events.end(), "acquire " + name));
}

const void* FakeHost::dummyTable(const std::string& name) {
  if (name == kDWRuntimeSuite) return &kRuntime;
  if (name == kDWBlocksSuite) return &kBlocks;
  // Never called through: big enough for any suite, distinct per name.
  auto& table = dummies_[name];
  table.resize(64 * sizeof(void*));
  return table.data();
}
