#include "refhost/io/SvgImporterImpl.h"

#include "refhost/document/Bounds.h"
#include "refhost/io/SvgTransform.h"

#include <cmath>
#include <cstring>

namespace refhost::io {

namespace svg {

namespace {

constexpr double kPointsPerPx = 0.75;

bool isNonRendering(const std::string& name) {
  static const char* const kNames[] = {"defs", "symbol", "clipPath", "linearGradient", "radialGradient", "style",
                                       "title", "desc", "metadata", "script", "stop", "font-face", "font"};
  for (const char* n : kNames) {
    if (name == n) return true;
  }
  return false;
}

// Unprefixed elements belong to the nearest default namespace; other vocabularies (XHTML inside
// foreign content, editor metadata) are not SVG's business.
bool inSvgNamespace(const pugi::xml_node& e) {
  for (pugi::xml_node n = e; n && n.type() == pugi::node_element; n = n.parent()) {
    const pugi::xml_attribute ns = n.attribute("xmlns");
    if (ns) return std::strcmp(ns.value(), "http://www.w3.org/2000/svg") == 0;
  }
  return true;
}

bool isShape(const std::string& name) {
  return name == "path" || name == "rect" || name == "circle" || name == "ellipse" || name == "line" ||
         name == "polyline" || name == "polygon";
}

struct ViewBox {
  bool valid = false;
  double x = 0, y = 0, w = 0, h = 0;
};

ViewBox parseViewBox(const char* text) {
  ViewBox vb;
  NumberScanner scan(text);
  double v[4];
  for (double& d : v) {
    scan.skipSeparator();
    auto n = scan.number();
    if (!n || !std::isfinite(*n)) return vb;
    d = *n;
  }
  if (!scan.atEnd() || v[2] <= 0 || v[3] <= 0) return vb;
  vb.valid = true;
  vb.x = v[0];
  vb.y = v[1];
  vb.w = v[2];
  vb.h = v[3];
  return vb;
}

}  // namespace

Importer::Importer(const std::string& text, const std::string& sourceName, const std::string& baseDirectory,
                   const SvgImportOptions& options)
    : text_(text), source_(sourceName), baseDirectory_(baseDirectory), options_(options), positions_(text) {}

std::size_t Importer::lineOf(const pugi::xml_node& e) const {
  const std::ptrdiff_t offset = e.offset_debug();
  return offset < 0 ? 0 : positions_.line(static_cast<std::size_t>(offset));
}

void Importer::warn(const std::string& kind, const pugi::xml_node& e, const std::string& message) {
  auto it = warnings_.find(kind);
  if (it == warnings_.end()) {
    warnings_[kind] = Warning{lineOf(e), 1, message};
    warningOrder_.push_back(kind);
  } else {
    ++it->second.count;
  }
}

void Importer::fail(const pugi::xml_node& e, const std::string& message) const {
  const std::ptrdiff_t offset = e ? e.offset_debug() : -1;
  if (offset < 0) throw IoError(source_, message);
  throw IoError(source_, positions_.line(static_cast<std::size_t>(offset)),
                positions_.column(static_cast<std::size_t>(offset)), message);
}

void Importer::countArt(const pugi::xml_node& e) {
  if (++artCount_ > options_.maxArt) fail(e, "too many objects (limit " + std::to_string(options_.maxArt) + ")");
}

pugi::xml_node Importer::lookup(const std::string& reference) const {
  std::string_view r = trim(reference);
  if (r.compare(0, 4, "url(") == 0) {
    const std::size_t close = r.find(')');
    r = trim(r.substr(4, close == std::string_view::npos ? std::string_view::npos : close - 4));
    if (!r.empty() && (r.front() == '\'' || r.front() == '"')) r = r.substr(1, r.size() >= 2 ? r.size() - 2 : 0);
  }
  const std::size_t hash = r.find('#');
  if (hash == std::string_view::npos) return pugi::xml_node();
  // Only references into this file are followed.
  if (hash != 0) return pugi::xml_node();
  auto it = ids_.find(std::string(r.substr(1)));
  return it == ids_.end() ? pugi::xml_node() : it->second;
}

std::string Importer::href(const pugi::xml_node& e) const {
  const pugi::xml_attribute a = e.attribute("href");
  if (a) return a.value();
  return e.attribute("xlink:href").value();
}

double Importer::length(const pugi::xml_node& e, const char* attr, const Context& ctx, LengthAxis axis,
                        double fallback) const {
  const pugi::xml_attribute a = e.attribute(attr);
  if (!a) return fallback;
  LengthContext lc = ctx.lengths;
  lc.fontSize = ctx.style.fontSize;
  auto v = parseLength(a.value(), lc, axis);
  return v ? *v : fallback;
}

Matrix Importer::viewportTransform(double vbX, double vbY, double vbW, double vbH, const std::string& par, double x,
                                   double y, double w, double h) const {
  std::string align = "xmidymid";
  bool slice = false;
  {
    std::string p;
    for (char c : par) p += static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    std::size_t i = 0;
    std::vector<std::string> words;
    while (i < p.size()) {
      while (i < p.size() && std::isspace(static_cast<unsigned char>(p[i]))) ++i;
      std::size_t j = i;
      while (j < p.size() && !std::isspace(static_cast<unsigned char>(p[j]))) ++j;
      if (j > i) words.push_back(p.substr(i, j - i));
      i = j;
    }
    std::size_t k = 0;
    if (k < words.size() && words[k] == "defer") ++k;
    if (k < words.size()) align = words[k++];
    if (k < words.size()) slice = words[k] == "slice";
  }
  if (align == "none") {
    const double sx = w / vbW, sy = h / vbH;
    return Matrix{sx, 0, 0, sy, x - vbX * sx, y - vbY * sy};
  }
  const double s = slice ? std::max(w / vbW, h / vbH) : std::min(w / vbW, h / vbH);
  double ax = 0.5, ay = 0.5;
  if (align.size() == 8) {
    const std::string xs = align.substr(1, 3), ys = align.substr(5, 3);
    ax = xs == "min" ? 0.0 : (xs == "max" ? 1.0 : 0.5);
    ay = ys == "min" ? 0.0 : (ys == "max" ? 1.0 : 0.5);
  }
  return Matrix{s, 0, 0, s, x + (w - vbW * s) * ax - vbX * s, y + (h - vbH * s) * ay - vbY * s};
}

bool Importer::elementContext(const pugi::xml_node& e, const Context& parent, Context& out) {
  out = parent;
  out.depth = parent.depth + 1;
  if (out.depth > options_.maxDepth) {
    fail(e, "elements nested deeper than " + std::to_string(options_.maxDepth));
  }
  out.style = computeStyle(parent.style, e, sheet_, parent.lengths);
  out.lengths.fontSize = out.style.fontSize;
  const pugi::xml_attribute t = e.attribute("transform");
  if (t) {
    auto m = parseTransform(t.value());
    if (!m) {
      warn("transform", e, std::string("transform: malformed value \"") + t.value() + "\" ignored");
    } else {
      out.ctm = parent.ctm * *m;
    }
  }
  return true;
}

void Importer::noteUnsupportedReferences(const pugi::xml_node& e, const ComputedStyle& style) {
  auto used = [](const std::string& v) { return !v.empty() && v != "none"; };
  if (used(style.mask)) warn("mask", e, "mask: masks are not supported; the content is drawn unmasked");
  if (used(style.filter)) warn("filter", e, "filter: filters are not supported; the content is drawn unfiltered");
  if (used(style.marker[0]) || used(style.marker[1]) || used(style.marker[2])) {
    warn("marker", e, "marker: markers are not supported and are not drawn");
  }
}

void Importer::importChildren(const pugi::xml_node& parent, const Context& ctx, Art* into) {
  for (pugi::xml_node c = parent.first_child(); c; c = c.next_sibling()) {
    if (c.type() == pugi::node_element) importElement(c, ctx, into);
  }
}

Art* Importer::importElement(const pugi::xml_node& e, const Context& parentCtx, Art* into) {
  const std::string name = svgLocalName(e);
  if (name.empty() || isNonRendering(name)) return nullptr;
  if (name == "mask" || name == "pattern" || name == "filter" || name == "marker") {
    warn(name, e, name + ": " + name + "s are not supported; ignored");
    return nullptr;
  }
  Context ctx;
  elementContext(e, parentCtx, ctx);
  noteUnsupportedReferences(e, ctx.style);
  Art* art = nullptr;
  bool leaf = true;
  if (name == "g" || name == "a" || name == "switch") {
    countArt(e);
    art = doc_->newArt(ArtKind::Group, PaintOrder::InsideOnTop, into);
    leaf = false;
    if (name == "switch") {
      // The first child whose conditions hold stands for the whole switch: no extension is
      // supported, and English is the language.
      for (pugi::xml_node c = e.first_child(); c; c = c.next_sibling()) {
        if (c.type() != pugi::node_element) continue;
        const std::string child = svgLocalName(c);
        if (child.empty() || child == "foreignObject" || *c.attribute("requiredExtensions").value()) continue;
        const std::string lang = c.attribute("systemLanguage").value();
        if (!lang.empty() && lang.compare(0, 2, "en") != 0 && lang.find(",en") == std::string::npos &&
            lang.find(", en") == std::string::npos) {
          continue;
        }
        importElement(c, ctx, art);
        break;
      }
    } else {
      importChildren(e, ctx, art);
    }
  } else if (name == "svg") {
    const double x = length(e, "x", parentCtx, LengthAxis::X, 0);
    const double y = length(e, "y", parentCtx, LengthAxis::Y, 0);
    // A use that refers to this svg gives it its width and height.
    const bool sizedByUse = e == useSizedSvg_.node;
    const double w = sizedByUse && useSizedSvg_.width ? *useSizedSvg_.width
                                                      : length(e, "width", parentCtx, LengthAxis::X, parentCtx.lengths.viewportWidth);
    const double h = sizedByUse && useSizedSvg_.height ? *useSizedSvg_.height
                                                       : length(e, "height", parentCtx, LengthAxis::Y, parentCtx.lengths.viewportHeight);
    if (!(w > 0 && h > 0)) return nullptr;
    const ViewBox vb = parseViewBox(e.attribute("viewBox").value());
    if (vb.valid) {
      ctx.ctm = ctx.ctm * viewportTransform(vb.x, vb.y, vb.w, vb.h, e.attribute("preserveAspectRatio").value(), x, y, w, h);
      ctx.lengths.viewportWidth = vb.w;
      ctx.lengths.viewportHeight = vb.h;
    } else {
      ctx.ctm = ctx.ctm * Matrix::translation(x, y);
      ctx.lengths.viewportWidth = w;
      ctx.lengths.viewportHeight = h;
    }
    countArt(e);
    art = doc_->newArt(ArtKind::Group, PaintOrder::InsideOnTop, into);
    leaf = false;
    importChildren(e, ctx, art);
    // An inner viewport hides what lies outside it unless its overflow is visible.
    if (ctx.style.overflow != "visible" && ctx.style.overflow != "auto") art = clipToRectangle(art, e, x, y, w, h, parentCtx.ctm);
  } else if (isShape(name)) {
    art = importShape(e, name, ctx, into);
  } else if (name == "use") {
    art = importUse(e, ctx, into);
    leaf = false;
  } else if (name == "image") {
    art = importImage(e, ctx, into);
  } else if (name == "text") {
    art = importText(e, ctx, into);
  } else if (name == "foreignObject") {
    warn(name, e, "foreignObject: foreign content is not supported; ignored");
  } else if (inSvgNamespace(e)) {
    warn("element " + name, e, "<" + name + ">: element not supported; ignored");
  }
  if (art) finishArt(art, e, parentCtx, ctx, leaf);
  return art;
}

Art* Importer::clipToRectangle(Art* art, const pugi::xml_node& e, double x, double y, double w, double h,
                               const Matrix& ctm) {
  countArt(e);
  Art* group = doc_->newArt(ArtKind::Group, PaintOrder::Above, art);
  group->setClipped(true);
  doc_->moveArt(art, PaintOrder::InsideOnTop, group);
  Art* clip = makePathArt({rectangle(x, y, w, h, 0, 0)}, ctm, group);
  clip->pathStyle().clipping = true;
  return group;
}

void Importer::finishArt(Art* art, const pugi::xml_node& e, const Context& parentCtx, const Context& ctx, bool leaf) {
  if (const char* id = e.attribute("id").value(); *id) art->setName(id);
  art->pathStyle().opacity = ctx.style.opacity;
  if (!ctx.style.isDisplayed() || (leaf && !ctx.style.isVisible())) art->setAttributes(ArtAttr::Hidden, ArtAttr::Hidden);
  if (ctx.style.clipPath != "none" && !ctx.style.clipPath.empty()) applyClipPath(art, e, ctx);
  (void)parentCtx;
}

bool Importer::shapeGeometry(const pugi::xml_node& e, const std::string& name, const Context& ctx,
                             std::vector<Subpath>& out) {
  if (name == "path") {
    PathParseResult r = parsePathData(e.attribute("d").value(), options_.maxPathPoints);
    if (!r.error.empty()) {
      if (r.error.compare(0, 9, "too many ") == 0) fail(e, "path data: " + r.error);
      warn("path data", e, "path data: " + r.error + " (at character " + std::to_string(r.errorOffset + 1) +
                               "); the path is drawn up to there");
    }
    out = std::move(r.subpaths);
    return true;
  }
  if (name == "rect") {
    const double x = length(e, "x", ctx, LengthAxis::X, 0), y = length(e, "y", ctx, LengthAxis::Y, 0);
    const double w = length(e, "width", ctx, LengthAxis::X, 0), h = length(e, "height", ctx, LengthAxis::Y, 0);
    if (!(w > 0 && h > 0)) return false;
    double rx = length(e, "rx", ctx, LengthAxis::X, -1), ry = length(e, "ry", ctx, LengthAxis::Y, -1);
    if (rx < 0 && ry < 0) rx = ry = 0;
    else if (rx < 0) rx = ry;
    else if (ry < 0) ry = rx;
    rx = std::min(rx, w / 2);
    ry = std::min(ry, h / 2);
    out.push_back(rectangle(x, y, w, h, rx, ry));
    return true;
  }
  if (name == "circle" || name == "ellipse") {
    const double cx = length(e, "cx", ctx, LengthAxis::X, 0), cy = length(e, "cy", ctx, LengthAxis::Y, 0);
    double rx, ry;
    if (name == "circle") {
      rx = ry = length(e, "r", ctx, LengthAxis::Other, 0);
    } else {
      // A missing (or "auto") radius takes the other one; a negative one disables the shape.
      const bool hasRx = e.attribute("rx") && std::string(e.attribute("rx").value()) != "auto";
      const bool hasRy = e.attribute("ry") && std::string(e.attribute("ry").value()) != "auto";
      rx = length(e, "rx", ctx, LengthAxis::X, -1);
      ry = length(e, "ry", ctx, LengthAxis::Y, -1);
      if (!hasRx) rx = ry;
      if (!hasRy) ry = rx;
    }
    if (!(rx > 0 && ry > 0)) return false;
    out.push_back(ellipse(cx, cy, rx, ry));
    return true;
  }
  if (name == "line") {
    Subpath s;
    s.anchors = {PathSegment::at(length(e, "x1", ctx, LengthAxis::X, 0), length(e, "y1", ctx, LengthAxis::Y, 0)),
                 PathSegment::at(length(e, "x2", ctx, LengthAxis::X, 0), length(e, "y2", ctx, LengthAxis::Y, 0))};
    finishSubpath(s);
    out.push_back(std::move(s));
    return true;
  }
  // polyline, polygon
  Subpath s;
  NumberScanner scan(e.attribute("points").value());
  while (true) {
    scan.skipSeparator();
    if (scan.atEnd()) break;
    auto x = scan.number();
    scan.skipSeparator();
    auto y = scan.number();
    if (!x || !y || !std::isfinite(*x) || !std::isfinite(*y)) {
      warn("points", e, "points: malformed list; drawn up to the error");
      break;
    }
    s.anchors.push_back(PathSegment::at(*x, *y));
    if (s.anchors.size() > options_.maxPathPoints) fail(e, "too many points");
  }
  if (s.anchors.size() < 2) return false;
  s.closed = name == "polygon";
  finishSubpath(s);
  out.push_back(std::move(s));
  return true;
}

Art* Importer::makePathArt(const std::vector<Subpath>& subpaths, const Matrix& m, Art* into) {
  auto fill = [&](Art* path, const Subpath& s) {
    PathData& data = *path->path();
    data.closed = s.closed;
    data.segments.reserve(s.anchors.size());
    for (const PathSegment& a : s.anchors) data.segments.push_back(PathSegment{m.apply(a.p), m.apply(a.in), m.apply(a.out), a.corner});
  };
  if (subpaths.size() == 1) {
    Art* path = doc_->newArt(ArtKind::Path, PaintOrder::InsideOnTop, into);
    fill(path, subpaths[0]);
    return path;
  }
  Art* compound = doc_->newArt(ArtKind::CompoundPath, PaintOrder::InsideOnTop, into);
  for (const Subpath& s : subpaths) fill(doc_->newArt(ArtKind::Path, PaintOrder::InsideOnBottom, compound), s);
  return compound;
}

Art* Importer::importShape(const pugi::xml_node& e, const std::string& name, const Context& ctx, Art* into) {
  std::vector<Subpath> subpaths;
  if (!shapeGeometry(e, name, ctx, subpaths) || subpaths.empty()) return nullptr;
  for (const Subpath& s : subpaths) pathPoints_ += s.anchors.size();
  if (pathPoints_ > options_.maxPathPoints) fail(e, "too many path points (limit " + std::to_string(options_.maxPathPoints) + ")");
  // Coordinates that overflow in document space would poison every later computation.
  for (const Subpath& s : subpaths) {
    for (const PathSegment& a : s.anchors) {
      for (Point p : {ctx.ctm.apply(a.p), ctx.ctm.apply(a.in), ctx.ctm.apply(a.out)}) {
        if (!std::isfinite(p.x) || !std::isfinite(p.y)) {
          warn("coordinates", e, "coordinates out of range; the shape is skipped");
          return nullptr;
        }
      }
    }
  }
  artCount_ += subpaths.size() > 1 ? subpaths.size() : 0;
  countArt(e);
  Rect userBounds = Rect::none();
  for (const Subpath& s : subpaths) {
    PathData d;
    d.segments = s.anchors;
    d.closed = s.closed;
    userBounds = userBounds.united(pathBounds(d));
  }
  Art* art = makePathArt(subpaths, ctx.ctm, into);
  const PathStyle style = pathStyle(ctx.style, ctx, userBounds, e);
  art->setPathStyle(style);
  for (Art* c = art->firstChild(); c; c = c->nextSibling()) c->setPathStyle(style);
  if (name == "line") art->pathStyle().fillPaint = false;
  return art;
}

void Importer::importRoot(const pugi::xml_node& root) {
  const ViewBox vb = parseViewBox(root.attribute("viewBox").value());
  Context base;
  base.lengths.viewportWidth = vb.valid ? vb.w : 300.0;
  base.lengths.viewportHeight = vb.valid ? vb.h : 150.0;
  const double w = length(root, "width", base, LengthAxis::X, vb.valid ? vb.w : 300.0);
  const double h = length(root, "height", base, LengthAxis::Y, vb.valid ? vb.h : 150.0);
  if (!(std::isfinite(w) && std::isfinite(h) && w > 0 && h > 0)) fail(root, "the SVG width and height must be positive");
  if (w > options_.maxViewportPx || h > options_.maxViewportPx) {
    fail(root, "the SVG size " + std::to_string(w) + " x " + std::to_string(h) + " px is beyond the limit of " +
                   std::to_string(options_.maxViewportPx) + " px");
  }
  doc_->artboards().push_back(Artboard{"Artboard 1", Rect{0, h * kPointsPerPx, w * kPointsPerPx, 0}});
  doc_->setActiveArtboard(0);

  Context rootCtx;
  rootCtx.ctm = Matrix{kPointsPerPx, 0, 0, -kPointsPerPx, 0, h * kPointsPerPx};
  if (vb.valid) rootCtx.ctm = rootCtx.ctm * viewportTransform(vb.x, vb.y, vb.w, vb.h, root.attribute("preserveAspectRatio").value(), 0, 0, w, h);
  rootCtx.lengths.viewportWidth = vb.valid ? vb.w : w;
  rootCtx.lengths.viewportHeight = vb.valid ? vb.h : h;
  Context ctx;
  elementContext(root, rootCtx, ctx);
  noteUnsupportedReferences(root, ctx.style);

  // Opacity or a clip on the root applies to the page as a whole: everything goes into one group
  // in one layer, since layers are composited apart.
  if (ctx.style.opacity < 1.0 || ctx.style.clipPath != "none") {
    countArt(root);
    Art* page = doc_->newArt(ArtKind::Group, PaintOrder::InsideOnTop, doc_->newLayer("Layer 1", 0)->group());
    importChildren(root, ctx, page);
    finishArt(page, root, rootCtx, ctx, false);
    doc_->setCurrentLayer(doc_->firstLayer());
    return;
  }

  Layer* run = nullptr;
  int layerNumber = 0;
  for (pugi::xml_node c = root.first_child(); c; c = c.next_sibling()) {
    if (c.type() != pugi::node_element) continue;
    const std::string name = svgLocalName(c);
    if (name.empty() || isNonRendering(name)) continue;
    if (name == "g") {
      Context gctx;
      elementContext(c, ctx, gctx);
      if (gctx.style.clipPath == "none" && gctx.style.mask == "none" && gctx.style.filter == "none") {
        run = nullptr;
        std::string layerName = c.attribute("inkscape:label").value();
        if (layerName.empty()) layerName = c.attribute("id").value();
        if (layerName.empty()) layerName = "Layer " + std::to_string(layerNumber + 1);
        ++layerNumber;
        Layer* layer = doc_->newLayer(layerName, 0);
        if (!gctx.style.isDisplayed()) layer->setShown(false);
        layer->group()->pathStyle().opacity = gctx.style.opacity;
        importChildren(c, gctx, layer->group());
        continue;
      }
    }
    if (!run) {
      ++layerNumber;
      run = doc_->newLayer("Layer " + std::to_string(layerNumber), 0);
    }
    importElement(c, ctx, run->group());
  }
  if (doc_->layerCount() == 0) doc_->newLayer("Layer 1");
  doc_->setCurrentLayer(doc_->firstLayer());
}

ImportResult Importer::run() {
  const pugi::xml_parse_result parsed =
      xml_.load_buffer(text_.data(), text_.size(), pugi::parse_default | pugi::parse_ws_pcdata | pugi::parse_doctype,
                       pugi::encoding_auto);
  if (!parsed) {
    const std::size_t offset = static_cast<std::size_t>(std::max<std::ptrdiff_t>(0, parsed.offset));
    throw IoError(source_, positions_.line(offset), positions_.column(offset),
                  std::string("malformed XML: ") + parsed.description());
  }
  // A file read as UTF-8 must be UTF-8: other bytes would reach names and text that no document
  // can keep.
  if (parsed.encoding == pugi::encoding_utf8) {
    const std::size_t bad = firstInvalidUtf8(text_);
    if (bad != std::string::npos)
      throw IoError(source_, positions_.line(bad), positions_.column(bad), "malformed XML: invalid UTF-8");
  }
  // Entities are never expanded; a file that declares them (the "billion laughs" kind) is refused
  // rather than drawn with its references left as text.
  for (pugi::xml_node n = xml_.first_child(); n; n = n.next_sibling())
    if (n.type() == pugi::node_doctype && std::strstr(n.value(), "<!ENTITY"))
      throw IoError(source_, "the document type declares entities, which are not read");
  const pugi::xml_node root = xml_.document_element();
  if (!root || svgLocalName(root) != "svg") {
    throw IoError(source_, std::string("not an SVG document (the root element is <") + (root ? root.name() : "") + ">)");
  }
  std::vector<std::string> unsupported;
  std::size_t depth = 0;
  // Iterative walk: ids and style sheets first, so that forward references work.
  for (pugi::xml_node n = root; n;) {
    if (n.type() == pugi::node_element) {
      if (depth > options_.maxDepth) fail(n, "elements nested deeper than " + std::to_string(options_.maxDepth));
      const char* id = n.attribute("id").value();
      if (*id) ids_.emplace(id, n);
      if (svgLocalName(n) == "style") {
        const std::string type = n.attribute("type").value();
        if (type.empty() || type == "text/css") {
          std::string css;
          for (pugi::xml_node t = n.first_child(); t; t = t.next_sibling()) css += t.value();
          sheet_.parse(css, unsupported);
        }
      }
    }
    if (n.first_child()) {
      n = n.first_child();
      ++depth;
      continue;
    }
    while (n && !n.next_sibling() && n != root) {
      n = n.parent();
      --depth;
    }
    if (!n || n == root) break;
    n = n.next_sibling();
  }
  if (!unsupported.empty()) {
    warn("css", root, "CSS: unsupported selector or rule \"" + unsupported.front() + "\" skipped" +
                          (unsupported.size() > 1 ? " (and " + std::to_string(unsupported.size() - 1) + " more)" : ""));
  }
  doc_ = std::make_unique<Document>();
  doc_->setColorMode(ColorMode::Rgb);
  importRoot(root);
  ImportResult result;
  result.document = std::move(doc_);
  result.document->setFilePath(source_);
  for (const std::string& kind : warningOrder_) {
    const Warning& w = warnings_[kind];
    std::string line = source_;
    if (w.line > 0) line += ":" + std::to_string(w.line);
    line += ": " + w.message;
    if (w.count > 1) line += " (" + std::to_string(w.count) + " times)";
    result.warnings.push_back(line);
  }
  return result;
}

}  // namespace svg

ImportResult importSvgText(const std::string& text, const std::string& sourceName, const std::string& baseDirectory,
                           const SvgImportOptions& options) {
  if (text.size() > options.maxFileBytes) throw IoError(sourceName, "file too large");
  svg::Importer importer(text, sourceName, baseDirectory, options);
  return importer.run();
}

ImportResult importSvgFile(const std::string& path, const SvgImportOptions& options) {
  const std::string text = readFile(path, options.maxFileBytes);
  const std::size_t slash = path.find_last_of('/');
  const std::string dir = slash == std::string::npos ? std::string(".") : path.substr(0, slash);
  return importSvgText(text, path, dir, options);
}

}  // namespace refhost::io
