#pragma once
#include <cstdint>

namespace dw {

// One supersampled tile and the final tile it reduces into. Pixels are channels bytes, alpha first
// when the type has alpha; rows are their stride apart.
struct DownsampleTile {
  const uint8_t* super = nullptr;
  int32_t superStride = 0;
  uint8_t* tile = nullptr;
  int32_t tileStride = 0;
  int32_t tileWidth = 0;
  int32_t tileRows = 0;
  int32_t channels = 0;
  int32_t factor = 0;
};

// Box filter over factor x factor blocks with truncating integer division.
// Without alpha: every channel is the block's sum / factor^2.
// With alpha (channel 0): alpha is the block's alpha sum A / factor^2; colour k is
// sum(alpha * value_k) / A; a block with A == 0 gets alpha 0 and keeps the colour bytes it had.
// Output bytes that already hold their new value are left as they are.
void downsampleOpaque(const DownsampleTile& tile);
void downsampleWithAlpha(const DownsampleTile& tile);

namespace engine_testing {
// Turns the 256-bit steps off (or on again where the processor has them), so that tests reach the
// 128-bit and scalar steps on any machine.
void allowWideVectors(bool allowed);
}  // namespace engine_testing

}  // namespace dw
