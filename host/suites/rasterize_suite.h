/* The suite the Rasterize plug-in adds to the host for other plug-ins. */
#ifndef DW_RASTERIZE_SUITE_H
#define DW_RASTERIZE_SUITE_H
#include "../types.h"
#include "../rasterize_settings.h"
#ifdef __cplusplus
extern "C" {
#endif
#define kDWRasterizeSuite "DW Rasterize Suite"
#define kDWRasterizeSuiteVersion 10
#define kDWRasterizeSuiteInternalVersion 1

/* Called while drawing with (progress so far, total); answer 1 to go on, 0 to stop. */
typedef int32_t (*DWRasterizeProgressProc)(int32_t current, int32_t total);

/* Resampling methods. */
enum { kDWResampleNearest = 0, kDWResampleAverage = 1, kDWResampleBicubic = 2 };

typedef struct DWRasterizeSuite {
  /* A null set measures the whole document. */
  DWErr (*GetArtBounds)(DWArtSetHandle art, DWRealRect* bounds, DWBool useArtboard);
  DWErr (*RasterizeArt)(DWArtSetHandle art, RasterizeSettings* settings, const DWRealRect* bounds,
                        int32_t paintOrder, DWArtHandle prep, DWArtHandle* raster, DWRasterizeProgressProc progress);
  DWErr (*CreateClippingMask)(DWArtSetHandle art, int16_t paintOrder, DWArtHandle raster, DWArtHandle* clipGroup);
  DWErr (*RasterizeArtWithPadding)(DWArtSetHandle art, RasterizeSettings* settings, const DWRealRect* bounds,
                                   int32_t paintOrder, DWArtHandle prep, DWArtHandle* raster,
                                   DWRasterizeProgressProc progress, double padding);
  DWErr (*RasterizeDocument)(RasterizeSettings* settings, int32_t paintOrder, DWArtHandle prep, DWArtHandle* raster,
                             DWRasterizeProgressProc progress);
  DWErr (*ResampleRasterArt)(DWArtHandle source, int32_t method, double resolution, int32_t paintOrder,
                             DWArtHandle prep, DWArtHandle* result);
  DWErr (*CanPreserveSpotColors)(DWArtSetHandle art, DWBool* canPreserve);
} DWRasterizeSuite;
#ifdef __cplusplus
}
#endif
#endif
