#include "refhost/cli/RasterizeFlags.h"

#include <CLI/CLI.hpp>

#include <cmath>
#include <cstdlib>

#include "refhost/cli/Tool.h"

namespace refhost {
namespace cli {

namespace {

struct Unit {
  const char* suffix;
  double points;
};

// SVG's px is 1/96 inch.
constexpr Unit kUnits[] = {{"pt", 1.0}, {"px", 0.75}, {"mm", 72.0 / 25.4}, {"in", 72.0}};

int32_t colorModel(const std::string& name) {
  if (name == "cmyk") return kRasterTypeCmyk;
  if (name == "gray") return kRasterTypeGrayscale;
  if (name == "bitmap") return kRasterTypeBitmap;
  return kRasterTypeRgb;
}

bool given(const CLI::Option* option) { return option && option->count() > 0; }

// CLI::PositiveNumber lets "nan" through and answers "inf" with its range's upper end in full.
const CLI::Validator kPositiveNumber(
    [](std::string& text) -> std::string {
      char* end = nullptr;
      const double value = std::strtod(text.c_str(), &end);
      if (end == text.c_str() || *end != '\0' || !std::isfinite(value) || value <= 0.0)
        return "\"" + text + "\" is not a positive number";
      return {};
    },
    "POSITIVE");

}  // namespace

RasterizeSettings commandDefaultSettings() {
  RasterizeSettings s{};
  s.type = kRasterTypeRgb;
  s.resolution = 300.0;
  s.antialiasing = 4;
  s.options = kRasterizeAllowSpotRaster | kRasterizeAllowNChannelRaster;
  s.preserveSpotColors = 1;
  return s;
}

double parseLength(const std::string& text, const std::string& what) {
  const char* begin = text.c_str();
  char* end = nullptr;
  const double value = std::strtod(begin, &end);
  const std::string unit(end ? end : "");
  double factor = end == begin ? 0.0 : unit.empty() ? 1.0 : 0.0;
  for (const Unit& u : kUnits)
    if (end != begin && unit == u.suffix) factor = u.points;
  if (factor == 0.0 || !std::isfinite(value))
    throw ToolError(what + " \"" + text + "\" is not a length (a number with pt, px, mm or in)");
  if (value < 0.0) throw ToolError(what + " \"" + text + "\" is negative");
  return value * factor;
}

void RasterizeFlags::addTo(CLI::App& verb, bool withMask) {
  resolution_ = verb.add_option("-r,--resolution", resolutionValue_, "Pixels per inch (default 300; 96 maps one SVG px to one pixel)")
                    ->type_name("PPI")
                    ->check(kPositiveNumber);
  colorOption_ = verb.add_option("--color", color_, "Colour model of the raster (default rgb)")
                     ->check(CLI::IsMember({"rgb", "cmyk", "gray", "bitmap"}));
  backgroundOption_ = verb.add_option("--background", background_, "White or transparent background (default white)")
                          ->check(CLI::IsMember({"white", "transparent"}));
  antialiasOption_ = verb.add_option("--antialias", antialias_,
                                     "Anti-aliasing: none, art (4x4 supersampling, the default) or type (drawn "
                                     "anti-aliased at the final resolution, for text)")
                         ->check(CLI::IsMember({"none", "art", "type"}));
  paddingOption_ = verb.add_option("--padding", padding_, "Space added on every side, e.g. 12pt, 16px, 3mm, 0.25in (default 0)")
                       ->type_name("LENGTH");
  spotOption_ = verb.add_flag("--spot,!--no-spot", spot_,
                              "Keep spot colours as spot channels (the default), or convert them to process colours");
  outlineTextOption_ = verb.add_flag("--outline-text", "Draw text as outlines");
  if (withMask) maskOption_ = verb.add_flag("--mask", "Clip the raster with a mask made from the selected paths");
}

bool RasterizeFlags::resolutionGiven() const { return given(resolution_); }

RasterizeSettings RasterizeFlags::apply(RasterizeSettings base) const {
  RasterizeSettings s = base;
  if (given(resolution_)) {
    s.resolution = resolutionValue_;
    s.options &= ~uint32_t(kRasterizeUseEffectsResolution);
  }
  // Stored records carry types 0..7: the colour model is the low two bits, 4 the transparent background.
  const bool stored = s.type >= 0 && s.type <= 7;
  int32_t model = stored ? s.type & 3 : kRasterTypeRgb;
  bool transparent = stored && s.type >= 4;
  if (given(colorOption_)) model = colorModel(color_);
  if (given(backgroundOption_)) transparent = background_ == "transparent";
  if (given(colorOption_) || given(backgroundOption_)) s.type = model + (transparent ? 4 : 0);
  if (given(antialiasOption_)) {
    s.antialiasing = antialias_ == "none" ? 0 : 4;
    if (antialias_ == "type")
      s.options |= kRasterizeTypeOptimized;
    else
      s.options &= ~uint32_t(kRasterizeTypeOptimized);
  }
  if (given(paddingOption_)) s.padding = parseLength(padding_, "--padding");
  if (given(spotOption_)) s.preserveSpotColors = spot_ ? 1 : 0;
  if (given(outlineTextOption_)) s.options |= kRasterizeOutlineText;
  if (given(maskOption_)) s.createClippingMask = 1;
  return s;
}

}  // namespace cli
}  // namespace refhost
