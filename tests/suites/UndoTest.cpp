// Reverting a command: every change made through the suites is undone exactly, in place.
#include <memory>
#include <string>

#include "SuiteTestSupport.h"
#include "refhost/document/Equivalence.h"
#include "refhost/suites/DictionaryRefs.h"

using namespace suitetest;

namespace {

class UndoTest : public SuiteTest {
 protected:
  // The same content, built again for each document compared.
  static void fill(Document& d) {
    Layer* second = d.newLayer("Second");
    d.setCurrentLayer(second);
    d.newCustomColor(CustomColor{0, "Spot", CustomColor::Kind::Spot, {0, 1, 0, 0}, false, {}});
    d.dictionary()->setInteger("kept", 7);
    d.artboards().push_back(Artboard{"page", Rect{0, 100, 100, 0}});
    Art* g = d.newArt(ArtKind::Group, PaintOrder::AboveAll, nullptr);
    for (double x : {0.0, 20.0}) {
      Art* p = d.newArt(ArtKind::Path, PaintOrder::InsideOnBottom, g);
      p->path()->segments = {PathSegment::at(x, 0), PathSegment::at(x + 30, 0), PathSegment::at(x + 30, 30)};
      p->path()->closed = true;
      Document::setSelected(p, true);
    }
    d.newArt(ArtKind::Path, PaintOrder::AboveAll, nullptr);
  }

  const DWUndoSuite& undo() { return suite<DWUndoSuite>(kDWUndoSuite, kDWUndoSuiteVersion); }
};

}  // namespace

TEST_F(UndoTest, RevertRestoresTheDocumentExactly) {
  fill(doc);
  Document untouched;
  untouched.newLayer("Layer 1");
  fill(untouched);
  std::string why;
  ASSERT_TRUE(equivalent(doc, untouched, &why)) << why;

  Art* top = doc.currentLayer()->group()->firstChild();
  Art* g = top->nextSibling();
  Art* firstPath = g->firstChild();
  doc.beginTransaction();
  DWArtHandle created = nullptr;
  ASSERT_EQ(art().NewArt(kDWRasterArt, kDWPlaceAbove, h(g), &created), kDWNoErr);
  ASSERT_EQ(art().SetArtUserAttr(h(g), 0x10004, 0x10004), kDWNoErr);
  ASSERT_EQ(art().ReorderArt(h(firstPath), kDWPlaceAboveAll, nullptr), kDWNoErr);
  ASSERT_EQ(art().DisposeArt(h(top)), kDWNoErr);
  const auto& dict = suite<DWDictionarySuite>(kDWDictionarySuite, kDWDictionarySuiteVersion);
  DWDictionaryRef d = nullptr, nested = nullptr;
  ASSERT_EQ(suite<DWDocumentSuite>(kDWDocumentSuite, kDWDocumentSuiteVersion).GetDictionary(&d), kDWNoErr);
  ASSERT_EQ(dict.SetInteger(d, dict.MakeKey("kept"), 8), kDWNoErr);
  ASSERT_EQ(dict.CreateDictionary(&nested), kDWNoErr);
  ASSERT_EQ(dict.SetDictEntry(d, dict.MakeKey("DW Auto Rasterize"), nested), kDWNoErr);
  ASSERT_EQ(suite<DWGroupSuite>(kDWGroupSuite, kDWGroupSuiteVersion).SetGroupClipped(h(g), 1), kDWNoErr);
  DWPathfinderRequest request{};
  ASSERT_EQ(suite<DWPathfinderSuite>(kDWPathfinderSuite, kDWPathfinderSuiteVersion).Unite(&request, nullptr), kDWNoErr);

  const auto& strings = suite<DWUnicodeStringSuite>(kDWUnicodeStringSuite, kDWUnicodeStringSuiteVersion);
  DWUnicodeString undoText = nullptr, redoText = nullptr;
  ASSERT_EQ(strings.NewFromLocalizable("$$$/Rasterize/Str/Undo=Undo Rasterize", &undoText), kDWNoErr);
  ASSERT_EQ(strings.NewFromLocalizable("$$$/Rasterize/Str/Redo=Redo Rasterize", &redoText), kDWNoErr);
  ASSERT_EQ(undo().SetUndoText(undoText, redoText), kDWNoErr);
  EXPECT_EQ(doc.undoText(), "Undo Rasterize");
  EXPECT_EQ(doc.redoText(), "Redo Rasterize");
  EXPECT_FALSE(equivalent(doc, untouched));

  ASSERT_EQ(undo().UndoChanges(), kDWNoErr);
  EXPECT_TRUE(equivalent(doc, untouched, &why)) << why;
  EXPECT_EQ(doc.liveArt(created), nullptr) << "art made by the command is gone";
  EXPECT_EQ(doc.liveArt(h(firstPath)), firstPath) << "handles held before the command stay good";
  EXPECT_EQ(firstPath->parent(), g);
  doc.endTransaction();
  EXPECT_FALSE(doc.canUndo()) << "a reverted command leaves no undo step";
  for (DWDictionaryRef ref : {d, nested}) EXPECT_EQ(dict.Release(ref), kDWNoErr);
}

TEST_F(UndoTest, NothingToRevertOutsideACommand) { EXPECT_EQ(undo().UndoChanges(), kHostNotFound); }
