// The colour visit: what each kind of paint and pixel reports (docs/host.md, "Colours the host
// reports").
#include <functional>
#include <memory>
#include <ostream>
#include <vector>

#include "SuiteTestSupport.h"
#include "refhost/render/HostHandles.h"

using namespace suitetest;

namespace {

struct Report {
  int32_t kind;
  double v[4];
  CustomColorId spot;
};

bool operator==(const Report& a, const Report& b) {
  return a.kind == b.kind && a.v[0] == b.v[0] && a.v[1] == b.v[1] && a.v[2] == b.v[2] && a.v[3] == b.v[3] &&
         a.spot == b.spot;
}

std::ostream& operator<<(std::ostream& out, const Report& r) {
  return out << "kind " << r.kind << " (" << r.v[0] << ", " << r.v[1] << ", " << r.v[2] << ", " << r.v[3] << ") spot "
             << r.spot;
}

void collect(int32_t kind, const DWColorUse* use, void* context) {
  static_cast<std::vector<Report>*>(context)->push_back(
      Report{kind, {use->values[0], use->values[1], use->values[2], use->values[3]}, render::customColorId(use->spot)});
}

// What a process colour with these inks reports, gray's own ink first when it is gray.
std::vector<Report> process(double c, double m, double y, double k) {
  return {Report{kDWUsesFullProcess, {c > 0 || m > 0 || y > 0 || k > 0 ? 1.0 : 0.0, 0, 0, 0}, 0},
          Report{kDWUsesProcessInks, {c, m, y, k}, 0}};
}

std::vector<Report> operator+(std::vector<Report> a, const std::vector<Report>& b) {
  a.insert(a.end(), b.begin(), b.end());
  return a;
}

class ColorVisitTest : public SuiteTest {
 protected:
  Art* painted(const Paint& fill) {
    Art* a = rect(0, 0, 10, 10);
    a->pathStyle().fill = fill;
    return a;
  }
};

}  // namespace

TEST_F(ColorVisitTest, KindsReportedForEachPaint) {
  const CustomColorId spot = doc.newCustomColor(CustomColor{0, "Spot", CustomColor::Kind::Spot, {0, 1, 0, 0}, false, {}});
  const CustomColorId global =
      doc.newCustomColor(CustomColor{0, "Global", CustomColor::Kind::Process, {1, 0, 0.5, 0}, false, {}});
  const Report spotUse{kDWUsesSpot, {0, 0, 0, 0}, spot};
  const Report pixels{kDWUsesRaster, {1, 0, 0, 0}, 0};

  auto gradient = std::make_shared<Gradient>();
  gradient->stops = {GradientStop{0, Paint::spotColor(spot, 0.5), 1}, GradientStop{1, Paint::cmyk(0, 0, 0, 1), 1}};

  Art* rgbRaster = doc.newArt(ArtKind::Raster, PaintOrder::AboveAll, nullptr);
  rgbRaster->raster()->record.colorSpace = 0x11;
  Art* spotRaster = doc.newArt(ArtKind::Raster, PaintOrder::AboveAll, nullptr);
  spotRaster->raster()->record.colorSpace = 0x04;
  spotRaster->pathStyle().fill = Paint::spotColor(spot);
  Art* channels = doc.newArt(ArtKind::Raster, PaintOrder::AboveAll, nullptr);
  channels->raster()->record.colorSpace = 0x15;
  channels->raster()->channels = {{RasterChannel::Kind::Alpha, 0}, {RasterChannel::Kind::Magenta, 0},
                                  {RasterChannel::Kind::Spot, spot}};
  Art* stroked = painted(Paint::none());
  stroked->pathStyle().fillPaint = false;
  stroked->pathStyle().strokePaint = true;
  stroked->pathStyle().stroke = Paint::spotColor(spot, 0.2);
  Art* unpainted = painted(Paint::spotColor(spot));
  unpainted->pathStyle().fillPaint = false;
  Art* hidden = painted(Paint::gray(1));
  hidden->setAttributes(ArtAttr::Hidden, ArtAttr::Hidden);
  Art* clip = group();
  clip->setClipped(true);
  Art* clipping = rect(0, 0, 5, 5, PaintOrder::InsideOnTop, clip);
  clipping->pathStyle().fill = Paint::spotColor(spot);
  clipping->pathStyle().clipping = true;
  rect(0, 0, 10, 10, PaintOrder::InsideOnBottom, clip)->pathStyle().fill = Paint::cmyk(0, 0, 1, 0);

  struct Case {
    const char* name;
    Art* art;
    std::vector<Report> expected;
  };
  const Case cases[] = {
      {"gray", painted(Paint::gray(0.4)), std::vector<Report>{{kDWUsesGray, {0.4, 0, 0, 0}, 0}} + process(0, 0, 0, 0.4)},
      {"RGB red lays magenta and yellow", painted(Paint::rgb(1, 0, 0)), process(0, 1, 1, 0)},
      {"RGB white lays no ink", painted(Paint::rgb(1, 1, 1)), process(0, 0, 0, 0)},
      {"CMYK", painted(Paint::cmyk(0.25, 0, 0, 0.5)), process(0.25, 0, 0, 0.5)},
      {"spot", painted(Paint::spotColor(spot, 0.3)), {spotUse}},
      {"global process colour at 75%", painted(Paint::spotColor(global, 0.25)), process(0.75, 0, 0.375, 0)},
      {"gradient stops", painted(Paint::fromGradient(gradient)), std::vector<Report>{spotUse} + process(0, 0, 0, 1)},
      {"stroke only", stroked, {spotUse}},
      {"paint switched off", unpainted, {}},
      {"hidden", hidden, {}},
      {"clip group: the clipping path paints nothing", clip, process(0, 0, 1, 0)},
      {"RGB raster", rgbRaster, std::vector<Report>{pixels} + process(1, 1, 1, 1)},
      {"spot raster", spotRaster, {pixels, spotUse}},
      {"multi-channel raster", channels, std::vector<Report>{pixels} + process(0, 1, 0, 0) + std::vector<Report>{spotUse}},
      {"placed image", doc.newArt(ArtKind::Placed, PaintOrder::AboveAll, nullptr),
       std::vector<Report>{pixels} + process(1, 1, 1, 1)},
  };
  const auto& fo = suite<DWFOConversionSuite>(kDWFOConversionSuite, kDWFOConversionSuiteVersion);
  for (const Case& c : cases) {
    std::vector<Report> reported;
    ASSERT_EQ(fo.VisitColors(h(c.art), collect, &reported), kDWNoErr) << c.name;
    EXPECT_EQ(reported, c.expected) << c.name;
  }
}
