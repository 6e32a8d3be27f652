#pragma once

#include <cstdint>

namespace refhost {

struct Point {
  double x = 0.0;
  double y = 0.0;
};

inline bool operator==(const Point& a, const Point& b) { return a.x == b.x && a.y == b.y; }
inline bool operator!=(const Point& a, const Point& b) { return !(a == b); }

// Document rectangle in points, y growing upward: a non-empty rectangle has top >= bottom.
struct Rect {
  double left = 0.0;
  double top = 0.0;
  double right = 0.0;
  double bottom = 0.0;

  // The identity of union: unites with any rectangle to that rectangle, and isEmpty() is true.
  static Rect none();
  static Rect fromPoints(Point a, Point b);

  bool isEmpty() const { return left > right || bottom > top; }
  double width() const { return right - left; }
  double height() const { return top - bottom; }
  bool contains(Point p) const { return p.x >= left && p.x <= right && p.y >= bottom && p.y <= top; }

  void add(Point p);
  Rect united(const Rect& other) const;
  // Empty (isEmpty()) when the two do not overlap.
  Rect intersected(const Rect& other) const;
};

bool operator==(const Rect& a, const Rect& b);
inline bool operator!=(const Rect& a, const Rect& b) { return !(a == b); }

// Integer rectangle of pixels: rows grow downward, so height = bottom - top.
struct IntRect {
  std::int32_t left = 0;
  std::int32_t top = 0;
  std::int32_t right = 0;
  std::int32_t bottom = 0;

  std::int32_t width() const { return right - left; }
  std::int32_t height() const { return bottom - top; }
};

inline bool operator==(const IntRect& a, const IntRect& b) {
  return a.left == b.left && a.top == b.top && a.right == b.right && a.bottom == b.bottom;
}
inline bool operator!=(const IntRect& a, const IntRect& b) { return !(a == b); }

// Affine matrix: a point (x, y) maps to (a*x + c*y + tx, b*x + d*y + ty), as the host boundary has it.
struct Matrix {
  double a = 1.0;
  double b = 0.0;
  double c = 0.0;
  double d = 1.0;
  double tx = 0.0;
  double ty = 0.0;

  static Matrix identity() { return Matrix{}; }
  static Matrix translation(double x, double y) { return Matrix{1, 0, 0, 1, x, y}; }
  static Matrix scaling(double sx, double sy) { return Matrix{sx, 0, 0, sy, 0, 0}; }
  static Matrix rotation(double radians);
  static Matrix skewX(double radians);
  static Matrix skewY(double radians);

  Point apply(Point p) const { return Point{a * p.x + c * p.y + tx, b * p.x + d * p.y + ty}; }
  // The linear part only: for vectors such as tangent offsets.
  Point applyToVector(Point v) const { return Point{a * v.x + c * v.y, b * v.x + d * v.y}; }
  double determinant() const { return a * d - b * c; }
  bool isInvertible() const;
  // The inverse; identity when the matrix is singular (check isInvertible() first where it matters).
  Matrix inverted() const;
  bool isIdentity() const { return a == 1 && b == 0 && c == 0 && d == 1 && tx == 0 && ty == 0; }
  // Bounds of a rectangle's four transformed corners.
  Rect applyToRect(const Rect& r) const;
};

// (m * n) applies n first, then m: the order in which SVG composes a parent and a child transform.
Matrix operator*(const Matrix& m, const Matrix& n);
bool operator==(const Matrix& m, const Matrix& n);
inline bool operator!=(const Matrix& m, const Matrix& n) { return !(m == n); }

}  // namespace refhost
