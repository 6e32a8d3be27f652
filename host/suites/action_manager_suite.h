/* Actions (macros): event registration, recording and typed parameter blocks. */
#ifndef DW_ACTION_MANAGER_SUITE_H
#define DW_ACTION_MANAGER_SUITE_H
#include "../types.h"
#ifdef __cplusplus
extern "C" {
#endif
#define kDWActionManagerSuite "DW Action Manager Suite"
#define kDWActionManagerSuiteVersion 5

typedef struct DWActionManagerSuite {
  DWErr (*NewParamDescription)(DWActionParamDesc* description);
  DWErr (*DisposeParamDescription)(DWActionParamDesc description);
  DWErr (*AddParamKey)(DWActionParamDesc description, uint32_t key, const char* label, uint32_t typeCode, DWBool flag);
  DWErr (*RegisterEvent)(const char* eventName, const char* title, int32_t version, int32_t reserved1,
                         int32_t reserved2, DWPluginRef plugin, int32_t eventValue, DWActionParamDesc description);
  DWErr (*IsRecording)(DWBool* recording);
  DWErr (*NewParamBlock)(DWActionParamBlock* block);
  DWErr (*DisposeParamBlock)(DWActionParamBlock block);
  DWErr (*SetEnumerated)(DWActionParamBlock block, uint32_t key, const char* name, int32_t value);
  DWErr (*SetInteger)(DWActionParamBlock block, uint32_t key, int32_t value);
  DWErr (*SetBoolean)(DWActionParamBlock block, uint32_t key, DWBool value);
  DWErr (*SetUnitReal)(DWActionParamBlock block, uint32_t key, uint32_t unit, double value);
  DWErr (*RecordEvent)(const char* eventName, int32_t dialogState, DWActionParamBlock block);
  /* name may be null; otherwise up to capacity bytes including the terminator are written. */
  DWErr (*GetEnumerated)(DWActionParamBlock block, uint32_t key, char* name, int32_t capacity, int32_t* value);
  DWErr (*GetInteger)(DWActionParamBlock block, uint32_t key, int32_t* value);
  DWErr (*GetBoolean)(DWActionParamBlock block, uint32_t key, DWBool* value);
  DWErr (*GetUnitReal)(DWActionParamBlock block, uint32_t key, uint32_t* unit, double* value);
} DWActionManagerSuite;
#ifdef __cplusplus
}
#endif
#endif
