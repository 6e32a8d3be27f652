// Prints what a fresh process computes at start-up, for tests that run it under an affinity mask.
#include "basic_processor_count.h"
#include "basic_spin_count.h"

#include <cstdio>

int main() {
  std::printf("spin_count=%u affinity=%u system=%u\n", static_cast<unsigned>(basic::spin_count()),
              static_cast<unsigned>(basic::affinity_processor_count()),
              static_cast<unsigned>(basic::system_processor_count()));
  return 0;
}
