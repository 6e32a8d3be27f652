/* Optional accelerated pixel routines. */
#ifndef DW_HV_EXTENSION_SUITE_H
#define DW_HV_EXTENSION_SUITE_H
#include "../types.h"
#ifdef __cplusplus
extern "C" {
#endif
#define kDWHVExtensionSuite "DW HVExtension Suite"
#define kDWHVExtensionSuiteVersion 1

typedef struct DWImageDescriptor {
  uint8_t* base;       /* first byte of the channel to process */
  int32_t rows;
  int32_t rowBytes;
  int32_t columns;
  int32_t pixelBytes;  /* distance between pixels */
} DWImageDescriptor;

typedef struct DWHVExtensionSuite {
  DWBool (*IsEnabled)(void);
  void (*FillBytes)(uint8_t* buffer, int32_t rows, int32_t rowBytes, int32_t fillBytes, uint8_t value);
  void (*FillPixels32)(uint8_t* buffer, int32_t count, uint8_t b0, uint8_t b1, uint8_t b2, uint8_t b3);
  /* Box-filter reductions by factor f. The two pixel routines answer non-zero when they
     cannot handle the layout; the caller then reduces channel by channel. */
  DWErr (*ReducePixels)(const DWImageDescriptor* source, const DWImageDescriptor* destination, int32_t f);
  DWErr (*ReducePixelsWithAlpha)(const DWImageDescriptor* source, const DWImageDescriptor* alpha,
                                 const DWImageDescriptor* destination, int32_t f);
  DWErr (*ReduceChannel)(const DWImageDescriptor* source, const DWImageDescriptor* destination, int32_t f);
  DWErr (*ReduceChannelWeighted)(const DWImageDescriptor* source, const DWImageDescriptor* alpha,
                                 const DWImageDescriptor* destination, int32_t f);
} DWHVExtensionSuite;
#ifdef __cplusplus
}
#endif
#endif
