#pragma once
#include <cstdint>

#include "host/types.h"
#include "image_streams/ImageBandRequest.h"

namespace dw {

// Turns the pixels of one raster art into those of another, smaller one, band by band, so that
// neither image is ever held whole. The base owns the band loop and the two conversations with
// the host; a concrete stream sizes its working memory and fills bands. One thread at a time.
class ImageStreamBase {
 public:
  // The stream keeps references to the caller's handles and owns neither art.
  ImageStreamBase(DWArtHandle& source, DWArtHandle& destination);
  virtual ~ImageStreamBase();
  ImageStreamBase(const ImageStreamBase&) = delete;
  ImageStreamBase& operator=(const ImageStreamBase&) = delete;

  // Set by the owner before the first Run; bytesPerPixel counts all channels of both images.
  void SetSizes(uint32_t sourceWidth, uint32_t sourceHeight, uint32_t destinationWidth, uint32_t destinationHeight,
                uint32_t bytesPerPixel);

  // Working memory and tables for the request; false when memory is not available.
  virtual bool Prepare(const ImageBandRequest& request) = 0;
  virtual uint32_t GetBandRows(const ImageBandRequest& request) = 0;
  // Produces destination rows 0 .. request.rows - 1 into request.buffer (bufferRows rows of
  // request.rowBytes), writing each band into the destination; true when every band succeeded.
  virtual bool Run(const ImageBandRequest& request, uint32_t bufferRows) final;
  virtual bool ProduceBand(const ImageBandRequest& request) = 0;
  // Releases working memory early; always true.
  virtual bool Finish() = 0;

  // Whole source rows request.firstRow .. + rows - 1 into request.buffer at request.rowBytes.
  DWErr FetchSourceRows(const ImageBandRequest& request);
  // Destination rows bandIndex * bandRows onward, as many as the band really has.
  DWErr WriteBand(uint32_t bandIndex, uint32_t bandRows, uint32_t columns, uint32_t rowBytes, const uint8_t* data);

  // The host's code behind the latest failed read or write; 0 when none failed.
  DWErr LastHostError() const { return hostError; }

 protected:
  int32_t prepared = 0;
  uint32_t sourceWidth = 0;
  uint32_t sourceHeight = 0;
  uint32_t destinationWidth = 0;
  uint32_t destinationHeight = 0;
  uint32_t bytesPerPixel = 0;
  DWArtHandle& source;
  DWArtHandle& destination;

 private:
  DWErr hostError = kDWNoErr;
  // Rows of the running request; the last band never writes past them.
  uint32_t runRows = 0;
};

}  // namespace dw
