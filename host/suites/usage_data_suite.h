/* Usage data events (optional). */
#ifndef DW_USAGE_DATA_SUITE_H
#define DW_USAGE_DATA_SUITE_H
#include "../types.h"
#ifdef __cplusplus
extern "C" {
#endif
#define kDWUsageDataSuite "DW Orrimet Suite"
#define kDWUsageDataSuiteVersion 1

typedef struct DWUsageDataSuite {
  /* Null when the host does not collect this event. */
  DWUsageEvent (*CreateEvent)(const char* name);
  DWErr (*AddAttribute)(DWUsageEvent event, const char* key, const char* value);
} DWUsageDataSuite;
#ifdef __cplusplus
}
#endif
#endif
