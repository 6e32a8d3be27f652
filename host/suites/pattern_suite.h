/* Patterns. */
#ifndef DW_PATTERN_SUITE_H
#define DW_PATTERN_SUITE_H
#include "../types.h"
#ifdef __cplusplus
extern "C" {
#endif
#define kDWPatternSuite "DW Pattern Suite"
#define kDWPatternSuiteVersion 10

typedef struct DWPatternSuite {
  /* Non-zero while a pattern is being edited; *art is then the art that holds the pattern's tile. */
  DWBool (*GetEditedPatternArt)(int32_t reserved, DWArtHandle* art);
} DWPatternSuite;
#ifdef __cplusplus
}
#endif
#endif
