// Path anchors, mesh edges walked as the mask's outline walk does, placed-art rectangles, text.
#include <vector>

#include "SuiteTestSupport.h"

using namespace suitetest;

namespace {

class GeometrySuitesTest : public SuiteTest {};

DWPathSegment corner(double x, double y) { return DWPathSegment{{x, y}, {x, y}, {x, y}, 1}; }

Point fromRecordPoint(const DWRealPoint& p) { return Point{p.h, p.v}; }

}  // namespace

TEST_F(GeometrySuitesTest, PathSegmentsAndClosing) {
  const auto& paths = suite<DWPathSuite>(kDWPathSuite, kDWPathSuiteVersion);
  DWArtHandle path = nullptr;
  ASSERT_EQ(art().NewArt(kDWPathArt, kDWPlaceAboveAll, nullptr, &path), kDWNoErr);
  const DWPathSegment written[] = {corner(0, 0), DWPathSegment{{10, 0}, {8, -2}, {12, 2}, 0}, corner(10, 10)};
  ASSERT_EQ(paths.SetPathSegmentCount(path, 3), kDWNoErr);
  ASSERT_EQ(paths.SetPathSegments(path, 0, 3, written), kDWNoErr);
  ASSERT_EQ(paths.SetPathClosed(path, 1), kDWNoErr);
  int16_t count = 0;
  DWBool closed = 0, guide = 1;
  ASSERT_EQ(paths.GetPathSegmentCount(path, &count), kDWNoErr);
  ASSERT_EQ(paths.GetPathClosed(path, &closed), kDWNoErr);
  ASSERT_EQ(paths.GetPathIsGuide(path, &guide), kDWNoErr);
  EXPECT_EQ(count, 3);
  EXPECT_EQ(closed, 1);
  EXPECT_EQ(guide, 0);
  DWPathSegment read[2] = {};
  ASSERT_EQ(paths.GetPathSegments(path, 1, 2, read), kDWNoErr);
  EXPECT_EQ(read[0].in.h, 8);
  EXPECT_EQ(read[0].out.v, 2);
  EXPECT_EQ(read[0].corner, 0);
  EXPECT_EQ(read[1].p.v, 10);
  EXPECT_EQ(paths.GetPathSegments(path, 2, 2, read), kHostBadParameter) << "past the end";
  EXPECT_EQ(paths.GetPathClosed(h(group()), &closed), kHostWrongType);
  const PathData& model = *doc.liveArt(path)->path();
  EXPECT_EQ(model.segments[1].out, (Point{12, 2}));
  EXPECT_TRUE(model.closed);
}

// The outer edges of the grid, walked counter-clockwise from vertex (0, 0), start at the anchors of
// the model's outline.
TEST_F(GeometrySuitesTest, MeshEdgesFollowTheOutline) {
  Art* mesh = doc.newArt(ArtKind::Mesh, PaintOrder::AboveAll, nullptr);
  MeshData& data = *mesh->mesh();
  data.rows = 2;
  data.columns = 3;
  data.vertices = {{0, 0}, {5, 1}, {10, 0}, {0, 8}, {5, 9}, {10, 8}};
  data.patchColors = {Paint::gray(1), Paint::gray(0)};
  const auto& meshes = suite<DWMeshSuite>(kDWMeshSuite, kDWMeshSuiteVersion);
  const auto& edges = suite<DWMeshSegmentSuite>(kDWMeshSegmentSuite, kDWMeshSegmentSuiteVersion);
  const auto& vertices = suite<DWMeshVertexSuite>(kDWMeshVertexSuite, kDWMeshVertexSuiteVersion);
  int32_t iCount = 0, jCount = 0;
  ASSERT_EQ(meshes.GetGridSize(h(mesh), &iCount, &jCount), kDWNoErr);
  struct Edge {
    int32_t i, j, direction;
  };
  std::vector<Edge> walk;
  for (int32_t i = 0; i < iCount - 1; ++i) walk.push_back({i, 0, kDWMeshIPlus});
  for (int32_t j = 0; j < jCount - 1; ++j) walk.push_back({iCount - 1, j, kDWMeshJPlus});
  for (int32_t i = iCount - 1; i > 0; --i) walk.push_back({i, jCount - 1, kDWMeshIMinus});
  for (int32_t j = jCount - 1; j > 0; --j) walk.push_back({0, j, kDWMeshJMinus});
  const std::vector<Point> outline = data.outline();
  ASSERT_EQ(walk.size(), outline.size());
  for (size_t k = 0; k < walk.size(); ++k) {
    DWRealPoint bezier[4] = {};
    ASSERT_EQ(edges.GetEdge(h(mesh), walk[k].i, walk[k].j, walk[k].direction, bezier), kDWNoErr) << "edge " << k;
    EXPECT_EQ(fromRecordPoint(bezier[0]), outline[k]) << "edge " << k;
    EXPECT_EQ(fromRecordPoint(bezier[3]), outline[(k + 1) % outline.size()]) << "edge " << k;
    DWMeshVertex vertex = nullptr;
    DWRealPoint at{}, control{};
    ASSERT_EQ(meshes.GetVertex(h(mesh), walk[k].i, walk[k].j, &vertex), kDWNoErr) << "edge " << k;
    ASSERT_EQ(vertices.GetPoint(vertex, &at), kDWNoErr) << "edge " << k;
    ASSERT_EQ(vertices.GetTangent(vertex, walk[k].direction, &control), kDWNoErr) << "edge " << k;
    EXPECT_EQ(fromRecordPoint(at), outline[k]) << "edge " << k;
    EXPECT_EQ(fromRecordPoint(control), fromRecordPoint(bezier[1])) << "edge " << k;
  }
  DWRealPoint bezier[4] = {};
  EXPECT_EQ(edges.GetEdge(h(mesh), 0, 0, kDWMeshIMinus, bezier), kHostBadParameter) << "off the grid";
}

// The mask's recipe: negate b and c of the reported matrix, then map the corners of the bounds.
TEST_F(GeometrySuitesTest, PlacedRectangleRecipeGivesTheDocumentRectangle) {
  Art* placed = doc.newArt(ArtKind::Placed, PaintOrder::AboveAll, nullptr);
  placed->placed()->bounds = Rect{0, 20, 40, 0};
  placed->placed()->matrix = Matrix::translation(100, 50) * Matrix::rotation(0.5);
  const auto& placedSuite = suite<DWPlacedSuite>(kDWPlacedSuite, kDWPlacedSuiteVersion);
  DWRealRect b{};
  DWRealMatrix m{};
  ASSERT_EQ(placedSuite.GetPlacedBounds(h(placed), &b), kDWNoErr);
  ASSERT_EQ(placedSuite.GetPlacedMatrix(h(placed), &m), kDWNoErr);
  m.b = -m.b;
  m.c = -m.c;
  const Matrix& truth = placed->placed()->matrix;
  const Point corners[] = {{b.left, b.top}, {b.right, b.top}, {b.right, b.bottom}, {b.left, b.bottom}};
  for (const Point& p : corners) {
    const Point mapped{m.a * p.x + m.c * p.y + m.tx, m.b * p.x + m.d * p.y + m.ty};
    const Point expected = truth.apply(p);
    EXPECT_NEAR(mapped.x, expected.x, 1e-12) << p.x << "," << p.y;
    EXPECT_NEAR(mapped.y, expected.y, 1e-12) << p.x << "," << p.y;
  }
}

TEST_F(GeometrySuitesTest, TextOfAFrame) {
  Art* frame = doc.newArt(ArtKind::TextFrame, PaintOrder::AboveAll, nullptr);
  frame->text()->text = "Grüße";
  const auto& texts = suite<DWTextFrameSuite>(kDWTextFrameSuite, kDWTextFrameSuiteVersion);
  char buffer[4] = {};
  int32_t length = 0;
  ASSERT_EQ(texts.GetText(h(frame), buffer, sizeof buffer, &length), kDWNoErr);
  EXPECT_EQ(size_t(length), frame->text()->text.size());
  EXPECT_STREQ(buffer, "Gr\xC3");
  std::vector<char> whole(size_t(length) + 1);
  ASSERT_EQ(texts.GetText(h(frame), whole.data(), int32_t(whole.size()), &length), kDWNoErr);
  EXPECT_EQ(std::string(whole.data()), frame->text()->text);
}
