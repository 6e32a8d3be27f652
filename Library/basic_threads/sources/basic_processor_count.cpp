#include "basic_processor_count.h"

#include "basic_assure.h"
#include "windows_compat.h"

namespace basic {

std::uint32_t system_processor_count() {
  SYSTEM_INFO info;
  GetSystemInfo(&info);
  return info.dwNumberOfProcessors;
}

std::uint32_t affinity_processor_count() {
  DWORD_PTR pm = 0;
  DWORD_PTR sm = 0;
  BASIC_ASSURE(GetProcessAffinityMask(GetCurrentProcess(), &pm, &sm) != 0);
  std::uint32_t count = 0;
  for (DWORD_PTR bits = pm & sm; bits != 0; bits &= bits - 1) ++count;
  return count;
}

}  // namespace basic
