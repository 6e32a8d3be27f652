/* Application preferences, kept by the host across documents and runs. */
#ifndef DW_PREFERENCE_SUITE_H
#define DW_PREFERENCE_SUITE_H
#include "../types.h"
#ifdef __cplusplus
extern "C" {
#endif
#define kDWPreferenceSuite "DW Preference Suite"
#define kDWPreferenceSuiteVersion 6

/* A get leaves *value untouched when the preference is absent. */
typedef struct DWPreferenceSuite {
  DWErr (*GetIntegerPreference)(const char* prefix, const char* key, int32_t* value);
  DWErr (*SetIntegerPreference)(const char* prefix, const char* key, int32_t value);
  DWErr (*GetBooleanPreference)(const char* prefix, const char* key, DWBool* value);
  DWErr (*SetBooleanPreference)(const char* prefix, const char* key, DWBool value);
  DWErr (*GetRealPreference)(const char* prefix, const char* key, double* value);
  DWErr (*SetRealPreference)(const char* prefix, const char* key, double value);
} DWPreferenceSuite;
#ifdef __cplusplus
}
#endif
#endif
