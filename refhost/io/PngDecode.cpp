#include "refhost/io/PngDecode.h"

#include <png.h>

#include <cstring>

namespace refhost::io {

bool looksLikePng(const std::vector<std::uint8_t>& bytes) {
  static const std::uint8_t kSignature[8] = {0x89, 'P', 'N', 'G', '\r', '\n', 0x1A, '\n'};
  return bytes.size() >= 8 && std::memcmp(bytes.data(), kSignature, 8) == 0;
}

std::shared_ptr<Image> decodePng(const std::vector<std::uint8_t>& bytes, std::string& error, std::uint64_t maxPixels) {
  png_image image;
  std::memset(&image, 0, sizeof image);
  image.version = PNG_IMAGE_VERSION;
  if (!png_image_begin_read_from_memory(&image, bytes.data(), bytes.size())) {
    error = std::string("PNG: ") + image.message;
    return nullptr;
  }
  if (image.width == 0 || image.height == 0 ||
      static_cast<std::uint64_t>(image.width) * image.height > maxPixels) {
    png_image_free(&image);
    error = "PNG: image size " + std::to_string(image.width) + "x" + std::to_string(image.height) + " refused";
    return nullptr;
  }
  image.format = PNG_FORMAT_RGBA;
  auto out = std::make_shared<Image>();
  out->width = static_cast<std::int32_t>(image.width);
  out->height = static_cast<std::int32_t>(image.height);
  out->rgba.resize(PNG_IMAGE_SIZE(image));
  if (!png_image_finish_read(&image, nullptr, out->rgba.data(), 0, nullptr)) {
    error = std::string("PNG: ") + image.message;
    png_image_free(&image);
    return nullptr;
  }
  return out;
}

}  // namespace refhost::io
