#pragma once

#include <cstddef>

namespace refhost {

// Fresh memory straight from the system, for big buffers that are touched soon after: it comes
// zeroed, and from 2 MiB on it is advised as huge pages so first touches fault once per 2 MiB
// instead of once per 4 KiB. The renderer's buffers and the plug-ins' working blocks use it.
constexpr std::size_t kHugePageBytes = std::size_t(2) << 20;

// Null for zero bytes or when the system has no memory.
void* mapLargeBlock(std::size_t bytes);
// `bytes` as given to mapLargeBlock.
void unmapLargeBlock(void* block, std::size_t bytes);

}  // namespace refhost
