// TIFF files opened as documents: a bad or absurd file is refused with IoError; an image that
// imports saves and loads back equal.
#include <cstddef>
#include <cstdint>

#include "fuzz/RasterImportCheck.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  fuzz::checkRasterImport(data, size);
  return 0;
}
