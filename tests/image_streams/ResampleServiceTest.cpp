// resampleRasterArt: error codes, the new art's size, record and placement, the output buffer
// and what a failure leaves behind.
#include <gtest/gtest.h>

#include <cmath>

#include "BicubicOracle.h"
#include "fakes/StreamFakeHost.h"
#include "image_streams/AlignedRowBytes.h"
#include "image_streams/ResampleRasterArt.h"
#include "shell/ErrorCodes.h"
#include "shell/FourCharCode.h"

namespace {

using streams_test::FakeRaster;
using streams_test::Image;
using streams_test::makeImage;
using streams_test::randomImage;
using streams_test::StreamFakeHost;

DWErr resample(DWArtHandle source, int32_t method, double ppi, DWArtHandle* result) {
  return dw::resampleRasterArt(source, method, ppi, kDWPlaceAbove, source, result);
}

TEST(ResampleRasterArt, SameResolutionCopies) {
  struct Case {
    const char* name;
    int32_t method;
  };
  const Case cases[] = {{"nearest", dw::ResampleNearest},
                        {"bicubic", dw::ResampleBicubic},
                        {"average", dw::ResampleAverage},
                        {"method 7 samples", 7}};
  for (const Case& c : cases) {
    StreamFakeHost host;
    const Image source = randomImage(37, 21, 3, 11);
    DWArtHandle art = host.addRaster(source, 150.0);
    DWArtHandle result = nullptr;
    ASSERT_EQ(resample(art, c.method, 150.0, &result), 0) << c.name;
    EXPECT_EQ(host.imageOf(result).data, source.data) << c.name;
  }
}

TEST(ResampleRasterArt, MethodsPickTheirStreams) {
  StreamFakeHost host;
  const Image source = randomImage(64, 48, 4, 12);
  DWArtHandle art = host.addRaster(source, 300.0);
  DWArtHandle nearest = nullptr, seven = nullptr, bicubic = nullptr;
  ASSERT_EQ(resample(art, dw::ResampleNearest, 100.0, &nearest), 0);
  ASSERT_EQ(resample(art, 7, 100.0, &seven), 0);
  ASSERT_EQ(resample(art, dw::ResampleBicubic, 100.0, &bicubic), 0);
  EXPECT_EQ(host.imageOf(seven).data, host.imageOf(nearest).data) << "method 7 is method 0";
  const Image cubic = host.imageOf(bicubic);
  const Image expected = streams_test::bicubicOracle(source, cubic.width, cubic.height);
  int32_t largest = 0;
  for (size_t i = 0; i < cubic.data.size(); ++i)
    largest = std::max(largest, std::abs(int32_t(cubic.data[i]) - int32_t(expected.data[i])));
  EXPECT_LE(largest, 1);
}

TEST(ResampleRasterArt, UnsupportedRequestsCreateNothing) {
  struct Case {
    const char* name;
    int32_t width, height, bits;
    double sourcePpi, ppi;
  };
  const Case cases[] = {
      {"151 ppi from 150", 40, 40, 24, 150.0, 151.0},
      {"1-bit source", 40, 40, 1, 150.0, 72.0},
      {"a destination of no pixels", 3, 3, 8, 300.0, 20.0},
      {"zero ppi", 40, 40, 8, 150.0, 0.0},
  };
  for (const Case& c : cases) {
    StreamFakeHost host;
    DWArtHandle art = host.addRaster(makeImage(c.width, c.height, c.bits == 24 ? 3 : 1), c.sourcePpi);
    host.raster(art).record.bitsPerPixel = int16_t(c.bits);
    DWArtHandle result = nullptr;
    EXPECT_EQ(resample(art, dw::ResampleBicubic, c.ppi, &result), dw::UnsupportedResampleError) << c.name;
    EXPECT_EQ(host.rasterCount(), 1u) << c.name;
    EXPECT_EQ(result, nullptr) << c.name;
  }
}

// Width = round(pixels * length(a, b) * ppi / 72), halves away from zero.
TEST(ResampleRasterArt, NewPixelSize) {
  struct Case {
    const char* name;
    int32_t width, height;
    double pointsPerPixel, ppi;
    int32_t newWidth, newHeight;
  };
  const Case cases[] = {
      {"1000 pixels at 300 ppi to 100", 1000, 30, 0.24, 100.0, 333, 10},
      {"332.5 rounds up", 665, 4, 1.0, 36.0, 333, 2},
      {"same resolution", 17, 9, 0.5, 144.0, 17, 9},
  };
  for (const Case& c : cases) {
    StreamFakeHost host;
    DWArtHandle art =
        host.addRaster(makeImage(c.width, c.height, 1), streams_test::scaleMatrix(c.pointsPerPixel, c.pointsPerPixel));
    DWArtHandle result = nullptr;
    ASSERT_EQ(resample(art, dw::ResampleAverage, c.ppi, &result), 0) << c.name;
    const FakeRaster& made = host.raster(result);
    EXPECT_EQ(made.width(), c.newWidth) << c.name;
    EXPECT_EQ(made.height(), c.newHeight) << c.name;
  }
}

TEST(ResampleRasterArt, NewArtRecordAndPlacement) {
  StreamFakeHost host;
  DWArtHandle art = host.addRaster(randomImage(30, 20, 3, 2), 300.0);
  host.raster(art).record.colorSpace = kDWRasterRGB;
  host.raster(art).record.flags = 0x40;
  DWArtHandle prep = host.addRaster(makeImage(1, 1, 1));
  DWArtHandle result = nullptr;
  ASSERT_EQ(dw::resampleRasterArt(art, dw::ResampleNearest, 100.0, kDWPlaceBelow, prep, &result), 0);
  const FakeRaster& made = host.raster(result);
  EXPECT_EQ(made.paintOrder, kDWPlaceBelow);
  EXPECT_EQ(made.prep, prep);
  EXPECT_TRUE(made.styleCleared);
  EXPECT_EQ(made.record.bounds.left, 0);
  EXPECT_EQ(made.record.bounds.top, 0);
  EXPECT_EQ(made.width(), 10);
  EXPECT_EQ(made.height(), 7);
  EXPECT_EQ(made.record.byteWidth, 32) << "10 RGB pixels padded to a multiple of 4";
  EXPECT_EQ(made.record.colorSpace, kDWRasterRGB);
  EXPECT_EQ(made.record.flags, 0x40);
  EXPECT_EQ(made.record.bitsPerPixel, 24);
}

// Only the scale changes: rotation, skew and position stay, pixels become 72 / ppi points.
TEST(ResampleRasterArt, RotatedSourceKeepsItsRotation) {
  StreamFakeHost host;
  const double radians = 0.5235987755982988;  // 30 degrees
  DWRealMatrix matrix =
      streams_test::multiply(streams_test::scaleMatrix(0.24, 0.24), streams_test::rotationMatrix(radians));
  matrix.tx = 100;
  matrix.ty = 250;
  DWArtHandle art = host.addRaster(randomImage(60, 40, 1, 4), matrix);
  DWArtHandle result = nullptr;
  ASSERT_EQ(resample(art, dw::ResampleBicubic, 100.0, &result), 0);
  const DWRealMatrix& made = host.raster(result).matrix;
  EXPECT_NEAR(std::atan2(made.b, made.a), radians, 1e-12);
  EXPECT_NEAR(std::atan2(-made.c, made.d), radians, 1e-12);
  EXPECT_NEAR(std::hypot(made.a, made.b), 0.72, 1e-12);
  EXPECT_NEAR(std::hypot(made.c, made.d), 0.72, 1e-12);
  EXPECT_DOUBLE_EQ(made.tx, 100);
  EXPECT_DOUBLE_EQ(made.ty, 250);
}

TEST(ResampleRasterArt, LockedLayerMakesNothing) {
  struct Case {
    const char* name;
    bool editable, outside;
    bool made;
  };
  const Case cases[] = {
      {"locked layer", false, false, false},
      {"editable layer", true, false, true},
      {"locked but outside the layers", false, true, true},
  };
  for (const Case& c : cases) {
    StreamFakeHost host;
    DWArtHandle art = host.addRaster(randomImage(20, 20, 1, 1), 144.0);
    host.raster(art).layer = host.addLayer(c.editable);
    host.raster(art).outsideLayers = c.outside;
    DWArtHandle result = reinterpret_cast<DWArtHandle>(&host);
    EXPECT_EQ(resample(art, dw::ResampleNearest, 72.0, &result), 0) << c.name;
    EXPECT_EQ(host.rasterCount(), c.made ? 2u : 1u) << c.name;
    if (!c.made) {
      EXPECT_EQ(result, reinterpret_cast<DWArtHandle>(&host)) << c.name << ": result untouched";
    }
    if (c.outside) {
      EXPECT_EQ(host.calls("GetLayerOfArt"), 0) << c.name;
    }
  }
}

TEST(ResampleRasterArt, HostErrorsPassThrough) {
  const char* operations[] = {"GetRasterRecord", "GetRasterMatrix", "ArtIsOutsideLayers", "GetLayerOfArt",
                              "NewArt",          "SetArtStyle",     "SetRasterRecord",    "SetRasterMatrix",
                              "ReadRasterTile",  "WriteRasterTile"};
  DWErr code = dw::fourCharError("hE00");
  for (const char* operation : operations) {
    StreamFakeHost host;
    DWArtHandle art = host.addRaster(randomImage(20, 20, 3, 1), 144.0);
    host.failCall(operation, 1, ++code);
    DWArtHandle result = nullptr;
    EXPECT_EQ(resample(art, dw::ResampleAverage, 72.0, &result), code) << operation;
    EXPECT_EQ(host.liveBlocks, 0u) << operation;
  }
}

// A write failing on the second band: the code comes back, the first band stays in the new art,
// and the art is placed.
TEST(ResampleRasterArt, FailedSecondBandLeavesTheFirst) {
  const DWErr failure = dw::fourCharError("wERR");
  for (int32_t method : {0, 1, 2}) {
    StreamFakeHost host;
    host.setBudgetMiB(0);
    const Image source = randomImage(40, 40, 3, 21);
    DWArtHandle art = host.addRaster(source, 144.0);
    DWArtHandle whole = nullptr;
    ASSERT_EQ(resample(art, method, 72.0, &whole), 0) << "method " << method;
    host.failCall("WriteRasterTile", 2, failure);
    DWArtHandle result = nullptr;
    EXPECT_EQ(resample(art, method, 72.0, &result), failure) << "method " << method;
    ASSERT_NE(result, nullptr) << "method " << method;
    const Image expected = host.imageOf(whole), partial = host.imageOf(result);
    const size_t rowValues = 20 * 3;
    EXPECT_TRUE(std::equal(partial.data.begin(), partial.data.begin() + rowValues, expected.data.begin()))
        << "method " << method << ": the first band (one row) is written";
    EXPECT_EQ(host.raster(result).matrix.a, host.raster(whole).matrix.a) << "method " << method;
    EXPECT_EQ(host.liveBlocks, 0u) << "method " << method;
  }
}

// rows = min(budget / pitch, height); each failure halves them while the failed block was larger
// than 64 KiB.
TEST(ResampleRasterArt, OutputBufferHalves) {
  StreamFakeHost host;
  host.setBudgetMiB(1);
  DWArtHandle art = host.addRaster(makeImage(2000, 1000, 1), 144.0);
  host.blockCap = 200000;
  DWArtHandle result = nullptr;
  ASSERT_EQ(resample(art, dw::ResampleNearest, 72.0, &result), 0);
  // Pitch 1000: 1000 rows of the 500 wanted fit the budget, so 500 rows are tried first.
  ASSERT_GE(host.blockRequests.size(), 3u);
  EXPECT_EQ(host.blockRequests[0], 500000u);
  EXPECT_EQ(host.blockRequests[1], 250000u);
  EXPECT_EQ(host.blockRequests[2], 125000u);
  EXPECT_EQ(host.writes.front().slice.bottom, 125);
  EXPECT_EQ(host.liveBlocks, 0u);
}

TEST(ResampleRasterArt, NoOutputBufferIsOutOfMemory) {
  StreamFakeHost host;
  DWArtHandle art = host.addRaster(makeImage(400, 400, 3), 144.0);
  host.blockCap = 1000;
  DWArtHandle result = nullptr;
  EXPECT_EQ(resample(art, dw::ResampleBicubic, 72.0, &result), dw::OutOfMemoryError);
  EXPECT_NE(result, nullptr) << "the new art exists and is the caller's";
  EXPECT_LE(host.blockRequests.back(), 65536u) << "halving went down to 64 KiB";
  EXPECT_GT(host.blockRequests[host.blockRequests.size() - 2], 65536u);
  EXPECT_EQ(host.liveBlocks, 0u);
}

// Working memory stays near the budget however large the image.
TEST(ResampleRasterArt, MemoryStaysWithinTheBudget) {
  for (int32_t method : {0, 1, 2}) {
    StreamFakeHost host;
    host.setBudgetMiB(1);
    DWArtHandle art = host.addRaster(randomImage(3000, 2000, 3, 5), 300.0);
    DWArtHandle result = nullptr;
    ASSERT_EQ(resample(art, method, 96.0, &result), 0) << "method " << method;
    // One output band and one source band, each within the budget (plus one row of slack).
    EXPECT_LE(host.peakBlockBytes, size_t(2) * 1048576 + 3000 * 3) << "method " << method;
    EXPECT_GT(host.writes.size(), 1u) << "method " << method << " works in bands";
  }
}

TEST(ResampleRasterArt, NullResultIsRefused) {
  StreamFakeHost host;
  DWArtHandle art = host.addRaster(makeImage(4, 4, 1), 144.0);
  EXPECT_EQ(dw::resampleRasterArt(art, 0, 72.0, kDWPlaceAbove, nullptr, nullptr), dw::BadParameterError);
  EXPECT_EQ(host.rasterCount(), 1u);
}

}  // namespace
