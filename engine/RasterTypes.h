#pragma once
#include <cstdint>

#include "settings/RasterizeSettings.h"

namespace dw {

// Fixed properties of each raster type. Any value outside 0..11 has family and raster colour-space
// code 0xFF, no channels and no alpha.
struct RasterTypeInfo {
  int32_t channels;      // bytes per pixel; 0 for the N-channel types (the colour space decides)
  bool alpha;            // the first byte of every pixel is alpha
  int32_t bitsPerPixel;  // 1 for the bitmap types; 0 for the N-channel types (8 per channel)
  int32_t familyCode;    // 0 gray, 1 RGB, 2 CMYK, 4 one spot, 5 process plus spots
  int32_t colorSpaceCode;
  int32_t transparentVariant;
};

RasterTypeInfo rasterTypeInfo(int32_t type);

inline bool hasAlpha(int32_t type) { return rasterTypeInfo(type).alpha; }
inline int32_t familyCode(int32_t type) { return rasterTypeInfo(type).familyCode; }
inline bool isBitmapType(int32_t type) {
  return type == int32_t(RasterType::Bitmap) || type == int32_t(RasterType::BitmapTransparent);
}
inline bool isSpotType(int32_t type) {
  return type == int32_t(RasterType::Spot) || type == int32_t(RasterType::SpotTransparent);
}
inline bool isNChannelType(int32_t type) {
  return type == int32_t(RasterType::NChannel) || type == int32_t(RasterType::NChannelTransparent);
}

// Bits per pixel of a type; the N-channel types take 8 bits for each of the colour space's channels.
int32_t rasterBitsPerPixel(int32_t type, int32_t colorSpaceChannels);

// Bytes of one row of width pixels: ceil(w / 8) at 1 bit per pixel, otherwise bits * w / 8.
// 64-bit so that absurd widths cannot wrap.
int64_t rowBytes(int32_t bitsPerPixel, int64_t width);
// The row bytes rounded up to a multiple of 4.
int64_t rowStride(int32_t bitsPerPixel, int64_t width);

// The largest pixel a raster can have, in bytes (31 colour channels plus alpha).
constexpr int32_t kMaxPixelBytes = 32;

}  // namespace dw
