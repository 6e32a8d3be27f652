/* Large working memory (tile and band buffers). */
#ifndef DW_BLOCK_SUITE_H
#define DW_BLOCK_SUITE_H
#include <stddef.h>
#include "../types.h"
#ifdef __cplusplus
extern "C" {
#endif
#define kDWBlockSuite "DW Block Suite"
#define kDWBlockSuiteVersion 4

typedef struct DWBlockSuite {
  /* *block is null on failure. */
  DWErr (*AllocateBlock)(size_t size, void** block);
  DWErr (*DisposeBlock)(void* block);
} DWBlockSuite;
#ifdef __cplusplus
}
#endif
#endif
