#pragma once
#include <cstdint>

#include "host/types.h"
#include "settings/HostDictionary.h"

namespace dw {

// A colour mode that follows nothing: followDocumentColorMode leaves every type as it is.
constexpr int32_t kUnknownColorMode = -1;

// The current document's colour mode, or the host's error.
DWErr getDocumentColorMode(int32_t& mode);
// The colour mode when the host reports one, kUnknownColorMode otherwise.
int32_t documentColorModeOrUnknown();
// True when the host reports a document level of at least the given number.
bool documentLevelAtLeast(int32_t level);

// The document's dictionary (empty when the document has none or the host refuses).
DictionaryRef documentDictionary();
// A dictionary entry of a dictionary (empty when absent).
DictionaryRef dictionaryEntry(DWDictionaryRef dictionary, const char* key);

}  // namespace dw
