#include "settings/DocumentQueries.h"

#include "shell/ErrorCodes.h"
#include "shell/HostSuites.h"

namespace dw {

DWErr getDocumentColorMode(int32_t& mode) {
  if (!gSuites.document) return SuiteMissingError;
  int16_t read = 0;
  const DWErr error = gSuites.document->GetColorMode(&read);
  if (error == kDWNoErr) mode = read;
  return error;
}

int32_t documentColorModeOrUnknown() {
  int32_t mode = kUnknownColorMode;
  return getDocumentColorMode(mode) == kDWNoErr ? mode : kUnknownColorMode;
}

bool documentLevelAtLeast(int32_t level) {
  if (!gSuites.document) return false;
  int32_t documentLevel = 0;
  return gSuites.document->GetLevelNumber(&documentLevel) == kDWNoErr && documentLevel >= level;
}

DictionaryRef documentDictionary() {
  DWDictionaryRef dictionary = nullptr;
  if (!gSuites.document || gSuites.document->GetDictionary(&dictionary) != kDWNoErr) return DictionaryRef();
  return DictionaryRef(dictionary);
}

DictionaryRef dictionaryEntry(DWDictionaryRef dictionary, const char* key) {
  if (!hasEntry(dictionary, key)) return DictionaryRef();
  DWDictionaryRef entry = nullptr;
  if (gSuites.dictionary->GetDictEntry(dictionary, gSuites.dictionary->MakeKey(key), &entry) != kDWNoErr)
    return DictionaryRef();
  return DictionaryRef(entry);
}

}  // namespace dw
