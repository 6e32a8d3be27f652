// Input bandwidth of the tile down-sampler (bytes of supersampled tile per second, one thread)
// beside memcpy of a buffer of the same size on the same machine.
#include <benchmark/benchmark.h>

#include <cstdint>
#include <cstring>
#include <vector>

#include "engine/DownsampleKernels.h"
#include "engine/RasterTypes.h"

namespace {

// The tile the engine plans for a 2000-pixel-wide raster: tileRows = (budget / f^2) / tileStride.
// At the default 20 MiB budget the supersampled tile is about 20 MiB and comes from main memory;
// at 2 MiB it stays in the caches.
constexpr int32_t kWidth = 2000;
constexpr uint32_t kBudgets[] = {20u << 20, 2u << 20};

struct Family {
  const char* name;
  int32_t channels;
  bool alpha;
};

const Family kFamilies[] = {
    {"Gray", 1, false},         {"RGB", 3, false},          {"CMYK", 4, false},
    {"NChannel6", 6, false},    {"GrayAlpha", 2, true},     {"RGBAlpha", 4, true},
    {"CMYKAlpha", 5, true},     {"NChannel6Alpha", 7, true},
};

uint32_t nextRandom(uint32_t& state) {
  state = state * 1664525u + 1013904223u;
  return state >> 8;
}

struct Tiles {
  std::vector<uint8_t> super[2];  // two different drawings, so every run changes the output
  std::vector<uint8_t> tile;
  dw::DownsampleTile view;
  size_t superBytes = 0;
};

Tiles makeTiles(const Family& family, int32_t factor, uint32_t budget) {
  Tiles t;
  const int32_t tileStride = int32_t(dw::rowStride(8 * family.channels, kWidth));
  const int32_t rows = int32_t((budget / uint32_t(factor * factor)) / uint32_t(tileStride));
  const int32_t superStride = int32_t(dw::rowStride(8 * family.channels, int64_t(kWidth) * factor));
  t.superBytes = size_t(rows) * factor * size_t(superStride);
  uint32_t state = 12345;
  for (auto& buffer : t.super) {
    buffer.resize(t.superBytes);
    for (size_t i = 0; i < buffer.size(); ++i) buffer[i] = uint8_t(nextRandom(state));
    if (family.alpha) {
      // A quarter of the samples fully transparent, as around the edges of drawn art.
      for (size_t i = 0; i + family.channels <= buffer.size(); i += size_t(family.channels))
        if ((nextRandom(state) & 3) == 0) buffer[i] = 0;
    }
  }
  t.tile.assign(size_t(rows) * size_t(tileStride), 0);
  t.view.superStride = superStride;
  t.view.tile = t.tile.data();
  t.view.tileStride = tileStride;
  t.view.tileWidth = kWidth;
  t.view.tileRows = rows;
  t.view.channels = family.channels;
  t.view.factor = factor;
  return t;
}

void BM_Downsample(benchmark::State& state, Family family, int32_t factor, uint32_t budget) {
  Tiles t = makeTiles(family, factor, budget);
  int which = 0;
  for (auto _ : state) {
    t.view.super = t.super[which].data();
    which ^= 1;
    if (family.alpha)
      dw::downsampleWithAlpha(t.view);
    else
      dw::downsampleOpaque(t.view);
    benchmark::DoNotOptimize(t.tile.data());
    benchmark::ClobberMemory();
  }
  state.SetBytesProcessed(int64_t(state.iterations()) * int64_t(t.superBytes));
}

void BM_Memcpy(benchmark::State& state, Family family, int32_t factor, uint32_t budget) {
  const Tiles t = makeTiles(family, factor, budget);
  std::vector<uint8_t> target(t.superBytes);
  for (auto _ : state) {
    std::memcpy(target.data(), t.super[0].data(), t.superBytes);
    benchmark::DoNotOptimize(target.data());
    benchmark::ClobberMemory();
  }
  state.SetBytesProcessed(int64_t(state.iterations()) * int64_t(t.superBytes));
}

int registerAll() {
  for (uint32_t budget : kBudgets)
    for (const Family& family : kFamilies)
      for (int32_t factor : {2, 4}) {
        const std::string suffix = std::string(family.name) + "/f" + std::to_string(factor) + "/budget" +
                                   std::to_string(budget >> 20) + "MiB";
        benchmark::RegisterBenchmark(("Downsample/" + suffix).c_str(), BM_Downsample, family, factor, budget)
            ->Unit(benchmark::kMillisecond);
        benchmark::RegisterBenchmark(("Memcpy/" + suffix).c_str(), BM_Memcpy, family, factor, budget)
            ->Unit(benchmark::kMillisecond);
      }
  // The engine reduces one tile per slot and processor at the same time: each thread here has its
  // own tiles, and bytes per second of wall time are summed over the threads, so threads:2 against
  // threads:1 is the scaling of a batch (memory bandwidth is shared).
  for (const Family& family : kFamilies)
    for (int32_t factor : {2, 4}) {
      const std::string suffix = std::string(family.name) + "/f" + std::to_string(factor) + "/budget20MiB";
      benchmark::RegisterBenchmark(("DownsampleThreads/" + suffix).c_str(), BM_Downsample, family, factor, kBudgets[0])
          ->Unit(benchmark::kMillisecond)
          ->UseRealTime()
          ->Threads(1)
          ->Threads(2);
      benchmark::RegisterBenchmark(("MemcpyThreads/" + suffix).c_str(), BM_Memcpy, family, factor, kBudgets[0])
          ->Unit(benchmark::kMillisecond)
          ->UseRealTime()
          ->Threads(1)
          ->Threads(2);
    }
  return 0;
}

const int kRegistered = registerAll();

}  // namespace

BENCHMARK_MAIN();
