#include "TestDocuments.h"

#include "refhost/document/Bounds.h"
#include "refhost/document/Document.h"

#include <gtest/gtest.h>

namespace refhost {
namespace {

using testing::childNames;

// Every link agrees with its mirror: parent/child, next/previous, first/last.
void expectConsistent(const Art* container) {
  const Art* previous = nullptr;
  for (const Art* c = container->firstChild(); c; c = c->nextSibling()) {
    EXPECT_EQ(c->parent(), container);
    EXPECT_EQ(c->previousSibling(), previous);
    EXPECT_TRUE(c->isAlive());
    expectConsistent(c);
    previous = c;
  }
  EXPECT_EQ(container->lastChild(), previous);
}

TEST(Tree, LayerGroupsHaveNoParentAndLinksAreConsistent) {
  auto doc = testing::buildRichDocument();
  for (Layer* layer : doc->layers()) {
    EXPECT_EQ(layer->group()->parent(), nullptr);
    EXPECT_TRUE(layer->group()->isLayerGroup());
    EXPECT_EQ(layer->group()->layer(), layer);
    expectConsistent(layer->group());
  }
  Layer* top = doc->findLayer("Top");
  EXPECT_EQ(childNames(top->group()), "instance,group,raster,text");
}

TEST(Tree, DisposeRemovesTheSubtreeAndKeepsDeadShells) {
  auto doc = testing::buildRichDocument();
  Layer* top = doc->findLayer("Top");
  Art* group = top->group()->firstChild()->nextSibling();
  ASSERT_EQ(group->name(), "group");
  Art* path = group->firstChild();
  doc->disposeArt(group);
  EXPECT_FALSE(group->isAlive());
  EXPECT_FALSE(path->isAlive());
  EXPECT_EQ(doc->liveArt(group), nullptr);
  EXPECT_EQ(doc->liveArt(path), nullptr);
  EXPECT_EQ(childNames(top->group()), "instance,raster,text");
  expectConsistent(top->group());
  EXPECT_THROW(doc->disposeArt(group), DocumentError);
  int bogus = 0;
  EXPECT_EQ(doc->liveArt(&bogus), nullptr);
}

TEST(Tree, DuplicateCopiesDeeplyAndUnselected) {
  auto doc = testing::buildRichDocument();
  Layer* top = doc->findLayer("Top");
  Art* group = top->group()->firstChild()->nextSibling();
  Art* copy = doc->duplicateArt(group, PaintOrder::Above, group);
  EXPECT_EQ(childNames(top->group()), "instance,group,group,raster,text");
  EXPECT_EQ(copy->nextSibling(), group);
  ASSERT_NE(copy->firstChild(), nullptr);
  EXPECT_NE(copy->firstChild(), group->firstChild());
  EXPECT_EQ(copy->firstChild()->path()->segments, group->firstChild()->path()->segments);
  EXPECT_EQ(copy->firstChild()->pathStyle(), group->firstChild()->pathStyle());
  EXPECT_EQ(copy->firstChild()->attributes(ArtAttr::Selected), 0u);
  EXPECT_EQ(copy->artStyle(), group->artStyle());
  // Editing the copy leaves the original alone.
  copy->firstChild()->path()->segments.clear();
  EXPECT_EQ(group->firstChild()->path()->segments.size(), 3u);
}

TEST(Tree, DuplicatedRasterSharesPixelsUntilWritten) {
  auto doc = testing::buildRichDocument();
  Art* raster = doc->findLayer("Top")->group()->lastChild()->previousSibling();
  ASSERT_EQ(raster->kind(), ArtKind::Raster);
  Art* copy = doc->duplicateArt(raster, PaintOrder::Below, raster);
  EXPECT_EQ(copy->raster()->pixels(), raster->raster()->pixels());
  copy->raster()->mutablePixels()[0] = 99;
  EXPECT_NE(copy->raster()->pixels(), raster->raster()->pixels());
  EXPECT_EQ(raster->raster()->pixels()[0], 0);
}

TEST(Tree, PluginGroupKeepsEditAndResultArtOutsideItsChildren) {
  Document doc;
  doc.newLayer("L");
  Art* pg = doc.newArt(ArtKind::PluginGroup, PaintOrder::AboveAll, nullptr);
  PluginGroupData* data = pg->pluginGroup();
  ASSERT_NE(data->editArt, nullptr);
  ASSERT_NE(data->resultArt, nullptr);
  EXPECT_EQ(data->editArt->parent(), pg);
  EXPECT_EQ(pg->firstChild(), nullptr);
  Art* inEdit = doc.newArt(ArtKind::Path, PaintOrder::InsideOnTop, data->editArt);
  EXPECT_THROW(doc.newArt(ArtKind::Path, PaintOrder::Above, data->editArt), DocumentError);
  EXPECT_THROW(doc.disposeArt(data->resultArt), DocumentError);
  Document::setSelected(pg, true);
  EXPECT_TRUE(inEdit->isSelected());
  Art* copy = doc.duplicateArt(pg, PaintOrder::Below, pg);
  EXPECT_NE(copy->pluginGroup()->editArt, data->editArt);
  EXPECT_EQ(copy->pluginGroup()->editArt->parent(), copy);
  EXPECT_EQ(copy->pluginGroup()->editArt->childCount(), 1u);
  doc.disposeArt(pg);
  EXPECT_FALSE(inEdit->isAlive());
}

TEST(Tree, SelectionInDocumentOrder) {
  Document doc;
  doc.newLayer("A");
  Layer* b = doc.newLayer("B");
  Art* g = doc.newArt(ArtKind::Group, PaintOrder::AboveAll, nullptr);
  Art* p1 = doc.newArt(ArtKind::Path, PaintOrder::InsideOnTop, g);
  Art* p2 = doc.newArt(ArtKind::Path, PaintOrder::InsideOnBottom, g);
  doc.setCurrentLayer(b);
  Art* q = doc.newArt(ArtKind::Path, PaintOrder::AboveAll, nullptr);
  Document::setSelected(q, true);
  Document::setSelected(g, true);
  // A partly selected path: selected, not as a whole.
  Art* partial = doc.newArt(ArtKind::Path, PaintOrder::BelowAll, nullptr);
  partial->setAttributes(ArtAttr::Selected, ArtAttr::Selected);
  EXPECT_EQ(doc.selectedArt(), (std::vector<Art*>{g, p1, p2, q, partial}));
  EXPECT_EQ(doc.selectedArt(SelectionScope::Topmost), (std::vector<Art*>{g, q, partial}));
  EXPECT_EQ(partial->attributes(ArtAttr::FullySelected), 0u);
  doc.deselectAll();
  EXPECT_TRUE(doc.selectedArt().empty());
}

TEST(Tree, AttributeMasksOnlyTouchTheirBits) {
  Document doc;
  doc.newLayer("L");
  Art* a = doc.newArt(ArtKind::Path, PaintOrder::AboveAll, nullptr);
  a->setAttributes(0xFFFFFFFFu, ArtAttr::Selected | ArtAttr::Hidden);
  a->setAttributes(ArtAttr::Hidden, 0);
  EXPECT_EQ(a->attributes(), ArtAttr::Selected);
  a->setUserFlags(0x10000, 0xFFFFFFFFu);
  a->setUserFlags(0x4, 0x4);
  EXPECT_EQ(a->userFlags(), 0x10004u);
  EXPECT_EQ(a->userFlags() & 0x10000u, 0x10000u);
}

TEST(Tree, ArtStyleOwner) {
  auto doc = testing::buildRichDocument();
  Art* group = doc->findLayer("Top")->group()->firstChild()->nextSibling();
  EXPECT_EQ(group->artStyleOwner(), group);
  Art* raster = group->nextSibling();
  EXPECT_EQ(raster->artStyleOwner(), nullptr);
  raster->setArtStyle(group->artStyle());
  EXPECT_EQ(raster->artStyleOwner(), group);
}

}  // namespace
}  // namespace refhost
