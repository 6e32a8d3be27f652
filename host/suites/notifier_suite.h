/* Notifications: the host calls PluginMain with caller "DW Notifier" when one fires. */
#ifndef DW_NOTIFIER_SUITE_H
#define DW_NOTIFIER_SUITE_H
#include "../types.h"
#ifdef __cplusplus
extern "C" {
#endif
#define kDWNotifierSuite "DW Notifier Suite"
#define kDWNotifierSuiteVersion 4

typedef struct DWNotifierSuite {
  /* notifier may be null when the caller does not want the handle. */
  DWErr (*AddNotifier)(DWPluginRef plugin, const char* name, const char* type, DWNotifierHandle* notifier);
} DWNotifierSuite;
#ifdef __cplusplus
}
#endif
#endif
