/* Developer utilities: named logs and a clock. */
#ifndef DW_DEV_UTILS_SUITE_H
#define DW_DEV_UTILS_SUITE_H
#include "../types.h"
#ifdef __cplusplus
extern "C" {
#endif
#define kDWDevUtilsSuite "DW Dev Utils Suite"
#define kDWDevUtilsSuiteVersion 1

typedef struct DWDevUtilsSuite {
  /* A null name asks for the default log. A name the host does not keep gives the default log. */
  DWLogHandle (*GetLog)(const char* name);
  /* printf-style; the host ends the line. */
  void (*WriteLine)(DWLogHandle log, const char* format, ...);
  DWTimeStamp (*GetStartStamp)(void);
  DWClockRef (*GetClock)(void);
  DWTimeStamp (*ReadClock)(DWClockRef clock);
  int64_t (*Difference)(DWTimeStamp later, DWTimeStamp earlier);
  uint32_t (*DurationMilliseconds)(int64_t duration);
} DWDevUtilsSuite;
#ifdef __cplusplus
}
#endif
#endif
