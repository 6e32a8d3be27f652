#include "image_streams/ResampleRasterArt.h"

#include <algorithm>
#include <cmath>
#include <memory>
#include <new>

#include "commands/RasterizeSuite.h"
#include "image_streams/AlignedRowBytes.h"
#include "image_streams/AntiAliasImageStream.h"
#include "image_streams/BicubicImageStream.h"
#include "image_streams/DownSampleImageStream.h"
#include "image_streams/HostBlock.h"
#include "image_streams/MemoryBudget.h"
#include "shell/ErrorCodes.h"
#include "shell/HostSuites.h"

namespace dw {

namespace {

constexpr uint32_t smallestOutputBuffer = 65536;

std::unique_ptr<ImageStreamBase> makeStream(int32_t method, DWArtHandle& source, DWArtHandle& destination) {
  switch (method) {
    case ResampleAverage:
      return std::unique_ptr<ImageStreamBase>(new (std::nothrow) AntiAliasImageStream(source, destination));
    case ResampleBicubic:
      return std::unique_ptr<ImageStreamBase>(new (std::nothrow) BicubicImageStream(source, destination));
    default:
      return std::unique_ptr<ImageStreamBase>(new (std::nothrow) DownSampleImageStream(source, destination));
  }
}

// Pixels along one axis at the new resolution, halves away from zero; 0 when the result would
// not be a usable raster size (no pixel at all, or more than the 16-bit sizes the streams hold).
int32_t newPixelCount(int32_t pixels, double length, double resolution) {
  const double exact = double(pixels) * length * resolution / 72.0;
  if (!(exact < 32767.5)) return 0;
  return std::max<int32_t>(0, int32_t(int16_t(std::lround(exact))));
}

bool layerIsLocked(DWArtHandle art, DWErr& error) {
  DWBool outside = 0;
  if ((error = gSuites.art->ArtIsOutsideLayers(art, &outside)) != kDWNoErr || outside) return false;
  DWLayerHandle layer = nullptr;
  if ((error = gSuites.art->GetLayerOfArt(art, &layer)) != kDWNoErr || !layer) return false;
  DWBool editable = 1;
  if ((error = gSuites.layer->GetLayerEditable(layer, &editable)) != kDWNoErr) return false;
  return !editable;
}

// Halves the rows until the host gives a block; only a block of at most 64 KiB failing ends it.
bool allocateOutputBuffer(HostBlock& buffer, uint32_t rowBytes, uint32_t& rows) {
  for (;;) {
    const uint64_t bytes = uint64_t(rowBytes) * rows;
    if (buffer.allocate(size_t(bytes))) return true;
    if (bytes <= smallestOutputBuffer || rows / 2 == 0) return false;
    rows /= 2;
  }
}

}  // namespace

DWErr resampleRasterArt(DWArtHandle source, int32_t method, double resolution, int32_t paintOrder, DWArtHandle prep,
                        DWArtHandle* result) {
  if (!result) return BadParameterError;
  if (!gSuites.raster || !gSuites.art || !gSuites.layer || !gSuites.artStyle || !gSuites.realMath || !gSuites.block)
    return SuiteMissingError;
  const DWRasterSuite& raster = *gSuites.raster;
  const DWRealMathSuite& math = *gSuites.realMath;

  DWRasterRecord record{};
  if (DWErr error = raster.GetRasterRecord(source, &record)) return error;
  // Whole bytes per channel only; 1-bit rasters have no grey levels to filter.
  if (record.bitsPerPixel < 8 || record.bitsPerPixel % 8 != 0) return UnsupportedResampleError;
  DWRealMatrix matrix{};
  if (DWErr error = raster.GetRasterMatrix(source, &matrix)) return error;
  const double lengthX = math.VectorLength(matrix.a, matrix.b);
  const double lengthY = math.VectorLength(matrix.c, matrix.d);
  if (resolution > 72.0 / lengthX || resolution > 72.0 / lengthY) return UnsupportedResampleError;

  const int32_t sourceWidth = record.bounds.right - record.bounds.left;
  const int32_t sourceHeight = record.bounds.bottom - record.bounds.top;
  const int32_t newWidth = newPixelCount(sourceWidth, lengthX, resolution);
  const int32_t newHeight = newPixelCount(sourceHeight, lengthY, resolution);
  // Nothing to draw into: refuse before anything is made.
  if (newWidth <= 0 || newHeight <= 0 || sourceWidth <= 0 || sourceHeight <= 0) return UnsupportedResampleError;

  DWErr error = kDWNoErr;
  if (layerIsLocked(source, error)) return kDWNoErr;
  if (error) return error;
  if ((error = gSuites.art->NewArt(kDWRasterArt, int16_t(paintOrder), prep, result)) != kDWNoErr) return error;
  if ((error = gSuites.artStyle->SetArtStyle(*result, nullptr)) != kDWNoErr) return error;
  const uint32_t bitsPerPixel = uint32_t(record.bitsPerPixel);
  const uint32_t rowBytes = alignedRowBytes(uint32_t(newWidth), bitsPerPixel);
  DWRasterRecord newRecord = record;
  newRecord.bounds = DWIntRect{0, 0, newWidth, newHeight};
  newRecord.byteWidth = int32_t(rowBytes);
  if ((error = raster.SetRasterRecord(*result, &newRecord)) != kDWNoErr) return error;

  // A band holds at least one row, even when the budget is smaller.
  uint32_t rows = std::max(1u, std::min(rasterMemoryBudget() / rowBytes, uint32_t(newHeight)));
  HostBlock buffer;
  if (!allocateOutputBuffer(buffer, rowBytes, rows)) return OutOfMemoryError;

  std::unique_ptr<ImageStreamBase> stream = makeStream(method, source, *result);
  if (!stream) return OutOfMemoryError;
  stream->SetSizes(uint32_t(sourceWidth), uint32_t(sourceHeight), uint32_t(newWidth), uint32_t(newHeight),
                   bitsPerPixel / 8);
  const ImageBandRequest request{buffer.data(), 0, 0, uint32_t(newWidth), uint32_t(newHeight), rowBytes, 0};
  // A failed run is reported: the host's code, or OutOfMemoryError when the stream found no
  // working memory. The partly filled art stays, placed like a finished one.
  DWErr runError = kDWNoErr;
  if (!stream->Run(request, rows)) runError = stream->LastHostError() ? stream->LastHostError() : OutOfMemoryError;

  DWRealMatrix placement{};
  math.SetIdentityMatrix(&placement);
  math.ConcatScale(&placement, 1.0 / lengthX, 1.0 / lengthY);
  math.ConcatScale(&placement, 72.0 / resolution, 72.0 / resolution);
  DWRealMatrix newMatrix{};
  math.ConcatMatrix(&placement, &matrix, &newMatrix);
  error = raster.SetRasterMatrix(*result, &newMatrix);
  return runError ? runError : error;
}

}  // namespace dw
