#pragma once
#include <cstdint>
#include <memory>

#include "image_streams/HostBlock.h"
#include "image_streams/ImageStreamBase.h"

namespace dw {

// Nearest sample: every destination pixel is a copy of one source pixel. Destination pixel
// (x, y) takes source pixel (trunc((x + 0.5) * ratioX) - trunc(0.5 * ratioX), trunc(y * ratioY)).
class DownSampleImageStream : public ImageStreamBase {
 public:
  using ImageStreamBase::ImageStreamBase;
  ~DownSampleImageStream() override;

  bool Prepare(const ImageBandRequest& request) override;
  uint32_t GetBandRows(const ImageBandRequest& request) override;
  bool ProduceBand(const ImageBandRequest& request) override;
  bool Finish() override;

  // Copies destination pixels start .. start + count - 1 from a row that begins at the pixel
  // the table gives for start.
  virtual void CopyRow(const uint8_t* row, uint8_t* output, uint32_t start, uint32_t count);

 private:
  uint32_t sourceRowBytes = 0;
  uint32_t channels = 0;
  double ratioX = 0;
  double ratioY = 0;
  HostBlock rowBuffer;
  // Byte offset in a source row of the pixel each destination column samples.
  std::unique_ptr<uint32_t[]> columnTable;
};

}  // namespace dw
