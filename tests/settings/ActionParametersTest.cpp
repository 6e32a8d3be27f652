#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "fakes/SettingsTestSupport.h"
#include "settings/ActionKeys.h"
#include "settings/ActionParameters.h"

namespace {

using fake::ActionValue;
using fake::ParamBlock;
namespace act = dw::actions;

class ActionParameters : public fake::HostTest {
 protected:
  ActionParameters() {
    host.holdActionSuite(true);
    host.recording = true;
  }
};

ActionValue enumerated(const char* name, int32_t value) { return ActionValue::ofEnumerated(name, value); }
ActionValue integer(int32_t value) { return ActionValue::ofInteger(value); }
ActionValue boolean(bool value) { return ActionValue::ofBoolean(value); }
ActionValue pixels(double value) { return ActionValue::ofUnitReal(act::UnitPixels, value); }

void expectValue(const ParamBlock& block, uint32_t key, const ActionValue& expected, const std::string& name) {
  auto it = block.values.find(key);
  ASSERT_NE(it, block.values.end()) << name;
  EXPECT_EQ(int(it->second.kind), int(expected.kind)) << name;
  EXPECT_EQ(it->second.name, expected.name) << name;
  EXPECT_EQ(it->second.integer, expected.integer) << name;
  EXPECT_EQ(it->second.boolean, expected.boolean) << name;
  EXPECT_EQ(it->second.unit, expected.unit) << name;
  EXPECT_EQ(it->second.real, expected.real) << name;
}

RasterizeSettings recordOf(int32_t type, double res, int16_t aa, uint32_t options) {
  RasterizeSettings s = dw::makeCommandDefaults();
  s.type = type;
  s.resolution = res;
  s.antialiasing = aa;
  s.options = options;
  s.createClippingMask = 1;
  s.preserveSpotColors = 0;
  s.padding = 2.5;
  return s;
}

TEST_F(ActionParameters, TheCommandEventCarriesItsKeysInOrder) {
  struct Case {
    const char* name;
    RasterizeSettings record;
    std::vector<uint32_t> order;
    std::vector<std::pair<uint32_t, ActionValue>> values;
  };
  const std::vector<uint32_t> withDpi = {act::KeyColorModel,  act::KeyResolution,   act::KeyBackground,
                                         act::KeyTypeQuality, act::KeyAntiAliasing, act::KeyMask,
                                         act::KeyPreserveSpot, act::KeyPadding};
  std::vector<uint32_t> withDres = withDpi;
  withDres[1] = act::KeyEffectsResolution;
  const Case cases[] = {
      {"transparent CMYK, art optimized", recordOf(5, 150.9, 4, 0x300), withDpi,
       {{act::KeyColorModel, enumerated("CMYK", 5)},
        {act::KeyResolution, integer(150)},
        {act::KeyBackground, enumerated("Transparent", 1)},
        {act::KeyTypeQuality, enumerated("Streamline", 0)},
        {act::KeyAntiAliasing, enumerated("Art Optimized", 1)},
        {act::KeyMask, boolean(true)},
        {act::KeyPreserveSpot, boolean(false)},
        {act::KeyPadding, pixels(2.5)}}},
      {"antialiasing 1 records None", recordOf(0, 300, 1, 0x10), withDpi,
       {{act::KeyColorModel, enumerated("RGB", 0)},
        {act::KeyBackground, enumerated("White", 0)},
        {act::KeyAntiAliasing, enumerated("None", 0)}}},
      {"type optimized, outline text, effects resolution", recordOf(7, 300, 4, 0x10 | 0x08 | 0x20), withDres,
       {{act::KeyColorModel, enumerated("Bitmap", 7)},
        {act::KeyEffectsResolution, enumerated("Use Raster Effects Setting", 0)},
        {act::KeyTypeQuality, enumerated("Outline", 1)},
        {act::KeyAntiAliasing, enumerated("Type Optimized", 2)}}},
      {"gray", recordOf(6, 72, 0, 0), withDpi, {{act::KeyColorModel, enumerated("Grayscale", 6)}}},
  };
  for (const Case& c : cases) {
    host.recorded.clear();
    EXPECT_EQ(dw::recordRasterizeEvent(c.record), kDWNoErr) << c.name;
    ASSERT_EQ(host.recorded.size(), 1u) << c.name;
    const fake::RecordedEvent& event = host.recorded[0];
    EXPECT_EQ(event.name, "dw_plugin_rasterize") << c.name;
    EXPECT_EQ(event.dialogState, 3) << c.name;
    EXPECT_EQ(event.block.order, c.order) << c.name;
    for (const auto& [key, value] : c.values) expectValue(event.block, key, value, c.name);
    EXPECT_EQ(host.liveBlocks, 0) << c.name;
  }
}

TEST_F(ActionParameters, TheSettingsEventRecordsAntiAliasAsABoolean) {
  struct Case {
    const char* name;
    int16_t antialiasing;
    bool alis;
  } const cases[] = {{"0 is off", 0, false}, {"1 is off", 1, false}, {"2 is on", 2, true}, {"4 is on", 4, true}};
  for (const Case& c : cases) {
    host.recorded.clear();
    // The settings event always records the resolution, whatever the options say.
    EXPECT_EQ(dw::recordDocumentSettingsEvent(recordOf(2, 96, c.antialiasing, 0x20)), kDWNoErr) << c.name;
    ASSERT_EQ(host.recorded.size(), 1u) << c.name;
    const fake::RecordedEvent& event = host.recorded[0];
    EXPECT_EQ(event.name, "dw_plugin_rasterEffectSettings") << c.name;
    EXPECT_EQ(event.dialogState, 3) << c.name;
    EXPECT_EQ(event.block.order,
              (std::vector<uint32_t>{act::KeyColorModel, act::KeyResolution, act::KeyBackground, act::KeyAntiAlias,
                                     act::KeyMask, act::KeyPreserveSpot, act::KeyPadding}))
        << c.name;
    expectValue(event.block, act::KeyAntiAlias, boolean(c.alis), c.name);
    expectValue(event.block, act::KeyResolution, integer(96), c.name);
  }
}

TEST_F(ActionParameters, EnumeratedNamesAreTheLocalisedLabels) {
  host.translations["$$$/Rasterize/Str/11005"] = "CMJN";
  host.translations["$$$/Rasterize/Str/11011"] = "Blanc";
  dw::recordRasterizeEvent(recordOf(1, 300, 4, 0));
  ASSERT_EQ(host.recorded.size(), 1u);
  expectValue(host.recorded[0].block, act::KeyColorModel, enumerated("CMJN", 1), "translated colour model");
  expectValue(host.recorded[0].block, act::KeyBackground, enumerated("Blanc", 0), "translated background");
  EXPECT_EQ(host.liveStrings, 0);
}

TEST_F(ActionParameters, NothingIsRecordedUnlessTheHostRecords) {
  struct Case {
    const char* name;
    bool held;
    bool recording;
    const char* failing;
  } const cases[] = {
      {"not recording", true, false, ""},
      {"no action suite", false, true, ""},
      {"no parameter block", true, true, "NewParamBlock"},
  };
  for (const Case& c : cases) {
    host.recorded.clear();
    host.failures = {{c.failing, fake::kInjected}};
    host.holdActionSuite(c.held);
    host.recording = c.recording;
    EXPECT_EQ(dw::actionsAreRecording(), c.held && c.recording) << c.name;
    EXPECT_EQ(dw::recordRasterizeEvent(recordOf(0, 300, 4, 0)), kDWNoErr) << c.name;
    EXPECT_EQ(dw::recordDocumentSettingsEvent(recordOf(0, 300, 4, 0)), kDWNoErr) << c.name;
    EXPECT_TRUE(host.recorded.empty()) << c.name;
    EXPECT_EQ(host.liveBlocks, 0) << c.name;
  }
}

struct PlaybackCase {
  const char* name;
  int16_t mode;
  RasterizeSettings before;
  std::vector<std::pair<uint32_t, ActionValue>> block;
  RasterizeSettings after;
};

RasterizeSettings playbackBase() {
  RasterizeSettings s = dw::makeCommandDefaults(9, 0);
  s.options = 0x300 | 0x20 | 0x08;  // effects resolution and outline text set
  s.type = 5;
  s.createClippingMask = 1;
  s.padding = 7;
  return s;
}

RasterizeSettings changed(void (*edit)(RasterizeSettings&)) {
  RasterizeSettings s = playbackBase();
  s.reserved = 0;
  // Without 'mask', 'pspt' and 'padd' in the block these read as 0; without 'dres' the bit clears.
  s.createClippingMask = 0;
  s.preserveSpotColors = 0;
  s.padding = 0;
  s.options &= ~0x20u;
  s.options &= ~0x10u;
  edit(s);
  return s;
}

TEST_F(ActionParameters, PlaybackAppliesEachKeyByItsRule) {
  const PlaybackCase cases[] = {
      {"empty block", kDWCMYKColorMode, playbackBase(), {}, changed([](RasterizeSettings&) {})},
      {"'ali+' 2 keeps effects resolution and outline text and adds 0x14", kDWCMYKColorMode, playbackBase(),
       {{act::KeyEffectsResolution, enumerated("", 0)},
        {act::KeyTypeQuality, enumerated("", 1)},
        {act::KeyAntiAliasing, enumerated("", 2)}},
       changed([](RasterizeSettings& s) {
         s.options |= 0x20 | 0x08 | 0x14;
         s.antialiasing = 4;
       })},
      {"'ali+' 0", kDWCMYKColorMode, playbackBase(), {{act::KeyAntiAliasing, enumerated("", 0)}},
       changed([](RasterizeSettings& s) { s.antialiasing = 0; })},
      {"'ali+' 1", kDWCMYKColorMode,
       [] {
         RasterizeSettings s = playbackBase();
         s.antialiasing = 0;
         s.options |= 0x10;
         return s;
       }(),
       {{act::KeyAntiAliasing, enumerated("", 1)}}, changed([](RasterizeSettings& s) { s.antialiasing = 4; })},
      {"'ali+' 5 leaves anti-aliasing and TypeOptimized", kDWCMYKColorMode,
       [] {
         RasterizeSettings s = playbackBase();
         s.antialiasing = 3;
         s.options |= 0x10;
         return s;
       }(),
       {{act::KeyAntiAliasing, enumerated("", 5)}}, changed([](RasterizeSettings& s) {
         s.antialiasing = 3;
         s.options |= 0x10;
       })},
      {"no 'ali+', 'alis' off", kDWCMYKColorMode, playbackBase(), {{act::KeyAntiAlias, boolean(false)}},
       changed([](RasterizeSettings& s) { s.antialiasing = 0; })},
      {"no 'ali+', 'alis' on", kDWCMYKColorMode,
       [] {
         RasterizeSettings s = playbackBase();
         s.antialiasing = 0;
         return s;
       }(),
       {{act::KeyAntiAlias, boolean(true)}}, changed([](RasterizeSettings& s) { s.antialiasing = 4; })},
      {"CMYK recorded, played in an RGB document", kDWRGBColorMode, playbackBase(),
       {{act::KeyColorModel, enumerated("CMYK", 1)}}, changed([](RasterizeSettings& s) { s.type = 0; })},
      {"colr 9 leaves the type, which still follows the document", kDWGrayColorMode, playbackBase(),
       {{act::KeyColorModel, enumerated("", 9)}}, changed([](RasterizeSettings& s) { s.type = 6; })},
      {"no colr: the type is left, even in a gray document", kDWGrayColorMode, playbackBase(), {},
       changed([](RasterizeSettings&) {})},
      {"resolution", kDWCMYKColorMode, playbackBase(), {{act::KeyResolution, integer(96)}},
       changed([](RasterizeSettings& s) { s.resolution = 96; })},
      {"type quality 0 clears outline text", kDWCMYKColorMode, playbackBase(),
       {{act::KeyTypeQuality, enumerated("", 0)}}, changed([](RasterizeSettings& s) { s.options &= ~0x08u; })},
      {"type quality 4 leaves outline text", kDWCMYKColorMode,
       [] {
         RasterizeSettings s = playbackBase();
         s.options &= ~0x08u;
         return s;
       }(),
       {{act::KeyTypeQuality, enumerated("", 4)}}, changed([](RasterizeSettings& s) { s.options &= ~0x08u; })},
      {"mask, spot colours and padding", kDWCMYKColorMode, playbackBase(),
       {{act::KeyMask, boolean(true)}, {act::KeyPreserveSpot, boolean(true)}, {act::KeyPadding, pixels(4.5)}},
       changed([](RasterizeSettings& s) {
         s.createClippingMask = 1;
         s.preserveSpotColors = 1;
         s.padding = 4.5;
       })},
      {"background is not read", kDWCMYKColorMode, playbackBase(),
       {{act::KeyBackground, enumerated("White", 0)}}, changed([](RasterizeSettings&) {})},
  };
  for (const PlaybackCase& c : cases) {
    host.colorMode = c.mode;
    ParamBlock* block = host.newBlock();
    for (const auto& [key, value] : c.block) block->set(key, value);
    RasterizeSettings s = c.before;
    dw::applyActionParameters(fake::handleOf(block), s);
    EXPECT_EQ(s, c.after) << c.name << ": " << fake::describe(s) << " expected " << fake::describe(c.after);
  }
}

TEST_F(ActionParameters, PlaybackWithoutBlockOrSuiteLeavesTheRecord) {
  RasterizeSettings s = playbackBase();
  dw::applyActionParameters(nullptr, s);
  EXPECT_EQ(s, playbackBase());
  host.holdActionSuite(false);
  dw::applyActionParameters(fake::handleOf(host.newBlock()), s);
  EXPECT_EQ(s, playbackBase());
}

TEST_F(ActionParameters, RecordingThenPlayingBackRestoresTheCommand) {
  struct Case {
    const char* name;
    RasterizeSettings recorded;
    int16_t antialiasing;
  } const cases[] = {
      {"antialiasing 1 comes back as 0", recordOf(4, 300, 1, 0x300), 0},
      {"antialiasing 4", recordOf(0, 72, 4, 0x300 | 0x08), 4},
      {"type optimized", recordOf(6, 150, 4, 0x300 | 0x10 | 0x04), 4},
      {"effects resolution", recordOf(2, 300, 0, 0x300 | 0x20), 0},
  };
  for (const Case& c : cases) {
    host.colorMode = kDWRGBColorMode;
    host.recorded.clear();
    dw::recordRasterizeEvent(c.recorded);
    ASSERT_EQ(host.recorded.size(), 1u) << c.name;
    ParamBlock* block = host.newBlock();
    *block = host.recorded[0].block;
    RasterizeSettings replayed = dw::makeCommandDefaults();
    replayed.options = 0x300;
    dw::applyActionParameters(fake::handleOf(block), replayed);
    RasterizeSettings expected = c.recorded;
    expected.antialiasing = c.antialiasing;
    expected.reserved = 0;
    EXPECT_EQ(replayed, expected) << c.name << ": " << fake::describe(replayed);
  }
}

TEST_F(ActionParameters, TheSettingsEventPlaysBackOntoTheDocumentSettings) {
  host.colorMode = kDWGrayColorMode;
  host.level = 11;
  const RasterizeSettings base = dw::documentSettingsEventBase();
  EXPECT_EQ(base.type, 6);
  EXPECT_EQ(base.options, 0u);
  EXPECT_EQ(base.reserved, 0);

  RasterizeSettings recorded = recordOf(0, 144, 4, 0);
  recorded.preserveSpotColors = 1;
  dw::recordDocumentSettingsEvent(recorded);
  ParamBlock* block = host.newBlock();
  *block = host.recorded.at(0).block;
  RasterizeSettings replayed = base;
  dw::applyActionParameters(fake::handleOf(block), replayed);
  EXPECT_EQ(replayed.type, 2) << "RGB recorded, gray document";
  EXPECT_EQ(replayed.resolution, 144);
  EXPECT_EQ(replayed.antialiasing, 4);
  EXPECT_EQ(replayed.preserveSpotColors, 1);
  EXPECT_EQ(replayed.createClippingMask, 1);
  EXPECT_EQ(replayed.padding, 2.5);
  // No 'type' key in the settings event: outline text is set, as for any block without it.
  EXPECT_EQ(replayed.options, 0x08u);
}

}  // namespace
