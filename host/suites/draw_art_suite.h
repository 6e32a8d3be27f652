/* Drawing art into a port. */
#ifndef DW_DRAW_ART_SUITE_H
#define DW_DRAW_ART_SUITE_H
#include "../types.h"
#ifdef __cplusplus
extern "C" {
#endif
#define kDWDrawArtSuite "DW Draw Art Suite"
#define kDWDrawArtSuiteVersion 11

enum {
  kDWDrawFlagsDefault = 0x0000000B,
  kDWDrawGroupBlend = 0x00100000
};
enum { kDWDrawToPort = 2 };

typedef struct DWDrawRecord {
  uint16_t version;         /* 1 */
  uint32_t flags;
  uint32_t output;          /* kDWDrawToPort */
  DWRealPoint origin;       /* the document point drawn at the port's (0, 0) */
  DWRealMatrix matrix;      /* document points to port pixels (uniform scale) */
  DWArtHandle art;
  DWRealRect destination;   /* 0: the whole port */
  int32_t reserved1;
  double reserved2;         /* -1 */
  int32_t reserved3[2];
  DWPort port;
  DWIntRect device;         /* the part of the port drawn to */
  int32_t reserved4[4];
} DWDrawRecord;

typedef struct DWDrawArtSuite {
  /* options: the value of the caller's option word handed to the renderer. */
  DWErr (*DrawArt)(DWDrawRecord* record, const int32_t* options);
  /* Ends the drawing session that BeginDrawing started on the record's port. */
  DWErr (*FinishDrawing)(DWDrawRecord* record, int32_t* options);
} DWDrawArtSuite;
#ifdef __cplusplus
}
#endif
#endif
