#pragma once
#include <cstdint>

#include "host/types.h"

namespace dw {

// Owns one counted dictionary reference and releases it on every path.
class DictionaryRef {
 public:
  DictionaryRef() noexcept = default;
  explicit DictionaryRef(DWDictionaryRef ref) noexcept : _ref(ref) {}
  DictionaryRef(const DictionaryRef&) = delete;
  DictionaryRef& operator=(const DictionaryRef&) = delete;
  DictionaryRef(DictionaryRef&& other) noexcept;
  DictionaryRef& operator=(DictionaryRef&& other) noexcept;
  ~DictionaryRef();

  DWDictionaryRef get() const noexcept { return _ref; }
  explicit operator bool() const noexcept { return _ref != nullptr; }

 private:
  void release() noexcept;
  DWDictionaryRef _ref = nullptr;
};

// Typed entries of a host dictionary. A read answers true only when the dictionary exists, holds
// the key and the host gave the value; otherwise the value is left as it was.
bool hasEntry(DWDictionaryRef dictionary, const char* key);
bool readInteger(DWDictionaryRef dictionary, const char* key, int32_t& value);
bool readBoolean(DWDictionaryRef dictionary, const char* key, bool& value);
bool readReal(DWDictionaryRef dictionary, const char* key, double& value);

// Writes answer the host's code; a missing dictionary is handed to the host as it is.
DWErr writeInteger(DWDictionaryRef dictionary, const char* key, int32_t value);
DWErr writeBoolean(DWDictionaryRef dictionary, const char* key, bool value);
DWErr writeReal(DWDictionaryRef dictionary, const char* key, double value);

// Application preferences under the settings' prefix. A read leaves the value as it was when the
// preference is absent or the host refuses.
void readPreference(const char* key, int32_t& value);
void readPreference(const char* key, bool& value);
void readPreference(const char* key, double& value);
DWErr writePreference(const char* key, int32_t value);
DWErr writePreference(const char* key, bool value);
DWErr writePreference(const char* key, double value);

}  // namespace dw
