/* Live effects: the host keeps the source art and asks the effect for a result when it draws. */
#ifndef DW_LIVE_EFFECT_SUITE_H
#define DW_LIVE_EFFECT_SUITE_H
#include "../types.h"
#ifdef __cplusplus
extern "C" {
#endif
#define kDWLiveEffectSuite "DW Live Effect Suite"
#define kDWLiveEffectSuiteVersion 6

typedef struct DWLiveEffectData {
  DWPluginRef plugin;
  const char* name;        /* internal name */
  char title[256];         /* display title, zero-terminated, platform encoding */
  int32_t majorVersion;
  int32_t minorVersion;
  uint32_t inputOptions;   /* kinds of art the effect takes */
  uint32_t styleOptions;   /* how the effect sits in a style */
} DWLiveEffectData;

typedef struct DWLiveEffectMenuData {
  const char* category;    /* null: the host chooses */
  char title[256];
  uint32_t options;
} DWLiveEffectMenuData;

typedef struct DWLiveEffectSuite {
  DWErr (*AddLiveEffect)(const DWLiveEffectData* data, DWLiveEffectHandle* effect);
  /* item and group may be null. */
  DWErr (*AddLiveEffectMenuItem)(DWLiveEffectHandle effect, const char* menuName, const DWLiveEffectMenuData* data,
                                 DWMenuItemHandle* item, DWMenuGroupHandle* group);
  /* Tells the host that the parameters of an edit in progress have changed. */
  DWErr (*UpdateParameters)(DWLiveEffectParamContext context);
} DWLiveEffectSuite;
#ifdef __cplusplus
}
#endif
#endif
