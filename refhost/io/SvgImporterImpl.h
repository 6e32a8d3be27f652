#pragma once

#include "refhost/io/CssStyle.h"
#include "refhost/io/IoError.h"
#include "refhost/io/SvgComputedStyle.h"
#include "refhost/io/SvgImport.h"
#include "refhost/io/SvgPathData.h"

#include <pugixml.hpp>

#include <map>
#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

namespace refhost::io::svg {

// Where an element is imported: its user space, inherited style and viewport.
struct Context {
  Matrix ctm;  // user units to document points
  ComputedStyle style;
  LengthContext lengths;
  std::size_t depth = 0;
};

class Importer {
 public:
  Importer(const std::string& text, const std::string& sourceName, const std::string& baseDirectory,
           const SvgImportOptions& options);
  ImportResult run();

 private:
  // Traversal (SvgImporter.cpp).
  void importRoot(const pugi::xml_node& root);
  void importChildren(const pugi::xml_node& parent, const Context& ctx, Art* into);
  Art* importElement(const pugi::xml_node& e, const Context& parentCtx, Art* into);
  Art* importShape(const pugi::xml_node& e, const std::string& name, const Context& ctx, Art* into);
  bool shapeGeometry(const pugi::xml_node& e, const std::string& name, const Context& ctx, std::vector<Subpath>& out);
  Art* makePathArt(const std::vector<Subpath>& subpaths, const Matrix& m, Art* into);
  // Wraps art in a clip group whose clipping path is the rectangle (x, y, w, h) in user space `ctm`.
  Art* clipToRectangle(Art* art, const pugi::xml_node& e, double x, double y, double w, double h, const Matrix& ctm);
  void finishArt(Art* art, const pugi::xml_node& e, const Context& ctx, const Context& elementCtx, bool leaf);
  Matrix viewportTransform(double vbX, double vbY, double vbW, double vbH, const std::string& par, double x, double y,
                           double w, double h) const;
  bool elementContext(const pugi::xml_node& e, const Context& parent, Context& out);

  // Paint (SvgPaint.cpp).
  PathStyle pathStyle(const ComputedStyle& style, const Context& ctx, const Rect& userBounds, const pugi::xml_node& e);
  bool resolvePaint(const std::string& text, const ComputedStyle& style, const Context& ctx, const Rect& userBounds,
                    const pugi::xml_node& e, Paint& paint, double& opacity);
  bool gradientPaint(const pugi::xml_node& g, const Context& ctx, const Rect& userBounds, Paint& paint, double& opacity);
  // The style an element has where it stands in the document, computed down its ancestors.
  const ComputedStyle& documentStyle(const pugi::xml_node& e, const LengthContext& lengths);

  // Other content (SvgContent.cpp).
  Art* importUse(const pugi::xml_node& e, const Context& ctx, Art* into);
  Art* importImage(const pugi::xml_node& e, const Context& ctx, Art* into);
  Art* importText(const pugi::xml_node& e, const Context& ctx, Art* into);
  Art* applyClipPath(Art* art, const pugi::xml_node& e, const Context& elementCtx);
  void noteUnsupportedReferences(const pugi::xml_node& e, const ComputedStyle& style);

  // Helpers.
  pugi::xml_node lookup(const std::string& reference) const;  // "#id", "url(#id)"
  std::string href(const pugi::xml_node& e) const;
  double length(const pugi::xml_node& e, const char* attr, const Context& ctx, LengthAxis axis, double fallback) const;
  std::size_t lineOf(const pugi::xml_node& e) const;
  void warn(const std::string& kind, const pugi::xml_node& e, const std::string& message);
  [[noreturn]] void fail(const pugi::xml_node& e, const std::string& message) const;
  void countArt(const pugi::xml_node& e);

  const std::string& text_;
  std::string source_;
  std::string baseDirectory_;
  SvgImportOptions options_;
  TextPositions positions_;
  pugi::xml_document xml_;
  StyleSheet sheet_;
  std::unordered_map<std::string, pugi::xml_node> ids_;
  std::unique_ptr<Document> doc_;
  struct Warning {
    std::size_t line = 0;
    std::size_t count = 0;
    std::string message;
  };
  std::map<std::string, Warning> warnings_;
  std::vector<std::string> warningOrder_;
  std::size_t artCount_ = 0;
  std::size_t pathPoints_ = 0;
  std::vector<const void*> useStack_;
  std::map<std::string, Symbol*> symbols_;
  bool inClipPath_ = false;
  std::vector<pugi::xml_node> clipStack_;  // clip paths whose own clip-path is being applied
  // The svg element a use is expanding, with the width and height the use gives it.
  struct UseSizedSvg {
    pugi::xml_node node;
    std::optional<double> width, height;
  } useSizedSvg_;
  std::unordered_map<const void*, ComputedStyle> documentStyles_;
};

}  // namespace refhost::io::svg
