#include "ImageFiles.h"

#include <png.h>
#include <tiffio.h>

#include <csetjmp>
#include <cstdio>
#include <cstring>
#include <stdexcept>

namespace test_images {

namespace {

bool pngRows(png_structp png, png_infop info, int width, int height, const PngSpec& spec,
             std::vector<png_bytep>& rows) {
  if (setjmp(png_jmpbuf(png))) return false;
  png_set_IHDR(png, info, png_uint_32(width), png_uint_32(height), spec.bitDepth, spec.colorType, PNG_INTERLACE_NONE,
               PNG_COMPRESSION_TYPE_DEFAULT, PNG_FILTER_TYPE_DEFAULT);
  if (!spec.palette.empty()) {
    std::vector<png_color> colors;
    for (size_t i = 0; i + 2 < spec.palette.size(); i += 3)
      colors.push_back(png_color{spec.palette[i], spec.palette[i + 1], spec.palette[i + 2]});
    png_set_PLTE(png, info, colors.data(), int(colors.size()));
  }
  if (spec.pixelsPerMetre)
    png_set_pHYs(png, info, spec.pixelsPerMetre, spec.pixelsPerMetre, PNG_RESOLUTION_METER);
  png_write_info(png, info);
  png_write_image(png, rows.data());
  png_write_end(png, nullptr);
  return true;
}

}  // namespace

void writePng(const std::string& path, int width, int height, const PngSpec& spec,
              const std::vector<uint16_t>& samples) {
  const size_t perRow = samples.size() / size_t(height);
  const size_t bytesPerSample = spec.bitDepth == 16 ? 2 : 1;
  std::vector<uint8_t> bytes(samples.size() * bytesPerSample);
  for (size_t i = 0; i < samples.size(); ++i) {
    if (bytesPerSample == 2) {
      bytes[2 * i] = uint8_t(samples[i] >> 8);
      bytes[2 * i + 1] = uint8_t(samples[i]);
    } else {
      bytes[i] = uint8_t(samples[i]);
    }
  }
  std::vector<png_bytep> rows(static_cast<size_t>(height));
  for (int y = 0; y < height; ++y) rows[size_t(y)] = bytes.data() + size_t(y) * perRow * bytesPerSample;

  std::FILE* file = std::fopen(path.c_str(), "wb");
  if (!file) throw std::runtime_error("cannot write " + path);
  png_structp png = png_create_write_struct(PNG_LIBPNG_VER_STRING, nullptr, nullptr, nullptr);
  png_infop info = png_create_info_struct(png);
  png_init_io(png, file);
  const bool ok = pngRows(png, info, width, height, spec, rows);
  png_destroy_write_struct(&png, &info);
  std::fclose(file);
  if (!ok) throw std::runtime_error("libpng refused " + path);
}

void writeTiff(const std::string& path, int width, int height, const TiffSpec& spec,
               const std::vector<uint16_t>& samples) {
  TIFF* t = TIFFOpen(path.c_str(), "w");
  if (!t) throw std::runtime_error("cannot write " + path);
  TIFFSetField(t, TIFFTAG_IMAGEWIDTH, uint32_t(width));
  TIFFSetField(t, TIFFTAG_IMAGELENGTH, uint32_t(height));
  TIFFSetField(t, TIFFTAG_BITSPERSAMPLE, spec.bitsPerSample);
  TIFFSetField(t, TIFFTAG_SAMPLESPERPIXEL, spec.samplesPerPixel);
  TIFFSetField(t, TIFFTAG_PLANARCONFIG, PLANARCONFIG_CONTIG);
  TIFFSetField(t, TIFFTAG_PHOTOMETRIC, spec.photometric);
  if (spec.extraSample) {
    const uint16_t extra[1] = {spec.extraSample};
    TIFFSetField(t, TIFFTAG_EXTRASAMPLES, 1, extra);
  }
  if (spec.inkset) TIFFSetField(t, TIFFTAG_INKSET, spec.inkset);
  if (!spec.inkNames.empty()) {
    TIFFSetField(t, TIFFTAG_NUMBEROFINKS, uint16_t(spec.samplesPerPixel - (spec.extraSample ? 1 : 0)));
    TIFFSetField(t, TIFFTAG_INKNAMES, int(spec.inkNames.size()), spec.inkNames.data());
  }
  if (spec.resolution > 0) {
    TIFFSetField(t, TIFFTAG_XRESOLUTION, spec.resolution);
    TIFFSetField(t, TIFFTAG_YRESOLUTION, spec.resolution);
    TIFFSetField(t, TIFFTAG_RESOLUTIONUNIT, spec.resolutionUnit);
  }
  const size_t bytesPerSample = spec.bitsPerSample / 8;
  std::vector<uint8_t> bytes(samples.size() * bytesPerSample);
  for (size_t i = 0; i < samples.size(); ++i) {
    if (bytesPerSample == 2) {
      const uint16_t v = samples[i];
      std::memcpy(&bytes[2 * i], &v, 2);
    } else {
      bytes[i] = uint8_t(samples[i]);
    }
  }
  const size_t rowBytes = bytes.size() / size_t(height);
  bool ok = true;
  if (spec.tiled) {
    TIFFSetField(t, TIFFTAG_TILEWIDTH, 16u);
    TIFFSetField(t, TIFFTAG_TILELENGTH, 16u);
    // One tile holds the whole (at most 16 x 16) image.
    std::vector<uint8_t> tile(16 * 16 * spec.samplesPerPixel * bytesPerSample, 0);
    for (int y = 0; y < height; ++y) std::memcpy(&tile[size_t(y) * 16 * spec.samplesPerPixel * bytesPerSample],
                                                 &bytes[size_t(y) * rowBytes], rowBytes);
    ok = TIFFWriteTile(t, tile.data(), 0, 0, 0, 0) >= 0;
  } else {
    TIFFSetField(t, TIFFTAG_ROWSPERSTRIP, uint32_t(height));
    for (int y = 0; y < height && ok; ++y) ok = TIFFWriteScanline(t, &bytes[size_t(y) * rowBytes], uint32_t(y), 0) >= 0;
  }
  TIFFClose(t);
  if (!ok) throw std::runtime_error("libtiff refused " + path);
}

}  // namespace test_images
