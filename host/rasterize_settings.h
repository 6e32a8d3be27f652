/* The rasterize options record, as other plug-ins and the host exchange it by pointer.
   Its layout is fixed on every platform: 56 bytes, doubles at offsets 8 and 40. The gaps are
   spelled out so that 32-bit ABIs that align doubles to 4 bytes give the same offsets. */
#ifndef DW_RASTERIZE_SETTINGS_H
#define DW_RASTERIZE_SETTINGS_H

#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

typedef struct RasterizeSettings {
  int32_t type;               /* RasterType: colour model + 4 x transparent background */
  int32_t gap0;
  double resolution;          /* pixels per inch; 0 means 300 */
  int16_t antialiasing;       /* supersampling factor; below 2 means none */
  int16_t gap1;
  uint32_t options;           /* RasterizeOptions bits */
  int32_t reserved;           /* handed to the host's drawing; 0 when built from a stored form */
  int32_t preserveSpotColors;
  int32_t createClippingMask;
  int32_t gap2;
  double padding;             /* points added around the art */
  int32_t forEffect;          /* 1 for a raster effect, 0 for the Rasterize command */
  int32_t gap3;
} RasterizeSettings;

/* Raster types (values of type). */
enum {
  kRasterTypeRgb = 0,
  kRasterTypeCmyk = 1,
  kRasterTypeGrayscale = 2,
  kRasterTypeBitmap = 3,
  kRasterTypeRgbTransparent = 4,
  kRasterTypeCmykTransparent = 5,
  kRasterTypeGrayscaleTransparent = 6,
  kRasterTypeBitmapTransparent = 7,
  kRasterTypeSpot = 8,
  kRasterTypeSpotTransparent = 9,
  kRasterTypeNChannel = 10,
  kRasterTypeNChannelTransparent = 11
};

/* Option bits (values of options). */
enum {
  kRasterizeDrawParentlessArt = 0x01,
  kRasterizeBlackBackground = 0x02,
  kRasterizeNoPixelSnap = 0x04,
  kRasterizeOutlineText = 0x08,
  kRasterizeTypeOptimized = 0x10,
  kRasterizeUseEffectsResolution = 0x20,
  kRasterizeDrawPortDevice = 0x80,
  kRasterizeAllowSpotRaster = 0x100,
  kRasterizeAllowNChannelRaster = 0x200
};

#ifdef __cplusplus
}
#endif

#endif
