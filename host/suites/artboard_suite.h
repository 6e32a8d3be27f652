/* Artboards: the page areas of a document. */
#ifndef DW_ARTBOARD_SUITE_H
#define DW_ARTBOARD_SUITE_H
#include "../types.h"
#ifdef __cplusplus
extern "C" {
#endif
#define kDWArtboardSuite "DW Artboard Suite"
#define kDWArtboardSuiteVersion 3

typedef struct DWArtboardSuite {
  DWErr (*GetArtboardList)(DWArtboardList* list);
  DWErr (*ReleaseArtboardList)(DWArtboardList list);
  DWErr (*GetActiveArtboardIndex)(DWArtboardList list, int32_t* index);
  DWErr (*GetArtboardProperties)(DWArtboardList list, int32_t index, DWArtboardProperties* properties);
  DWErr (*GetArtboardBounds)(DWArtboardProperties properties, DWRealRect* bounds);
  DWErr (*DisposeArtboardProperties)(DWArtboardProperties properties);
} DWArtboardSuite;
#ifdef __cplusplus
}
#endif
#endif
