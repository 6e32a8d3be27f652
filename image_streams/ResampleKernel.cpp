#include "image_streams/ResampleKernel.h"

#include <cmath>
#include <cstdlib>

namespace dw {

namespace {

constexpr double cubicA = -0.75;
constexpr int16_t tableTaps[resampleKernelCount] = {4, 6, 6, 8, 8};

double cubic(double x) {
  x = std::fabs(x);
  if (x < 1) return ((cubicA + 2) * x - (cubicA + 3)) * x * x + 1;
  if (x < 2) return ((cubicA * x - 5 * cubicA) * x + 8 * cubicA) * x - 4 * cubicA;
  return 0;
}

struct KernelTables {
  int16_t weights[resampleKernelCount][resamplePhases * resampleMaxTaps];
  ResampleKernel kernels[resampleKernelCount];

  KernelTables() {
    for (int32_t table = 0; table < resampleKernelCount; ++table) {
      const int32_t taps = tableTaps[table];
      const double scale = std::exp2(-0.25 * table);
      const int32_t centre = (taps - 1) / 2;
      for (int32_t phase = 0; phase < resamplePhases; ++phase) {
        const double t = phase / double(resamplePhases);
        double w[resampleMaxTaps];
        double total = 0;
        for (int32_t j = 0; j < taps; ++j) total += w[j] = cubic((j - centre - t) * scale);
        int16_t* row = weights[table] + phase * taps;
        int32_t sum = 0;
        int32_t largest = 0;
        for (int32_t j = 0; j < taps; ++j) {
          row[j] = int16_t(std::lround(w[j] * resampleWeightOne / total));
          sum += row[j];
          if (row[j] > row[largest]) largest = j;
        }
        // Rounding may miss one exactly; the largest weight absorbs the difference.
        row[largest] = int16_t(row[largest] + resampleWeightOne - sum);
      }
      kernels[table] = ResampleKernel{int16_t(taps), scale, weights[table]};
    }
  }
};

const KernelTables& tables() {
  static const KernelTables built;
  return built;
}

}  // namespace

const ResampleKernel& resampleKernel(int32_t table) { return tables().kernels[table]; }

int32_t chooseResampleKernel(double scale) {
  if (scale >= 0.917) return 0;
  if (scale >= 0.771) return 1;
  if (scale >= 0.648) return 2;
  if (scale >= 0.545) return 3;
  return 4;
}

double resampleScale(uint32_t sourceSize, uint32_t destinationSize) {
  return double(float(destinationSize) / float(sourceSize));
}

}  // namespace dw
