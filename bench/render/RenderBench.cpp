// Drawing a real wallpaper (about 560 paths with about 1,000 opacities, gradients) into ports at
// 1x and 4x its pixel size; the counter ms_per_MP is the time per megapixel of port.
//   RENDER_BENCH_SVG=file.svg overrides the drawing; RENDER_BENCH_DUMP=out.png writes the last RGB
//   port drawn at 1x, to look at.
#include "refhost/document/Document.h"
#include "refhost/io/SvgImport.h"
#include "refhost/io/export/RasterExport.h"
#include "refhost/render/DrawIntoPort.h"
#include "refhost/render/HugeBuffer.h"
#include "refhost/render/Port.h"

#include <benchmark/benchmark.h>

#include <cmath>
#include <cstdlib>
#include <cstring>
#include <memory>

using namespace refhost;
using namespace refhost::render;

namespace {

const char* kDefaultSvg = "/usr/share/desktop-base/moonlight-theme/wallpaper/contents/images/1920x1080.svg";

Document* drawing() {
  static std::unique_ptr<Document> doc = [] {
    const char* path = std::getenv("RENDER_BENCH_SVG");
    try {
      return io::importSvgFile(path ? path : kDefaultSvg).document;
    } catch (const std::exception&) {
      return std::unique_ptr<Document>();
    }
  }();
  return doc.get();
}

void drawDocument(benchmark::State& state, Family family, bool alpha) {
  Document* doc = drawing();
  if (!doc || doc->artboards().empty()) {
    state.SkipWithError("the drawing could not be imported (install desktop-base or set RENDER_BENCH_SVG)");
    return;
  }
  const Rect page = doc->artboards().front().bounds;
  const double factor = static_cast<double>(state.range(0));
  // One SVG pixel (0.75 pt) is one port pixel at 1x.
  const double scale = factor / 0.75;
  const std::int32_t width = static_cast<std::int32_t>(std::lround(page.width() * scale));
  const std::int32_t rows = static_cast<std::int32_t>(std::lround(page.height() * scale));
  const ColorSpace::Ptr space = ColorSpace::process(family, alpha);
  const std::int32_t rowBytes = (width * space->channelCount() + 3) / 4 * 4;
  HugeBuffer buffer;
  std::uint8_t* pixels = buffer.reserve(static_cast<std::size_t>(rowBytes) * static_cast<std::size_t>(rows));
  Port port(IntRect{0, 0, width, rows}, rowBytes, pixels, space, 8 * space->channelCount(), kPortAntialias);
  std::uint8_t empty[33];
  emptyPixel(*space, empty);
  ArtRenderer renderer;
  for (auto _ : state) {
    for (std::int32_t y = 0; y < rows; ++y)
      for (std::int32_t x = 0; x < width; ++x)
        std::memcpy(pixels + static_cast<std::size_t>(y) * rowBytes + static_cast<std::size_t>(x) * space->channelCount(), empty,
                    static_cast<std::size_t>(space->channelCount()));
    const auto& layers = doc->layers();
    for (auto it = layers.rbegin(); it != layers.rend(); ++it)
      if ((*it)->isShown() && (*it)->group())
        drawIntoPort(renderer, port, *(*it)->group(), Point{page.left, page.top}, scale, IntRect{0, 0, width, rows});
    benchmark::DoNotOptimize(pixels[0]);
  }
  const char* dump = std::getenv("RENDER_BENCH_DUMP");
  if (dump && family == Family::Rgb && !alpha && factor == 1) {
    RasterData raster;
    RasterRecord record;
    record.bounds = IntRect{0, 0, width, rows};
    record.byteWidth = rowBytes;
    record.colorSpace = 0x01;
    record.bitsPerPixel = 24;
    raster.setRecord(record);
    std::memcpy(raster.mutablePixels(), pixels, raster.storageSize());
    raster.matrix = Matrix{0.75, 0, 0, 0.75, page.left, page.top};
    io::exportPng(io::RasterSource{&raster, doc, 0}, dump);
  }
  const double megapixels = static_cast<double>(width) * rows / 1e6;
  state.counters["MP"] = megapixels;
  state.counters["ms_per_MP"] = benchmark::Counter(megapixels / 1000.0, benchmark::Counter::kIsIterationInvariantRate |
                                                                            benchmark::Counter::kInvert);
  state.counters["layers"] = static_cast<double>(renderer.layerCount()) / static_cast<double>(state.iterations());
}

void BM_DrawWallpaperRgb(benchmark::State& state) { drawDocument(state, Family::Rgb, false); }
void BM_DrawWallpaperRgba(benchmark::State& state) { drawDocument(state, Family::Rgb, true); }
void BM_DrawWallpaperCmyk(benchmark::State& state) { drawDocument(state, Family::Cmyk, false); }

}  // namespace

BENCHMARK(BM_DrawWallpaperRgb)->Arg(1)->Arg(4)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_DrawWallpaperRgba)->Arg(1)->Arg(4)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_DrawWallpaperCmyk)->Arg(1)->Arg(4)->Unit(benchmark::kMillisecond);

BENCHMARK_MAIN();
