#include "refhost/io/SvgImporterImpl.h"

#include "refhost/io/CssColor.h"
#include "refhost/io/SvgTransform.h"

#include <algorithm>
#include <cmath>
#include <cstring>

namespace refhost::io::svg {

namespace {

Paint rgbPaint(const Rgba& c) { return Paint::rgb(c.r, c.g, c.b); }

// A gradient coordinate: in bounding-box units a plain number or a fraction in percent; in user
// units a length.
double gradientCoordinate(const char* text, bool boundingBox, const LengthContext& lc, LengthAxis axis, double fallback) {
  if (!text || !*text) return fallback;
  if (boundingBox) {
    std::string_view t = trim(text);
    if (!t.empty() && t.back() == '%') {
      auto n = parseNumber(t.substr(0, t.size() - 1));
      return n ? *n / 100.0 : fallback;
    }
    auto n = parseNumber(t);
    return n ? *n : fallback;
  }
  auto v = parseLength(text, lc, axis);
  return v ? *v : fallback;
}

}  // namespace

const ComputedStyle& Importer::documentStyle(const pugi::xml_node& e, const LengthContext& lengths) {
  // Kept per element: every shape painted with a gradient asks for the same one.
  auto found = documentStyles_.find(e.internal_object());
  if (found != documentStyles_.end()) return found->second;
  std::vector<pugi::xml_node> line;
  for (pugi::xml_node n = e; n && n.type() == pugi::node_element; n = n.parent()) line.push_back(n);
  ComputedStyle style;
  for (auto it = line.rbegin(); it != line.rend(); ++it) style = computeStyle(style, *it, sheet_, lengths);
  return documentStyles_.emplace(e.internal_object(), std::move(style)).first->second;
}

bool Importer::gradientPaint(const pugi::xml_node& start, const Context& ctx, const Rect& userBounds, Paint& paint,
                             double& opacity) {
  // Gather the href chain: attributes and stops come from the nearest gradient that has them.
  std::vector<pugi::xml_node> chain;
  for (pugi::xml_node g = start; g && chain.size() < 32; g = lookup(href(g))) {
    const std::string n = svgLocalName(g);
    if (n != "linearGradient" && n != "radialGradient") break;
    if (std::find(chain.begin(), chain.end(), g) != chain.end()) break;
    chain.push_back(g);
  }
  // Units, transform and spread pass between both kinds; geometry only between gradients of the
  // kind that is painted (a radial gradient takes no cx from a linear one).
  const std::string kind = svgLocalName(chain.front());
  auto attr = [&](const char* name) -> const char* {
    const bool shared = std::strcmp(name, "gradientUnits") == 0 || std::strcmp(name, "gradientTransform") == 0 ||
                        std::strcmp(name, "spreadMethod") == 0;
    for (const pugi::xml_node& g : chain) {
      if (!shared && svgLocalName(g) != kind) continue;
      if (g.attribute(name)) return g.attribute(name).value();
    }
    return nullptr;
  };
  pugi::xml_node stopsOwner;
  for (const pugi::xml_node& g : chain) {
    for (pugi::xml_node c = g.first_child(); c; c = c.next_sibling()) {
      if (c.type() == pugi::node_element && svgLocalName(c) == "stop") {
        stopsOwner = g;
        break;
      }
    }
    if (stopsOwner) break;
  }

  auto gradient = std::make_shared<Gradient>();
  if (stopsOwner) {
    // Stops inherit from the gradient that holds them and its ancestors, not from the element
    // painted: "currentColor" and "inherit" resolve there.
    const ComputedStyle& ownerStyle = documentStyle(stopsOwner, ctx.lengths);
    double last = 0.0;
    for (pugi::xml_node c = stopsOwner.first_child(); c; c = c.next_sibling()) {
      if (c.type() != pugi::node_element || svgLocalName(c) != "stop") continue;
      const ComputedStyle st = computeStyle(ownerStyle, c, sheet_, ctx.lengths);
      double offset = gradientCoordinate(c.attribute("offset").value(), true, ctx.lengths, LengthAxis::Other, 0.0);
      offset = std::min(1.0, std::max(offset, last));
      last = offset;
      const std::string colorText = lower(trim(st.stopColor)) == "currentcolor" ? st.color : st.stopColor;
      const Rgba rgba = parseCssColor(colorText).value_or(Rgba{});
      gradient->stops.push_back(GradientStop{offset, rgbPaint(rgba), st.stopOpacity * rgba.a});
    }
  }
  if (gradient->stops.empty()) return false;  // painted as none
  if (gradient->stops.size() == 1) {
    paint = gradient->stops[0].color;
    opacity *= gradient->stops[0].opacity;
    return true;
  }

  const bool boundingBox = lower(attr("gradientUnits") ? attr("gradientUnits") : "objectBoundingBox") != "userspaceonuse";
  Matrix gradientTransform;
  if (const char* t = attr("gradientTransform")) {
    if (auto m = parseTransform(t)) gradientTransform = *m;
  }
  const std::string spread = lower(attr("spreadMethod") ? attr("spreadMethod") : "pad");
  gradient->spread = spread == "reflect" ? Gradient::Spread::Reflect
                                         : (spread == "repeat" ? Gradient::Spread::Repeat : Gradient::Spread::Pad);
  const bool radial = kind == "radialGradient";
  const LengthContext& lc = ctx.lengths;
  if (radial) {
    gradient->kind = Gradient::Kind::Radial;
    const double half = boundingBox ? 0.5 : 0.0;
    gradient->center.x = gradientCoordinate(attr("cx"), boundingBox, lc, LengthAxis::X, boundingBox ? half : lc.viewportWidth / 2);
    gradient->center.y = gradientCoordinate(attr("cy"), boundingBox, lc, LengthAxis::Y, boundingBox ? half : lc.viewportHeight / 2);
    gradient->radius = gradientCoordinate(attr("r"), boundingBox, lc, LengthAxis::Other, boundingBox ? half : lc.percentBase(LengthAxis::Other) / 2);
    gradient->focus.x = gradientCoordinate(attr("fx"), boundingBox, lc, LengthAxis::X, gradient->center.x);
    gradient->focus.y = gradientCoordinate(attr("fy"), boundingBox, lc, LengthAxis::Y, gradient->center.y);
    gradient->focusRadius = gradientCoordinate(attr("fr"), boundingBox, lc, LengthAxis::Other, 0.0);
    if (gradient->radius <= 0) {
      // A zero radius paints the last stop's colour.
      paint = gradient->stops.back().color;
      opacity *= gradient->stops.back().opacity;
      return true;
    }
  } else {
    gradient->kind = Gradient::Kind::Linear;
    gradient->start.x = gradientCoordinate(attr("x1"), boundingBox, lc, LengthAxis::X, 0.0);
    gradient->start.y = gradientCoordinate(attr("y1"), boundingBox, lc, LengthAxis::Y, 0.0);
    gradient->end.x = gradientCoordinate(attr("x2"), boundingBox, lc, LengthAxis::X, boundingBox ? 1.0 : lc.viewportWidth);
    gradient->end.y = gradientCoordinate(attr("y2"), boundingBox, lc, LengthAxis::Y, 0.0);
  }
  Matrix units;
  if (boundingBox) {
    // Bounding-box units need an area to map the unit square onto.
    if (userBounds.isEmpty() || userBounds.width() <= 0 || userBounds.height() <= 0) return false;
    // User space here is SVG's, y down: the box's top-left is (left, bottom) of the y-up Rect.
    units = Matrix{userBounds.width(), 0, 0, userBounds.height(), userBounds.left, userBounds.bottom};
  }
  gradient->units = Gradient::Units::UserSpace;
  gradient->transform = ctx.ctm * units * gradientTransform;
  paint = Paint::fromGradient(gradient);
  return true;
}

bool Importer::resolvePaint(const std::string& text, const ComputedStyle& style, const Context& ctx,
                            const Rect& userBounds, const pugi::xml_node& e, Paint& paint, double& opacity) {
  std::string_view s = trim(text);
  const std::string ls = lower(s);
  if (ls == "none" || ls == "context-fill" || ls == "context-stroke") return false;
  if (ls == "currentcolor") {
    const Rgba c = parseCssColor(style.color).value_or(Rgba{});
    paint = rgbPaint(c);
    opacity *= c.a;
    return true;
  }
  if (ls.compare(0, 4, "url(") == 0) {
    const std::size_t close = s.find(')');
    const std::string fallback(trim(s.substr(close + 1)));
    const pugi::xml_node target = lookup(std::string(s.substr(0, close + 1)));
    const std::string kind = target ? svgLocalName(target) : std::string();
    if (kind == "linearGradient" || kind == "radialGradient") return gradientPaint(target, ctx, userBounds, paint, opacity);
    if (kind == "pattern") {
      warn("pattern", e, "pattern: pattern paints are not supported; drawn with the fallback colour or not at all");
    } else if (!target) {
      warn("paint reference", e, "paint: reference " + std::string(s.substr(0, close + 1)) + " not found");
    }
    if (fallback.empty()) return false;
    return resolvePaint(fallback, style, ctx, userBounds, e, paint, opacity);
  }
  auto c = parseCssColor(s);
  if (!c) return false;
  paint = rgbPaint(*c);
  opacity *= c->a;
  return true;
}

PathStyle Importer::pathStyle(const ComputedStyle& st, const Context& ctx, const Rect& userBounds,
                              const pugi::xml_node& e) {
  PathStyle ps;
  double fillOpacity = st.fillOpacity;
  ps.fillPaint = resolvePaint(st.fill, st, ctx, userBounds, e, ps.fill, fillOpacity);
  ps.fillOpacity = fillOpacity;
  double strokeOpacity = st.strokeOpacity;
  ps.strokePaint = st.strokeWidth > 0 && resolvePaint(st.stroke, st, ctx, userBounds, e, ps.stroke, strokeOpacity);
  ps.strokeOpacity = strokeOpacity;
  // Widths scale with the user space; a non-uniform scale is averaged (its geometric mean).
  const double scale = std::sqrt(std::fabs(ctx.ctm.determinant()));
  ps.strokeWidth = st.strokeWidth * scale;
  ps.lineJoin = st.lineJoin == "round" ? LineJoin::Round : (st.lineJoin == "bevel" ? LineJoin::Bevel : LineJoin::Miter);
  ps.lineCap = st.lineCap == "round" ? LineCap::Round : (st.lineCap == "square" ? LineCap::Projecting : LineCap::Butt);
  ps.miterLimit = st.miterLimit;
  for (double d : st.dashArray) ps.dashArray.push_back(d * scale);
  ps.dashOffset = st.dashOffset * scale;
  ps.fillRule = st.fillRule == "evenodd" ? FillRule::EvenOdd : FillRule::NonZero;
  ps.opacity = st.opacity;
  if (!ps.fillPaint) ps.fill = Paint::none();
  if (!ps.strokePaint) ps.stroke = Paint::none();
  return ps;
}

}  // namespace refhost::io::svg
