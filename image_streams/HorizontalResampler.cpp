#include "image_streams/HorizontalResampler.h"

#include <new>
#include <utility>

#include "image_streams/FixedPoint.h"
#include "image_streams/SamplePosition.h"
#include "image_streams/VectorRows.h"

namespace dw {

namespace {

template <uint32_t Channels, std::size_t... J>
void filterMiddle(const HorizontalResampler& h, const uint8_t* row, std::index_sequence<J...>) {
  uint8_t* output[Channels];
  for (uint32_t k = 0; k < Channels; ++k) output[k] = h.output[k];
  const int16_t* start = h.start.get();
  const uint8_t* phaseOffset = h.phaseOffset.get();
  const int32_t end = h.leftCount + h.middleCount;
  for (int32_t x = h.leftCount; x < end; ++x) {
    const uint8_t* p = row + start[x] * int32_t(Channels);
    const int16_t* w = h.kernel + phaseOffset[x];
    for (uint32_t k = 0; k < Channels; ++k)
      output[k][x] = fixedPointToSample(((int32_t(w[J]) * p[J * Channels + k]) + ...));
  }
}

template <std::size_t... J>
void filterMiddleAnyChannels(const HorizontalResampler& h, const uint8_t* row, std::index_sequence<J...>) {
  const int32_t channels = int32_t(h.channels);
  const int32_t end = h.leftCount + h.middleCount;
  for (int32_t k = 0; k < channels; ++k) {
    uint8_t* output = h.output[k];
    for (int32_t x = h.leftCount; x < end; ++x) {
      const uint8_t* p = row + h.start[x] * channels + k;
      const int16_t* w = h.kernel + h.phaseOffset[x];
      output[x] = fixedPointToSample(((int32_t(w[J]) * p[int32_t(J) * channels]) + ...));
    }
  }
}

// Channels 0 stands for any count up to eight, read at run time.
template <int32_t Taps, uint32_t Channels>
void filterRow(const HorizontalResampler& h, const uint8_t* row) {
  h.FilterEdge(row, 0, h.leftCount);
  if constexpr (Channels == 0)
    filterMiddleAnyChannels(h, row, std::make_index_sequence<Taps>());
  else
    filterMiddle<Channels>(h, row, std::make_index_sequence<Taps>());
  h.FilterEdge(row, h.leftCount + h.middleCount, h.destinationWidth);
}

template <int32_t Taps>
HorizontalResampler::RowFunction rowFunctionFor(uint32_t channels) {
  switch (channels) {
    case 1:
      return filterRow<Taps, 1>;
    case 2:
      return filterRow<Taps, 2>;
    case 3:
      return filterRow<Taps, 3>;
    case 4:
      return filterRow<Taps, 4>;
    case 5:
      return filterRow<Taps, 5>;
    default:
      return filterRow<Taps, 0>;
  }
}

HorizontalResampler::RowFunction chooseRowFunction(int32_t taps, uint32_t channels) {
  switch (taps) {
    case 2:
      return rowFunctionFor<2>(channels);
    case 3:
      return rowFunctionFor<3>(channels);
    case 4:
      return rowFunctionFor<4>(channels);
    case 5:
      return rowFunctionFor<5>(channels);
    case 6:
      return rowFunctionFor<6>(channels);
    case 7:
      return rowFunctionFor<7>(channels);
    case 8:
      return rowFunctionFor<8>(channels);
    default:
      return nullptr;
  }
}

}  // namespace

// Narrow sources put taps past both ends of the row, so edge pixels clamp on either side.
void HorizontalResampler::FilterEdge(const uint8_t* row, int32_t from, int32_t to) const {
  const int32_t last = sourceWidth - 1;
  for (uint32_t k = 0; k < channels; ++k) {
    for (int32_t x = from; x < to; ++x) {
      const int16_t* w = kernel + phaseOffset[x];
      int32_t sum = 0;
      for (int32_t j = 0; j < taps; ++j) {
        const int32_t column = std::min(std::max(start[x] + j, 0), last);
        sum += w[j] * row[column * int32_t(channels) + int32_t(k)];
      }
      output[k][x] = fixedPointToSample(sum);
    }
  }
}

bool HorizontalResampler::Build(uint32_t channelCount, uint32_t sourceSize, uint32_t destinationSize, RowPath path) {
  if (channelCount == 0 || channelCount > maxChannels || sourceSize == 0 || destinationSize == 0 ||
      sourceSize > INT16_MAX || destinationSize > INT16_MAX)
    return false;
  channels = channelCount;
  sourceWidth = int16_t(sourceSize);
  destinationWidth = int16_t(destinationSize);
  const ResampleKernel& table = resampleKernel(chooseResampleKernel(resampleScale(sourceSize, destinationSize)));
  taps = table.taps;
  kernel = table.weights;
  rowFunction = chooseRowFunction(taps, channels);
  start.reset(new (std::nothrow) int16_t[destinationSize]);
  phaseOffset.reset(new (std::nothrow) uint8_t[destinationSize]);
  if (!start || !phaseOffset || !rowFunction) return false;
  if (RowFunction vector = path == RowPath::Fastest ? vectorHorizontalRow(channels) : nullptr) {
    planeStride = sourceSize + 16;
    planes.reset(new (std::nothrow) uint8_t[size_t(planeStride) * channels]());
    paddedKernel.reset(new (std::nothrow) int16_t[resamplePhases * 8]());
    paddedOffset.reset(new (std::nothrow) uint16_t[destinationSize]);
    if (!planes || !paddedKernel || !paddedOffset) return false;
    for (int32_t phase = 0; phase < resamplePhases; ++phase)
      for (int32_t j = 0; j < taps; ++j) paddedKernel[phase * 8 + j] = kernel[phase * taps + j];
    rowFunction = vector;
  }

  for (uint32_t i = 0; i < destinationSize; ++i) {
    const SamplePosition position = samplePosition(i, 0, sourceSize, 0, destinationSize, taps);
    start[i] = int16_t(position.start);
    phaseOffset[i] = position.phaseOffset;
    if (paddedOffset) paddedOffset[i] = uint16_t(position.phaseOffset / taps * 8);
  }
  leftCount = 0;
  while (leftCount < destinationWidth && start[leftCount] < 0) ++leftCount;
  // The middle run keeps one column of margin on the right.
  int32_t end = leftCount;
  while (end < destinationWidth && start[end] >= 0 && start[end] + taps <= sourceWidth - 1) ++end;
  middleCount = end - leftCount;
  rightCount = destinationWidth - end;
  return true;
}

void HorizontalResampler::SetOutputs(uint8_t* slot) {
  for (uint32_t k = 0; k < channels; ++k) output[k] = slot + size_t(k) * size_t(destinationWidth);
}

}  // namespace dw
