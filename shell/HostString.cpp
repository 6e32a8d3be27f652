#include "shell/HostString.h"

#include <utility>

#include "shell/Error.h"
#include "shell/ErrorCodes.h"
#include "shell/HostSuites.h"

namespace dw {

namespace {
const DWUnicodeStringSuite& strings() {
  if (!gSuites.unicodeString) throw Error(SuiteMissingError);
  return *gSuites.unicodeString;
}
}  // namespace

HostString::HostString(const char* localisable) { check(strings().NewFromLocalizable(localisable, &_handle)); }

HostString::HostString(const char* bytes, int32_t length, int32_t encoding) {
  check(strings().NewFromBytes(bytes, length, encoding, &_handle));
}

HostString::HostString(const HostString& other) {
  if (other._handle) check(strings().Copy(other._handle, &_handle));
}

HostString& HostString::operator=(const HostString& other) {
  if (this != &other) {
    DWUnicodeString copy = nullptr;
    if (other._handle) check(strings().Copy(other._handle, &copy));
    dispose();
    _handle = copy;
  }
  return *this;
}

HostString::HostString(HostString&& other) noexcept : _handle(std::exchange(other._handle, nullptr)) {}

HostString& HostString::operator=(HostString&& other) noexcept {
  if (this != &other) {
    dispose();
    _handle = std::exchange(other._handle, nullptr);
  }
  return *this;
}

HostString::~HostString() { dispose(); }

void HostString::dispose() noexcept {
  if (_handle && gSuites.unicodeString) gSuites.unicodeString->Dispose(_handle);
  _handle = nullptr;
}

bool HostString::empty() const { return !_handle || strings().IsEmpty(_handle); }

std::string HostString::bytes(int32_t encoding) const {
  if (!_handle) return {};
  int32_t length = 0;
  check(strings().GetBytes(_handle, encoding, nullptr, 0, &length));
  std::string text(size_t(length), '\0');
  if (length > 0) check(strings().GetBytes(_handle, encoding, &text[0], length, &length));
  text.resize(size_t(length));
  return text;
}

}  // namespace dw
