// Art sets: the selection, membership and entries whose art has left the document.
#include <vector>

#include "SuiteTestSupport.h"

using namespace suitetest;

namespace {

class ArtSetTest : public SuiteTest {
 protected:
  const DWArtSetSuite& sets() { return suite<DWArtSetSuite>(kDWArtSetSuite, kDWArtSetSuiteVersion); }

  std::vector<DWArtHandle> contents(DWArtSetHandle set) {
    std::vector<DWArtHandle> out;
    int32_t count = 0;
    EXPECT_EQ(sets().CountArtSet(set, &count), kDWNoErr);
    for (int32_t i = 0; i < count; ++i) {
      DWArtHandle a = nullptr;
      EXPECT_EQ(sets().GetArtSetEntry(set, i, &a), kDWNoErr);
      out.push_back(a);
    }
    return out;
  }
};

}  // namespace

// Topmost selected objects in document order; a group selected as a whole stands for its contents,
// a partly selected one comes with its selected members.
TEST_F(ArtSetTest, SelectionGivesTopmostSelectedArt) {
  Art* lower = rect(0, 0, 1, 1);
  Art* partly = group();
  Art* picked = rect(0, 0, 1, 1, PaintOrder::InsideOnTop, partly);
  rect(0, 0, 1, 1, PaintOrder::InsideOnTop, partly);
  Art* whole = group();
  rect(0, 0, 1, 1, PaintOrder::InsideOnTop, whole);
  rect(0, 0, 1, 1);
  Document::setSelected(whole, true);
  Document::setSelected(picked, true);
  partly->setAttributes(ArtAttr::Selected, ArtAttr::Selected);
  Document::setSelected(lower, true);

  DWArtSetHandle set = nullptr;
  ASSERT_EQ(sets().NewArtSet(&set), kDWNoErr);
  ASSERT_EQ(sets().AddArtToArtSet(set, h(lower)), kDWNoErr);
  ASSERT_EQ(sets().SelectedArtSet(set), kDWNoErr);
  const std::vector<DWArtHandle> expected = {h(whole), h(partly), h(picked), h(lower)};
  EXPECT_EQ(contents(set), expected);
  ASSERT_EQ(sets().DisposeArtSet(&set), kDWNoErr);
  EXPECT_EQ(set, nullptr);
}

TEST_F(ArtSetTest, MembershipAndDeletedArt) {
  Art* a = rect(0, 0, 1, 1);
  Art* b = rect(0, 0, 1, 1);
  Art* c = rect(0, 0, 1, 1);
  DWArtSetHandle set = nullptr;
  ASSERT_EQ(sets().NewArtSet(&set), kDWNoErr);
  for (Art* art : {a, b, a, c}) ASSERT_EQ(sets().AddArtToArtSet(set, h(art)), kDWNoErr);
  EXPECT_EQ(contents(set), (std::vector<DWArtHandle>{h(a), h(b), h(c)})) << "each object once";

  ASSERT_EQ(sets().ReplaceArtInArtSet(set, h(b), h(layer->group())), kDWNoErr);
  ASSERT_EQ(sets().ReplaceArtInArtSet(set, h(c), h(a)), kDWNoErr);
  EXPECT_EQ(contents(set), (std::vector<DWArtHandle>{h(a), h(layer->group())})) << "replacing by a member drops";
  EXPECT_EQ(sets().ReplaceArtInArtSet(set, h(c), nullptr), kHostNotFound);

  doc.disposeArt(a);
  DWArtHandle read = h(b);
  ASSERT_EQ(sets().IndexArtSet(set, 0, &read), kDWNoErr);
  EXPECT_EQ(read, nullptr) << "the art has left the document";
  ASSERT_EQ(sets().GetArtSetEntry(set, 0, &read), kDWNoErr);
  EXPECT_EQ(read, h(a)) << "the entry keeps the handle";
  EXPECT_EQ(sets().IndexArtSet(set, 2, &read), kHostBadParameter);
  ASSERT_EQ(sets().RemoveArtFromArtSet(set, h(a)), kDWNoErr);
  ASSERT_EQ(sets().RemoveArtFromArtSet(set, h(c)), kDWNoErr);
  EXPECT_EQ(contents(set), (std::vector<DWArtHandle>{h(layer->group())}));
  ASSERT_EQ(sets().ClearArtSet(set), kDWNoErr);
  EXPECT_TRUE(contents(set).empty());
  EXPECT_EQ(sets().AddArtToArtSet(set, h(a)), kHostBadParameter) << "deleted art cannot join";
  ASSERT_EQ(sets().DisposeArtSet(&set), kDWNoErr);
  int32_t count = 0;
  EXPECT_EQ(sets().CountArtSet(reinterpret_cast<DWArtSetHandle>(a), &count), kHostBadParameter);
}
