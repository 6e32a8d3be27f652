// What the real plug-in registers with the reference host at start-up.
#include <gtest/gtest.h>

#include <array>
#include <string>
#include <vector>

#include "host/all_suites.h"
#include "settings/RasterizeSettings.h"
#include "tests/loader/PluginUnderTest.h"

namespace {

using refhost::Host;
using refhost::Plugin;

const refhost::MenuItemRecord* item(const Host& host, const std::string& name) {
  for (const auto* record : const_cast<Host&>(host).registrations().menuItems())
    if (record->name == name) return record;
  return nullptr;
}

class Registration : public ::testing::Test {
 protected:
  void SetUp() override {
    plugin = &host.loadPlugin(kPluginPath);
    // Bits the host had set before start-up must survive.
    host.setPluginOptions(*plugin, 0x100);
    ASSERT_EQ(host.startPlugin(*plugin), 0);
  }
  Host host;
  Plugin* plugin = nullptr;
};

TEST_F(Registration, NamesItselfAndSetsItsOptionBit) {
  EXPECT_EQ(plugin->name(), "Rasterize 8");
  EXPECT_EQ(plugin->options(), 0x102u);
  EXPECT_EQ(globalsOf(*plugin).pluginRef, plugin->ref());
}

TEST_F(Registration, TheRasterizeMenuItemSitsInItsOwnGroup) {
  const refhost::MenuGroupRecord* group = host.registrations().findMenuGroup("DWPlugin Object Raster");
  ASSERT_NE(group, nullptr);
  EXPECT_EQ(group->nearGroup, "Object Utilities");
  EXPECT_EQ(group->owner, plugin);

  const refhost::MenuItemRecord* command = item(host, "Rasterize 8 menu item");
  ASSERT_NE(command, nullptr);
  EXPECT_EQ(command->group, "DWPlugin Object Raster");
  EXPECT_EQ(command->text, "$$$/Rasterize/Str/MenuItemName=Rasteri&ze...");
  EXPECT_EQ(refhost::menuDisplayText(host.strings().localize(command->text)), "Rasterize...");
  EXPECT_EQ(command->options, 0x3C000000u);
  EXPECT_TRUE(command->autoEnable);
  EXPECT_EQ(command->enableAction, 1);
  EXPECT_EQ(command->enableMasks, (std::array<uint32_t, 6>{0, 0, 0xFFFFFFFFu, 0, 0, 0}));
  EXPECT_EQ(reinterpret_cast<const void*>(globalsOf(*plugin).rasterizeMenuItem), command);
}

TEST_F(Registration, TheEffectComesWithItsMenuEntriesAndStyleName) {
  ASSERT_EQ(host.registrations().liveEffects().size(), 1u);
  const refhost::LiveEffectRecord& effect = *host.registrations().liveEffects()[0];
  EXPECT_EQ(effect.name, "Corvel Rasterize");
  EXPECT_EQ(effect.title, "Rasterize") << "the localised title";
  EXPECT_EQ(effect.majorVersion, 1);
  EXPECT_EQ(effect.minorVersion, 0);
  EXPECT_EQ(effect.inputOptions, 0x2FFFFu);
  EXPECT_EQ(effect.styleOptions, 0x40002u);
  EXPECT_EQ(reinterpret_cast<const void*>(globalsOf(*plugin).effectHandle), &effect);

  ASSERT_EQ(effect.menuItems.size(), 1u);
  EXPECT_EQ(effect.menuItems[0]->name, "Rasterize");
  EXPECT_EQ(effect.menuItems[0]->group, "Effects") << "the host chooses the group";
  EXPECT_EQ(refhost::menuDisplayText(host.strings().localize(effect.menuItems[0]->text)), "Rasterize...");
  EXPECT_EQ(effect.menuItems[0]->options, 0xF0000000u);

  ASSERT_EQ(effect.styleNames.size(), 1u);
  EXPECT_EQ(effect.styleNames[0].name, "DW Auto Rasterize");
  EXPECT_EQ(effect.styleNames[0].kinds, 0xFFFFu);
  EXPECT_EQ(effect.styleNames[0].options, 0x100u);

  const refhost::MenuItemRecord* separator = item(host, "-");
  ASSERT_NE(separator, nullptr);
  EXPECT_EQ(separator->group, "Effects Misc");
  const refhost::MenuItemRecord* settings = item(host, "Live Rasterize Effect Setting");
  ASSERT_NE(settings, nullptr);
  EXPECT_EQ(settings->group, "Effects Misc");
  EXPECT_EQ(refhost::menuDisplayText(host.strings().localize(settings->text)), "Document Raster Effects Settings...");
  EXPECT_EQ(settings->enableMasks, (std::array<uint32_t, 6>{0, 0, 0, 0, 0x40, 0}));
  EXPECT_EQ(reinterpret_cast<const void*>(globalsOf(*plugin).settingsMenuItem), settings);
}

TEST_F(Registration, DefaultsAreSetForTheCommandAndTheEffect) {
  const dw::PluginGlobals& globals = globalsOf(*plugin);
  const RasterizeSettings& command = globals.commandSettings;
  EXPECT_EQ(command.type, 0);
  EXPECT_EQ(command.resolution, 300.0);
  EXPECT_EQ(command.antialiasing, 4);
  EXPECT_EQ(command.options, 0x300u);
  EXPECT_EQ(command.preserveSpotColors, 1);
  EXPECT_EQ(command.createClippingMask, 0);
  EXPECT_EQ(command.padding, 0.0);
  const RasterizeSettings& effect = globals.effectDefaults;
  EXPECT_EQ(effect.type, 4);
  EXPECT_EQ(effect.resolution, 72.0);
  EXPECT_EQ(effect.antialiasing, 0);
  EXPECT_EQ(effect.options, 0u);
  EXPECT_EQ(effect.preserveSpotColors, 1);
  EXPECT_EQ(effect.padding, 36.0);
}

TEST_F(Registration, TheExportedSuiteIsVersionTenInTheGlobalBlock) {
  const refhost::RegisteredSuite* suite = host.suites().find("DW Rasterize Suite", 10);
  ASSERT_NE(suite, nullptr);
  EXPECT_EQ(suite->internalVersion, 1);
  EXPECT_EQ(suite->owner, plugin);
  EXPECT_EQ(suite->table, &globalsOf(*plugin).rasterizeSuite);
  EXPECT_EQ(host.suites().find("DW Rasterize Suite", 5), nullptr) << "the property list's 5 is only announced";

  // Another plug-in acquires it through the basic suite.
  const void* table = nullptr;
  ASSERT_EQ(host.basicSuite()->AcquireSuite("DW Rasterize Suite", 10, &table), 0);
  EXPECT_EQ(table, suite->table);
  EXPECT_EQ(host.basicSuite()->ReleaseSuite("DW Rasterize Suite", 10), 0);
}

struct Row {
  const char* key;
  const char* label;
  const char* type;
};

void expectParameters(const refhost::ActionEventRecord& event, const std::vector<Row>& rows) {
  ASSERT_EQ(event.parameters.size(), rows.size()) << event.name;
  for (size_t i = 0; i < rows.size(); ++i) {
    const std::string name = event.name + " row " + std::to_string(i + 1);
    EXPECT_EQ(refhost::fourCharText(event.parameters[i].key), rows[i].key) << name;
    EXPECT_EQ(event.parameters[i].label, rows[i].label) << name;
    EXPECT_EQ(refhost::fourCharText(event.parameters[i].type), rows[i].type) << name;
    EXPECT_EQ(event.parameters[i].flag, 1) << name;
  }
}

TEST_F(Registration, BothActionEventsAreDescribedInFull) {
  const refhost::ActionEventRecord* rasterize = host.actions().event("dw_plugin_rasterize");
  ASSERT_NE(rasterize, nullptr);
  EXPECT_EQ(rasterize->title, "$$$/Rasterize/Str/11001=Rasterize");
  EXPECT_EQ(rasterize->eventValue, 1);
  EXPECT_EQ(rasterize->version, 1);
  EXPECT_EQ(rasterize->reserved1, 0);
  EXPECT_EQ(rasterize->reserved2, 0);
  EXPECT_EQ(rasterize->plugin, plugin);
  expectParameters(*rasterize, {
                                   {"colr", "$$$/Rasterize/Str/11003=Color Model: ", "enum"},
                                   {"type", "$$$/Rasterize/Str/11013=Type Quality: ", "enum"},
                                   {"dpi.", "$$$/Rasterize/Str/11008=Resolution (ppi): ", "long"},
                                   {"dres", "$$$/Rasterize/Str/11008=Resolution (ppi): ", "enum"},
                                   {"ali+", "$$$/Rasterize/Str/11017=Anti-aliasing: ", "strn"},
                                   {"bkgd", "$$$/Rasterize/Str/11010=Background: ", "enum"},
                                   {"ali+", "$$$/Rasterize/Str/11017=Anti-aliasing: ", "enum"},
                                   {"mask", "$$$/Rasterize/Str/11021=Create Clipping Mask: ", "bool"},
                                   {"padd", "$$$/Rasterize/Str/11022=Padding: ", "utrl"},
                                   {"pspt", "$$$/Rasterize/Str/11023=Preserve Spot Colors: ", "bool"},
                               });

  const refhost::ActionEventRecord* settings = host.actions().event("dw_plugin_rasterEffectSettings");
  ASSERT_NE(settings, nullptr);
  EXPECT_EQ(settings->title, "$$$/Rasterize/Str/11002=Document Raster Effects Settings");
  EXPECT_EQ(settings->eventValue, 0);
  expectParameters(*settings, {
                                  {"colr", "$$$/Rasterize/Str/11003=Color Model: ", "enum"},
                                  {"dpi.", "$$$/Rasterize/Str/11008=Resolution (ppi): ", "long"},
                                  {"bkgd", "$$$/Rasterize/Str/11010=Background: ", "enum"},
                                  {"alis", "$$$/Rasterize/Str/11016=Anti-alias: ", "bool"},
                                  {"mask", "$$$/Rasterize/Str/11021=Create Clipping Mask: ", "bool"},
                                  {"padd", "$$$/Rasterize/Str/11022=Padding: ", "utrl"},
                                  {"pspt", "$$$/Rasterize/Str/11023=Preserve Spot Colors: ", "bool"},
                              });
  EXPECT_EQ(host.actions().liveDescriptions(), 0u) << "descriptions are disposed after registration";
}

TEST_F(Registration, TheApplicationStartedNotifierIsAsked) {
  ASSERT_EQ(host.registrations().notifiers().size(), 1u);
  EXPECT_EQ(host.registrations().notifiers()[0]->name, "Rasterize App Started Notifier");
  EXPECT_EQ(host.registrations().notifiers()[0]->type, "DW Application Started Notifier");
}

TEST(RegistrationLocalised, TheEffectTitleComesFromTheHostsTable) {
  Host host;
  host.strings().setTranslation("$$$/Rasterize/Str/11001", "Rastern");
  host.launchPlugin(kPluginPath);
  ASSERT_EQ(host.registrations().liveEffects().size(), 1u);
  EXPECT_EQ(host.registrations().liveEffects()[0]->title, "Rastern");
}

TEST(RegistrationLocalised, AnOverlongTitleIsCutTo255Bytes) {
  Host host;
  host.strings().setTranslation("$$$/Rasterize/Str/11001", std::string(400, 'x'));
  host.launchPlugin(kPluginPath);
  ASSERT_EQ(host.registrations().liveEffects().size(), 1u);
  EXPECT_EQ(host.registrations().liveEffects()[0]->title, std::string(255, 'x'));
}

}  // namespace
