#pragma once
// Per-rerun leak detection when the build runs under LeakSanitizer; nothing to do otherwise.
#include <cstdint>

namespace faults {

class LeakCheck {
 public:
  // Whether this build can see leaks at all.
  static bool available();
  // True the first time unreachable heap memory is found; the checker's report goes to stderr.
  // Once memory has leaked, later reruns cannot be told apart, so the check stops there.
  bool newLeaks();

 private:
  bool leaked_ = false;
};

}  // namespace faults
