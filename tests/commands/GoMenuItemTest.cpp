#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "commands/MenuCommand.h"
#include "commands/RecordRasterizeAction.h"
#include "fakes/CommandFixture.h"
#include "shell/ErrorCodes.h"

namespace {

class GoMenuItem : public fake::CommandFixture {
 protected:
  GoMenuItem() { art.select(art.rectangle(layer, "r", 0, 10, 10, 0)); }
};

TEST_F(GoMenuItem, TheRasterizeItemShowsTheOptionsAndRunsOnConfirmation) {
  using Availability = fake::FakeHost::DialogAvailability;
  struct Case {
    const char* name;
    Availability availability;
    int32_t answer;
    size_t engineCalls;
    double resolutionUsed;
  } const cases[] = {
      {"confirmed with 72 ppi", Availability::Present, 0, 1, 72},
      {"cancelled", Availability::Present, 1, 0, 0},
      {"no dialog: the kept settings", Availability::Absent, 0, 1, 300},
  };
  for (const Case& c : cases) {
    layer->children.clear();
    art.select(art.rectangle(layer, "r", 0, 10, 10, 0));
    art.engineCalls.clear();
    host.dialogCalls.clear();
    host.dialogAvailability = c.availability;
    host.dialogAnswer = c.answer;
    host.dialogEdit = [](RasterizeSettings& s) { s.resolution = 72; };
    globals.commandSettings = dw::makeCommandDefaults();
    globals.commandSettings.forEffect = 1;

    EXPECT_EQ(dw::GoMenuItem(message), kDWNoErr) << c.name;
    EXPECT_EQ(globals.commandSettings.forEffect, 0) << c.name;
    if (c.availability == Availability::Present) {
      ASSERT_EQ(host.dialogCalls.size(), 1u) << c.name;
      EXPECT_EQ(host.dialogCalls[0].variant, kDWRasterizeOptionsDialog) << c.name;
      EXPECT_EQ(host.dialogCalls[0].shown.forEffect, 0) << c.name;
    }
    ASSERT_EQ(art.engineCalls.size(), c.engineCalls) << c.name;
    if (c.engineCalls) {
      EXPECT_EQ(art.engineCalls[0].settings.resolution, c.resolutionUsed) << c.name;
    }
    EXPECT_EQ(host.reverts, 0) << c.name;
  }
}

TEST_F(GoMenuItem, AnyOtherItemRunsTheDocumentSettingsCommand) {
  message.menuItem = globals.settingsMenuItem;
  host.dialogAnswer = 1;
  EXPECT_EQ(dw::GoMenuItem(message), kDWNoErr);
  ASSERT_EQ(host.dialogCalls.size(), 1u);
  EXPECT_EQ(host.dialogCalls[0].variant, kDWDocumentRasterSettingsDialog);
  EXPECT_EQ(host.dialogCalls[0].shown.forEffect, 1);
  EXPECT_TRUE(art.engineCalls.empty());
}

TEST_F(GoMenuItem, CommandErrorsAreReturnedAfterTheirMessage) {
  art.engineResult = dw::TooWideError;
  EXPECT_EQ(dw::GoMenuItem(message), dw::TooWideError);
  EXPECT_EQ(host.errorAlerts.size(), 1u);
  EXPECT_EQ(host.reverts, 1);
}

TEST_F(GoMenuItem, WithoutAGlobalBlockNothingRuns) {
  dw::gGlobals = nullptr;
  EXPECT_EQ(dw::GoMenuItem(message), dw::OutOfMemoryError);
  EXPECT_TRUE(host.dialogCalls.empty());
}

TEST_F(GoMenuItem, RecordRasterizeActionRecordsTheCommandSettings) {
  host.holdActionSuite(true);
  host.recording = true;
  globals.commandSettings.resolution = 96.5;
  EXPECT_EQ(dw::RecordRasterizeAction(), kDWNoErr);
  ASSERT_EQ(host.recorded.size(), 1u);
  EXPECT_EQ(host.recorded[0].name, "dw_plugin_rasterize");
  EXPECT_EQ(host.recorded[0].block.values.at(dw::fourCharCode("dpi.")).integer, 96);
}

}  // namespace
