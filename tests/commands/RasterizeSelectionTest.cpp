#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <vector>

#include "commands/CommandMessage.h"
#include "fakes/CommandFixture.h"
#include "shell/ErrorCodes.h"

namespace {

using fake::Art;
using fake::FakeArtHost;
using Texts = std::vector<std::string>;

const char kInvalidSelection[] = "You have attempted to rasterize an invalid selection.";
const char kInvalidArt[] =
    "The selection contains Text objects, Symbols or Graphs, which will be rasterized but not added to the clipping "
    "mask.";
const char kRasterArt[] =
    "The selection contains raster objects, which will be re-rasterized but not added to the clipping mask.";
const char kLocked[] = "The current layer is locked.";
const char kUnknown[] = "An error occurred and your command could not be processed.";

class RasterizeSelection : public fake::CommandFixture {};

struct CommandCase {
  const char* name;
  std::function<void(FakeArtHost&, Art* layer, fake::FakeHost&, dw::PluginGlobals&)> setUp;
  DWErr result;
  Texts errors;
  Texts warnings;
  int32_t reverts;
  std::string layerShape;  // the layer's content afterwards, top first
};

std::string layerShape(const Art* layer) {
  std::string text;
  for (size_t i = 0; i < layer->children.size(); ++i) text += (i ? "," : "") + fake::shape(layer->children[i]);
  return text;
}

Art* selectedRectangle(FakeArtHost& t, Art* parent, const char* name, double l, double top, double r, double b) {
  Art* path = t.rectangle(parent, name, l, top, r, b);
  t.select(path);
  return path;
}

// Each case gets a host of its own.
TEST(RasterizeSelectionCases, RunsTheCommandOnTheSelection) {
  const CommandCase cases[] = {
      {"a partly selected path alone is an invalid selection",
       [](FakeArtHost& t, Art* l, fake::FakeHost&, dw::PluginGlobals&) {
         t.select(t.rectangle(l, "partial", 0, 10, 10, 0), false);
       },
       dw::InvalidSelectionError, {kInvalidSelection}, {}, 1, "path"},
      {"nothing selected is an invalid selection", [](FakeArtHost& t, Art* l, fake::FakeHost&, dw::PluginGlobals&) {
         t.rectangle(l, "unselected", 0, 10, 10, 0);
       },
       dw::InvalidSelectionError, {kInvalidSelection}, {}, 1, "path"},
      {"a path is replaced by the raster",
       [](FakeArtHost& t, Art* l, fake::FakeHost&, dw::PluginGlobals&) {
         selectedRectangle(t, l, "r", 0, 10, 10, 0);
       },
       kDWNoErr, {}, {}, 0, "raster"},
      {"a text frame and a path with the mask: one warning, clipped to the path",
       [](FakeArtHost& t, Art* l, fake::FakeHost&, dw::PluginGlobals& g) {
         g.commandSettings.createClippingMask = 1;
         t.select(t.add(l, kDWTextFrameArt, "text", {0, 5, 5, 0}));
         selectedRectangle(t, l, "r", 0, 10, 10, 0);
       },
       kDWNoErr, {}, {kInvalidArt}, 0, "group[clip[path*,raster]]"},
      {"text, a symbol and a graph warn once",
       [](FakeArtHost& t, Art* l, fake::FakeHost&, dw::PluginGlobals& g) {
         g.commandSettings.createClippingMask = 1;
         t.select(t.add(l, kDWTextFrameArt, "text", {0, 5, 5, 0}));
         t.select(t.add(l, kDWSymbolArt, "symbol", {0, 5, 5, 0}));
         Art* graph = t.add(l, kDWUnknownArt, "graph", {0, 5, 5, 0});
         graph->graph = true;
         t.select(graph);
         selectedRectangle(t, l, "r", 0, 10, 10, 0);
       },
       kDWNoErr, {}, {kInvalidArt}, 0, "group[clip[path*,raster]]"},
      {"an unknown kind that is no graph does not warn",
       [](FakeArtHost& t, Art* l, fake::FakeHost&, dw::PluginGlobals& g) {
         g.commandSettings.createClippingMask = 1;
         t.select(t.add(l, kDWUnknownArt, "unknown", {0, 5, 5, 0}));
         selectedRectangle(t, l, "r", 0, 10, 10, 0);
       },
       kDWNoErr, {}, {}, 0, "group[clip[path*,raster]]"},
      {"a raster in the selection warns",
       [](FakeArtHost& t, Art* l, fake::FakeHost&, dw::PluginGlobals& g) {
         g.commandSettings.createClippingMask = 1;
         t.select(t.add(l, kDWRasterArt, "old raster", {0, 5, 5, 0}));
         selectedRectangle(t, l, "r", 0, 10, 10, 0);
       },
       kDWNoErr, {}, {kRasterArt}, 0, "group[clip[path*,raster]]"},
      {"text and a raster give both warnings, text first",
       [](FakeArtHost& t, Art* l, fake::FakeHost&, dw::PluginGlobals& g) {
         g.commandSettings.createClippingMask = 1;
         t.select(t.add(l, kDWRasterArt, "old raster", {0, 5, 5, 0}));
         t.select(t.add(l, kDWTextFrameArt, "text", {0, 5, 5, 0}));
       },
       kDWNoErr, {}, {kInvalidArt, kRasterArt}, 0, "group[raster]"},
      {"the mask without the Pathfinder suite deletes the sources without warning",
       [](FakeArtHost& t, Art* l, fake::FakeHost&, dw::PluginGlobals& g) {
         g.commandSettings.createClippingMask = 1;
         t.holdPathfinderSuite(false);
         t.select(t.add(l, kDWTextFrameArt, "text", {0, 5, 5, 0}));
         selectedRectangle(t, l, "r", 0, 10, 10, 0);
       },
       kDWNoErr, {}, {}, 0, "raster"},
      {"a locked layer gives its message",
       [](FakeArtHost& t, Art* l, fake::FakeHost&, dw::PluginGlobals&) {
         t.engineResult = dw::LockedLayerError;
         selectedRectangle(t, l, "r", 0, 10, 10, 0);
       },
       dw::LockedLayerError, {kLocked}, {}, 1, "path"},
      {"an unknown host error gives the generic message",
       [](FakeArtHost& t, Art* l, fake::FakeHost&, dw::PluginGlobals&) {
         t.failures["DisposeArt"] = fake::kInjected;
         selectedRectangle(t, l, "r", 0, 10, 10, 0);
       },
       fake::kInjected, {kUnknown}, {}, 1, "raster,path"},
      {"a cancel reverts and shows nothing",
       [](FakeArtHost& t, Art* l, fake::FakeHost& host, dw::PluginGlobals&) {
         host.cancelAtUpdate = 2;
         selectedRectangle(t, l, "r", 0, 10, 10, 0);
       },
       dw::UserCancelled, {}, {}, 1, "path"},
      {"the mask running out of memory",
       [](FakeArtHost& t, Art* l, fake::FakeHost&, dw::PluginGlobals& g) {
         g.commandSettings.createClippingMask = 1;
         t.failures["Unite"] = dw::OutOfMemoryError;
         selectedRectangle(t, l, "a", 0, 10, 10, 0);
         selectedRectangle(t, l, "b", 5, 15, 15, 5);
       },
       dw::MaskMemoryError, {"There was insufficient memory for Pathfinder to create the mask."}, {}, 1, "raster"},
  };
  for (const CommandCase& c : cases) {
    SCOPED_TRACE(c.name);
    fake::FakeHost host;
    FakeArtHost tree;
    dw::PluginGlobals globals{};
    globals.commandSettings = dw::makeCommandDefaults();
    dw::gGlobals = &globals;
    tree.installEngine(globals);
    c.setUp(tree, tree.layers[0], host, globals);
    MenuMessage message{};

    EXPECT_EQ(dw::RasterizeSelection(message.d), c.result) << c.name;
    EXPECT_EQ(host.errorAlerts, c.errors) << c.name;
    EXPECT_EQ(host.warningAlerts, c.warnings) << c.name;
    EXPECT_EQ(host.reverts, c.reverts) << c.name;
    EXPECT_EQ(layerShape(tree.layers[0]), c.layerShape) << c.name;
    EXPECT_EQ(dw::currentCommandMessage(), nullptr) << c.name;
    EXPECT_EQ(tree.liveSets, 0) << c.name;
    EXPECT_EQ(host.liveStrings, 0) << c.name;
    dw::gGlobals = nullptr;
  }
}

TEST_F(RasterizeSelection, HandsTheEngineTheSetSettingsBoundsAndPlacement) {
  Art* group = art.add(layer, kDWGroupArt, "group");
  Art* inGroup = art.rectangle(group, "in group", 0, 10, 10, 0);
  art.select(inGroup);
  art.select(art.rectangle(group, "second", 20, 40, 30, 30));
  globals.commandSettings.padding = 4;
  globals.commandSettings.resolution = 150;

  ASSERT_EQ(run(), kDWNoErr);
  ASSERT_EQ(art.engineCalls.size(), 1u);
  const fake::EngineCall& call = art.engineCalls[0];
  EXPECT_EQ(call.set.size(), 2u);
  EXPECT_EQ(call.settings, globals.commandSettings);
  EXPECT_TRUE(fake::sameRect(call.bounds, {0, 40, 30, 0})) << fake::describe(call.bounds);
  EXPECT_EQ(call.paintOrder, kDWPlaceAbove);
  EXPECT_EQ(call.prep, inGroup) << "the first object whose parent is a group";
  EXPECT_EQ(call.padding, 4.0);
  EXPECT_EQ(childNames(group), std::vector<std::string>{"raster"}) << "the raster took the sources' place";

  EXPECT_EQ(host.progressTexts, std::vector<std::string>{"Rasterizing Artwork..."});
  EXPECT_EQ(host.progressUpdates, (std::vector<std::pair<int32_t, int32_t>>{{1, 4}, {2, 4}, {3, 4}}));
  EXPECT_EQ(host.progressClosed, 1);
  EXPECT_EQ(host.undoTexts, (std::vector<std::pair<std::string, std::string>>{{"Undo Rasterize", "Redo Rasterize"}}));
  EXPECT_EQ(host.reverts, 0);
}

TEST_F(RasterizeSelection, ATargetedLayerWithAnAppearanceIsWrapped) {
  fake::Style* appearance = art.newStyle("drop shadow", layer);
  layer->style = appearance;
  art.rectangle(layer, "a", 0, 10, 10, 0);
  art.rectangle(layer, "b", 20, 30, 30, 20);
  art.select(layer);

  ASSERT_EQ(run(), kDWNoErr);
  ASSERT_EQ(art.engineCalls.size(), 1u);
  ASSERT_EQ(art.engineCalls[0].set.size(), 1u);
  const Art* wrapper = art.engineCalls[0].set[0];
  EXPECT_EQ(wrapper->style, appearance) << "the group carries the appearance";
  EXPECT_EQ(layer->style, nullptr) << "the layer lost it";
  EXPECT_FALSE(wrapper->alive) << "the group was replaced by the raster";
  EXPECT_EQ(layerShape(layer), "raster");
  EXPECT_TRUE(fake::sameRect(art.engineCalls[0].bounds, {0, 30, 30, 0}));
}

TEST_F(RasterizeSelection, TheWrappedLayerKeepsItsContentInOrder) {
  layer->style = art.newStyle("glow", layer);
  art.rectangle(layer, "a", 0, 10, 10, 0);
  art.rectangle(layer, "b", 20, 30, 30, 20);
  art.rectangle(layer, "c", 40, 50, 50, 40);
  art.select(layer);
  art.engineResult = fake::kInjected;  // stop right after the preparation
  EXPECT_EQ(run(), fake::kInjected);
  const Art* wrapper = art.engineCalls.at(0).set.at(0);
  EXPECT_EQ(childNames(wrapper), (std::vector<std::string>{"a", "b", "c"}));
  EXPECT_EQ(childNames(layer), std::vector<std::string>{wrapper->name});
}

TEST_F(RasterizeSelection, RecordsTheCommandWhileTheHostRecords) {
  struct Case {
    const char* name;
    bool held;
    bool recording;
    size_t events;
  } const cases[] = {{"recording", true, true, 1}, {"not recording", true, false, 0}, {"no suite", false, true, 0}};
  for (const Case& c : cases) {
    layer->children.clear();
    host.recorded.clear();
    host.holdActionSuite(c.held);
    host.recording = c.recording;
    art.select(art.rectangle(layer, "r", 0, 10, 10, 0));
    EXPECT_EQ(run(), kDWNoErr) << c.name;
    ASSERT_EQ(host.recorded.size(), c.events) << c.name;
    if (c.events) {
      EXPECT_EQ(host.recorded[0].name, "dw_plugin_rasterize") << c.name;
    }
  }
}

TEST_F(RasterizeSelection, AFailedRunRecordsNothing) {
  host.holdActionSuite(true);
  host.recording = true;
  EXPECT_EQ(run(), dw::InvalidSelectionError);
  EXPECT_TRUE(host.recorded.empty());
}

TEST_F(RasterizeSelection, TheCommandMessageIsCurrentWhileTheMaskIsBuilt) {
  globals.commandSettings.createClippingMask = 1;
  art.select(art.rectangle(layer, "a", 0, 10, 10, 0));
  art.select(art.rectangle(layer, "b", 5, 15, 15, 5));
  ASSERT_EQ(run(), kDWNoErr);
  ASSERT_EQ(art.uniteCalls.size(), 1u);
  EXPECT_EQ(art.uniteCalls[0].message, &message);
  EXPECT_EQ(dw::currentCommandMessage(), nullptr);
}

TEST_F(RasterizeSelection, ProgressShowsOneMoreStepAndStopsOnRequest) {
  EXPECT_EQ(dw::RasterizeProgress(0, 10), 1);
  EXPECT_EQ(dw::RasterizeProgress(5, 10), 1);
  host.cancelAtUpdate = 3;
  EXPECT_EQ(dw::RasterizeProgress(9, 10), 0);
  EXPECT_EQ(host.progressUpdates, (std::vector<std::pair<int32_t, int32_t>>{{0, 11}, {5, 11}, {9, 11}}));
}

}  // namespace
