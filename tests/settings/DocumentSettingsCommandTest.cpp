#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

#include "fakes/SettingsTestSupport.h"
#include "settings/DocumentSettingsCommand.h"

namespace {

using UndoTexts = std::vector<std::pair<std::string, std::string>>;

class DocumentSettingsCommand : public fake::HostTest {
 protected:
  DocumentSettingsCommand() {
    host.holdUsageSuite(true);
    host.colorMode = kDWCMYKColorMode;
    host.level = 12;
    globals.effectDefaults = dw::makeEffectDefaults();
    globals.effectDefaults.preserveSpotColors = 1;
  }
};

TEST_F(DocumentSettingsCommand, ShowsTheDocumentSettingsForAnEffect) {
  host.dialogAnswer = 1;
  EXPECT_EQ(dw::DocumentRasterSettingsCommand(), kDWNoErr);
  ASSERT_EQ(host.dialogCalls.size(), 1u);
  const fake::DialogCall& call = host.dialogCalls[0];
  EXPECT_EQ(call.variant, kDWDocumentRasterSettingsDialog);
  RasterizeSettings expected = dw::makeDocumentSettingsBase();
  expected.type = 5;
  expected.resolution = 72;
  expected.antialiasing = 0;
  expected.preserveSpotColors = 1;
  expected.padding = 36;
  expected.forEffect = 1;
  EXPECT_EQ(call.shown, expected) << fake::describe(call.shown);
}

TEST_F(DocumentSettingsCommand, ACancelChangesNothing) {
  host.dialogAnswer = 1;
  host.dialogEdit = [](RasterizeSettings& s) { s.preserveSpotColors = 0; };
  EXPECT_EQ(dw::DocumentRasterSettingsCommand(), kDWNoErr);
  EXPECT_TRUE(host.writes.empty());
  EXPECT_TRUE(host.undoTexts.empty());
  EXPECT_EQ(globals.effectDefaults.preserveSpotColors, 1);
  EXPECT_EQ(host.usageEvents.size(), 1u) << "the usage event is sent after a cancel too";
}

TEST_F(DocumentSettingsCommand, AConfirmedDialogIsWrittenAndTheEffectTakesTheSpotSetting) {
  struct Case {
    const char* name;
    const char* failing;
    DWErr result;
    std::vector<std::string> writes;
  } const cases[] = {
      {"written", "", kDWNoErr, {"settings:dpi.", "pref:DPI", "settings:spot", "pref:Spot"}},
      {"write refused", "SetInteger dpi.", fake::kInjected, {}},
  };
  for (const Case& c : cases) {
    host.writes.clear();
    host.undoTexts.clear();
    host.preferences.clear();
    host.document->entries.clear();
    host.settingsEntry(true);
    host.failures = {{c.failing, fake::kInjected}};
    globals.effectDefaults.preserveSpotColors = 1;
    host.dialogEdit = [](RasterizeSettings& s) {
      s.resolution = 300;
      s.preserveSpotColors = 0;
    };
    EXPECT_EQ(dw::DocumentRasterSettingsCommand(), c.result) << c.name;
    EXPECT_EQ(host.writes, c.writes) << c.name;
    EXPECT_EQ(globals.effectDefaults.preserveSpotColors, 0) << c.name;
    EXPECT_EQ(host.undoTexts, (UndoTexts{{"Undo Rasterize", "Redo Rasterize"}})) << c.name;
    EXPECT_EQ(host.liveStrings, 0) << c.name;
  }
}

TEST_F(DocumentSettingsCommand, WithoutADialogTheCurrentSettingsAreKept) {
  host.dialogAvailability = fake::FakeHost::DialogAvailability::Absent;
  EXPECT_EQ(dw::DocumentRasterSettingsCommand(), kDWNoErr);
  // Only the empty settings entry is created: no field differs.
  EXPECT_EQ(host.writes, std::vector<std::string>{"document:DW Auto Rasterize"});
  EXPECT_EQ(host.undoTexts.size(), 1u);
}

}  // namespace
