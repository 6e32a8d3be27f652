#pragma once
#include <cstdint>
#include <memory>

#include "image_streams/ExactDivider.h"
#include "image_streams/HostBlock.h"
#include "image_streams/ImageStreamBase.h"

namespace dw {

// Area average: every destination pixel is the truncated mean of the block of whole source
// pixels that falls on it (blocks from truncated coordinates, so neighbours may differ by one).
// Channels, alpha included, are averaged independently. Reduces only.
class AntiAliasImageStream : public ImageStreamBase {
 public:
  using ImageStreamBase::ImageStreamBase;
  ~AntiAliasImageStream() override;

  bool Prepare(const ImageBandRequest& request) override;
  uint32_t GetBandRows(const ImageBandRequest& request) override;
  bool ProduceBand(const ImageBandRequest& request) override;
  bool Finish() override;

  // Adds trunc(block sum / block width) of one source row to each destination value of
  // columns x0 .. x0 + count - 1; sourceRow starts at source column sx0.
  virtual void AccumulateRow(const uint8_t* sourceRow, uint32_t* sums, uint32_t x0, uint32_t count, uint32_t sx0);
  // output = trunc(sums / rowCount) for channels * count values; a rowCount of 0 divides by 1.
  virtual void NormalizeRow(const uint32_t* sums, uint8_t* output, uint32_t count, uint32_t rowCount);

 private:
  uint32_t columnsWanted(const ImageBandRequest& request) const;

  uint32_t sourceRowBytes = 0;
  uint32_t destinationRowValues = 0;
  uint32_t channels = 0;
  double ratioX = 0;
  double ratioY = 0;
  HostBlock scratch;
  std::unique_ptr<uint32_t[]> columnTable;
  std::unique_ptr<uint32_t[]> rowTable;
  std::unique_ptr<uint32_t[]> accumulator;
  // Reciprocal of each destination column's block width, so that no division runs per pixel.
  std::unique_ptr<ExactDivider[]> columnDivider;
  uint32_t scratchBytes = 0;
};

}  // namespace dw
