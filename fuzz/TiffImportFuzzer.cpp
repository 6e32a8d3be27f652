// TIFF files opened as documents: a bad or absurd file is refused with IoError; an image that
// imports saves and loads back equal.
#include <cstddef>
#include <cstdint>

#include "fuzz/MemoryFile.h"
#include "fuzz/NativeRoundTrip.h"
#include "refhost/io/IoError.h"
#include "refhost/io/RasterImport.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  const fuzz::MemoryFile file(data, size);
  std::unique_ptr<refhost::Document> document;
  try {
    document = refhost::io::importRasterImage(file.path());
  } catch (const refhost::io::IoError&) {
    return 0;
  }
  fuzz::checkNativeRoundTrip(*document);
  return 0;
}
