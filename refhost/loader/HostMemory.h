#pragma once
#include <cstddef>
#include <map>
#include <mutex>
#include <string>

namespace refhost {

// Memory the host gives plug-ins: named blocks ("QK Blocks Suite", e.g. a plug-in's global block)
// and working blocks ("DW Block Suite", tile buffers). Blocks are zero-filled; whatever is still
// held when the host ends is freed then.
class HostMemory {
 public:
  struct Block {
    size_t size = 0;
    std::string name;  // empty for working blocks
  };

  HostMemory() = default;
  HostMemory(const HostMemory&) = delete;
  HostMemory& operator=(const HostMemory&) = delete;
  ~HostMemory();

  // Null when the system has no memory, or for a working block over either cap.
  void* allocateNamed(size_t size, const std::string& name);
  void* allocateWorking(size_t size, size_t sizeCap, size_t totalCap);
  // False for a pointer the host did not give out (or already freed).
  bool free(void* block);

  bool holds(const void* block) const;
  size_t outstandingBlocks() const;
  size_t outstandingWorkingBytes() const;
  // The named block of that name, or null.
  void* findNamed(const std::string& name) const;

 private:
  void* allocate(size_t size, const std::string& name);

  mutable std::mutex mutex_;
  std::map<const void*, Block> blocks_;
  size_t workingBytes_ = 0;
};

}  // namespace refhost
