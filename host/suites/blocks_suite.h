/* Named memory blocks kept by the host (the plug-in's global block lives in one). */
#ifndef DW_BLOCKS_SUITE_H
#define DW_BLOCKS_SUITE_H
#include <stddef.h>
#include "../types.h"
#ifdef __cplusplus
extern "C" {
#endif
#define kDWBlocksSuite "QK Blocks Suite"
#define kDWBlocksSuiteVersion 2

typedef struct DWBlocksSuite {
  DWErr (*AllocateBlock)(size_t size, const char* name, void** block);
  DWErr (*FreeBlock)(void* block);
} DWBlocksSuite;
#ifdef __cplusplus
}
#endif
#endif
