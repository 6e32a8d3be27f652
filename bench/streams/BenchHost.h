#pragma once
#include <cstdint>
#include <memory>
#include <utility>
#include <vector>

#include "host/all_suites.h"

namespace streams_bench {

// An in-memory host just fast enough not to hide the streams: rasters are plain row-major
// buffers, tile transfers copy whole rows. Freed blocks and the storage of removed rasters are
// kept for the next run, so that runs measure the streams rather than the system's page faults
// on fresh memory. Installs its suites in dw::gSuites for its lifetime.
class BenchHost {
 public:
  BenchHost();
  ~BenchHost();

  // A raster of width x height x channels at 72 ppi (one point per pixel), filled with a
  // smooth pattern plus noise.
  DWArtHandle addRaster(int32_t width, int32_t height, int32_t channels);
  void remove(DWArtHandle art);

  struct Raster {
    DWRasterRecord record{};
    DWRealMatrix matrix{};
    std::vector<uint8_t> pixels;
  };
  std::vector<std::unique_ptr<Raster>> rasters;
  std::vector<uint8_t> spareStorage;
  std::vector<std::pair<size_t, void*>> spareBlocks;
};

}  // namespace streams_bench
