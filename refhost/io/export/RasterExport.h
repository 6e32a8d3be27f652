#pragma once

#include "refhost/document/ArtData.h"

#include <stdexcept>
#include <string>

namespace refhost {
class Art;
class Document;
}  // namespace refhost

namespace refhost::io {

class ExportError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

// What a raster's pixels mean beyond its record: the document's custom colours (ink names,
// alternates) and, for a one-channel raster painted with its fill, that spot colour.
struct RasterSource {
  const RasterData* raster = nullptr;
  const Document* document = nullptr;
  CustomColorId spotFill = 0;
};

// The raster art of an art object, with its document and fill spot; throws ExportError for art
// that is not raster art.
RasterSource rasterSourceOf(const Art& art);

// Pixels per inch along the raster's rows: 72 divided by the width of one pixel in points.
double rasterResolution(const RasterData& raster);

// Every writer goes through a temporary file in the target's folder that is renamed over the
// target at the end, so a failure never leaves a partial or truncated file. Errors throw
// ExportError naming the file.
//
// PNG: gray, gray with alpha, RGB, RGB with alpha, and 1-bit (a mask raster's white becomes
// transparent). Other colour models throw: use TIFF or the preview.
void exportPng(const RasterSource& source, const std::string& path);
// TIFF: every raster type. CMYK as separated CMYK; a spot or process-plus-spots raster as a
// separated multi-ink image whose ink names are the channels' colours; alpha as an unassociated
// extra sample after the colour samples.
void exportTiff(const RasterSource& source, const std::string& path);
// PNG preview of any raster: its colours converted to RGB (spot inks as their alternates), with
// alpha when the raster has transparency.
void exportPreviewPng(const RasterSource& source, const std::string& path);

}  // namespace refhost::io
