/* Placed (linked or embedded) images. */
#ifndef DW_PLACED_SUITE_H
#define DW_PLACED_SUITE_H
#include "../types.h"
#ifdef __cplusplus
extern "C" {
#endif
#define kDWPlacedSuite "DW Placed Suite"
#define kDWPlacedSuiteVersion 8

typedef struct DWPlacedSuite {
  /* The image's own bounds, before the matrix. */
  DWErr (*GetPlacedBounds)(DWArtHandle placed, DWRealRect* bounds);
  DWErr (*GetPlacedMatrix)(DWArtHandle placed, DWRealMatrix* matrix);
} DWPlacedSuite;
#ifdef __cplusplus
}
#endif
#endif
