#include "BicubicOracle.h"

#include <algorithm>
#include <cmath>
#include <vector>

namespace streams_test {

namespace {

// Cubic convolution, a = -0.75, in the textbook form.
double keys(double x) {
  const double a = -0.75;
  const double u = std::abs(x);
  if (u < 1) return (a + 2) * u * u * u - (a + 3) * u * u + 1;
  if (u < 2) return a * (u * u * u - 5 * u * u + 8 * u - 4);
  return 0;
}

struct Tap {
  int32_t index;
  double weight;
};

// For each destination index, its taps: source indices (clamped to the image) and weights.
std::vector<std::vector<Tap>> axisTaps(int32_t sourceSize, int32_t destinationSize) {
  const float scale = float(destinationSize) / float(sourceSize);
  int32_t step = 4;
  if (double(scale) < 0.917) step = 3;
  if (double(scale) < 0.771) step = 2;
  if (double(scale) < 0.648) step = 1;
  if (double(scale) < 0.545) step = 0;
  const int32_t kernel = 4 - step;  // 0 .. 4
  const int32_t taps = kernel == 0 ? 4 : kernel <= 2 ? 6 : 8;
  const double widen = std::pow(0.5, kernel / 4.0);
  const int32_t centre = (taps - 1) / 2;

  std::vector<std::vector<Tap>> result(static_cast<size_t>(destinationSize));
  for (int32_t i = 0; i < destinationSize; ++i) {
    const float position = ((float(i) + 0.5f) / float(destinationSize) * float(sourceSize) - 0.5f) * 32.0f;
    const int32_t limit = sourceSize * 32;
    const int32_t q = std::min(std::max(int32_t(std::lround(position)), 0), limit);
    const int32_t whole = q / 32;
    const double fraction = (q % 32) / 32.0;
    double total = 0;
    for (int32_t j = 0; j < taps; ++j) total += keys((j - centre - fraction) * widen);
    for (int32_t j = 0; j < taps; ++j) {
      const int32_t index = std::min(std::max(whole - centre + j, 0), sourceSize - 1);
      result[size_t(i)].push_back(Tap{index, keys((j - centre - fraction) * widen) / total});
    }
  }
  return result;
}

}  // namespace

Image bicubicOracle(const Image& source, int32_t width, int32_t height) {
  const auto across = axisTaps(source.width, width);
  const auto down = axisTaps(source.height, height);
  const int32_t channels = source.channels;
  std::vector<double> filtered(size_t(source.height) * width * channels);
  for (int32_t y = 0; y < source.height; ++y)
    for (int32_t x = 0; x < width; ++x)
      for (int32_t k = 0; k < channels; ++k) {
        double sum = 0;
        for (const Tap& tap : across[size_t(x)]) sum += tap.weight * source.at(tap.index, y, k);
        filtered[(size_t(y) * width + x) * channels + k] = std::min(std::max(sum, 0.0), 255.0);
      }
  Image result = makeImage(width, height, channels);
  for (int32_t y = 0; y < height; ++y)
    for (int32_t x = 0; x < width; ++x)
      for (int32_t k = 0; k < channels; ++k) {
        double sum = 0;
        for (const Tap& tap : down[size_t(y)])
          sum += tap.weight * filtered[(size_t(tap.index) * width + x) * channels + k];
        result.at(x, y, k) = uint8_t(std::min(std::max(std::floor(sum + 0.5), 0.0), 255.0));
      }
  return result;
}

}  // namespace streams_test
