#include <png.h>

#include <csetjmp>
#include <cstdio>
#include <string>
#include <vector>

#include "refhost/io/DecodedImage.h"
#include "refhost/io/IoError.h"

// PNG files in their own colour model (the placed-image decoder turns everything into RGBA).
namespace refhost::io {

namespace {

struct PngFile {
  std::FILE* file = nullptr;
  png_structp png = nullptr;
  png_infop info = nullptr;
  std::string error;

  ~PngFile() {
    if (png) png_destroy_read_struct(&png, info ? &info : nullptr, nullptr);
    if (file) std::fclose(file);
  }
};

void onError(png_structp png, png_const_charp message) {
  static_cast<PngFile*>(png_get_error_ptr(png))->error = message ? message : "unknown error";
  png_longjmp(png, 1);
}

void onWarning(png_structp, png_const_charp) {}

// Everything that may longjmp runs here, with the caller's objects already built, so no
// destructor is skipped.
bool readInto(PngFile& in, DecodedImage& image, std::vector<png_bytep>& rows, const std::string& path) {
  if (setjmp(png_jmpbuf(in.png))) return false;
  png_init_io(in.png, in.file);
  png_read_info(in.png, in.info);
  const png_uint_32 width = png_get_image_width(in.png, in.info);
  const png_uint_32 height = png_get_image_height(in.png, in.info);
  checkImageSize(path, width, height);

  // Palettes, low bit depths and tRNS become 8-bit gray or RGB with alpha; alpha moves first.
  png_set_expand(in.png);
  png_set_strip_16(in.png);
  png_set_swap_alpha(in.png);
  png_set_interlace_handling(in.png);
  png_read_update_info(in.png, in.info);

  const png_byte type = png_get_color_type(in.png, in.info);
  image.width = std::int32_t(width);
  image.height = std::int32_t(height);
  image.model = (type & PNG_COLOR_MASK_COLOR) ? DecodedImage::Model::Rgb : DecodedImage::Model::Gray;
  image.alpha = (type & PNG_COLOR_MASK_ALPHA) != 0;
  const size_t rowBytes = png_get_rowbytes(in.png, in.info);
  if (rowBytes != size_t(width) * size_t(image.channelCount())) {
    in.error = "unexpected row size";
    return false;
  }

  png_uint_32 xPerUnit = 0, yPerUnit = 0;
  int unit = PNG_RESOLUTION_UNKNOWN;
  if (png_get_pHYs(in.png, in.info, &xPerUnit, &yPerUnit, &unit) && unit == PNG_RESOLUTION_METER && xPerUnit &&
      yPerUnit) {
    image.ppiX = double(xPerUnit) * 0.0254;
    image.ppiY = double(yPerUnit) * 0.0254;
  }

  image.pixels.resize(rowBytes * height);
  rows.resize(height);
  for (png_uint_32 y = 0; y < height; ++y) rows[y] = image.pixels.data() + size_t(y) * rowBytes;
  png_read_image(in.png, rows.data());
  png_read_end(in.png, nullptr);
  return true;
}

}  // namespace

DecodedImage readPngImage(const std::string& path) {
  PngFile in;
  in.file = std::fopen(path.c_str(), "rb");
  if (!in.file) throw IoError(path, "cannot be opened");
  in.png = png_create_read_struct(PNG_LIBPNG_VER_STRING, &in, onError, onWarning);
  if (in.png) in.info = png_create_info_struct(in.png);
  if (!in.png || !in.info) throw IoError(path, "PNG: out of memory");

  DecodedImage image;
  std::vector<png_bytep> rows;
  if (!readInto(in, image, rows, path)) throw IoError(path, "PNG: " + in.error);
  return image;
}

}  // namespace refhost::io
