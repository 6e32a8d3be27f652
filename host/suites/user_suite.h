/* Talking to the user: alerts, progress, number formatting. */
#ifndef DW_USER_SUITE_H
#define DW_USER_SUITE_H
#include "../types.h"
#ifdef __cplusplus
extern "C" {
#endif
#define kDWUserSuite "DW User Suite"
#define kDWUserSuiteVersion 12

typedef struct DWUserSuite {
  void (*ErrorAlert)(DWUnicodeString message);
  void (*WarningAlert)(DWUnicodeString message);
  /* Returns non-zero when the user chooses to go on. */
  int32_t (*QuestionAlert)(DWUnicodeString message, int32_t defaultOk, int32_t reserved);
  DWErr (*SetProgressText)(DWUnicodeString text);
  void (*UpdateProgress)(int32_t current, int32_t total);
  /* Non-zero once the user has asked to stop. */
  DWBool (*Cancelled)(void);
  void (*CloseProgress)(void);
  DWErr (*FormatNumber)(double value, int32_t decimalPlaces, DWUnicodeString* text);
} DWUserSuite;
#ifdef __cplusplus
}
#endif
#endif
