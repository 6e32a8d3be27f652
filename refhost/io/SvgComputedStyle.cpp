#include "refhost/io/SvgComputedStyle.h"

#include "refhost/io/CssColor.h"

#include <cctype>
#include <cmath>
#include <cstring>
#include <map>

namespace refhost::io::svg {

namespace {

const char* const kProperties[] = {
    "fill", "stroke", "fill-opacity", "stroke-opacity", "fill-rule", "clip-rule", "stroke-width",
    "stroke-linejoin", "stroke-linecap", "stroke-miterlimit", "stroke-dasharray", "stroke-dashoffset",
    "visibility", "color", "font-size", "font-family", "text-anchor", "opacity", "display", "clip-path",
    "mask", "filter", "marker-start", "marker-mid", "marker-end", "marker", "stop-color", "stop-opacity", "font",
    "overflow",
};

bool isProperty(const char* name) {
  for (const char* p : kProperties) {
    if (std::strcmp(p, name) == 0) return true;
  }
  return false;
}

std::optional<double> opacityValue(const std::string& v) {
  std::string_view t = trim(v);
  double scale = 1.0;
  if (!t.empty() && t.back() == '%') {
    t.remove_suffix(1);
    scale = 0.01;
  }
  auto n = parseNumber(t);
  if (!n) return std::nullopt;
  return std::min(1.0, std::max(0.0, *n * scale));
}

std::optional<std::vector<double>> dashes(const std::string& v, const LengthContext& ctx) {
  std::vector<double> out;
  if (lower(trim(v)) == "none") return out;
  std::string s = v;
  for (char& c : s) {
    if (c == ',') c = ' ';
  }
  std::size_t i = 0;
  while (i < s.size()) {
    while (i < s.size() && s[i] == ' ') ++i;
    if (i >= s.size()) break;
    std::size_t end = s.find(' ', i);
    if (end == std::string::npos) end = s.size();
    auto len = parseLength(std::string_view(s).substr(i, end - i), ctx, LengthAxis::Other);
    if (!len || *len < 0) return std::nullopt;
    out.push_back(*len);
    i = end;
  }
  double sum = 0;
  for (double d : out) sum += d;
  if (sum <= 0) return std::vector<double>{};
  if (out.size() % 2 == 1) {
    const std::size_t n = out.size();
    for (std::size_t k = 0; k < n; ++k) out.push_back(out[k]);
  }
  return out;
}

std::optional<double> fontSizeValue(const std::string& v, double parentSize, const LengthContext& ctx) {
  static const std::map<std::string, double> kKeywords = {
      {"xx-small", 9}, {"x-small", 10}, {"small", 13}, {"medium", 16}, {"large", 18}, {"x-large", 24}, {"xx-large", 32}};
  const std::string k = lower(trim(v));
  auto it = kKeywords.find(k);
  if (it != kKeywords.end()) return it->second;
  if (k == "larger") return parentSize * 1.2;
  if (k == "smaller") return parentSize / 1.2;
  LengthContext c = ctx;
  c.fontSize = parentSize;
  // Percentages of a font size are of the parent's font size.
  if (!k.empty() && k.back() == '%') {
    auto n = parseNumber(std::string_view(k).substr(0, k.size() - 1));
    if (!n) return std::nullopt;
    return parentSize * *n / 100.0;
  }
  auto len = parseLength(k, c, LengthAxis::Other);
  if (!len || *len < 0) return std::nullopt;
  return len;
}

void apply(ComputedStyle& s, const ComputedStyle& parent, const std::string& prop, const std::string& rawValue,
           const LengthContext& ctx) {
  const std::string value(trim(rawValue));
  const std::string lv = lower(value);
  if (lv == "inherit") {
    if (prop == "fill") s.fill = parent.fill;
    else if (prop == "stroke") s.stroke = parent.stroke;
    else if (prop == "fill-opacity") s.fillOpacity = parent.fillOpacity;
    else if (prop == "stroke-opacity") s.strokeOpacity = parent.strokeOpacity;
    else if (prop == "fill-rule") s.fillRule = parent.fillRule;
    else if (prop == "clip-rule") s.clipRule = parent.clipRule;
    else if (prop == "stroke-width") s.strokeWidth = parent.strokeWidth;
    else if (prop == "stroke-linejoin") s.lineJoin = parent.lineJoin;
    else if (prop == "stroke-linecap") s.lineCap = parent.lineCap;
    else if (prop == "stroke-miterlimit") s.miterLimit = parent.miterLimit;
    else if (prop == "stroke-dasharray") s.dashArray = parent.dashArray;
    else if (prop == "stroke-dashoffset") s.dashOffset = parent.dashOffset;
    else if (prop == "visibility") s.visibility = parent.visibility;
    else if (prop == "color") s.color = parent.color;
    else if (prop == "font-size") s.fontSize = parent.fontSize;
    else if (prop == "font-family") s.fontFamily = parent.fontFamily;
    else if (prop == "text-anchor") s.textAnchor = parent.textAnchor;
    else if (prop == "opacity") s.opacity = parent.opacity;
    else if (prop == "display") s.display = parent.display;
    else if (prop == "stop-color") s.stopColor = parent.stopColor;
    else if (prop == "stop-opacity") s.stopOpacity = parent.stopOpacity;
    else if (prop == "overflow") s.overflow = parent.overflow;
    return;
  }
  if (prop == "fill" || prop == "stroke") {
    if (!isValidPaint(value)) return;
    (prop == "fill" ? s.fill : s.stroke) = value;
  } else if (prop == "fill-opacity" || prop == "stroke-opacity" || prop == "opacity" || prop == "stop-opacity") {
    auto v = opacityValue(value);
    if (!v) return;
    if (prop == "fill-opacity") s.fillOpacity = *v;
    else if (prop == "stroke-opacity") s.strokeOpacity = *v;
    else if (prop == "opacity") s.opacity = *v;
    else s.stopOpacity = *v;
  } else if (prop == "fill-rule" || prop == "clip-rule") {
    if (lv != "nonzero" && lv != "evenodd") return;
    (prop == "fill-rule" ? s.fillRule : s.clipRule) = lv;
  } else if (prop == "stroke-width") {
    auto v = parseLength(value, ctx, LengthAxis::Other);
    if (v && *v >= 0) s.strokeWidth = *v;
  } else if (prop == "stroke-linejoin") {
    if (lv == "miter" || lv == "round" || lv == "bevel" || lv == "miter-clip" || lv == "arcs") s.lineJoin = lv;
  } else if (prop == "stroke-linecap") {
    if (lv == "butt" || lv == "round" || lv == "square") s.lineCap = lv;
  } else if (prop == "stroke-miterlimit") {
    auto v = parseNumber(value);
    if (v && *v >= 1) s.miterLimit = *v;
  } else if (prop == "stroke-dasharray") {
    auto v = dashes(value, ctx);
    if (v) s.dashArray = *v;
  } else if (prop == "stroke-dashoffset") {
    auto v = parseLength(value, ctx, LengthAxis::Other);
    if (v) s.dashOffset = *v;
  } else if (prop == "visibility") {
    if (lv == "visible" || lv == "hidden" || lv == "collapse") s.visibility = lv;
  } else if (prop == "color") {
    if (lv == "currentcolor") return;  // the inherited colour stays
    if (parseCssColor(value)) s.color = value;
  } else if (prop == "font-size") {
    auto v = fontSizeValue(value, parent.fontSize, ctx);
    if (v) s.fontSize = *v;
  } else if (prop == "font-family") {
    s.fontFamily = value;
  } else if (prop == "text-anchor") {
    if (lv == "start" || lv == "middle" || lv == "end") s.textAnchor = lv;
  } else if (prop == "display") {
    s.display = lv;
  } else if (prop == "clip-path") {
    s.clipPath = value;
  } else if (prop == "mask") {
    s.mask = value;
  } else if (prop == "filter") {
    s.filter = value;
  } else if (prop == "marker-start") {
    s.marker[0] = value;
  } else if (prop == "marker-mid") {
    s.marker[1] = value;
  } else if (prop == "marker-end") {
    s.marker[2] = value;
  } else if (prop == "marker") {
    s.marker[0] = s.marker[1] = s.marker[2] = value;
  } else if (prop == "overflow") {
    if (lv == "visible" || lv == "hidden" || lv == "scroll" || lv == "auto" || lv == "clip") s.overflow = lv;
  } else if (prop == "stop-color") {
    if (lv == "currentcolor" || parseCssColor(value)) s.stopColor = value;
  } else if (prop == "font") {
    // Only the size and family of the shorthand matter here: "[style] [weight] size[/line] family".
    std::string_view rest = trim(value);
    while (!rest.empty()) {
      const std::size_t sp = rest.find(' ');
      const std::string_view word = rest.substr(0, sp);
      auto size = fontSizeValue(std::string(word.substr(0, word.find('/'))), parent.fontSize, ctx);
      if (size && std::isdigit(static_cast<unsigned char>(word[0]))) {
        s.fontSize = *size;
        if (sp != std::string_view::npos) s.fontFamily = std::string(trim(rest.substr(sp)));
        break;
      }
      rest = sp == std::string_view::npos ? std::string_view() : trim(rest.substr(sp));
    }
  }
}

}  // namespace

bool isValidPaint(const std::string& value) {
  const std::string lv = lower(trim(value));
  if (lv == "none" || lv == "currentcolor" || lv == "context-fill" || lv == "context-stroke") return true;
  if (lv.compare(0, 4, "url(") == 0) return lv.find(')') != std::string::npos;
  return parseCssColor(value).has_value();
}

ComputedStyle computeStyle(const ComputedStyle& parent, const pugi::xml_node& element, const StyleSheet& sheet,
                           LengthContext lengths) {
  ComputedStyle s = parent;
  const ComputedStyle initial;
  s.opacity = initial.opacity;
  s.display = initial.display;
  s.clipPath = initial.clipPath;
  s.mask = initial.mask;
  s.filter = initial.filter;
  for (int i = 0; i < 3; ++i) s.marker[i] = initial.marker[i];
  s.overflow = initial.overflow;
  s.stopColor = initial.stopColor;
  s.stopOpacity = initial.stopOpacity;

  // Later entries win.
  std::vector<std::pair<std::string, std::string>> cascade;
  for (const pugi::xml_attribute& a : element.attributes()) {
    if (isProperty(a.name()) && std::strcmp(a.name(), "font") != 0) cascade.emplace_back(a.name(), a.value());
  }
  std::vector<const Declaration*> important;
  if (!sheet.empty()) {
    for (const Declaration* d : sheet.matching(element)) {
      if (d->important) important.push_back(d);
      else cascade.emplace_back(d->property, d->value);
    }
  }
  const std::vector<Declaration> inline_ = parseDeclarations(element.attribute("style").value());
  for (const Declaration& d : inline_) {
    if (!d.important) cascade.emplace_back(d.property, d.value);
  }
  for (const Declaration* d : important) cascade.emplace_back(d->property, d->value);
  for (const Declaration& d : inline_) {
    if (d.important) cascade.emplace_back(d.property, d.value);
  }

  lengths.fontSize = parent.fontSize;
  // The font size first: em lengths of the other properties depend on it.
  for (const auto& [prop, value] : cascade) {
    if (prop == "font-size" || prop == "font") apply(s, parent, prop, value, lengths);
  }
  lengths.fontSize = s.fontSize;
  for (const auto& [prop, value] : cascade) {
    if (prop != "font-size" && prop != "font") apply(s, parent, prop, value, lengths);
  }
  return s;
}

}  // namespace refhost::io::svg
