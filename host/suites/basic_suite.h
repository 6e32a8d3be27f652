/* The basic suite: every other suite is acquired and released through it by name and version. */
#ifndef DW_BASIC_SUITE_H
#define DW_BASIC_SUITE_H
#include "../types.h"
#ifdef __cplusplus
extern "C" {
#endif
#define kDWBasicSuite "QK Basic Suite"
#define kDWBasicSuiteVersion 1

typedef struct DWBasicSuite {
  DWErr (*AcquireSuite)(const char* name, int32_t version, const void** suite);
  DWErr (*ReleaseSuite)(const char* name, int32_t version);
} DWBasicSuite;
#ifdef __cplusplus
}
#endif
#endif
