#include "refhost/document/LargeBlock.h"

#include <sys/mman.h>

namespace refhost {

void* mapLargeBlock(std::size_t bytes) {
  if (bytes == 0) return nullptr;
  void* p = ::mmap(nullptr, bytes, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
  if (p == MAP_FAILED) return nullptr;
#ifdef MADV_HUGEPAGE
  if (bytes >= kHugePageBytes) ::madvise(p, bytes, MADV_HUGEPAGE);
#endif
  return p;
}

void unmapLargeBlock(void* block, std::size_t bytes) {
  if (block) ::munmap(block, bytes);
}

}  // namespace refhost
