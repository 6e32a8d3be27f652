#include "refhost/io/RasterImport.h"

#include <cctype>
#include <cstring>
#include <fstream>

#include "refhost/document/Document.h"
#include "refhost/io/DecodedImage.h"
#include "refhost/io/IoError.h"

namespace refhost::io {

namespace {

constexpr double kDefaultPpi = 72.0;

bool endsWith(const std::string& text, const char* suffix) {
  const size_t n = std::strlen(suffix);
  if (text.size() < n) return false;
  for (size_t i = 0; i < n; ++i)
    if (std::tolower(static_cast<unsigned char>(text[text.size() - n + i])) != suffix[i]) return false;
  return true;
}

enum class FileKind { Png, Tiff, Other };

FileKind kindOf(const std::string& path) {
  std::ifstream in(path, std::ios::binary);
  unsigned char head[8] = {};
  in.read(reinterpret_cast<char*>(head), sizeof head);
  if (in.gcount() < 4) return FileKind::Other;
  static const unsigned char kPng[8] = {0x89, 'P', 'N', 'G', '\r', '\n', 0x1A, '\n'};
  if (in.gcount() == 8 && std::memcmp(head, kPng, 8) == 0) return FileKind::Png;
  // Classic TIFF (42) and BigTIFF (43), either byte order.
  const bool little = head[0] == 'I' && head[1] == 'I' && head[3] == 0 && (head[2] == 42 || head[2] == 43);
  const bool big = head[0] == 'M' && head[1] == 'M' && head[2] == 0 && (head[3] == 42 || head[3] == 43);
  return little || big ? FileKind::Tiff : FileKind::Other;
}

std::string baseName(const std::string& path) {
  const size_t slash = path.find_last_of('/');
  std::string name = slash == std::string::npos ? path : path.substr(slash + 1);
  const size_t dot = name.find_last_of('.');
  return dot == std::string::npos || dot == 0 ? name : name.substr(0, dot);
}

RasterChannel inkChannel(Document& document, const std::string& ink) {
  static const struct {
    const char* name;
    RasterChannel::Kind kind;
  } kProcess[] = {{"Cyan", RasterChannel::Kind::Cyan},
                  {"Magenta", RasterChannel::Kind::Magenta},
                  {"Yellow", RasterChannel::Kind::Yellow},
                  {"Black", RasterChannel::Kind::Black}};
  for (const auto& process : kProcess)
    if (ink == process.name) return RasterChannel{process.kind, 0};
  if (const CustomColor* known = document.findCustomColor(ink)) return RasterChannel{RasterChannel::Kind::Spot, known->id};
  // The file names the ink but not its colour: it shows as black until the user sets one.
  CustomColor color;
  color.name = ink;
  color.kind = CustomColor::Kind::Spot;
  color.cmyk[3] = 1.0;
  return RasterChannel{RasterChannel::Kind::Spot, document.newCustomColor(color)};
}

int16_t familyCode(DecodedImage::Model model) {
  switch (model) {
    case DecodedImage::Model::Gray: return 0;
    case DecodedImage::Model::Rgb: return 1;
    case DecodedImage::Model::Cmyk: return 2;
    case DecodedImage::Model::Inks: return 5;
  }
  return 0;
}

void fillRaster(Document& document, DecodedImage& image, RasterData& raster) {
  const int n = image.channelCount();
  RasterRecord record;
  record.bounds = IntRect{0, 0, image.width, image.height};
  // Rows padded to 4 bytes, as the plug-in makes them.
  record.byteWidth = (image.width * n + 3) & ~3;
  record.colorSpace = int16_t(familyCode(image.model) | (image.alpha ? 0x10 : 0));
  record.bitsPerPixel = int16_t(8 * n);
  if (image.model == DecodedImage::Model::Inks) {
    if (image.alpha) raster.channels.push_back(RasterChannel{RasterChannel::Kind::Alpha, 0});
    for (const std::string& ink : image.inks) raster.channels.push_back(inkChannel(document, ink));
  }
  raster.setRecord(record);

  const size_t packed = size_t(image.width) * size_t(n);
  if (size_t(record.byteWidth) == packed) {
    raster.setPixels(std::move(image.pixels));
  } else {
    uint8_t* out = raster.mutablePixels();
    for (int32_t y = 0; y < image.height; ++y)
      std::memcpy(out + size_t(y) * size_t(record.byteWidth), image.pixels.data() + size_t(y) * packed, packed);
  }

  const double ppiX = image.ppiX > 0 ? image.ppiX : kDefaultPpi;
  const double ppiY = image.ppiY > 0 ? image.ppiY : kDefaultPpi;
  const double heightPoints = image.height * 72.0 / ppiY;
  // Pixel (x, y) sits at (x, -y) in raster space: the top row at the artboard's top.
  raster.matrix = Matrix{72.0 / ppiX, 0, 0, 72.0 / ppiY, 0, heightPoints};
}

}  // namespace

int DecodedImage::channelCount() const {
  int colours = 1;
  switch (model) {
    case Model::Gray: colours = 1; break;
    case Model::Rgb: colours = 3; break;
    case Model::Cmyk: colours = 4; break;
    case Model::Inks: colours = int(inks.size()); break;
  }
  return colours + (alpha ? 1 : 0);
}

void checkImageSize(const std::string& path, std::uint64_t width, std::uint64_t height) {
  if (width == 0 || height == 0 || width * height > kMaxImagePixels || width > (1u << 20) || height > (1u << 20))
    throw IoError(path, "image size " + std::to_string(width) + " x " + std::to_string(height) + " refused");
}

bool isRasterImagePath(const std::string& path) {
  return endsWith(path, ".png") || endsWith(path, ".tif") || endsWith(path, ".tiff");
}

bool looksLikeRasterImage(const std::string& path) { return kindOf(path) != FileKind::Other; }

std::unique_ptr<Document> importRasterImage(const std::string& path) {
  DecodedImage image;
  switch (kindOf(path)) {
    case FileKind::Png: image = readPngImage(path); break;
    case FileKind::Tiff: image = readTiffImage(path); break;
    case FileKind::Other:
      if (!std::ifstream(path)) throw IoError(path, "cannot be opened");
      throw IoError(path, "neither a PNG nor a TIFF image");
  }

  auto document = std::make_unique<Document>();
  document->setColorMode(image.model == DecodedImage::Model::Gray  ? ColorMode::Gray
                         : image.model == DecodedImage::Model::Rgb ? ColorMode::Rgb
                                                                   : ColorMode::Cmyk);
  Layer* layer = document->newLayer("Image");
  document->setCurrentLayer(layer);
  Art* art = document->newArt(ArtKind::Raster, PaintOrder::AboveAll, nullptr);
  art->setName(baseName(path));
  fillRaster(*document, image, *art->raster());
  const Rect page = art->raster()->documentBounds();
  document->artboards().push_back(Artboard{baseName(path), page});
  document->setActiveArtboard(0);
  document->setFilePath(path);
  return document;
}

}  // namespace refhost::io
