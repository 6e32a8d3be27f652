// The library's checks: active in every build, fatal when they fail.
#pragma once

namespace basic {

// Prints "basic::assure_failed(<expression>, <file>, <line>)" on stderr and aborts.
[[noreturn]] void assure_failed(const char* expression, const char* file, int line);

}  // namespace basic

// The expression's own source text is what gets printed, so write checks as the condition that
// must hold. Only the system call under test may have a side effect.
#define BASIC_ASSURE(expression) \
  ((expression) ? static_cast<void>(0) : ::basic::assure_failed(#expression, __FILE__, __LINE__))
