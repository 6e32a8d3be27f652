#include "refhost/loader/HostMemory.h"

#include <cstdlib>

namespace refhost {

HostMemory::~HostMemory() {
  for (auto& entry : blocks_) std::free(const_cast<void*>(entry.first));
}

void* HostMemory::allocate(size_t size, const std::string& name) {
  // A zero-byte request still gets a distinct block, as plug-ins free what they were given.
  void* block = std::calloc(size ? size : 1, 1);
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
  blocks_.erase(found);
  std::free(block);
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
