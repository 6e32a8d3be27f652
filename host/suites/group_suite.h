/* Groups and clip groups. */
#ifndef DW_GROUP_SUITE_H
#define DW_GROUP_SUITE_H
#include "../types.h"
#ifdef __cplusplus
extern "C" {
#endif
#define kDWGroupSuite "DW Group Suite"
#define kDWGroupSuiteVersion 5

typedef struct DWGroupSuite {
  DWErr (*GetGroupClipped)(DWArtHandle group, DWBool* clipped);
  DWErr (*SetGroupClipped)(DWArtHandle group, DWBool clipped);
} DWGroupSuite;
#ifdef __cplusplus
}
#endif
#endif
