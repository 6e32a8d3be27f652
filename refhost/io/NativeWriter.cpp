#include "refhost/io/NativeFormat.h"

#include "refhost/document/AtomicWrite.h"
#include "refhost/io/Base64.h"
#include "refhost/io/IoError.h"
#include "refhost/io/NativeNames.h"

#include <nlohmann/json.hpp>

#include <cstring>
#include <map>

namespace refhost::io {

namespace {

using Json = nlohmann::ordered_json;

Json point(Point p) { return Json::array({p.x, p.y}); }
Json rect(const Rect& r) { return Json::array({r.left, r.top, r.right, r.bottom}); }
Json matrix(const Matrix& m) { return Json::array({m.a, m.b, m.c, m.d, m.tx, m.ty}); }

Json paint(const Paint& p);

Json gradient(const Gradient& g) {
  Json j;
  j["kind"] = g.kind == Gradient::Kind::Linear ? "linear" : "radial";
  j["spread"] = native::spreadName(g.spread);
  j["units"] = g.units == Gradient::Units::UserSpace ? "userSpace" : "boundingBox";
  j["transform"] = matrix(g.transform);
  if (g.kind == Gradient::Kind::Linear) {
    j["start"] = point(g.start);
    j["end"] = point(g.end);
  } else {
    j["center"] = point(g.center);
    j["radius"] = g.radius;
    j["focus"] = point(g.focus);
    j["focusRadius"] = g.focusRadius;
  }
  Json stops = Json::array();
  for (const GradientStop& s : g.stops) stops.push_back(Json{{"offset", s.offset}, {"color", paint(s.color)}, {"opacity", s.opacity}});
  j["stops"] = stops;
  return j;
}

Json paint(const Paint& p) {
  switch (p.type) {
    case Paint::Type::None: return Json{{"type", "none"}};
    case Paint::Type::Gray: return Json{{"type", "gray"}, {"gray", p.v[0]}};
    case Paint::Type::Rgb: return Json{{"type", "rgb"}, {"rgb", Json::array({p.v[0], p.v[1], p.v[2]})}};
    case Paint::Type::Cmyk: return Json{{"type", "cmyk"}, {"cmyk", Json::array({p.v[0], p.v[1], p.v[2], p.v[3]})}};
    case Paint::Type::Spot: return Json{{"type", "spot"}, {"color", p.spot}, {"tint", p.tint}};
    case Paint::Type::Gradient:
      return Json{{"type", "gradient"}, {"gradient", p.gradient ? gradient(*p.gradient) : Json()}};
  }
  return Json{{"type", "none"}};
}

// Only what differs from a default PathStyle is written; the reader starts from the defaults.
Json pathStyle(const PathStyle& s) {
  const PathStyle d;
  Json j = Json::object();
  if (s.fillPaint != d.fillPaint) j["fillPaint"] = s.fillPaint;
  if (s.fill != d.fill) j["fill"] = paint(s.fill);
  if (s.strokePaint != d.strokePaint) j["strokePaint"] = s.strokePaint;
  if (s.stroke != d.stroke) j["stroke"] = paint(s.stroke);
  if (s.strokeWidth != d.strokeWidth) j["strokeWidth"] = s.strokeWidth;
  if (s.lineJoin != d.lineJoin) j["lineJoin"] = native::joinName(s.lineJoin);
  if (s.lineCap != d.lineCap) j["lineCap"] = native::capName(s.lineCap);
  if (s.miterLimit != d.miterLimit) j["miterLimit"] = s.miterLimit;
  if (!s.dashArray.empty()) j["dashArray"] = s.dashArray;
  if (s.dashOffset != d.dashOffset) j["dashOffset"] = s.dashOffset;
  if (s.fillRule != d.fillRule) j["fillRule"] = s.fillRule == FillRule::EvenOdd ? "evenOdd" : "nonZero";
  if (s.opacity != d.opacity) j["opacity"] = s.opacity;
  if (s.fillOpacity != d.fillOpacity) j["fillOpacity"] = s.fillOpacity;
  if (s.strokeOpacity != d.strokeOpacity) j["strokeOpacity"] = s.strokeOpacity;
  if (s.clipping) j["clipping"] = true;
  if (s.preUnion) j["preUnion"] = true;
  return j;
}

Json dictionary(const Dictionary& d) {
  Json j = Json::object();
  for (const auto& [key, value] : d.entries()) {
    if (const auto* i = std::get_if<std::int32_t>(&value)) j[key] = Json{{"integer", *i}};
    else if (const auto* b = std::get_if<bool>(&value)) j[key] = Json{{"boolean", *b}};
    else if (const auto* r = std::get_if<double>(&value)) j[key] = Json{{"real", *r}};
    else if (const auto* s = std::get_if<std::string>(&value)) j[key] = Json{{"string", *s}};
    else if (const auto* n = std::get_if<DictionaryPtr>(&value)) j[key] = Json{{"dictionary", *n ? dictionary(**n) : Json::object()}};
  }
  return j;
}

class Writer {
 public:
  explicit Writer(const Document& doc) : doc_(doc) {
    // Number the art that styles name as their owners, and the symbols.
    for (std::size_t i = 0; i < doc.symbols().size(); ++i) symbolIndex_[doc.symbols()[i]] = i;
    auto noteStyles = [&](Art* a) {
      if (a->artStyle() && a->artStyle()->owner) {
        if (!ownerIds_.count(a->artStyle()->owner)) ownerIds_[a->artStyle()->owner] = ownerIds_.size() + 1;
      }
    };
    doc.forEachArt(noteStyles);
    for (Symbol* s : doc.symbols()) Document::forEachArtIn(s->definition(), noteStyles);
  }

  Json run() {
    Json j;
    j["format"] = kNativeFormatName;
    j["version"] = kNativeFormatVersion;
    j["colorMode"] = native::colorModeName(doc_.colorMode());
    j["levelNumber"] = doc_.levelNumber();
    Json boards = Json::array();
    for (const Artboard& a : doc_.artboards()) boards.push_back(Json{{"name", a.name}, {"bounds", rect(a.bounds)}});
    j["artboards"] = boards;
    j["activeArtboard"] = doc_.activeArtboard();
    Json colors = Json::array();
    for (const CustomColor& c : doc_.customColors()) {
      Json cj{{"id", c.id}, {"name", c.name}, {"kind", c.kind == CustomColor::Kind::Spot ? "spot" : "process"},
              {"cmyk", Json::array({c.cmyk[0], c.cmyk[1], c.cmyk[2], c.cmyk[3]})}};
      if (c.hasRgb) cj["rgb"] = Json::array({c.rgb[0], c.rgb[1], c.rgb[2]});
      colors.push_back(cj);
    }
    j["customColors"] = colors;
    j["dictionary"] = dictionary(*doc_.dictionary());
    Json symbols = Json::array();
    for (Symbol* s : doc_.symbols()) symbols.push_back(Json{{"name", s->name()}, {"definition", art(*s->definition())}});
    j["symbols"] = symbols;
    Json layers = Json::array();
    for (Layer* l : doc_.layers()) {
      Json lj{{"name", l->name()}, {"shown", l->isShown()}, {"editable", l->isEditable()}, {"printable", l->isPrintable()},
              {"preview", l->isPreview()}, {"color", Json::array({l->color()[0], l->color()[1], l->color()[2]})}};
      lj["group"] = art(*l->group());
      layers.push_back(lj);
    }
    j["currentLayer"] = doc_.layerIndex(doc_.currentLayer());
    j["layers"] = layers;
    j["artStyles"] = styles_;
    return j;
  }

 private:
  std::size_t styleIndex(const ArtStylePtr& style) {
    auto it = styleIndex_.find(style.get());
    if (it != styleIndex_.end()) return it->second;
    Json sj;
    sj["name"] = style->name;
    Json effects = Json::array();
    for (const LiveEffect& e : style->effects) {
      effects.push_back(Json{{"name", e.name},
                             {"version", Json::array({e.majorVersion, e.minorVersion})},
                             {"parameters", e.parameters ? dictionary(*e.parameters) : Json()}});
    }
    sj["effects"] = effects;
    if (style->hasPaint) sj["paint"] = pathStyle(style->paint);
    auto owner = ownerIds_.find(style->owner);
    sj["owner"] = owner == ownerIds_.end() ? Json() : Json(owner->second);
    styles_.push_back(sj);
    const std::size_t index = styles_.size() - 1;
    styleIndex_[style.get()] = index;
    return index;
  }

  Json art(const Art& a) {
    Json j;
    j["kind"] = artKindName(a.kind());
    auto owner = ownerIds_.find(&a);
    if (owner != ownerIds_.end()) j["id"] = owner->second;
    if (!a.name().empty()) j["name"] = a.name();
    if (a.attributes()) j["attributes"] = a.attributes();
    if (a.userFlags()) j["userFlags"] = a.userFlags();
    if (a.valuePair() != ValuePair{}) j["valuePair"] = Json::array({a.valuePair().real, a.valuePair().integer});
    if (a.isClipped()) j["clipped"] = true;
    if (a.isGraph()) j["graph"] = true;
    Json style = pathStyle(a.pathStyle());
    if (!style.empty()) j["style"] = style;
    if (a.artStyle()) j["artStyle"] = styleIndex(a.artStyle());
    if (const PathData* p = a.path()) {
      Json segs = Json::array();
      for (const PathSegment& s : p->segments) {
        Json sj{{"p", point(s.p)}, {"in", point(s.in)}, {"out", point(s.out)}};
        if (!s.corner) sj["smooth"] = true;
        segs.push_back(sj);
      }
      j["closed"] = p->closed;
      j["segments"] = segs;
    } else if (const RasterData* r = a.raster()) {
      const RasterRecord& rec = r->record;
      j["record"] = Json{{"flags", rec.flags},
                         {"bounds", Json::array({rec.bounds.left, rec.bounds.top, rec.bounds.right, rec.bounds.bottom})},
                         {"byteWidth", rec.byteWidth},
                         {"colorSpace", rec.colorSpace},
                         {"bitsPerPixel", rec.bitsPerPixel},
                         {"originalColorSpace", rec.originalColorSpace}};
      j["matrix"] = matrix(r->matrix);
      if (r->rasterFlag) j["rasterFlag"] = true;
      if (!r->channels.empty()) {
        Json ch = Json::array();
        for (const RasterChannel& c : r->channels) {
          Json cj{{"kind", native::channelName(c.kind)}};
          if (c.kind == RasterChannel::Kind::Spot) cj["color"] = c.spot;
          ch.push_back(cj);
        }
        j["channels"] = ch;
      }
      j["pixels"] = base64Encode(r->pixels(), r->pixels() ? r->storageSize() : 0);
    } else if (const PlacedData* p = a.placed()) {
      j["file"] = p->fileReference;
      j["bounds"] = rect(p->bounds);
      j["matrix"] = matrix(p->matrix);
      if (p->image) {
        j["image"] = Json{{"width", p->image->width}, {"height", p->image->height}, {"rgba", base64Encode(p->image->rgba)}};
      }
    } else if (const MeshData* m = a.mesh()) {
      j["rows"] = m->rows;
      j["columns"] = m->columns;
      Json v = Json::array();
      for (const Point& p : m->vertices) v.push_back(point(p));
      j["vertices"] = v;
      Json colors = Json::array();
      for (const Paint& c : m->patchColors) colors.push_back(paint(c));
      j["patchColors"] = colors;
    } else if (const TextData* t = a.text()) {
      j["text"] = t->text;
      j["font"] = t->fontFamily;
      j["fontSize"] = t->fontSize;
      j["anchor"] = native::anchorName(t->anchor);
      j["matrix"] = matrix(t->matrix);
    } else if (const SymbolInstanceData* s = a.symbolInstance()) {
      auto it = symbolIndex_.find(s->symbol);
      j["symbol"] = it == symbolIndex_.end() ? Json() : Json(it->second);
      j["matrix"] = matrix(s->matrix);
    } else if (const PluginGroupData* g = a.pluginGroup()) {
      j["plugin"] = g->pluginName;
      j["edit"] = art(*g->editArt);
      j["result"] = art(*g->resultArt);
    }
    if (a.firstChild()) {
      Json children = Json::array();
      for (const Art* c = a.firstChild(); c; c = c->nextSibling()) children.push_back(art(*c));
      j["children"] = children;
    }
    return j;
  }

  const Document& doc_;
  std::map<const Art*, std::size_t> ownerIds_;
  std::map<const Symbol*, std::size_t> symbolIndex_;
  std::map<const ArtStyle*, std::size_t> styleIndex_;
  Json styles_ = Json::array();
};

// Puts arrays of plain numbers (points, matrices, colours) on one line, which keeps files short
// and readable; everything else keeps the dump's layout.
std::string compactNumberArrays(const std::string& text) {
  std::string out;
  out.reserve(text.size());
  bool inString = false;
  for (std::size_t i = 0; i < text.size(); ++i) {
    const char c = text[i];
    if (inString) {
      out += c;
      if (c == '\\' && i + 1 < text.size()) out += text[++i];
      else if (c == '"') inString = false;
      continue;
    }
    if (c == '"') inString = true;
    if (c != '[') {
      out += c;
      continue;
    }
    std::size_t j = i + 1;
    while (j < text.size() && std::strchr("0123456789eE+-., \n", text[j]) != nullptr) ++j;
    if (j >= text.size() || text[j] != ']') {
      out += c;
      continue;
    }
    out += '[';
    bool first = true;
    std::size_t k = i + 1;
    while (k < j) {
      while (k < j && (text[k] == ' ' || text[k] == '\n' || text[k] == ',')) ++k;
      std::size_t e = k;
      while (e < j && text[e] != ' ' && text[e] != '\n' && text[e] != ',') ++e;
      if (e > k) {
        if (!first) out += ", ";
        out.append(text, k, e - k);
        first = false;
      }
      k = e;
    }
    out += ']';
    i = j;
  }
  return out;
}

}  // namespace

std::string documentToJson(const Document& doc) {
  // Invalid UTF-8 in names or text (from foreign files) is replaced rather than refused.
  return compactNumberArrays(Writer(doc).run().dump(2, ' ', false, Json::error_handler_t::replace)) + "\n";
}

void saveDocument(const Document& doc, const std::string& path) {
  std::string text;
  try {
    text = documentToJson(doc);
  } catch (const std::exception& e) {
    throw IoError(path, std::string("cannot serialise the document: ") + e.what());
  }
  try {
    writeFileAtomically(path, text);
  } catch (const std::runtime_error& e) {
    std::string message = e.what();
    if (message.compare(0, path.size() + 2, path + ": ") == 0) message.erase(0, path.size() + 2);
    throw IoError(path, message);
  }
}

}  // namespace refhost::io
