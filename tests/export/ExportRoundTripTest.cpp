// Exported files read back through libpng and libtiff with the same pixels, ink names and
// resolution; failures leave no file behind.
#include "refhost/document/Document.h"
#include "refhost/io/export/RasterExport.h"
#include "refhost/render/ColorConversion.h"
#include "refhost/render/ColorSpace.h"

#include <gtest/gtest.h>
#include <png.h>
#include <tiffio.h>

#include <cmath>
#include <cstdio>
#include <cstring>
#include <fstream>
#include <functional>
#include <unistd.h>

using namespace refhost;
using namespace refhost::io;

namespace {

constexpr int kW = 13, kH = 7;

std::uint8_t sample(int x, int y, int c) { return static_cast<std::uint8_t>((x * 7 + y * 13 + c * 29) % 256); }

struct TempDir {
  std::string path;
  TempDir() {
    char tmpl[] = "/tmp/export-test-XXXXXX";
    path = ::mkdtemp(tmpl);
  }
  ~TempDir() { std::system(("rm -rf '" + path + "'").c_str()); }
  std::string file(const std::string& name) const { return path + "/" + name; }
};

// A raster of `channels` bytes per pixel (or 1 bit) at `ppi`, filled with the sample pattern.
RasterData makeRaster(std::int16_t colorSpace, int bits, double ppi, std::vector<RasterChannel> channels = {}) {
  RasterData r;
  RasterRecord rec;
  rec.bounds = IntRect{0, 0, kW, kH};
  rec.colorSpace = colorSpace;
  rec.bitsPerPixel = static_cast<std::int16_t>(bits);
  const int rowBytes = bits == 1 ? (kW + 7) / 8 : kW * bits / 8;
  rec.byteWidth = (rowBytes + 3) / 4 * 4;
  r.setRecord(rec);
  r.channels = std::move(channels);
  r.matrix = Matrix{72.0 / ppi, 0, 0, 72.0 / ppi, 10, 500};
  std::uint8_t* p = r.mutablePixels();
  for (int y = 0; y < kH; ++y)
    for (int i = 0; i < rowBytes; ++i) p[y * rec.byteWidth + i] = sample(i, y, 0);
  return r;
}

struct PngRead {
  int width = 0, height = 0, colorType = -1, bitDepth = 0;
  double ppi = 0;
  bool hasTrns = false;
  std::vector<std::vector<std::uint8_t>> rows;
};

// libpng reports errors by longjmp: the file is opened and closed by the caller.
bool readPngFrom(std::FILE* f, PngRead* out) {
  png_structp png = png_create_read_struct(PNG_LIBPNG_VER_STRING, nullptr, nullptr, nullptr);
  png_infop info = png_create_info_struct(png);
  if (setjmp(png_jmpbuf(png))) {
    png_destroy_read_struct(&png, &info, nullptr);
    return false;
  }
  png_init_io(png, f);
  png_read_info(png, info);
  out->width = static_cast<int>(png_get_image_width(png, info));
  out->height = static_cast<int>(png_get_image_height(png, info));
  out->colorType = png_get_color_type(png, info);
  out->bitDepth = png_get_bit_depth(png, info);
  out->hasTrns = png_get_valid(png, info, PNG_INFO_tRNS) != 0;
  png_uint_32 rx = 0, ry = 0;
  int unit = 0;
  if (png_get_pHYs(png, info, &rx, &ry, &unit) && unit == PNG_RESOLUTION_METER) out->ppi = rx * 0.0254;
  const std::size_t rowBytes = png_get_rowbytes(png, info);
  out->rows.assign(static_cast<std::size_t>(out->height), std::vector<std::uint8_t>(rowBytes));
  for (auto& row : out->rows) png_read_row(png, row.data(), nullptr);
  png_destroy_read_struct(&png, &info, nullptr);
  return true;
}

PngRead readPng(const std::string& path) {
  PngRead out;
  std::FILE* f = std::fopen(path.c_str(), "rb");
  if (!f) return out;
  if (!readPngFrom(f, &out)) out = PngRead{};
  std::fclose(f);
  return out;
}

struct TiffRead {
  std::uint32_t width = 0, height = 0;
  std::uint16_t spp = 0, bps = 0, photometric = 0, inkset = 0, extraCount = 0, extra = 0;
  float xres = 0;
  std::vector<std::string> inks;
  std::vector<std::vector<std::uint8_t>> rows;
};

TiffRead readTiff(const std::string& path) {
  TiffRead out;
  TIFF* t = TIFFOpen(path.c_str(), "r");
  if (!t) return out;
  TIFFGetField(t, TIFFTAG_IMAGEWIDTH, &out.width);
  TIFFGetField(t, TIFFTAG_IMAGELENGTH, &out.height);
  TIFFGetFieldDefaulted(t, TIFFTAG_SAMPLESPERPIXEL, &out.spp);
  TIFFGetFieldDefaulted(t, TIFFTAG_BITSPERSAMPLE, &out.bps);
  TIFFGetField(t, TIFFTAG_PHOTOMETRIC, &out.photometric);
  TIFFGetField(t, TIFFTAG_INKSET, &out.inkset);
  TIFFGetField(t, TIFFTAG_XRESOLUTION, &out.xres);
  std::uint16_t* extras = nullptr;
  if (TIFFGetField(t, TIFFTAG_EXTRASAMPLES, &out.extraCount, &extras) && out.extraCount) out.extra = extras[0];
  char* names = nullptr;
  std::uint16_t inks = 0;
  if (TIFFGetField(t, TIFFTAG_INKNAMES, &names) && names && TIFFGetField(t, TIFFTAG_NUMBEROFINKS, &inks)) {
    const char* p = names;
    for (int i = 0; i < inks; ++i) {
      out.inks.emplace_back(p);
      p += std::strlen(p) + 1;
    }
  }
  out.rows.assign(out.height, std::vector<std::uint8_t>(static_cast<std::size_t>(TIFFScanlineSize(t))));
  for (std::uint32_t y = 0; y < out.height; ++y) TIFFReadScanline(t, out.rows[y].data(), y, 0);
  TIFFClose(t);
  return out;
}

bool exists(const std::string& path) { return ::access(path.c_str(), F_OK) == 0; }

struct PngCase {
  const char* name;
  std::int16_t colorSpace;
  int bits;
  int pngColorType;
  int channels;  // bytes per pixel; 0 for 1-bit
};

}  // namespace

TEST(PngExport, PixelsAndResolutionSurviveTheRoundTrip) {
  const PngCase cases[] = {
      {"gray", 0x00, 8, PNG_COLOR_TYPE_GRAY, 1},
      {"gray+alpha", 0x10, 16, PNG_COLOR_TYPE_GRAY_ALPHA, 2},
      {"rgb", 0x01, 24, PNG_COLOR_TYPE_RGB, 3},
      {"rgb+alpha", 0x11, 32, PNG_COLOR_TYPE_RGB_ALPHA, 4},
      {"1-bit", 0x00, 1, PNG_COLOR_TYPE_GRAY, 0},
  };
  TempDir dir;
  for (const PngCase& c : cases) {
    const RasterData raster = makeRaster(c.colorSpace, c.bits, 150.0);
    const std::string path = dir.file(std::string(c.name) + ".png");
    exportPng(RasterSource{&raster, nullptr, 0}, path);
    const PngRead png = readPng(path);
    ASSERT_EQ(png.width, kW) << c.name;
    ASSERT_EQ(png.height, kH) << c.name;
    EXPECT_EQ(png.colorType, c.pngColorType) << c.name;
    // pHYs holds whole pixels per metre: within half of one (0.0127 ppi).
    EXPECT_NEAR(png.ppi, 150.0, 0.0127) << c.name;
    for (int y = 0; y < kH; ++y) {
      const std::uint8_t* src = raster.pixels() + y * raster.record.byteWidth;
      if (c.channels == 0) {
        // PNG gray stores black as 0, raster bitmaps as 1.
        for (int i = 0; i < (kW + 7) / 8; ++i) {
          const std::uint8_t used = static_cast<std::uint8_t>(i == kW / 8 ? 0xFF << (8 - kW % 8) : 0xFF);
          ASSERT_EQ(png.rows[y][i] & used, static_cast<std::uint8_t>(~src[i]) & used) << c.name << " byte " << i << " row " << y;
        }
        continue;
      }
      for (int x = 0; x < kW; ++x)
        for (int k = 0; k < c.channels; ++k) {
          const bool alpha = (c.colorSpace & 0x10) != 0;
          // Alpha first in the raster, last in PNG.
          const int from = alpha ? (k + 1) % c.channels : k;
          ASSERT_EQ(png.rows[y][x * c.channels + k], src[x * c.channels + from]) << c.name << " at " << x << "," << y;
        }
    }
  }
}

TEST(PngExport, MaskBitmapMarksWhiteTransparent) {
  TempDir dir;
  RasterData raster = makeRaster(0x00, 1, 72.0);
  RasterRecord rec = raster.record;
  rec.flags = 0x2;
  raster.record = rec;
  exportPng(RasterSource{&raster, nullptr, 0}, dir.file("mask.png"));
  EXPECT_TRUE(readPng(dir.file("mask.png")).hasTrns);
}

TEST(PngExport, RefusesInkModelsAndLeavesNoFile) {
  TempDir dir;
  for (std::int16_t cs : {std::int16_t(0x02), std::int16_t(0x12)}) {
    const RasterData raster = makeRaster(cs, cs == 0x02 ? 32 : 40, 72.0);
    const std::string path = dir.file("cmyk.png");
    EXPECT_THROW(exportPng(RasterSource{&raster, nullptr, 0}, path), ExportError) << cs;
    EXPECT_FALSE(exists(path)) << cs;
  }
  // An existing file stays as it was when the export fails.
  const std::string kept = dir.file("kept.png");
  { std::ofstream(kept) << "old"; }
  const RasterData cmyk = makeRaster(0x02, 32, 72.0);
  EXPECT_THROW(exportPng(RasterSource{&cmyk, nullptr, 0}, kept), ExportError);
  std::ifstream in(kept);
  std::string content;
  in >> content;
  EXPECT_EQ(content, "old");
  std::system(("ls " + dir.path + " | grep -q tmp && echo leftover > " + dir.file("leftover")).c_str());
  EXPECT_FALSE(exists(dir.file("leftover"))) << "a temporary file was left behind";
}

TEST(TiffExport, EveryRasterTypeReadsBack) {
  struct Case {
    const char* name;
    std::int16_t colorSpace;
    int bits;
    std::uint16_t photometric;
    bool alpha;
  };
  const Case cases[] = {
      {"gray", 0x00, 8, PHOTOMETRIC_MINISBLACK, false},   {"gray+alpha", 0x10, 16, PHOTOMETRIC_MINISBLACK, true},
      {"rgb", 0x01, 24, PHOTOMETRIC_RGB, false},          {"rgb+alpha", 0x11, 32, PHOTOMETRIC_RGB, true},
      {"cmyk", 0x02, 32, PHOTOMETRIC_SEPARATED, false},   {"cmyk+alpha", 0x12, 40, PHOTOMETRIC_SEPARATED, true},
      {"1-bit", 0x00, 1, PHOTOMETRIC_MINISWHITE, false},
  };
  TempDir dir;
  for (const Case& c : cases) {
    const RasterData raster = makeRaster(c.colorSpace, c.bits, 300.0);
    const std::string path = dir.file(std::string(c.name) + ".tif");
    exportTiff(RasterSource{&raster, nullptr, 0}, path);
    const TiffRead tif = readTiff(path);
    ASSERT_EQ(tif.width, static_cast<std::uint32_t>(kW)) << c.name;
    EXPECT_EQ(tif.photometric, c.photometric) << c.name;
    EXPECT_NEAR(tif.xres, 300.0, 0.01) << c.name;
    if (c.alpha) {
      EXPECT_EQ(tif.extra, EXTRASAMPLE_UNASSALPHA) << c.name;
    }
    const int n = c.bits == 1 ? 0 : c.bits / 8;
    for (int y = 0; y < kH; ++y) {
      const std::uint8_t* src = raster.pixels() + y * raster.record.byteWidth;
      if (n == 0) {
        ASSERT_EQ(0, std::memcmp(tif.rows[y].data(), src, (kW + 7) / 8)) << c.name << " row " << y;
        continue;
      }
      for (int x = 0; x < kW; ++x)
        for (int k = 0; k < n; ++k) {
          const int from = c.alpha ? (k + 1) % n : k;
          ASSERT_EQ(tif.rows[y][x * n + k], src[x * n + from]) << c.name << " at " << x << "," << y;
        }
    }
  }
}

TEST(TiffExport, SpotChannelsBecomeNamedInks) {
  Document doc;
  CustomColor varnish;
  varnish.name = "Varnish";
  const CustomColorId v = doc.newCustomColor(varnish);
  CustomColor gold;
  gold.name = "Gold 871";
  const CustomColorId g = doc.newCustomColor(gold);
  using K = RasterChannel::Kind;
  struct Case {
    const char* name;
    std::int16_t colorSpace;
    std::vector<RasterChannel> channels;
    CustomColorId spotFill;
    std::vector<std::string> inks;
  };
  const Case cases[] = {
      {"single spot", 0x04, {}, v, {"Varnish"}},
      {"spot flagged gray", 0x00, {}, g, {"Gold 871"}},
      {"cmyk + two spots + alpha", 0x15,
       {{K::Alpha, 0}, {K::Cyan, 0}, {K::Magenta, 0}, {K::Yellow, 0}, {K::Black, 0}, {K::Spot, v}, {K::Spot, g}}, 0,
       {"Cyan", "Magenta", "Yellow", "Black", "Varnish", "Gold 871"}},
      {"black component + spot", 0x05, {{K::Black, 0}, {K::Spot, g}}, 0, {"Black", "Gold 871"}},
  };
  TempDir dir;
  for (const Case& c : cases) {
    const bool alpha = (c.colorSpace & 0x10) != 0;
    const int n = c.channels.empty() ? 1 : static_cast<int>(c.channels.size());
    RasterData raster = makeRaster(c.colorSpace, 8 * n, 200.0, c.channels);
    if (c.colorSpace == 0x00) {
      RasterRecord rec = raster.record;
      rec.flags = 0x8;
      raster.record = rec;
    }
    const std::string path = dir.file(std::string(c.name) + ".tif");
    exportTiff(RasterSource{&raster, &doc, c.spotFill}, path);
    const TiffRead tif = readTiff(path);
    EXPECT_EQ(tif.photometric, PHOTOMETRIC_SEPARATED) << c.name;
    EXPECT_EQ(tif.inkset, INKSET_MULTIINK) << c.name;
    EXPECT_EQ(tif.inks, c.inks) << c.name;
    EXPECT_NEAR(tif.xres, 200.0, 0.01) << c.name;
    for (int y = 0; y < kH; ++y)
      for (int x = 0; x < kW; ++x)
        for (int k = 0; k < n; ++k) {
          const int from = alpha ? (k + 1) % n : k;
          ASSERT_EQ(tif.rows[y][x * n + k], raster.pixels()[y * raster.record.byteWidth + x * n + from])
              << c.name << " at " << x << "," << y;
        }
  }
}

TEST(PreviewExport, InkRastersAreConvertedToRgb) {
  Document doc;
  CustomColor orange;
  orange.name = "Orange";
  orange.cmyk[1] = 0.5;
  orange.cmyk[2] = 1.0;
  const CustomColorId o = doc.newCustomColor(orange);
  using K = RasterChannel::Kind;
  TempDir dir;
  struct Case {
    const char* name;
    std::int16_t colorSpace;
    std::vector<RasterChannel> channels;
    std::function<render::Rgb(const std::uint8_t*)> expected;
  };
  const Case cases[] = {
      {"cmyk", 0x02, {}, [](const std::uint8_t* p) {
         return render::cmykToRgb({p[0] / 255.0, p[1] / 255.0, p[2] / 255.0, p[3] / 255.0});
       }},
      {"spot", 0x05, {{K::Spot, o}}, [](const std::uint8_t* p) {
         const double a = p[0] / 255.0;
         return render::cmykToRgb({0, 0.5 * a, 1.0 * a, 0});
       }},
  };
  for (const Case& c : cases) {
    const int n = c.channels.empty() ? 4 : static_cast<int>(c.channels.size());
    const RasterData raster = makeRaster(c.colorSpace, 8 * n, 96.0, c.channels);
    const std::string path = dir.file(std::string(c.name) + ".png");
    exportPreviewPng(RasterSource{&raster, &doc, 0}, path);
    const PngRead png = readPng(path);
    ASSERT_EQ(png.colorType, PNG_COLOR_TYPE_RGB) << c.name;
    EXPECT_NEAR(png.ppi, 96.0, 0.0127) << c.name;
    for (int y = 0; y < kH; ++y)
      for (int x = 0; x < kW; ++x) {
        const render::Rgb e = c.expected(raster.pixels() + y * raster.record.byteWidth + x * n);
        const std::uint8_t* got = &png.rows[y][x * 3];
        ASSERT_NEAR(got[0], e.r * 255, 1.0) << c.name << " at " << x << "," << y;
        ASSERT_NEAR(got[1], e.g * 255, 1.0) << c.name << " at " << x << "," << y;
        ASSERT_NEAR(got[2], e.b * 255, 1.0) << c.name << " at " << x << "," << y;
      }
  }
}
