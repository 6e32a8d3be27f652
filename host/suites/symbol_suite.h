/* Symbols and their instances. */
#ifndef DW_SYMBOL_SUITE_H
#define DW_SYMBOL_SUITE_H
#include "../types.h"
#ifdef __cplusplus
extern "C" {
#endif
#define kDWSymbolSuite "DW Symbol Suite"
#define kDWSymbolSuiteVersion 7

typedef struct DWSymbolSuite {
  /* Non-zero when the art is part of a symbol definition being edited in place. */
  DWBool (*ArtIsInSymbolEditing)(DWArtHandle art, int32_t reserved);
} DWSymbolSuite;
#ifdef __cplusplus
}
#endif
#endif
