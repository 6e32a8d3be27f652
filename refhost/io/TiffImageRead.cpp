#include <tiffio.h>

#include <cstdarg>
#include <cstdio>
#include <cstring>
#include <memory>
#include <string>
#include <vector>

#include "refhost/io/DecodedImage.h"
#include "refhost/io/IoError.h"

// TIFF files in their own colour model. Strips of 8- or 16-bit gray, RGB, CMYK and multi-ink
// samples are read as they are; anything else (palettes, tiles, YCbCr, other depths) through
// libtiff's RGBA reader, as gray or RGB.
namespace refhost::io {

namespace {

struct TiffCloser {
  void operator()(TIFF* t) const { TIFFClose(t); }
};
struct OptionsFree {
  void operator()(TIFFOpenOptions* o) const { TIFFOpenOptionsFree(o); }
};

int onError(TIFF*, void* user, const char*, const char* format, va_list args) {
  char text[512];
  std::vsnprintf(text, sizeof text, format, args);
  auto& error = *static_cast<std::string*>(user);
  if (error.empty()) error = text;
  return 1;
}

int onWarning(TIFF*, void*, const char*, const char*, va_list) { return 1; }

struct Layout {
  uint16_t photometric = PHOTOMETRIC_MINISBLACK;
  uint16_t bits = 1;
  uint16_t samples = 1;
  uint16_t planar = PLANARCONFIG_CONTIG;
  uint16_t format = SAMPLEFORMAT_UINT;
  uint16_t extraCount = 0;
  uint16_t* extra = nullptr;
  uint16_t inkset = INKSET_CMYK;
  bool alphaExtra = false;
  bool associated = false;
};

Layout layoutOf(TIFF* t) {
  Layout l;
  TIFFGetFieldDefaulted(t, TIFFTAG_BITSPERSAMPLE, &l.bits);
  TIFFGetFieldDefaulted(t, TIFFTAG_SAMPLESPERPIXEL, &l.samples);
  TIFFGetFieldDefaulted(t, TIFFTAG_PLANARCONFIG, &l.planar);
  TIFFGetFieldDefaulted(t, TIFFTAG_SAMPLEFORMAT, &l.format);
  TIFFGetFieldDefaulted(t, TIFFTAG_EXTRASAMPLES, &l.extraCount, &l.extra);
  TIFFGetFieldDefaulted(t, TIFFTAG_INKSET, &l.inkset);
  if (!TIFFGetField(t, TIFFTAG_PHOTOMETRIC, &l.photometric)) l.photometric = PHOTOMETRIC_MINISBLACK;
  if (l.extraCount > 0 && l.extra) {
    l.alphaExtra = l.extra[0] == EXTRASAMPLE_ASSOCALPHA || l.extra[0] == EXTRASAMPLE_UNASSALPHA;
    l.associated = l.extra[0] == EXTRASAMPLE_ASSOCALPHA;
  }
  return l;
}

// The resolution tags in pixels per inch; a unit of "none" says nothing about size.
void readResolution(TIFF* t, DecodedImage& image) {
  float x = 0, y = 0;
  uint16_t unit = RESUNIT_INCH;
  TIFFGetFieldDefaulted(t, TIFFTAG_RESOLUTIONUNIT, &unit);
  if (!TIFFGetField(t, TIFFTAG_XRESOLUTION, &x) || x <= 0 || unit == RESUNIT_NONE) return;
  if (!TIFFGetField(t, TIFFTAG_YRESOLUTION, &y) || y <= 0) y = x;
  const double scale = unit == RESUNIT_CENTIMETER ? 2.54 : 1.0;
  image.ppiX = x * scale;
  image.ppiY = y * scale;
}

std::vector<std::string> inkNames(TIFF* t, int colours) {
  std::vector<std::string> names;
  const char* packed = nullptr;
  if (TIFFGetField(t, TIFFTAG_INKNAMES, &packed) && packed) {
    // The tag holds NUL-separated names; libtiff checked that there are as many as inks.
    const char* p = packed;
    for (int i = 0; i < colours; ++i) {
      names.emplace_back(p);
      p += names.back().size() + 1;
    }
  }
  for (int i = int(names.size()); i < colours; ++i) names.push_back("Ink " + std::to_string(i + 1));
  return names;
}

bool readsSamplesDirectly(TIFF* t, const Layout& l) {
  if (TIFFIsTiled(t) || (l.bits != 8 && l.bits != 16) || l.format != SAMPLEFORMAT_UINT) return false;
  const int colours = int(l.samples) - int(l.extraCount);
  switch (l.photometric) {
    case PHOTOMETRIC_MINISBLACK:
    case PHOTOMETRIC_MINISWHITE: return colours == 1;
    case PHOTOMETRIC_RGB: return colours == 3;
    case PHOTOMETRIC_SEPARATED: return colours >= 1 && colours <= 31;
    default: return false;
  }
}

uint8_t to8(const uint8_t* sample, uint16_t bits) {
  if (bits == 8) return *sample;
  uint16_t wide = 0;
  std::memcpy(&wide, sample, 2);  // libtiff hands 16-bit samples in host order
  return uint8_t((uint32_t(wide) * 255 + 32767) / 65535);
}

// Associated alpha is multiplied into the colours; rasters keep them straight.
void unpremultiply(DecodedImage& image) {
  const int n = image.channelCount();
  for (size_t i = 0; i < image.pixels.size(); i += size_t(n)) {
    const uint32_t a = image.pixels[i];
    if (a == 0 || a == 255) continue;
    for (int c = 1; c < n; ++c) {
      const uint32_t v = (uint32_t(image.pixels[i + size_t(c)]) * 255 + a / 2) / a;
      image.pixels[i + size_t(c)] = uint8_t(v > 255 ? 255 : v);
    }
  }
}

void readSamples(TIFF* t, const Layout& l, DecodedImage& image, const std::string& path, const std::string& error) {
  const int colours = int(l.samples) - int(l.extraCount);
  image.alpha = l.alphaExtra;
  if (l.photometric == PHOTOMETRIC_RGB) {
    image.model = DecodedImage::Model::Rgb;
  } else if (l.photometric == PHOTOMETRIC_SEPARATED) {
    const bool cmyk = l.inkset == INKSET_CMYK && colours == 4;
    image.model = cmyk ? DecodedImage::Model::Cmyk : DecodedImage::Model::Inks;
    if (!cmyk) image.inks = inkNames(t, colours);
  }
  const int n = image.channelCount();
  const int first = image.alpha ? 1 : 0;
  const bool invert = l.photometric == PHOTOMETRIC_MINISWHITE;
  const size_t bytesPerSample = l.bits / 8;
  const size_t width = size_t(image.width);
  image.pixels.assign(width * size_t(image.height) * size_t(n), 0);

  std::vector<uint8_t> line(size_t(TIFFScanlineSize(t)));
  // Contiguous files have one plane holding every sample; separate ones a plane per sample.
  const int planes = l.planar == PLANARCONFIG_SEPARATE ? int(l.samples) : 1;
  const int perPixel = l.planar == PLANARCONFIG_SEPARATE ? 1 : int(l.samples);
  if (line.size() < width * bytesPerSample * size_t(perPixel)) throw IoError(path, "TIFF: unexpected row size");
  for (int plane = 0; plane < planes; ++plane) {
    for (int32_t y = 0; y < image.height; ++y) {
      if (TIFFReadScanline(t, line.data(), uint32_t(y), uint16_t(plane)) < 0)
        throw IoError(path, "TIFF: " + (error.empty() ? std::string("cannot read row ") + std::to_string(y) : error));
      uint8_t* out = image.pixels.data() + size_t(y) * width * size_t(n);
      for (size_t x = 0; x < width; ++x, out += n) {
        for (int k = 0; k < perPixel; ++k) {
          const int sample = plane + k;
          int channel = -1;
          if (sample < colours) channel = first + sample;
          else if (sample == colours && image.alpha) channel = 0;
          if (channel < 0) continue;
          uint8_t v = to8(line.data() + (x * size_t(perPixel) + size_t(k)) * bytesPerSample, l.bits);
          if (invert && channel >= first) v = uint8_t(255 - v);
          out[channel] = v;
        }
      }
    }
  }
  if (l.associated) unpremultiply(image);
}

void readThroughRgba(TIFF* t, const Layout& l, DecodedImage& image, const std::string& path, const std::string& error) {
  const bool gray = l.photometric == PHOTOMETRIC_MINISBLACK || l.photometric == PHOTOMETRIC_MINISWHITE;
  image.model = gray ? DecodedImage::Model::Gray : DecodedImage::Model::Rgb;
  image.alpha = l.alphaExtra;
  const size_t count = size_t(image.width) * size_t(image.height);
  std::vector<uint32_t> packed(count);
  if (!TIFFReadRGBAImageOriented(t, uint32_t(image.width), uint32_t(image.height), packed.data(), ORIENTATION_TOPLEFT, 0))
    throw IoError(path, "TIFF: " + (error.empty() ? std::string("this kind of TIFF cannot be read") : error));
  const int n = image.channelCount();
  image.pixels.resize(count * size_t(n));
  uint8_t* out = image.pixels.data();
  for (size_t i = 0; i < count; ++i, out += n) {
    const uint32_t p = packed[i];
    int c = 0;
    if (image.alpha) out[c++] = uint8_t(TIFFGetA(p));
    out[c++] = uint8_t(TIFFGetR(p));
    if (!gray) {
      out[c++] = uint8_t(TIFFGetG(p));
      out[c++] = uint8_t(TIFFGetB(p));
    }
  }
  // The RGBA reader hands out premultiplied colours, whatever the file stored.
  if (image.alpha) unpremultiply(image);
}

}  // namespace

DecodedImage readTiffImage(const std::string& path) {
  std::string error;
  std::unique_ptr<TIFFOpenOptions, OptionsFree> options(TIFFOpenOptionsAlloc());
  if (!options) throw IoError(path, "TIFF: out of memory");
  TIFFOpenOptionsSetErrorHandlerExtR(options.get(), onError, &error);
  TIFFOpenOptionsSetWarningHandlerExtR(options.get(), onWarning, nullptr);
  std::unique_ptr<TIFF, TiffCloser> tiff(TIFFOpenExt(path.c_str(), "r", options.get()));
  if (!tiff) throw IoError(path, "TIFF: " + (error.empty() ? std::string("cannot be opened") : error));
  TIFF* t = tiff.get();

  uint32_t width = 0, height = 0;
  TIFFGetField(t, TIFFTAG_IMAGEWIDTH, &width);
  TIFFGetField(t, TIFFTAG_IMAGELENGTH, &height);
  checkImageSize(path, width, height);
  DecodedImage image;
  image.width = int32_t(width);
  image.height = int32_t(height);
  readResolution(t, image);
  const Layout layout = layoutOf(t);
  if (readsSamplesDirectly(t, layout))
    readSamples(t, layout, image, path, error);
  else
    readThroughRgba(t, layout, image, path, error);
  return image;
}

}  // namespace refhost::io
