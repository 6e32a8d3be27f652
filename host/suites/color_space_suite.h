/* Colour spaces of rasters and ports. */
#ifndef DW_COLOR_SPACE_SUITE_H
#define DW_COLOR_SPACE_SUITE_H
#include "../types.h"
#ifdef __cplusplus
extern "C" {
#endif
#define kDWColorSpaceSuite "DW Color Space Suite"
#define kDWColorSpaceSuiteVersion 7

/* Families. */
enum {
  kDWGrayFamily = 0,
  kDWRGBFamily = 1,
  kDWCMYKFamily = 2,
  kDWSpotFamily = 4,
  kDWNChannelFamily = 5
};

typedef struct DWColorSpaceSuite {
  DWErr (*NewProcessColorSpace)(int32_t family, DWBool alpha, DWColorSpaceHandle* space);
  DWErr (*NewSpotColorSpace)(DWCustomColorHandle spot, DWBool alpha, DWColorSpaceHandle* space);
  /* One CMYK component (0 cyan .. 3 black) as a one-channel space. */
  DWErr (*NewProcessComponentColorSpace)(int32_t component, DWColorSpaceHandle* space);
  DWErr (*NewColorSpaceList)(DWColorSpaceList* list);
  /* The list keeps its own reference to the part. */
  DWErr (*AddToList)(DWColorSpaceList list, DWColorSpaceHandle part);
  DWErr (*NewColorSpaceFromList)(DWColorSpaceList list, DWBool alpha, DWColorSpaceHandle* space);
  DWErr (*DisposeList)(DWColorSpaceList list);
  /* All channels, alpha included. */
  DWErr (*CountChannels)(DWColorSpaceHandle space, int32_t* count);
  DWErr (*CountProcessChannels)(DWColorSpaceHandle space, int32_t* count);
  /* Parts of a space built from a list, in list order; a plain space is its own part 0.
     The part is borrowed from the space: do not release it. */
  DWErr (*GetNthPart)(DWColorSpaceHandle space, int32_t index, DWColorSpaceHandle* part);
  DWErr (*GetFamily)(DWColorSpaceHandle space, int32_t* family);
  DWErr (*Release)(DWColorSpaceHandle space);
} DWColorSpaceSuite;
#ifdef __cplusplus
}
#endif
#endif
