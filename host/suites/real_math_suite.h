/* Geometry helpers. Matrices use the row-vector convention of types.h; "concatenate X"
   means X is applied after the matrix (m = m * X). */
#ifndef DW_REAL_MATH_SUITE_H
#define DW_REAL_MATH_SUITE_H
#include "../types.h"
#ifdef __cplusplus
extern "C" {
#endif
#define kDWRealMathSuite "DW Real Math Suite"
#define kDWRealMathSuiteVersion 3

typedef struct DWRealMathSuite {
  DWBool (*EqualWithinTol)(double a, double b, double tolerance);
  void (*SetMatrixScale)(DWRealMatrix* m, double h, double v);
  void (*ConcatTranslate)(DWRealMatrix* m, double tx, double ty);
  void (*SetRect)(DWRealRect* r, double left, double top, double right, double bottom);
  /* Empty: right <= left or top <= bottom. */
  DWBool (*IsRectEmpty)(const DWRealRect* r);
  void (*UnionRect)(const DWRealRect* a, const DWRealRect* b, DWRealRect* result);
  void (*TransformPoint)(const DWRealMatrix* m, const DWRealPoint* p, DWRealPoint* result);
  double (*VectorLength)(double h, double v);
  void (*SetIdentityMatrix)(DWRealMatrix* m);
  void (*ConcatScale)(DWRealMatrix* m, double h, double v);
  /* result = m * n: m applied first, then n. */
  void (*ConcatMatrix)(const DWRealMatrix* m, const DWRealMatrix* n, DWRealMatrix* result);
} DWRealMathSuite;
#ifdef __cplusplus
}
#endif
#endif
