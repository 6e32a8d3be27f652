/* Types shared by the host and every plug-in: error codes, handles, geometry. Plain C. */
#ifndef DW_HOST_TYPES_H
#define DW_HOST_TYPES_H

#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

/* 0 is success; anything else is a four-character code, first character in the high byte. */
typedef int32_t DWErr;
#define kDWNoErr 0

typedef int32_t DWBool;

/* Opaque handles: the host owns what they point at. */
typedef struct DWPluginOpaque* DWPluginRef;
typedef struct DWArtOpaque* DWArtHandle;
typedef struct DWArtSetOpaque* DWArtSetHandle;
typedef struct DWLayerOpaque* DWLayerHandle;
typedef struct DWLayerListOpaque* DWLayerListHandle;
typedef struct DWDictionaryOpaque* DWDictionaryRef;
typedef struct DWDictKeyOpaque* DWDictKey;
typedef struct DWArtStyleOpaque* DWArtStyleHandle;
typedef struct DWStyleParserOpaque* DWStyleParser;
typedef struct DWCustomColorOpaque* DWCustomColorHandle;
typedef struct DWGradientOpaque* DWGradientHandle;
typedef struct DWPatternOpaque* DWPatternHandle;
typedef struct DWColorSpaceOpaque* DWColorSpaceHandle;
typedef struct DWColorSpaceListOpaque* DWColorSpaceList;
typedef struct DWUnicodeStringOpaque* DWUnicodeString;
typedef struct DWMenuItemOpaque* DWMenuItemHandle;
typedef struct DWMenuGroupOpaque* DWMenuGroupHandle;
typedef struct DWNotifierOpaque* DWNotifierHandle;
typedef struct DWLiveEffectOpaque* DWLiveEffectHandle;
typedef struct DWLiveEffectContextOpaque* DWLiveEffectParamContext;
typedef struct DWSuiteRefOpaque* DWSuiteRef;
typedef struct DWActionParamDescOpaque* DWActionParamDesc;
typedef struct DWActionParamBlockOpaque* DWActionParamBlock;
typedef struct DWLogOpaque* DWLogHandle;
typedef struct DWClockOpaque* DWClockRef;
typedef struct DWArtboardListOpaque* DWArtboardList;
typedef struct DWArtboardPropsOpaque* DWArtboardProperties;
typedef struct DWPortOpaque* DWPort;
typedef struct DWPortColorSpaceOpaque* DWPortColorSpace;
typedef struct DWGraphicsObjectOpaque* DWGraphicsObject;
typedef struct DWUsageEventOpaque* DWUsageEvent;
typedef struct DWPluginGroupEditOpaque* DWPluginGroupHandle;

typedef struct DWRealPoint { double h, v; } DWRealPoint;
/* Document rectangles: points, y grows upward, so top >= bottom for a non-empty one. */
typedef struct DWRealRect { double left, top, right, bottom; } DWRealRect;
/* Row-vector convention: a point p maps to (a*h + c*v + tx, b*h + d*v + ty). */
typedef struct DWRealMatrix { double a, b, c, d, tx, ty; } DWRealMatrix;
typedef struct DWIntRect { int32_t left, top, right, bottom; } DWIntRect;
/* Rows top..bottom-1, columns left..right-1, bytes front..back-1 of each pixel. */
typedef struct DWSlice { int32_t top, left, bottom, right, front, back; } DWSlice;
typedef int64_t DWTimeStamp;

/* Art kinds reported by the art suite. */
enum {
  kDWUnknownArt = 0,
  kDWGroupArt = 1,
  kDWPathArt = 2,
  kDWCompoundPathArt = 3,
  kDWPlacedArt = 7,
  kDWRasterArt = 9,
  kDWPluginGroupArt = 10,
  kDWMeshArt = 11,
  kDWTextFrameArt = 12,
  kDWSymbolArt = 13
};

/* Where new or moved art goes relative to a reference object (the prep art). */
enum {
  kDWPlaceAbove = 1,
  kDWPlaceBelow = 2,
  kDWPlaceInsideOnTop = 3,
  kDWPlaceInsideOnBottom = 4,
  kDWPlaceAboveAll = 5,
  kDWPlaceBelowAll = 6
};

/* Attribute bits of an art object. */
enum {
  kDWArtSelected = 0x1,
  kDWArtHidden = 0x4,
  kDWArtFullySelected = 0x8
};

/* Document colour modes. */
enum { kDWGrayColorMode = 0, kDWRGBColorMode = 1, kDWCMYKColorMode = 2 };

#ifdef __cplusplus
}
#endif

#endif
