#include "engine/PlanningRules.h"

#include <cmath>

#include "shell/ErrorCodes.h"

namespace dw {

int16_t supersamplingFactor(int16_t antialiasing) { return antialiasing >= 2 ? antialiasing : int16_t(1); }

int16_t factorForWidth(int16_t factor, int32_t width) {
  return factor == 4 && int64_t(width) * 20 >= 65536 ? int16_t(2) : factor;
}

DWRealRect snapToPixelGrid(const DWRealRect& b) {
  DWRealRect r;
  r.left = std::floor(b.left);
  r.bottom = std::floor(b.bottom);
  r.right = std::floor(b.right + 1.0 - 0.0001);
  r.top = std::floor(b.top + 1.0 - 0.0001);
  return r;
}

namespace {

enum class SideClass { Ok, Invalid, TooLarge, Empty };

SideClass classify(double extent, int32_t& pixels) {
  const double size = std::ceil(extent);
  if (std::isnan(size) || size < 0) return SideClass::Invalid;
  if (size > double(kMaxRasterSide)) return SideClass::TooLarge;
  pixels = int32_t(size);
  return pixels == 0 ? SideClass::Empty : SideClass::Ok;
}

}  // namespace

PixelSize pixelSize(const DWRealRect& b, double padding, double scale) {
  PixelSize result;
  const SideClass w = classify((b.right - b.left + 2 * padding) * scale, result.width);
  const SideClass h = classify((b.top - b.bottom + 2 * padding) * scale, result.height);
  if (w == SideClass::Invalid || h == SideClass::Invalid)
    result.error = BadParameterError;
  else if (w == SideClass::TooLarge || h == SideClass::TooLarge)
    result.error = TooWideError;
  else if (w == SideClass::Empty || h == SideClass::Empty)
    result.error = BadParameterError;
  if (result.error) result.width = result.height = 0;
  return result;
}

uint32_t slotCount(int16_t factor, bool multithreading, uint32_t processors) {
  if (factor > 1 && multithreading) return processors > 0 ? processors : 1;
  return 1;
}

uint32_t tileCountFor(int32_t height, int32_t tileRows) {
  if (tileRows <= 0 || height <= 0) return 0;
  return uint32_t((int64_t(height) + tileRows - 1) / tileRows);
}

}  // namespace dw
