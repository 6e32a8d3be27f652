#pragma once
#include <cstddef>
#include <cstdint>

namespace dw {

// Owner of one block from the host's block allocator; released through the same suite.
class HostBlock {
 public:
  HostBlock() = default;
  ~HostBlock() { release(); }
  HostBlock(const HostBlock&) = delete;
  HostBlock& operator=(const HostBlock&) = delete;

  // Replaces what is held; false (and nothing held) when the host has no block of that size.
  bool allocate(size_t bytes);
  void release();

  uint8_t* data() const { return _data; }
  size_t size() const { return _size; }
  explicit operator bool() const { return _data != nullptr; }

 private:
  uint8_t* _data = nullptr;
  size_t _size = 0;
};

}  // namespace dw
