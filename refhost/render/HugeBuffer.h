#pragma once

#include <cstddef>
#include <cstdint>

namespace refhost::render {

// Working memory that is allocated once and reused. Fresh 4 KiB pages cost a page fault each, so
// large buffers are mapped on 2 MiB boundaries and advised as huge pages; the memory is kept when a
// smaller size is asked for later.
class HugeBuffer {
 public:
  HugeBuffer() = default;
  ~HugeBuffer();
  HugeBuffer(const HugeBuffer&) = delete;
  HugeBuffer& operator=(const HugeBuffer&) = delete;
  HugeBuffer(HugeBuffer&& other) noexcept;
  HugeBuffer& operator=(HugeBuffer&& other) noexcept;

  // At least `bytes` usable bytes; earlier contents are not kept when the buffer grows.
  // Throws std::bad_alloc when the memory cannot be had.
  std::uint8_t* reserve(std::size_t bytes);
  std::uint8_t* data() const { return data_; }
  std::size_t capacity() const { return capacity_; }
  void release();

 private:
  std::uint8_t* data_ = nullptr;
  std::size_t capacity_ = 0;
};

}  // namespace refhost::render
