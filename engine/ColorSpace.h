#pragma once
#include <cstdint>
#include <utility>

#include "engine/ColorUsage.h"
#include "host/types.h"

namespace dw {

// Owns one host colour space (null is none) and releases it through the colour-space suite.
class ColorSpace {
 public:
  ColorSpace() noexcept = default;
  explicit ColorSpace(DWColorSpaceHandle handle) noexcept : _handle(handle) {}
  ColorSpace(ColorSpace&& other) noexcept : _handle(std::exchange(other._handle, nullptr)) {}
  ColorSpace& operator=(ColorSpace&& other) noexcept {
    if (this != &other) {
      reset();
      _handle = std::exchange(other._handle, nullptr);
    }
    return *this;
  }
  ColorSpace(const ColorSpace&) = delete;
  ColorSpace& operator=(const ColorSpace&) = delete;
  ~ColorSpace() { reset(); }

  DWColorSpaceHandle get() const noexcept { return _handle; }
  explicit operator bool() const noexcept { return _handle != nullptr; }
  void reset() noexcept;

 private:
  DWColorSpaceHandle _handle = nullptr;
};

// The host colour space of a raster of the effective type, or none when the type cannot have one
// (no single spot colour, too many channels, a type outside 0..11). Host failures throw dw::Error.
// requestedFamily is the family code of the type the caller asked for.
ColorSpace buildColorSpace(const ColorUsage& usage, int32_t effectiveType, int32_t requestedFamily);

// The colour set-up of a new raster art: the fill colour of a single-spot raster, the colour space
// of an N-channel raster, and the raster flag of the usage. Returns the first host error.
DWErr setUpRasterColor(DWArtHandle raster, int32_t effectiveType, DWCustomColorHandle spot, DWColorSpaceHandle space,
                       const ColorUsage& usage);

// The colour space's channel count (alpha included); host failures throw dw::Error.
int32_t colorSpaceChannelCount(DWColorSpaceHandle space);

}  // namespace dw
