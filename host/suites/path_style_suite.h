/* Fill and stroke of paths. */
#ifndef DW_PATH_STYLE_SUITE_H
#define DW_PATH_STYLE_SUITE_H
#include "../types.h"
#include "../paint.h"
#ifdef __cplusplus
extern "C" {
#endif
#define kDWPathStyleSuite "DW Path Style Suite"
#define kDWPathStyleSuiteVersion 13

typedef struct DWPathStyleSuite {
  DWErr (*GetPathStyle)(DWArtHandle art, DWPathStyle* style);
  DWErr (*SetPathStyle)(DWArtHandle art, const DWPathStyle* style);
} DWPathStyleSuite;
#ifdef __cplusplus
}
#endif
#endif
