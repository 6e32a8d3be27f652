#pragma once

#include "refhost/document/Geometry.h"
#include "refhost/render/HugeBuffer.h"

#include <cairo.h>
#include <cstdint>

namespace refhost::render {

// An 8-bit coverage mask over a rectangle of device pixels, drawn by cairo. The memory is kept
// between shapes, so a mask costs only the clearing of the rectangle it covers.
class CoverageMask {
 public:
  CoverageMask() = default;
  ~CoverageMask();
  CoverageMask(const CoverageMask&) = delete;
  CoverageMask& operator=(const CoverageMask&) = delete;

  // Clears the mask over `region` and returns a cairo context whose user space is mapped to the
  // device by `transform` (null when the transform is singular or cairo fails). Shapes are
  // filled or stroked with full alpha; end() must follow.
  cairo_t* begin(const IntRect& region, const Matrix& transform, bool antialias);
  void end();

  const IntRect& region() const { return region_; }
  // Row y (device) of the mask; column region().left first.
  const std::uint8_t* row(std::int32_t y) const { return data_ + static_cast<std::ptrdiff_t>(y - region_.top) * stride_; }
  std::uint8_t* mutableRow(std::int32_t y) { return data_ + static_cast<std::ptrdiff_t>(y - region_.top) * stride_; }
  std::int32_t stride() const { return stride_; }

  // Sets the transform of a context from begin() anew (for shapes under another matrix).
  void setTransform(cairo_t* cr, const Matrix& transform) const;

 private:
  HugeBuffer buffer_;
  std::uint8_t* data_ = nullptr;
  std::int32_t stride_ = 0;
  IntRect region_;
  cairo_surface_t* surface_ = nullptr;
  cairo_t* cr_ = nullptr;
};

void toCairoMatrix(const Matrix& m, cairo_matrix_t* out);

}  // namespace refhost::render
