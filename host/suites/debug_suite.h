/* Diagnostics for plug-in developers. */
#ifndef DW_DEBUG_SUITE_H
#define DW_DEBUG_SUITE_H
#include "../types.h"
#ifdef __cplusplus
extern "C" {
#endif
#define kDWDebugSuite "DW Debug Suite"
#define kDWDebugSuiteVersion 1

typedef struct DWDebugSuite {
  void (*DebugMessage)(const char* text);
} DWDebugSuite;
#ifdef __cplusplus
}
#endif
#endif
