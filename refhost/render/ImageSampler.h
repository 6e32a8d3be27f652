#pragma once

#include "refhost/document/ArtData.h"
#include "refhost/render/ColorSpace.h"

#include <cstdint>
#include <vector>

namespace refhost {
class Document;
}

namespace refhost::render {

// Samples placed images and raster art through their matrix (nearest pixel at each device pixel's
// centre) and converts the samples to the target's channels.
class ImageSampler {
 public:
  bool preparePlaced(const PlacedData& placed, const Matrix& docToDevice, const ColorSpace& target,
                     const Document* document);
  // `spotFill` is the spot colour of a one-channel raster flagged as painted with its fill.
  bool prepareRaster(const RasterData& raster, CustomColorId spotFill, const Matrix& docToDevice,
                     const ColorSpace& target, const Document* document);

  // The image rectangle's corners in document points, for the coverage of its edges.
  const Point* corners() const { return corners_; }
  // Alpha-first pixels with the target's colour channels for [x0, x1) of device row y; pixels
  // outside the image get alpha 0.
  void sampleRow(std::int32_t y, std::int32_t x0, std::int32_t x1, std::uint8_t* out);
  int bytesPerPixel() const { return outBytes_; }

 private:
  enum class Mode : std::uint8_t { Direct, Generic };
  bool finish(const Matrix& imageToDoc, const Matrix& docToDevice, const ColorSpace& target, const Document* document);
  void fetch(std::int32_t u, std::int32_t v, std::uint8_t* raw) const;
  void convert(const std::uint8_t* raw, std::uint8_t* out);

  const std::uint8_t* pixels_ = nullptr;
  std::int32_t width_ = 0, height_ = 0, rowBytes_ = 0;
  bool placedRgba_ = false;  // straight RGBA rows to be read as alpha-first
  bool oneBit_ = false, whiteTransparent_ = false;
  ColorSpace::Ptr source_;
  const ColorSpace* target_ = nullptr;
  const Document* document_ = nullptr;
  int rawBytes_ = 0, outBytes_ = 0;
  bool sourceAlpha_ = false;
  Mode mode_ = Mode::Generic;
  Matrix deviceToImage_;
  Point corners_[4];
  std::uint8_t lastRaw_[32] = {}, lastOut_[33] = {};
  bool haveLast_ = false;
};

}  // namespace refhost::render
