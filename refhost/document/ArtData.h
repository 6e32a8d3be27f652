#pragma once

#include "refhost/document/Geometry.h"
#include "refhost/document/Paint.h"

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace refhost {

class Art;
class Symbol;

// One anchor of a cubic Bezier path: the curve from anchor i to anchor i+1 has the control points
// segments[i].out and segments[i+1].in. A straight side has in == p and out == p.
struct PathSegment {
  Point p;
  Point in;
  Point out;
  bool corner = true;

  // A corner anchor with no handles.
  static PathSegment at(Point p) { return PathSegment{p, p, p, true}; }
  static PathSegment at(double x, double y) { return at(Point{x, y}); }
};

bool operator==(const PathSegment& a, const PathSegment& b);
inline bool operator!=(const PathSegment& a, const PathSegment& b) { return !(a == b); }

struct PathData {
  std::vector<PathSegment> segments;
  bool closed = false;
};

// Decoded pixels of placed art: straight (not premultiplied) RGBA, 8 bits each, row 0 at the top.
struct Image {
  std::int32_t width = 0;
  std::int32_t height = 0;
  std::vector<std::uint8_t> rgba;
};

bool operator==(const Image& a, const Image& b);

// An external image. `bounds` is its natural rectangle in points (the image fills it, top row at
// bounds.top); `matrix` maps that rectangle into the document.
struct PlacedData {
  std::string fileReference;            // absolute path or URI; may be empty for embedded data
  std::shared_ptr<const Image> image;   // null when the file could not be read or decoded
  Rect bounds;
  Matrix matrix;
};

// The raster description, as exchanged with the raster suite.
struct RasterRecord {
  std::uint16_t flags = 0;
  IntRect bounds;              // pixels: 0, 0, width, height (rows grow downward)
  std::int32_t byteWidth = 0;  // bytes per stored row
  std::int16_t colorSpace = 0; // raster colour-space code: family, plus 0x10 with alpha first
  std::int16_t bitsPerPixel = 0;
  std::int16_t originalColorSpace = -1;
};

bool operator==(const RasterRecord& a, const RasterRecord& b);

// One channel of a multi-channel (process plus spots) raster, in pixel byte order.
struct RasterChannel {
  enum class Kind : std::uint8_t { Alpha, Gray, Red, Green, Blue, Cyan, Magenta, Yellow, Black, Spot };
  Kind kind = Kind::Gray;
  CustomColorId spot = 0;  // for Kind::Spot
};

bool operator==(const RasterChannel& a, const RasterChannel& b);

// Raster art: pixels stored row-major at the record's byteWidth, alpha first when present.
// Pixel column x, row y (row 0 at the top) lies at raster-space point (x, -y); `matrix` maps raster
// space to document points. So a raster whose matrix is scale(1/s) then translate(left, top) has its
// top-left pixel corner at (left, top) and s pixels per point.
class RasterData {
 public:
  RasterRecord record;
  Matrix matrix;
  bool rasterFlag = false;
  // Channel layout for multi-channel rasters (colour-space family 5); empty for the plain families.
  std::vector<RasterChannel> channels;

  // Sets the record and makes fresh zeroed storage of byteWidth * height bytes.
  void setRecord(const RasterRecord& r);
  std::int32_t width() const { return record.bounds.width(); }
  std::int32_t height() const { return record.bounds.height(); }
  std::size_t storageSize() const;
  const std::uint8_t* pixels() const { return pixels_ ? pixels_->data() : nullptr; }
  // Storage is shared with undo snapshots and copies: writing copies it once when shared.
  std::uint8_t* mutablePixels();
  // Replace the storage (must be storageSize() bytes).
  void setPixels(std::vector<std::uint8_t> bytes);
  // Document position of a raster-space point (x, -y) for pixel (x, y).
  Point pixelToDocument(double x, double y) const { return matrix.apply(Point{x, -y}); }
  // Transformed corners of the pixel rectangle.
  Rect documentBounds() const;

  bool samePixels(const RasterData& other) const;

 private:
  std::shared_ptr<std::vector<std::uint8_t>> pixels_;
};

// A mesh: rows x columns vertices, row-major, joined by straight edges; each patch (cell) has one
// colour: patch (r, c) for r < rows-1, c < columns-1 at index r * (columns-1) + c.
struct MeshData {
  std::int32_t rows = 0;
  std::int32_t columns = 0;
  std::vector<Point> vertices;
  std::vector<Paint> patchColors;

  Point vertex(std::int32_t r, std::int32_t c) const { return vertices[static_cast<std::size_t>(r * columns + c)]; }
  // The outer boundary, counter-clockwise from vertex (0, 0): row 0, last column, last row back,
  // first column back.
  std::vector<Point> outline() const;
};

enum class TextAnchor : std::uint8_t { Start, Middle, End };

// A point-text frame. `matrix` maps text space (baseline origin at (0, 0), x along the baseline, y
// up) to document points, so the position is (matrix.tx, matrix.ty). Outlines are the renderer's.
struct TextData {
  std::string text;  // UTF-8
  std::string fontFamily;
  double fontSize = 12.0;  // points, in text space
  TextAnchor anchor = TextAnchor::Start;
  Matrix matrix;

  Point position() const { return Point{matrix.tx, matrix.ty}; }
  // Estimated advance width in text space: 0.55 em per character (UTF-8 code point).
  double estimatedWidth() const;
};

struct SymbolInstanceData {
  Symbol* symbol = nullptr;
  Matrix matrix;  // symbol definition space to document
};

// A plug-in group keeps its edit art (what the user edits) and its result art (what is drawn); both
// are groups whose parent is the plug-in group but which are not among its children.
struct PluginGroupData {
  std::string pluginName;
  Art* editArt = nullptr;
  Art* resultArt = nullptr;
};

}  // namespace refhost
