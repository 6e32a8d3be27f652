#pragma once
#include <cstdint>

namespace dw {

// A band of rows: destination rows and columns when given to Run and ProduceBand, source rows
// and columns when given to FetchSourceRows.
struct ImageBandRequest {
  uint8_t* buffer;  // first byte of the band's first row
  uint32_t firstRow;
  uint32_t firstColumn;
  uint32_t columns;
  uint32_t rows;
  uint32_t rowBytes;  // from one row to the next in buffer
  int32_t reserved;   // always 0
};

}  // namespace dw
