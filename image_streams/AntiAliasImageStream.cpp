#include "image_streams/AntiAliasImageStream.h"

#include <algorithm>
#include <new>

#include "image_streams/MemoryBudget.h"

namespace dw {

namespace {

// The block of pixel x is sourceRow[(table[x] - sx0) * channels] up to that of x + 1.
template <uint32_t Channels>
void accumulateBlocks(const uint8_t* row, uint32_t* sums, const uint32_t* table, const ExactDivider* divider,
                      uint32_t x0, uint32_t count, uint32_t sx0) {
  const uint8_t* pixel = row + (table[x0] - sx0) * Channels;
  for (uint32_t x = x0; x < x0 + count; ++x, sums += Channels) {
    const uint8_t* end = row + (table[x + 1] - sx0) * Channels;
    // One scalar sum per channel: an array of sums would be stored lane by lane and read back
    // as a vector, which stalls.
    for (uint32_t k = 0; k < Channels; ++k) {
      uint32_t sum = 0;
      for (const uint8_t* p = pixel + k; p < end; p += Channels) sum += *p;
      sums[k] += divider[x].divide(sum);
    }
    pixel = end;
  }
}

void accumulateBlocksAnyChannels(const uint8_t* row, uint32_t* sums, const uint32_t* table, const ExactDivider* divider,
                                 uint32_t x0, uint32_t count, uint32_t sx0, uint32_t channels) {
  for (uint32_t k = 0; k < channels; ++k) {
    for (uint32_t x = x0; x < x0 + count; ++x) {
      uint32_t sum = 0;
      for (uint32_t p = table[x] - sx0; p < table[x + 1] - sx0; ++p) sum += row[p * channels + k];
      sums[(x - x0) * channels + k] += divider[x].divide(sum);
    }
  }
}

}  // namespace

AntiAliasImageStream::~AntiAliasImageStream() { AntiAliasImageStream::Finish(); }

uint32_t AntiAliasImageStream::columnsWanted(const ImageBandRequest& request) const {
  return uint32_t(std::min<double>(sourceWidth, double(uint32_t(request.columns * ratioX)) + 1));
}

bool AntiAliasImageStream::Prepare(const ImageBandRequest& request) {
  // Sums and block widths must stay inside the exact range of ExactDivider.
  if (sourceWidth == 0 || sourceHeight == 0 || destinationWidth == 0 || destinationHeight == 0 || bytesPerPixel == 0 ||
      sourceWidth > ExactDivider::maxDivisor || sourceHeight > ExactDivider::maxDivisor ||
      destinationWidth > sourceWidth || destinationHeight > sourceHeight)
    return false;
  channels = bytesPerPixel;
  sourceRowBytes = bytesPerPixel * sourceWidth;
  destinationRowValues = bytesPerPixel * destinationWidth;
  ratioX = double(sourceWidth) / double(destinationWidth);
  ratioY = double(sourceHeight) / double(destinationHeight);

  accumulator.reset(new (std::nothrow) uint32_t[destinationRowValues]);
  columnTable.reset(new (std::nothrow) uint32_t[destinationWidth + 1]);
  rowTable.reset(new (std::nothrow) uint32_t[destinationHeight + 1]);
  columnDivider.reset(new (std::nothrow) ExactDivider[destinationWidth]);
  if (!accumulator || !columnTable || !rowTable || !columnDivider) return false;
  for (uint32_t i = 0; i < destinationWidth; ++i) columnTable[i] = uint32_t(i * ratioX);
  columnTable[destinationWidth] = sourceWidth;
  for (uint32_t j = 0; j < destinationHeight; ++j) rowTable[j] = uint32_t(j * ratioY);
  rowTable[destinationHeight] = sourceHeight;
  for (uint32_t i = 0; i < destinationWidth; ++i) columnDivider[i] = ExactDivider(columnTable[i + 1] - columnTable[i]);

  const uint64_t bytesPerSourceRow = uint64_t(channels) * columnsWanted(request);
  const uint64_t rowsWanted = std::min<uint64_t>(uint64_t(request.rows * ratioY) + 1, sourceHeight);
  const uint32_t budget = rasterMemoryBudget();
  uint64_t bytes = bytesPerSourceRow * rowsWanted;
  if (bytes > budget) bytes = (budget / bytesPerSourceRow) * bytesPerSourceRow;
  if (bytes == 0) bytes = budget;
  bytes = std::max<uint64_t>(bytes, (uint64_t(ratioY) + 1) * sourceRowBytes);
  if (bytes > UINT32_MAX) return false;
  scratchBytes = uint32_t(bytes);
  // One row of slack: truncated row starts may give a block one row more than the ratio says.
  return scratch.allocate(size_t(scratchBytes) + sourceRowBytes);
}

uint32_t AntiAliasImageStream::GetBandRows(const ImageBandRequest& request) {
  const uint32_t rowsThatFit = scratchBytes / (channels * columnsWanted(request));
  return std::min(request.rows, std::max(1u, uint32_t(rowsThatFit / ratioY)));
}

bool AntiAliasImageStream::ProduceBand(const ImageBandRequest& request) {
  const uint32_t x0 = request.firstColumn;
  const uint32_t count = request.columns;
  const uint32_t y0 = request.firstRow;
  const uint32_t sx0 = columnTable[x0];
  const uint32_t sy0 = rowTable[y0];
  const uint32_t sy1 = rowTable[y0 + request.rows];
  // The host delivers whole rows, so the scratch holds them at the full source pitch.
  if (uint64_t(sy1 - sy0) * sourceRowBytes > scratch.size()) return false;
  ImageBandRequest fetch{scratch.data(), sy0, sx0, columnTable[x0 + count] - sx0, sy1 - sy0, sourceRowBytes, 0};
  if (FetchSourceRows(fetch) != kDWNoErr) return false;

  uint8_t* output = request.buffer;
  for (uint32_t y = y0; y < y0 + request.rows; ++y, output += request.rowBytes) {
    std::fill_n(accumulator.get(), destinationRowValues, 0u);
    for (uint32_t r = rowTable[y]; r < rowTable[y + 1]; ++r)
      AccumulateRow(scratch.data() + size_t(r - sy0) * sourceRowBytes + size_t(sx0) * channels, accumulator.get(), x0,
                    count, sx0);
    NormalizeRow(accumulator.get(), output, count, rowTable[y + 1] - rowTable[y]);
  }
  return true;
}

void AntiAliasImageStream::AccumulateRow(const uint8_t* sourceRow, uint32_t* sums, uint32_t x0, uint32_t count,
                                         uint32_t sx0) {
  // The row pointer is at source column sx0; the tables count from column 0.
  const uint8_t* row = sourceRow - size_t(sx0) * channels;
  const uint32_t* table = columnTable.get();
  const ExactDivider* divider = columnDivider.get();
  switch (channels) {
    case 1:
      accumulateBlocks<1>(row, sums, table, divider, x0, count, 0);
      break;
    case 2:
      accumulateBlocks<2>(row, sums, table, divider, x0, count, 0);
      break;
    case 3:
      accumulateBlocks<3>(row, sums, table, divider, x0, count, 0);
      break;
    case 4:
      accumulateBlocks<4>(row, sums, table, divider, x0, count, 0);
      break;
    case 5:
      accumulateBlocks<5>(row, sums, table, divider, x0, count, 0);
      break;
    default:
      accumulateBlocksAnyChannels(row, sums, table, divider, x0, count, 0, channels);
      break;
  }
}

void AntiAliasImageStream::NormalizeRow(const uint32_t* sums, uint8_t* output, uint32_t count, uint32_t rowCount) {
  const ExactDivider divider(rowCount ? rowCount : 1);
  for (uint32_t i = 0; i < count * channels; ++i) output[i] = uint8_t(divider.divide(sums[i]));
}

bool AntiAliasImageStream::Finish() {
  scratch.release();
  columnTable.reset();
  rowTable.reset();
  accumulator.reset();
  columnDivider.reset();
  return true;
}

}  // namespace dw
