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

// Rows are handed to libpng one at a time, so no second copy of the raster is ever made: rows that
// are stored as PNG wants them are passed in place, the others are converted into one row buffer.
struct PngImage {
  std::int32_t width = 0, height = 0;
  int colorType = PNG_COLOR_TYPE_GRAY;
  int bitDepth = 8;
  bool invertMono = false;
  bool whiteTransparent = false;
  double ppi = 72.0;
  // Row y as PNG stores it; may use `scratch`, which holds one PNG row.
  const std::uint8_t* (*row)(const void* context, std::int32_t y, std::uint8_t* scratch) = nullptr;
  const void* context = nullptr;
  std::uint8_t* scratch = nullptr;
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
  // Paeth alone instead of trying all five filters on every row: about a third less encoding time,
  // files within 1 % of the adaptive choice on rendered art (bench/peers/PngEncodeTime.cpp).
  if (image.bitDepth == 8) png_set_filter(png, PNG_FILTER_TYPE_BASE, PNG_FILTER_PAETH);
  png_write_info(png, info);
  if (image.invertMono) png_set_invert_mono(png);
  // libpng copies each row before filtering it, so rows in the raster itself are only read.
  for (std::int32_t y = 0; y < image.height; ++y)
    png_write_row(png, const_cast<png_bytep>(image.row(image.context, y, image.scratch)));
  png_write_end(png, info);
  png_destroy_write_struct(&png, &info);
  return true;
}

void writePng(const std::string& path, const PngImage& image) {
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

struct RasterRows {
  const std::uint8_t* pixels;
  std::size_t byteWidth;
  std::int32_t width;
  int channels;  // with alpha, which comes first in the raster and last in PNG
};

const std::uint8_t* rasterRowInPlace(const void* context, std::int32_t y, std::uint8_t*) {
  const auto& r = *static_cast<const RasterRows*>(context);
  return r.pixels + static_cast<std::size_t>(y) * r.byteWidth;
}

const std::uint8_t* rasterRowAlphaLast(const void* context, std::int32_t y, std::uint8_t* scratch) {
  const auto& r = *static_cast<const RasterRows*>(context);
  const std::uint8_t* s = r.pixels + static_cast<std::size_t>(y) * r.byteWidth;
  std::uint8_t* d = scratch;
  const int n = r.channels;
  for (std::int32_t x = 0; x < r.width; ++x, s += n, d += n) {
    std::memcpy(d, s + 1, static_cast<std::size_t>(n - 1));
    d[n - 1] = s[0];
  }
  return scratch;
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
  RasterRows rows{r.pixels(), static_cast<std::size_t>(rec.byteWidth), image.width, 0};
  image.context = &rows;
  image.row = rasterRowInPlace;
  if (rec.bitsPerPixel == 1) {
    // Raster bitmaps store black as 1; PNG gray stores black as 0.
    image.bitDepth = 1;
    image.invertMono = true;
    image.whiteTransparent = (rec.flags & 0x2) != 0;
    writePng(path, image);
    return;
  }
  const int family = rec.colorSpace & 0x0F;
  const bool alpha = (rec.colorSpace & 0x10) != 0;
  const bool spotFlagged = (rec.flags & 0x8) != 0 && source.spotFill != 0;
  if ((family != 0 && family != 1) || spotFlagged || !r.channels.empty())
    throw ExportError(path + ": PNG holds gray and RGB only; export this raster as TIFF or as a preview");
  rows.channels = (family == 0 ? 1 : 3) + (alpha ? 1 : 0);
  image.colorType = family == 0 ? (alpha ? PNG_COLOR_TYPE_GRAY_ALPHA : PNG_COLOR_TYPE_GRAY)
                                : (alpha ? PNG_COLOR_TYPE_RGB_ALPHA : PNG_COLOR_TYPE_RGB);
  std::vector<std::uint8_t> scratch;
  if (alpha) {
    scratch.resize(static_cast<std::size_t>(image.width) * static_cast<std::size_t>(rows.channels));
    image.scratch = scratch.data();
    image.row = rasterRowAlphaLast;
  }
  writePng(path, image);
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
  struct Preview {
    render::ImageSampler* sampler;
    std::int32_t width;
    bool alpha;
    std::uint8_t* sampled;  // alpha-first RGB, 4 bytes a pixel
  };
  std::vector<std::uint8_t> sampled(static_cast<std::size_t>(image.width) * 4);
  std::vector<std::uint8_t> scratch(static_cast<std::size_t>(image.width) * (alpha ? 4 : 3));
  const Preview preview{&sampler, image.width, alpha, sampled.data()};
  image.context = &preview;
  image.scratch = scratch.data();
  image.row = [](const void* context, std::int32_t y, std::uint8_t* d) -> const std::uint8_t* {
    const auto& p = *static_cast<const Preview*>(context);
    p.sampler->sampleRow(y, 0, p.width, p.sampled);
    std::uint8_t* out = d;
    for (std::int32_t x = 0; x < p.width; ++x) {
      const std::uint8_t* s = p.sampled + static_cast<std::size_t>(x) * 4;
      *d++ = s[1];
      *d++ = s[2];
      *d++ = s[3];
      if (p.alpha) *d++ = s[0];
    }
    return out;
  };
  writePng(path, image);
}

}  // namespace refhost::io
