/* Visiting the colours that art uses. */
#ifndef DW_FO_CONVERSION_SUITE_H
#define DW_FO_CONVERSION_SUITE_H
#include "../types.h"
#include "../paint.h"
#ifdef __cplusplus
extern "C" {
#endif
#define kDWFOConversionSuite "DW FO Conversion Suite"
#define kDWFOConversionSuiteVersion 3

/* Kinds of colour use reported to the visitor. */
enum {
  kDWUsesGray = 1,         /* values[0]: non-zero when a gray ink amount is used */
  kDWUsesFullProcess = 2,  /* values[0]: non-zero when every process channel is needed */
  kDWUsesProcessInks = 3,  /* values[0..3]: the CMYK ink amounts a colour uses */
  kDWUsesRaster = 4,       /* values[0]: non-zero when image pixels are used */
  kDWUsesSpot = 8          /* spot: the custom colour */
};

typedef struct DWColorUse {
  double values[4];
  DWCustomColorHandle spot;
} DWColorUse;

typedef void (*DWColorVisitProc)(int32_t kind, const DWColorUse* use, void* context);

typedef struct DWFOConversionSuite {
  /* Calls visit for every colour the art and its contents use. */
  DWErr (*VisitColors)(DWArtHandle art, DWColorVisitProc visit, void* context);
} DWFOConversionSuite;
#ifdef __cplusplus
}
#endif
#endif
