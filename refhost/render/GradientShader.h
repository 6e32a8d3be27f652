#pragma once

#include "refhost/document/Paint.h"
#include "refhost/render/ColorSpace.h"

#include <cstdint>
#include <vector>

namespace refhost {
class Document;
}

namespace refhost::render {

// Colours a shape with a linear or radial gradient. The stops are converted to the target's
// channels first and then interpolated channel by channel, so a gradient between two spot tints
// stays in the spot channel. Pixels are sampled at their centres.
class GradientShader {
 public:
  // `artBounds` (document points) anchors gradients in bounding-box units; `docToDevice` maps
  // the document to device pixels. False when the gradient cannot paint anything.
  bool prepare(const Gradient& gradient, const Rect& artBounds, const Matrix& docToDevice, const Document* document,
               const ColorSpace& target, double opacity);
  // Alpha-first pixels with the target's colour channels for [x0, x1) of device row y.
  void shadeRow(std::int32_t y, std::int32_t x0, std::int32_t x1, std::uint8_t* out) const;
  int bytesPerPixel() const { return spp_; }

  // Position of a gradient-space point along the gradient before spreading (NaN when a radial
  // gradient does not reach it).
  double parameterAt(double gx, double gy) const;

 private:
  double linearAt(double gx, double gy) const { return ((gx - sx_) * dx_ + (gy - sy_) * dy_) * invLen2_; }
  double radialAt(double gx, double gy) const;
  // Rows specialised by bytes per pixel (0: any), spread and kind, so the loop has no branch on them.
  template <int SPP, Gradient::Spread S, Gradient::Kind K>
  void shadeSpan(std::int32_t y, std::int32_t x0, std::int32_t x1, std::uint8_t* out) const;
  template <int SPP, Gradient::Spread S>
  void shadeSpanOfKind(std::int32_t y, std::int32_t x0, std::int32_t x1, std::uint8_t* out) const;
  template <int SPP>
  void shadeSpanOfSize(std::int32_t y, std::int32_t x0, std::int32_t x1, std::uint8_t* out) const;

  static constexpr int kLutSize = 1024;
  std::vector<std::uint8_t> lut_;
  int spp_ = 1;
  Gradient::Kind kind_ = Gradient::Kind::Linear;
  Gradient::Spread spread_ = Gradient::Spread::Pad;
  Matrix deviceToGradient_;
  double sx_ = 0, sy_ = 0, dx_ = 1, dy_ = 0, invLen2_ = 1;  // linear
  double fx_ = 0, fy_ = 0, cdx_ = 0, cdy_ = 0, fr_ = 0, dr_ = 0, a_ = 0;  // radial
};

}  // namespace refhost::render
