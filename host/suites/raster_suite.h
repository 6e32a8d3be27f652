/* Raster art: its description, placement and pixels.
   The raster matrix maps pixel space to the document: pixel (x, y), rows growing downward,
   lands at matrix * (x, -y). So a scale of 1/s followed by a translation to (left, top)
   puts pixel (0, 0) at the top-left corner (left, top) with pixels 1/s points wide. */
#ifndef DW_RASTER_SUITE_H
#define DW_RASTER_SUITE_H
#include "../types.h"
#include "../raster.h"
#ifdef __cplusplus
extern "C" {
#endif
#define kDWRasterSuite "DW Raster Suite"
#define kDWRasterSuiteVersion 10

typedef struct DWRasterSuite {
  DWErr (*GetRasterRecord)(DWArtHandle raster, DWRasterRecord* record);
  /* Allocates the pixel storage (zeroed) for the record's bounds. */
  DWErr (*SetRasterRecord)(DWArtHandle raster, const DWRasterRecord* record);
  DWErr (*GetRasterMatrix)(DWArtHandle raster, DWRealMatrix* matrix);
  DWErr (*SetRasterMatrix)(DWArtHandle raster, const DWRealMatrix* matrix);
  /* The channel layout of an N-channel raster. */
  DWErr (*SetColorSpace)(DWArtHandle raster, DWColorSpaceHandle space);
  /* Marks a raster made from art that drew image pixels. */
  DWErr (*SetRasterUsageFlag)(DWArtHandle raster, DWBool flag);
  DWErr (*WriteRasterTile)(DWArtHandle raster, const DWSlice* rasterSlice, const DWTile* tile,
                           const DWSlice* tileSlice);
  DWErr (*ReadRasterTile)(DWArtHandle raster, const DWSlice* rasterSlice, DWTile* tile, const DWSlice* tileSlice);
} DWRasterSuite;
#ifdef __cplusplus
}
#endif
#endif
