#pragma once
#include <cstdint>

#include "basic_thread_function.h"
#include "engine/ColorSpace.h"
#include "host/rasterize_settings.h"
#include "host/types.h"

namespace dw {

// Reduces one slot's supersampled tile into the slot's final tile and, when the slot will be drawn
// into again, clears the supersampled tile back to the background. Everything it points at belongs
// to the running rasterization, which outlives it; it owns nothing. It runs on a worker thread (or
// inline without multithreading) and never lets an exception out.
class Downsampler : public basic::thread_function {
 public:
  Downsampler(const RasterizeSettings* settings, const int16_t* factor, const int32_t* channels,
              const ColorSpace* colorSpace, bool refill, const int32_t* tileWidth, const int32_t* tileRows,
              const int32_t* tileStride, uint8_t* tileBuffer, const int32_t* superWidth, const int32_t* superRows,
              const int32_t* superStride, uint8_t* superBuffer);

  void run() override;

  // The reduction's result of the last run: 0, or an error of the host's accelerated routines.
  // Nobody acts on it; a failed reduction leaves a wrong tile, not a failed rasterization.
  DWErr result() const { return _result; }

 private:
  const RasterizeSettings* _settings;
  const int16_t* _factor;
  const int32_t* _channels;
  const ColorSpace* _colorSpace;
  bool _refill;
  const int32_t* _tileWidth;
  const int32_t* _tileRows;
  const int32_t* _tileStride;
  uint8_t* _tileBuffer;
  const int32_t* _superWidth;
  const int32_t* _superRows;
  const int32_t* _superStride;
  uint8_t* _superBuffer;
  DWErr _result = kDWNoErr;
};

// Box-filter reduction of one tile by factor f: through the host's accelerated routines when they
// are enabled, otherwise in software (which cannot fail).
DWErr reduceTile(int32_t type, int32_t factor, int32_t channels, int32_t superStride, int32_t tileWidth,
                 int32_t tileRows, int32_t tileStride, const uint8_t* superBuffer, uint8_t* tileBuffer);

}  // namespace dw
