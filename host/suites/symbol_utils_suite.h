/* Keeping symbol definitions in step with in-place edits. */
#ifndef DW_SYMBOL_UTILS_SUITE_H
#define DW_SYMBOL_UTILS_SUITE_H
#include "../types.h"
#ifdef __cplusplus
extern "C" {
#endif
#define kDWSymbolUtilsSuite "DW Symbol Utils Suite"
#define kDWSymbolUtilsSuiteVersion 1

typedef struct DWSymbolUtilsSuite {
  /* Tells the host that art next to prep inside container changed during a symbol edit. */
  DWErr (*NotifyArtChanged)(DWArtHandle prep, DWArtHandle container, int32_t reserved);
} DWSymbolUtilsSuite;
#ifdef __cplusplus
}
#endif
#endif
