#pragma once
#include <cstdint>

#if __has_include("engine/MemoryBudget.h")
#include "engine/MemoryBudget.h"
#else
namespace dw {
// Bytes one working slot may hold; read anew for each allocation. Defined by the engine.
uint32_t rasterMemoryBudget();
}  // namespace dw
#endif
