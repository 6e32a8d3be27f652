// "DW Runtime Suite": whether the host has a user interface, and how much memory it gives.
#include <unistd.h>

#include <algorithm>

#include "host/suites/runtime_suite.h"
#include "refhost/loader/HostCall.h"
#include "refhost/loader/SuiteProviders.h"

namespace refhost {
namespace {

DWBool IsInteractive() { return Host::current().controls().interactive ? 1 : 0; }

// The machine's available memory, as far as 32 bits can say it.
uint32_t GetMemoryFigure() {
  if (const auto figure = Host::current().controls().memoryFigure) return *figure;
  const long pages = sysconf(_SC_AVPHYS_PAGES);
  const long pageSize = sysconf(_SC_PAGESIZE);
  if (pages <= 0 || pageSize <= 0) return 0xFFFFFFFFu;
  const unsigned long long bytes = static_cast<unsigned long long>(pages) * static_cast<unsigned long long>(pageSize);
  return uint32_t(std::min<unsigned long long>(bytes, 0xFFFFFFFFull));
}

const DWRuntimeSuite kSuite = {IsInteractive, GetMemoryFigure};
REFHOST_REGISTER_SUITE(kDWRuntimeSuite, kDWRuntimeSuiteVersion, kSuite);

}  // namespace
}  // namespace refhost
