/* The host's registry of loaded plug-ins. */
#ifndef DW_PLUGINS_SUITE_H
#define DW_PLUGINS_SUITE_H
#include "../types.h"
#ifdef __cplusplus
extern "C" {
#endif
#define kDWPluginsSuite "QK Plug-ins Suite"
#define kDWPluginsSuiteVersion 6

typedef struct DWPluginsSuite {
  DWErr (*SetPluginName)(DWPluginRef plugin, const char* name);
} DWPluginsSuite;
#ifdef __cplusplus
}
#endif
#endif
