#include "fuzz/MemoryFile.h"

#include <sys/mman.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>

namespace fuzz {

MemoryFile::MemoryFile(const uint8_t* data, size_t size) {
  fd_ = memfd_create("fuzz-input", MFD_CLOEXEC);
  if (fd_ < 0) {
    std::perror("memfd_create");
    std::abort();
  }
  for (size_t done = 0; done < size;) {
    const ssize_t n = write(fd_, data + done, size - done);
    if (n <= 0) {
      std::perror("write");
      std::abort();
    }
    done += size_t(n);
  }
  // Opening /proc/self/fd/N gives a fresh description that reads from the start.
  path_ = "/proc/self/fd/" + std::to_string(fd_);
}

MemoryFile::~MemoryFile() {
  if (fd_ >= 0) close(fd_);
}

}  // namespace fuzz
