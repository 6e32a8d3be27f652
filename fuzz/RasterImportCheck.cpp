#include "fuzz/RasterImportCheck.h"

#include <memory>

#include "fuzz/MemoryFile.h"
#include "fuzz/NativeRoundTrip.h"
#include "refhost/document/Document.h"
#include "refhost/io/IoError.h"
#include "refhost/io/RasterImport.h"

namespace fuzz {

namespace {
constexpr size_t kMaxRoundTripBytes = size_t(4) << 20;
}  // namespace

void checkRasterImport(const uint8_t* data, size_t size) {
  const MemoryFile file(data, size);
  std::unique_ptr<refhost::Document> document;
  try {
    document = refhost::io::importRasterImage(file.path());
  } catch (const refhost::io::IoError&) {
    return;
  }
  // A few bytes of LZW can claim a hundred million pixels, which import within the importer's
  // limits; saving them as text takes longer than the fuzzer's timeout allows.
  size_t pixelBytes = 0;
  document->forEachArt([&](refhost::Art* art) {
    if (art->kind() == refhost::ArtKind::Raster) pixelBytes += art->raster()->storageSize();
  });
  if (pixelBytes <= kMaxRoundTripBytes) checkNativeRoundTrip(*document);
}

}  // namespace fuzz
