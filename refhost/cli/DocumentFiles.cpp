#include "refhost/cli/DocumentFiles.h"

#include <cctype>
#include <fstream>
#include <iostream>

#include "refhost/cli/StagedFiles.h"
#include "refhost/cli/Tool.h"
#include "refhost/document/Document.h"
#include "refhost/io/IoError.h"
#include "refhost/io/NativeFormat.h"
#include "refhost/io/RasterImport.h"
#include "refhost/io/SvgImport.h"
#include "refhost/loader/Host.h"

namespace refhost {
namespace cli {

namespace {

enum class Format { Svg, Native, Image };

bool endsWith(const std::string& text, const std::string& suffix) {
  if (text.size() < suffix.size()) return false;
  for (size_t i = 0; i < suffix.size(); ++i)
    if (std::tolower(static_cast<unsigned char>(text[text.size() - suffix.size() + i])) != suffix[i]) return false;
  return true;
}

Format formatOf(const std::string& path) {
  if (endsWith(path, ".svg")) return Format::Svg;
  if (endsWith(path, ".json")) return Format::Native;
  if (io::isRasterImagePath(path) || io::looksLikeRasterImage(path)) return Format::Image;
  std::ifstream in(path, std::ios::binary);
  if (!in) throw ToolError(path + ": cannot be opened");
  char c = 0;
  while (in.get(c) && std::isspace(static_cast<unsigned char>(c))) {
  }
  if (in && c == '{') return Format::Native;
  if (in && c == '<') return Format::Svg;
  throw ToolError(path + ": neither an SVG, a native document nor a PNG or TIFF image");
}

}  // namespace

std::unique_ptr<Document> readDocumentFile(const std::string& path, std::vector<std::string>* warnings) {
  try {
    const Format format = formatOf(path);
    if (format == Format::Native) return io::loadDocument(path);
    if (format == Format::Image) return io::importRasterImage(path);
    io::ImportResult imported = io::importSvgFile(path);
    if (warnings) *warnings = std::move(imported.warnings);
    return std::move(imported.document);
  } catch (const io::IoError& error) {
    throw ToolError(error.what());
  }
}

Document& openDocumentFile(Host& host, const std::string& path) {
  std::vector<std::string> warnings;
  std::unique_ptr<Document> document = readDocumentFile(path, &warnings);
  for (const std::string& warning : warnings) std::cerr << "warning: " << warning << "\n";
  Document& opened = *document;
  host.setDocument(std::move(document));
  return opened;
}

void stageDocument(const Document& document, const std::string& path, StagedFiles& files) {
  if (path.empty()) return;
  try {
    io::saveDocument(document, files.stage(path));
  } catch (const io::IoError& error) {
    throw ToolError(error.what());
  }
}

}  // namespace cli
}  // namespace refhost
