#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "fakes/SettingsTestSupport.h"
#include "settings/EffectParameters.h"

namespace {

using fake::Dictionary;

class EffectParameters : public fake::HostTest {
 protected:
  Dictionary* parameters = host.newDictionary("params");
  DWDictionaryRef ref(Dictionary* d) { return fake::handleOf(d); }
};

RasterizeSettings lastEdited() {
  RasterizeSettings s = dw::makeEffectDefaults(0);
  s.type = 1;
  s.resolution = 200;
  s.antialiasing = 4;
  s.options = 0x28;
  s.createClippingMask = 1;
  s.padding = 3;
  s.reserved = 5;
  return s;
}

TEST_F(EffectParameters, EditRecordReadsTheDictionaryAndFollowsTheDocument) {
  struct Case {
    const char* name;
    int16_t mode;
    void (*fill)(Dictionary*);
    RasterizeSettings expected;
  };
  auto with = [](void (*edit)(RasterizeSettings&)) {
    RasterizeSettings s = lastEdited();
    s.forEffect = 1;
    edit(s);
    return s;
  };
  const Case cases[] = {
      {"without colr nothing is read: the last edited values", kDWCMYKColorMode,
       [](Dictionary* d) { fake::setInteger(d, "dpi.", 999); }, with([](RasterizeSettings&) {})},
      {"all keys, CMYK in an RGB document", kDWRGBColorMode,
       [](Dictionary* d) {
         fake::setInteger(d, "colr", 5);
         fake::setInteger(d, "dpi.", 150);
         fake::setBoolean(d, "alis", false);
         fake::setBoolean(d, "mask", false);
         fake::setReal(d, "padd", 7.5);
         fake::setInteger(d, "optn", 0x11);
       },
       with([](RasterizeSettings& s) {
         s.type = 4;
         s.resolution = 150;
         s.antialiasing = 0;
         s.createClippingMask = 0;
         s.padding = 7.5;
         s.options = 0x11;
       })},
      {"colr alone: missing optn gives 0, other fields stay", kDWRGBColorMode,
       [](Dictionary* d) { fake::setInteger(d, "colr", 6); },
       with([](RasterizeSettings& s) {
         s.type = 6;
         s.options = 0;
       })},
      {"colr out of range reads as RGB, then gray", kDWGrayColorMode,
       [](Dictionary* d) { fake::setInteger(d, "colr", 12); },
       with([](RasterizeSettings& s) {
         s.type = 2;
         s.options = 0;
       })},
      {"a key of the wrong type keeps its field", kDWRGBColorMode,
       [](Dictionary* d) {
         fake::setInteger(d, "colr", 7);
         fake::setReal(d, "dpi.", 600);
         fake::setInteger(d, "alis", 1);
       },
       with([](RasterizeSettings& s) {
         s.type = 7;
         s.options = 0;
       })},
  };
  for (const Case& c : cases) {
    parameters->entries.clear();
    host.colorMode = c.mode;
    c.fill(parameters);
    const RasterizeSettings s = dw::effectEditRecord(ref(parameters), lastEdited());
    EXPECT_EQ(s, c.expected) << c.name << ": " << fake::describe(s);
  }
}

TEST_F(EffectParameters, EditWriteStoresSixKeysWithTheDialogThreshold) {
  struct Case {
    const char* name;
    RasterizeSettings record;
    int32_t colr;
    int32_t dpi;
    bool alis;
  };
  auto record = [](int32_t type, double res, int16_t aa) {
    RasterizeSettings s = lastEdited();
    s.type = type;
    s.resolution = res;
    s.antialiasing = aa;
    s.preserveSpotColors = 1;
    return s;
  };
  const Case cases[] = {
      {"antialiasing 1 is off", record(4, 72.9, 1), 4, 72, false},
      {"antialiasing 2 is on", record(0, 300, 2), 0, 300, true},
      {"engine type 10 is stored as RGB", record(10, 150, 4), 0, 150, true},
  };
  for (const Case& c : cases) {
    parameters->entries.clear();
    host.writes.clear();
    EXPECT_EQ(dw::writeEffectEditParameters(ref(parameters), c.record), kDWNoErr) << c.name;
    EXPECT_EQ(host.writes, (std::vector<std::string>{"params:colr", "params:dpi.", "params:alis", "params:mask",
                                                     "params:padd", "params:optn"}))
        << c.name;
    EXPECT_EQ(fake::integerOf(parameters, "colr"), c.colr) << c.name;
    EXPECT_EQ(fake::integerOf(parameters, "dpi."), c.dpi) << c.name;
    EXPECT_EQ(fake::booleanOf(parameters, "alis"), c.alis) << c.name;
    EXPECT_EQ(fake::booleanOf(parameters, "mask"), true) << c.name;
    EXPECT_EQ(fake::realOf(parameters, "padd"), 3.0) << c.name;
    EXPECT_EQ(fake::integerOf(parameters, "optn"), 0x28) << c.name;
  }
}

TEST_F(EffectParameters, EditWriteStopsAtTheFirstRefusedKey) {
  host.failures["SetBoolean alis"] = fake::kInjected;
  EXPECT_EQ(dw::writeEffectEditParameters(ref(parameters), lastEdited()), fake::kInjected);
  EXPECT_EQ(host.writes, (std::vector<std::string>{"params:colr", "params:dpi."}));
}

TEST_F(EffectParameters, RunSettingsLayTheDictionaryOverTheDocument) {
  struct Case {
    const char* name;
    int16_t mode;
    void (*fill)(Dictionary*);
    RasterizeSettings expected;
  };
  // The document: level 12 (spot colours on), preferences DPI 96 and padding 4.
  auto document = [](int32_t type) {
    RasterizeSettings s = dw::makeEffectDefaults();
    s.type = type;
    s.resolution = 96;
    s.padding = 4;
    s.preserveSpotColors = 1;
    s.options = 0x300;
    return s;
  };
  const Case cases[] = {
      {"empty dictionary: the document's settings", kDWCMYKColorMode, [](Dictionary*) {}, document(5)},
      {"colr 5 in a gray document renders as 6", kDWGrayColorMode,
       [](Dictionary* d) { fake::setInteger(d, "colr", 5); }, document(6)},
      {"every key, spot ignored", kDWRGBColorMode,
       [](Dictionary* d) {
         fake::setInteger(d, "colr", 3);
         fake::setInteger(d, "dpi.", 300);
         fake::setBoolean(d, "alis", true);
         fake::setBoolean(d, "mask", true);
         fake::setReal(d, "padd", 0);
         fake::setInteger(d, "optn", 0x8);
         fake::setBoolean(d, "spot", false);
       },
       [] {
         RasterizeSettings s = dw::makeEffectDefaults();
         s.type = 3;
         s.resolution = 300;
         s.antialiasing = 4;
         s.createClippingMask = 1;
         s.padding = 0;
         s.preserveSpotColors = 1;
         s.options = 0x308;
         return s;
       }()},
  };
  for (const Case& c : cases) {
    parameters->entries.clear();
    host.colorMode = c.mode;
    host.level = 12;
    host.preferences = {{"DPI", fake::Value::ofInteger(96)}, {"Padding", fake::Value::ofReal(4)}};
    c.fill(parameters);
    const RasterizeSettings s = dw::effectRunSettings(ref(parameters));
    EXPECT_EQ(s, c.expected) << c.name << ": " << fake::describe(s);
  }
}

struct InterpolationSide {
  bool present;
  int32_t colr;  // -1: missing
  int32_t dpi;
  bool alis;
  bool mask;
  double padd;
};

void fill(Dictionary* d, const InterpolationSide& side) {
  if (side.colr >= 0) fake::setInteger(d, "colr", side.colr);
  fake::setInteger(d, "dpi.", side.dpi);
  fake::setBoolean(d, "alis", side.alis);
  fake::setBoolean(d, "mask", side.mask);
  fake::setReal(d, "padd", side.padd);
}

TEST_F(EffectParameters, InterpolationBlendsResolutionAndPaddingAndSwitchesAtOneHalf) {
  struct Case {
    const char* name;
    int16_t mode;
    InterpolationSide start, end;
    double t;
    int32_t colr, dpi;
    bool alis, mask;
    double padd;
  };
  const InterpolationSide start72 = {true, 4, 72, true, false, 0};
  const InterpolationSide end300 = {true, 6, 300, false, true, 36};
  const Case cases[] = {
      {"t 0.25: trunc(72 + 228 x 0.75 + 0.5) = 243", kDWRGBColorMode, start72, end300, 0.25, 6, 243, false, true,
       27},
      {"t 0: the end set", kDWRGBColorMode, start72, end300, 0.0, 6, 300, false, true, 36},
      {"t 1: the start set", kDWRGBColorMode, start72, end300, 1.0, 4, 72, true, false, 0},
      {"t 0.5: discrete values from the start", kDWRGBColorMode, start72, end300, 0.5, 4, 186, true, false, 18},
      {"t 0.49: discrete values from the end", kDWRGBColorMode, start72, end300, 0.49, 6, 188, false, true, 18.36},
      {"colr missing from end takes start's", kDWRGBColorMode, start72, {true, -1, 300, false, true, 36}, 0.0, 4,
       300, false, true, 36},
      {"colr missing from start reads 0", kDWRGBColorMode, {true, -1, 72, true, false, 0}, end300, 1.0, 0, 72, true,
       false, 0},
      {"only the start present", kDWRGBColorMode, start72, {false, 0, 0, false, false, 0}, 0.3, 4, 72, true, false,
       0},
      {"only the end present", kDWRGBColorMode, {false, 0, 0, false, false, 0}, end300, 0.7, 6, 300, false, true,
       36},
      {"types follow a CMYK document", kDWCMYKColorMode, {true, 0, 72, false, false, 0},
       {true, 4, 72, false, false, 0}, 0.9, 1, 72, false, false, 0},
  };
  for (const Case& c : cases) {
    host.colorMode = c.mode;
    Dictionary* start = host.newDictionary("start");
    Dictionary* end = host.newDictionary("end");
    Dictionary* out = host.newDictionary("out");
    fill(start, c.start);
    fill(end, c.end);
    EXPECT_EQ(dw::interpolateEffectParameters(c.start.present ? ref(start) : nullptr,
                                              c.end.present ? ref(end) : nullptr, ref(out), c.t),
              kDWNoErr)
        << c.name;
    EXPECT_EQ(fake::integerOf(out, "colr"), c.colr) << c.name;
    EXPECT_EQ(fake::integerOf(out, "dpi."), c.dpi) << c.name;
    EXPECT_EQ(fake::booleanOf(out, "alis"), c.alis) << c.name;
    EXPECT_EQ(fake::booleanOf(out, "mask"), c.mask) << c.name;
    ASSERT_TRUE(fake::realOf(out, "padd").has_value()) << c.name;
    EXPECT_NEAR(*fake::realOf(out, "padd"), c.padd, 1e-9) << c.name;
    EXPECT_EQ(out->entries.count("optn") + out->entries.count("spot"), 0u) << c.name;
  }
}

TEST_F(EffectParameters, InterpolationWithoutOutputWritesNothingAndReportsRefusedWrites) {
  Dictionary* start = host.newDictionary("start");
  fill(start, {true, 0, 72, false, false, 0});
  EXPECT_EQ(dw::interpolateEffectParameters(ref(start), ref(start), nullptr, 0.5), kDWNoErr);
  EXPECT_TRUE(host.writes.empty());

  Dictionary* out = host.newDictionary("out");
  host.failures["SetBoolean alis"] = fake::kInjected;
  EXPECT_EQ(dw::interpolateEffectParameters(ref(start), ref(start), ref(out), 0.5), fake::kInjected);
  EXPECT_EQ(host.writes, (std::vector<std::string>{"out:colr", "out:dpi."}));
}

TEST_F(EffectParameters, ColourSpaceConversionMovesProcessTypesToTheTarget) {
  struct Case {
    const char* name;
    int32_t colr;  // -1: missing
    int32_t target;
    int32_t storedAfter;
    int32_t targetAfter;
  } const cases[] = {
      {"RGB to CMYK", 0, 1, 1, 6},
      {"transparent CMYK to gray", 5, 0, 6, 6},
      {"CMYK to RGB", 1, 5, 0, 6},
      {"already RGB", 4, 5, 4, 5},
      {"code 3 is not handled", 0, 3, 0, 3},
      {"Bitmap to RGB changes nothing", 3, 5, 3, 5},
      {"Grayscale to CMYK changes nothing", 2, 1, 2, 1},
      {"stored 9 is RGB, moved to CMYK", 9, 1, 1, 6},
      {"no colr", -1, 1, -1, 1},
  };
  for (const Case& c : cases) {
    parameters->entries.clear();
    if (c.colr >= 0) fake::setInteger(parameters, "colr", c.colr);
    int32_t target = c.target;
    EXPECT_EQ(dw::convertEffectColorSpace(ref(parameters), target), kDWNoErr) << c.name;
    EXPECT_EQ(target, c.targetAfter) << c.name;
    EXPECT_EQ(fake::integerOf(parameters, "colr").value_or(-1), c.storedAfter) << c.name;
  }
}

TEST_F(EffectParameters, ColourSpaceConversionWithoutDictionaryOrWithARefusedWrite) {
  int32_t target = 1;
  EXPECT_EQ(dw::convertEffectColorSpace(nullptr, target), kDWNoErr);
  EXPECT_EQ(target, 1);

  fake::setInteger(parameters, "colr", 0);
  host.failures["SetInteger colr"] = fake::kInjected;
  EXPECT_EQ(dw::convertEffectColorSpace(ref(parameters), target), fake::kInjected);
  EXPECT_EQ(target, 1);
  EXPECT_EQ(fake::integerOf(parameters, "colr"), 0);
}

}  // namespace
