#include "image_streams/ImageStreamBase.h"

#include <algorithm>

#include "shell/ErrorCodes.h"
#include "shell/HostSuites.h"

namespace dw {

namespace {

DWTile tileOver(uint8_t* data, uint32_t rows, uint32_t columns, uint32_t rowBytes, uint32_t pixelBytes) {
  DWTile tile{};
  tile.data = data;
  tile.bounds = DWSlice{0, 0, int32_t(rows), int32_t(columns), 0, int32_t(pixelBytes)};
  tile.rowBytes = int32_t(rowBytes);
  tile.colBytes = int32_t(pixelBytes);
  tile.planeBytes = 0;
  for (uint16_t channel = 0; channel < 32; ++channel) tile.channelInterleave[channel] = channel;
  return tile;
}

}  // namespace

ImageStreamBase::ImageStreamBase(DWArtHandle& sourceArt, DWArtHandle& destinationArt)
    : source(sourceArt), destination(destinationArt) {}

ImageStreamBase::~ImageStreamBase() = default;

void ImageStreamBase::SetSizes(uint32_t sourceW, uint32_t sourceH, uint32_t destinationW, uint32_t destinationH,
                               uint32_t pixelBytes) {
  sourceWidth = sourceW;
  sourceHeight = sourceH;
  destinationWidth = destinationW;
  destinationHeight = destinationH;
  bytesPerPixel = pixelBytes;
}

bool ImageStreamBase::Run(const ImageBandRequest& request, uint32_t bufferRows) {
  if (!prepared) {
    prepared = Prepare(request) ? 1 : 0;
    if (!prepared) return false;
  }
  if (request.rows == 0) return true;
  const uint32_t bandRows = std::min({request.rows, GetBandRows(request), bufferRows});
  // A band of no rows would never finish the request.
  if (bandRows == 0) return false;
  runRows = request.rows;
  for (uint32_t band = 0, first = 0; first < request.rows; ++band, first += bandRows) {
    ImageBandRequest part = request;
    part.firstRow = first;
    part.rows = std::min(bandRows, request.rows - first);
    if (!ProduceBand(part)) return false;
    if (WriteBand(band, bandRows, request.columns, request.rowBytes, request.buffer) != kDWNoErr) return false;
  }
  return true;
}

DWErr ImageStreamBase::FetchSourceRows(const ImageBandRequest& request) {
  DWErr result = SuiteMissingError;
  if (gSuites.raster) {
    DWRasterRecord record{};
    result = gSuites.raster->GetRasterRecord(source, &record);
    if (result == kDWNoErr) {
      const uint32_t pixelBytes = uint32_t(record.bitsPerPixel) / 8;
      const uint32_t width = uint32_t(record.bounds.right - record.bounds.left);
      DWSlice rasterSlice{int32_t(request.firstRow),
                          record.bounds.left,
                          int32_t(request.firstRow + request.rows),
                          record.bounds.right,
                          0,
                          int32_t(pixelBytes)};
      DWTile tile = tileOver(request.buffer, request.rows, width, request.rowBytes, pixelBytes);
      const DWSlice tileSlice = tile.bounds;
      result = gSuites.raster->ReadRasterTile(source, &rasterSlice, &tile, &tileSlice);
    }
  }
  if (result != kDWNoErr) hostError = result;
  return result;
}

DWErr ImageStreamBase::WriteBand(uint32_t bandIndex, uint32_t bandRows, uint32_t columns, uint32_t rowBytes,
                                 const uint8_t* data) {
  const uint32_t first = bandIndex * bandRows;
  const uint32_t end = std::min(destinationHeight, runRows ? runRows : destinationHeight);
  if (first >= end) return kDWNoErr;
  const uint32_t rows = std::min(bandRows, end - first);
  DWErr result = SuiteMissingError;
  if (gSuites.raster) {
    const DWSlice rasterSlice{int32_t(first), 0, int32_t(first + rows), int32_t(columns), 0, int32_t(bytesPerPixel)};
    // The host only reads from a tile it writes; the pointer is not const in its record.
    const DWTile tile = tileOver(const_cast<uint8_t*>(data), rows, columns, rowBytes, bytesPerPixel);
    const DWSlice tileSlice = tile.bounds;
    result = gSuites.raster->WriteRasterTile(destination, &rasterSlice, &tile, &tileSlice);
  }
  if (result != kDWNoErr) hostError = result;
  return result;
}

}  // namespace dw
