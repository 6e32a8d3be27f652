#include "refhost/document/Geometry.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace refhost {

Rect Rect::none() {
  const double inf = std::numeric_limits<double>::infinity();
  return Rect{inf, -inf, -inf, inf};
}

Rect Rect::fromPoints(Point a, Point b) {
  return Rect{std::min(a.x, b.x), std::max(a.y, b.y), std::max(a.x, b.x), std::min(a.y, b.y)};
}

void Rect::add(Point p) {
  left = std::min(left, p.x);
  right = std::max(right, p.x);
  bottom = std::min(bottom, p.y);
  top = std::max(top, p.y);
}

Rect Rect::united(const Rect& o) const {
  if (o.isEmpty()) return *this;
  if (isEmpty()) return o;
  return Rect{std::min(left, o.left), std::max(top, o.top), std::max(right, o.right), std::min(bottom, o.bottom)};
}

Rect Rect::intersected(const Rect& o) const {
  if (isEmpty() || o.isEmpty()) return none();
  Rect r{std::max(left, o.left), std::min(top, o.top), std::min(right, o.right), std::max(bottom, o.bottom)};
  return r.isEmpty() ? none() : r;
}

bool operator==(const Rect& a, const Rect& b) {
  if (a.isEmpty() && b.isEmpty()) return true;
  return a.left == b.left && a.top == b.top && a.right == b.right && a.bottom == b.bottom;
}

Matrix Matrix::rotation(double radians) {
  const double c = std::cos(radians), s = std::sin(radians);
  return Matrix{c, s, -s, c, 0, 0};
}

Matrix Matrix::skewX(double radians) { return Matrix{1, 0, std::tan(radians), 1, 0, 0}; }
Matrix Matrix::skewY(double radians) { return Matrix{1, std::tan(radians), 0, 1, 0, 0}; }

bool Matrix::isInvertible() const {
  const double det = determinant();
  return std::isfinite(det) && det != 0.0;
}

Matrix Matrix::inverted() const {
  const double det = determinant();
  if (!std::isfinite(det) || det == 0.0) return Matrix{};
  const double ia = d / det, ib = -b / det, ic = -c / det, id = a / det;
  return Matrix{ia, ib, ic, id, -(ia * tx + ic * ty), -(ib * tx + id * ty)};
}

Rect Matrix::applyToRect(const Rect& r) const {
  if (r.isEmpty()) return Rect::none();
  Rect out = Rect::none();
  out.add(apply(Point{r.left, r.top}));
  out.add(apply(Point{r.right, r.top}));
  out.add(apply(Point{r.right, r.bottom}));
  out.add(apply(Point{r.left, r.bottom}));
  return out;
}

Matrix operator*(const Matrix& m, const Matrix& n) {
  return Matrix{m.a * n.a + m.c * n.b,         m.b * n.a + m.d * n.b,
                m.a * n.c + m.c * n.d,         m.b * n.c + m.d * n.d,
                m.a * n.tx + m.c * n.ty + m.tx, m.b * n.tx + m.d * n.ty + m.ty};
}

bool operator==(const Matrix& m, const Matrix& n) {
  return m.a == n.a && m.b == n.b && m.c == n.c && m.d == n.d && m.tx == n.tx && m.ty == n.ty;
}

}  // namespace refhost
