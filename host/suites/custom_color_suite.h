/* Custom colours: named spot and global process colours. */
#ifndef DW_CUSTOM_COLOR_SUITE_H
#define DW_CUSTOM_COLOR_SUITE_H
#include "../types.h"
#include "../paint.h"
#ifdef __cplusplus
extern "C" {
#endif
#define kDWCustomColorSuite "DW Custom Color Suite"
#define kDWCustomColorSuiteVersion 8

enum { kDWCustomProcess = 0, kDWCustomSpot = 1 };

typedef struct DWCustomColorInfo {
  char name[64];
  int32_t kind;           /* spot or process */
  DWFourColor alternate;  /* the process equivalent, used where no spot channel exists */
} DWCustomColorInfo;

typedef struct DWCustomColorSuite {
  DWErr (*GetCustomColor)(DWCustomColorHandle color, DWCustomColorInfo* info);
  DWErr (*CountCustomColors)(int32_t* count);
  DWErr (*GetNthCustomColor)(int32_t index, DWCustomColorHandle* color);
} DWCustomColorSuite;
#ifdef __cplusplus
}
#endif
#endif
