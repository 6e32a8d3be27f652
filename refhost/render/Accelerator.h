#pragma once

#include "host/suites/hv_extension_suite.h"

#include <atomic>
#include <cstdint>

namespace refhost::render {

// Switches of the accelerated pixel routines, so that a plug-in's accelerated path and its
// fallbacks can all be exercised: `enabled` is what IsEnabled answers; with `pixelRoutines` off
// the two whole-pixel reductions answer "not handled" and callers reduce channel by channel.
struct AcceleratorSwitches {
  std::atomic<bool> enabled{true};
  std::atomic<bool> pixelRoutines{true};
};
AcceleratorSwitches& acceleratorSwitches();

// Answer of a whole-pixel reduction that declines the layout.
constexpr DWErr kReductionNotHandled = 0x214E4844;  // '!NHD'

void fillBytes(std::uint8_t* buffer, std::int32_t rows, std::int32_t rowBytes, std::int32_t fillBytes, std::uint8_t value);
void fillPixels32(std::uint8_t* buffer, std::int32_t count, std::uint8_t b0, std::uint8_t b1, std::uint8_t b2, std::uint8_t b3);

// Box reductions by f over f x f blocks; sums in 32 bits and truncating divisions. Without alpha
// every byte is the block's mean. With alpha (the alpha descriptor's base is the pixel's first
// byte), samples of alpha 0 are skipped, alpha is the plain mean and colour the alpha-weighted
// mean; a fully transparent block writes alpha 0 and leaves the colour bytes as they were.
DWErr reducePixels(const DWImageDescriptor& src, const DWImageDescriptor& dst, std::int32_t f);
DWErr reducePixelsWithAlpha(const DWImageDescriptor& src, const DWImageDescriptor& alpha, const DWImageDescriptor& dst,
                            std::int32_t f);
DWErr reduceChannel(const DWImageDescriptor& src, const DWImageDescriptor& dst, std::int32_t f);
DWErr reduceChannelWeighted(const DWImageDescriptor& src, const DWImageDescriptor& alpha, const DWImageDescriptor& dst,
                            std::int32_t f);

}  // namespace refhost::render
