#include "settings/HostDictionary.h"

#include <utility>

#include "shell/ErrorCodes.h"
#include "shell/HostSuites.h"
#include "settings/StoredKeys.h"

namespace dw {

DictionaryRef::DictionaryRef(DictionaryRef&& other) noexcept : _ref(std::exchange(other._ref, nullptr)) {}

DictionaryRef& DictionaryRef::operator=(DictionaryRef&& other) noexcept {
  if (this != &other) {
    release();
    _ref = std::exchange(other._ref, nullptr);
  }
  return *this;
}

DictionaryRef::~DictionaryRef() { release(); }

void DictionaryRef::release() noexcept {
  if (_ref && gSuites.dictionary) gSuites.dictionary->Release(_ref);
  _ref = nullptr;
}

namespace {

const DWDictionarySuite* dictionaries(DWDictionaryRef dictionary) {
  return dictionary ? gSuites.dictionary : nullptr;
}

}  // namespace

bool hasEntry(DWDictionaryRef dictionary, const char* key) {
  const DWDictionarySuite* suite = dictionaries(dictionary);
  return suite && suite->IsKnown(dictionary, suite->MakeKey(key));
}

bool readInteger(DWDictionaryRef dictionary, const char* key, int32_t& value) {
  if (!hasEntry(dictionary, key)) return false;
  int32_t read = 0;
  if (gSuites.dictionary->GetInteger(dictionary, gSuites.dictionary->MakeKey(key), &read) != kDWNoErr) return false;
  value = read;
  return true;
}

bool readBoolean(DWDictionaryRef dictionary, const char* key, bool& value) {
  if (!hasEntry(dictionary, key)) return false;
  DWBool read = 0;
  if (gSuites.dictionary->GetBoolean(dictionary, gSuites.dictionary->MakeKey(key), &read) != kDWNoErr) return false;
  value = read != 0;
  return true;
}

bool readReal(DWDictionaryRef dictionary, const char* key, double& value) {
  if (!hasEntry(dictionary, key)) return false;
  double read = 0.0;
  if (gSuites.dictionary->GetReal(dictionary, gSuites.dictionary->MakeKey(key), &read) != kDWNoErr) return false;
  value = read;
  return true;
}

DWErr writeInteger(DWDictionaryRef dictionary, const char* key, int32_t value) {
  if (!gSuites.dictionary) return SuiteMissingError;
  return gSuites.dictionary->SetInteger(dictionary, gSuites.dictionary->MakeKey(key), value);
}

DWErr writeBoolean(DWDictionaryRef dictionary, const char* key, bool value) {
  if (!gSuites.dictionary) return SuiteMissingError;
  return gSuites.dictionary->SetBoolean(dictionary, gSuites.dictionary->MakeKey(key), value ? 1 : 0);
}

DWErr writeReal(DWDictionaryRef dictionary, const char* key, double value) {
  if (!gSuites.dictionary) return SuiteMissingError;
  return gSuites.dictionary->SetReal(dictionary, gSuites.dictionary->MakeKey(key), value);
}

void readPreference(const char* key, int32_t& value) {
  if (!gSuites.preference) return;
  int32_t read = value;
  if (gSuites.preference->GetIntegerPreference(keys::PreferencePrefix, key, &read) == kDWNoErr) value = read;
}

void readPreference(const char* key, bool& value) {
  if (!gSuites.preference) return;
  DWBool read = value ? 1 : 0;
  if (gSuites.preference->GetBooleanPreference(keys::PreferencePrefix, key, &read) == kDWNoErr) value = read != 0;
}

void readPreference(const char* key, double& value) {
  if (!gSuites.preference) return;
  double read = value;
  if (gSuites.preference->GetRealPreference(keys::PreferencePrefix, key, &read) == kDWNoErr) value = read;
}

DWErr writePreference(const char* key, int32_t value) {
  if (!gSuites.preference) return SuiteMissingError;
  return gSuites.preference->SetIntegerPreference(keys::PreferencePrefix, key, value);
}

DWErr writePreference(const char* key, bool value) {
  if (!gSuites.preference) return SuiteMissingError;
  return gSuites.preference->SetBooleanPreference(keys::PreferencePrefix, key, value ? 1 : 0);
}

DWErr writePreference(const char* key, double value) {
  if (!gSuites.preference) return SuiteMissingError;
  return gSuites.preference->SetRealPreference(keys::PreferencePrefix, key, value);
}

}  // namespace dw
