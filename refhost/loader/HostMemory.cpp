#include "refhost/loader/HostMemory.h"

#include "refhost/document/LargeBlock.h"

#include <cstdlib>

namespace refhost {

namespace {

// Tile buffers are this big or bigger and are filled right away: mapped memory is zeroed by the
// system and faults in huge pages, where calloc would zero it again or fault every 4 KiB.
bool mapped(size_t size) { return size >= kHugePageBytes; }

void release(void* block, size_t size) {
  if (mapped(size))
    unmapLargeBlock(block, size);
  else
    std::free(block);
}

}  // namespace

HostMemory::~HostMemory() {
  for (auto& entry : blocks_) release(const_cast<void*>(entry.first), entry.second.size);
}

void* HostMemory::allocate(size_t size, const std::string& name) {
  // A zero-byte request still gets a distinct block, as plug-ins free what they were given.
  void* block = mapped(size) ? mapLargeBlock(size) : std::calloc(size ? size : 1, 1);
  if (block) blocks_[block] = Block{size, name};
  return block;
}

void* HostMemory::allocateNamed(size_t size, const std::string& name) {
  std::lock_guard<std::mutex> lock(mutex_);
  return allocate(size, name.empty() ? std::string("(unnamed)") : name);
}

void* HostMemory::allocateWorking(size_t size, size_t sizeCap, size_t totalCap) {
  std::lock_guard<std::mutex> lock(mutex_);
  if (size > sizeCap || size > totalCap || workingBytes_ > totalCap - size) return nullptr;
  void* block = allocate(size, std::string());
  if (block) workingBytes_ += size;
  return block;
}

bool HostMemory::free(void* block) {
  std::lock_guard<std::mutex> lock(mutex_);
  const auto found = blocks_.find(block);
  if (found == blocks_.end()) return false;
  if (found->second.name.empty()) workingBytes_ -= found->second.size;
  const size_t size = found->second.size;
  blocks_.erase(found);
  release(block, size);
  return true;
}

bool HostMemory::holds(const void* block) const {
  std::lock_guard<std::mutex> lock(mutex_);
  return blocks_.count(block) != 0;
}

size_t HostMemory::outstandingBlocks() const {
  std::lock_guard<std::mutex> lock(mutex_);
  return blocks_.size();
}

size_t HostMemory::outstandingWorkingBytes() const {
  std::lock_guard<std::mutex> lock(mutex_);
  return workingBytes_;
}

void* HostMemory::findNamed(const std::string& name) const {
  std::lock_guard<std::mutex> lock(mutex_);
  for (const auto& entry : blocks_)
    if (entry.second.name == name) return const_cast<void*>(entry.first);
  return nullptr;
}

}  // namespace refhost
