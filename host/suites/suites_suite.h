/* Adding suites to the host's registry, so that other plug-ins can acquire them. */
#ifndef DW_SUITES_SUITE_H
#define DW_SUITES_SUITE_H
#include "../types.h"
#ifdef __cplusplus
extern "C" {
#endif
#define kDWSuitesSuite "QK Suites Suite"
#define kDWSuitesSuiteVersion 2

typedef struct DWSuitesSuite {
  /* reserved is 0; the table must stay valid while the suite is registered. */
  DWErr (*AddSuite)(int32_t reserved, DWPluginRef plugin, const char* name, int32_t apiVersion,
                    int32_t internalVersion, const void* table, DWSuiteRef* suite);
} DWSuitesSuite;
#ifdef __cplusplus
}
#endif
#endif
