#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <vector>

#include "commands/SelectionPreparation.h"
#include "fakes/CommandsTestSupport.h"

namespace {

using fake::Art;
using fake::FakeArtHost;

class SelectionPreparation : public fake::CommandsTest {};

struct KeepCase {
  const char* name;
  std::function<Art*(FakeArtHost&, Art* layer)> build;  // returns a partly selected object unless said otherwise
  bool kept;
};

Art* partly(FakeArtHost& t, Art* art) {
  t.select(art, false);
  return art;
}

TEST_F(SelectionPreparation, OnlyWholeObjectsAndSomeKindsStay) {
  const KeepCase cases[] = {
      {"partly selected path", [](FakeArtHost& t, Art* l) { return partly(t, t.rectangle(l, "p", 0, 1, 1, 0)); },
       false},
      {"wholly selected path",
       [](FakeArtHost& t, Art* l) {
         Art* p = t.rectangle(l, "p", 0, 1, 1, 0);
         t.select(p);
         return p;
       },
       true},
      {"unknown kind", [](FakeArtHost& t, Art* l) { return partly(t, t.add(l, kDWUnknownArt, "u")); }, true},
      {"compound path", [](FakeArtHost& t, Art* l) { return partly(t, t.add(l, kDWCompoundPathArt, "c")); }, true},
      {"text frame", [](FakeArtHost& t, Art* l) { return partly(t, t.add(l, kDWTextFrameArt, "t")); }, true},
      {"placed art", [](FakeArtHost& t, Art* l) { return partly(t, t.add(l, kDWPlacedArt, "i")); }, false},
      {"symbol", [](FakeArtHost& t, Art* l) { return partly(t, t.add(l, kDWSymbolArt, "s")); }, false},
      {"mesh", [](FakeArtHost& t, Art* l) { return partly(t, t.add(l, kDWMeshArt, "m")); }, false},
      {"plug-in group", [](FakeArtHost& t, Art* l) { return partly(t, t.add(l, kDWPluginGroupArt, "pg")); }, true},
      {"plug-in group whose pattern is being edited",
       [](FakeArtHost& t, Art* l) {
         Art* pg = partly(t, t.add(l, kDWPluginGroupArt, "pg"));
         t.editedPattern = pg;
         return pg;
       },
       false},
      {"plug-in group while another pattern is edited",
       [](FakeArtHost& t, Art* l) {
         t.editedPattern = t.add(l, kDWGroupArt, "pattern tile");
         return partly(t, t.add(l, kDWPluginGroupArt, "pg"));
       },
       true},
      {"plain group", [](FakeArtHost& t, Art* l) { return partly(t, t.add(l, kDWGroupArt, "g")); }, false},
      {"clip group",
       [](FakeArtHost& t, Art* l) {
         Art* g = partly(t, t.add(l, kDWGroupArt, "g"));
         g->clipped = true;
         return g;
       },
       true},
      {"group with an appearance another object owns",
       [](FakeArtHost& t, Art* l) {
         Art* g = partly(t, t.add(l, kDWGroupArt, "g"));
         g->style = t.newStyle("shadow", l);
         return g;
       },
       true},
      {"group with an appearance of its own",
       [](FakeArtHost& t, Art* l) {
         Art* g = partly(t, t.add(l, kDWGroupArt, "g"));
         g->style = t.newStyle("shadow");
         g->styleOwner = g;
         return g;
       },
       false},
      {"group whose style has no owner",
       [](FakeArtHost& t, Art* l) {
         Art* g = partly(t, t.add(l, kDWGroupArt, "g"));
         g->style = t.newStyle("shadow");
         return g;
       },
       false},
      {"group flagged by the host but without a style",
       [](FakeArtHost& t, Art* l) {
         Art* g = partly(t, t.add(l, kDWGroupArt, "g"));
         g->ownStyle = true;
         g->styleOwner = l;
         return g;
       },
       false},
      {"group whose flag query fails counts as flag 0",
       [](FakeArtHost& t, Art* l) {
         Art* g = partly(t, t.add(l, kDWGroupArt, "g"));
         g->style = t.newStyle("shadow", l);
         t.failures["ArtHasOwnStyle"] = fake::kInjected;
         return g;
       },
       false},
  };
  for (const KeepCase& c : cases) {
    layer->children.clear();
    art.failures.clear();
    art.editedPattern = nullptr;
    Art* object = c.build(art, layer);
    const DWArtSetHandle set = art.newSet({object});
    EXPECT_EQ(dw::KeepWholeObjects(set), kDWNoErr) << c.name;
    EXPECT_EQ(art.contents(set).size(), c.kept ? 1u : 0u) << c.name;
  }
}

TEST_F(SelectionPreparation, RemovingLooksAtTheSameIndexAgain) {
  Art* a = partly(art, art.rectangle(layer, "a", 0, 1, 1, 0));
  Art* b = partly(art, art.rectangle(layer, "b", 0, 1, 1, 0));
  Art* c = art.rectangle(layer, "c", 0, 1, 1, 0);
  art.select(c);
  Art* d = partly(art, art.rectangle(layer, "d", 0, 1, 1, 0));
  const DWArtSetHandle set = art.newSet({a, b, c, d});
  EXPECT_EQ(dw::KeepWholeObjects(set), kDWNoErr);
  EXPECT_EQ(art.contents(set), std::vector<Art*>{c});
}

TEST_F(SelectionPreparation, AFailingClipQueryEndsTheStep) {
  Art* g = partly(art, art.add(layer, kDWGroupArt, "g"));
  art.failures["GetGroupClipped"] = fake::kInjected;
  EXPECT_EQ(dw::KeepWholeObjects(art.newSet({g})), fake::kInjected);
}

TEST_F(SelectionPreparation, PerspectiveContentLeavesTheSetWhenTheSuiteIsHeld) {
  Art* grid = art.add(layer, kDWGroupArt, "perspective");
  grid->perspective = true;
  Art* inner = art.add(grid, kDWGroupArt, "inner");
  Art* deep = art.rectangle(inner, "deep", 0, 1, 1, 0);
  Art* outside = art.rectangle(layer, "outside", 0, 1, 1, 0);
  struct Case {
    const char* name;
    bool held;
    std::vector<Art*> left;
  } const cases[] = {
      {"suite held", true, {grid, outside}},
      {"suite missing", false, {grid, deep, outside}},
  };
  for (const Case& c : cases) {
    art.holdPerspectiveSuite(c.held);
    const DWArtSetHandle set = art.newSet({grid, deep, outside});
    const int32_t setsBefore = art.liveSets;
    EXPECT_EQ(dw::DropPerspectiveContent(set), kDWNoErr) << c.name;
    EXPECT_EQ(art.contents(set), c.left) << c.name;
    EXPECT_EQ(art.liveSets, setsBefore) << c.name << ": the temporary set is disposed";
  }
}

TEST_F(SelectionPreparation, PlacementIsTheFirstObjectInsideAGroup) {
  Art* compound = art.add(layer, kDWCompoundPathArt, "compound");
  Art* inCompound = art.rectangle(compound, "in compound", 0, 1, 1, 0);
  Art* inLayer = art.rectangle(layer, "in layer", 0, 1, 1, 0);
  Art* group = art.add(layer, kDWGroupArt, "group");
  Art* inGroup = art.rectangle(group, "in group", 0, 1, 1, 0);
  struct Case {
    const char* name;
    std::vector<Art*> set;
    Art* placement;
  } const cases[] = {
      {"the layer itself has no parent, a compound is no group", {layer, inCompound, inLayer, inGroup}, inLayer},
      {"set order decides", {inGroup, inLayer}, inGroup},
      {"none", {layer, inCompound}, nullptr},
  };
  for (const Case& c : cases) {
    DWArtHandle placement = h(layer);
    EXPECT_EQ(dw::FindPlacementArt(art.newSet(c.set), placement), kDWNoErr) << c.name;
    EXPECT_EQ(a(placement), c.placement) << c.name;
  }
}

TEST_F(SelectionPreparation, OnlyParentlessStyledObjectsAreWrapped) {
  Art* plainLayer = art.addLayer("plain");
  art.rectangle(plainLayer, "p", 0, 1, 1, 0);
  Art* styledGroup = art.add(layer, kDWGroupArt, "styled group");
  styledGroup->style = art.newStyle("glow", styledGroup);
  const DWArtSetHandle set = art.newSet({plainLayer, styledGroup});
  EXPECT_EQ(dw::WrapStyledLayers(set), kDWNoErr);
  EXPECT_EQ(art.contents(set), (std::vector<Art*>{plainLayer, styledGroup}));
  EXPECT_EQ(childNames(plainLayer), std::vector<std::string>{"p"});
}

}  // namespace
