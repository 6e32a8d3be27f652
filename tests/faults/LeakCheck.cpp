#include "tests/faults/LeakCheck.h"

#if defined(__SANITIZE_ADDRESS__)
#define DW_FAULTS_LSAN 1
#elif defined(__has_feature)
#if __has_feature(address_sanitizer) || __has_feature(leak_sanitizer)
#define DW_FAULTS_LSAN 1
#endif
#endif

#ifdef DW_FAULTS_LSAN
#include <sanitizer/lsan_interface.h>
#endif

#ifdef DW_FAULTS_LSAN
// Font lookups for text keep fontconfig's caches for the life of the process.
extern "C" const char* __lsan_default_suppressions() { return "leak:libfontconfig\n"; }
extern "C" const char* __lsan_default_options() { return "print_suppressions=0"; }
// Thousands of reruns each free their whole host: a small quarantine keeps the heap, and with it
// every leak scan, small.
extern "C" const char* __asan_default_options() { return "quarantine_size_mb=16"; }
#endif

namespace faults {

bool LeakCheck::available() {
#ifdef DW_FAULTS_LSAN
  return true;
#else
  return false;
#endif
}

bool LeakCheck::newLeaks() {
#ifdef DW_FAULTS_LSAN
  if (leaked_) return false;
  leaked_ = __lsan_do_recoverable_leak_check() != 0;
  return leaked_;
#else
  return false;
#endif
}

}  // namespace faults
