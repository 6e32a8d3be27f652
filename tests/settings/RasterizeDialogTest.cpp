#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

#include "fakes/SettingsTestSupport.h"
#include "settings/RasterizeDialog.h"
#include "shell/ErrorCodes.h"

namespace {

using Attributes = std::vector<std::pair<std::string, std::string>>;

class RasterizeDialog : public fake::HostTest {
 protected:
  RasterizeDialog() { host.holdUsageSuite(true); }
};

RasterizeSettings before() {
  RasterizeSettings s = dw::makeEffectDefaults(1);
  s.reserved = 3;
  return s;
}

RasterizeSettings edited() {
  RasterizeSettings s{};
  s.type = 1;
  s.resolution = 600;
  s.antialiasing = 4;
  s.options = 0x28;
  s.reserved = 11;
  s.preserveSpotColors = 0;
  s.createClippingMask = 1;
  s.padding = 10;
  s.forEffect = 0;
  return s;
}

TEST_F(RasterizeDialog, AnswersAndRecordsByTheDialogsResult) {
  using Availability = fake::FakeHost::DialogAvailability;
  struct Case {
    const char* name;
    Availability availability;
    int32_t answer;
    DWErr result;
    bool shown;
    RasterizeSettings after;
  } const cases[] = {
      {"confirmed: every field comes back", Availability::Present, 0, kDWNoErr, true, edited()},
      {"cancelled", Availability::Present, 1, 1, true, before()},
      {"failed with a host code", Availability::Present, dw::UserCancelled, dw::UserCancelled, true, before()},
      {"no dialog suite: nothing shown, go on", Availability::Absent, 0, kDWNoErr, false, before()},
      {"suite refused", Availability::Refused, 0, fake::kInjected, false, before()},
  };
  for (const Case& c : cases) {
    host.dialogCalls.clear();
    host.dialogSuiteAcquired = host.dialogSuiteReleased = 0;
    host.dialogAvailability = c.availability;
    host.dialogAnswer = c.answer;
    host.dialogEdit = [](RasterizeSettings& s) { s = edited(); };
    RasterizeSettings s = before();
    EXPECT_EQ(dw::runRasterizeDialog(s, kDWRasterizeOptionsDialog), c.result) << c.name;
    EXPECT_EQ(s, c.after) << c.name << ": " << fake::describe(s);
    ASSERT_EQ(host.dialogCalls.size(), c.shown ? 1u : 0u) << c.name;
    if (c.shown) {
      EXPECT_EQ(host.dialogCalls[0].shown, before()) << c.name;
      EXPECT_EQ(host.dialogCalls[0].variant, kDWRasterizeOptionsDialog) << c.name;
    }
    EXPECT_EQ(host.dialogSuiteAcquired, host.dialogSuiteReleased) << c.name;
    EXPECT_TRUE(host.usageEvents.empty()) << c.name << ": the options dialog sends no usage data";
  }
}

RasterizeSettings usageRecord(int32_t type, double res, int16_t aa, int32_t mask, int32_t spot, double padding) {
  RasterizeSettings s = dw::makeDocumentSettingsBase();
  s.type = type;
  s.resolution = res;
  s.antialiasing = aa;
  s.createClippingMask = mask;
  s.preserveSpotColors = spot;
  s.padding = padding;
  return s;
}

TEST_F(RasterizeDialog, TheDocumentSettingsDialogReportsUsageData) {
  // Values of "Color Model", "Resolution", "Background", "Create Clipping Mask", "Add Around Object",
  // "Anti-Alias" and "Preserve Spot Color", in that order.
  struct Case {
    const char* name;
    RasterizeSettings closedWith;
    std::vector<std::string> values;
  } const cases[] = {
      {"padding 36 is formatted", usageRecord(4, 150, 4, 1, 0, 36),
       {"RGB", "150", "Transparent", "On", "36.00", "On", "Off"}},
      {"padding 10 is Custom", usageRecord(1, 72.4, 0, 0, 1, 10), {"CMYK", "72", "White", "Off", "Custom", "Off", "On"}},
      {"padding 0 is formatted", usageRecord(6, 300, 1, 0, 0, 0),
       {"Grayscale", "300", "Transparent", "Off", "0.00", "On", "Off"}},
      {"bitmap, white", usageRecord(3, 96, 0, 0, 0, 36.5), {"Bitmap", "96", "White", "Off", "Custom", "Off", "Off"}},
      {"bitmap, transparent", usageRecord(7, 96, 0, 0, 0, 36),
       {"Bitmap", "96", "Transparent", "Off", "36.00", "Off", "Off"}},
      {"engine type 9 has no colour model", usageRecord(9, 72, 0, 0, 0, 36),
       {"", "72", "Transparent", "Off", "36.00", "Off", "Off"}},
  };
  const char* const keys[] = {"Color Model",       "Resolution", "Background",         "Create Clipping Mask",
                              "Add Around Object", "Anti-Alias", "Preserve Spot Color"};
  for (const Case& c : cases) {
    host.usageEvents.clear();
    const RasterizeSettings closedWith = c.closedWith;
    host.dialogEdit = [closedWith](RasterizeSettings& s) { s = closedWith; };
    RasterizeSettings s = before();
    ASSERT_EQ(dw::runRasterizeDialog(s, kDWDocumentRasterSettingsDialog), kDWNoErr) << c.name;
    ASSERT_EQ(host.usageEvents.size(), 1u) << c.name;
    EXPECT_EQ(host.usageEvents[0].name, "Document Raster Effects Settings") << c.name;
    Attributes expected;
    for (size_t k = 0; k < c.values.size(); ++k) expected.emplace_back(keys[k], c.values[k]);
    EXPECT_EQ(host.usageEvents[0].attributes, expected) << c.name;
    EXPECT_EQ(host.liveStrings, 0) << c.name;
  }
}

TEST_F(RasterizeDialog, ACancelledDocumentDialogReportsTheUnchangedSettings) {
  host.dialogAnswer = 1;
  host.dialogEdit = [](RasterizeSettings& s) { s = edited(); };
  RasterizeSettings s = usageRecord(5, 200, 0, 0, 0, 36);
  EXPECT_EQ(dw::runRasterizeDialog(s, kDWDocumentRasterSettingsDialog), 1);
  ASSERT_EQ(host.usageEvents.size(), 1u);
  EXPECT_EQ(host.usageEvents[0].attributes.at(0), (std::pair<std::string, std::string>("Color Model", "CMYK")));
  EXPECT_EQ(host.usageEvents[0].attributes.at(1), (std::pair<std::string, std::string>("Resolution", "200")));
}

TEST_F(RasterizeDialog, UsageDataIsSkippedOrDegradedQuietly) {
  struct Case {
    const char* name;
    bool held;
    bool collects;
    bool formatFails;
    size_t events;
    const char* resolution;
  } const cases[] = {
      {"no usage suite", false, true, false, 0, nullptr},
      {"host does not collect the event", true, false, false, 0, nullptr},
      {"numbers that cannot be formatted are sent empty", true, true, true, 1, ""},
  };
  for (const Case& c : cases) {
    host.usageEvents.clear();
    host.holdUsageSuite(c.held);
    host.usageCollects = c.collects;
    host.formatNumberFails = c.formatFails;
    RasterizeSettings s = usageRecord(0, 300, 0, 0, 0, 36);
    EXPECT_EQ(dw::runRasterizeDialog(s, kDWDocumentRasterSettingsDialog), kDWNoErr) << c.name;
    ASSERT_EQ(host.usageEvents.size(), c.events) << c.name;
    if (c.events) {
      EXPECT_EQ(host.usageEvents[0].attributes.size(), 7u) << c.name;
      EXPECT_EQ(host.usageEvents[0].attributes.at(1).second, c.resolution) << c.name;
      EXPECT_EQ(host.usageEvents[0].attributes.at(4).second, c.resolution) << c.name;
    }
  }
}

TEST_F(RasterizeDialog, NoUsageDataWhenNoDialogWasShown) {
  host.dialogAvailability = fake::FakeHost::DialogAvailability::Absent;
  RasterizeSettings s = before();
  EXPECT_EQ(dw::runRasterizeDialog(s, kDWDocumentRasterSettingsDialog), kDWNoErr);
  EXPECT_TRUE(host.usageEvents.empty());
}

}  // namespace
