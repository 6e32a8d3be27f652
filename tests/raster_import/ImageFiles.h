#pragma once
// Small PNG and TIFF writers for the import tests, independent of the host's exporters.
#include <cstdint>
#include <string>
#include <vector>

namespace test_images {

struct PngSpec {
  int colorType = 0;  // PNG_COLOR_TYPE_*
  int bitDepth = 8;
  uint32_t pixelsPerMetre = 0;  // 0: no pHYs chunk
  std::vector<uint8_t> palette;  // RGB triples, for palette images
};

// `samples` hold the rows as PNG stores them (16-bit samples as values, written big-endian).
void writePng(const std::string& path, int width, int height, const PngSpec& spec,
              const std::vector<uint16_t>& samples);

struct TiffSpec {
  uint16_t photometric = 1;  // PHOTOMETRIC_*
  uint16_t samplesPerPixel = 1;
  uint16_t bitsPerSample = 8;
  uint16_t extraSample = 0;  // 0: none, else the EXTRASAMPLE_* kind of the last sample
  uint16_t inkset = 0;       // 0: not written
  std::string inkNames;      // NUL-separated, for multi-ink files
  float resolution = 0;      // 0: no resolution tags
  uint16_t resolutionUnit = 2;
  bool tiled = false;        // 16 x 16 tiles
};

void writeTiff(const std::string& path, int width, int height, const TiffSpec& spec,
               const std::vector<uint16_t>& samples);

}  // namespace test_images
