#include "engine/Background.h"

#include <cstring>
#include <initializer_list>

#include "basic_semaphore.h"
#include "basic_semaphore_lock.h"
#include "basic_spin_count.h"
#include "engine/Accelerator.h"
#include "shell/HostSuites.h"

namespace dw {

namespace {

// Built during static initialisation, before any worker can exist; closed at process exit.
basic::semaphore gBackgroundLock(1, basic::spin_count());

// Family of the first part of an N-channel space when that space has process channels; -1 otherwise.
int32_t processFamilyOfFirstPart(DWColorSpaceHandle space) {
  const DWColorSpaceSuite* suite = gSuites.colorSpace;
  if (!suite || !space) return -1;
  int32_t processChannels = 0;
  if (suite->CountProcessChannels(space, &processChannels) != kDWNoErr || processChannels <= 0) return -1;
  DWColorSpaceHandle part = nullptr;
  if (suite->GetNthPart(space, 0, &part) != kDWNoErr || !part) return -1;
  int32_t family = -1;
  if (suite->GetFamily(part, &family) != kDWNoErr) return -1;
  return family;
}

int32_t nChannelPixelBytes(DWColorSpaceHandle space) {
  int32_t count = 0;
  if (!gSuites.colorSpace || !space || gSuites.colorSpace->CountChannels(space, &count) != kDWNoErr) return 0;
  if (count < 0) return 0;
  return count > kMaxPixelBytes ? kMaxPixelBytes : count;
}

void setBytes(BackgroundPixel& pixel, int32_t first, int32_t count, uint8_t value) {
  for (int32_t i = first; i < first + count && i < pixel.size; ++i) pixel.bytes[i] = value;
}

void nChannelPixel(BackgroundPixel& pixel, bool alpha, bool black, DWColorSpaceHandle space) {
  pixel.size = nChannelPixelBytes(space);
  // Colour channels hold ink: no ink is 00, full ink FF. A process first part in gray or RGB holds
  // light instead, so its white is FF and its black 00.
  setBytes(pixel, 0, pixel.size, black ? 0xFF : 0x00);
  if (alpha) setBytes(pixel, 0, 1, 0x00);
  const int32_t first = alpha ? 1 : 0;
  const uint8_t light = black ? 0x00 : 0xFF;
  switch (processFamilyOfFirstPart(space)) {
    case kDWGrayFamily: setBytes(pixel, first, 1, light); break;
    case kDWRGBFamily: setBytes(pixel, first, 3, light); break;
    default: break;
  }
}

BackgroundPixel computePixel(int32_t type, bool black, DWColorSpaceHandle space) {
  BackgroundPixel pixel;
  const uint8_t w = 0xFF, z = 0x00;
  auto set = [&pixel](std::initializer_list<uint8_t> bytes) {
    pixel.size = int32_t(bytes.size());
    std::memcpy(pixel.bytes, bytes.begin(), bytes.size());
  };
  switch (RasterType(type)) {
    case RasterType::Rgb: black ? set({z, z, z}) : set({w, w, w}); break;
    case RasterType::Cmyk: black ? set({z, z, z, w}) : set({z, z, z, z}); break;
    case RasterType::Grayscale:
    case RasterType::Bitmap:
    case RasterType::BitmapTransparent: black ? set({z}) : set({w}); break;
    case RasterType::RgbTransparent: black ? set({z, z, z, z}) : set({z, w, w, w}); break;
    case RasterType::CmykTransparent: black ? set({z, z, z, z, w}) : set({z, z, z, z, z}); break;
    case RasterType::GrayscaleTransparent: black ? set({z, z}) : set({z, w}); break;
    case RasterType::Spot: black ? set({w}) : set({z}); break;
    case RasterType::SpotTransparent: black ? set({z, w}) : set({z, z}); break;
    case RasterType::NChannel: nChannelPixel(pixel, false, black, space); break;
    case RasterType::NChannelTransparent: nChannelPixel(pixel, true, black, space); break;
  }
  return pixel;
}

// Fills one row with a pixel pattern: the first pixel, then doubling copies of what is written.
void fillRowPattern(uint8_t* row, int32_t width, const BackgroundPixel& pixel) {
  const size_t total = size_t(width) * size_t(pixel.size);
  if (total == 0) return;
  size_t done = size_t(pixel.size) < total ? size_t(pixel.size) : total;
  std::memcpy(row, pixel.bytes, done);
  while (done < total) {
    const size_t chunk = done < total - done ? done : total - done;
    std::memcpy(row + done, row, chunk);
    done += chunk;
  }
}

bool uniform(const BackgroundPixel& pixel) {
  for (int32_t i = 1; i < pixel.size; ++i)
    if (pixel.bytes[i] != pixel.bytes[0]) return false;
  return true;
}

// The host's fast fills: the byte fill for 1-bit rows, the pixel fill for 4-byte pixels, and
// 32-bit stores of four repeated pixels for 3- and 5-byte pixels.
bool acceleratedFill(const DWHVExtensionSuite& suite, int32_t type, const BackgroundPixel& pixel, int32_t width,
                     int32_t rows, int32_t stride, uint8_t* buffer) {
  if (isBitmapType(type)) {
    if (!suite.FillBytes) return false;
    suite.FillBytes(buffer, rows, stride, stride, pixel.bytes[0]);
    return true;
  }
  if (pixel.size == 4) {
    if (!suite.FillPixels32) return false;
    const uint8_t* b = pixel.bytes;
    // The pixel fill knows no stride: one call covers the buffer when its rows touch, one per row
    // otherwise.
    if (stride == 4 * width) {
      suite.FillPixels32(buffer, width * rows, b[0], b[1], b[2], b[3]);
    } else {
      for (int32_t y = 0; y < rows; ++y)
        suite.FillPixels32(buffer + size_t(y) * size_t(stride), width, b[0], b[1], b[2], b[3]);
    }
    return true;
  }
  // A pixel of equal bytes (white, black, no ink) is a byte fill, which the C library does faster.
  if ((pixel.size != 3 && pixel.size != 5) || uniform(pixel)) return false;
  // Four pixels make 3 or 5 whole 32-bit words.
  uint32_t words[5];
  uint8_t quad[20];
  for (int32_t i = 0; i < 4 * pixel.size; ++i) quad[i] = pixel.bytes[i % pixel.size];
  std::memcpy(words, quad, size_t(4 * pixel.size));
  const int32_t wordsPerStep = pixel.size;
  for (int32_t y = 0; y < rows; ++y) {
    uint8_t* row = buffer + size_t(y) * size_t(stride);
    int32_t x = 0;
    for (; x + 4 <= width; x += 4, row += 4 * pixel.size)
      for (int32_t k = 0; k < wordsPerStep; ++k) std::memcpy(row + 4 * k, &words[k], 4);
    for (; x < width; ++x, row += pixel.size) std::memcpy(row, pixel.bytes, size_t(pixel.size));
  }
  return true;
}

}  // namespace

BackgroundPixel backgroundPixel(int32_t type, bool black, DWColorSpaceHandle space) {
  basic::semaphore_lock lock(gBackgroundLock, true);
  return computePixel(type, black, space);
}

void fillBackground(int32_t type, bool black, DWColorSpaceHandle space, int32_t width, int32_t rows, int32_t stride,
                    uint8_t* buffer) {
  if (!buffer || rows <= 0 || width <= 0) return;
  const BackgroundPixel pixel = backgroundPixel(type, black, space);
  if (pixel.size == 0) return;
  if (const DWHVExtensionSuite* suite = accelerator())
    if (acceleratedFill(*suite, type, pixel, width, rows, stride, buffer)) return;
  if (isBitmapType(type)) {
    std::memset(buffer, pixel.bytes[0], size_t(rows) * size_t(stride));
    return;
  }
  const size_t rowLength = size_t(width) * size_t(pixel.size);
  for (int32_t y = 0; y < rows; ++y) {
    uint8_t* row = buffer + size_t(y) * size_t(stride);
    if (uniform(pixel))
      std::memset(row, pixel.bytes[0], rowLength);
    else if (y == 0)
      fillRowPattern(row, width, pixel);
    else
      std::memcpy(row, buffer, rowLength);
  }
}

}  // namespace dw
