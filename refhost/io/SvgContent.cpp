#include "refhost/io/SvgImporterImpl.h"

#include "refhost/document/Bounds.h"
#include "refhost/io/Base64.h"
#include "refhost/io/PngDecode.h"
#include "refhost/io/SvgTransform.h"

#include <algorithm>
#include <cmath>
#include <fstream>

namespace refhost::io::svg {

namespace {

constexpr double kPointsPerPx = 0.75;

std::string percentDecode(std::string_view s) {
  std::string out;
  for (std::size_t i = 0; i < s.size(); ++i) {
    if (s[i] == '%' && i + 2 < s.size() && std::isxdigit(static_cast<unsigned char>(s[i + 1])) &&
        std::isxdigit(static_cast<unsigned char>(s[i + 2]))) {
      out += static_cast<char>(std::stoi(std::string(s.substr(i + 1, 2)), nullptr, 16));
      i += 2;
    } else {
      out += s[i];
    }
  }
  return out;
}

// A stable text for the inherited style of a symbol's content, so each distinct inherited style
// gets its own definition.
std::string styleKey(const ComputedStyle& s) {
  std::string k = s.fill + "|" + s.stroke + "|" + std::to_string(s.fillOpacity) + "|" + std::to_string(s.strokeOpacity) +
                  "|" + s.fillRule + "|" + std::to_string(s.strokeWidth) + "|" + s.lineJoin + "|" + s.lineCap + "|" +
                  std::to_string(s.miterLimit) + "|" + std::to_string(s.dashOffset) + "|" + s.visibility + "|" + s.color +
                  "|" + std::to_string(s.fontSize) + "|" + s.fontFamily + "|" + s.textAnchor;
  for (double d : s.dashArray) k += "," + std::to_string(d);
  return k;
}

// Collapses white space as SVG does without xml:space="preserve".
void appendCollapsed(std::string& out, const char* text) {
  for (const char* p = text; *p; ++p) {
    const char c = *p;
    if (c == '\n' || c == '\r') continue;
    const bool space = c == ' ' || c == '\t';
    if (space) {
      if (!out.empty() && out.back() != ' ') out += ' ';
    } else {
      out += c;
    }
  }
}

void gatherText(const pugi::xml_node& n, std::string& out) {
  for (pugi::xml_node c = n.first_child(); c; c = c.next_sibling()) {
    if (c.type() == pugi::node_pcdata || c.type() == pugi::node_cdata) {
      appendCollapsed(out, c.value());
    } else if (c.type() == pugi::node_element) {
      const std::string name = svgLocalName(c);
      if (name == "tspan" || name == "textPath" || name == "a") gatherText(c, out);
    }
  }
}

// Text x and y may list one position per character; the frame starts at the first.
double firstLength(const char* list, const LengthContext& lc, LengthAxis axis) {
  std::string_view s = trim(list);
  s = s.substr(0, s.find_first_of(" ,\t\n"));
  auto v = parseLength(s, lc, axis);
  return v ? *v : 0.0;
}

}  // namespace

Art* Importer::importUse(const pugi::xml_node& e, const Context& ctx, Art* into) {
  const std::string ref = href(e);
  const pugi::xml_node target = lookup(ref);
  if (!target) {
    warn("use reference", e, "use: reference \"" + ref + "\" not found; nothing drawn");
    return nullptr;
  }
  for (pugi::xml_node a = e; a; a = a.parent()) {
    if (a == target) {
      warn("use cycle", e, "use: reference \"" + ref + "\" refers to its own ancestor; nothing drawn");
      return nullptr;
    }
  }
  const void* key = target.internal_object();
  if (std::find(useStack_.begin(), useStack_.end(), key) != useStack_.end()) {
    warn("use cycle", e, "use: circular reference \"" + ref + "\"; nothing drawn");
    return nullptr;
  }
  useStack_.push_back(key);
  const double x = length(e, "x", ctx, LengthAxis::X, 0), y = length(e, "y", ctx, LengthAxis::Y, 0);
  Context at = ctx;
  at.ctm = ctx.ctm * Matrix::translation(x, y);
  Art* art = nullptr;
  const std::string kind = svgLocalName(target);
  if (kind == "symbol") {
    Context symbolCtx;
    Context defBase = at;
    // The definition lives in points with y up; the instance matrix brings it into place.
    const Matrix toPoints{kPointsPerPx, 0, 0, -kPointsPerPx, 0, 0};
    defBase.ctm = toPoints;
    elementContext(target, defBase, symbolCtx);
    const std::string id = target.attribute("id").value();
    const std::string defKey = id + "\n" + styleKey(symbolCtx.style);
    auto found = symbols_.find(defKey);
    NumberScanner vbScan(target.attribute("viewBox").value());
    double vb[4] = {0, 0, 0, 0};
    bool hasViewBox = true;
    for (double& v : vb) {
      vbScan.skipSeparator();
      auto n = vbScan.number();
      if (!n || !std::isfinite(*n)) {
        hasViewBox = false;
        break;
      }
      v = *n;
    }
    hasViewBox = hasViewBox && vb[2] > 0 && vb[3] > 0;
    if (hasViewBox) {
      symbolCtx.lengths.viewportWidth = vb[2];
      symbolCtx.lengths.viewportHeight = vb[3];
    }
    Symbol* symbol = nullptr;
    if (found != symbols_.end()) {
      symbol = found->second;
    } else {
      std::string name = id;
      for (int n = 2; doc_->findSymbol(name); ++n) name = id + " " + std::to_string(n);
      symbol = doc_->newSymbol(name);
      symbols_[defKey] = symbol;
      importChildren(target, symbolCtx, symbol->definition());
    }
    Matrix viewport;
    if (hasViewBox) {
      const double w = length(e, "width", ctx, LengthAxis::X, ctx.lengths.viewportWidth);
      const double h = length(e, "height", ctx, LengthAxis::Y, ctx.lengths.viewportHeight);
      viewport = viewportTransform(vb[0], vb[1], vb[2], vb[3], target.attribute("preserveAspectRatio").value(), 0, 0, w, h);
    }
    countArt(e);
    art = doc_->newArt(ArtKind::SymbolInstance, PaintOrder::InsideOnTop, into);
    art->symbolInstance()->symbol = symbol;
    // The definition holds toPoints * (the symbol's own transform) * content; the instance undoes
    // toPoints and places the symbol's viewport at the use's position.
    art->symbolInstance()->matrix = at.ctm * viewport * toPoints.inverted();
  } else {
    // Any other element is expanded in place, inheriting from the use element.
    countArt(e);
    art = doc_->newArt(ArtKind::Group, PaintOrder::InsideOnTop, into);
    Context inner = at;
    inner.depth = ctx.depth + 1;
    const UseSizedSvg outer = useSizedSvg_;
    if (kind == "svg") {
      // The use's width and height, when given, replace the svg's own.
      useSizedSvg_.node = target;
      useSizedSvg_.width = useSizedSvg_.height = std::nullopt;
      const double w = length(e, "width", ctx, LengthAxis::X, -1), h = length(e, "height", ctx, LengthAxis::Y, -1);
      if (w >= 0) useSizedSvg_.width = w;
      if (h >= 0) useSizedSvg_.height = h;
    }
    if (!kind.empty()) importElement(target, inner, art);
    useSizedSvg_ = outer;
  }
  useStack_.pop_back();
  return art;
}

Art* Importer::importImage(const pugi::xml_node& e, const Context& ctx, Art* into) {
  const std::string ref(trim(href(e)));
  std::shared_ptr<Image> image;
  std::string fileReference;
  std::vector<std::uint8_t> bytes;
  bool haveBytes = false;
  std::string what;
  if (lower(ref.substr(0, 5)) == "data:") {
    const std::size_t comma = ref.find(',');
    if (comma == std::string::npos) {
      warn("image data", e, "image: malformed data URI; nothing drawn");
      return nullptr;
    }
    const std::string header = lower(ref.substr(5, comma - 5));
    const std::string payload = ref.substr(comma + 1);
    if (header.find(";base64") != std::string::npos) {
      auto decoded = base64Decode(payload);
      if (decoded) {
        bytes = std::move(*decoded);
        haveBytes = true;
      }
    } else {
      const std::string text = percentDecode(payload);
      bytes.assign(text.begin(), text.end());
      haveBytes = true;
    }
    what = "embedded image";
  } else if (!ref.empty()) {
    std::string path = ref;
    if (lower(path.substr(0, 7)) == "file://") path = path.substr(7);
    if (path.find("://") != std::string::npos) {
      warn("image remote", e, "image: remote image \"" + ref + "\" not fetched");
    } else {
      if (path[0] != '/') path = baseDirectory_ + "/" + percentDecode(path);
      // A document keeps only UTF-8 text; a path that is not (a %-escape of a stray byte, a folder
      // named in another encoding) is read for its pixels but not kept as the reference.
      if (firstInvalidUtf8(path) == std::string::npos) {
        fileReference = path;
      } else {
        warn("image path", e, "image: the file path is not UTF-8; the image is kept without its file reference");
      }
      std::ifstream in(path, std::ios::binary);
      if (in) {
        bytes.assign(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
        haveBytes = true;
      } else {
        warn("image file", e, "image: cannot read \"" + path + "\"; kept as a reference without pixels");
      }
      what = "\"" + path + "\"";
    }
  }
  if (haveBytes) {
    if (looksLikePng(bytes)) {
      std::string error;
      image = decodePng(bytes, error, options_.maxImagePixels);
      if (!image) warn("image decode", e, "image: " + what + ": " + error);
    } else {
      warn("image format", e, "image: " + what + " is not a PNG; only PNG images are decoded");
    }
  }
  const double iw = image ? image->width : 0, ih = image ? image->height : 0;
  const double x = length(e, "x", ctx, LengthAxis::X, 0), y = length(e, "y", ctx, LengthAxis::Y, 0);
  double w = length(e, "width", ctx, LengthAxis::X, iw), h = length(e, "height", ctx, LengthAxis::Y, ih);
  if (!(w > 0 && h > 0)) return nullptr;
  const double natW = iw > 0 ? iw : w, natH = ih > 0 ? ih : h;
  // The image's own pixel grid placed into (x, y, w, h) by preserveAspectRatio.
  const Matrix place = viewportTransform(0, 0, natW, natH, e.attribute("preserveAspectRatio").value(), x, y, w, h);
  countArt(e);
  Art* art = doc_->newArt(ArtKind::Placed, PaintOrder::InsideOnTop, into);
  PlacedData& p = *art->placed();
  p.fileReference = fileReference;
  p.image = image;
  p.bounds = Rect{0, natH, natW, 0};
  // Natural space is y up; the pixel grid is y down.
  p.matrix = ctx.ctm * place * Matrix{1, 0, 0, -1, 0, natH};
  art->pathStyle().opacity = ctx.style.opacity;
  return art;
}

Art* Importer::importText(const pugi::xml_node& e, const Context& ctx, Art* into) {
  std::string content;
  gatherText(e, content);
  while (!content.empty() && content.back() == ' ') content.pop_back();
  if (!content.empty() && content.front() == ' ') content.erase(0, 1);
  if (content.empty()) return nullptr;
  if (inClipPath_) return nullptr;
  LengthContext lc = ctx.lengths;
  lc.fontSize = ctx.style.fontSize;
  const double x = firstLength(e.attribute("x").value(), lc, LengthAxis::X);
  const double y = firstLength(e.attribute("y").value(), lc, LengthAxis::Y);
  countArt(e);
  Art* art = doc_->newArt(ArtKind::TextFrame, PaintOrder::InsideOnTop, into);
  TextData& t = *art->text();
  t.text = content;
  t.fontFamily = ctx.style.fontFamily;
  t.fontSize = ctx.style.fontSize * kPointsPerPx;
  t.anchor = ctx.style.textAnchor == "middle" ? TextAnchor::Middle : (ctx.style.textAnchor == "end" ? TextAnchor::End : TextAnchor::Start);
  // Text space is y up in points: one text unit is 1/0.75 user units.
  t.matrix = ctx.ctm * Matrix::translation(x, y) * Matrix::scaling(1 / kPointsPerPx, -1 / kPointsPerPx);
  Rect userBounds = Rect::none();
  const double width = t.estimatedWidth() / kPointsPerPx;
  userBounds.add(Point{x, y});
  userBounds.add(Point{x + width, y - ctx.style.fontSize});
  Context styleCtx = ctx;
  art->setPathStyle(pathStyle(ctx.style, styleCtx, userBounds, e));
  return art;
}

Art* Importer::applyClipPath(Art* art, const pugi::xml_node& e, const Context& elementCtx) {
  const pugi::xml_node clip = lookup(elementCtx.style.clipPath);
  if (!clip || svgLocalName(clip) != "clipPath") {
    warn("clip reference", e, "clip-path: reference \"" + elementCtx.style.clipPath + "\" not found; drawn unclipped");
    return art;
  }
  if (inClipPath_) return art;
  Context clipCtx;
  elementContext(clip, elementCtx, clipCtx);
  if (lower(clip.attribute("clipPathUnits").value()) == "objectboundingbox") {
    const Rect user = artBounds(*art, elementCtx.ctm.inverted());
    if (user.isEmpty() || user.width() <= 0 || user.height() <= 0) return art;
    clipCtx.ctm = clipCtx.ctm * Matrix{user.width(), 0, 0, user.height(), user.left, user.bottom};
  }
  countArt(e);
  Art* group = doc_->newArt(ArtKind::Group, PaintOrder::Above, art);
  group->setClipped(true);
  doc_->moveArt(art, PaintOrder::InsideOnTop, group);
  group->setName(art->name().empty() ? std::string("clip group") : art->name() + " clip group");
  // Clip content: shapes (directly or through use), each a clipping path on top of the group.
  inClipPath_ = true;
  std::size_t clips = 0;
  std::vector<std::pair<pugi::xml_node, Context>> work;
  for (pugi::xml_node c = clip.first_child(); c; c = c.next_sibling()) {
    if (c.type() == pugi::node_element) work.emplace_back(c, clipCtx);
  }
  for (std::size_t i = 0; i < work.size(); ++i) {
    const pugi::xml_node c = work[i].first;
    const std::string name = svgLocalName(c);
    Context ctx;
    elementContext(c, work[i].second, ctx);
    if (!ctx.style.isDisplayed() || !ctx.style.isVisible()) continue;
    if (ctx.style.clipPath != "none" && !ctx.style.clipPath.empty()) {
      warn("clip child clip", c, "clipPath: a clip-path on a clip path's child is not supported; the child is used unclipped");
    }
    if (name == "use") {
      const pugi::xml_node target = lookup(href(c));
      if (target && svgLocalName(target) != "use" && work.size() < 1024) {
        Context at = ctx;
        at.ctm = ctx.ctm * Matrix::translation(length(c, "x", ctx, LengthAxis::X, 0), length(c, "y", ctx, LengthAxis::Y, 0));
        work.emplace_back(target, at);
      }
      continue;
    }
    std::vector<Subpath> subpaths;
    if (name == "path" || name == "rect" || name == "circle" || name == "ellipse" || name == "polygon" ||
        name == "polyline") {
      if (!shapeGeometry(c, name, ctx, subpaths) || subpaths.empty()) continue;
    } else {
      if (name == "text") warn("clip text", c, "clipPath: text in a clip path is not supported; ignored");
      continue;
    }
    countArt(c);
    Art* shape = makePathArt(subpaths, ctx.ctm, group);
    PathStyle ps;
    ps.clipping = true;
    ps.fillRule = ctx.style.clipRule == "evenodd" ? FillRule::EvenOdd : FillRule::NonZero;
    shape->setPathStyle(ps);
    for (Art* k = shape->firstChild(); k; k = k->nextSibling()) k->setPathStyle(ps);
    if (const char* id = c.attribute("id").value(); *id) shape->setName(id);
    ++clips;
  }
  inClipPath_ = false;
  if (clips == 0) {
    // An empty clip path shows nothing: a clipping path that encloses no area.
    Art* empty = doc_->newArt(ArtKind::Path, PaintOrder::InsideOnTop, group);
    empty->pathStyle().clipping = true;
  }
  // A clip path that is clipped itself intersects both: one clip group inside the other. A
  // reference back to a clip path already being applied is dropped, which ends any cycle.
  if (clipCtx.style.clipPath != "none" && !clipCtx.style.clipPath.empty()) {
    const pugi::xml_node next = lookup(clipCtx.style.clipPath);
    const bool cycle = next == clip || std::find(clipStack_.begin(), clipStack_.end(), next) != clipStack_.end();
    // Each link counts as one more level of nesting, so a long chain meets the nesting limit.
    if (!cycle) {
      clipStack_.push_back(clip);
      group = applyClipPath(group, clip, clipCtx);
      clipStack_.pop_back();
    }
  }
  return group;
}

}  // namespace refhost::io::svg
