#pragma once
#include <exception>
#include "host/types.h"

namespace dw {

// Carries one error code through nested calls. Thrown by the host-string and suite wrappers;
// caught only where a handler turns it back into a code.
class Error : public std::exception {
 public:
  explicit Error(DWErr errorCode) noexcept : code(errorCode) {}
  Error(const Error&) noexcept = default;
  Error& operator=(const Error&) noexcept = default;

  DWErr code;
};

// Throws dw::Error when a host call failed.
inline void check(DWErr result) {
  if (result != 0) throw Error(result);
}

}  // namespace dw
