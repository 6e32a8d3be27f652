#pragma once

#include "refhost/document/Art.h"
#include "refhost/render/ColorSpace.h"
#include "refhost/render/CoverageMask.h"
#include "refhost/render/GradientShader.h"
#include "refhost/render/HugeBuffer.h"
#include "refhost/render/ImageSampler.h"
#include "refhost/render/Surface.h"

#include <functional>
#include <memory>
#include <vector>

namespace refhost::render {

// A closed polygon in device pixels that limits drawing (the port's clip).
using DevicePolygon = std::vector<Point>;
// Polygons filled together with the non-zero rule.
using ClipPath = std::vector<DevicePolygon>;

struct DrawRequest {
  const Art* art = nullptr;
  Matrix docToDevice;             // document points to device pixels
  Surface target;                 // the port's pixels
  const ColorSpace* space = nullptr;  // the port's channels, alpha first when present
  IntRect limit;                  // device pixels that may change
  bool antialias = false;
  const std::vector<ClipPath>* clip = nullptr;  // each one intersects the drawable area
};

// Draws art trees into N-channel pixels. Each filled or stroked shape becomes a coverage mask
// limited to its clipped device bounds and is composited source-over with its paint. Opacity is
// folded into the paint where that gives the same result (one paint, or a group with one member);
// otherwise the object is drawn into a layer that covers only its bounds. Masks, clips and layers
// keep their memory between draws.
class ArtRenderer {
 public:
  ArtRenderer();
  ~ArtRenderer();
  ArtRenderer(const ArtRenderer&) = delete;
  ArtRenderer& operator=(const ArtRenderer&) = delete;

  void draw(const DrawRequest& request);

  // Counters for tests and benchmarks: layers drawn since construction.
  std::size_t layerCount() const { return layersUsed_; }

 private:
  struct ClipLevel;
  struct LayerLevel;
  struct Box {
    double x0, y0, x1, y1;
    bool empty() const { return !(x1 > x0 && y1 > y0); }
  };
  using Builder = std::function<void(cairo_t*)>;

  void drawArt(const Art& art, const Matrix& m, double alpha, int depth);
  void drawGroup(const Art& art, const Matrix& m, double alpha, int depth);
  void drawShape(const Art& art, const Matrix& m, double alpha, const PathStyle& style, const Builder& outline);
  void drawImage(const Art& art, const Matrix& m, double alpha);
  void drawMesh(const Art& art, const Matrix& m, double alpha);

  // Fills (stroke null) or strokes the outline into the mask and composites `paint`.
  void paint(const Matrix& m, const Box& extent, const Builder& outline, const PathStyle& style, bool stroke,
             const Paint& paint, double alpha, const Rect& artBounds);
  void compositeMask(const Paint& paint, double alpha, const Matrix& m, const Rect& artBounds);

  Box extentOf(const Art& art, const Matrix& m, int depth) const;
  IntRect toPixels(const Box& box) const;
  IntRect currentLimit() const;

  bool pushClip(const Art& group, const Matrix& m);
  bool pushDeviceClip(const ClipPath& path);
  void popClip();
  bool beginLayer(const IntRect& region);
  void endLayer(double opacity);
  // Coverage of mask row y over [x0, x1) with the current clip applied; null when nothing shows.
  const std::uint8_t* coverageRow(const CoverageMask& mask, std::int32_t y, std::int32_t& x0, std::int32_t& x1);

  const ColorSpace* space_ = nullptr;
  const Document* document_ = nullptr;
  bool antialias_ = false;
  std::vector<Surface> targets_;
  std::vector<std::unique_ptr<ClipLevel>> clips_;
  int clipDepth_ = 0;
  std::vector<std::unique_ptr<LayerLevel>> layers_;
  std::size_t layersUsed_ = 0;
  IntRect limit_;
  CoverageMask shape_;
  GradientShader gradient_;
  ImageSampler image_;
  std::vector<std::uint8_t> coverage_;
  std::vector<std::uint8_t> source_;
};

}  // namespace refhost::render
