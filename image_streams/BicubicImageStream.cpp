#include "image_streams/BicubicImageStream.h"

#include <algorithm>
#include <cstring>
#include <new>

#include "image_streams/MemoryBudget.h"
#include "image_streams/SamplePosition.h"

namespace dw {

BicubicImageStream::~BicubicImageStream() { BicubicImageStream::Finish(); }

bool BicubicImageStream::Prepare(const ImageBandRequest&) {
  if (sourceWidth == 0 || sourceHeight == 0 || destinationWidth == 0 || destinationHeight == 0 || bytesPerPixel == 0 ||
      bytesPerPixel > HorizontalResampler::maxChannels)
    return false;
  channels = bytesPerPixel;
  sourceRowBytes = channels * sourceWidth;
  destinationRowBytes = channels * destinationWidth;

  horizontalFilter.reset(new (std::nothrow) HorizontalResampler);
  verticalFilter.reset(new (std::nothrow) VerticalResampler);
  if (!horizontalFilter || !verticalFilter || !horizontalFilter->Build(channels, sourceWidth, destinationWidth) ||
      !verticalFilter->Build(channels, sourceHeight, destinationHeight)) {
    Finish();
    return false;
  }
  ring.reset(new (std::nothrow) uint8_t[size_t(destinationRowBytes) * size_t(verticalFilter->taps)]);

  // A tenth of the budget, but never fewer rows than the widest kernel plus one.
  const uint64_t budgetBytes = uint64_t(0.1 * double(rasterMemoryBudget()));
  const uint64_t wanted = std::min(uint64_t(sourceRowBytes) * sourceHeight, budgetBytes);
  sourceBandRows = uint32_t(std::max<uint64_t>(resampleMaxTaps + 1, wanted / sourceRowBytes));
  sourceBand.allocate(size_t(sourceRowBytes) * sourceBandRows);
  readCursor = nothingLoaded;
  bandFirstRow = 0;
  rowsLoaded = 0;
  rowSetFill = 0;
  pushStartSlot = 0;
  nextSlot = 0;
  if (sourceBand && ring) return true;
  Finish();
  return false;
}

uint32_t BicubicImageStream::GetBandRows(const ImageBandRequest& request) { return request.rows; }

bool BicubicImageStream::refill() {
  uint32_t at = 0;
  uint32_t rows = 0;
  if (readCursor == nothingLoaded) {
    rows = std::min(sourceBandRows, sourceHeight - rowsLoaded);
  } else {
    uint8_t* band = sourceBand.data();
    std::memmove(band, band + size_t(sourceBandRows - bandOverlapRows) * sourceRowBytes,
                 size_t(bandOverlapRows) * sourceRowBytes);
    rows = std::min(sourceBandRows - bandOverlapRows, sourceHeight - rowsLoaded);
    at = bandOverlapRows;
  }
  // Callers never read past the last source row.
  if (rows == 0) return false;
  readCursor = at;
  ImageBandRequest fetch{
      sourceBand.data() + size_t(at) * sourceRowBytes, rowsLoaded, 0, sourceWidth, rows, sourceRowBytes, 0};
  if (FetchSourceRows(fetch) != kDWNoErr) return false;
  bandFirstRow = rowsLoaded;
  rowsLoaded += rows;
  return true;
}

uint32_t BicubicImageStream::cursorRow() const {
  if (readCursor == nothingLoaded) return 0;
  // Only the first load starts at row 0; later ones sit behind the overlap.
  return bandFirstRow + readCursor - (bandFirstRow != 0 ? bandOverlapRows : 0);
}

bool BicubicImageStream::readPast(uint32_t rows) {
  while (rows > 0) {
    if ((readCursor == nothingLoaded || readCursor >= sourceBandRows) && !refill()) return false;
    const uint32_t step = std::min(rows, sourceBandRows - readCursor);
    readCursor += step;
    rows -= step;
  }
  return true;
}

bool BicubicImageStream::moveCursorTo(uint32_t row) {
  if (readCursor == nothingLoaded) return readPast(row);
  const uint32_t current = cursorRow();
  if (row >= current) return readPast(row - current);
  // A row set spans at most the overlap, so stepping back stays inside the band.
  const uint32_t back = current - row;
  if (back > readCursor) return false;
  readCursor -= back;
  return true;
}

bool BicubicImageStream::push(uint32_t rows) {
  pushStartSlot = nextSlot;
  const uint32_t taps = uint32_t(verticalFilter->taps);
  for (uint32_t i = 0; i < rows; ++i) {
    if ((readCursor == nothingLoaded || readCursor >= sourceBandRows) && !refill()) return false;
    horizontalFilter->SetOutputs(ring.get() + size_t(nextSlot) * destinationRowBytes);
    horizontalFilter->FilterRow(sourceBand.data() + size_t(readCursor) * sourceRowBytes);
    nextSlot = nextSlot + 1 == taps ? 0 : nextSlot + 1;
    ++readCursor;
  }
  return true;
}

void BicubicImageStream::setRowSetRow(uint32_t tap, uint32_t slot, uint32_t firstColumn) {
  rowSetSlot[tap] = slot;
  const uint8_t* row = ring.get() + size_t(slot) * destinationRowBytes + firstColumn;
  for (uint32_t k = 0; k < channels; ++k) verticalFilter->rows[k][tap] = row + size_t(k) * destinationWidth;
}

bool BicubicImageStream::ProduceBand(const ImageBandRequest& request) {
  if (uint64_t(request.firstColumn) + request.columns > destinationWidth ||
      uint64_t(request.firstRow) + request.rows > destinationHeight)
    return false;
  const uint32_t taps = uint32_t(verticalFilter->taps);
  firstSourceColumn = uint32_t(std::max(
      0, samplePosition(request.firstColumn, 0, sourceWidth, 0, destinationWidth, horizontalFilter->taps).start));
  verticalFilter->outputWidth = int16_t(request.columns);

  int32_t previousStart = 0;
  uint8_t* output = request.buffer;
  for (uint32_t y = request.firstRow; y < request.firstRow + request.rows; ++y, output += request.rowBytes) {
    const SamplePosition position = samplePosition(y, 0, sourceHeight, 0, destinationHeight, int32_t(taps));
    const int32_t start = position.start;
    verticalFilter->phaseOffset = position.phaseOffset;
    uint32_t topRepeat = 0;
    uint32_t wanted = 0;
    rowSetFill = 0;
    if (y == request.firstRow) {
      // Each band builds its first row set afresh: rows above the image repeat row 0.
      const uint32_t first = uint32_t(std::max(start, 0));
      topRepeat = uint32_t(int32_t(first) - start);
      if (!moveCursorTo(first)) return false;
      wanted = taps - topRepeat;
    } else {
      const int32_t step = start - previousStart;
      if (step <= 0) {
        rowSetFill = taps;
      } else if (uint32_t(step) < taps) {
        for (uint32_t t = 0; t + uint32_t(step) < taps; ++t) rowSetSlot[t] = rowSetSlot[t + uint32_t(step)];
        rowSetFill = taps - uint32_t(step);
        wanted = uint32_t(step);
      } else {
        // The rows between two row sets are read past without being filtered.
        if (!moveCursorTo(uint32_t(start))) return false;
        wanted = taps;
      }
    }
    // Rows below the image repeat the last row.
    const uint32_t remaining = sourceHeight - cursorRow();
    const uint32_t bottomRepeat = wanted > remaining ? wanted - remaining : 0;
    wanted -= bottomRepeat;
    if (bottomRepeat > 0 && rowSetFill + topRepeat + wanted == 0) return false;
    if (!push(wanted)) return false;

    uint32_t tap = 0;
    for (; tap < rowSetFill; ++tap) setRowSetRow(tap, rowSetSlot[tap], request.firstColumn);
    for (uint32_t i = 0; i < topRepeat; ++i, ++tap) setRowSetRow(tap, pushStartSlot, request.firstColumn);
    for (uint32_t i = 0; i < wanted; ++i, ++tap) setRowSetRow(tap, (pushStartSlot + i) % taps, request.firstColumn);
    for (uint32_t i = 0; i < bottomRepeat; ++i, ++tap) setRowSetRow(tap, rowSetSlot[tap - 1], request.firstColumn);

    verticalFilter->FilterRow(output);
    previousStart = start;
  }
  return true;
}

bool BicubicImageStream::Finish() {
  horizontalFilter.reset();
  verticalFilter.reset();
  sourceBand.release();
  ring.reset();
  return true;
}

}  // namespace dw
