#include "refhost/io/export/RasterExport.h"

#include "refhost/document/Art.h"
#include "refhost/document/Document.h"

#include <cmath>

namespace refhost::io {

RasterSource rasterSourceOf(const Art& art) {
  const RasterData* raster = art.raster();
  if (!raster) throw ExportError("only raster art can be exported");
  RasterSource s;
  s.raster = raster;
  s.document = &art.document();
  const Paint& fill = art.pathStyle().fill;
  if ((raster->record.flags & 0x8) && fill.type == Paint::Type::Spot) s.spotFill = fill.spot;
  return s;
}

double rasterResolution(const RasterData& raster) {
  const double pixelWidth = std::hypot(raster.matrix.a, raster.matrix.b);
  return pixelWidth > 0 && std::isfinite(pixelWidth) ? 72.0 / pixelWidth : 72.0;
}

}  // namespace refhost::io
