// "DW Unicode String Suite": host string objects; localisable strings resolve through the host's
// table, falling back to the text after the first "=".
#include <algorithm>
#include <cstring>

#include "host/suites/unicode_string_suite.h"
#include "refhost/loader/HostCall.h"
#include "refhost/loader/SuiteProviders.h"

namespace refhost {
namespace {

bool knownEncoding(int32_t encoding) { return encoding == kDWPlatformEncoding || encoding == kDWUTF8Encoding; }

DWErr NewFromLocalizable(const char* key, DWUnicodeString* string) {
  REFHOST_CALL(kDWUnicodeStringSuite, "NewFromLocalizable");
  if (!key || !string) return kHostBadParameter;
  return guarded([&] {
    HostStrings& strings = Host::current().strings();
    *string = strings.create(strings.localize(key));
    return kDWNoErr;
  });
}

DWErr NewFromBytes(const char* bytes, int32_t length, int32_t encoding, DWUnicodeString* string) {
  REFHOST_CALL(kDWUnicodeStringSuite, "NewFromBytes");
  if (!string || length < 0 || (length > 0 && !bytes) || !knownEncoding(encoding)) return kHostBadParameter;
  return guarded([&] {
    *string = Host::current().strings().create(std::string(bytes ? bytes : "", size_t(length)));
    return kDWNoErr;
  });
}

DWErr Copy(DWUnicodeString source, DWUnicodeString* copy) {
  REFHOST_CALL(kDWUnicodeStringSuite, "Copy");
  HostStrings& strings = Host::current().strings();
  const std::string* text = strings.text(source);
  if (!text || !copy) return kHostBadParameter;
  return guarded([&] {
    *copy = strings.create(*text);
    return kDWNoErr;
  });
}

DWBool IsEmpty(DWUnicodeString string) {
  const std::string* text = Host::current().strings().text(string);
  return !text || text->empty();
}

DWErr GetBytes(DWUnicodeString string, int32_t encoding, char* buffer, int32_t capacity, int32_t* length) {
  REFHOST_CALL(kDWUnicodeStringSuite, "GetBytes");
  const std::string* text = Host::current().strings().text(string);
  if (!text || !length || capacity < 0 || !knownEncoding(encoding)) return kHostBadParameter;
  *length = int32_t(text->size());
  if (buffer) std::memcpy(buffer, text->data(), std::min(text->size(), size_t(capacity)));
  return kDWNoErr;
}

void Dispose(DWUnicodeString string) {
  if (Host* host = Host::currentOrNull()) host->strings().dispose(string);
}

const DWUnicodeStringSuite kSuite = {NewFromLocalizable, NewFromBytes, Copy, IsEmpty, GetBytes, Dispose};
REFHOST_REGISTER_SUITE(kDWUnicodeStringSuite, kDWUnicodeStringSuiteVersion, kSuite);

}  // namespace
}  // namespace refhost
