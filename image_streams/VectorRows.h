#pragma once
#include <cstdint>

#include "image_streams/HorizontalResampler.h"
#include "image_streams/VerticalResampler.h"

namespace dw {

// Row functions on the processor's 128-bit integer unit; null where there is none, and the
// portable row functions serve. Both give the same bytes: the sums are the same exact integer
// sums, rounded, shifted and clamped the same way.
HorizontalResampler::RowFunction vectorHorizontalRow(uint32_t channels);
VerticalResampler::RowFunction vectorVerticalRow(int32_t taps);

}  // namespace dw
