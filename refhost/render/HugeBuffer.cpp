#include "refhost/render/HugeBuffer.h"

#include "refhost/document/LargeBlock.h"

#include <new>
#include <utility>

namespace refhost::render {

namespace {
std::size_t roundUp(std::size_t n, std::size_t to) { return (n + to - 1) / to * to; }
}  // namespace

HugeBuffer::~HugeBuffer() { release(); }

HugeBuffer::HugeBuffer(HugeBuffer&& other) noexcept
    : data_(std::exchange(other.data_, nullptr)), capacity_(std::exchange(other.capacity_, 0)) {}

HugeBuffer& HugeBuffer::operator=(HugeBuffer&& other) noexcept {
  if (this != &other) {
    release();
    data_ = std::exchange(other.data_, nullptr);
    capacity_ = std::exchange(other.capacity_, 0);
  }
  return *this;
}

std::uint8_t* HugeBuffer::reserve(std::size_t bytes) {
  if (bytes <= capacity_) return data_;
  // Grow by at least half again so a slowly rising demand does not remap every time.
  std::size_t want = bytes < capacity_ + capacity_ / 2 ? capacity_ + capacity_ / 2 : bytes;
  want = roundUp(want, want >= kHugePageBytes ? kHugePageBytes : 4096);
  void* p = mapLargeBlock(want);
  if (!p) throw std::bad_alloc();
  release();
  data_ = static_cast<std::uint8_t*>(p);
  capacity_ = want;
  return data_;
}

void HugeBuffer::release() {
  unmapLargeBlock(data_, capacity_);
  data_ = nullptr;
  capacity_ = 0;
}

}  // namespace refhost::render
