#pragma once
#include <cstddef>
#include <cstdint>
#include <string>

namespace fuzz {

// The input bytes as a file that the importers open by path (/proc/self/fd/N), kept in memory: no
// disk traffic per execution, nothing left behind.
class MemoryFile {
 public:
  MemoryFile(const uint8_t* data, size_t size);
  ~MemoryFile();
  MemoryFile(const MemoryFile&) = delete;
  MemoryFile& operator=(const MemoryFile&) = delete;

  const std::string& path() const { return path_; }

 private:
  int fd_ = -1;
  std::string path_;
};

}  // namespace fuzz
