// The three image streams through resampleRasterArt on one thread, over an in-memory host:
// reading the source, filtering, writing the destination. Counters give source megapixels per
// second. The peer comparison (bench/peers/resample.sh) runs the 8000 x 8000 RGB cases.
#include <benchmark/benchmark.h>

#include <cstdint>

#include "BenchHost.h"
#include "image_streams/ResampleRasterArt.h"

namespace {

// args: method, source side, channels, destination side
void resample(benchmark::State& state) {
  const int32_t method = int32_t(state.range(0));
  const int32_t side = int32_t(state.range(1));
  const int32_t channels = int32_t(state.range(2));
  const int32_t target = int32_t(state.range(3));
  streams_bench::BenchHost host;
  DWArtHandle source = host.addRaster(side, side, channels);
  // One point per source pixel: the resolution that gives `target` pixels is 72 * target / side.
  const double ppi = 72.0 * target / side;
  for (auto _ : state) {
    DWArtHandle result = nullptr;
    const DWErr error = dw::resampleRasterArt(source, method, ppi, kDWPlaceAbove, source, &result);
    if (error != 0) state.SkipWithError("resampleRasterArt failed");
    benchmark::DoNotOptimize(result);
    state.PauseTiming();
    host.remove(result);
    state.ResumeTiming();
  }
  state.counters["src_MP/s"] =
      benchmark::Counter(double(side) * side / 1e6, benchmark::Counter::kIsIterationInvariantRate);
  state.counters["dst_MP/s"] =
      benchmark::Counter(double(target) * target / 1e6, benchmark::Counter::kIsIterationInvariantRate);
}

void peerCases(benchmark::internal::Benchmark* b) {
  b->ArgNames({"method", "side", "channels", "to"});
  for (int64_t method = 0; method < 3; ++method) b->Args({method, 8000, 3, 2500});
}

void otherCases(benchmark::internal::Benchmark* b) {
  b->ArgNames({"method", "side", "channels", "to"});
  for (int64_t method = 0; method < 3; ++method) {
    b->Args({method, 8000, 1, 2500});
    b->Args({method, 8000, 4, 2500});
    b->Args({method, 4000, 3, 3000});  // table 1 (6 taps) in both axes
    b->Args({method, 4000, 3, 2000});  // halving, 8 taps
  }
}

}  // namespace

BENCHMARK(resample)->Name("resample_8000_rgb_to_2500")->Apply(peerCases)->Unit(benchmark::kMillisecond)->MinTime(2.0);
BENCHMARK(resample)->Name("resample_other")->Apply(otherCases)->Unit(benchmark::kMillisecond)->MinTime(1.0);

BENCHMARK_MAIN();
