#include "TestDocuments.h"

#include "refhost/document/Document.h"

#include <gtest/gtest.h>

namespace refhost {
namespace {

using testing::childNames;

struct PaintOrderCase {
  const char* name;
  PaintOrder order;
  const char* prep;         // name of the prep art: "g", "b" or "" for none
  const char* wantParent;   // "g" or "layer"
  const char* wantLayerChildren;
  const char* wantGroupChildren;
};

// Starting point: layer [g [a, b, c]] with a on top, and the new art "n".
const PaintOrderCase kCases[] = {
    {"above b", PaintOrder::Above, "b", "g", "g", "a,n,b,c"},
    {"below b", PaintOrder::Below, "b", "g", "g", "a,b,n,c"},
    {"below bottom child", PaintOrder::Below, "c", "g", "g", "a,b,c,n"},
    {"inside on top", PaintOrder::InsideOnTop, "g", "g", "g", "n,a,b,c"},
    {"inside at bottom", PaintOrder::InsideOnBottom, "g", "g", "g", "a,b,c,n"},
    {"above everything", PaintOrder::AboveAll, "", "layer", "n,g", "a,b,c"},
    {"below everything", PaintOrder::BelowAll, "", "layer", "g,n", "a,b,c"},
    {"above the group", PaintOrder::Above, "g", "layer", "n,g", "a,b,c"},
};

class PaintOrderTest : public ::testing::TestWithParam<PaintOrderCase> {};

TEST_P(PaintOrderTest, NewArtLandsWhereTheOrderSays) {
  const PaintOrderCase& c = GetParam();
  Document doc;
  Layer* layer = doc.newLayer("L");
  Art* g = doc.newArt(ArtKind::Group, PaintOrder::AboveAll, nullptr);
  g->setName("g");
  for (const char* n : {"c", "b", "a"}) doc.newArt(ArtKind::Path, PaintOrder::InsideOnTop, g)->setName(n);
  Art* prep = nullptr;
  const std::string prepName = c.prep;
  if (prepName == "g") prep = g;
  for (Art* a = g->firstChild(); a; a = a->nextSibling()) {
    if (a->name() == prepName) prep = a;
  }
  Art* n = doc.newArt(ArtKind::Path, c.order, prep);
  n->setName("n");
  EXPECT_EQ(childNames(layer->group()), c.wantLayerChildren) << c.name;
  EXPECT_EQ(childNames(g), c.wantGroupChildren) << c.name;
  EXPECT_EQ(n->parent(), std::string(c.wantParent) == "g" ? g : layer->group()) << c.name;
  EXPECT_EQ(n->layer(), layer) << c.name;
}

TEST_P(PaintOrderTest, MoveFollowsTheSameOrders) {
  const PaintOrderCase& c = GetParam();
  Document doc;
  Layer* layer = doc.newLayer("L");
  Art* g = doc.newArt(ArtKind::Group, PaintOrder::AboveAll, nullptr);
  g->setName("g");
  // "n" starts in a second group and is moved next to the prep art.
  Art* other = doc.newArt(ArtKind::Group, PaintOrder::BelowAll, nullptr);
  other->setName("other");
  Art* n = doc.newArt(ArtKind::Path, PaintOrder::InsideOnTop, other);
  n->setName("n");
  for (const char* name : {"c", "b", "a"}) doc.newArt(ArtKind::Path, PaintOrder::InsideOnTop, g)->setName(name);
  Art* prep = nullptr;
  const std::string prepName = c.prep;
  if (prepName == "g") prep = g;
  for (Art* a = g->firstChild(); a; a = a->nextSibling()) {
    if (a->name() == prepName) prep = a;
  }
  doc.moveArt(n, c.order, prep);
  doc.disposeArt(other);
  EXPECT_EQ(childNames(layer->group()), c.wantLayerChildren) << c.name;
  EXPECT_EQ(childNames(g), c.wantGroupChildren) << c.name;
}

INSTANTIATE_TEST_SUITE_P(AllOrders, PaintOrderTest, ::testing::ValuesIn(kCases),
                         [](const ::testing::TestParamInfo<PaintOrderCase>& info) {
                           std::string s = info.param.name;
                           for (char& ch : s) {
                             if (ch == ' ') ch = '_';
                           }
                           return s;
                         });

TEST(PaintOrderErrors, RefusedPlacementsThrowAndChangeNothing) {
  Document doc;
  EXPECT_THROW(doc.newArt(ArtKind::Path, PaintOrder::AboveAll, nullptr), DocumentError);  // no layer yet
  Layer* layer = doc.newLayer("L");
  Art* g = doc.newArt(ArtKind::Group, PaintOrder::AboveAll, nullptr);
  Art* p = doc.newArt(ArtKind::Path, PaintOrder::InsideOnTop, g);
  try {
    doc.newArt(ArtKind::Path, PaintOrder::InsideOnTop, p);
    FAIL() << "a path holds no art";
  } catch (const DocumentError& e) {
    EXPECT_EQ(e.code(), DocumentError::Code::NotAContainer);
  }
  EXPECT_THROW(doc.newArt(ArtKind::Path, PaintOrder::Above, layer->group()), DocumentError);
  EXPECT_THROW(doc.newArt(ArtKind::Path, PaintOrder::Above, nullptr), DocumentError);
  EXPECT_THROW(doc.newArt(ArtKind::Path, static_cast<PaintOrder>(7), g), DocumentError);
  try {
    doc.moveArt(g, PaintOrder::InsideOnTop, p);
    FAIL() << "moving a group into its own child";
  } catch (const DocumentError& e) {
    EXPECT_EQ(e.code(), DocumentError::Code::CyclicMove);
  }
  // The refused move left the tree intact.
  EXPECT_EQ(g->parent(), layer->group());
  EXPECT_EQ(p->parent(), g);
  EXPECT_EQ(layer->group()->childCount(), 1u);
  EXPECT_THROW(doc.moveArt(layer->group(), PaintOrder::AboveAll, nullptr), DocumentError);
}

}  // namespace
}  // namespace refhost
