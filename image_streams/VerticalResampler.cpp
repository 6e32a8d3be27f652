#include "image_streams/VerticalResampler.h"

#include <utility>

#include "image_streams/FixedPoint.h"
#include "image_streams/VectorRows.h"

namespace dw {

namespace {

// Channels 0 stands for any count up to eight, read at run time.
template <uint32_t Channels, std::size_t... T>
void filterRow(const VerticalResampler& v, uint8_t* output, std::index_sequence<T...>) {
  const uint32_t channels = Channels ? Channels : v.channels;
  const int32_t width = v.outputWidth;
  const int16_t* w = v.kernel + v.phaseOffset;
  const int32_t weight[] = {w[T]...};
  for (uint32_t k = 0; k < channels; ++k) {
    const uint8_t* row[] = {v.rows[k][T]...};
    uint8_t* out = output + k;
    for (int32_t x = 0; x < width; ++x) out[x * channels] = fixedPointToSample(((weight[T] * row[T][x]) + ...));
  }
}

template <int32_t Taps, uint32_t Channels>
void filterRowWith(const VerticalResampler& v, uint8_t* output) {
  filterRow<Channels>(v, output, std::make_index_sequence<Taps>());
}

template <int32_t Taps>
VerticalResampler::RowFunction rowFunctionFor(uint32_t channels) {
  switch (channels) {
    case 1:
      return filterRowWith<Taps, 1>;
    case 2:
      return filterRowWith<Taps, 2>;
    case 3:
      return filterRowWith<Taps, 3>;
    case 4:
      return filterRowWith<Taps, 4>;
    case 5:
      return filterRowWith<Taps, 5>;
    default:
      return filterRowWith<Taps, 0>;
  }
}

VerticalResampler::RowFunction chooseRowFunction(int32_t taps, uint32_t channels) {
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

bool VerticalResampler::Build(uint32_t channelCount, uint32_t sourceHeight, uint32_t destinationHeight, RowPath path) {
  if (channelCount == 0 || channelCount > maxChannels || sourceHeight == 0 || destinationHeight == 0 ||
      sourceHeight > INT16_MAX || destinationHeight > INT16_MAX)
    return false;
  channels = channelCount;
  const ResampleKernel& table = resampleKernel(chooseResampleKernel(resampleScale(sourceHeight, destinationHeight)));
  taps = table.taps;
  kernel = table.weights;
  phaseOffset = 0;
  outputWidth = 0;
  for (auto& channelRows : rows)
    for (const uint8_t*& row : channelRows) row = nullptr;
  rowFunction = chooseRowFunction(taps, channels);
  if (RowFunction vector = path == RowPath::Fastest ? vectorVerticalRow(taps) : nullptr) rowFunction = vector;
  return rowFunction != nullptr;
}

}  // namespace dw
