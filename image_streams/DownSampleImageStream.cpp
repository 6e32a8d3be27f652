#include "image_streams/DownSampleImageStream.h"

#include <cstring>
#include <new>

namespace dw {

namespace {

template <uint32_t Channels>
void copyPixels(const uint8_t* row, uint8_t* output, const uint32_t* offset, uint32_t count) {
  for (uint32_t x = 0; x < count; ++x, output += Channels) std::memcpy(output, row + offset[x], Channels);
}

void copyPixelsAnyChannels(const uint8_t* row, uint8_t* output, const uint32_t* offset, uint32_t count,
                           uint32_t channels) {
  for (uint32_t x = 0; x < count; ++x, output += channels) std::memcpy(output, row + offset[x], channels);
}

}  // namespace

DownSampleImageStream::~DownSampleImageStream() { DownSampleImageStream::Finish(); }

bool DownSampleImageStream::Prepare(const ImageBandRequest&) {
  if (sourceWidth == 0 || sourceHeight == 0 || destinationWidth == 0 || destinationHeight == 0 || bytesPerPixel == 0)
    return false;
  channels = bytesPerPixel;
  sourceRowBytes = channels * sourceWidth;
  ratioX = double(sourceWidth) / double(destinationWidth);
  ratioY = double(sourceHeight) / double(destinationHeight);
  columnTable.reset(new (std::nothrow) uint32_t[destinationWidth + 1]);
  if (!columnTable || !rowBuffer.allocate(sourceRowBytes)) return false;
  for (uint32_t i = 0; i < destinationWidth; ++i) {
    // An enlargement would sample past the row; such a stream is never asked for.
    const uint32_t column = uint32_t(i * ratioX + ratioX * 0.5);
    columnTable[i] = (column < sourceWidth ? column : sourceWidth - 1) * channels;
  }
  columnTable[destinationWidth] = channels * sourceWidth;
  return true;
}

uint32_t DownSampleImageStream::GetBandRows(const ImageBandRequest& request) { return request.rows; }

bool DownSampleImageStream::ProduceBand(const ImageBandRequest& request) {
  const uint32_t x0 = request.firstColumn;
  const uint32_t count = request.columns;
  const uint32_t firstColumn = columnTable[x0] / channels;
  const uint32_t columns = columnTable[x0 + count] / channels - firstColumn;
  uint8_t* output = request.buffer;
  for (uint32_t y = request.firstRow; y < request.firstRow + request.rows; ++y, output += request.rowBytes) {
    const uint32_t row = uint32_t(y * ratioY);
    ImageBandRequest fetch{rowBuffer.data(), row, firstColumn, columns, 1, sourceRowBytes, 0};
    if (FetchSourceRows(fetch) != kDWNoErr) return false;
    // Column 0 takes source column 0, like row 0: every sample moves left by the first offset.
    CopyRow(rowBuffer.data() + (columnTable[x0] - columnTable[0]), output, x0, count);
  }
  return true;
}

void DownSampleImageStream::CopyRow(const uint8_t* row, uint8_t* output, uint32_t start, uint32_t count) {
  const uint32_t* offset = columnTable.get() + start;
  const uint8_t* base = row - offset[0];  // row holds the pixel of column start
  switch (channels) {
    case 1:
      copyPixels<1>(base, output, offset, count);
      break;
    case 2:
      copyPixels<2>(base, output, offset, count);
      break;
    case 3:
      copyPixels<3>(base, output, offset, count);
      break;
    case 4:
      copyPixels<4>(base, output, offset, count);
      break;
    case 5:
      copyPixels<5>(base, output, offset, count);
      break;
    default:
      copyPixelsAnyChannels(base, output, offset, count, channels);
      break;
  }
}

bool DownSampleImageStream::Finish() {
  rowBuffer.release();
  columnTable.reset();
  return true;
}

}  // namespace dw
