/* Facts about the running host. */
#ifndef DW_RUNTIME_SUITE_H
#define DW_RUNTIME_SUITE_H
#include "../types.h"
#ifdef __cplusplus
extern "C" {
#endif
#define kDWRuntimeSuite "DW Runtime Suite"
#define kDWRuntimeSuiteVersion 12

typedef struct DWRuntimeSuite {
  /* Non-zero when the host runs with a user interface (menus, actions, dialogs). */
  DWBool (*IsInteractive)(void);
  /* Bytes of memory the host is willing to give a plug-in's working buffers. */
  uint32_t (*GetMemoryFigure)(void);
} DWRuntimeSuite;
#ifdef __cplusplus
}
#endif
#endif
