#include "refhost/document/Equivalence.h"

#include <map>
#include <sstream>

namespace refhost {

namespace {

// Where an art lies, as a path of indices, so art of two documents can be matched without identity.
std::map<const Art*, std::string> locations(const Document& doc) {
  std::map<const Art*, std::string> out;
  std::vector<std::pair<const Art*, std::string>> stack;
  for (std::size_t i = 0; i < doc.layers().size(); ++i) stack.emplace_back(doc.layers()[i]->group(), "L" + std::to_string(i));
  for (std::size_t i = 0; i < doc.symbols().size(); ++i) stack.emplace_back(doc.symbols()[i]->definition(), "S" + std::to_string(i));
  while (!stack.empty()) {
    auto [art, where] = stack.back();
    stack.pop_back();
    if (!art) continue;
    out[art] = where;
    if (const PluginGroupData* pg = art->pluginGroup()) {
      stack.emplace_back(pg->editArt, where + "/edit");
      stack.emplace_back(pg->resultArt, where + "/result");
    }
    std::size_t i = 0;
    for (const Art* c = art->firstChild(); c; c = c->nextSibling()) stack.emplace_back(c, where + "/" + std::to_string(i++));
  }
  return out;
}

std::int64_t symbolIndex(const Document& doc, const Symbol* s) {
  for (std::size_t i = 0; i < doc.symbols().size(); ++i) {
    if (doc.symbols()[i] == s) return static_cast<std::int64_t>(i);
  }
  return -1;
}

class Comparer {
 public:
  Comparer(const Document& a, const Document& b) : a_(a), b_(b), locA_(locations(a)), locB_(locations(b)) {}

  bool run() {
    if (a_.colorMode() != b_.colorMode()) return fail("document", "colour mode");
    if (a_.levelNumber() != b_.levelNumber()) return fail("document", "level number");
    if (a_.artboards().size() != b_.artboards().size()) return fail("document", "artboard count");
    for (std::size_t i = 0; i < a_.artboards().size(); ++i) {
      if (!(a_.artboards()[i] == b_.artboards()[i])) return fail("artboard " + std::to_string(i), "name or bounds");
    }
    if (a_.activeArtboard() != b_.activeArtboard()) return fail("document", "active artboard");
    if (a_.customColors() != b_.customColors()) return fail("document", "custom colours");
    if (!a_.dictionary()->sameContent(*b_.dictionary())) return fail("document", "dictionary");
    if (a_.symbols().size() != b_.symbols().size()) return fail("document", "symbol count");
    for (std::size_t i = 0; i < a_.symbols().size(); ++i) {
      const Symbol* x = a_.symbols()[i];
      const Symbol* y = b_.symbols()[i];
      const std::string where = "symbol " + std::to_string(i);
      if (x->name() != y->name()) return fail(where, "name");
      if (!art(x->definition(), y->definition(), where)) return false;
    }
    if (a_.layerCount() != b_.layerCount()) return fail("document", "layer count");
    if (a_.layerIndex(a_.currentLayer()) != b_.layerIndex(b_.currentLayer())) return fail("document", "current layer");
    for (std::size_t i = 0; i < a_.layerCount(); ++i) {
      const LayerState& x = a_.layers()[i]->state();
      const LayerState& y = b_.layers()[i]->state();
      const std::string where = "layer " + std::to_string(i) + " \"" + x.name + "\"";
      if (x.name != y.name || x.shown != y.shown || x.editable != y.editable || x.printable != y.printable ||
          x.preview != y.preview || x.color[0] != y.color[0] || x.color[1] != y.color[1] || x.color[2] != y.color[2]) {
        return fail(where, "layer properties");
      }
      if (!art(x.group, y.group, where)) return false;
    }
    return true;
  }

  std::string difference;

 private:
  bool fail(const std::string& where, const std::string& what) {
    difference = where + ": " + what + " differ";
    return false;
  }

  std::string ownerLocation(const std::map<const Art*, std::string>& loc, const Art* owner) {
    if (!owner) return "";
    auto it = loc.find(owner);
    return it == loc.end() ? "?" : it->second;
  }

  bool style(const ArtStylePtr& x, const ArtStylePtr& y, const std::string& where) {
    if (!x || !y) return (!x && !y) || fail(where, "art style presence");
    if (x->name != y->name || x->hasPaint != y->hasPaint || (x->hasPaint && x->paint != y->paint)) {
      return fail(where, "art style paint");
    }
    if (ownerLocation(locA_, x->owner) != ownerLocation(locB_, y->owner)) return fail(where, "art style owner");
    if (x->effects.size() != y->effects.size()) return fail(where, "live effect count");
    for (std::size_t i = 0; i < x->effects.size(); ++i) {
      const LiveEffect& e = x->effects[i];
      const LiveEffect& f = y->effects[i];
      if (e.name != f.name || e.majorVersion != f.majorVersion || e.minorVersion != f.minorVersion) {
        return fail(where, "live effect " + std::to_string(i));
      }
      if (!e.parameters || !f.parameters) {
        if (e.parameters || f.parameters) return fail(where, "live effect parameters");
      } else if (!e.parameters->sameContent(*f.parameters)) {
        return fail(where, "live effect " + std::to_string(i) + " parameters");
      }
    }
    return true;
  }

  bool payload(const Art& x, const Art& y, const std::string& where) {
    if (const PathData* p = x.path()) {
      const PathData* q = y.path();
      if (p->closed != q->closed || p->segments != q->segments) return fail(where, "path geometry");
    } else if (const RasterData* p = x.raster()) {
      const RasterData* q = y.raster();
      if (!(p->record == q->record) || p->matrix != q->matrix || p->rasterFlag != q->rasterFlag ||
          p->channels != q->channels) {
        return fail(where, "raster description");
      }
      if (!p->samePixels(*q)) return fail(where, "raster pixels");
    } else if (const PlacedData* p = x.placed()) {
      const PlacedData* q = y.placed();
      if (p->fileReference != q->fileReference || p->bounds != q->bounds || p->matrix != q->matrix) {
        return fail(where, "placed art");
      }
      if (!p->image != !q->image || (p->image && !(*p->image == *q->image))) return fail(where, "placed image");
    } else if (const MeshData* p = x.mesh()) {
      const MeshData* q = y.mesh();
      if (p->rows != q->rows || p->columns != q->columns || p->vertices != q->vertices || p->patchColors != q->patchColors) {
        return fail(where, "mesh");
      }
    } else if (const TextData* p = x.text()) {
      const TextData* q = y.text();
      if (p->text != q->text || p->fontFamily != q->fontFamily || p->fontSize != q->fontSize ||
          p->anchor != q->anchor || p->matrix != q->matrix) {
        return fail(where, "text");
      }
    } else if (const SymbolInstanceData* p = x.symbolInstance()) {
      const SymbolInstanceData* q = y.symbolInstance();
      if (symbolIndex(a_, p->symbol) != symbolIndex(b_, q->symbol) || p->matrix != q->matrix) {
        return fail(where, "symbol instance");
      }
    } else if (const PluginGroupData* p = x.pluginGroup()) {
      const PluginGroupData* q = y.pluginGroup();
      if (p->pluginName != q->pluginName) return fail(where, "plug-in name");
      if (!art(p->editArt, q->editArt, where + "/edit")) return false;
      if (!art(p->resultArt, q->resultArt, where + "/result")) return false;
    }
    return true;
  }

  bool art(const Art* x, const Art* y, const std::string& where) {
    if (!x || !y) return (!x && !y) || fail(where, "presence");
    if (x->kind() != y->kind()) return fail(where, std::string("kind (") + artKindName(x->kind()) + "/" + artKindName(y->kind()) + ")");
    if (x->attributes() != y->attributes()) return fail(where, "attributes");
    if (x->userFlags() != y->userFlags()) return fail(where, "user flags");
    if (x->valuePair() != y->valuePair()) return fail(where, "value pair");
    if (x->name() != y->name()) return fail(where, "name");
    if (x->isClipped() != y->isClipped()) return fail(where, "clipped flag");
    if (x->isGraph() != y->isGraph()) return fail(where, "graph flag");
    if (x->pathStyle() != y->pathStyle()) return fail(where, "path style");
    if (!style(x->artStyle(), y->artStyle(), where)) return false;
    if (!payload(*x, *y, where)) return false;
    const Art* c = x->firstChild();
    const Art* d = y->firstChild();
    for (std::size_t i = 0; c || d; ++i) {
      if (!c || !d) return fail(where, "child count");
      if (!art(c, d, where + "/" + std::to_string(i))) return false;
      c = c->nextSibling();
      d = d->nextSibling();
    }
    return true;
  }

  const Document& a_;
  const Document& b_;
  std::map<const Art*, std::string> locA_;
  std::map<const Art*, std::string> locB_;
};

}  // namespace

bool equivalent(const Document& a, const Document& b, std::string* difference) {
  Comparer c(a, b);
  const bool same = c.run();
  if (!same && difference) *difference = c.difference;
  return same;
}

}  // namespace refhost
