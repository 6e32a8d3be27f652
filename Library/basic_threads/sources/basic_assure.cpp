#include "basic_assure.h"

#include <cstdio>
#include <cstdlib>

namespace basic {

void assure_failed(const char* expression, const char* file, int line) {
  std::fprintf(stderr, "basic::assure_failed(%s, %s, %d)\n", expression, file, line);
  std::fflush(stderr);
  std::abort();
}

}  // namespace basic
