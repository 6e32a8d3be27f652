/* The host's rasterize options dialog. */
#ifndef DW_RASTERIZE_UI_SUITE_H
#define DW_RASTERIZE_UI_SUITE_H
#include "../types.h"
#include "../rasterize_settings.h"
#ifdef __cplusplus
extern "C" {
#endif
#define kDWRasterizeUISuite "DW RasterizeUI Suite"
#define kDWRasterizeUISuiteVersion 1

/* Dialog variants. */
enum { kDWDocumentRasterSettingsDialog = 0, kDWRasterizeOptionsDialog = 1 };

typedef struct DWRasterizeUISuite {
  /* 0 when the user confirmed; the record then holds the choices. Anything else: cancelled. */
  int32_t (*ShowRasterizeDialog)(RasterizeSettings* settings, int32_t variant);
} DWRasterizeUISuite;
#ifdef __cplusplus
}
#endif
#endif
