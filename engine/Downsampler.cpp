#include "engine/Downsampler.h"

#include "engine/Accelerator.h"
#include "engine/Background.h"
#include "engine/DownsampleKernels.h"
#include "engine/RasterTypes.h"
#include "settings/RasterizeSettings.h"
#include "shell/ErrorCodes.h"

namespace dw {

namespace {

void advance(DWImageDescriptor& image) { ++image.base; }

// Whole pixels first; when the host cannot take the layout, channel by channel.
DWErr reduceAccelerated(const DWHVExtensionSuite& hv, bool alpha, int32_t f, int32_t c, int32_t superStride,
                        int32_t tileWidth, int32_t tileRows, int32_t tileStride, const uint8_t* superBuffer,
                        uint8_t* tileBuffer) {
  DWImageDescriptor source{const_cast<uint8_t*>(superBuffer), f * tileRows, superStride, f * tileWidth, c};
  DWImageDescriptor destination{tileBuffer, tileRows, tileStride, tileWidth, c};
  if (!alpha) {
    if (hv.ReducePixels(&source, &destination, f) == kDWNoErr) return kDWNoErr;
    for (int32_t k = 0; k < c; ++k) {
      const DWErr error = hv.ReduceChannel(&source, &destination, f);
      advance(source);
      advance(destination);
      if (error) return error;
    }
    return kDWNoErr;
  }
  const DWImageDescriptor alphaChannel = source;  // stays on channel 0
  if (hv.ReducePixelsWithAlpha(&source, &alphaChannel, &destination, f) == kDWNoErr) return kDWNoErr;
  DWErr error = hv.ReduceChannel(&alphaChannel, &destination, f);
  advance(source);
  advance(destination);
  for (int32_t k = 1; k < c && !error; ++k) {
    error = hv.ReduceChannelWeighted(&source, &alphaChannel, &destination, f);
    advance(source);
    advance(destination);
  }
  return error;
}

}  // namespace

DWErr reduceTile(int32_t type, int32_t factor, int32_t channels, int32_t superStride, int32_t tileWidth,
                 int32_t tileRows, int32_t tileStride, const uint8_t* superBuffer, uint8_t* tileBuffer) {
  const bool alpha = hasAlpha(type);
  if (const DWHVExtensionSuite* hv = accelerator())
    return reduceAccelerated(*hv, alpha, factor, channels, superStride, tileWidth, tileRows, tileStride, superBuffer,
                             tileBuffer);
  DownsampleTile tile;
  tile.super = superBuffer;
  tile.superStride = superStride;
  tile.tile = tileBuffer;
  tile.tileStride = tileStride;
  tile.tileWidth = tileWidth;
  tile.tileRows = tileRows;
  tile.channels = channels;
  tile.factor = factor;
  if (alpha)
    downsampleWithAlpha(tile);
  else
    downsampleOpaque(tile);
  return kDWNoErr;
}

Downsampler::Downsampler(const RasterizeSettings* settings, const int16_t* factor, const int32_t* channels,
                         const ColorSpace* colorSpace, bool refill, const int32_t* tileWidth, const int32_t* tileRows,
                         const int32_t* tileStride, uint8_t* tileBuffer, const int32_t* superWidth,
                         const int32_t* superRows, const int32_t* superStride, uint8_t* superBuffer)
    : _settings(settings),
      _factor(factor),
      _channels(channels),
      _colorSpace(colorSpace),
      _refill(refill),
      _tileWidth(tileWidth),
      _tileRows(tileRows),
      _tileStride(tileStride),
      _tileBuffer(tileBuffer),
      _superWidth(superWidth),
      _superRows(superRows),
      _superStride(superStride),
      _superBuffer(superBuffer) {}

void Downsampler::run() {
  // An exception leaving a worker's run would end the process.
  try {
    const bool black = (_settings->options & RasterizeOptions::BlackBackground) != 0;
    DWColorSpaceHandle space = _colorSpace ? _colorSpace->get() : nullptr;
    // A fully transparent block keeps the colour bytes its output pixel had. Starting every tile
    // from the background makes those the background's colour, as without supersampling, rather
    // than whatever an earlier tile of this slot left there: the raster is then the same for any
    // number of slots.
    if (hasAlpha(_settings->type))
      fillBackground(_settings->type, black, space, *_tileWidth, *_tileRows, *_tileStride, _tileBuffer);
    _result = reduceTile(_settings->type, *_factor, *_channels, *_superStride, *_tileWidth, *_tileRows, *_tileStride,
                         _superBuffer, _tileBuffer);
    if (_refill) fillBackground(_settings->type, black, space, *_superWidth, *_superRows, *_superStride, _superBuffer);
  } catch (...) {
    _result = OutOfMemoryError;
  }
}

}  // namespace dw
