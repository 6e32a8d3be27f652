/* Transparency: blending modes, opacity and isolation of art. */
#ifndef DW_BLEND_STYLE_SUITE_H
#define DW_BLEND_STYLE_SUITE_H
#include "../types.h"
#ifdef __cplusplus
extern "C" {
#endif
#define kDWBlendStyleSuite "DW Blend Style Suite"
#define kDWBlendStyleSuiteVersion 5

typedef struct DWBlendStyleSuite {
  /* Marks art whose alpha channel the host must honour when compositing it (1 on, 0 off). */
  DWErr (*SetBlendFlag)(DWArtHandle art, int32_t flag);
  /* Non-zero when the art has to be drawn as an isolated group (its opacity is below 1). */
  uint32_t (*GetBlendValue)(DWArtHandle art);
  /* Non-zero when the document has any transparency. */
  uint32_t (*GetDocumentBlendValue)(void);
} DWBlendStyleSuite;
#ifdef __cplusplus
}
#endif
#endif
