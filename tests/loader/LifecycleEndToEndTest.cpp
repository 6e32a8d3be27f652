// The real plug-in's life cycle in the reference host: message order, what survives an unload,
// missing suites, a host without a user interface, and failures injected into start-up.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <string>
#include <vector>

#include "host/all_suites.h"
#include "settings/RasterizeSettings.h"
#include "shell/HostSuites.h"
#include "tests/loader/PluginUnderTest.h"

namespace {

using refhost::Host;
using refhost::Plugin;

std::vector<std::string> messages(const Host& host) {
  std::vector<std::string> out;
  for (const auto& m : host.messageLog())
    out.push_back(m.caller + "/" + (m.notifierType.empty() ? m.selector : m.notifierType) +
                  (m.result ? " -> " + refhost::formatCode(m.result) : ""));
  return out;
}

// The required suites by the plug-in's own table: the host must give each back.
std::vector<std::pair<std::string, int32_t>> requiredSuites() {
  std::vector<std::pair<std::string, int32_t>> out;
  const dw::SuiteTable table = dw::requiredSuiteTable();
  for (size_t i = 0; i < table.count; ++i) out.emplace_back(table.rows[i].name, table.rows[i].version);
  return out;
}

bool rasterizeTableFilled(const DWRasterizeSuite& table) {
  const void* const* slots = reinterpret_cast<const void* const*>(&table);
  for (size_t i = 0; i < sizeof table / sizeof(void*); ++i)
    if (!slots[i]) return false;
  return true;
}

bool rasterizeTableEmpty(const DWRasterizeSuite& table) {
  const DWRasterizeSuite empty = {};
  return std::memcmp(&table, &empty, sizeof table) == 0;
}

TEST(LifecycleEndToEnd, MessagesArriveInTheHostsOrder) {
  Host host;
  Plugin& plugin = host.launchPlugin(kPluginPath);
  EXPECT_EQ(host.notifyApplicationStarted(), 0);
  EXPECT_EQ(host.unloadPlugin(plugin), 0);
  EXPECT_EQ(host.reloadPlugin(plugin), 0);
  EXPECT_EQ(host.shutdownPlugin(plugin), 0);
  EXPECT_EQ(messages(host), (std::vector<std::string>{
                                "QK Access/Reload", "QK Interface/Startup", "DW Notifier/DW Application Started Notifier",
                                "QK Access/Unload", "QK Access/Reload", "QK Interface/Shutdown", "QK Access/Unload"}));
  EXPECT_EQ(plugin.state(), Plugin::State::Ended);
  EXPECT_FALSE(plugin.isMapped());
}

// After shut-down the plug-in keeps its suites until its library goes: the last unload drops
// only the action suite. The host takes back the rest, and nothing else is left behind.
TEST(LifecycleEndToEnd, TheLastUnloadLeavesNothingBehind) {
  Host host;
  Plugin& plugin = host.launchPlugin(kPluginPath);
  host.notifyApplicationStarted();
  ASSERT_EQ(host.shutdownPlugin(plugin), 0);

  std::vector<std::string> expected;
  for (const auto& suite : requiredSuites()) expected.push_back(suite.first);
  expected.push_back(kDWPerspectiveTransformSuite);
  expected.push_back(kDWUsageDataSuite);
  // The reference taken at the first reload, dropped at start-up without a release.
  expected.push_back(kDWActionManagerSuite);
  std::sort(expected.begin(), expected.end());
  std::vector<std::string> reclaimed = plugin.reclaimedSuites();
  std::sort(reclaimed.begin(), reclaimed.end());
  EXPECT_EQ(reclaimed, expected);

  for (const refhost::RegisteredSuite* suite : host.suites().all()) EXPECT_EQ(suite->held, 0) << suite->name;
  EXPECT_EQ(plugin.globals(), nullptr);
  EXPECT_EQ(host.memory().outstandingBlocks(), 0u) << "the global block is freed by the plug-in";
  EXPECT_EQ(host.strings().live(), 0u) << "every host string was disposed";
  EXPECT_EQ(host.suites().find(kDWRasterizeSuite, kDWRasterizeSuiteVersion), nullptr)
      << "a plug-in's suites leave with it";
}

TEST(LifecycleEndToEnd, UnloadAndReloadKeepTheBlockAndRefillTheExportedTable) {
  Host host;
  Plugin& plugin = host.launchPlugin(kPluginPath);
  host.notifyApplicationStarted();
  dw::PluginGlobals& globals = globalsOf(plugin);
  EXPECT_TRUE(sameSettings(globals.commandSettings, dw::makeCommandDefaults(globals.commandSettings.reserved,
                                                                          globals.commandSettings.forEffect)));
  // As the command's dialog would leave them.
  globals.commandSettings.resolution = 150.0;
  globals.commandSettings.createClippingMask = 1;
  const RasterizeSettings command = globals.commandSettings;
  const RasterizeSettings effect = globals.effectDefaults;

  const refhost::RegisteredSuite* exported = host.suites().find(kDWRasterizeSuite, kDWRasterizeSuiteVersion);
  ASSERT_NE(exported, nullptr);
  EXPECT_EQ(exported->table, &globals.rasterizeSuite);
  EXPECT_TRUE(rasterizeTableFilled(globals.rasterizeSuite));

  void* block = plugin.globals();
  ASSERT_EQ(host.unloadPlugin(plugin), 0);
  EXPECT_EQ(plugin.globals(), block);
  EXPECT_TRUE(rasterizeTableEmpty(globals.rasterizeSuite)) << "no entry may point into an unloaded library";
  for (const auto& suite : requiredSuites())
    EXPECT_EQ(host.suites().held(suite.first, suite.second), 0) << suite.first;

  ASSERT_EQ(host.reloadPlugin(plugin), 0);
  EXPECT_EQ(plugin.globals(), block);
  EXPECT_EQ(host.suites().find(kDWRasterizeSuite, kDWRasterizeSuiteVersion)->table, &globals.rasterizeSuite)
      << "a client keeps the same table address";
  EXPECT_TRUE(rasterizeTableFilled(globals.rasterizeSuite));
  EXPECT_TRUE(sameSettings(globals.commandSettings, command));
  EXPECT_TRUE(sameSettings(globals.effectDefaults, effect));
  for (const auto& suite : requiredSuites())
    EXPECT_EQ(host.suites().held(suite.first, suite.second), 1) << suite.first;

  // A client calling through the refilled table reaches the library, whatever the function answers.
  DWBool canPreserve = 7;
  globals.rasterizeSuite.CanPreserveSpotColors(nullptr, &canPreserve);
  EXPECT_EQ(canPreserve, 0);
  EXPECT_EQ(host.shutdownPlugin(plugin), 0);
}

// Each required suite in turn is withheld: start-up answers 'S!Fd', gives back what it took and
// leaves nothing registered.
TEST(LifecycleEndToEnd, AnyMissingRequiredSuiteFailsStartupCleanly) {
  const auto required = requiredSuites();
  for (size_t k = 0; k < required.size(); ++k) {
    Host host;
    host.controls().withholdSuite(required[k].first);
    const std::string name = "without " + required[k].first;
    Plugin& plugin = host.loadPlugin(kPluginPath);
    EXPECT_EQ(host.startPlugin(plugin), kSuiteMissing) << name;
    for (const auto& suite : required)
      EXPECT_EQ(host.suites().held(suite.first, suite.second), 0) << name << ": " << suite.first;
    EXPECT_EQ(messages(host), (std::vector<std::string>{"QK Access/Reload", "QK Interface/Startup -> 'S!Fd'",
                                                        "QK Access/Unload"}))
        << name;
    EXPECT_EQ(plugin.state(), Plugin::State::Ended) << name;
    EXPECT_TRUE(plugin.reclaimedSuites().empty()) << name << ": the plug-in gave everything back itself";
    EXPECT_TRUE(host.registrations().menuItems().empty()) << name;
    EXPECT_TRUE(host.registrations().liveEffects().empty()) << name;
    EXPECT_EQ(host.memory().outstandingBlocks(), 0u) << name;
  }
}

TEST(LifecycleEndToEnd, TheTenthSuiteMissingLeavesTheFirstNineReleased) {
  const auto required = requiredSuites();
  Host host;
  host.controls().withholdSuite("DW Blend Style Suite");
  Plugin& plugin = host.loadPlugin(kPluginPath);
  // The first reload already used "QK Blocks Suite"; count start-up's acquisitions only.
  std::vector<int64_t> before;
  for (const auto& suite : required) before.push_back(host.suites().find(suite.first, suite.second)->acquisitions);
  EXPECT_EQ(host.startPlugin(plugin), kSuiteMissing);
  for (size_t i = 0; i < required.size(); ++i) {
    const refhost::RegisteredSuite* suite = host.suites().find(required[i].first, required[i].second);
    EXPECT_EQ(suite->acquisitions - before[i], i < 9 ? 1 : 0) << required[i].first;
    EXPECT_EQ(suite->held, 0) << required[i].first;
  }
  EXPECT_TRUE(plugin.reclaimedSuites().empty());
}

TEST(LifecycleEndToEnd, WithoutAUserInterfaceNoMenusOrActionsAreInstalled) {
  Host host;
  host.controls().interactive = false;
  Plugin& plugin = host.launchPlugin(kPluginPath);
  host.notifyApplicationStarted();
  EXPECT_TRUE(host.registrations().menuItems().empty());
  for (const auto* group : host.registrations().menuGroups()) EXPECT_EQ(group->owner, nullptr) << group->name;
  EXPECT_TRUE(host.actions().events().empty());
  // The effect, its style name, the exported suite and the notifier are still there.
  ASSERT_EQ(host.registrations().liveEffects().size(), 1u);
  EXPECT_TRUE(host.registrations().liveEffects()[0]->menuItems.empty());
  EXPECT_EQ(host.registrations().liveEffects()[0]->styleNames.size(), 1u);
  EXPECT_NE(host.suites().find(kDWRasterizeSuite, kDWRasterizeSuiteVersion), nullptr);
  EXPECT_EQ(host.registrations().notifiers().size(), 1u);

  // Menu and action messages are not for a host without a user interface: answered 0, unhandled.
  MenuMessage menu = {};
  EXPECT_EQ(host.send(plugin, kDWMenuCaller, kDWMenuGoSelector, menu), 0);
  DoActionMessage action = {};
  action.eventValue = 1;
  EXPECT_EQ(host.send(plugin, kDWActionCaller, kDWDoActionSelector, action), 0);
  EXPECT_EQ(host.shutdownPlugin(plugin), 0);
}

TEST(LifecycleEndToEnd, OptionalSuitesMissingAtStartAreTakenWhenTheApplicationHasStarted) {
  Host host;
  host.controls().withholdSuite(kDWPerspectiveTransformSuite);
  Plugin& plugin = host.launchPlugin(kPluginPath);
  EXPECT_EQ(host.notifyApplicationStarted(), kSuiteMissing) << "the notification reports the missing suite";
  EXPECT_EQ(host.suites().held(kDWPerspectiveTransformSuite, kDWPerspectiveTransformSuiteVersion), 0);
  EXPECT_EQ(host.suites().held(kDWUsageDataSuite, kDWUsageDataSuiteVersion), 0);

  host.controls().restoreSuite(kDWPerspectiveTransformSuite);
  EXPECT_EQ(host.notifyApplicationStarted(), 0);
  EXPECT_EQ(host.suites().held(kDWPerspectiveTransformSuite, kDWPerspectiveTransformSuiteVersion), 1);
  EXPECT_EQ(host.suites().held(kDWUsageDataSuite, kDWUsageDataSuiteVersion), 1);
  EXPECT_EQ(host.shutdownPlugin(plugin), 0);
}

TEST(LifecycleEndToEnd, AHostStringFailureComesBackAsItsCode) {
  // The effect's title goes through a host string; its failure is thrown inside the plug-in and
  // must come back through PluginMain as the host's code.
  constexpr DWErr kInjected = refhost::hostCode("TEST");
  Host host;
  Plugin& plugin = host.loadPlugin(kPluginPath);
  host.controls().failCall(1, kInjected, kDWUnicodeStringSuite, "NewFromLocalizable");
  EXPECT_EQ(host.startPlugin(plugin), kInjected);
  EXPECT_TRUE(host.controls().failureDelivered());
  EXPECT_EQ(plugin.state(), Plugin::State::Ended);
}

// Every host call of a start-up fails once in turn. Start-up either goes on (a failure it is
// allowed to ignore) or answers the injected code or 'S!Fd'; the plug-in never crashes, and
// whatever happens, shut-down leaves no host memory, string or suite behind.
TEST(LifecycleEndToEnd, EveryFailingHostCallDuringStartupIsHandled) {
  constexpr DWErr kInjected = refhost::hostCode("TEST");
  uint64_t calls = 0;
  {
    Host host;
    Plugin& plugin = host.loadPlugin(kPluginPath);
    const uint64_t before = host.controls().callCount();
    ASSERT_EQ(host.startPlugin(plugin), 0);
    calls = host.controls().callCount() - before;
  }
  ASSERT_GT(calls, 50u);
  for (uint64_t n = 1; n <= calls; ++n) {
    Host host;
    Plugin& plugin = host.loadPlugin(kPluginPath);
    host.controls().failCall(n, kInjected);
    host.controls().traceCalls(true);
    const DWErr result = host.startPlugin(plugin);
    const std::string failed = host.controls().calls().at(n - 1);
    const std::string name = "call " + std::to_string(n) + " (" + failed + ") fails: " + refhost::formatCode(result);
    EXPECT_TRUE(result == 0 || result == kInjected || result == kSuiteMissing) << name;
    if (result == 0) host.shutdownPlugin(plugin);
    host.controls().clearFailure();
    EXPECT_EQ(host.memory().outstandingBlocks(), 0u) << name;
    EXPECT_EQ(host.strings().live(), 0u) << name;
    for (const refhost::RegisteredSuite* suite : host.suites().all())
      EXPECT_EQ(suite->held, 0) << name << ": " << suite->name;
  }
}

}  // namespace
