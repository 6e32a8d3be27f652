#pragma once
#include <cstdint>
#include <stdexcept>
#include <string>

#include "host/types.h"

namespace refhost {

// Four-character codes with the first character in the high byte, as on the boundary.
constexpr DWErr hostCode(const char (&text)[5]) {
  return DWErr((uint32_t(uint8_t(text[0])) << 24) | (uint32_t(uint8_t(text[1])) << 16) |
               (uint32_t(uint8_t(text[2])) << 8) | uint32_t(uint8_t(text[3])));
}

// The codes the reference host itself answers with.
constexpr DWErr kHostNotImplemented = hostCode("HNIM");  // a placeholder suite function
constexpr DWErr kHostSuiteNotFound = hostCode("HSNF");   // no suite of that name and version (or withheld)
constexpr DWErr kHostBadParameter = hostCode("HPRM");    // a null or unknown handle, a bad argument
constexpr DWErr kHostOutOfMemory = hostCode("HMEM");     // an allocation failed or hit the test cap
constexpr DWErr kHostNotFound = hostCode("HNFD");        // a key, group or name the host does not hold
constexpr DWErr kHostDuplicate = hostCode("HDUP");       // a name already registered
constexpr DWErr kHostWrongType = hostCode("HTYP");       // a stored value of another type
constexpr DWErr kHostNotHeld = hostCode("HREL");         // release of a suite that is not acquired
constexpr DWErr kHostInternalError = hostCode("HERR");   // an unexpected failure inside the host

// 'S!Fd' for printable codes, the decimal number otherwise.
std::string formatCode(DWErr code);

// What went wrong while loading or driving a plug-in, with a message for the user.
class HostError : public std::runtime_error {
 public:
  explicit HostError(const std::string& message, DWErr code = kHostInternalError)
      : std::runtime_error(message), code_(code) {}
  DWErr code() const { return code_; }

 private:
  DWErr code_;
};

}  // namespace refhost
