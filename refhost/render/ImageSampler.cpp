#include "refhost/render/ImageSampler.h"

#include "refhost/document/Document.h"
#include "refhost/render/InkColor.h"

#include <cmath>
#include <cstring>

namespace refhost::render {

bool ImageSampler::preparePlaced(const PlacedData& placed, const Matrix& docToDevice, const ColorSpace& target,
                                 const Document* document) {
  if (!placed.image || placed.image->width <= 0 || placed.image->height <= 0) return false;
  const Image& img = *placed.image;
  if (img.rgba.size() < static_cast<std::size_t>(img.width) * static_cast<std::size_t>(img.height) * 4) return false;
  pixels_ = img.rgba.data();
  width_ = img.width;
  height_ = img.height;
  rowBytes_ = img.width * 4;
  placedRgba_ = true;
  oneBit_ = whiteTransparent_ = false;
  source_ = ColorSpace::process(Family::Rgb, true);
  const Rect& b = placed.bounds;
  // The image fills its natural rectangle with its top row at bounds.top.
  const Matrix pixelToBounds{b.width() / img.width, 0, 0, -b.height() / img.height, b.left, b.top};
  return finish(placed.matrix * pixelToBounds, docToDevice, target, document);
}

bool ImageSampler::prepareRaster(const RasterData& raster, CustomColorId spotFill, const Matrix& docToDevice,
                                 const ColorSpace& target, const Document* document) {
  const RasterRecord& r = raster.record;
  if (!raster.pixels() || raster.width() <= 0 || raster.height() <= 0) return false;
  pixels_ = raster.pixels();
  width_ = raster.width();
  height_ = raster.height();
  rowBytes_ = r.byteWidth;
  placedRgba_ = false;
  oneBit_ = r.bitsPerPixel == 1;
  whiteTransparent_ = oneBit_ && (r.flags & 0x2) != 0;
  try {
    source_ = oneBit_ ? ColorSpace::process(Family::Gray, false) : ColorSpace::fromRaster(r, raster.channels, spotFill);
  } catch (const std::exception&) {
    return false;
  }
  if (!oneBit_ && r.bitsPerPixel != 8 * source_->channelCount()) return false;
  if (rowBytes_ < (oneBit_ ? (width_ + 7) / 8 : width_ * source_->channelCount())) return false;
  // Pixel (x, y) with rows downward lies at raster-space point (x, -y).
  return finish(raster.matrix * Matrix{1, 0, 0, -1, 0, 0}, docToDevice, target, document);
}

bool ImageSampler::finish(const Matrix& imageToDoc, const Matrix& docToDevice, const ColorSpace& target,
                          const Document* document) {
  const Matrix imageToDevice = docToDevice * imageToDoc;
  if (!imageToDevice.isInvertible()) return false;
  deviceToImage_ = imageToDevice.inverted();
  corners_[0] = imageToDoc.apply(Point{0, 0});
  corners_[1] = imageToDoc.apply(Point{static_cast<double>(width_), 0});
  corners_[2] = imageToDoc.apply(Point{static_cast<double>(width_), static_cast<double>(height_)});
  corners_[3] = imageToDoc.apply(Point{0, static_cast<double>(height_)});
  target_ = &target;
  document_ = document;
  rawBytes_ = source_->channelCount();
  sourceAlpha_ = source_->hasAlpha();
  outBytes_ = target.channelCount() - (target.hasAlpha() ? 1 : 0) + 1;
  haveLast_ = false;
  // Same colour channels in the same order: the samples are copied as they are.
  mode_ = Mode::Generic;
  const auto& sc = source_->channels();
  const auto& tc = target.channels();
  const std::size_t s0 = sourceAlpha_ ? 1 : 0, t0 = target.hasAlpha() ? 1 : 0;
  if (sc.size() - s0 == tc.size() - t0) {
    bool same = true;
    for (std::size_t i = 0; i + s0 < sc.size() && same; ++i) same = sc[s0 + i] == tc[t0 + i];
    if (same) mode_ = Mode::Direct;
  }
  return true;
}

void ImageSampler::fetch(std::int32_t u, std::int32_t v, std::uint8_t* raw) const {
  const std::uint8_t* row = pixels_ + static_cast<std::ptrdiff_t>(v) * rowBytes_;
  if (placedRgba_) {
    const std::uint8_t* p = row + u * 4;
    raw[0] = p[3];
    raw[1] = p[0];
    raw[2] = p[1];
    raw[3] = p[2];
  } else if (oneBit_) {
    // Raster bitmaps store black as 1.
    raw[0] = (row[u >> 3] & (0x80 >> (u & 7))) ? 0 : 255;
  } else {
    std::memcpy(raw, row + static_cast<std::ptrdiff_t>(u) * rawBytes_, static_cast<std::size_t>(rawBytes_));
  }
}

void ImageSampler::convert(const std::uint8_t* raw, std::uint8_t* out) {
  std::uint8_t alpha = sourceAlpha_ ? raw[0] : 255;
  if (whiteTransparent_ && raw[0] == 255) alpha = 0;
  const std::uint8_t* color = raw + (sourceAlpha_ ? 1 : 0);
  out[0] = alpha;
  if (mode_ == Mode::Direct) {
    std::memcpy(out + 1, color, static_cast<std::size_t>(outBytes_ - 1));
    return;
  }
  if (haveLast_ && std::memcmp(raw, lastRaw_, static_cast<std::size_t>(rawBytes_)) == 0) {
    std::memcpy(out + 1, lastOut_ + 1, static_cast<std::size_t>(outBytes_ - 1));
    return;
  }
  using K = Channel::Kind;
  InkColor ink;
  Cmyk cmyk;
  bool anyCmyk = false;
  const auto& channels = source_->channels();
  std::size_t i = sourceAlpha_ ? 1 : 0;
  for (int c = 0; i < channels.size(); ++i, ++c) {
    const double v = color[c] / 255.0;
    switch (channels[i].kind) {
      case K::Gray:
        ink.model = InkColor::Model::Gray;
        ink.v[0] = 1.0 - v;
        break;
      case K::Red:
      case K::Green:
      case K::Blue:
        ink.model = InkColor::Model::Rgb;
        ink.v[channels[i].kind == K::Red ? 0 : channels[i].kind == K::Green ? 1 : 2] = v;
        break;
      case K::Cyan:
        cmyk.c = v, anyCmyk = true;
        break;
      case K::Magenta:
        cmyk.m = v, anyCmyk = true;
        break;
      case K::Yellow:
        cmyk.y = v, anyCmyk = true;
        break;
      case K::Black:
        cmyk.k = v, anyCmyk = true;
        break;
      case K::Spot:
        if (v <= 0.0) break;
        if (target_->spotChannel(channels[i].spot) >= 0) {
          ink.addSpot(channels[i].spot, v);
        } else {
          const CustomColor* cc = document_ ? document_->customColor(channels[i].spot) : nullptr;
          ink.addProcessInk(cc ? Cmyk{cc->cmyk[0] * v, cc->cmyk[1] * v, cc->cmyk[2] * v, cc->cmyk[3] * v}
                               : Cmyk{0, 0, 0, v});
        }
        break;
      case K::Alpha:
        break;
    }
  }
  if (anyCmyk) ink.addProcessInk(cmyk);
  inkToBytes(ink, *target_, out + 1);
  std::memcpy(lastRaw_, raw, static_cast<std::size_t>(rawBytes_));
  std::memcpy(lastOut_, out, static_cast<std::size_t>(outBytes_));
  haveLast_ = true;
}

void ImageSampler::sampleRow(std::int32_t y, std::int32_t x0, std::int32_t x1, std::uint8_t* out) {
  const Matrix& m = deviceToImage_;
  const double cy = y + 0.5;
  std::uint8_t raw[33];
  for (std::int32_t x = x0; x < x1; ++x, out += outBytes_) {
    const double cx = x + 0.5;
    const double u = m.a * cx + m.c * cy + m.tx, v = m.b * cx + m.d * cy + m.ty;
    if (!(u >= 0 && v >= 0 && u < width_ && v < height_)) {
      std::memset(out, 0, static_cast<std::size_t>(outBytes_));
      continue;
    }
    fetch(static_cast<std::int32_t>(u), static_cast<std::int32_t>(v), raw);
    convert(raw, out);
  }
}

}  // namespace refhost::render
