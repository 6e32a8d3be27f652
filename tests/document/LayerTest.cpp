#include "refhost/document/Document.h"

#include <gtest/gtest.h>

namespace refhost {
namespace {

TEST(Layers, OrderFlagsAndCurrentLayer) {
  Document doc;
  EXPECT_EQ(doc.currentLayer(), nullptr);
  Layer* a = doc.newLayer("A");
  Layer* c = doc.newLayer("C");
  Layer* b = doc.newLayer("B", 1);
  Layer* top = doc.newLayer("Top", 0);
  EXPECT_EQ(doc.currentLayer(), a) << "the first layer becomes current";
  EXPECT_EQ(doc.firstLayer(), top);
  EXPECT_EQ(doc.nextLayer(top), a);
  EXPECT_EQ(doc.nextLayer(a), b);
  EXPECT_EQ(doc.nextLayer(b), c);
  EXPECT_EQ(doc.nextLayer(c), nullptr);
  EXPECT_EQ(doc.layerIndex(c), 3);

  EXPECT_TRUE(b->isShown());
  EXPECT_TRUE(b->isEditable());
  EXPECT_TRUE(b->isPrintable());
  b->setEditable(false);
  b->setPrintable(false);
  c->setShown(false);
  EXPECT_TRUE(b->isLocked());
  EXPECT_FALSE(b->isPrintable());
  EXPECT_FALSE(c->isShown());
  EXPECT_EQ(doc.findLayer("B"), b);
}

TEST(Layers, DeletingTheCurrentLayerPicksANeighbour) {
  Document doc;
  Layer* a = doc.newLayer("A");
  Layer* b = doc.newLayer("B");
  doc.setCurrentLayer(b);
  Art* art = doc.newArt(ArtKind::Path, PaintOrder::AboveAll, nullptr);
  EXPECT_EQ(art->layer(), b);
  doc.deleteLayer(b);
  EXPECT_FALSE(b->isAlive());
  EXPECT_FALSE(art->isAlive());
  EXPECT_EQ(doc.currentLayer(), a);
  EXPECT_EQ(doc.liveLayer(b), nullptr);
  EXPECT_EQ(doc.liveLayer(a), a);
  EXPECT_THROW(doc.setCurrentLayer(b), DocumentError);
  doc.deleteLayer(a);
  EXPECT_EQ(doc.currentLayer(), nullptr);
  EXPECT_EQ(doc.layerCount(), 0u);
}

TEST(Layers, ArtOutsideLayersHasNoLayer) {
  Document doc;
  doc.newLayer("A");
  Symbol* s = doc.newSymbol("s");
  Art* inside = doc.newArt(ArtKind::Path, PaintOrder::InsideOnTop, s->definition());
  EXPECT_EQ(inside->layer(), nullptr);
  EXPECT_EQ(doc.findSymbol("s"), s);
  EXPECT_EQ(doc.liveSymbol(s), s);
}

TEST(CustomColors, IdsFollowCreationOrderAndAreNeverReused) {
  Document doc;
  CustomColor red;
  red.name = "Red";
  red.cmyk[1] = red.cmyk[2] = 1;
  CustomColor process;
  process.name = "Brand";
  process.kind = CustomColor::Kind::Process;
  const CustomColorId first = doc.newCustomColor(red);
  doc.beginTransaction();
  const CustomColorId reverted = doc.newCustomColor(process);
  doc.revertTransaction();
  doc.endTransaction();
  const CustomColorId second = doc.newCustomColor(process);
  EXPECT_EQ(first, 1u);
  EXPECT_GT(reverted, first);
  EXPECT_GT(second, reverted);
  EXPECT_EQ(doc.customColor(reverted), nullptr);
  ASSERT_NE(doc.customColor(second), nullptr);
  EXPECT_EQ(doc.customColor(second)->kind, CustomColor::Kind::Process);
  EXPECT_EQ(doc.findCustomColor("Red")->id, first);
  EXPECT_EQ(doc.customColors().size(), 2u);
}

}  // namespace
}  // namespace refhost
