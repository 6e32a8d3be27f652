#include <gtest/gtest.h>

#include <functional>
#include <string>

#include "commands/LiveEffect.h"
#include "fakes/CommandsTestSupport.h"
#include "shell/ErrorCodes.h"

namespace {

using fake::Art;
using fake::FakeArtHost;

// One Go Live on a 10 x 10 rectangle with a fresh host per case.
struct LiveEffectRun {
  LiveEffectRun() {
    dw::gGlobals = &globals;
    tree.installEngine(globals);
    source = tree.rectangle(tree.layers[0], "source", 0, 10, 10, 0);
    message.parameters = fake::handleOf(parameters);
    message.art = FakeArtHost::handle(source);
  }
  ~LiveEffectRun() { dw::gGlobals = nullptr; }

  std::string layer() const {
    std::string text;
    for (const Art* child : tree.layers[0]->children) text += (text.empty() ? "" : ",") + fake::shape(child);
    return text;
  }

  fake::FakeHost host;
  FakeArtHost tree;
  dw::PluginGlobals globals{};
  fake::Dictionary* parameters = host.newDictionary("params");
  Art* source = nullptr;
  LiveEffectGoMessage message{};
};

TEST(GoLive, TheResultFollowsTheTypeAndTheMask) {
  struct Case {
    const char* name;
    int16_t mode;
    int32_t colr;
    bool mask;
    bool pathfinder;
    int32_t typeUsed;
    const char* layer;  // top first; the first object is the result
    int32_t blendFlag;
  } const cases[] = {
      {"a transparent raster is wrapped in a group", kDWRGBColorMode, 4, false, true, 4, "group[raster]", 1},
      {"an opaque raster is the result itself", kDWRGBColorMode, 0, false, true, 0, "raster", 0},
      {"colr 5 in a gray document is gray with alpha", kDWGrayColorMode, 5, false, true, 6, "group[raster]", 1},
      {"colr 1 in an RGB document is opaque RGB", kDWRGBColorMode, 1, false, true, 0, "raster", 0},
      {"an opaque mask is the clip group", kDWRGBColorMode, 0, true, true, 0, "group[clip[path*,raster]]", 0},
      {"a transparent mask is grouped once more", kDWCMYKColorMode, 5, true, true, 5,
       "group[group[clip[path*,raster]]]", 1},
      {"without the Pathfinder the mask is skipped", kDWRGBColorMode, 0, true, false, 0, "raster", 0},
  };
  for (const Case& c : cases) {
    LiveEffectRun run;
    run.host.colorMode = c.mode;
    run.tree.holdPathfinderSuite(c.pathfinder);
    fake::setInteger(run.parameters, "colr", c.colr);
    fake::setBoolean(run.parameters, "mask", c.mask);
    fake::setReal(run.parameters, "padd", 2);

    ASSERT_EQ(dw::GoLive(run.message), kDWNoErr) << c.name;
    ASSERT_EQ(run.tree.engineCalls.size(), 1u) << c.name;
    const fake::EngineCall& call = run.tree.engineCalls[0];
    EXPECT_EQ(call.settings.type, c.typeUsed) << c.name;
    EXPECT_EQ(call.settings.options & 0x300u, 0x300u) << c.name;
    EXPECT_EQ(call.set, std::vector<Art*>{run.source}) << c.name;
    EXPECT_EQ(call.prep, run.source) << c.name;
    EXPECT_EQ(call.paintOrder, kDWPlaceAbove) << c.name;
    EXPECT_EQ(call.padding, 2.0) << c.name;
    EXPECT_TRUE(fake::sameRect(call.bounds, {0, 10, 10, 0})) << c.name << ": " << fake::describe(call.bounds);

    EXPECT_EQ(run.layer(), c.layer) << c.name;
    EXPECT_EQ(FakeArtHost::art(run.message.art), run.tree.layers[0]->children.at(0)) << c.name;
    EXPECT_EQ(run.tree.lastRaster->blendFlag, c.blendFlag) << c.name;
    EXPECT_EQ(run.host.progressTexts, std::vector<std::string>{"Rasterizing Artwork..."}) << c.name;
    EXPECT_EQ(run.host.progressClosed, 1) << c.name;
    EXPECT_EQ(run.tree.liveSets, 0) << c.name;
  }
}

TEST(GoLive, EdgesAndFailures) {
  struct Case {
    const char* name;
    std::function<void(LiveEffectRun&)> setUp;
    DWErr result;
    const char* layer;
    bool artKept;  // the message still names the art it came with
    size_t engineCalls;
  } const cases[] = {
      {"an invalid dictionary leaves the art", [](LiveEffectRun& r) { r.message.parameters = nullptr; }, kDWNoErr,
       "path", true, 0},
      {"an empty group is its own result",
       [](LiveEffectRun& r) {
         r.message.art = FakeArtHost::handle(r.tree.add(r.tree.layers[0], kDWGroupArt, "empty"));
       },
       kDWNoErr, "path,group[]", true, 0},
      {"an engine error keeps the source and shows nothing",
       [](LiveEffectRun& r) { r.tree.engineResult = dw::TooWideError; }, dw::TooWideError, "path", true, 1},
      {"a failed group takes the raster with it",
       [](LiveEffectRun& r) {
         fake::setInteger(r.parameters, "colr", 4);
         r.tree.failures["NewArt"] = fake::kInjected;
       },
       fake::kInjected, "", true, 1},
      {"a refused blend flag removes the group and the raster",
       [](LiveEffectRun& r) {
         fake::setInteger(r.parameters, "colr", 4);
         r.tree.failures["SetBlendFlag"] = fake::kInjected;
       },
       fake::kInjected, "", true, 1},
      {"a progress text the host cannot make is skipped",
       [](LiveEffectRun& r) { r.host.failures["NewFromLocalizable"] = fake::kInjected; }, kDWNoErr, "group[raster]",
       false, 1},
  };
  for (const Case& c : cases) {
    LiveEffectRun run;
    c.setUp(run);
    const DWArtHandle given = run.message.art;

    EXPECT_EQ(dw::GoLive(run.message), c.result) << c.name;
    EXPECT_EQ(run.layer(), c.layer) << c.name;
    EXPECT_EQ(run.message.art == given, c.artKept) << c.name;
    EXPECT_EQ(run.tree.engineCalls.size(), c.engineCalls) << c.name;
    EXPECT_TRUE(run.host.errorAlerts.empty()) << c.name;
    EXPECT_EQ(run.tree.liveSets, 0) << c.name;
    EXPECT_EQ(run.host.liveStrings, 0) << c.name;
  }
}

}  // namespace
