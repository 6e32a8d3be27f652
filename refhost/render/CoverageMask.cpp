#include "refhost/render/CoverageMask.h"

#include <cmath>
#include <cstring>

namespace refhost::render {

void toCairoMatrix(const Matrix& m, cairo_matrix_t* out) { cairo_matrix_init(out, m.a, m.b, m.c, m.d, m.tx, m.ty); }

CoverageMask::~CoverageMask() { end(); }

cairo_t* CoverageMask::begin(const IntRect& region, const Matrix& transform, bool antialias) {
  end();
  region_ = region;
  const int w = region.width(), h = region.height();
  if (w <= 0 || h <= 0) return nullptr;
  const double det = transform.determinant();
  if (!std::isfinite(det) || std::fabs(det) < 1e-12) return nullptr;
  stride_ = cairo_format_stride_for_width(CAIRO_FORMAT_A8, w);
  const std::size_t bytes = static_cast<std::size_t>(stride_) * static_cast<std::size_t>(h);
  data_ = buffer_.reserve(bytes);
  std::memset(data_, 0, bytes);
  surface_ = cairo_image_surface_create_for_data(data_, CAIRO_FORMAT_A8, w, h, stride_);
  cr_ = cairo_create(surface_);
  if (cairo_status(cr_) != CAIRO_STATUS_SUCCESS) {
    end();
    return nullptr;
  }
  cairo_set_antialias(cr_, antialias ? CAIRO_ANTIALIAS_GRAY : CAIRO_ANTIALIAS_NONE);
  cairo_set_source_rgba(cr_, 0, 0, 0, 1);
  setTransform(cr_, transform);
  return cr_;
}

void CoverageMask::setTransform(cairo_t* cr, const Matrix& transform) const {
  const Matrix full = Matrix::translation(-region_.left, -region_.top) * transform;
  cairo_matrix_t cm;
  toCairoMatrix(full, &cm);
  cairo_set_matrix(cr, &cm);
}

void CoverageMask::end() {
  if (cr_) {
    cairo_destroy(cr_);
    cr_ = nullptr;
  }
  if (surface_) {
    cairo_surface_flush(surface_);
    cairo_surface_destroy(surface_);
    surface_ = nullptr;
  }
}

}  // namespace refhost::render
