#pragma once
// The handles of "DW Dictionary Suite". Each dictionary has at most one handle, which counts the
// references taken to it: every hand-out (the document's dictionary, an entry, a new dictionary,
// a live effect's parameters in a message) adds one, Release takes one away, and at zero the
// handle is gone while the dictionary lives on wherever it is stored. Keys are interned names.
#include <cstdint>
#include <string>

#include "host/types.h"
#include "refhost/document/Dictionary.h"

namespace refhost {

// One more reference to the dictionary; its handle.
DWDictionaryRef retainDictionary(const DictionaryPtr& dictionary);
// The dictionary of a live handle, or null.
DictionaryPtr dictionaryOf(DWDictionaryRef handle);
// False for a handle that is not live.
bool releaseDictionary(DWDictionaryRef handle);
// References outstanding on a handle (0 when it is not live).
int64_t dictionaryReferences(DWDictionaryRef handle);

// The same name always gives the same key; null for a null name.
DWDictKey internKey(const char* name);
// The name of a key handed out by internKey, or null.
const std::string* keyName(DWDictKey key);

}  // namespace refhost
