#include "refhost/io/export/AtomicOutput.h"
#include "refhost/io/export/RasterExport.h"

#include "refhost/render/ColorSpace.h"
#include "refhost/render/ImageSampler.h"

#include <png.h>

#include <cmath>
#include <csetjmp>
#include <cstdio>
#include <cstring>
#include <unistd.h>
#include <vector>

namespace refhost::io {

namespace {

struct PngImage {
  std::int32_t width = 0, height = 0;
  int colorType = PNG_COLOR_TYPE_GRAY;
  int bitDepth = 8;
  bool invertMono = false;
  bool whiteTransparent = false;
  double ppi = 72.0;
  std::vector<png_bytep> rows;
};

// libpng reports errors by longjmp, so nothing with a destructor lives in this frame.
bool writePngFile(std::FILE* file, const PngImage& image) {
  png_structp png = png_create_write_struct(PNG_LIBPNG_VER_STRING, nullptr, nullptr, nullptr);
  if (!png) return false;
  png_infop info = png_create_info_struct(png);
  if (!info || setjmp(png_jmpbuf(png))) {
    png_destroy_write_struct(&png, info ? &info : nullptr);
    return false;
  }
  png_init_io(png, file);
  png_set_IHDR(png, info, static_cast<png_uint_32>(image.width), static_cast<png_uint_32>(image.height), image.bitDepth,
               image.colorType, PNG_INTERLACE_NONE, PNG_COMPRESSION_TYPE_DEFAULT, PNG_FILTER_TYPE_DEFAULT);
  const png_uint_32 perMetre = static_cast<png_uint_32>(std::lround(image.ppi / 0.0254));
  png_set_pHYs(png, info, perMetre, perMetre, PNG_RESOLUTION_METER);
  if (image.whiteTransparent) {
    png_color_16 white{};
    white.gray = 1;
    png_set_tRNS(png, info, nullptr, 0, &white);
  }
  png_write_info(png, info);
  if (image.invertMono) png_set_invert_mono(png);
  png_write_image(png, const_cast<png_bytepp>(image.rows.data()));
  png_write_end(png, info);
  png_destroy_write_struct(&png, &info);
  return true;
}

void writePng(const std::string& path, PngImage& image, std::vector<std::uint8_t>& pixels, std::size_t rowBytes) {
  image.rows.resize(static_cast<std::size_t>(image.height));
  for (std::int32_t y = 0; y < image.height; ++y) image.rows[static_cast<std::size_t>(y)] = pixels.data() + static_cast<std::size_t>(y) * rowBytes;
  AtomicOutput out(path);
  std::FILE* file = ::fdopen(out.fd(), "wb");
  if (!file) throw ExportError(path + ": cannot write");
  out.descriptorClosed();
  const bool ok = writePngFile(file, image);
  const bool flushed = std::fflush(file) == 0 && ::fsync(::fileno(file)) == 0;
  std::fclose(file);
  if (!ok || !flushed) throw ExportError(path + ": PNG encoding failed");
  out.commit();
}

void checkSource(const RasterSource& s) {
  if (!s.raster || !s.raster->pixels() || s.raster->width() <= 0 || s.raster->height() <= 0)
    throw ExportError("the raster has no pixels");
}

}  // namespace

void exportPng(const RasterSource& source, const std::string& path) {
  checkSource(source);
  const RasterData& r = *source.raster;
  const RasterRecord& rec = r.record;
  PngImage image;
  image.width = r.width();
  image.height = r.height();
  image.ppi = rasterResolution(r);
  const auto* in = r.pixels();
  std::vector<std::uint8_t> pixels;
  std::size_t rowBytes;
  if (rec.bitsPerPixel == 1) {
    // Raster bitmaps store black as 1; PNG gray stores black as 0.
    image.bitDepth = 1;
    image.invertMono = true;
    image.whiteTransparent = (rec.flags & 0x2) != 0;
    rowBytes = static_cast<std::size_t>(image.width + 7) / 8;
    pixels.resize(rowBytes * static_cast<std::size_t>(image.height));
    for (std::int32_t y = 0; y < image.height; ++y)
      std::memcpy(&pixels[static_cast<std::size_t>(y) * rowBytes], in + static_cast<std::size_t>(y) * static_cast<std::size_t>(rec.byteWidth), rowBytes);
    writePng(path, image, pixels, rowBytes);
    return;
  }
  const int family = rec.colorSpace & 0x0F;
  const bool alpha = (rec.colorSpace & 0x10) != 0;
  const bool spotFlagged = (rec.flags & 0x8) != 0 && source.spotFill != 0;
  if ((family != 0 && family != 1) || spotFlagged || !r.channels.empty())
    throw ExportError(path + ": PNG holds gray and RGB only; export this raster as TIFF or as a preview");
  const int channels = (family == 0 ? 1 : 3) + (alpha ? 1 : 0);
  image.colorType = family == 0 ? (alpha ? PNG_COLOR_TYPE_GRAY_ALPHA : PNG_COLOR_TYPE_GRAY)
                                : (alpha ? PNG_COLOR_TYPE_RGB_ALPHA : PNG_COLOR_TYPE_RGB);
  rowBytes = static_cast<std::size_t>(image.width) * static_cast<std::size_t>(channels);
  pixels.resize(rowBytes * static_cast<std::size_t>(image.height));
  for (std::int32_t y = 0; y < image.height; ++y) {
    const std::uint8_t* s = in + static_cast<std::size_t>(y) * static_cast<std::size_t>(rec.byteWidth);
    std::uint8_t* d = &pixels[static_cast<std::size_t>(y) * rowBytes];
    if (!alpha) {
      std::memcpy(d, s, rowBytes);
      continue;
    }
    // Alpha comes first in the raster and last in PNG.
    for (std::int32_t x = 0; x < image.width; ++x, s += channels, d += channels) {
      std::memcpy(d, s + 1, static_cast<std::size_t>(channels - 1));
      d[channels - 1] = s[0];
    }
  }
  writePng(path, image, pixels, rowBytes);
}

void exportPreviewPng(const RasterSource& source, const std::string& path) {
  checkSource(source);
  const RasterData& r = *source.raster;
  const bool alpha = (r.record.colorSpace & 0x10) != 0 || (r.record.bitsPerPixel == 1 && (r.record.flags & 0x2));
  // Sampling the raster with its own pixel grid as the device converts every pixel once.
  const Matrix pixelToDoc = r.matrix * Matrix{1, 0, 0, -1, 0, 0};
  if (!pixelToDoc.isInvertible()) throw ExportError(path + ": the raster's matrix is singular");
  const render::ColorSpace::Ptr rgb = render::ColorSpace::process(render::Family::Rgb, false);
  render::ImageSampler sampler;
  if (!sampler.prepareRaster(r, source.spotFill, pixelToDoc.inverted(), *rgb, source.document))
    throw ExportError(path + ": the raster's pixels cannot be read");
  PngImage image;
  image.width = r.width();
  image.height = r.height();
  image.ppi = rasterResolution(r);
  image.colorType = alpha ? PNG_COLOR_TYPE_RGB_ALPHA : PNG_COLOR_TYPE_RGB;
  const int channels = alpha ? 4 : 3;
  const std::size_t rowBytes = static_cast<std::size_t>(image.width) * static_cast<std::size_t>(channels);
  std::vector<std::uint8_t> pixels(rowBytes * static_cast<std::size_t>(image.height));
  std::vector<std::uint8_t> row(static_cast<std::size_t>(image.width) * 4);
  for (std::int32_t y = 0; y < image.height; ++y) {
    sampler.sampleRow(y, 0, image.width, row.data());
    std::uint8_t* d = &pixels[static_cast<std::size_t>(y) * rowBytes];
    for (std::int32_t x = 0; x < image.width; ++x, d += channels) {
      const std::uint8_t* s = &row[static_cast<std::size_t>(x) * 4];
      d[0] = s[1];
      d[1] = s[2];
      d[2] = s[3];
      if (alpha) d[3] = s[0];
    }
  }
  writePng(path, image, pixels, rowBytes);
}

}  // namespace refhost::io
