#include "TestDocuments.h"

#include "refhost/document/Equivalence.h"

#include <gtest/gtest.h>

namespace refhost {
namespace {

// Changes of every sort a command makes.
void scribble(Document& doc) {
  Layer* top = doc.findLayer("Top");
  Art* group = top->group()->firstChild()->nextSibling();
  Art* path = group->firstChild();
  path->path()->segments.push_back(PathSegment::at(-5, -5));
  path->pathStyle().fill = Paint::rgb(0, 1, 0);
  path->setAttributes(ArtAttr::Selected | ArtAttr::FullySelected, 0);
  path->setUserFlags(0xFFFFFFFFu, 0);
  path->setValuePair(ValuePair{});
  Art* raster = group->nextSibling();
  raster->raster()->mutablePixels()[5] = 0xEE;
  doc.newArt(ArtKind::Path, PaintOrder::InsideOnTop, group)->setName("new");
  doc.moveArt(raster, PaintOrder::AboveAll, nullptr);
  doc.disposeArt(top->group()->lastChild());  // the text
  doc.duplicateArt(group, PaintOrder::Below, group);
  group->setArtStyle(nullptr);
  doc.findLayer("Locked")->setEditable(true);
  doc.newLayer("Extra", 0);
  doc.deleteLayer(doc.findLayer("Locked"));
  doc.setColorMode(ColorMode::Gray);
  doc.setLevelNumber(3);
  doc.artboards().clear();
  doc.dictionary()->getDictionary("DW Auto Rasterize")->setInteger("dpi.", 72);
  doc.dictionary()->erase("title");
  CustomColor c;
  c.name = "Extra";
  doc.newCustomColor(c);
  doc.newSymbol("extra");
}

TEST(Undo, RevertRestoresTheDocumentExactly) {
  auto doc = testing::buildRichDocument();
  auto reference = testing::buildRichDocument();
  Layer* top = doc->findLayer("Top");
  Layer* locked = doc->findLayer("Locked");
  Art* group = top->group()->firstChild()->nextSibling();
  Art* text = top->group()->lastChild();
  auto params = group->artStyle()->effects[0].parameters;

  doc->beginTransaction();
  scribble(*doc);
  params->setInteger("colr", 1);
  std::string why;
  ASSERT_FALSE(equivalent(*doc, *reference, &why));
  doc->revertTransaction();
  EXPECT_TRUE(equivalent(*doc, *reference, &why)) << why;

  // Handles given out before the transaction are the same objects, alive again.
  EXPECT_EQ(doc->findLayer("Top"), top);
  EXPECT_EQ(doc->findLayer("Locked"), locked);
  EXPECT_TRUE(locked->isAlive());
  EXPECT_TRUE(text->isAlive());
  EXPECT_EQ(text->parent(), top->group());
  EXPECT_EQ(top->group()->firstChild()->nextSibling(), group);
  EXPECT_EQ(params->getInteger("colr"), 4);
  doc->endTransaction();
  EXPECT_FALSE(doc->canUndo()) << "a reverted command leaves no undo step";
}

TEST(Undo, ArtCreatedInTheTransactionIsDeadAfterRevert) {
  auto doc = testing::buildRichDocument();
  doc->beginTransaction();
  Art* fresh = doc->newArt(ArtKind::Raster, PaintOrder::AboveAll, nullptr);
  Layer* extra = doc->newLayer("Extra");
  doc->revertTransaction();
  EXPECT_FALSE(fresh->isAlive());
  EXPECT_EQ(doc->liveArt(fresh), nullptr);
  EXPECT_EQ(doc->liveLayer(extra), nullptr);
  EXPECT_EQ(doc->layerCount(), 2u);
  doc->endTransaction();
}

TEST(Undo, UndoAndRedoStepThroughCommittedTransactions) {
  auto doc = testing::buildRichDocument();
  auto before = testing::buildRichDocument();
  doc->beginTransaction();
  scribble(*doc);
  doc->setUndoTexts("Undo Scribble", "Redo Scribble");
  doc->endTransaction();
  auto after = testing::buildRichDocument();
  after->beginTransaction();
  scribble(*after);
  after->endTransaction();

  ASSERT_TRUE(doc->canUndo());
  EXPECT_EQ(doc->nextUndoText(), "Undo Scribble");
  std::string why;
  doc->undo();
  EXPECT_TRUE(equivalent(*doc, *before, &why)) << why;
  EXPECT_EQ(doc->nextRedoText(), "Redo Scribble");
  doc->redo();
  EXPECT_TRUE(equivalent(*doc, *after, &why)) << why;
}

TEST(Undo, TransactionMisuseThrows) {
  Document doc;
  EXPECT_THROW(doc.revertTransaction(), DocumentError);
  EXPECT_THROW(doc.endTransaction(), DocumentError);
  doc.beginTransaction();
  EXPECT_THROW(doc.beginTransaction(), DocumentError);
  EXPECT_THROW(doc.undo(), DocumentError);
  doc.endTransaction();
  EXPECT_FALSE(doc.inTransaction());
}

}  // namespace
}  // namespace refhost
