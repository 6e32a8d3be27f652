#pragma once
#include <string>
#include "host/suites/unicode_string_suite.h"

namespace dw {

// Owns one host string handle (null is the empty string). Every user-visible text passes
// through one. Failures of the host's string calls throw dw::Error with the host's code.
class HostString {
 public:
  HostString() noexcept = default;
  // From a localisable string "$$$/key=Default text".
  explicit HostString(const char* localisable);
  HostString(const char* bytes, int32_t length, int32_t encoding);
  HostString(const HostString& other);
  HostString& operator=(const HostString& other);
  HostString(HostString&& other) noexcept;
  HostString& operator=(HostString&& other) noexcept;
  ~HostString();

  bool empty() const;
  // The text as bytes in an encoding (the plug-in always asks for 0, the platform encoding).
  std::string bytes(int32_t encoding = kDWPlatformEncoding) const;
  DWUnicodeString handle() const { return _handle; }

 private:
  void dispose() noexcept;
  DWUnicodeString _handle = nullptr;
};

}  // namespace dw
