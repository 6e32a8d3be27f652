// "DW Real Math Suite": rectangle and matrix arithmetic. Rectangles have y growing upward
// (top >= bottom when not empty); matrices map (h, v) to (a*h + c*v + tx, b*h + d*v + ty).
#include <algorithm>
#include <cmath>

#include "host/suites/real_math_suite.h"
#include "refhost/loader/SuiteProviders.h"

namespace refhost {
namespace {

DWBool EqualWithinTol(double a, double b, double tolerance) { return std::fabs(a - b) <= tolerance; }

void SetMatrixScale(DWRealMatrix* m, double h, double v) {
  if (m) *m = DWRealMatrix{h, 0, 0, v, 0, 0};
}

// Concatenations put the new transformation after the existing one.
void ConcatTranslate(DWRealMatrix* m, double tx, double ty) {
  if (!m) return;
  m->tx += tx;
  m->ty += ty;
}

void SetRect(DWRealRect* r, double left, double top, double right, double bottom) {
  if (r) *r = DWRealRect{left, top, right, bottom};
}

DWBool IsRectEmpty(const DWRealRect* r) { return !r || r->right <= r->left || r->top <= r->bottom; }

void UnionRect(const DWRealRect* a, const DWRealRect* b, DWRealRect* result) {
  if (!a || !b || !result) return;
  if (IsRectEmpty(a)) {
    *result = *b;
  } else if (IsRectEmpty(b)) {
    *result = *a;
  } else {
    *result = DWRealRect{std::min(a->left, b->left), std::max(a->top, b->top), std::max(a->right, b->right),
                         std::min(a->bottom, b->bottom)};
  }
}

void TransformPoint(const DWRealMatrix* m, const DWRealPoint* p, DWRealPoint* result) {
  if (!m || !p || !result) return;
  const DWRealPoint in = *p;
  *result = DWRealPoint{m->a * in.h + m->c * in.v + m->tx, m->b * in.h + m->d * in.v + m->ty};
}

double VectorLength(double h, double v) { return std::hypot(h, v); }

void SetIdentityMatrix(DWRealMatrix* m) {
  if (m) *m = DWRealMatrix{1, 0, 0, 1, 0, 0};
}

void ConcatMatrix(const DWRealMatrix* m, const DWRealMatrix* n, DWRealMatrix* result) {
  if (!m || !n || !result) return;
  const DWRealMatrix a = *m, b = *n;
  *result = DWRealMatrix{a.a * b.a + a.b * b.c,         a.a * b.b + a.b * b.d,         a.c * b.a + a.d * b.c,
                         a.c * b.b + a.d * b.d,         a.tx * b.a + a.ty * b.c + b.tx, a.tx * b.b + a.ty * b.d + b.ty};
}

void ConcatScale(DWRealMatrix* m, double h, double v) {
  if (!m) return;
  const DWRealMatrix scale{h, 0, 0, v, 0, 0};
  ConcatMatrix(m, &scale, m);
}

const DWRealMathSuite kSuite = {EqualWithinTol,    SetMatrixScale, ConcatTranslate, SetRect,
                                IsRectEmpty,       UnionRect,      TransformPoint,  VectorLength,
                                SetIdentityMatrix, ConcatScale,    ConcatMatrix};
REFHOST_REGISTER_SUITE(kDWRealMathSuite, kDWRealMathSuiteVersion, kSuite);

}  // namespace
}  // namespace refhost
