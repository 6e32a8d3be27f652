/* Maps named legacy style entries onto live effects. */
#ifndef DW_STYLE_CONVERTER_SUITE_H
#define DW_STYLE_CONVERTER_SUITE_H
#include "../types.h"
#ifdef __cplusplus
extern "C" {
#endif
#define kDWStyleConverterSuite "DW Style Converter Suite"
#define kDWStyleConverterSuiteVersion 1

typedef struct DWStyleConverterSuite {
  DWErr (*RegisterStyleName)(DWLiveEffectHandle effect, uint32_t kinds, uint32_t options, const char* name);
} DWStyleConverterSuite;
#ifdef __cplusplus
}
#endif
#endif
