#pragma once
#include <cstdint>
#include <memory>

#include "image_streams/HorizontalResampler.h"
#include "image_streams/HostBlock.h"
#include "image_streams/ImageStreamBase.h"
#include "image_streams/VerticalResampler.h"

namespace dw {

// Separable cubic filter in 14-bit fixed point. Each source row needed is filtered horizontally
// once into a ring of filtered rows (one slot per vertical tap); each destination row is then
// filtered vertically from a row set of pointers into the ring. Source rows stream through a
// band sized from the memory budget.
class BicubicImageStream : public ImageStreamBase {
 public:
  using ImageStreamBase::ImageStreamBase;
  ~BicubicImageStream() override;

  bool Prepare(const ImageBandRequest& request) override;
  uint32_t GetBandRows(const ImageBandRequest& request) override;
  bool ProduceBand(const ImageBandRequest& request) override;
  bool Finish() override;

  // Rows kept from one band load to the next, so that a new row set may step back.
  static constexpr uint32_t bandOverlapRows = resampleMaxTaps;

 private:
  static constexpr uint32_t nothingLoaded = 0xFFFFFFFFu;

  bool refill();
  // The source row the read cursor stands at.
  uint32_t cursorRow() const;
  bool readPast(uint32_t rows);
  bool moveCursorTo(uint32_t row);
  bool push(uint32_t rows);
  void setRowSetRow(uint32_t tap, uint32_t slot, uint32_t firstColumn);

  uint32_t sourceRowBytes = 0;
  uint32_t destinationRowBytes = 0;
  uint32_t channels = 0;
  std::unique_ptr<HorizontalResampler> horizontalFilter;
  std::unique_ptr<VerticalResampler> verticalFilter;
  uint32_t rowSetFill = 0;
  HostBlock sourceBand;
  uint32_t sourceBandRows = 0;
  uint32_t readCursor = nothingLoaded;
  uint32_t bandFirstRow = 0;
  uint32_t rowsLoaded = 0;
  uint32_t firstSourceColumn = 0;
  std::unique_ptr<uint8_t[]> ring;
  uint32_t pushStartSlot = 0;
  uint32_t nextSlot = 0;
  // Ring slot behind each row of the row set, which the next destination row may shift.
  uint32_t rowSetSlot[resampleMaxTaps] = {};
};

}  // namespace dw
