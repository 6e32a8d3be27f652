/* Per-plug-in host options. */
#ifndef DW_PLUGIN_SUITE_H
#define DW_PLUGIN_SUITE_H
#include "../types.h"
#ifdef __cplusplus
extern "C" {
#endif
#define kDWPluginSuite "DW Plugin Suite"
#define kDWPluginSuiteVersion 5

typedef struct DWPluginSuite {
  DWErr (*GetPluginOptions)(DWPluginRef plugin, uint32_t* options);
  DWErr (*SetPluginOptions)(DWPluginRef plugin, uint32_t options);
} DWPluginSuite;
#ifdef __cplusplus
}
#endif
#endif
