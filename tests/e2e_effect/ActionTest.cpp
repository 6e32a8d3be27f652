// Recording and playback of the plug-in's action events through the host's action manager.
#include <gtest/gtest.h>

#include "host/suites/action_manager_suite.h"
#include "refhost/loader/ActionPlayback.h"
#include "settings/ActionKeys.h"
#include "tests/e2e_effect/EffectHost.h"

namespace e2e_effect {
namespace {

using Edit = std::function<void(RasterizeSettings&)>;

const auto kConfirm = [](RasterizeSettings&) { return 0; };

// The Rasterize command run once on a selected square while the host records, its dialog
// confirmed after `edit`; the one event it recorded.
RecordedAction recordCommand(ColorMode mode, const Edit& edit) {
  EffectHost h(mode);
  h.host.actions().recording = true;
  h.select({h.rect(10, 10, 30, 30)});
  EXPECT_EQ(h.choose(kRasterizeItem, [&edit](RasterizeSettings& s) { return edit(s), 0; }), 0);
  EXPECT_EQ(h.host.actions().recorded().size(), 1u);
  return h.host.actions().recorded().empty() ? RecordedAction{} : h.host.actions().recorded().front();
}

// What the plug-in's dialog shows for the next Rasterize command of a host.
RasterizeSettings nextCommandRecord(EffectHost& h) {
  RasterizeSettings shown{};
  h.select({h.rect(40, 40, 50, 50)});
  h.choose(kRasterizeItem, [&shown](RasterizeSettings& s) { return shown = s, 1; });
  return shown;
}

TEST(Actions, AntialiasingOneIsRecordedAsNoneAndReplaysAsZero) {
  const RecordedAction recorded = recordCommand(ColorMode::Rgb, [](RasterizeSettings& s) { s.antialiasing = 1; });
  const auto found = recorded.parameters.values.find(dw::actions::KeyAntiAliasing);
  ASSERT_NE(found, recorded.parameters.values.end());
  EXPECT_EQ(found->second.name, "None");
  EXPECT_EQ(found->second.integer, 0);

  EffectHost h;
  h.select({h.rect(10, 10, 30, 30)});
  RasterizeSettings shown{};
  h.host.ui().dialogResponder = [&shown](RasterizeSettings& s, int32_t) { return shown = s, 0; };
  EXPECT_EQ(playAction(h.host, recorded, true), 0);
  EXPECT_EQ(shown.antialiasing, 0);
  EXPECT_EQ(h.live(ArtKind::Raster).size(), 1u);
}

TEST(Actions, ACmykRecordingReplaysAsRgbInAnRgbDocument) {
  const RecordedAction recorded =
      recordCommand(ColorMode::Cmyk, [](RasterizeSettings& s) { s.type = kRasterTypeCmyk; });
  EXPECT_EQ(recorded.parameters.values.at(dw::actions::KeyColorModel).integer, kRasterTypeCmyk);

  EffectHost h(ColorMode::Rgb);
  h.select({h.rect(10, 10, 30, 30)});
  ASSERT_EQ(playAction(h.host, recorded, false), 0);
  const std::vector<Art*> rasters = h.live(ArtKind::Raster);
  ASSERT_EQ(rasters.size(), 1u);
  EXPECT_EQ(rasters[0]->raster()->record.colorSpace, 1) << "opaque RGB";
}

TEST(Actions, ASettingsEventReplaysIntoTheDocumentAlone) {
  RecordedAction recorded;
  {
    EffectHost h;
    h.host.actions().recording = true;
    ASSERT_EQ(h.choose(kSettingsItem, [](RasterizeSettings& s) { return s.resolution = 150.0, 0; }), 0);
    ASSERT_EQ(h.host.actions().recorded().size(), 1u);
    recorded = h.host.actions().recorded().front();
  }
  RasterizeSettings before;
  {
    EffectHost fresh;  // one host runs in a process at a time
    before = nextCommandRecord(fresh);
  }
  EffectHost played;
  ASSERT_EQ(playAction(played.host, recorded, false), 0);
  const DictionaryPtr settings = played.doc->dictionary()->getDictionary("DW Auto Rasterize");
  ASSERT_TRUE(settings);
  EXPECT_EQ(settings->getInteger("dpi."), 150);
  const RasterizeSettings after = nextCommandRecord(played);
  EXPECT_EQ(after.type, before.type);
  EXPECT_EQ(after.resolution, before.resolution);
  EXPECT_EQ(after.antialiasing, before.antialiasing);
  EXPECT_EQ(after.options, before.options);
  EXPECT_EQ(after.padding, before.padding);
}

TEST(Actions, WithoutTheActionSuiteTheCommandRunsAndRecordsNothing) {
  EffectHost h(ColorMode::Rgb, kDWActionManagerSuite);
  h.host.actions().recording = true;
  h.select({h.rect(10, 10, 30, 30)});
  EXPECT_EQ(h.choose(kRasterizeItem, kConfirm), 0);
  EXPECT_EQ(h.live(ArtKind::Raster).size(), 1u);
  EXPECT_TRUE(h.host.actions().recorded().empty());
}

}  // namespace
}  // namespace e2e_effect
