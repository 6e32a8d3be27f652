#include "refhost/io/export/AtomicOutput.h"
#include "refhost/io/export/RasterExport.h"

#include "refhost/document/Document.h"
#include "refhost/render/ColorSpace.h"

#include <tiffio.h>

#include <cstring>
#include <memory>
#include <vector>

namespace refhost::io {

namespace {

using render::Channel;

struct TiffCloser {
  void operator()(TIFF* t) const { TIFFClose(t); }
};

// The ink a separated channel prints with; light channels (gray, RGB) are written as the ink
// that removes them (255 - value).
std::string inkName(const Channel& c, const Document* doc, bool* invert) {
  using K = Channel::Kind;
  *invert = c.kind == K::Gray || c.kind == K::Red || c.kind == K::Green || c.kind == K::Blue;
  switch (c.kind) {
    case K::Cyan:
    case K::Red:
      return "Cyan";
    case K::Magenta:
    case K::Green:
      return "Magenta";
    case K::Yellow:
    case K::Blue:
      return "Yellow";
    case K::Black:
    case K::Gray:
      return "Black";
    case K::Spot: {
      const CustomColor* cc = doc ? doc->customColor(c.spot) : nullptr;
      return cc && !cc->name.empty() ? cc->name : "Spot " + std::to_string(c.spot);
    }
    case K::Alpha:
      break;
  }
  return "Alpha";
}

}  // namespace

void exportTiff(const RasterSource& source, const std::string& path) {
  if (!source.raster || !source.raster->pixels() || source.raster->width() <= 0 || source.raster->height() <= 0)
    throw ExportError("the raster has no pixels");
  const RasterData& r = *source.raster;
  const RasterRecord& rec = r.record;
  const std::uint32_t width = static_cast<std::uint32_t>(r.width()), height = static_cast<std::uint32_t>(r.height());
  const double ppi = rasterResolution(r);

  AtomicOutput out(path);
  std::unique_ptr<TIFF, TiffCloser> tif(TIFFFdOpen(out.fd(), out.temporaryPath().c_str(), "w"));
  if (!tif) throw ExportError(path + ": cannot write TIFF");
  out.descriptorClosed();
  TIFF* t = tif.get();
  TIFFSetField(t, TIFFTAG_IMAGEWIDTH, width);
  TIFFSetField(t, TIFFTAG_IMAGELENGTH, height);
  TIFFSetField(t, TIFFTAG_PLANARCONFIG, PLANARCONFIG_CONTIG);
  TIFFSetField(t, TIFFTAG_COMPRESSION, COMPRESSION_LZW);
  TIFFSetField(t, TIFFTAG_XRESOLUTION, static_cast<float>(ppi));
  TIFFSetField(t, TIFFTAG_YRESOLUTION, static_cast<float>(ppi));
  TIFFSetField(t, TIFFTAG_RESOLUTIONUNIT, RESUNIT_INCH);
  TIFFSetField(t, TIFFTAG_ROWSPERSTRIP, TIFFDefaultStripSize(t, 0));

  bool ok = true;
  if (rec.bitsPerPixel == 1) {
    // Raster bitmaps store black as 1, which is what min-is-white means.
    TIFFSetField(t, TIFFTAG_BITSPERSAMPLE, 1);
    TIFFSetField(t, TIFFTAG_SAMPLESPERPIXEL, 1);
    TIFFSetField(t, TIFFTAG_PHOTOMETRIC, PHOTOMETRIC_MINISWHITE);
    std::vector<std::uint8_t> row((width + 7) / 8);
    for (std::uint32_t y = 0; y < height && ok; ++y) {
      std::memcpy(row.data(), r.pixels() + static_cast<std::size_t>(y) * static_cast<std::size_t>(rec.byteWidth), row.size());
      ok = TIFFWriteScanline(t, row.data(), y, 0) >= 0;
    }
  } else {
    render::ColorSpace::Ptr space;
    try {
      space = render::ColorSpace::fromRaster(rec, r.channels, source.spotFill);
    } catch (const std::exception& e) {
      throw ExportError(path + ": " + e.what());
    }
    const bool alpha = space->hasAlpha();
    const int n = space->channelCount();
    const int colors = n - (alpha ? 1 : 0);
    if (rec.bitsPerPixel != 8 * n) throw ExportError(path + ": the raster's channels do not match its depth");
    TIFFSetField(t, TIFFTAG_BITSPERSAMPLE, 8);
    TIFFSetField(t, TIFFTAG_SAMPLESPERPIXEL, n);
    // The extra sample comes first: libtiff checks the ink names against the colour samples.
    if (alpha) {
      const std::uint16_t extra[1] = {EXTRASAMPLE_UNASSALPHA};
      TIFFSetField(t, TIFFTAG_EXTRASAMPLES, 1, extra);
    }
    std::vector<bool> invert(static_cast<std::size_t>(n), false);
    const render::Family family = space->family();
    if (family == render::Family::Gray) {
      TIFFSetField(t, TIFFTAG_PHOTOMETRIC, PHOTOMETRIC_MINISBLACK);
    } else if (family == render::Family::Rgb) {
      TIFFSetField(t, TIFFTAG_PHOTOMETRIC, PHOTOMETRIC_RGB);
    } else if (family == render::Family::Cmyk && colors == 4) {
      TIFFSetField(t, TIFFTAG_PHOTOMETRIC, PHOTOMETRIC_SEPARATED);
      TIFFSetField(t, TIFFTAG_INKSET, INKSET_CMYK);
    } else {
      TIFFSetField(t, TIFFTAG_PHOTOMETRIC, PHOTOMETRIC_SEPARATED);
      TIFFSetField(t, TIFFTAG_INKSET, INKSET_MULTIINK);
      TIFFSetField(t, TIFFTAG_NUMBEROFINKS, colors);
      std::string names;
      int k = 0;
      for (const Channel& c : space->channels()) {
        if (c.kind == Channel::Kind::Alpha) {
          ++k;
          continue;
        }
        bool inv = false;
        names += inkName(c, source.document, &inv);
        names.push_back('\0');
        invert[static_cast<std::size_t>(k++)] = inv;
      }
      TIFFSetField(t, TIFFTAG_INKNAMES, static_cast<int>(names.size()), names.data());
    }
    std::vector<std::uint8_t> row(static_cast<std::size_t>(width) * static_cast<std::size_t>(n));
    for (std::uint32_t y = 0; y < height && ok; ++y) {
      const std::uint8_t* s = r.pixels() + static_cast<std::size_t>(y) * static_cast<std::size_t>(rec.byteWidth);
      std::uint8_t* d = row.data();
      for (std::uint32_t x = 0; x < width; ++x, s += n, d += n) {
        // Alpha first in the raster, after the colour samples in TIFF.
        const std::uint8_t* colour = s + (alpha ? 1 : 0);
        for (int c = 0; c < colors; ++c) {
          const bool inv = invert[static_cast<std::size_t>(c + (alpha ? 1 : 0))];
          d[c] = inv ? static_cast<std::uint8_t>(255 - colour[c]) : colour[c];
        }
        if (alpha) d[colors] = s[0];
      }
      ok = TIFFWriteScanline(t, row.data(), y, 0) >= 0;
    }
  }
  if (!ok || !TIFFFlush(t)) throw ExportError(path + ": TIFF encoding failed");
  tif.reset();
  out.commit();
}

}  // namespace refhost::io
