// Reload, unload and shut-down against the fake host: what each writes back and what it holds.
#include <gtest/gtest.h>

#include <cstring>

#include "commands/RasterizeSuite.h"
#include "settings/RasterizeSettings.h"
#include "shell/ErrorCodes.h"
#include "shell/HostSuites.h"
#include "shell/Lifecycle.h"
#include "shell/PluginGlobals.h"
#include "tests/shell/FakeHost.h"

namespace {

bool tableFilled(const DWRasterizeSuite& table) {
  const void* const* slots = reinterpret_cast<const void* const*>(&table);
  for (size_t i = 0; i < sizeof table / sizeof(void*); ++i)
    if (!slots[i]) return false;
  return true;
}

bool tableEmpty(const DWRasterizeSuite& table) {
  DWRasterizeSuite empty = {};
  return std::memcmp(&table, &empty, sizeof table) == 0;
}

TEST(Lifecycle, FirstReloadObtainsTheGlobalBlockAndTheActionSuite) {
  FakeHost host;
  MessageHeader message = host.header();
  EXPECT_EQ(dw::ReloadPlugin(message), dw::NoError);
  ASSERT_NE(message.globals, nullptr);
  EXPECT_EQ(message.globals, dw::gGlobals);
  EXPECT_EQ(host.blockNames, std::vector<std::string>{"Rasterize plugin globals"});
  EXPECT_EQ(host.held["QK Blocks Suite"], 0);
  EXPECT_NE(dw::gSuites.actionManager, nullptr);
  EXPECT_EQ(dw::gSuites.art, nullptr) << "required suites wait for start-up";
}

TEST(Lifecycle, FirstReloadWithoutBlocksStillSucceeds) {
  FakeHost host;
  host.missing.insert("QK Blocks Suite");
  MessageHeader message = host.header();
  EXPECT_EQ(dw::ReloadPlugin(message), dw::NoError);
  EXPECT_EQ(message.globals, nullptr);
  EXPECT_EQ(dw::gGlobals, nullptr);
  EXPECT_NE(dw::gSuites.actionManager, nullptr);
}

TEST(Lifecycle, StartupWithoutAGlobalBlockFailsClearly) {
  FakeHost host;
  MessageHeader message = host.header();
  EXPECT_EQ(dw::StartupPlugin(message), dw::OutOfMemoryError);
}

TEST(Lifecycle, UnloadThenReloadRefillsTheTableAndKeepsTheBlock) {
  FakeHost host;
  MessageHeader first = host.header();
  ASSERT_EQ(dw::ReloadPlugin(first), dw::NoError);
  ASSERT_EQ(dw::AcquireRequiredSuites(), dw::NoError);
  dw::PluginGlobals* globals = dw::gGlobals;
  dw::fillRasterizeSuite(globals->rasterizeSuite);
  globals->commandSettings = dw::makeCommandDefaults();
  globals->commandSettings.resolution = 150.0;

  MessageHeader unload = host.header();
  EXPECT_EQ(dw::UnloadPlugin(unload), dw::NoError);
  EXPECT_EQ(unload.globals, globals);
  EXPECT_TRUE(tableEmpty(globals->rasterizeSuite));
  for (const auto& entry : host.held) EXPECT_EQ(entry.second, 0) << entry.first;
  EXPECT_EQ(dw::gSuites.actionManager, nullptr);

  // The library is gone and comes back with fresh statics; only the host's block remains.
  dw::gSuites = dw::HostSuites{};
  dw::gSuites.basic = host.basic();
  dw::gGlobals = nullptr;
  MessageHeader reload = host.header(globals);
  EXPECT_EQ(dw::ReloadPlugin(reload), dw::NoError);
  EXPECT_EQ(dw::gGlobals, globals);
  EXPECT_TRUE(tableFilled(globals->rasterizeSuite));
  EXPECT_EQ(globals->commandSettings.resolution, 150.0);
  EXPECT_NE(dw::gSuites.art, nullptr);
  EXPECT_NE(dw::gSuites.perspectiveTransform, nullptr) << "optional suites come back at every reload";
  EXPECT_NE(dw::gSuites.actionManager, nullptr);
}

TEST(Lifecycle, ReloadWhoseRequiredSuitesAreMissingChangesNothingElse) {
  FakeHost host;
  dw::PluginGlobals globals = {};
  host.missing.insert("DW Undo Suite");
  MessageHeader reload = host.header(&globals);
  EXPECT_EQ(dw::ReloadPlugin(reload), dw::SuiteMissingError);
  EXPECT_TRUE(tableEmpty(globals.rasterizeSuite));
  EXPECT_EQ(dw::gSuites.actionManager, nullptr);
  EXPECT_EQ(host.acquisitionsOf("DW Action Manager Suite"), 0);
  EXPECT_EQ(host.acquisitionsOf("DW Perspective Transform Suite"), 0);
  for (const auto& entry : host.held) EXPECT_EQ(entry.second, 0) << entry.first;
}

TEST(Lifecycle, ShutdownFreesTheBlockAndTheLastUnloadFindsNone) {
  FakeHost host;
  MessageHeader first = host.header();
  ASSERT_EQ(dw::ReloadPlugin(first), dw::NoError);
  ASSERT_EQ(dw::AcquireRequiredSuites(), dw::NoError);

  MessageHeader shutdown = host.header(first.globals);
  EXPECT_EQ(dw::ShutdownPlugin(shutdown), dw::NoError);
  EXPECT_EQ(shutdown.globals, nullptr);
  EXPECT_EQ(dw::gGlobals, nullptr);
  EXPECT_TRUE(host.liveBlocks.empty());
  EXPECT_EQ(host.held["DW Action Manager Suite"], 0);
  EXPECT_EQ(host.held["DW Art Suite"], 1) << "required suites stay until the last unload";

  host.events.clear();
  MessageHeader last = host.header();
  EXPECT_EQ(dw::UnloadPlugin(last), dw::NoError);
  EXPECT_EQ(last.globals, nullptr);
  EXPECT_TRUE(host.events.empty()) << "without a block the last unload releases nothing";
}

TEST(Lifecycle, ShutdownWhoseBlockCannotBeFreedKeepsIt) {
  FakeHost host;
  MessageHeader first = host.header();
  ASSERT_EQ(dw::ReloadPlugin(first), dw::NoError);
  host.freeFails = true;
  MessageHeader shutdown = host.header(first.globals);
  EXPECT_EQ(dw::ShutdownPlugin(shutdown), dw::NoError);
  EXPECT_EQ(shutdown.globals, first.globals);
  EXPECT_EQ(dw::gGlobals, first.globals);
}

TEST(Lifecycle, NonInteractiveShutdownKeepsTheActionSuite) {
  FakeHost host;
  host.interactive = false;
  MessageHeader first = host.header();
  ASSERT_EQ(dw::ReloadPlugin(first), dw::NoError);
  ASSERT_EQ(dw::AcquireRequiredSuites(), dw::NoError);
  MessageHeader shutdown = host.header(first.globals);
  EXPECT_EQ(dw::ShutdownPlugin(shutdown), dw::NoError);
  EXPECT_EQ(host.held["DW Action Manager Suite"], 1);
  MessageHeader last = host.header();
  EXPECT_EQ(dw::UnloadPlugin(last), dw::NoError);
  EXPECT_EQ(host.held["DW Action Manager Suite"], 0) << "the last unload drops it";
}

}  // namespace
