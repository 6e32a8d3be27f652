// "DW Dictionary Suite": typed entries of the document's dictionary, of its nested dictionaries and
// of live-effect parameters. Reading an absent key answers 'HNFD', a key of another type 'HTYP'.
#include <string>

#include "host/suites/dictionary_suite.h"
#include "refhost/loader/HostCall.h"
#include "refhost/loader/SuiteProviders.h"
#include "refhost/suites/DictionaryRefs.h"

namespace refhost {
namespace {

// The dictionary and key name behind the handles, or an error.
struct Target {
  DictionaryPtr dictionary;
  const std::string* key = nullptr;
};

DWErr target(DWDictionaryRef dictionary, DWDictKey key, Target& out) {
  out.dictionary = dictionaryOf(dictionary);
  out.key = keyName(key);
  return out.dictionary && out.key ? kDWNoErr : kHostBadParameter;
}

template <typename Stored, typename Out>
DWErr getValue(DWDictionaryRef dictionary, DWDictKey key, Out* value) {
  Target t;
  if (const DWErr e = target(dictionary, key, t)) return e;
  if (!value) return kHostBadParameter;
  const Dictionary::Value* stored = t.dictionary->find(*t.key);
  if (!stored) return kHostNotFound;
  const Stored* typed = std::get_if<Stored>(stored);
  if (!typed) return kHostWrongType;
  *value = Out(*typed);
  return kDWNoErr;
}

template <typename Stored>
DWErr setValue(DWDictionaryRef dictionary, DWDictKey key, Stored value) {
  Target t;
  if (const DWErr e = target(dictionary, key, t)) return e;
  return guarded([&] {
    t.dictionary->set(*t.key, Dictionary::Value(value));
    return kDWNoErr;
  });
}

// Whether `inner` is `outer` or lies anywhere inside it: storing such an entry would make a cycle.
bool contains(const Dictionary& inner, const DictionaryPtr& outer) {
  if (outer.get() == &inner) return true;
  for (const auto& entry : inner.entries())
    if (const DictionaryPtr* nested = std::get_if<DictionaryPtr>(&entry.second))
      if (*nested && contains(**nested, outer)) return true;
  return false;
}

DWDictKey MakeKey(const char* name) { return internKey(name); }

DWBool IsValid(DWDictionaryRef dictionary) { return dictionaryOf(dictionary) ? 1 : 0; }

DWBool IsKnown(DWDictionaryRef dictionary, DWDictKey key) {
  const DictionaryPtr d = dictionaryOf(dictionary);
  const std::string* name = keyName(key);
  return d && name && d->contains(*name) ? 1 : 0;
}

DWErr GetInteger(DWDictionaryRef dictionary, DWDictKey key, int32_t* value) {
  REFHOST_CALL(kDWDictionarySuite, "GetInteger");
  return getValue<int32_t>(dictionary, key, value);
}

DWErr SetInteger(DWDictionaryRef dictionary, DWDictKey key, int32_t value) {
  REFHOST_CALL(kDWDictionarySuite, "SetInteger");
  return setValue<int32_t>(dictionary, key, value);
}

DWErr GetBoolean(DWDictionaryRef dictionary, DWDictKey key, DWBool* value) {
  REFHOST_CALL(kDWDictionarySuite, "GetBoolean");
  return getValue<bool>(dictionary, key, value);
}

DWErr SetBoolean(DWDictionaryRef dictionary, DWDictKey key, DWBool value) {
  REFHOST_CALL(kDWDictionarySuite, "SetBoolean");
  return setValue<bool>(dictionary, key, value != 0);
}

DWErr GetReal(DWDictionaryRef dictionary, DWDictKey key, double* value) {
  REFHOST_CALL(kDWDictionarySuite, "GetReal");
  return getValue<double>(dictionary, key, value);
}

DWErr SetReal(DWDictionaryRef dictionary, DWDictKey key, double value) {
  REFHOST_CALL(kDWDictionarySuite, "SetReal");
  return setValue<double>(dictionary, key, value);
}

DWErr GetDictEntry(DWDictionaryRef dictionary, DWDictKey key, DWDictionaryRef* entry) {
  REFHOST_CALL(kDWDictionarySuite, "GetDictEntry");
  Target t;
  if (const DWErr e = target(dictionary, key, t)) return e;
  if (!entry) return kHostBadParameter;
  const Dictionary::Value* stored = t.dictionary->find(*t.key);
  if (!stored) return kHostNotFound;
  const DictionaryPtr* nested = std::get_if<DictionaryPtr>(stored);
  if (!nested || !*nested) return kHostWrongType;
  return guarded([&] {
    *entry = retainDictionary(*nested);
    return kDWNoErr;
  });
}

// The entry is stored by reference: later changes through its handle show in the dictionary.
DWErr SetDictEntry(DWDictionaryRef dictionary, DWDictKey key, DWDictionaryRef entry) {
  REFHOST_CALL(kDWDictionarySuite, "SetDictEntry");
  Target t;
  if (const DWErr e = target(dictionary, key, t)) return e;
  const DictionaryPtr nested = dictionaryOf(entry);
  if (!nested || contains(*nested, t.dictionary)) return kHostBadParameter;
  return guarded([&] {
    t.dictionary->setDictionary(*t.key, nested);
    return kDWNoErr;
  });
}

DWErr CreateDictionary(DWDictionaryRef* dictionary) {
  REFHOST_CALL(kDWDictionarySuite, "CreateDictionary");
  if (!dictionary) return kHostBadParameter;
  return guarded([&] {
    *dictionary = retainDictionary(Dictionary::create());
    return kDWNoErr;
  });
}

DWErr Release(DWDictionaryRef dictionary) {
  REFHOST_CALL(kDWDictionarySuite, "Release");
  return releaseDictionary(dictionary) ? kDWNoErr : kHostBadParameter;
}

const DWDictionarySuite kSuite = {MakeKey,    IsValid, IsKnown,      GetInteger,   SetInteger,
                                  GetBoolean, SetBoolean, GetReal,   SetReal,      GetDictEntry,
                                  SetDictEntry, CreateDictionary, Release};
REFHOST_REGISTER_SUITE(kDWDictionarySuite, kDWDictionarySuiteVersion, kSuite);

}  // namespace
}  // namespace refhost
