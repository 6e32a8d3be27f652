/* Path geometry. */
#ifndef DW_PATH_SUITE_H
#define DW_PATH_SUITE_H
#include "../types.h"
#include "../paint.h"
#ifdef __cplusplus
extern "C" {
#endif
#define kDWPathSuite "DW Path Suite"
#define kDWPathSuiteVersion 11

typedef struct DWPathSuite {
  /* Non-zero for guides: paths that are never printed, measured or rasterized. */
  DWErr (*GetPathIsGuide)(DWArtHandle path, DWBool* guide);
  DWErr (*GetPathClosed)(DWArtHandle path, DWBool* closed);
  DWErr (*SetPathClosed)(DWArtHandle path, DWBool closed);
  DWErr (*GetPathSegmentCount)(DWArtHandle path, int16_t* count);
  DWErr (*SetPathSegmentCount)(DWArtHandle path, int16_t count);
  DWErr (*GetPathSegments)(DWArtHandle path, int16_t first, int16_t count, DWPathSegment* segments);
  DWErr (*SetPathSegments)(DWArtHandle path, int16_t first, int16_t count, const DWPathSegment* segments);
} DWPathSuite;
#ifdef __cplusplus
}
#endif
#endif
