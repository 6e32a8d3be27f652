#include "refhost/render/RasterAccess.h"

#include <cstring>

namespace refhost::render {

namespace {

int bytesPerPixel(const RasterRecord& r) { return r.bitsPerPixel == 1 ? 0 : r.bitsPerPixel / 8; }

bool sliceInside(const DWSlice& s, std::int32_t width, std::int32_t height, std::int32_t depth) {
  return s.top >= 0 && s.left >= 0 && s.front >= 0 && s.top <= s.bottom && s.left <= s.right && s.front <= s.back &&
         s.bottom <= height && s.right <= width && s.back <= depth;
}

// Copies in either direction: toRaster chooses which side is written.
std::string copyTile(RasterData& raster, const std::uint8_t* rasterIn, const DWSlice& rs, const DWTile& tile,
                     const DWSlice& ts, bool toRaster) {
  const RasterRecord& r = raster.record;
  const std::uint8_t* pixels = rasterIn;
  if (!pixels) return "the raster has no pixels (set its record first)";
  if (!tile.data) return "the tile has no memory";
  if (tile.planeBytes != 0) return "planar tiles are not implemented";
  const bool oneBit = r.bitsPerPixel == 1;
  const int bpp = bytesPerPixel(r);
  const std::int32_t depth = oneBit ? 1 : bpp;
  if (!sliceInside(rs, raster.width(), raster.height(), depth)) return "the raster slice lies outside the raster";
  if (rs.bottom - rs.top != ts.bottom - ts.top || rs.right - rs.left != ts.right - ts.left ||
      rs.back - rs.front != ts.back - ts.front)
    return "the raster slice and the tile slice differ in size";
  if (ts.top < 0 || ts.left < 0 || ts.front < 0 || ts.back > 32) return "the tile slice is out of range";
  if (!oneBit && ts.back > tile.colBytes) return "the tile slice reaches beyond the tile's pixel bytes";
  for (std::int32_t k = ts.front; k < ts.back; ++k)
    if (!oneBit && tile.channelInterleave[k] >= tile.colBytes) return "the tile's channel interleave is out of range";
  std::uint8_t* out = toRaster ? raster.mutablePixels() : nullptr;
  std::uint8_t* tileBytes = static_cast<std::uint8_t*>(tile.data);
  const std::int32_t rows = rs.bottom - rs.top, cols = rs.right - rs.left, n = rs.back - rs.front;
  for (std::int32_t y = 0; y < rows; ++y) {
    const std::size_t rasterRow = static_cast<std::size_t>(rs.top + y) * static_cast<std::size_t>(r.byteWidth);
    std::uint8_t* t = tileBytes + static_cast<std::ptrdiff_t>(ts.top + y) * tile.rowBytes;
    if (oneBit) {
      for (std::int32_t x = 0; x < cols && n > 0; ++x) {
        const std::int32_t rx = rs.left + x, tx = ts.left + x;
        const std::uint8_t rbit = static_cast<std::uint8_t>(0x80 >> (rx & 7)), tbit = static_cast<std::uint8_t>(0x80 >> (tx & 7));
        if (toRaster) {
          std::uint8_t& d = out[rasterRow + static_cast<std::size_t>(rx >> 3)];
          d = static_cast<std::uint8_t>((t[tx >> 3] & tbit) ? (d | rbit) : (d & ~rbit));
        } else {
          std::uint8_t& d = t[tx >> 3];
          d = static_cast<std::uint8_t>((pixels[rasterRow + static_cast<std::size_t>(rx >> 3)] & rbit) ? (d | tbit) : (d & ~tbit));
        }
      }
      continue;
    }
    const bool identity = [&] {
      for (std::int32_t k = 0; k < n; ++k)
        if (tile.channelInterleave[ts.front + k] != ts.front + k) return false;
      return true;
    }();
    std::uint8_t* rp = (toRaster ? out : const_cast<std::uint8_t*>(pixels)) + rasterRow +
                       static_cast<std::size_t>(rs.left) * static_cast<std::size_t>(bpp) + static_cast<std::size_t>(rs.front);
    std::uint8_t* tp = t + static_cast<std::ptrdiff_t>(ts.left) * tile.colBytes;
    if (identity && n == bpp && n == tile.colBytes && rs.front == 0 && ts.front == 0) {
      if (toRaster)
        std::memcpy(rp, tp, static_cast<std::size_t>(cols) * static_cast<std::size_t>(n));
      else
        std::memcpy(tp, rp, static_cast<std::size_t>(cols) * static_cast<std::size_t>(n));
      continue;
    }
    for (std::int32_t x = 0; x < cols; ++x, rp += bpp, tp += tile.colBytes)
      for (std::int32_t k = 0; k < n; ++k) {
        std::uint8_t& tb = tp[tile.channelInterleave[ts.front + k]];
        if (toRaster)
          rp[k] = tb;
        else
          tb = rp[k];
      }
  }
  return {};
}

}  // namespace

std::string validateRasterRecord(const RasterRecord& r) {
  if (r.bounds.left != 0 || r.bounds.top != 0 || r.bounds.right <= 0 || r.bounds.bottom <= 0)
    return "raster bounds must start at (0, 0) and be non-empty";
  const int family = r.colorSpace & 0x0F;
  const bool alpha = (r.colorSpace & 0x10) != 0;
  if ((r.colorSpace & ~0x1F) != 0 || family == 3 || family > 5) return "unknown raster colour space";
  std::int64_t rowBytes;
  if (r.bitsPerPixel == 1) {
    if (family != 0 || alpha) return "1-bit rasters are gray without alpha";
    rowBytes = (static_cast<std::int64_t>(r.bounds.right) + 7) / 8;
  } else {
    const int channels = family == 0 ? 1 : family == 1 ? 3 : family == 2 ? 4 : 1;
    if (r.bitsPerPixel <= 0 || r.bitsPerPixel % 8 != 0 || r.bitsPerPixel > 8 * 32) return "unsupported pixel depth";
    if (family != 5 && r.bitsPerPixel != 8 * (channels + (alpha ? 1 : 0))) return "pixel depth does not match the colour space";
    rowBytes = static_cast<std::int64_t>(r.bounds.right) * (r.bitsPerPixel / 8);
  }
  if (r.byteWidth < rowBytes) return "row bytes shorter than a row";
  if (static_cast<double>(r.byteWidth) * r.bounds.bottom > 4.0e9) return "raster too large";
  return {};
}

std::string setRasterChannels(RasterData& raster, const ColorSpace& space) {
  if (raster.record.bitsPerPixel != 8 * space.channelCount()) return "the colour space's channels do not match the pixel depth";
  raster.channels = space.channels();
  return {};
}

std::string writeRasterTile(RasterData& raster, const DWSlice& rasterSlice, const DWTile& tile, const DWSlice& tileSlice) {
  return copyTile(raster, raster.pixels(), rasterSlice, tile, tileSlice, true);
}

std::string readRasterTile(const RasterData& raster, const DWSlice& rasterSlice, const DWTile& tile, const DWSlice& tileSlice) {
  return copyTile(const_cast<RasterData&>(raster), raster.pixels(), rasterSlice, tile, tileSlice, false);
}

}  // namespace refhost::render
