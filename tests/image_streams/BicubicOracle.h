#pragma once
#include "fakes/StreamFakeHost.h"

namespace streams_test {

// The cubic resampler evaluated in double precision straight from the kernel's formula: the same
// sample grid and edge rule as the stream, but no tables, no fixed point and no intermediate
// rounding (the intermediate is only clamped to 0..255).
Image bicubicOracle(const Image& source, int32_t width, int32_t height);

}  // namespace streams_test
