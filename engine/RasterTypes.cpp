#include "engine/RasterTypes.h"

namespace dw {

RasterTypeInfo rasterTypeInfo(int32_t type) {
  static const RasterTypeInfo table[] = {
      {3, false, 24, 1, 0x01, 4},  // Rgb
      {4, false, 32, 2, 0x02, 5},  // Cmyk
      {1, false, 8, 0, 0x00, 6},   // Grayscale
      {1, false, 1, 0, 0x00, 7},   // Bitmap
      {4, true, 32, 1, 0x11, 4},   // RgbTransparent
      {5, true, 40, 2, 0x12, 5},   // CmykTransparent
      {2, true, 16, 0, 0x10, 6},   // GrayscaleTransparent
      {1, false, 1, 0, 0x00, 7},   // BitmapTransparent: transparency is the 1-bit image itself
      {1, false, 8, 4, 0x04, 9},   // Spot
      {2, true, 16, 4, 0x14, 9},   // SpotTransparent
      {0, false, 0, 5, 0x05, 11},  // NChannel
      {0, true, 0, 5, 0x15, 11},   // NChannelTransparent
  };
  if (type < 0 || type > 11) return {0, false, 0, 0xFF, 0xFF, type};
  return table[type];
}

int32_t rasterBitsPerPixel(int32_t type, int32_t colorSpaceChannels) {
  if (isNChannelType(type)) return colorSpaceChannels > 0 ? 8 * colorSpaceChannels : 0;
  return rasterTypeInfo(type).bitsPerPixel;
}

int64_t rowBytes(int32_t bitsPerPixel, int64_t width) {
  if (bitsPerPixel == 1) return (width + 7) / 8;
  return int64_t(bitsPerPixel) * width / 8;
}

int64_t rowStride(int32_t bitsPerPixel, int64_t width) { return (rowBytes(bitsPerPixel, width) + 3) & ~int64_t(3); }

}  // namespace dw
