/* Text frames. */
#ifndef DW_TEXT_FRAME_SUITE_H
#define DW_TEXT_FRAME_SUITE_H
#include "../types.h"
#ifdef __cplusplus
extern "C" {
#endif
#define kDWTextFrameSuite "DW Text Frame Suite"
#define kDWTextFrameSuiteVersion 4

typedef struct DWTextFrameSuite {
  /* Copies up to capacity bytes of UTF-8 text with a terminator; *length gets the full length. */
  DWErr (*GetText)(DWArtHandle frame, char* buffer, int32_t capacity, int32_t* length);
} DWTextFrameSuite;
#ifdef __cplusplus
}
#endif
#endif
