/* Walking the layers of the current layer list, top layer first. */
#ifndef DW_LAYER_LIST_SUITE_H
#define DW_LAYER_LIST_SUITE_H
#include "../types.h"
#ifdef __cplusplus
extern "C" {
#endif
#define kDWLayerListSuite "DW Layer List"
#define kDWLayerListSuiteVersion 4

typedef struct DWLayerListSuite {
  DWErr (*GetCurrentLayerList)(DWLayerListHandle* list);
  DWErr (*GetFirstLayer)(DWLayerListHandle list, DWLayerHandle* layer);
  /* *next is null after the last layer. */
  DWErr (*GetNextLayer)(DWLayerListHandle list, DWLayerHandle layer, DWLayerHandle* next);
} DWLayerListSuite;
#ifdef __cplusplus
}
#endif
#endif
