// The band loop and the two host conversations of ImageStreamBase, through a stream whose bands
// are a known pattern.
#include <gtest/gtest.h>

#include <vector>

#include "fakes/StreamFakeHost.h"
#include "image_streams/AlignedRowBytes.h"
#include "image_streams/ImageStreamBase.h"
#include "shell/FourCharCode.h"

namespace {

using streams_test::Image;
using streams_test::StreamFakeHost;

// Pixel (x, y, k) of the destination is y * 16 + x + k: every row says where it belongs.
uint8_t patternValue(uint32_t x, uint32_t y, uint32_t k) { return uint8_t(y * 16 + x + k); }

class PatternStream : public dw::ImageStreamBase {
 public:
  using dw::ImageStreamBase::ImageStreamBase;
  bool Prepare(const dw::ImageBandRequest&) override {
    ++prepares;
    return prepareResult;
  }
  uint32_t GetBandRows(const dw::ImageBandRequest&) override { return bandRows; }
  bool ProduceBand(const dw::ImageBandRequest& request) override {
    bands.push_back(request);
    for (uint32_t y = 0; y < request.rows; ++y)
      for (uint32_t x = 0; x < request.columns; ++x)
        for (uint32_t k = 0; k < bytesPerPixel; ++k)
          request.buffer[y * request.rowBytes + x * bytesPerPixel + k] = patternValue(x, request.firstRow + y, k);
    return true;
  }
  bool Finish() override { return true; }

  bool prepareResult = true;
  uint32_t bandRows = 1000;
  int32_t prepares = 0;
  std::vector<dw::ImageBandRequest> bands;
};

struct Fixture {
  StreamFakeHost host;
  DWArtHandle source = nullptr;
  DWArtHandle destination = nullptr;
  std::vector<uint8_t> buffer;
  dw::ImageBandRequest request{};

  Fixture(int32_t width, int32_t height, int32_t channels, uint32_t bufferRows) {
    source = host.addRaster(streams_test::makeImage(width * 2, height * 2, channels));
    destination = host.addRaster(streams_test::makeImage(width, height, channels));
    const uint32_t pitch = dw::alignedRowBytes(uint32_t(width), uint32_t(channels) * 8);
    buffer.assign(size_t(pitch) * bufferRows, 0);
    request = dw::ImageBandRequest{buffer.data(), 0, 0, uint32_t(width), uint32_t(height), pitch, 0};
  }
  void size(PatternStream& stream, int32_t width, int32_t height, int32_t channels) {
    stream.SetSizes(uint32_t(width * 2), uint32_t(height * 2), uint32_t(width), uint32_t(height), uint32_t(channels));
  }
  bool destinationHasPattern(int32_t rows) {
    const Image image = host.imageOf(destination);
    for (int32_t y = 0; y < rows; ++y)
      for (int32_t x = 0; x < image.width; ++x)
        for (int32_t k = 0; k < image.channels; ++k)
          if (image.at(x, y, k) != patternValue(uint32_t(x), uint32_t(y), uint32_t(k))) return false;
    return true;
  }
};

TEST(ImageStreamBase, ZeroRowsPrepareAndWriteNothing) {
  Fixture f(5, 4, 3, 4);
  PatternStream stream(f.source, f.destination);
  f.size(stream, 5, 4, 3);
  f.request.rows = 0;
  EXPECT_TRUE(stream.Run(f.request, 4));
  EXPECT_EQ(stream.prepares, 1);
  EXPECT_TRUE(stream.bands.empty());
  EXPECT_TRUE(f.host.writes.empty());
}

// Band height is the least of the request, the stream's wish and the buffer; the last band is
// short and writes exactly its rows.
TEST(ImageStreamBase, BandsCoverTheRequest) {
  struct Case {
    const char* name;
    uint32_t streamRows, bufferRows;
    std::vector<int32_t> bandStarts;
  };
  const Case cases[] = {
      {"stream wants 3 of 10", 3, 10, {0, 3, 6, 9}},
      {"buffer holds 4 of 10", 100, 4, {0, 4, 8}},
      {"one band", 100, 10, {0}},
      {"bands of one row", 1, 10, {0, 1, 2, 3, 4, 5, 6, 7, 8, 9}},
  };
  for (const Case& c : cases) {
    Fixture f(5, 10, 3, c.bufferRows);
    PatternStream stream(f.source, f.destination);
    f.size(stream, 5, 10, 3);
    stream.bandRows = c.streamRows;
    EXPECT_TRUE(stream.Run(f.request, c.bufferRows)) << c.name;
    ASSERT_EQ(f.host.writes.size(), c.bandStarts.size()) << c.name;
    for (size_t band = 0; band < c.bandStarts.size(); ++band) {
      const int32_t end = band + 1 < c.bandStarts.size() ? c.bandStarts[band + 1] : 10;
      EXPECT_EQ(f.host.writes[band].slice.top, c.bandStarts[band]) << c.name << " band " << band;
      EXPECT_EQ(f.host.writes[band].slice.bottom, end) << c.name << " band " << band;
      EXPECT_EQ(int32_t(stream.bands[band].rows), end - c.bandStarts[band]) << c.name << " band " << band;
      EXPECT_EQ(f.host.writes[band].slice.back, 3) << c.name << " band " << band;
    }
    EXPECT_TRUE(f.destinationHasPattern(10)) << c.name;
  }
}

// Widths whose rows are not a multiple of 4 bytes: rows sit at the aligned pitch.
TEST(ImageStreamBase, RowsAtTheAlignedPitch) {
  for (int32_t width : {1, 3, 5, 7}) {
    Fixture f(width, 6, 3, 2);
    PatternStream stream(f.source, f.destination);
    f.size(stream, width, 6, 3);
    ASSERT_NE(f.request.rowBytes, uint32_t(width * 3)) << "width " << width;
    EXPECT_TRUE(stream.Run(f.request, 2)) << "width " << width;
    EXPECT_TRUE(f.destinationHasPattern(6)) << "width " << width;
  }
}

TEST(ImageStreamBase, FailedPrepareWritesNothing) {
  Fixture f(5, 4, 3, 4);
  PatternStream stream(f.source, f.destination);
  f.size(stream, 5, 4, 3);
  stream.prepareResult = false;
  EXPECT_FALSE(stream.Run(f.request, 4));
  EXPECT_TRUE(stream.bands.empty());
  EXPECT_TRUE(f.host.writes.empty());
}

TEST(ImageStreamBase, HostFailureOnSecondBandKeepsTheFirst) {
  const DWErr failure = dw::fourCharError("wERR");
  Fixture f(5, 9, 3, 3);
  PatternStream stream(f.source, f.destination);
  f.size(stream, 5, 9, 3);
  f.host.failCall("WriteRasterTile", 2, failure);
  EXPECT_FALSE(stream.Run(f.request, 3));
  EXPECT_EQ(stream.bands.size(), 2u) << "no band after the failed one";
  EXPECT_EQ(stream.LastHostError(), failure);
  EXPECT_TRUE(f.destinationHasPattern(3)) << "the first band stays written";
  const Image image = f.host.imageOf(f.destination);
  EXPECT_EQ(image.at(0, 3, 0), 0) << "the second band never arrived";
}

TEST(ImageStreamBase, SecondRunDoesNotPrepareAgain) {
  Fixture f(5, 4, 3, 4);
  PatternStream stream(f.source, f.destination);
  f.size(stream, 5, 4, 3);
  EXPECT_TRUE(stream.Run(f.request, 4));
  EXPECT_TRUE(stream.Run(f.request, 4));
  EXPECT_EQ(stream.prepares, 1);
}

// Reads take whole rows from the record's bounds, whatever columns the request names.
TEST(ImageStreamBase, FetchReadsWholeRows) {
  Fixture f(5, 4, 3, 4);
  PatternStream stream(f.source, f.destination);
  f.size(stream, 5, 4, 3);
  std::vector<uint8_t> rows(10 * 3 * 3);
  const dw::ImageBandRequest fetch{rows.data(), 2, 4, 2, 3, 30, 0};
  ASSERT_EQ(stream.FetchSourceRows(fetch), 0);
  ASSERT_EQ(f.host.reads.size(), 1u);
  const DWSlice& slice = f.host.reads[0].slice;
  EXPECT_EQ(slice.top, 2);
  EXPECT_EQ(slice.bottom, 5);
  EXPECT_EQ(slice.left, 0);
  EXPECT_EQ(slice.right, 10);
  EXPECT_EQ(slice.front, 0);
  EXPECT_EQ(slice.back, 3);
}

TEST(ImageStreamBase, FetchPassesHostErrorsThrough) {
  const DWErr failure = dw::fourCharError("rERR");
  Fixture f(5, 4, 3, 4);
  PatternStream stream(f.source, f.destination);
  f.size(stream, 5, 4, 3);
  std::vector<uint8_t> rows(10 * 3);
  f.host.failCall("GetRasterRecord", 1, failure);
  EXPECT_EQ(stream.FetchSourceRows(dw::ImageBandRequest{rows.data(), 0, 0, 10, 1, 30, 0}), failure);
  f.host.failCall("ReadRasterTile", 1, failure + 1);
  EXPECT_EQ(stream.FetchSourceRows(dw::ImageBandRequest{rows.data(), 0, 0, 10, 1, 30, 0}), failure + 1);
  EXPECT_EQ(stream.LastHostError(), failure + 1);
}

TEST(AlignedRowBytes, PitchRule) {
  struct Case {
    uint32_t width, bits, pitch;
  };
  const Case cases[] = {{1, 8, 4},   {4, 8, 4}, {5, 8, 8},  {5, 24, 16}, {3, 32, 12},
                        {7, 40, 36}, {1, 1, 4}, {32, 1, 4}, {33, 1, 8},  {0, 24, 0}};
  for (const Case& c : cases)
    EXPECT_EQ(dw::alignedRowBytes(c.width, c.bits), c.pitch) << c.width << " pixels of " << c.bits << " bits";
}

}  // namespace
