/* Layers. */
#ifndef DW_LAYER_SUITE_H
#define DW_LAYER_SUITE_H
#include "../types.h"
#ifdef __cplusplus
extern "C" {
#endif
#define kDWLayerSuite "DW Layer Suite"
#define kDWLayerSuiteVersion 13

typedef struct DWLayerSuite {
  DWErr (*GetCurrentLayer)(DWLayerHandle* layer);
  DWErr (*GetLayerEditable)(DWLayerHandle layer, DWBool* editable);
  DWErr (*CountLayers)(int32_t* count);
  /* Index 0 is the top layer. */
  DWErr (*GetNthLayer)(int32_t index, DWLayerHandle* layer);
  DWErr (*GetLayerVisible)(DWLayerHandle layer, DWBool* visible);
  /* Non-zero for layers that are not to be output (not printable). */
  DWErr (*GetLayerNonPrinting)(DWLayerHandle layer, DWBool* nonPrinting);
} DWLayerSuite;
#ifdef __cplusplus
}
#endif
#endif
