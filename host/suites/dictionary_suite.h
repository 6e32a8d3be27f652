/* Typed dictionaries: the document's dictionary, live-effect parameters. */
#ifndef DW_DICTIONARY_SUITE_H
#define DW_DICTIONARY_SUITE_H
#include "../types.h"
#ifdef __cplusplus
extern "C" {
#endif
#define kDWDictionarySuite "DW Dictionary Suite"
#define kDWDictionarySuiteVersion 8

typedef struct DWDictionarySuite {
  /* Keys are interned: the same string always gives the same key. */
  DWDictKey (*MakeKey)(const char* name);
  DWBool (*IsValid)(DWDictionaryRef dictionary);
  DWBool (*IsKnown)(DWDictionaryRef dictionary, DWDictKey key);
  DWErr (*GetInteger)(DWDictionaryRef dictionary, DWDictKey key, int32_t* value);
  DWErr (*SetInteger)(DWDictionaryRef dictionary, DWDictKey key, int32_t value);
  DWErr (*GetBoolean)(DWDictionaryRef dictionary, DWDictKey key, DWBool* value);
  DWErr (*SetBoolean)(DWDictionaryRef dictionary, DWDictKey key, DWBool value);
  DWErr (*GetReal)(DWDictionaryRef dictionary, DWDictKey key, double* value);
  DWErr (*SetReal)(DWDictionaryRef dictionary, DWDictKey key, double value);
  /* The entry's reference is counted: release it. */
  DWErr (*GetDictEntry)(DWDictionaryRef dictionary, DWDictKey key, DWDictionaryRef* entry);
  DWErr (*SetDictEntry)(DWDictionaryRef dictionary, DWDictKey key, DWDictionaryRef entry);
  DWErr (*CreateDictionary)(DWDictionaryRef* dictionary);
  DWErr (*Release)(DWDictionaryRef dictionary);
} DWDictionarySuite;
#ifdef __cplusplus
}
#endif
#endif
