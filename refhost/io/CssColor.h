#pragma once

#include <optional>
#include <string_view>

namespace refhost::io::svg {

// An sRGB colour with alpha, every channel 0..1.
struct Rgba {
  double r = 0, g = 0, b = 0, a = 1;
};

// Parses a CSS colour: named colours, #rgb, #rgba, #rrggbb, #rrggbbaa, rgb()/rgba() with numbers or
// percentages (comma or space syntax, "/ alpha"), hsl()/hsla(), "transparent". Not "currentColor"
// (the caller resolves it against the element's colour). Nothing when malformed.
std::optional<Rgba> parseCssColor(std::string_view text);

}  // namespace refhost::io::svg
