/* Raster descriptions exchanged with the raster suite. */
#ifndef DW_HOST_RASTER_H
#define DW_HOST_RASTER_H

#include "types.h"

#ifdef __cplusplus
extern "C" {
#endif

/* Raster colour-space codes: the family plus 0x10 when the first channel is alpha. */
enum {
  kDWRasterGray = 0x00,
  kDWRasterRGB = 0x01,
  kDWRasterCMYK = 0x02,
  kDWRasterSpot = 0x04,      /* one spot channel */
  kDWRasterNChannel = 0x05,  /* process parts plus spot channels */
  kDWRasterAlpha = 0x10
};

/* Raster flags. */
enum {
  kDWRasterMaskFlag = 0x2,   /* 1-bit raster whose white pixels are transparent */
  kDWRasterSpotFlag = 0x8    /* one-channel raster painted with the art's fill colour */
};

typedef struct DWRasterRecord {
  uint16_t flags;
  DWIntRect bounds;        /* left, top, right, bottom in pixels; rows grow downward */
  int32_t byteWidth;       /* bytes per stored row */
  int16_t colorSpace;      /* raster colour-space code */
  int16_t bitsPerPixel;    /* 1, or 8 per channel */
  int16_t originalColorSpace;
} DWRasterRecord;

/* Memory that a tile read or write copies from or to. */
typedef struct DWTile {
  void* data;
  DWSlice bounds;
  int32_t rowBytes;
  int32_t colBytes;        /* bytes per pixel */
  int32_t planeBytes;      /* 0: interleaved */
  uint16_t channelInterleave[32];
} DWTile;

#ifdef __cplusplus
}
#endif

#endif
