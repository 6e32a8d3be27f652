// The Rasterize menu command delivered by the host: its errors, warnings, revert and undo.
#include <gtest/gtest.h>

#include "tests/e2e_command/CommandHost.h"

namespace e2e_command {
namespace {

const std::string kInvalidSelection = "You have attempted to rasterize an invalid selection.";
const std::string kLockedLayer = "The current layer is locked.";
const std::string kUnknownError = "An error occurred and your command could not be processed.";
const std::string kInvalidArtInMask =
    "The selection contains Text objects, Symbols or Graphs, which will be rasterized but not added to the clipping "
    "mask.";
const std::string kRasterInMask =
    "The selection contains raster objects, which will be re-rasterized but not added to the clipping mask.";

const Edit kWithMask = [](RasterizeSettings& s) { s.createClippingMask = 1; };

// A failed or cancelled command leaves the document exactly as it was and no undo step; only its
// message (none for a cancel) is shown.
TEST(MenuCommand, AFailedCommandRevertsAndShowsItsMessage) {
  struct Case {
    const char* name;
    std::function<void(CommandHost&, Art*)> arrange;
    DWErr code;
    std::vector<std::string> errors;
  };
  const Case cases[] = {
      {"a partly selected path alone",
       [](CommandHost&, Art* path) { path->setAttributes(ArtAttr::FullySelected, 0); }, hostCode("!sel"),
       {kInvalidSelection}},
      {"art on a locked layer", [](CommandHost& h, Art*) { h.doc->currentLayer()->setEditable(false); },
       hostCode("NESS"), {kLockedLayer}},
      {"a host error the plug-in does not know, after the raster exists",
       [](CommandHost& h, Art*) { h.host.controls().failCall(1, hostCode("Odd!"), "DW Art Suite", "DisposeArt"); },
       hostCode("Odd!"), {kUnknownError}},
      {"the user stops at the first progress update",
       [](CommandHost& h, Art*) { h.host.controls().cancelAfterProgressUpdates = 1; }, hostCode("STOP"), {}},
  };
  for (const Case& c : cases) {
    CommandHost h;
    Art* path = h.rect(10, 10, 50, 40);
    h.select({path});
    c.arrange(h, path);
    const std::string before = h.content();
    EXPECT_EQ(h.rasterize(), c.code) << c.name;
    EXPECT_EQ(h.alerts(Alert::Kind::Error), c.errors) << c.name;
    EXPECT_TRUE(h.alerts(Alert::Kind::Warning).empty()) << c.name;
    EXPECT_EQ(h.content(), before) << c.name;
    EXPECT_FALSE(h.doc->canUndo()) << c.name;
  }
}

TEST(MenuCommand, ACommandIsOneUndoStep) {
  CommandHost h;
  Art* path = h.rect(10, 10, 50, 40);
  h.select({path});
  const std::string before = h.content();
  ASSERT_EQ(h.rasterize(), 0);
  EXPECT_FALSE(path->isAlive());
  ASSERT_EQ(h.live(ArtKind::Raster).size(), 1u);
  EXPECT_EQ(h.doc->nextUndoText(), "Undo Rasterize");
  h.doc->undo();
  EXPECT_EQ(h.content(), before);
  EXPECT_TRUE(path->isAlive());
}

// What the mask option warns about, once each, and what becomes of the art.
TEST(MenuCommand, ArtThatCannotJoinTheMaskIsWarnedAboutOnce) {
  struct Case {
    const char* name;
    bool withText;
    bool withRaster;
    std::vector<std::string> warnings;
  };
  const Case cases[] = {
      {"a text frame and a path", true, false, {kInvalidArtInMask}},
      {"a raster and a path", false, true, {kRasterInMask}},
      {"a text frame, a raster and a path", true, true, {kInvalidArtInMask, kRasterInMask}},
  };
  for (const Case& c : cases) {
    CommandHost h;
    Art* path = h.rect(10, 10, 50, 40);
    std::vector<Art*> selection = {path};
    if (c.withText) selection.push_back(h.text("Hi", 20, 20));
    if (c.withRaster) selection.push_back(h.raster(30, 30));
    h.select(selection);
    ASSERT_EQ(h.rasterize(kWithMask), 0) << c.name;
    EXPECT_EQ(h.alerts(Alert::Kind::Warning), c.warnings) << c.name;
    EXPECT_TRUE(h.alerts(Alert::Kind::Error).empty()) << c.name;
    // The path alone clips the new raster; the other sources are rasterized and gone.
    const std::vector<Art*> rasters = h.live(ArtKind::Raster);
    ASSERT_EQ(rasters.size(), 1u) << c.name;
    const Art* clipGroup = rasters[0]->parent();
    ASSERT_TRUE(clipGroup && clipGroup->isClipped()) << c.name;
    EXPECT_EQ(clipGroup->firstChild(), path) << c.name;
    EXPECT_TRUE(path->pathStyle().clipping) << c.name;
    EXPECT_TRUE(h.live(ArtKind::TextFrame).empty()) << c.name;
  }
}

// The mask option without the Pathfinder suite cannot be reached through the real plug-in, which
// does not start without it (a required suite); tests/commands covers that branch over a fake host.

TEST(MenuCommand, ATargetedLayerWithAnAppearanceIsWrappedInAGroup) {
  CommandHost h;
  Art* layer = h.doc->currentLayer()->group();
  Art* lower = h.rect(10, 10, 50, 40);
  Art* upper = h.rect(60, 10, 90, 40);  // made last: on top
  auto appearance = std::make_shared<ArtStyle>();
  appearance->name = "layer appearance";
  appearance->hasPaint = true;  // an appearance of its own, as the host reports for the group that takes it
  layer->setArtStyle(appearance);
  h.select({layer});
  const size_t firstNew = h.doc->artArenaSize();
  ASSERT_EQ(h.rasterize(), 0);
  EXPECT_TRUE(h.host.ui().alerts().empty());
  // The layer stays and gives up its appearance; the raster replaces its content.
  EXPECT_TRUE(layer->isAlive());
  EXPECT_EQ(layer->artStyle(), nullptr);
  ASSERT_EQ(layer->childCount(), 1u);
  const Art* raster = layer->firstChild();
  ASSERT_EQ(raster->kind(), ArtKind::Raster);
  const Rect bounds = raster->raster()->documentBounds();
  EXPECT_TRUE(bounds.left <= 10.0 && bounds.right >= 90.0) << "both shapes were rasterized";
  // What was rasterized: a new group that took the appearance and the layer's content, deleted
  // after the raster was placed.
  const Art* wrapper = nullptr;
  for (size_t serial = firstNew; serial < h.doc->artArenaSize(); ++serial)
    if (const ArtStylePtr& style = h.doc->artBySerial(serial)->artStyle(); style && style->name == appearance->name)
      wrapper = h.doc->artBySerial(serial);
  ASSERT_NE(wrapper, nullptr);
  EXPECT_EQ(wrapper->kind(), ArtKind::Group);
  EXPECT_FALSE(wrapper->isAlive());
  // Deleted with it (a deleted group keeps no links; the order inside is tested over a fake host).
  EXPECT_FALSE(upper->isAlive());
  EXPECT_FALSE(lower->isAlive());
}

}  // namespace
}  // namespace e2e_command
