/* Plug-in groups: art whose visible result is computed from hidden edit art. */
#ifndef DW_PLUGIN_GROUP_SUITE_H
#define DW_PLUGIN_GROUP_SUITE_H
#include "../types.h"
#ifdef __cplusplus
extern "C" {
#endif
#define kDWPluginGroupSuite "DW Plugin Group Suite"
#define kDWPluginGroupSuiteVersion 6

typedef struct DWPluginGroupSuite {
  DWErr (*GetPluginArtResultArt)(DWArtHandle art, DWArtHandle* result);
  DWErr (*GetPluginArtEditArt)(DWArtHandle art, DWArtHandle* edit);
} DWPluginGroupSuite;
#ifdef __cplusplus
}
#endif
#endif
