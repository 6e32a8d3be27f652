#include <gtest/gtest.h>

#include "fakes/SettingsTestSupport.h"
#include "settings/DocumentRasterSettings.h"

namespace {

using fake::Value;

class DocumentSettingsRead : public fake::HostTest {};

struct DefaultsCase {
  const char* name;
  int16_t mode;
  int32_t level;
  int32_t type;
  int32_t spot;
};

TEST_F(DocumentSettingsRead, NewDocumentDefaultsFollowColourModeAndLevel) {
  const DefaultsCase cases[] = {
      {"gray, old level", kDWGrayColorMode, 11, 6, 0},   {"gray, level 20", kDWGrayColorMode, 20, 6, 1},
      {"RGB, level 11", kDWRGBColorMode, 11, 4, 0},      {"RGB, level 12", kDWRGBColorMode, 12, 4, 1},
      {"CMYK, level 11", kDWCMYKColorMode, 11, 5, 0},    {"CMYK, level 12", kDWCMYKColorMode, 12, 5, 1},
      {"unknown mode 7, level 12", 7, 12, 4, 1},
  };
  for (const DefaultsCase& c : cases) {
    host.colorMode = c.mode;
    host.level = c.level;
    RasterizeSettings s = dw::makeDocumentSettingsBase();
    EXPECT_EQ(dw::readDocumentRasterSettings(s), kDWNoErr) << c.name;
    EXPECT_EQ(s.type, c.type) << c.name;
    EXPECT_EQ(s.resolution, 72.0) << c.name;
    EXPECT_EQ(s.antialiasing, 0) << c.name;
    EXPECT_EQ(s.preserveSpotColors, c.spot) << c.name;
    EXPECT_EQ(s.createClippingMask, 0) << c.name;
    EXPECT_EQ(s.padding, 36.0) << c.name;
    EXPECT_EQ(host.outstandingReferences(), 0) << c.name;
  }
}

struct FallbackCase {
  const char* name;
  int16_t mode;
  int32_t level;
  const char* preference;
  Value value;
  RasterizeSettings expected;  // only the six document fields are compared
};

RasterizeSettings doc(int32_t type, double res, int16_t aa, int32_t spot, int32_t mask, double pad) {
  RasterizeSettings s{};
  s.type = type;
  s.resolution = res;
  s.antialiasing = aa;
  s.preserveSpotColors = spot;
  s.createClippingMask = mask;
  s.padding = pad;
  return s;
}

void expectDocumentFields(const RasterizeSettings& actual, const RasterizeSettings& expected, const char* name) {
  EXPECT_EQ(actual.type, expected.type) << name;
  EXPECT_EQ(actual.resolution, expected.resolution) << name;
  EXPECT_EQ(actual.antialiasing, expected.antialiasing) << name;
  EXPECT_EQ(actual.preserveSpotColors, expected.preserveSpotColors) << name;
  EXPECT_EQ(actual.createClippingMask, expected.createClippingMask) << name;
  EXPECT_EQ(actual.padding, expected.padding) << name;
}

TEST_F(DocumentSettingsRead, PreferencesReplaceTheBuiltInDefaults) {
  const FallbackCase cases[] = {
      {"Type 1 in an RGB document follows to 0", kDWRGBColorMode, 12, "Type", Value::ofInteger(1),
       doc(0, 72, 0, 1, 0, 36)},
      {"Type 3 stays bitmap", kDWCMYKColorMode, 11, "Type", Value::ofInteger(3), doc(3, 72, 0, 0, 0, 36)},
      {"Type 9 reads as RGB, gray document", kDWGrayColorMode, 11, "Type", Value::ofInteger(9),
       doc(2, 72, 0, 0, 0, 36)},
      {"DPI 150", kDWRGBColorMode, 11, "DPI", Value::ofInteger(150), doc(4, 150, 0, 0, 0, 36)},
      {"Alias on", kDWRGBColorMode, 11, "Alias", Value::ofBoolean(true), doc(4, 72, 4, 0, 0, 36)},
      {"Spot off at level 12", kDWRGBColorMode, 12, "Spot", Value::ofBoolean(false), doc(4, 72, 0, 0, 0, 36)},
      {"Spot on ignored below level 12", kDWRGBColorMode, 11, "Spot", Value::ofBoolean(true),
       doc(4, 72, 0, 0, 0, 36)},
      {"Mask on", kDWRGBColorMode, 11, "Mask", Value::ofBoolean(true), doc(4, 72, 0, 0, 1, 36)},
      {"Padding 10", kDWRGBColorMode, 11, "Padding", Value::ofReal(10), doc(4, 72, 0, 0, 0, 10)},
  };
  for (const FallbackCase& c : cases) {
    host.preferences.clear();
    host.colorMode = c.mode;
    host.level = c.level;
    host.preferences[c.preference] = c.value;
    RasterizeSettings s = dw::makeDocumentSettingsBase();
    dw::readDocumentRasterSettings(s);
    expectDocumentFields(s, c.expected, c.name);
  }
}

TEST_F(DocumentSettingsRead, TheDocumentEntryWinsOverPreferences) {
  host.colorMode = kDWGrayColorMode;
  host.level = 12;
  host.preferences = {{"Type", Value::ofInteger(7)}, {"DPI", Value::ofInteger(600)},
                      {"Alias", Value::ofBoolean(true)}, {"Spot", Value::ofBoolean(true)},
                      {"Mask", Value::ofBoolean(true)}, {"Padding", Value::ofReal(5)}};
  fake::Dictionary* entry = host.settingsEntry(true);
  fake::setInteger(entry, "colr", 1);
  fake::setInteger(entry, "dpi.", 150);
  fake::setBoolean(entry, "alis", false);
  fake::setBoolean(entry, "spot", false);
  fake::setBoolean(entry, "mask", false);
  fake::setReal(entry, "padd", 0.5);

  RasterizeSettings s = dw::makeDocumentSettingsBase();
  dw::readDocumentRasterSettings(s);
  // CMYK (1) in a gray document reads as Grayscale (2).
  expectDocumentFields(s, doc(2, 150, 0, 0, 0, 0.5), "entry over preferences");
  EXPECT_EQ(host.outstandingReferences(), 0);
}

TEST_F(DocumentSettingsRead, OutOfRangeStoredTypesReadAsRgbFollowingTheDocument) {
  const int32_t stored[] = {8, -1, 1000};
  for (int32_t code : stored) {
    host.colorMode = kDWGrayColorMode;
    fake::setInteger(host.settingsEntry(true), "colr", code);
    RasterizeSettings s = dw::makeDocumentSettingsBase();
    dw::readDocumentRasterSettings(s);
    EXPECT_EQ(s.type, 2) << "stored colr " << code;
  }
}

TEST_F(DocumentSettingsRead, HostRefusalsFallBackWithoutFailing) {
  // A CMYK document at level 12 whose entry says 300 ppi, with a preference of 200 ppi.
  struct Case {
    const char* failing;
    RasterizeSettings expected;
  } const cases[] = {
      {"GetColorMode", doc(4, 300, 0, 1, 0, 36)},
      {"GetLevelNumber", doc(5, 300, 0, 0, 0, 36)},
      {"GetDictionary", doc(5, 200, 0, 1, 0, 36)},
      {"GetInteger dpi.", doc(5, 200, 0, 1, 0, 36)},
  };
  for (const Case& c : cases) {
    host.failures = {{c.failing, fake::kInjected}};
    host.colorMode = kDWCMYKColorMode;
    host.level = 12;
    host.preferences = {{"DPI", Value::ofInteger(200)}};
    fake::setInteger(host.settingsEntry(true), "dpi.", 300);
    RasterizeSettings s = dw::makeDocumentSettingsBase();
    EXPECT_EQ(dw::readDocumentRasterSettings(s), kDWNoErr) << c.failing;
    expectDocumentFields(s, c.expected, c.failing);
    EXPECT_EQ(host.outstandingReferences(), 0) << c.failing;
  }
}

TEST_F(DocumentSettingsRead, LeavesOptionsReservedAndForEffect) {
  RasterizeSettings s = dw::makeCommandDefaults(77, 1);
  s.options = 0x12345;
  dw::readDocumentRasterSettings(s);
  EXPECT_EQ(s.options, 0x12345u);
  EXPECT_EQ(s.reserved, 77);
  EXPECT_EQ(s.forEffect, 1);
}

TEST_F(DocumentSettingsRead, CurrentSettingsStartFromTheDocumentBase) {
  host.colorMode = kDWRGBColorMode;
  const RasterizeSettings s = dw::currentDocumentRasterSettings();
  EXPECT_EQ(s.options, 0u);
  EXPECT_EQ(s.reserved, 0);
  EXPECT_EQ(s.type, 4);
}

}  // namespace
