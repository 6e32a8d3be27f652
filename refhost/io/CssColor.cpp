#include "refhost/io/CssColor.h"

#include "refhost/io/SvgNumbers.h"

#include <algorithm>
#include <cctype>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <string>
#include <vector>

namespace refhost::io::svg {

namespace {

struct NamedColor {
  const char* name;
  std::uint32_t rgb;
};

// The CSS named colours, sorted by name for binary search.
const NamedColor kNamed[] = {
    {"aliceblue", 0xf0f8ff},
    {"antiquewhite", 0xfaebd7},
    {"aqua", 0x00ffff},
    {"aquamarine", 0x7fffd4},
    {"azure", 0xf0ffff},
    {"beige", 0xf5f5dc},
    {"bisque", 0xffe4c4},
    {"black", 0x000000},
    {"blanchedalmond", 0xffebcd},
    {"blue", 0x0000ff},
    {"blueviolet", 0x8a2be2},
    {"brown", 0xa52a2a},
    {"burlywood", 0xdeb887},
    {"cadetblue", 0x5f9ea0},
    {"chartreuse", 0x7fff00},
    {"chocolate", 0xd2691e},
    {"coral", 0xff7f50},
    {"cornflowerblue", 0x6495ed},
    {"cornsilk", 0xfff8dc},
    {"crimson", 0xdc143c},
    {"cyan", 0x00ffff},
    {"darkblue", 0x00008b},
    {"darkcyan", 0x008b8b},
    {"darkgoldenrod", 0xb8860b},
    {"darkgray", 0xa9a9a9},
    {"darkgreen", 0x006400},
    {"darkgrey", 0xa9a9a9},
    {"darkkhaki", 0xbdb76b},
    {"darkmagenta", 0x8b008b},
    {"darkolivegreen", 0x556b2f},
    {"darkorange", 0xff8c00},
    {"darkorchid", 0x9932cc},
    {"darkred", 0x8b0000},
    {"darksalmon", 0xe9967a},
    {"darkseagreen", 0x8fbc8f},
    {"darkslateblue", 0x483d8b},
    {"darkslategray", 0x2f4f4f},
    {"darkslategrey", 0x2f4f4f},
    {"darkturquoise", 0x00ced1},
    {"darkviolet", 0x9400d3},
    {"deeppink", 0xff1493},
    {"deepskyblue", 0x00bfff},
    {"dimgray", 0x696969},
    {"dimgrey", 0x696969},
    {"dodgerblue", 0x1e90ff},
    {"firebrick", 0xb22222},
    {"floralwhite", 0xfffaf0},
    {"forestgreen", 0x228b22},
    {"fuchsia", 0xff00ff},
    {"gainsboro", 0xdcdcdc},
    {"ghostwhite", 0xf8f8ff},
    {"gold", 0xffd700},
    {"goldenrod", 0xdaa520},
    {"gray", 0x808080},
    {"green", 0x008000},
    {"greenyellow", 0xadff2f},
    {"grey", 0x808080},
    {"honeydew", 0xf0fff0},
    {"hotpink", 0xff69b4},
    {"indianred", 0xcd5c5c},
    {"indigo", 0x4b0082},
    {"ivory", 0xfffff0},
    {"khaki", 0xf0e68c},
    {"lavender", 0xe6e6fa},
    {"lavenderblush", 0xfff0f5},
    {"lawngreen", 0x7cfc00},
    {"lemonchiffon", 0xfffacd},
    {"lightblue", 0xadd8e6},
    {"lightcoral", 0xf08080},
    {"lightcyan", 0xe0ffff},
    {"lightgoldenrodyellow", 0xfafad2},
    {"lightgray", 0xd3d3d3},
    {"lightgreen", 0x90ee90},
    {"lightgrey", 0xd3d3d3},
    {"lightpink", 0xffb6c1},
    {"lightsalmon", 0xffa07a},
    {"lightseagreen", 0x20b2aa},
    {"lightskyblue", 0x87cefa},
    {"lightslategray", 0x778899},
    {"lightslategrey", 0x778899},
    {"lightsteelblue", 0xb0c4de},
    {"lightyellow", 0xffffe0},
    {"lime", 0x00ff00},
    {"limegreen", 0x32cd32},
    {"linen", 0xfaf0e6},
    {"magenta", 0xff00ff},
    {"maroon", 0x800000},
    {"mediumaquamarine", 0x66cdaa},
    {"mediumblue", 0x0000cd},
    {"mediumorchid", 0xba55d3},
    {"mediumpurple", 0x9370db},
    {"mediumseagreen", 0x3cb371},
    {"mediumslateblue", 0x7b68ee},
    {"mediumspringgreen", 0x00fa9a},
    {"mediumturquoise", 0x48d1cc},
    {"mediumvioletred", 0xc71585},
    {"midnightblue", 0x191970},
    {"mintcream", 0xf5fffa},
    {"mistyrose", 0xffe4e1},
    {"moccasin", 0xffe4b5},
    {"navajowhite", 0xffdead},
    {"navy", 0x000080},
    {"oldlace", 0xfdf5e6},
    {"olive", 0x808000},
    {"olivedrab", 0x6b8e23},
    {"orange", 0xffa500},
    {"orangered", 0xff4500},
    {"orchid", 0xda70d6},
    {"palegoldenrod", 0xeee8aa},
    {"palegreen", 0x98fb98},
    {"paleturquoise", 0xafeeee},
    {"palevioletred", 0xdb7093},
    {"papayawhip", 0xffefd5},
    {"peachpuff", 0xffdab9},
    {"peru", 0xcd853f},
    {"pink", 0xffc0cb},
    {"plum", 0xdda0dd},
    {"powderblue", 0xb0e0e6},
    {"purple", 0x800080},
    {"rebeccapurple", 0x663399},
    {"red", 0xff0000},
    {"rosybrown", 0xbc8f8f},
    {"royalblue", 0x4169e1},
    {"saddlebrown", 0x8b4513},
    {"salmon", 0xfa8072},
    {"sandybrown", 0xf4a460},
    {"seagreen", 0x2e8b57},
    {"seashell", 0xfff5ee},
    {"sienna", 0xa0522d},
    {"silver", 0xc0c0c0},
    {"skyblue", 0x87ceeb},
    {"slateblue", 0x6a5acd},
    {"slategray", 0x708090},
    {"slategrey", 0x708090},
    {"snow", 0xfffafa},
    {"springgreen", 0x00ff7f},
    {"steelblue", 0x4682b4},
    {"tan", 0xd2b48c},
    {"teal", 0x008080},
    {"thistle", 0xd8bfd8},
    {"tomato", 0xff6347},
    {"turquoise", 0x40e0d0},
    {"violet", 0xee82ee},
    {"wheat", 0xf5deb3},
    {"white", 0xffffff},
    {"whitesmoke", 0xf5f5f5},
    {"yellow", 0xffff00},
    {"yellowgreen", 0x9acd32}};

int hexDigit(char c) {
  if (c >= '0' && c <= '9') return c - '0';
  if (c >= 'a' && c <= 'f') return c - 'a' + 10;
  if (c >= 'A' && c <= 'F') return c - 'A' + 10;
  return -1;
}

std::optional<Rgba> parseHex(std::string_view h) {
  std::vector<int> d;
  for (char c : h) {
    const int v = hexDigit(c);
    if (v < 0) return std::nullopt;
    d.push_back(v);
  }
  Rgba c;
  if (d.size() == 3 || d.size() == 4) {
    c.r = (d[0] * 17) / 255.0;
    c.g = (d[1] * 17) / 255.0;
    c.b = (d[2] * 17) / 255.0;
    if (d.size() == 4) c.a = (d[3] * 17) / 255.0;
    return c;
  }
  if (d.size() == 6 || d.size() == 8) {
    c.r = (d[0] * 16 + d[1]) / 255.0;
    c.g = (d[2] * 16 + d[3]) / 255.0;
    c.b = (d[4] * 16 + d[5]) / 255.0;
    if (d.size() == 8) c.a = (d[6] * 16 + d[7]) / 255.0;
    return c;
  }
  return std::nullopt;
}

// Arguments of a colour function: numbers with an optional '%' or angle unit, separated by commas
// or spaces, with an optional "/ alpha".
struct Arg {
  double value;
  std::string unit;
};

std::optional<std::vector<Arg>> functionArgs(std::string_view inner, bool& commas) {
  std::vector<Arg> args;
  NumberScanner scan(inner);
  commas = false;
  while (!scan.atEnd()) {
    if (scan.peek() == ',' || scan.peek() == '/') {
      commas = commas || scan.peek() == ',';
      scan.advance();
      continue;
    }
    auto v = scan.number();
    if (!v) return std::nullopt;
    std::string unit;
    while (std::isalpha(static_cast<unsigned char>(scan.peek())) || scan.peek() == '%') {
      unit += static_cast<char>(std::tolower(static_cast<unsigned char>(scan.peek())));
      scan.advance();
    }
    args.push_back(Arg{*v, unit});
  }
  return args;
}

double clamp01(double v) { return std::min(1.0, std::max(0.0, v)); }

std::optional<double> alphaOf(const Arg& a) {
  if (a.unit == "%") return clamp01(a.value / 100.0);
  if (a.unit.empty()) return clamp01(a.value);
  return std::nullopt;
}

double hueToRgb(double p, double q, double t) {
  if (t < 0) t += 1;
  if (t > 1) t -= 1;
  if (t < 1.0 / 6) return p + (q - p) * 6 * t;
  if (t < 1.0 / 2) return q;
  if (t < 2.0 / 3) return p + (q - p) * (2.0 / 3 - t) * 6;
  return p;
}

}  // namespace

std::optional<Rgba> parseCssColor(std::string_view text) {
  const std::string s = lower(trim(text));
  if (s.empty()) return std::nullopt;
  if (s[0] == '#') return parseHex(std::string_view(s).substr(1));
  if (s == "transparent") return Rgba{0, 0, 0, 0};
  const std::size_t open = s.find('(');
  if (open == std::string::npos) {
    auto it = std::lower_bound(std::begin(kNamed), std::end(kNamed), s,
                               [](const NamedColor& n, const std::string& key) { return std::strcmp(n.name, key.c_str()) < 0; });
    if (it == std::end(kNamed) || s != it->name) return std::nullopt;
    return Rgba{((it->rgb >> 16) & 0xFF) / 255.0, ((it->rgb >> 8) & 0xFF) / 255.0, (it->rgb & 0xFF) / 255.0, 1.0};
  }
  if (s.back() != ')') return std::nullopt;
  const std::string fn(trim(std::string_view(s).substr(0, open)));
  bool commas = false;
  auto args = functionArgs(std::string_view(s).substr(open + 1, s.size() - open - 2), commas);
  if (!args || (args->size() != 3 && args->size() != 4)) return std::nullopt;
  Rgba c;
  if (args->size() == 4) {
    auto a = alphaOf((*args)[3]);
    if (!a) return std::nullopt;
    c.a = *a;
  }
  if (fn == "rgb" || fn == "rgba") {
    // The comma-separated form takes three numbers or three percentages, never a mix.
    if (commas && (((*args)[0].unit == "%") != ((*args)[1].unit == "%") ||
                   ((*args)[0].unit == "%") != ((*args)[2].unit == "%"))) {
      return std::nullopt;
    }
    double* channels[3] = {&c.r, &c.g, &c.b};
    for (int i = 0; i < 3; ++i) {
      const Arg& a = (*args)[static_cast<std::size_t>(i)];
      if (a.unit == "%") *channels[i] = clamp01(a.value / 100.0);
      else if (a.unit.empty()) *channels[i] = clamp01(a.value / 255.0);
      else return std::nullopt;
    }
    return c;
  }
  if (fn == "hsl" || fn == "hsla") {
    const Arg& hArg = (*args)[0];
    double h = hArg.value;
    if (hArg.unit == "rad") h = h * 180.0 / M_PI;
    else if (hArg.unit == "grad") h = h * 0.9;
    else if (hArg.unit == "turn") h = h * 360.0;
    else if (!hArg.unit.empty() && hArg.unit != "deg") return std::nullopt;
    if ((*args)[1].unit != "%" || (*args)[2].unit != "%") return std::nullopt;
    h = std::fmod(h, 360.0);
    if (h < 0) h += 360.0;
    h /= 360.0;
    const double sat = clamp01((*args)[1].value / 100.0);
    const double light = clamp01((*args)[2].value / 100.0);
    if (sat == 0) {
      c.r = c.g = c.b = light;
      return c;
    }
    const double q = light < 0.5 ? light * (1 + sat) : light + sat - light * sat;
    const double p = 2 * light - q;
    c.r = hueToRgb(p, q, h + 1.0 / 3);
    c.g = hueToRgb(p, q, h);
    c.b = hueToRgb(p, q, h - 1.0 / 3);
    return c;
  }
  return std::nullopt;
}

}  // namespace refhost::io::svg
