/* Every command runs in an undo transaction. */
#ifndef DW_UNDO_SUITE_H
#define DW_UNDO_SUITE_H
#include "../types.h"
#ifdef __cplusplus
extern "C" {
#endif
#define kDWUndoSuite "DW Undo Suite"
#define kDWUndoSuiteVersion 7

typedef struct DWUndoSuite {
  DWErr (*SetUndoText)(DWUnicodeString undoText, DWUnicodeString redoText);
  /* Reverts every change the current command has made so far. */
  DWErr (*UndoChanges)(void);
} DWUndoSuite;
#ifdef __cplusplus
}
#endif
#endif
