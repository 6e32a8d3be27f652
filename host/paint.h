/* Paint, path style and path geometry records exchanged with the path and path-style suites. */
#ifndef DW_HOST_PAINT_H
#define DW_HOST_PAINT_H

#include "types.h"

#ifdef __cplusplus
extern "C" {
#endif

/* Colour kinds. The same numbers name the targets of a colour-space conversion. */
enum {
  kDWGrayColor = 0,
  kDWFourColor = 1,    /* CMYK */
  kDWPatternColor = 2,
  kDWCustomColor = 3,  /* a custom (spot or global process) colour with a tint */
  kDWGradientColor = 4,
  kDWThreeColor = 5,   /* RGB */
  kDWNoneColor = 6
};

typedef struct DWGrayColor { double gray; } DWGrayColor;          /* 0 white .. 1 black (ink) */
typedef struct DWFourColor { double cyan, magenta, yellow, black; } DWFourColor; /* 0..1 ink */
typedef struct DWThreeColor { double red, green, blue; } DWThreeColor;          /* 0..1 light */
typedef struct DWCustomColorRef {
  DWCustomColorHandle color;
  double tint;  /* 0 is the full colour, 1 is none of it */
} DWCustomColorRef;
typedef struct DWGradientRef {
  DWGradientHandle gradient;
  DWRealMatrix matrix;  /* gradient space to document */
} DWGradientRef;
typedef struct DWPatternRef { DWPatternHandle pattern; DWRealMatrix matrix; } DWPatternRef;

typedef struct DWColor {
  int16_t kind;
  union {
    DWGrayColor g;
    DWFourColor f;
    DWThreeColor rgb;
    DWCustomColorRef c;
    DWGradientRef grad;
    DWPatternRef pattern;
  } c;
} DWColor;

typedef struct DWFillStyle {
  DWColor color;
  DWBool overprint;
  double opacity;  /* 0..1 */
} DWFillStyle;

enum { kDWButtCap = 0, kDWRoundCap = 1, kDWProjectingCap = 2 };
enum { kDWMiterJoin = 0, kDWRoundJoin = 1, kDWBevelJoin = 2 };
#define kDWMaxDashes 16

typedef struct DWStrokeStyle {
  DWColor color;
  DWBool overprint;
  double opacity;
  double width;
  double dashOffset;
  int16_t dashCount;
  double dashes[kDWMaxDashes];
  int16_t cap;
  int16_t join;
  double miterLimit;
} DWStrokeStyle;

typedef struct DWPathStyle {
  DWBool fillPaint;    /* the two paint flags */
  DWBool strokePaint;
  DWFillStyle fill;
  DWStrokeStyle stroke;
  DWBool clip;         /* the path is a clipping path */
  DWBool evenodd;      /* fill rule: even-odd when set, non-zero otherwise */
  DWBool preUnion;     /* the shapes are united before a Pathfinder operation uses them */
} DWPathStyle;

/* One anchor of a cubic Bezier path: the point with its incoming and outgoing control points. */
typedef struct DWPathSegment {
  DWRealPoint p;
  DWRealPoint in;
  DWRealPoint out;
  DWBool corner;
} DWPathSegment;

#ifdef __cplusplus
}
#endif

#endif
