#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "commands/Actions.h"
#include "fakes/CommandFixture.h"
#include "settings/ActionParameters.h"
#include "settings/DocumentRasterSettings.h"
#include "shell/ErrorCodes.h"

namespace {

constexpr int32_t kCommandEvent = 1;
constexpr int32_t kSettingsEvent = 0;

class DoAction : public fake::CommandFixture {
 protected:
  DoAction() { host.holdActionSuite(true); }

  // A fresh selection, as in another document.
  void newDocument() {
    layer->children.clear();
    art.select(art.rectangle(layer, "r", 0, 10, 10, 0));
  }

  // Runs the command with the settings while the host records, and answers the recorded block.
  fake::ParamBlock* recordCommand(const RasterizeSettings& settings) {
    newDocument();
    globals.commandSettings = settings;
    host.recording = true;
    EXPECT_EQ(run(), kDWNoErr);
    host.recording = false;
    return &host.recorded.back().block;
  }

  fake::ParamBlock* recordSettings(const RasterizeSettings& settings) {
    host.recording = true;
    dw::recordDocumentSettingsEvent(settings);
    host.recording = false;
    return &host.recorded.back().block;
  }

  static DWErr play(int32_t event, fake::ParamBlock* block, bool dialog = false) {
    DoActionMessage message{};
    message.eventValue = event;
    message.showDialog = dialog;
    message.params = block ? fake::handleOf(block) : nullptr;
    return dw::DoAction(message);
  }
};

TEST_F(DoAction, ARecordedCommandReplaysInAnotherDocument) {
  struct Case {
    const char* name;
    void (*recordWith)(RasterizeSettings&);
    int16_t recordMode;
    int16_t replayMode;
    void (*replayedAs)(RasterizeSettings&);  // applied to the recorded run's settings
  } const cases[] = {
      {"as it ran",
       [](RasterizeSettings& s) {
         s.type = 5;
         s.resolution = 150;
         s.padding = 3;
         s.createClippingMask = 1;
       },
       kDWCMYKColorMode, kDWCMYKColorMode, [](RasterizeSettings&) {}},
      {"'ali+' None gives antialiasing 0", [](RasterizeSettings& s) { s.antialiasing = 1; }, kDWRGBColorMode,
       kDWRGBColorMode, [](RasterizeSettings& s) { s.antialiasing = 0; }},
      {"a CMYK recording in an RGB document is RGB", [](RasterizeSettings& s) { s.type = 1; }, kDWCMYKColorMode,
       kDWRGBColorMode, [](RasterizeSettings& s) { s.type = 0; }},
  };
  for (const Case& c : cases) {
    art.engineCalls.clear();
    host.colorMode = c.recordMode;
    RasterizeSettings recorded = dw::makeCommandDefaults();
    c.recordWith(recorded);
    fake::ParamBlock* block = recordCommand(recorded);

    globals.commandSettings = dw::makeCommandDefaults();
    host.colorMode = c.replayMode;
    newDocument();
    EXPECT_EQ(play(kCommandEvent, block), kDWNoErr) << c.name;

    ASSERT_EQ(art.engineCalls.size(), 2u) << c.name;
    RasterizeSettings expected = art.engineCalls[0].settings;
    c.replayedAs(expected);
    EXPECT_EQ(art.engineCalls[1].settings, expected) << c.name << ": " << fake::describe(art.engineCalls[1].settings);
    EXPECT_EQ(globals.commandSettings, expected) << c.name << ": the menu command starts from the replayed values";
  }
}

TEST_F(DoAction, WhenNothingRuns) {
  struct Case {
    const char* name;
    bool suite;
    bool block;
    bool dialog;
    int32_t dialogAnswer;
    DWErr result;
    size_t engineCalls;
  } const cases[] = {
      {"without the action suite", false, true, false, 0, kDWNoErr, 0},
      {"without a parameter block", true, false, false, 0, kDWNoErr, 0},
      {"with the dialog cancelled", true, true, true, dw::UserCancelled, dw::UserCancelled, 0},
      {"with the dialog confirmed", true, true, true, 0, kDWNoErr, 1},
  };
  fake::ParamBlock* block = recordCommand(dw::makeCommandDefaults());
  for (const Case& c : cases) {
    newDocument();
    art.engineCalls.clear();
    host.dialogCalls.clear();
    host.holdActionSuite(c.suite);
    host.dialogAnswer = c.dialogAnswer;
    globals.commandSettings = dw::makeCommandDefaults(0, 1);

    EXPECT_EQ(play(kCommandEvent, c.block ? block : nullptr, c.dialog), c.result) << c.name;
    EXPECT_EQ(art.engineCalls.size(), c.engineCalls) << c.name;
    EXPECT_EQ(host.dialogCalls.size(), c.dialog ? 1u : 0u) << c.name;
    if (c.dialog) {
      EXPECT_EQ(host.dialogCalls[0].variant, kDWRasterizeOptionsDialog) << c.name;
      EXPECT_EQ(host.dialogCalls[0].shown.forEffect, 0) << c.name;
    }
    if (!c.engineCalls) {
      EXPECT_EQ(fake::shape(layer), "group[path]") << c.name << ": the document is untouched";
    }
    EXPECT_EQ(host.reverts, 0) << c.name;
  }
}

TEST_F(DoAction, ASettingsEventWritesTheDocumentSettingsOnly) {
  struct Case {
    const char* name;
    bool dialog;
    int32_t dialogAnswer;
    DWErr result;
    bool written;
  } const cases[] = {
      {"without the dialog", false, 0, kDWNoErr, true},
      {"with the dialog confirmed", true, 0, kDWNoErr, true},
      {"with the dialog cancelled", true, dw::UserCancelled, dw::UserCancelled, false},
  };
  RasterizeSettings recorded = dw::makeDocumentSettingsBase();
  recorded.type = 6;
  recorded.resolution = 200;
  recorded.antialiasing = 4;
  recorded.createClippingMask = 1;
  recorded.padding = 5;
  fake::ParamBlock* block = recordSettings(recorded);
  for (const Case& c : cases) {
    host.document->entries.clear();
    host.preferences.clear();
    host.dialogCalls.clear();
    host.dialogAnswer = c.dialogAnswer;
    const RasterizeSettings before = dw::currentDocumentRasterSettings();
    globals.commandSettings = dw::makeCommandDefaults();

    EXPECT_EQ(play(kSettingsEvent, block, c.dialog), c.result) << c.name;
    const RasterizeSettings now = dw::currentDocumentRasterSettings();
    EXPECT_EQ(now, c.written ? recorded : before) << c.name << ": " << fake::describe(now);
    EXPECT_EQ(globals.commandSettings, dw::makeCommandDefaults()) << c.name;
    EXPECT_TRUE(art.engineCalls.empty()) << c.name;
    EXPECT_EQ(host.dialogCalls.size(), c.dialog ? 1u : 0u) << c.name;
    if (c.dialog) {
      EXPECT_EQ(host.dialogCalls[0].variant, kDWDocumentRasterSettingsDialog) << c.name;
      EXPECT_EQ(host.dialogCalls[0].shown.forEffect, 1) << c.name;
    }
  }
}

}  // namespace
