#include "refhost/io/NativeFormat.h"

#include "refhost/io/Base64.h"
#include "refhost/io/IoError.h"
#include "refhost/io/NativeNames.h"

#include <nlohmann/json.hpp>

#include <cmath>
#include <limits>
#include <map>

namespace refhost::io {

namespace {

using Json = nlohmann::json;

// Refuses JSON nested deeper than `limit` before the parser sees it.
void checkDepth(const std::string& text, std::size_t limit, const std::string& source) {
  std::size_t depth = 0;
  bool inString = false;
  for (std::size_t i = 0; i < text.size(); ++i) {
    const char c = text[i];
    if (inString) {
      if (c == '\\') ++i;
      else if (c == '"') inString = false;
      continue;
    }
    if (c == '"') {
      inString = true;
    } else if (c == '[' || c == '{') {
      if (++depth > limit) {
        TextPositions pos(text);
        throw IoError(source, pos.line(i), pos.column(i), "JSON nested deeper than " + std::to_string(limit) + " levels");
      }
    } else if ((c == ']' || c == '}') && depth > 0) {
      --depth;
    }
  }
}

class Reader {
 public:
  explicit Reader(const std::string& source) : source_(source) {}

  std::unique_ptr<Document> run(const Json& root) {
    doc_ = std::make_unique<Document>();
    if (!root.is_object()) fail("", "the document must be a JSON object");
    if (str(field(root, "format", ""), "/format") != kNativeFormatName) fail("/format", "not a refhost document");
    const std::int64_t version = integer(field(root, "version", ""), "/version");
    if (version != kNativeFormatVersion) fail("/version", "unsupported version " + std::to_string(version));
    auto mode = native::colorModeFromName(str(field(root, "colorMode", ""), "/colorMode"));
    if (!mode) fail("/colorMode", "expected \"gray\", \"rgb\" or \"cmyk\"");
    doc_->setColorMode(*mode);
    doc_->setLevelNumber(int32(optional(root, "levelNumber", Json(0)), "/levelNumber"));

    const Json& boards = array(optional(root, "artboards", Json::array()), "/artboards");
    for (std::size_t i = 0; i < boards.size(); ++i) {
      const std::string p = "/artboards/" + std::to_string(i);
      doc_->artboards().push_back(Artboard{str(optional(boards[i], "name", Json("")), p + "/name"), rect(field(boards[i], "bounds", p), p + "/bounds")});
    }
    const std::int64_t active = integer(optional(root, "activeArtboard", Json(boards.empty() ? -1 : 0)), "/activeArtboard");
    if (active < -1 || active >= static_cast<std::int64_t>(boards.size())) fail("/activeArtboard", "no such artboard");
    doc_->setActiveArtboard(static_cast<std::int32_t>(active));

    const Json& colors = array(optional(root, "customColors", Json::array()), "/customColors");
    for (std::size_t i = 0; i < colors.size(); ++i) {
      const std::string p = "/customColors/" + std::to_string(i);
      const Json& c = colors[i];
      CustomColor cc;
      const std::int64_t id = integer(field(c, "id", p), p + "/id");
      if (id <= 0 || id > 0x7FFFFFFF) fail(p + "/id", "ids are positive");
      cc.id = static_cast<CustomColorId>(id);
      cc.name = str(field(c, "name", p), p + "/name");
      const std::string kind = str(optional(c, "kind", Json("spot")), p + "/kind");
      if (kind != "spot" && kind != "process") fail(p + "/kind", "expected \"spot\" or \"process\"");
      cc.kind = kind == "spot" ? CustomColor::Kind::Spot : CustomColor::Kind::Process;
      numbers(field(c, "cmyk", p), p + "/cmyk", cc.cmyk, 4);
      if (c.contains("rgb")) {
        cc.hasRgb = true;
        numbers(c["rgb"], p + "/rgb", cc.rgb, 3);
      }
      try {
        doc_->restoreCustomColor(cc);
      } catch (const DocumentError&) {
        fail(p + "/id", "custom colour ids must increase");
      }
    }
    dictionary(optional(root, "dictionary", Json::object()), "/dictionary", *doc_->dictionary());

    // Styles before art, owners after: owners name art that is read later.
    const Json& styles = array(optional(root, "artStyles", Json::array()), "/artStyles");
    for (std::size_t i = 0; i < styles.size(); ++i) styles_.push_back(artStyle(styles[i], "/artStyles/" + std::to_string(i)));

    const Json& symbols = array(optional(root, "symbols", Json::array()), "/symbols");
    for (std::size_t i = 0; i < symbols.size(); ++i) {
      const std::string p = "/symbols/" + std::to_string(i);
      symbols_.push_back(doc_->newSymbol(str(field(symbols[i], "name", p), p + "/name")));
    }
    for (std::size_t i = 0; i < symbols.size(); ++i) {
      const std::string p = "/symbols/" + std::to_string(i) + "/definition";
      readInto(symbols_[i]->definition(), field(symbols[i], "definition", p), p, ArtKind::Group);
    }
    const Json& layers = array(field(root, "layers", ""), "/layers");
    for (std::size_t i = 0; i < layers.size(); ++i) {
      const std::string p = "/layers/" + std::to_string(i);
      const Json& l = layers[i];
      Layer* layer = doc_->newLayer(str(field(l, "name", p), p + "/name"));
      layer->setShown(boolean(optional(l, "shown", Json(true)), p + "/shown"));
      layer->setEditable(boolean(optional(l, "editable", Json(true)), p + "/editable"));
      layer->setPrintable(boolean(optional(l, "printable", Json(true)), p + "/printable"));
      layer->setPreview(boolean(optional(l, "preview", Json(true)), p + "/preview"));
      if (l.contains("color")) {
        double c[3];
        numbers(l["color"], p + "/color", c, 3);
        layer->setColor(c[0], c[1], c[2]);
      }
      readInto(layer->group(), field(l, "group", p), p + "/group", ArtKind::Group);
    }
    const std::int64_t current = integer(optional(root, "currentLayer", Json(layers.empty() ? -1 : 0)), "/currentLayer");
    if (current >= 0) {
      if (current >= static_cast<std::int64_t>(layers.size())) fail("/currentLayer", "no such layer");
      doc_->setCurrentLayer(doc_->layerAt(static_cast<std::size_t>(current)));
    } else if (!layers.empty()) {
      fail("/currentLayer", "no such layer");
    }
    for (std::size_t i = 0; i < styles_.size(); ++i) {
      if (ownerIds_[i] == 0) continue;
      auto it = artById_.find(ownerIds_[i]);
      if (it == artById_.end()) fail("/artStyles/" + std::to_string(i) + "/owner", "no art has this id");
      styles_[i]->owner = it->second;
    }
    return std::move(doc_);
  }

 private:
  [[noreturn]] void fail(const std::string& path, const std::string& message) const {
    throw IoError(source_, "at " + (path.empty() ? std::string("/") : path) + ": " + message);
  }

  const Json& field(const Json& obj, const char* key, const std::string& path) const {
    if (!obj.is_object()) fail(path, "expected an object");
    auto it = obj.find(key);
    if (it == obj.end()) fail(path, std::string("missing \"") + key + "\"");
    return *it;
  }
  const Json& optional(const Json& obj, const char* key, const Json& fallback) {
    if (!obj.is_object()) return fallback;
    auto it = obj.find(key);
    if (it == obj.end()) {
      fallbacks_.push_back(std::make_unique<Json>(fallback));
      return *fallbacks_.back();
    }
    return *it;
  }
  const Json& array(const Json& j, const std::string& path) const {
    if (!j.is_array()) fail(path, "expected an array");
    return j;
  }
  double number(const Json& j, const std::string& path) const {
    if (!j.is_number()) fail(path, "expected a number");
    const double v = j.get<double>();
    if (!std::isfinite(v)) fail(path, "expected a finite number");
    return v;
  }
  std::int64_t integer(const Json& j, const std::string& path) const {
    if (!j.is_number_integer()) fail(path, "expected an integer");
    if (j.is_number_unsigned() && j.get<std::uint64_t>() > static_cast<std::uint64_t>(std::numeric_limits<std::int64_t>::max())) {
      fail(path, "integer out of range");
    }
    return j.get<std::int64_t>();
  }
  std::int32_t int32(const Json& j, const std::string& path) const {
    const std::int64_t v = integer(j, path);
    if (v < INT32_MIN || v > INT32_MAX) fail(path, "integer out of range");
    return static_cast<std::int32_t>(v);
  }
  std::int64_t ranged(const Json& j, const std::string& path, std::int64_t lo, std::int64_t hi) const {
    const std::int64_t v = integer(j, path);
    if (v < lo || v > hi) fail(path, "integer out of range " + std::to_string(lo) + ".." + std::to_string(hi));
    return v;
  }
  bool boolean(const Json& j, const std::string& path) const {
    if (!j.is_boolean()) fail(path, "expected true or false");
    return j.get<bool>();
  }
  std::string str(const Json& j, const std::string& path) const {
    if (!j.is_string()) fail(path, "expected a string");
    return j.get<std::string>();
  }
  void numbers(const Json& j, const std::string& path, double* out, std::size_t n) const {
    if (!j.is_array() || j.size() != n) fail(path, "expected an array of " + std::to_string(n) + " numbers");
    for (std::size_t i = 0; i < n; ++i) out[i] = number(j[i], path + "/" + std::to_string(i));
  }
  Point point(const Json& j, const std::string& path) const {
    double v[2];
    numbers(j, path, v, 2);
    return Point{v[0], v[1]};
  }
  Rect rect(const Json& j, const std::string& path) const {
    double v[4];
    numbers(j, path, v, 4);
    return Rect{v[0], v[1], v[2], v[3]};
  }
  Matrix matrix(const Json& j, const std::string& path) const {
    double v[6];
    numbers(j, path, v, 6);
    return Matrix{v[0], v[1], v[2], v[3], v[4], v[5]};
  }

  CustomColorId spotId(const Json& j, const std::string& path) const {
    const std::int64_t id = integer(j, path);
    if (id <= 0 || id > 0x7FFFFFFF || !doc_->customColor(static_cast<CustomColorId>(id))) fail(path, "no custom colour has this id");
    return static_cast<CustomColorId>(id);
  }

  Paint paint(const Json& j, const std::string& path, bool allowGradient = true) {
    const std::string type = str(field(j, "type", path), path + "/type");
    if (type == "none") return Paint::none();
    if (type == "gray") return Paint::gray(number(field(j, "gray", path), path + "/gray"));
    if (type == "rgb") {
      double v[3];
      numbers(field(j, "rgb", path), path + "/rgb", v, 3);
      return Paint::rgb(v[0], v[1], v[2]);
    }
    if (type == "cmyk") {
      double v[4];
      numbers(field(j, "cmyk", path), path + "/cmyk", v, 4);
      return Paint::cmyk(v[0], v[1], v[2], v[3]);
    }
    if (type == "spot") {
      return Paint::spotColor(spotId(field(j, "color", path), path + "/color"), number(optional(j, "tint", Json(0.0)), path + "/tint"));
    }
    if (type == "gradient" && allowGradient) return Paint::fromGradient(gradient(field(j, "gradient", path), path + "/gradient"));
    fail(path + "/type", "unknown paint type \"" + type + "\"");
  }

  std::shared_ptr<const Gradient> gradient(const Json& j, const std::string& path) {
    auto g = std::make_shared<Gradient>();
    const std::string kind = str(field(j, "kind", path), path + "/kind");
    if (kind != "linear" && kind != "radial") fail(path + "/kind", "expected \"linear\" or \"radial\"");
    g->kind = kind == "linear" ? Gradient::Kind::Linear : Gradient::Kind::Radial;
    auto spread = native::spreadFromName(str(optional(j, "spread", Json("pad")), path + "/spread"));
    if (!spread) fail(path + "/spread", "expected \"pad\", \"reflect\" or \"repeat\"");
    g->spread = *spread;
    const std::string units = str(optional(j, "units", Json("userSpace")), path + "/units");
    if (units != "userSpace" && units != "boundingBox") fail(path + "/units", "expected \"userSpace\" or \"boundingBox\"");
    g->units = units == "userSpace" ? Gradient::Units::UserSpace : Gradient::Units::BoundingBox;
    if (j.contains("transform")) g->transform = matrix(j["transform"], path + "/transform");
    if (g->kind == Gradient::Kind::Linear) {
      g->start = point(field(j, "start", path), path + "/start");
      g->end = point(field(j, "end", path), path + "/end");
    } else {
      g->center = point(field(j, "center", path), path + "/center");
      g->radius = number(field(j, "radius", path), path + "/radius");
      g->focus = j.contains("focus") ? point(j["focus"], path + "/focus") : g->center;
      g->focusRadius = number(optional(j, "focusRadius", Json(0.0)), path + "/focusRadius");
    }
    const Json& stops = array(field(j, "stops", path), path + "/stops");
    for (std::size_t i = 0; i < stops.size(); ++i) {
      const std::string p = path + "/stops/" + std::to_string(i);
      g->stops.push_back(GradientStop{number(field(stops[i], "offset", p), p + "/offset"),
                                      paint(field(stops[i], "color", p), p + "/color", false),
                                      number(optional(stops[i], "opacity", Json(1.0)), p + "/opacity")});
    }
    return g;
  }

  PathStyle pathStyle(const Json& j, const std::string& path) {
    if (!j.is_object()) fail(path, "expected an object");
    PathStyle s;
    if (j.contains("fillPaint")) s.fillPaint = boolean(j["fillPaint"], path + "/fillPaint");
    if (j.contains("fill")) s.fill = paint(j["fill"], path + "/fill");
    if (j.contains("strokePaint")) s.strokePaint = boolean(j["strokePaint"], path + "/strokePaint");
    if (j.contains("stroke")) s.stroke = paint(j["stroke"], path + "/stroke");
    if (j.contains("strokeWidth")) s.strokeWidth = number(j["strokeWidth"], path + "/strokeWidth");
    if (j.contains("lineJoin")) {
      auto v = native::joinFromName(str(j["lineJoin"], path + "/lineJoin"));
      if (!v) fail(path + "/lineJoin", "expected \"miter\", \"round\" or \"bevel\"");
      s.lineJoin = *v;
    }
    if (j.contains("lineCap")) {
      auto v = native::capFromName(str(j["lineCap"], path + "/lineCap"));
      if (!v) fail(path + "/lineCap", "expected \"butt\", \"round\" or \"projecting\"");
      s.lineCap = *v;
    }
    if (j.contains("miterLimit")) s.miterLimit = number(j["miterLimit"], path + "/miterLimit");
    if (j.contains("dashArray")) {
      const Json& d = array(j["dashArray"], path + "/dashArray");
      for (std::size_t i = 0; i < d.size(); ++i) s.dashArray.push_back(number(d[i], path + "/dashArray/" + std::to_string(i)));
    }
    if (j.contains("dashOffset")) s.dashOffset = number(j["dashOffset"], path + "/dashOffset");
    if (j.contains("fillRule")) {
      const std::string r = str(j["fillRule"], path + "/fillRule");
      if (r != "nonZero" && r != "evenOdd") fail(path + "/fillRule", "expected \"nonZero\" or \"evenOdd\"");
      s.fillRule = r == "evenOdd" ? FillRule::EvenOdd : FillRule::NonZero;
    }
    if (j.contains("opacity")) s.opacity = number(j["opacity"], path + "/opacity");
    if (j.contains("fillOpacity")) s.fillOpacity = number(j["fillOpacity"], path + "/fillOpacity");
    if (j.contains("strokeOpacity")) s.strokeOpacity = number(j["strokeOpacity"], path + "/strokeOpacity");
    if (j.contains("clipping")) s.clipping = boolean(j["clipping"], path + "/clipping");
    if (j.contains("preUnion")) s.preUnion = boolean(j["preUnion"], path + "/preUnion");
    return s;
  }

  void dictionary(const Json& j, const std::string& path, Dictionary& into) {
    if (!j.is_object()) fail(path, "expected an object");
    for (auto it = j.begin(); it != j.end(); ++it) {
      const std::string p = path + "/" + it.key();
      const Json& v = it.value();
      if (!v.is_object() || v.size() != 1) fail(p, "expected one of {\"integer\"|\"boolean\"|\"real\"|\"string\"|\"dictionary\": value}");
      const std::string type = v.begin().key();
      const Json& value = v.begin().value();
      if (type == "integer") into.setInteger(it.key(), int32(value, p + "/integer"));
      else if (type == "boolean") into.setBoolean(it.key(), boolean(value, p + "/boolean"));
      else if (type == "real") into.setReal(it.key(), number(value, p + "/real"));
      else if (type == "string") into.setString(it.key(), str(value, p + "/string"));
      else if (type == "dictionary") {
        auto nested = Dictionary::create();
        dictionary(value, p + "/dictionary", *nested);
        into.setDictionary(it.key(), nested);
      } else {
        fail(p, "unknown entry type \"" + type + "\"");
      }
    }
  }

  std::shared_ptr<ArtStyle> artStyle(const Json& j, const std::string& path) {
    if (!j.is_object()) fail(path, "expected an object");
    auto s = std::make_shared<ArtStyle>();
    s->name = str(optional(j, "name", Json("")), path + "/name");
    const Json& effects = array(optional(j, "effects", Json::array()), path + "/effects");
    for (std::size_t i = 0; i < effects.size(); ++i) {
      const std::string p = path + "/effects/" + std::to_string(i);
      LiveEffect e;
      e.name = str(field(effects[i], "name", p), p + "/name");
      if (effects[i].contains("version")) {
        const Json& v = effects[i]["version"];
        if (!v.is_array() || v.size() != 2) fail(p + "/version", "expected [major, minor]");
        e.majorVersion = int32(v[0], p + "/version/0");
        e.minorVersion = int32(v[1], p + "/version/1");
      }
      const Json& params = optional(effects[i], "parameters", Json());
      if (!params.is_null()) {
        e.parameters = Dictionary::create();
        dictionary(params, p + "/parameters", *e.parameters);
      }
      s->effects.push_back(std::move(e));
    }
    if (j.contains("paint")) {
      s->hasPaint = true;
      s->paint = pathStyle(j["paint"], path + "/paint");
    }
    const Json& owner = optional(j, "owner", Json());
    ownerIds_.push_back(owner.is_null() ? 0 : ranged(owner, path + "/owner", 1, INT32_MAX));
    return s;
  }

  void readInto(Art* art, const Json& j, const std::string& path, std::optional<ArtKind> expected) {
    if (!j.is_object()) fail(path, "expected an art object");
    auto kind = native::kindFromName(str(field(j, "kind", path), path + "/kind"));
    if (!kind) fail(path + "/kind", "unknown art kind");
    if (expected && *kind != *expected) fail(path + "/kind", std::string("expected \"") + artKindName(*expected) + "\"");
    if (j.contains("id")) {
      const std::int64_t id = ranged(j["id"], path + "/id", 1, INT32_MAX);
      if (!artById_.emplace(id, art).second) fail(path + "/id", "duplicate id");
    }
    if (j.contains("name")) art->setName(str(j["name"], path + "/name"));
    if (j.contains("attributes")) art->setAttributes(0xFFFFFFFFu, static_cast<std::uint32_t>(ranged(j["attributes"], path + "/attributes", 0, UINT32_MAX)));
    if (j.contains("userFlags")) art->setUserFlags(0xFFFFFFFFu, static_cast<std::uint32_t>(ranged(j["userFlags"], path + "/userFlags", 0, UINT32_MAX)));
    if (j.contains("valuePair")) {
      const Json& v = j["valuePair"];
      if (!v.is_array() || v.size() != 2) fail(path + "/valuePair", "expected [real, integer]");
      art->setValuePair(ValuePair{number(v[0], path + "/valuePair/0"), int32(v[1], path + "/valuePair/1")});
    }
    if (j.contains("clipped")) art->setClipped(boolean(j["clipped"], path + "/clipped"));
    if (j.contains("graph")) art->setGraph(boolean(j["graph"], path + "/graph"));
    if (j.contains("style")) art->setPathStyle(pathStyle(j["style"], path + "/style"));
    if (j.contains("artStyle")) {
      const std::int64_t index = ranged(j["artStyle"], path + "/artStyle", 0, static_cast<std::int64_t>(styles_.size()) - 1);
      art->setArtStyle(styles_[static_cast<std::size_t>(index)]);
    }
    payload(art, j, path);
    if (j.contains("children")) {
      const Json& children = array(j["children"], path + "/children");
      if (!isContainerKind(*kind) && !children.empty()) fail(path + "/children", std::string("a ") + artKindName(*kind) + " holds no art");
      for (std::size_t i = 0; i < children.size(); ++i) {
        const std::string p = path + "/children/" + std::to_string(i);
        auto childKind = native::kindFromName(str(field(children[i], "kind", p), p + "/kind"));
        if (!childKind) fail(p + "/kind", "unknown art kind");
        Art* child = doc_->newArt(*childKind, PaintOrder::InsideOnBottom, art);
        readInto(child, children[i], p, std::nullopt);
      }
    }
  }

  void payload(Art* art, const Json& j, const std::string& path) {
    if (PathData* p = art->path()) {
      p->closed = boolean(optional(j, "closed", Json(false)), path + "/closed");
      const Json& segs = array(optional(j, "segments", Json::array()), path + "/segments");
      p->segments.reserve(segs.size());
      for (std::size_t i = 0; i < segs.size(); ++i) {
        const std::string sp = path + "/segments/" + std::to_string(i);
        PathSegment s;
        s.p = point(field(segs[i], "p", sp), sp + "/p");
        s.in = segs[i].contains("in") ? point(segs[i]["in"], sp + "/in") : s.p;
        s.out = segs[i].contains("out") ? point(segs[i]["out"], sp + "/out") : s.p;
        s.corner = !boolean(optional(segs[i], "smooth", Json(false)), sp + "/smooth");
        p->segments.push_back(s);
      }
    } else if (RasterData* r = art->raster()) {
      const std::string rp = path + "/record";
      const Json& rec = field(j, "record", path);
      RasterRecord record;
      record.flags = static_cast<std::uint16_t>(ranged(optional(rec, "flags", Json(0)), rp + "/flags", 0, 0xFFFF));
      const Json& b = field(rec, "bounds", rp);
      if (!b.is_array() || b.size() != 4) fail(rp + "/bounds", "expected [left, top, right, bottom]");
      record.bounds = IntRect{int32(b[0], rp + "/bounds/0"), int32(b[1], rp + "/bounds/1"), int32(b[2], rp + "/bounds/2"), int32(b[3], rp + "/bounds/3")};
      const std::int64_t width = std::int64_t{record.bounds.right} - record.bounds.left;
      const std::int64_t height = std::int64_t{record.bounds.bottom} - record.bounds.top;
      if (width < 0 || height < 0 || width > 1000000 || height > 1000000) fail(rp + "/bounds", "bad raster size");
      record.byteWidth = static_cast<std::int32_t>(ranged(field(rec, "byteWidth", rp), rp + "/byteWidth", 0, 1 << 28));
      record.colorSpace = static_cast<std::int16_t>(ranged(field(rec, "colorSpace", rp), rp + "/colorSpace", INT16_MIN, INT16_MAX));
      record.bitsPerPixel = static_cast<std::int16_t>(ranged(field(rec, "bitsPerPixel", rp), rp + "/bitsPerPixel", 0, 8 * 32));
      record.originalColorSpace = static_cast<std::int16_t>(ranged(optional(rec, "originalColorSpace", Json(-1)), rp + "/originalColorSpace", INT16_MIN, INT16_MAX));
      if (static_cast<std::int64_t>(record.byteWidth) * 8 < width * record.bitsPerPixel) fail(rp + "/byteWidth", "rows too short for the width");
      if (static_cast<std::int64_t>(record.byteWidth) * height > (std::int64_t{1} << 31)) fail(rp, "raster too large");
      r->record = record;
      r->matrix = matrix(field(j, "matrix", path), path + "/matrix");
      r->rasterFlag = boolean(optional(j, "rasterFlag", Json(false)), path + "/rasterFlag");
      const Json& ch = array(optional(j, "channels", Json::array()), path + "/channels");
      for (std::size_t i = 0; i < ch.size(); ++i) {
        const std::string cp = path + "/channels/" + std::to_string(i);
        auto k = native::channelFromName(str(field(ch[i], "kind", cp), cp + "/kind"));
        if (!k) fail(cp + "/kind", "unknown channel kind");
        RasterChannel c{*k, 0};
        if (*k == RasterChannel::Kind::Spot) c.spot = spotId(field(ch[i], "color", cp), cp + "/color");
        r->channels.push_back(c);
      }
      auto pixels = base64Decode(str(field(j, "pixels", path), path + "/pixels"));
      if (!pixels) fail(path + "/pixels", "malformed base64");
      if (pixels->size() != r->storageSize()) {
        fail(path + "/pixels", std::to_string(pixels->size()) + " bytes where byteWidth x height is " + std::to_string(r->storageSize()));
      }
      r->setPixels(std::move(*pixels));
    } else if (PlacedData* p = art->placed()) {
      p->fileReference = str(optional(j, "file", Json("")), path + "/file");
      p->bounds = rect(field(j, "bounds", path), path + "/bounds");
      p->matrix = matrix(field(j, "matrix", path), path + "/matrix");
      if (j.contains("image")) {
        const std::string ip = path + "/image";
        auto image = std::make_shared<Image>();
        image->width = static_cast<std::int32_t>(ranged(field(j["image"], "width", ip), ip + "/width", 0, 1 << 16));
        image->height = static_cast<std::int32_t>(ranged(field(j["image"], "height", ip), ip + "/height", 0, 1 << 16));
        auto rgba = base64Decode(str(field(j["image"], "rgba", ip), ip + "/rgba"));
        if (!rgba) fail(ip + "/rgba", "malformed base64");
        if (rgba->size() != static_cast<std::size_t>(image->width) * static_cast<std::size_t>(image->height) * 4) {
          fail(ip + "/rgba", "size does not match width x height x 4");
        }
        image->rgba = std::move(*rgba);
        p->image = image;
      }
    } else if (MeshData* m = art->mesh()) {
      m->rows = static_cast<std::int32_t>(ranged(field(j, "rows", path), path + "/rows", 0, 4096));
      m->columns = static_cast<std::int32_t>(ranged(field(j, "columns", path), path + "/columns", 0, 4096));
      const Json& v = array(field(j, "vertices", path), path + "/vertices");
      if (v.size() != static_cast<std::size_t>(m->rows) * static_cast<std::size_t>(m->columns)) fail(path + "/vertices", "expected rows x columns vertices");
      for (std::size_t i = 0; i < v.size(); ++i) m->vertices.push_back(point(v[i], path + "/vertices/" + std::to_string(i)));
      const Json& c = array(field(j, "patchColors", path), path + "/patchColors");
      const std::size_t patches = m->rows > 1 && m->columns > 1 ? static_cast<std::size_t>(m->rows - 1) * static_cast<std::size_t>(m->columns - 1) : 0;
      if (c.size() != patches) fail(path + "/patchColors", "expected one colour per patch");
      for (std::size_t i = 0; i < c.size(); ++i) m->patchColors.push_back(paint(c[i], path + "/patchColors/" + std::to_string(i), false));
    } else if (TextData* t = art->text()) {
      t->text = str(field(j, "text", path), path + "/text");
      t->fontFamily = str(optional(j, "font", Json("")), path + "/font");
      t->fontSize = number(field(j, "fontSize", path), path + "/fontSize");
      auto anchor = native::anchorFromName(str(optional(j, "anchor", Json("start")), path + "/anchor"));
      if (!anchor) fail(path + "/anchor", "expected \"start\", \"middle\" or \"end\"");
      t->anchor = *anchor;
      t->matrix = matrix(field(j, "matrix", path), path + "/matrix");
    } else if (SymbolInstanceData* s = art->symbolInstance()) {
      const Json& sym = optional(j, "symbol", Json());
      if (!sym.is_null()) {
        s->symbol = symbols_.at(static_cast<std::size_t>(ranged(sym, path + "/symbol", 0, static_cast<std::int64_t>(symbols_.size()) - 1)));
      }
      s->matrix = matrix(field(j, "matrix", path), path + "/matrix");
    } else if (PluginGroupData* g = art->pluginGroup()) {
      g->pluginName = str(optional(j, "plugin", Json("")), path + "/plugin");
      readInto(g->editArt, field(j, "edit", path), path + "/edit", ArtKind::Group);
      readInto(g->resultArt, field(j, "result", path), path + "/result", ArtKind::Group);
    }
  }

  std::string source_;
  std::unique_ptr<Document> doc_;
  std::vector<std::shared_ptr<ArtStyle>> styles_;
  std::vector<std::int64_t> ownerIds_;
  std::map<std::int64_t, Art*> artById_;
  std::vector<Symbol*> symbols_;
  std::vector<std::unique_ptr<Json>> fallbacks_;
};

}  // namespace

std::unique_ptr<Document> documentFromJson(const std::string& text, const std::string& sourceName,
                                           const NativeLoadOptions& options) {
  if (text.size() > options.maxFileBytes) throw IoError(sourceName, "file too large");
  checkDepth(text, options.maxDepth, sourceName);
  Json root;
  try {
    root = Json::parse(text);
  } catch (const Json::parse_error& e) {
    const std::size_t offset = e.byte > 0 ? e.byte - 1 : 0;
    TextPositions pos(text);
    std::string message = e.what();
    // Keep the parser's own words, without its prefix and position.
    const std::size_t column = message.find("column ");
    const std::size_t colon = message.find(": ", column == std::string::npos ? 0 : column);
    if (colon != std::string::npos) message = message.substr(colon + 2);
    throw IoError(sourceName, pos.line(offset), pos.column(offset), "malformed JSON: " + message);
  } catch (const Json::out_of_range&) {
    // A number beyond a double; the parser's message repeats the whole number, however long.
    throw IoError(sourceName, "malformed JSON: a number too large to read");
  }
  Reader reader(sourceName);
  auto doc = reader.run(root);
  doc->setFilePath(sourceName);
  return doc;
}

std::unique_ptr<Document> loadDocument(const std::string& path, const NativeLoadOptions& options) {
  return documentFromJson(readFile(path, options.maxFileBytes), path, options);
}

}  // namespace refhost::io
