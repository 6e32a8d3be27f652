#include "image_streams/HostBlock.h"

#include "shell/HostSuites.h"

namespace dw {

bool HostBlock::allocate(size_t bytes) {
  release();
  if (!gSuites.block) return false;
  void* block = nullptr;
  if (gSuites.block->AllocateBlock(bytes, &block) != kDWNoErr || !block) return false;
  _data = static_cast<uint8_t*>(block);
  _size = bytes;
  return true;
}

void HostBlock::release() {
  if (_data && gSuites.block) gSuites.block->DisposeBlock(_data);
  _data = nullptr;
  _size = 0;
}

}  // namespace dw
