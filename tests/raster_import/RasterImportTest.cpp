// PNG and TIFF files become a document with one raster art in the file's own colour model, placed
// by the file's resolution.
#include <gtest/gtest.h>
#include <png.h>
#include <tiffio.h>

#include <cmath>
#include <fstream>
#include <functional>
#include <string>
#include <vector>

#include "ImageFiles.h"
#include "refhost/document/Document.h"
#include "refhost/io/IoError.h"
#include "refhost/io/RasterImport.h"

namespace {

using namespace refhost;
using test_images::PngSpec;
using test_images::TiffSpec;

constexpr int kWidth = 5;  // odd, so that rows need padding
constexpr int kHeight = 3;

// Channel c of pixel (x, y) of the expected raster (alpha first).
uint16_t pattern(int x, int y, int c) { return uint16_t((x * 31 + y * 17 + c * 59 + 3) & 0xFF); }

// The file's samples for an n-channel raster: colours first and alpha last when the file has alpha.
std::vector<uint16_t> samples(int n, bool alpha, const std::function<uint16_t(int, int, int)>& value) {
  std::vector<uint16_t> out;
  for (int y = 0; y < kHeight; ++y)
    for (int x = 0; x < kWidth; ++x)
      for (int k = 0; k < n; ++k) out.push_back(value(x, y, alpha ? (k + 1) % n : k));
  return out;
}

std::vector<uint16_t> samples(int n, bool alpha) { return samples(n, alpha, pattern); }

PngSpec pngSpec(int colorType, int bitDepth = 8, uint32_t pixelsPerMetre = 0, std::vector<uint8_t> palette = {}) {
  PngSpec spec;
  spec.colorType = colorType;
  spec.bitDepth = bitDepth;
  spec.pixelsPerMetre = pixelsPerMetre;
  spec.palette = std::move(palette);
  return spec;
}

const std::vector<uint8_t> kPalette = {10, 20, 30, 200, 100, 0, 0, 0, 0, 255, 255, 255};

struct Case {
  const char* name;
  const char* file;
  std::function<void(const std::string&)> write;
  int16_t colorSpace;
  int channels;
  double ppi;
  std::function<uint16_t(int, int, int)> expected = pattern;
};

std::vector<Case> cases() {
  using namespace test_images;
  return {
      {"PNG gray without pHYs", "gray.png",
       [](const std::string& p) { writePng(p, kWidth, kHeight, pngSpec(PNG_COLOR_TYPE_GRAY), samples(1, false)); },
       0x00, 1, 72},
      {"PNG gray with alpha", "ga.png",
       [](const std::string& p) { writePng(p, kWidth, kHeight, pngSpec(PNG_COLOR_TYPE_GA), samples(2, true)); },
       0x10, 2, 72},
      {"PNG RGB at 11811 pixels per metre", "rgb.png",
       [](const std::string& p) {
         writePng(p, kWidth, kHeight, pngSpec(PNG_COLOR_TYPE_RGB, 8, 11811), samples(3, false));
       },
       0x01, 3, 11811 * 0.0254},
      {"PNG RGBA", "rgba.png",
       [](const std::string& p) { writePng(p, kWidth, kHeight, pngSpec(PNG_COLOR_TYPE_RGBA), samples(4, true)); },
       0x11, 4, 72},
      {"PNG 16-bit RGB", "rgb16.png",
       [](const std::string& p) {
         writePng(p, kWidth, kHeight, pngSpec(PNG_COLOR_TYPE_RGB, 16),
                  samples(3, false, [](int x, int y, int c) { return uint16_t(pattern(x, y, c) * 257); }));
       },
       0x01, 3, 72},
      {"PNG palette", "palette.png",
       [](const std::string& p) {
         writePng(p, kWidth, kHeight, pngSpec(PNG_COLOR_TYPE_PALETTE, 8, 0, kPalette),
                  samples(1, false, [](int x, int y, int) { return uint16_t((x + y) % 4); }));
       },
       0x01, 3, 72, [](int x, int y, int c) { return uint16_t(kPalette[size_t((x + y) % 4 * 3 + c)]); }},
      {"TIFF gray at 200 ppi", "gray.tif",
       [](const std::string& p) {
         TiffSpec spec;
         spec.resolution = 200;
         writeTiff(p, kWidth, kHeight, spec, samples(1, false));
       },
       0x00, 1, 200},
      {"TIFF min-is-white", "white.tif",
       [](const std::string& p) {
         TiffSpec spec;
         spec.photometric = PHOTOMETRIC_MINISWHITE;
         writeTiff(p, kWidth, kHeight, spec,
                   samples(1, false, [](int x, int y, int c) { return uint16_t(255 - pattern(x, y, c)); }));
       },
       0x00, 1, 72},
      {"TIFF 16-bit gray", "gray16.tif",
       [](const std::string& p) {
         TiffSpec spec;
         spec.bitsPerSample = 16;
         writeTiff(p, kWidth, kHeight, spec,
                   samples(1, false, [](int x, int y, int c) { return uint16_t(pattern(x, y, c) * 257); }));
       },
       0x00, 1, 72},
      {"TIFF resolution in centimetres", "cm.tif",
       [](const std::string& p) {
         TiffSpec spec;
         spec.resolution = 100;
         spec.resolutionUnit = RESUNIT_CENTIMETER;
         writeTiff(p, kWidth, kHeight, spec, samples(1, false));
       },
       0x00, 1, 254},
      {"TIFF RGB with unassociated alpha", "rgba.tif",
       [](const std::string& p) {
         TiffSpec spec;
         spec.photometric = PHOTOMETRIC_RGB;
         spec.samplesPerPixel = 4;
         spec.extraSample = EXTRASAMPLE_UNASSALPHA;
         writeTiff(p, kWidth, kHeight, spec, samples(4, true));
       },
       0x11, 4, 72},
      {"TIFF CMYK", "cmyk.tif",
       [](const std::string& p) {
         TiffSpec spec;
         spec.photometric = PHOTOMETRIC_SEPARATED;
         spec.samplesPerPixel = 4;
         spec.inkset = INKSET_CMYK;
         writeTiff(p, kWidth, kHeight, spec, samples(4, false));
       },
       0x02, 4, 72},
      // Alpha 51 is a fifth: a stored colour s in 0..51 is 5 s unmultiplied, exactly.
      {"TIFF CMYK with associated alpha", "cmyka.tif",
       [](const std::string& p) {
         TiffSpec spec;
         spec.photometric = PHOTOMETRIC_SEPARATED;
         spec.samplesPerPixel = 5;
         spec.extraSample = EXTRASAMPLE_ASSOCALPHA;
         writeTiff(p, kWidth, kHeight, spec, samples(5, true, [](int x, int y, int c) {
                     return uint16_t(c == 0 ? 51 : pattern(x, y, c) % 52);
                   }));
       },
       0x12, 5, 72, [](int x, int y, int c) { return uint16_t(c == 0 ? 51 : 5 * (pattern(x, y, c) % 52)); }},
      {"TIFF in tiles", "tiles.tif",
       [](const std::string& p) {
         TiffSpec spec;
         spec.photometric = PHOTOMETRIC_RGB;
         spec.samplesPerPixel = 3;
         spec.tiled = true;
         writeTiff(p, kWidth, kHeight, spec, samples(3, false));
       },
       0x01, 3, 72},
  };
}

const Art* onlyArt(const Document& document) {
  const Art* found = nullptr;
  int count = 0;
  document.forEachArt([&](Art* art) {
    if (!art->isLayerGroup()) {
      found = art;
      ++count;
    }
  });
  return count == 1 ? found : nullptr;
}

TEST(RasterImport, EachFileKeepsItsColourModelPixelsAndResolution) {
  for (const Case& c : cases()) {
    const std::string path = ::testing::TempDir() + c.file;
    c.write(path);
    std::unique_ptr<Document> document;
    try {
      document = io::importRasterImage(path);
    } catch (const io::IoError& error) {
      ADD_FAILURE() << c.name << ": " << error.what();
      continue;
    }
    const Art* art = onlyArt(*document);
    ASSERT_TRUE(art && art->raster()) << c.name;
    const RasterData& raster = *art->raster();
    EXPECT_EQ(raster.record.colorSpace, c.colorSpace) << c.name;
    EXPECT_EQ(raster.record.bitsPerPixel, 8 * c.channels) << c.name;
    EXPECT_EQ(raster.record.byteWidth, (kWidth * c.channels + 3) / 4 * 4) << c.name;
    ASSERT_EQ(raster.width(), kWidth) << c.name;
    ASSERT_EQ(raster.height(), kHeight) << c.name;

    const double pixel = 72.0 / c.ppi;
    EXPECT_NEAR(raster.matrix.a, pixel, 1e-4) << c.name;
    EXPECT_NEAR(raster.matrix.d, pixel, 1e-4) << c.name;
    EXPECT_EQ(raster.matrix.b, 0) << c.name;
    EXPECT_EQ(raster.matrix.c, 0) << c.name;
    ASSERT_EQ(document->artboards().size(), 1u) << c.name;
    const Rect board = document->artboards()[0].bounds;
    EXPECT_NEAR(board.left, 0, 1e-9) << c.name;
    EXPECT_NEAR(board.bottom, 0, 1e-9) << c.name;
    EXPECT_NEAR(board.right, kWidth * pixel, 1e-3) << c.name;
    EXPECT_NEAR(board.top, kHeight * pixel, 1e-3) << c.name;

    int wrong = 0;
    for (int y = 0; y < kHeight; ++y)
      for (int x = 0; x < kWidth; ++x)
        for (int k = 0; k < c.channels; ++k)
          wrong += raster.pixels()[size_t(y) * size_t(raster.record.byteWidth) + size_t(x * c.channels + k)] !=
                   c.expected(x, y, k);
    EXPECT_EQ(wrong, 0) << c.name;
  }
}

// Inks the file names become process channels or spot colours of the document.
TEST(RasterImport, AMultiInkTiffBecomesProcessPlusSpotChannels) {
  const std::string path = ::testing::TempDir() + "inks.tif";
  TiffSpec spec;
  spec.photometric = PHOTOMETRIC_SEPARATED;
  spec.samplesPerPixel = 2;
  spec.inkset = INKSET_MULTIINK;
  spec.inkNames = std::string("Cyan\0Orange\0", 12);
  test_images::writeTiff(path, kWidth, kHeight, spec, samples(2, false));
  const auto document = io::importRasterImage(path);
  const RasterData& raster = *onlyArt(*document)->raster();
  EXPECT_EQ(raster.record.colorSpace, 0x05);
  ASSERT_EQ(raster.channels.size(), 2u);
  EXPECT_EQ(raster.channels[0].kind, RasterChannel::Kind::Cyan);
  EXPECT_EQ(raster.channels[1].kind, RasterChannel::Kind::Spot);
  const CustomColor* orange = document->findCustomColor("Orange");
  ASSERT_NE(orange, nullptr);
  EXPECT_EQ(raster.channels[1].spot, orange->id);
  EXPECT_EQ(raster.pixels()[1], pattern(0, 0, 1));
}

TEST(RasterImport, BrokenFilesAreOneErrorEach) {
  const std::string truncated = ::testing::TempDir() + "truncated.png";
  test_images::writePng(truncated, kWidth, kHeight, pngSpec(PNG_COLOR_TYPE_RGB), samples(3, false));
  std::ifstream in(truncated, std::ios::binary);
  std::string bytes((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
  std::ofstream(truncated, std::ios::binary | std::ios::trunc) << bytes.substr(0, bytes.size() / 2);
  const std::string text = ::testing::TempDir() + "text.tif";
  std::ofstream(text) << "not an image\n";

  for (const std::string& path : {truncated, text}) {
    try {
      io::importRasterImage(path);
      ADD_FAILURE() << path << " was read";
    } catch (const io::IoError& error) {
      EXPECT_EQ(std::string(error.what()).rfind(path + ": ", 0), 0u) << error.what();
    }
  }
}

}  // namespace
