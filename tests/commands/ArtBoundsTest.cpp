#include <gtest/gtest.h>

#include <functional>

#include "commands/ArtBounds.h"
#include "commands/RasterizeSuite.h"
#include "fakes/CommandsTestSupport.h"
#include "shell/ErrorCodes.h"

namespace {

using fake::Art;

class ArtBounds : public fake::CommandsTest {};

TEST_F(ArtBounds, SetsUniteTheBoundsOfTheirVisibleMeasurableObjects) {
  struct Case {
    const char* name;
    std::function<std::vector<Art*>(fake::FakeArtHost&, Art*)> build;
    bool parentTest;
    DWRealRect expected;
  };
  const Case cases[] = {
      {"empty set keeps the empty start value", [](fake::FakeArtHost&, Art*) { return std::vector<Art*>{}; }, true,
       dw::kEmptyArtBounds},
      {"two rectangles",
       [](fake::FakeArtHost& t, Art* l) {
         return std::vector<Art*>{t.rectangle(l, "a", 0, 10, 10, 0), t.rectangle(l, "b", 5, 30, 20, 20)};
       },
       true, {0, 30, 20, 0}},
      {"a hidden object does not widen",
       [](fake::FakeArtHost& t, Art* l) {
         Art* hidden = t.rectangle(l, "hidden", -50, 50, 50, -50);
         hidden->attributes |= kDWArtHidden;
         return std::vector<Art*>{t.rectangle(l, "a", 0, 10, 10, 0), hidden};
       },
       true, {0, 10, 10, 0}},
      {"a guide does not widen",
       [](fake::FakeArtHost& t, Art* l) {
         Art* guide = t.rectangle(l, "guide", -50, 50, 50, -50);
         guide->guide = true;
         return std::vector<Art*>{guide, t.rectangle(l, "a", 0, 10, 10, 0)};
       },
       true, {0, 10, 10, 0}},
      {"a layer has no parent and does not count with the parent test",
       [](fake::FakeArtHost& t, Art* l) {
         t.rectangle(l, "in layer", -5, 5, 5, -5);
         return std::vector<Art*>{l, t.rectangle(l, "a", 0, 10, 10, 0)};
       },
       true, {0, 10, 10, 0}},
      {"without the parent test the layer counts",
       [](fake::FakeArtHost& t, Art* l) {
         t.rectangle(l, "in layer", -5, 5, 5, -5);
         return std::vector<Art*>{l};
       },
       false, {-5, 5, 5, -5}},
      {"a text frame measures by its bounds",
       [](fake::FakeArtHost& t, Art* l) {
         return std::vector<Art*>{t.add(l, kDWTextFrameArt, "text", {1, 4, 3, 2})};
       },
       true, {1, 4, 3, 2}},
  };
  for (const Case& c : cases) {
    layer->children.clear();
    const DWArtSetHandle set = art.newSet(c.build(art, layer));
    DWRealRect bounds{};
    EXPECT_EQ(dw::collectArtBounds(set, &bounds, false, c.parentTest), kDWNoErr) << c.name;
    EXPECT_TRUE(fake::sameRect(bounds, c.expected)) << c.name << ": " << fake::describe(bounds);
  }
}

TEST_F(ArtBounds, WithoutASetTheWholeDocumentCounts) {
  art.rectangle(layer, "a", 0, 10, 10, 0);
  Art* group = art.add(layer, kDWGroupArt, "group");
  art.rectangle(group, "inner", 20, 40, 30, 30);
  Art* hiddenGroup = art.add(layer, kDWGroupArt, "hidden group");
  hiddenGroup->attributes |= kDWArtHidden;
  art.rectangle(hiddenGroup, "under a hidden group", 100, 200, 200, 100);
  Art* second = art.addLayer("Layer 2");
  art.rectangle(second, "b", -10, 0, 0, -10);

  DWRealRect bounds{};
  EXPECT_EQ(dw::GetArtBounds(nullptr, &bounds, 0), kDWNoErr);
  EXPECT_TRUE(fake::sameRect(bounds, {-10, 40, 30, -10})) << fake::describe(bounds);
}

TEST_F(ArtBounds, TheActiveArtboardWinsWhenAsked) {
  struct Case {
    const char* name;
    bool listAvailable;
    bool indexFails;
    DWRealRect board;
    DWErr result;
    DWRealRect expected;
    bool artMeasured;
  } const cases[] = {
      {"active artboard", true, false, {0, 792, 612, 0}, kDWNoErr, {0, 792, 612, 0}, false},
      {"empty artboard: the art", true, false, {0, 0, 0, 0}, kDWNoErr, {1, 2, 3, 1}, true},
      {"no artboard list: the art", false, false, {0, 792, 612, 0}, kDWNoErr, {1, 2, 3, 1}, true},
      {"active index refused", true, true, {0, 792, 612, 0}, fake::kInjected, dw::kEmptyArtBounds, false},
  };
  const DWArtSetHandle set = art.newSet({art.rectangle(layer, "a", 1, 2, 3, 1)});
  for (const Case& c : cases) {
    art.calls.clear();
    art.artboardListAvailable = c.listAvailable;
    art.activeIndexFails = c.indexFails;
    art.artboard = c.board;
    DWRealRect bounds{};
    EXPECT_EQ(dw::GetArtBounds(set, &bounds, 1), c.result) << c.name;
    EXPECT_TRUE(fake::sameRect(bounds, c.expected)) << c.name << ": " << fake::describe(bounds);
    EXPECT_EQ(art.calls["GetArtBounds"], c.artMeasured ? 1 : 0) << c.name;
  }
}

TEST_F(ArtBounds, AFailingHostCallEndsTheWalkWithWhatWasGathered) {
  const DWArtSetHandle set = art.newSet(
      {art.rectangle(layer, "a", 0, 10, 10, 0), art.rectangle(layer, "b", 50, 60, 60, 50),
       art.rectangle(layer, "c", 70, 80, 80, 70)});
  art.failures["GetArtBounds#2"] = fake::kInjected;
  DWRealRect bounds{};
  EXPECT_EQ(dw::collectArtBounds(set, &bounds, false, true), fake::kInjected);
  EXPECT_TRUE(fake::sameRect(bounds, {0, 10, 10, 0})) << fake::describe(bounds);
}

TEST_F(ArtBounds, ANullRectangleIsABadParameter) {
  EXPECT_EQ(dw::GetArtBounds(nullptr, nullptr, 0), dw::BadParameterError);
}

}  // namespace
