// The renderer's suites as a plug-in reaches them through the host: a colour space, a port over
// caller memory, one drawing session, and an art handle from the art suite drawn into it.
#include <vector>

#include "SuiteTestSupport.h"

using namespace suitetest;

namespace {

class RendererSuitesTest : public SuiteTest {};

}  // namespace

TEST_F(RendererSuitesTest, DrawsARectangleIntoAnRgbPort) {
  const auto& spaces = suite<DWColorSpaceSuite>(kDWColorSpaceSuite, kDWColorSpaceSuiteVersion);
  const auto& gm = suite<DWGraphicsManagerSuite>(kDWGraphicsManagerSuite, kDWGraphicsManagerSuiteVersion);
  const auto& draw = suite<DWDrawArtSuite>(kDWDrawArtSuite, kDWDrawArtSuiteVersion);

  // Document (5, 5) to (15, 10), red, on a 20-point page drawn at one pixel per point.
  DWArtHandle shape = nullptr;
  ASSERT_EQ(art().NewArt(kDWPathArt, kDWPlaceAboveAll, nullptr, &shape), kDWNoErr);
  Art* model = doc.liveArt(shape);
  model->path()->segments = {PathSegment::at(5, 5), PathSegment::at(15, 5), PathSegment::at(15, 10), PathSegment::at(5, 10)};
  model->path()->closed = true;
  model->pathStyle().fillPaint = true;
  model->pathStyle().fill = Paint::rgb(1, 0, 0);
  const int size = 20, rowBytes = 60;

  DWColorSpaceHandle space = nullptr;
  DWPortColorSpace portSpace = nullptr;
  DWPort port = nullptr;
  std::vector<uint8_t> pixels(size_t(rowBytes * size), 0x55);
  const DWIntRect bounds{0, 0, size, size};
  ASSERT_EQ(spaces.NewProcessColorSpace(kDWRGBFamily, 0, &space), kDWNoErr);
  ASSERT_EQ(gm.NewPortColorSpace(space, -1, &portSpace), kDWNoErr);
  ASSERT_EQ(gm.NewOffscreenPort(&bounds, rowBytes, pixels.data(), portSpace, 24, 0, &port), kDWNoErr);
  ASSERT_EQ(gm.BeginDrawing(port, &bounds, nullptr, 0, 0), kDWNoErr);
  DWDrawRecord record{};
  record.version = 1;
  record.flags = kDWDrawFlagsDefault;
  record.output = kDWDrawToPort;
  record.origin = DWRealPoint{0, double(size)};
  record.matrix = DWRealMatrix{1, 0, 0, 1, 0, 0};
  record.art = shape;
  record.reserved2 = -1;
  record.port = port;
  record.device = bounds;
  int32_t options = 0;
  ASSERT_EQ(draw.DrawArt(&record, &options), kDWNoErr);
  ASSERT_EQ(draw.FinishDrawing(&record, &options), kDWNoErr);

  // Port rows grow downward: document y 10 .. 5 is rows 10 .. 14.
  for (int y = 0; y < size; ++y) {
    for (int x = 0; x < size; ++x) {
      const bool inside = x >= 5 && x < 15 && y >= size - 10 && y < size - 5;
      const uint8_t* p = &pixels[size_t(y * rowBytes + x * 3)];
      ASSERT_EQ(p[0], 255) << x << "," << y;
      ASSERT_EQ(p[1], inside ? 0 : 255) << x << "," << y;
      ASSERT_EQ(p[2], inside ? 0 : 255) << x << "," << y;
    }
  }
  EXPECT_EQ(gm.DisposePort(port), kDWNoErr);
  EXPECT_EQ(gm.ReleaseObject(portSpace), kDWNoErr);
  EXPECT_EQ(spaces.Release(space), kDWNoErr);
}
