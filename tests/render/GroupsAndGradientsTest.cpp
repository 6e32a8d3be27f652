// Opacity folding and group layers, clip groups, gradients, port clips and placed pixels.
#include "RenderTestSupport.h"

#include <gtest/gtest.h>

using namespace rendertest;

namespace {

ColorSpace::Ptr rgb() { return ColorSpace::process(Family::Rgb, false); }

// Source-over of an opaque-colour source with alpha a (0..1) over d, as the compositor rounds.
int over(int s, int d, double a) {
  const int ab = static_cast<int>(a * 255 + 0.5);
  return (s * ab + d * (255 - ab) + 127) / 255;
}

}  // namespace

TEST(Opacity, OnePaintFoldsIntoThePaintWithoutALayer) {
  Scene scene;
  Art* r = scene.rect(2, 2, 10, 10, Paint::rgb(0, 0, 1));
  r->pathStyle().opacity = 0.5;
  Art* g = scene.group();
  scene.document.moveArt(r, PaintOrder::InsideOnTop, g);
  g->pathStyle().opacity = 0.5;  // a group of one member folds too
  TestPort port(rgb(), 24, false);
  const std::size_t layersBefore = sharedRenderer().layerCount();
  port.draw(*g);
  EXPECT_EQ(sharedRenderer().layerCount(), layersBefore);
  const std::uint8_t* p = port.at(5, 5);
  EXPECT_EQ(p[0], over(0, 255, 0.25));
  EXPECT_EQ(p[2], 255);
}

TEST(Opacity, OverlappingMembersOfAGroupCompositeOnce) {
  Scene scene;
  Art* g = scene.group();
  g->pathStyle().opacity = 0.5;
  scene.rect(2, 2, 10, 10, Paint::rgb(1, 0, 0), g);
  scene.rect(6, 6, 14, 14, Paint::rgb(0, 0, 1), g);  // on top, overlapping 6..10
  TestPort port(rgb(), 24, false);
  const std::size_t layersBefore = sharedRenderer().layerCount();
  port.draw(*g);
  EXPECT_EQ(sharedRenderer().layerCount(), layersBefore + 1);
  struct Probe {
    const char* name;
    int x, y;
    int r, g, b;
  };
  const Probe probes[] = {
      {"red only", 3, 3, 255, over(0, 255, 0.5), over(0, 255, 0.5)},
      {"overlap shows blue once", 8, 8, over(0, 255, 0.5), over(0, 255, 0.5), 255},
      {"outside", 16, 3, 255, 255, 255},
  };
  for (const Probe& pr : probes) {
    const std::uint8_t* p = port.at(pr.x, pr.y);
    EXPECT_NEAR(p[0], pr.r, 1) << pr.name;
    EXPECT_NEAR(p[1], pr.g, 1) << pr.name;
    EXPECT_NEAR(p[2], pr.b, 1) << pr.name;
  }
}

TEST(Opacity, FillAndStrokeWithOpacityUseALayerOverTheObject) {
  Scene scene;
  Art* r = scene.rect(4, 4, 12, 12, Paint::rgb(1, 0, 0));
  r->pathStyle().strokePaint = true;
  r->pathStyle().stroke = Paint::rgb(0, 0, 1);
  r->pathStyle().strokeWidth = 2;
  r->pathStyle().opacity = 0.5;
  TestPort port(rgb(), 24, false);
  port.draw(*r);
  // On the edge the stroke covers the fill: blue at half opacity, no red underneath.
  const std::uint8_t* edge = port.at(4, 8);
  EXPECT_NEAR(edge[0], over(0, 255, 0.5), 1);
  EXPECT_NEAR(edge[2], 255, 1);
  const std::uint8_t* inside = port.at(8, 8);
  EXPECT_NEAR(inside[0], 255, 1);
  EXPECT_NEAR(inside[2], over(0, 255, 0.5), 1);
}

TEST(ClipGroup, MembersShowOnlyInsideTheClippingPath) {
  Scene scene;
  Art* g = scene.group();
  g->setClipped(true);
  scene.rect(0, 0, 20, 16, Paint::gray(1.0), g);
  Art* clip = scene.rect(5, 4, 9, 12, Paint::none(), g);
  clip->pathStyle().clipping = true;
  clip->pathStyle().fillPaint = false;
  TestPort port(ColorSpace::process(Family::Gray, false), 8, false);
  port.draw(*g);
  for (int y = 0; y < kHeight; ++y)
    for (int x = 0; x < kWidth; ++x) {
      const bool inside = x >= 5 && x < 9 && y >= 4 && y < 12;
      ASSERT_EQ(*port.at(x, y), inside ? 0 : 255) << "at " << x << "," << y;
    }
}

TEST(Gradient, LinearStopsInterpolateChannelByChannel) {
  Scene scene;
  auto grad = std::make_shared<Gradient>();
  grad->kind = Gradient::Kind::Linear;
  grad->start = doc(0, 0);
  grad->end = doc(20, 0);
  grad->stops = {GradientStop{0.0, Paint::rgb(1, 0, 0), 1.0}, GradientStop{1.0, Paint::rgb(0, 0, 1), 1.0}};
  scene.rect(0, 0, 20, 16, Paint::fromGradient(grad));
  TestPort port(rgb(), 24, false);
  port.draw(*scene.layer->group()->firstChild());
  for (int x = 0; x < kWidth; ++x) {
    const double t = (x + 0.5) / kWidth;
    const std::uint8_t* p = port.at(x, 7);
    EXPECT_NEAR(p[0], 255 * (1 - t), 1.0) << "x " << x;
    EXPECT_NEAR(p[1], 0, 0.0) << "x " << x;
    EXPECT_NEAR(p[2], 255 * t, 1.0) << "x " << x;
  }
}

TEST(Gradient, SpotStopsStayInTheSpotChannel) {
  Scene scene;
  CustomColor c;
  c.name = "Silver";
  c.cmyk[3] = 0.3;
  const CustomColorId id = scene.document.newCustomColor(c);
  auto grad = std::make_shared<Gradient>();
  grad->start = doc(0, 0);
  grad->end = doc(20, 0);
  grad->stops = {GradientStop{0.0, Paint::spotColor(id, 1.0), 1.0}, GradientStop{1.0, Paint::spotColor(id, 0.0), 1.0}};
  scene.rect(0, 0, 20, 16, Paint::fromGradient(grad));
  TestPort port(ColorSpace::fromParts({ColorSpace::process(Family::Cmyk, false), ColorSpace::spot(id, false)}, false), 40, false);
  port.draw(*scene.layer->group()->firstChild());
  for (int x = 0; x < kWidth; ++x) {
    const std::uint8_t* p = port.at(x, 3);
    EXPECT_NEAR(p[4], 255 * (x + 0.5) / kWidth, 1.0) << "x " << x;
    for (int k = 0; k < 4; ++k) EXPECT_EQ(p[k], 0) << "x " << x << " process channel " << k;
  }
}

TEST(Gradient, RadialIsTheFirstStopAtItsCentre) {
  Scene scene;
  auto grad = std::make_shared<Gradient>();
  grad->kind = Gradient::Kind::Radial;
  grad->center = grad->focus = doc(10.5, 8.5);
  grad->radius = 6;
  grad->stops = {GradientStop{0.0, Paint::gray(1.0), 1.0}, GradientStop{1.0, Paint::gray(0.0), 1.0}};
  scene.rect(0, 0, 20, 16, Paint::fromGradient(grad));
  TestPort port(ColorSpace::process(Family::Gray, false), 8, false);
  port.draw(*scene.layer->group()->firstChild());
  EXPECT_EQ(*port.at(10, 8), 0);
  EXPECT_NEAR(*port.at(13, 8), 255 * 3.0 / 6, 1.0);
  EXPECT_EQ(*port.at(0, 0), 255);  // past the radius the last stop pads
}

TEST(PortClip, DeviceClipLimitsDrawingUntilTheSessionEnds) {
  Scene scene;
  Art* r = scene.rect(0, 0, 20, 16, Paint::gray(1.0));
  TestPort port(ColorSpace::process(Family::Gray, false), 8, false);
  ASSERT_TRUE(port.port->beginDrawing(IntRect{0, 0, kWidth, kHeight}, nullptr, 1, 0));
  port.port->saveState();
  port.port->useDeviceSpace();
  PathObject clip;
  clip.moveTo(3, 2);
  clip.lineTo(11, 2);
  clip.lineTo(11, 9);
  clip.lineTo(3, 9);
  clip.close();
  EXPECT_EQ(port.port->clipToObject(clip), 1);
  port.port->resetPaint();
  port.port->useUserSpace();
  port.draw(*r);
  for (int y = 0; y < kHeight; ++y)
    for (int x = 0; x < kWidth; ++x)
      ASSERT_EQ(*port.at(x, y), (x >= 3 && x < 11 && y >= 2 && y < 9) ? 0 : 255) << "at " << x << "," << y;
  port.port->finishDrawing();
  EXPECT_TRUE(port.port->state().clip.empty());
  port.draw(*r);
  EXPECT_EQ(*port.at(0, 0), 0);
}

TEST(PlacedArt, PixelsAreSampledThroughTheMatrix) {
  Scene scene;
  auto image = std::make_shared<Image>();
  image->width = 2;
  image->height = 2;
  image->rgba = {255, 0, 0, 255, 0, 255, 0, 255, 0, 0, 255, 255, 255, 255, 255, 0};
  Art* a = scene.document.newArt(ArtKind::Placed, PaintOrder::AboveAll, nullptr);
  a->placed()->image = image;
  // Natural rectangle 2 x 2 points, scaled by 4 and moved so that its top-left is device (4, 4).
  a->placed()->bounds = Rect{0, 2, 2, 0};
  a->placed()->matrix = Matrix{4, 0, 0, 4, 4, kHeight - 4 - 8};
  TestPort port(rgb(), 24, false);
  port.draw(*a);
  struct Probe {
    int x, y, r, g, b;
  };
  const Probe probes[] = {{5, 5, 255, 0, 0}, {9, 5, 0, 255, 0}, {5, 9, 0, 0, 255}, {9, 9, 255, 255, 255}, {1, 1, 255, 255, 255}};
  for (const Probe& pr : probes) {
    const std::uint8_t* p = port.at(pr.x, pr.y);
    EXPECT_EQ(p[0], pr.r) << pr.x << "," << pr.y;
    EXPECT_EQ(p[1], pr.g) << pr.x << "," << pr.y;
    EXPECT_EQ(p[2], pr.b) << pr.x << "," << pr.y;
  }
}
