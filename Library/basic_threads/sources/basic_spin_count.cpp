#include "basic_spin_count.h"

#include "basic_processor_count.h"

namespace basic {

std::uint32_t spin_count() {
  static const std::uint32_t spin = affinity_processor_count() != 1 ? 1024 : 0;
  return spin;
}

namespace {
// Fixes the value before main even in a process that builds no semaphore during start-up.
[[maybe_unused]] const std::uint32_t spin_at_start = spin_count();
}  // namespace

}  // namespace basic
