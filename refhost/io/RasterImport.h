#pragma once
// PNG and TIFF files opened as documents: one layer holding one raster art.
#include <memory>
#include <string>

namespace refhost {
class Document;
}

namespace refhost::io {

// True for a name ending in .png, .tif or .tiff (any case).
bool isRasterImagePath(const std::string& path);
// True when the file starts with a PNG or TIFF signature.
bool looksLikeRasterImage(const std::string& path);

// The image as a document: a layer "Image" with one raster art named after the file, whose
// pixels keep the file's colour model (gray, RGB or CMYK, with alpha first when the file has
// transparency; a multi-ink TIFF as process plus spot channels, one custom colour per unknown
// ink) at 8 bits per channel. Pixels are 72 / ppi points wide, ppi from the file's resolution
// (72 when it gives none); the artboard is the image, with its bottom-left corner at (0, 0).
// Throws IoError.
std::unique_ptr<Document> importRasterImage(const std::string& path);

}  // namespace refhost::io
