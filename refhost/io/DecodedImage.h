#pragma once
// What the PNG and TIFF readers hand to the raster importer.
#include <cstdint>
#include <string>
#include <vector>

namespace refhost::io {

struct DecodedImage {
  enum class Model { Gray, Rgb, Cmyk, Inks };

  std::int32_t width = 0;
  std::int32_t height = 0;
  Model model = Model::Gray;
  bool alpha = false;
  // Model::Inks: one name per colour channel, in pixel order.
  std::vector<std::string> inks;
  // Pixels per inch along x and y; 0 when the file does not say.
  double ppiX = 0.0;
  double ppiY = 0.0;
  // Rows of width * channelCount() bytes, top row first, alpha first in each pixel, unpremultiplied.
  std::vector<std::uint8_t> pixels;

  int channelCount() const;
};

// Images larger than this are refused before their pixels are read.
constexpr std::uint64_t kMaxImagePixels = 1ull << 28;

// Each throws IoError naming the file.
DecodedImage readPngImage(const std::string& path);
DecodedImage readTiffImage(const std::string& path);

// Throws IoError for a size of 0 or above kMaxImagePixels.
void checkImageSize(const std::string& path, std::uint64_t width, std::uint64_t height);

}  // namespace refhost::io
