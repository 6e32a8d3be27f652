#pragma once
#include <cstdint>
#include <vector>

#include "StreamFakeHost.h"
#include "image_streams/AlignedRowBytes.h"
#include "image_streams/ImageStreamBase.h"

namespace streams_test {

struct StreamResult {
  bool succeeded = false;
  DWArtHandle destination = nullptr;
  Image image;
};

// Runs a stream of type Stream from source into a new destination raster of width x height,
// through a band buffer of bufferRows rows at the aligned pitch, as the resampling service does.
template <typename Stream>
StreamResult runStream(StreamFakeHost& host, DWArtHandle source, int32_t width, int32_t height,
                       uint32_t bufferRows = 1u << 20) {
  const FakeRaster& from = host.raster(source);
  const int32_t channels = int32_t(from.pixelBytes());
  StreamResult result;
  result.destination = host.addRaster(makeImage(width, height, channels));
  const uint32_t rowBytes = dw::alignedRowBytes(uint32_t(width), uint32_t(channels) * 8);
  const uint32_t rows = std::min<uint32_t>(bufferRows, uint32_t(height));
  std::vector<uint8_t> buffer(size_t(rowBytes) * std::max(rows, 1u), 0);
  DWArtHandle sourceHandle = source;
  Stream stream(sourceHandle, result.destination);
  stream.SetSizes(uint32_t(from.width()), uint32_t(from.height()), uint32_t(width), uint32_t(height),
                  uint32_t(channels));
  const dw::ImageBandRequest request{buffer.data(), 0, 0, uint32_t(width), uint32_t(height), rowBytes, 0};
  result.succeeded = stream.Run(request, rows);
  result.image = host.imageOf(result.destination);
  return result;
}

}  // namespace streams_test
