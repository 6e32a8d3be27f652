/* Perspective grids (optional). */
#ifndef DW_PERSPECTIVE_TRANSFORM_SUITE_H
#define DW_PERSPECTIVE_TRANSFORM_SUITE_H
#include "../types.h"
#ifdef __cplusplus
extern "C" {
#endif
#define kDWPerspectiveTransformSuite "DW Perspective Transform Suite"
#define kDWPerspectiveTransformSuiteVersion 3

typedef struct DWPerspectiveTransformSuite {
  /* Non-zero for an object drawn through a perspective grid. */
  DWBool (*IsPerspectiveArt)(DWArtHandle art);
} DWPerspectiveTransformSuite;
#ifdef __cplusplus
}
#endif
#endif
