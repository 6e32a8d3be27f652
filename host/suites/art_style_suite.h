/* Art styles (appearances): paint plus live effects with their parameters. */
#ifndef DW_ART_STYLE_SUITE_H
#define DW_ART_STYLE_SUITE_H
#include "../types.h"
#ifdef __cplusplus
extern "C" {
#endif
#define kDWArtStyleSuite "DW Art Style Suite"
#define kDWArtStyleSuiteVersion 7

typedef struct DWArtStyleSuite {
  /* Null when the art has no style of its own. */
  DWErr (*GetArtStyle)(DWArtHandle art, DWArtStyleHandle* style);
  /* A null style removes the art's style. */
  DWErr (*SetArtStyle)(DWArtHandle art, DWArtStyleHandle style);
  /* The art whose appearance the art's style is; null when none. */
  DWErr (*GetStyleOwner)(DWArtHandle art, DWArtHandle* owner);
} DWArtStyleSuite;
#ifdef __cplusplus
}
#endif
#endif
