/* The current document. */
#ifndef DW_DOCUMENT_SUITE_H
#define DW_DOCUMENT_SUITE_H
#include "../types.h"
#ifdef __cplusplus
extern "C" {
#endif
#define kDWDocumentSuite "DW Document Suite"
#define kDWDocumentSuiteVersion 16

typedef struct DWDocumentSuite {
  /* The reference is counted: release it through the dictionary suite. */
  DWErr (*GetDictionary)(DWDictionaryRef* dictionary);
  DWErr (*GetColorMode)(int16_t* mode);
  /* The version level of the document's format; newer documents have higher numbers. */
  DWErr (*GetLevelNumber)(int32_t* level);
} DWDocumentSuite;
#ifdef __cplusplus
}
#endif
#endif
