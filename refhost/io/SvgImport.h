#pragma once

#include "refhost/document/Document.h"

#include <cstddef>
#include <memory>
#include <string>
#include <vector>

namespace refhost::io {

struct SvgImportOptions {
  std::size_t maxFileBytes = 256u << 20;
  std::size_t maxDepth = 256;             // element nesting, counting expanded <use>
  std::size_t maxArt = 1000000;           // art objects created
  std::size_t maxPathPoints = 10000000;   // anchors over the whole file
  double maxViewportPx = 1.0e6;           // width and height of the root viewport
  std::uint64_t maxImagePixels = 1ull << 28;
};

struct ImportResult {
  std::unique_ptr<Document> document;
  // One line each, "FILE:LINE: what was skipped"; at most one per kind of unsupported content.
  std::vector<std::string> warnings;
};

// Imports an SVG file into a new document: points, y up (1 px = 0.75 pt, y flipped against the
// viewport height), the artboard is the viewport, top-level groups become layers. Throws IoError
// (one line naming file, line and column) for malformed or absurd input.
ImportResult importSvgFile(const std::string& path, const SvgImportOptions& options = {});
// The same from text; `sourceName` names it in messages, `baseDirectory` resolves image files.
ImportResult importSvgText(const std::string& text, const std::string& sourceName, const std::string& baseDirectory,
                           const SvgImportOptions& options = {});

}  // namespace refhost::io
