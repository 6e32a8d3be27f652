#include "refhost/document/ArtData.h"

#include "refhost/document/CustomColor.h"

#include <cstring>

namespace refhost {

bool operator==(const PathSegment& a, const PathSegment& b) {
  return a.p == b.p && a.in == b.in && a.out == b.out && a.corner == b.corner;
}

bool operator==(const Image& a, const Image& b) {
  return a.width == b.width && a.height == b.height && a.rgba == b.rgba;
}

bool operator==(const RasterRecord& a, const RasterRecord& b) {
  return a.flags == b.flags && a.bounds == b.bounds && a.byteWidth == b.byteWidth && a.colorSpace == b.colorSpace &&
         a.bitsPerPixel == b.bitsPerPixel && a.originalColorSpace == b.originalColorSpace;
}

bool operator==(const RasterChannel& a, const RasterChannel& b) { return a.kind == b.kind && a.spot == b.spot; }

bool operator==(const CustomColor& a, const CustomColor& b) {
  return a.id == b.id && a.name == b.name && a.kind == b.kind && std::memcmp(a.cmyk, b.cmyk, sizeof a.cmyk) == 0 &&
         a.hasRgb == b.hasRgb && (!a.hasRgb || std::memcmp(a.rgb, b.rgb, sizeof a.rgb) == 0);
}

std::size_t RasterData::storageSize() const {
  const std::int32_t h = height();
  if (record.byteWidth <= 0 || h <= 0) return 0;
  return static_cast<std::size_t>(record.byteWidth) * static_cast<std::size_t>(h);
}

void RasterData::setRecord(const RasterRecord& r) {
  record = r;
  pixels_ = std::make_shared<std::vector<std::uint8_t>>(storageSize(), 0);
}

std::uint8_t* RasterData::mutablePixels() {
  if (!pixels_) pixels_ = std::make_shared<std::vector<std::uint8_t>>(storageSize(), 0);
  if (pixels_.use_count() > 1) pixels_ = std::make_shared<std::vector<std::uint8_t>>(*pixels_);
  return pixels_->data();
}

void RasterData::setPixels(std::vector<std::uint8_t> bytes) {
  pixels_ = std::make_shared<std::vector<std::uint8_t>>(std::move(bytes));
}

Rect RasterData::documentBounds() const {
  const double w = width(), h = height();
  if (w <= 0 || h <= 0) return Rect::none();
  Rect r = Rect::none();
  r.add(pixelToDocument(0, 0));
  r.add(pixelToDocument(w, 0));
  r.add(pixelToDocument(0, h));
  r.add(pixelToDocument(w, h));
  return r;
}

bool RasterData::samePixels(const RasterData& other) const {
  if (pixels_ == other.pixels_) return true;
  const std::size_t n = pixels_ ? pixels_->size() : 0;
  const std::size_t m = other.pixels_ ? other.pixels_->size() : 0;
  if (n != m) return false;
  return n == 0 || std::memcmp(pixels_->data(), other.pixels_->data(), n) == 0;
}

std::vector<Point> MeshData::outline() const {
  std::vector<Point> out;
  if (rows < 1 || columns < 1 || vertices.size() != static_cast<std::size_t>(rows) * static_cast<std::size_t>(columns)) {
    return out;
  }
  for (std::int32_t c = 0; c < columns; ++c) out.push_back(vertex(0, c));
  for (std::int32_t r = 1; r < rows; ++r) out.push_back(vertex(r, columns - 1));
  if (rows > 1) {
    for (std::int32_t c = columns - 2; c >= 0; --c) out.push_back(vertex(rows - 1, c));
  }
  if (columns > 1) {
    for (std::int32_t r = rows - 2; r >= 1; --r) out.push_back(vertex(r, 0));
  }
  return out;
}

double TextData::estimatedWidth() const {
  std::size_t codePoints = 0;
  for (unsigned char ch : text) {
    if ((ch & 0xC0) != 0x80) ++codePoints;
  }
  return 0.55 * fontSize * static_cast<double>(codePoints);
}

}  // namespace refhost
