#include <CLI/CLI.hpp>

#include <cstdio>
#include <iostream>
#include <set>
#include <sstream>

#include "refhost/cli/DocumentFiles.h"
#include "refhost/cli/Tool.h"
#include "refhost/document/Document.h"
#include "refhost/loader/Host.h"
#include "refhost/render/HostHandles.h"
#include "refhost/suites/ColorUses.h"
#include "refhost/suites/DocumentAccess.h"

namespace refhost {
namespace cli {

namespace {

std::string number(double v) {
  char text[32];
  std::snprintf(text, sizeof text, "%.6g", v == 0.0 ? 0.0 : v);
  return text;
}

std::string quoted(const std::string& text) { return "\"" + text + "\""; }

// Points, as "(left, top, right, bottom)".
std::string rectText(const Rect& r) {
  if (r.isEmpty()) return "(empty)";
  return "(" + number(r.left) + ", " + number(r.top) + ", " + number(r.right) + ", " + number(r.bottom) + ")";
}

const char* colorModeName(ColorMode mode) {
  switch (mode) {
    case ColorMode::Gray: return "gray";
    case ColorMode::Rgb: return "RGB";
    case ColorMode::Cmyk: return "CMYK";
  }
  return "unknown";
}

std::string details(const Art& art) {
  std::string text;
  switch (art.kind()) {
    case ArtKind::Group:
      if (art.isClipped()) text += " clip group";
      break;
    case ArtKind::Path: {
      const PathData& p = *art.path();
      text += " " + std::to_string(p.segments.size()) + " anchors" + (p.closed ? " closed" : " open");
      break;
    }
    case ArtKind::Raster: {
      const RasterData& r = *art.raster();
      char space[8];
      std::snprintf(space, sizeof space, "0x%02X", unsigned(r.record.colorSpace) & 0xFFu);
      text += " " + std::to_string(r.width()) + "x" + std::to_string(r.height()) + " px, colour space " + space;
      break;
    }
    case ArtKind::Placed:
      if (!art.placed()->fileReference.empty()) text += " " + quoted(art.placed()->fileReference);
      break;
    case ArtKind::Mesh: text += " " + std::to_string(art.mesh()->columns) + "x" + std::to_string(art.mesh()->rows) + " vertices"; break;
    case ArtKind::TextFrame: text += " " + quoted(art.text()->text); break;
    case ArtKind::SymbolInstance:
      if (const Symbol* s = art.symbolInstance()->symbol) text += " of " + quoted(s->name());
      break;
    default: break;
  }
  if (art.pathStyle().clipping) text += " clipping";
  if (art.isHidden()) text += " hidden";
  if (art.attributes(ArtAttr::Locked)) text += " locked";
  if (art.isSelected()) text += art.attributes(ArtAttr::FullySelected) ? " selected" : " partly selected";
  return text;
}

void printTree(std::ostream& out, const Art& art, int depth) {
  out << std::string(size_t(depth) * 2, ' ') << artKindName(art.kind());
  if (!art.name().empty()) out << " " << quoted(art.name());
  out << " " << rectText(paintedBounds(art)) << details(art) << "\n";
  if (const PluginGroupData* g = art.pluginGroup()) {
    if (g->resultArt) {
      out << std::string(size_t(depth + 1) * 2, ' ') << "result art:\n";
      printTree(out, *g->resultArt, depth + 2);
    }
  }
  for (const Art* c = art.firstChild(); c; c = c->nextSibling()) printTree(out, *c, depth + 1);
}

void printLayers(std::ostream& out, const Document& doc) {
  out << "layers (top first):\n";
  for (const Layer* layer : doc.layers()) {
    out << "  " << quoted(layer->name()) << ": " << (layer->isShown() ? "shown" : "hidden") << ", "
        << (layer->isLocked() ? "locked" : "unlocked") << ", " << (layer->isPrintable() ? "printable" : "not printable")
        << (layer == doc.currentLayer() ? ", current" : "") << "\n";
  }
}

void printColors(std::ostream& out, const Document& doc) {
  out << "colours:" << (doc.customColors().empty() ? " none" : "") << "\n";
  for (const CustomColor& c : doc.customColors()) {
    out << "  " << quoted(c.name) << ": " << (c.kind == CustomColor::Kind::Spot ? "spot" : "process")
        << ", CMYK (" << number(c.cmyk[0]) << ", " << number(c.cmyk[1]) << ", " << number(c.cmyk[2]) << ", "
        << number(c.cmyk[3]) << ")\n";
  }
  // The spot colours the art draws with, in the order the host hands them out.
  std::set<CustomColorId> used;
  for (const Layer* layer : doc.layers())
    visitColorUses(*layer->group(), [&used](int32_t kind, const DWColorUse& use) {
      if (kind == kDWUsesSpot) used.insert(render::customColorId(use.spot));
    });
  out << "spot colours used:";
  if (used.empty()) out << " none";
  for (CustomColorId id : used) {
    const CustomColor* c = doc.customColor(id);
    out << " " << (c ? quoted(c->name) : "#" + std::to_string(id));
  }
  out << "\n";
}

void info(const std::string& path) {
  Host host;
  const Document& doc = openDocumentFile(host, path);
  std::ostringstream out;
  out << "document: " << path << "\n";
  out << "colour mode: " << colorModeName(doc.colorMode()) << ", level " << doc.levelNumber() << "\n";
  out << "artboards:";
  if (doc.artboards().empty()) out << " none";
  out << "\n";
  for (size_t i = 0; i < doc.artboards().size(); ++i) {
    const Artboard& board = doc.artboards()[i];
    out << "  " << quoted(board.name) << " " << rectText(board.bounds)
        << (int32_t(i) == doc.activeArtboard() ? " active" : "") << "\n";
  }
  printLayers(out, doc);
  out << "art (bounds in points: left, top, right, bottom; y up):\n";
  for (const Layer* layer : doc.layers()) {
    out << "  layer " << quoted(layer->name()) << "\n";
    for (const Art* a = layer->group()->firstChild(); a; a = a->nextSibling()) printTree(out, *a, 2);
  }
  printColors(out, doc);
  std::cout << out.str();
}

}  // namespace

void addInfoVerb(CLI::App& app, Tool& tool) {
  auto* verb = app.add_subcommand("info", "Describe a document: layers, art tree with bounds in points, colours");
  auto file = std::make_shared<std::string>();
  verb->add_option("FILE", *file, "The document (SVG or native JSON)")->required();
  verb->callback([file] { info(*file); });
  (void)tool;
}

}  // namespace cli
}  // namespace refhost
