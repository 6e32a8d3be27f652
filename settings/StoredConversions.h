#pragma once
#include <cmath>
#include <cstdint>

#include "settings/StoredKeys.h"

namespace dw {

// Stored forms keep the resolution as a whole number, truncated toward zero. Values beyond the
// integer range saturate rather than overflow; a NaN stores 0.
inline int32_t storedResolution(double resolution) {
  if (std::isnan(resolution)) return 0;
  if (resolution >= 2147483647.0) return INT32_MAX;
  if (resolution <= -2147483648.0) return INT32_MIN;
  return int32_t(std::trunc(resolution));
}

// Every store keeps anti-aliasing as on/off; reading it back gives these factors.
constexpr int16_t antiAliasFromStored(bool on) { return on ? kAntiAliasOn : int16_t(0); }

}  // namespace dw
