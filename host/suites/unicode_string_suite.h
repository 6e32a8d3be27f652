/* Host strings. A localisable string "$$$/key/path=Default text" is looked up by its key;
   without a translation the text after the first "=" is used. */
#ifndef DW_UNICODE_STRING_SUITE_H
#define DW_UNICODE_STRING_SUITE_H
#include "../types.h"
#ifdef __cplusplus
extern "C" {
#endif
#define kDWUnicodeStringSuite "DW Unicode String Suite"
#define kDWUnicodeStringSuiteVersion 8

/* Encodings: 0 is the platform encoding (UTF-8 on this host). */
enum { kDWPlatformEncoding = 0, kDWUTF8Encoding = 1 };

typedef struct DWUnicodeStringSuite {
  DWErr (*NewFromLocalizable)(const char* key, DWUnicodeString* string);
  DWErr (*NewFromBytes)(const char* bytes, int32_t length, int32_t encoding, DWUnicodeString* string);
  DWErr (*Copy)(DWUnicodeString source, DWUnicodeString* copy);
  DWBool (*IsEmpty)(DWUnicodeString string);
  /* Writes at most capacity bytes (no terminator) and the full length to *length;
     a null buffer asks only for the length. */
  DWErr (*GetBytes)(DWUnicodeString string, int32_t encoding, char* buffer, int32_t capacity, int32_t* length);
  void (*Dispose)(DWUnicodeString string);
} DWUnicodeStringSuite;
#ifdef __cplusplus
}
#endif
#endif
