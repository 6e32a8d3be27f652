// PNG bytes through both readers: the in-memory decoder behind SVG images and the raster importer
// that opens a PNG file as a document. A bad file is refused (an error text, IoError); an image
// that imports saves and loads back equal.
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

#include "fuzz/RasterImportCheck.h"
#include "refhost/io/PngDecode.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  // Small enough for the fuzzer's memory limit, large enough for every header path.
  constexpr uint64_t kMaxPixels = 1u << 22;
  const std::vector<uint8_t> bytes(data, data + size);
  std::string error;
  const auto decoded = refhost::io::decodePng(bytes, error, kMaxPixels);
  if (!decoded && error.empty()) {
    std::fprintf(stderr, "decodePng refused the image without a reason\n");
    std::abort();
  }

  fuzz::checkRasterImport(data, size);
  return 0;
}
