#pragma once
// The flags that fill a rasterize options record, shared by every verb that rasterizes, so that
// `--color cmyk` means the same to `export`, `command`, `effect` and `settings`.
#include <string>

#include "host/rasterize_settings.h"

namespace CLI {
class App;
class Option;
}  // namespace CLI

namespace refhost {
namespace cli {

// The values the Rasterize command starts from: RGB on white, 300 ppi, anti-aliased for art, no
// padding, spot colours kept (as spot or process-plus-spot channels).
RasterizeSettings commandDefaultSettings();

// A length with an optional unit (pt, px, mm, in; a bare number is points) in points. Throws
// ToolError naming `what` for anything else, and for a negative or non-finite length.
double parseLength(const std::string& text, const std::string& what);

class RasterizeFlags {
 public:
  // Adds --resolution, --color, --background, --antialias, --padding, --spot/--no-spot,
  // --outline-text and, when `withMask`, --mask to the verb.
  void addTo(CLI::App& verb, bool withMask = true);

  // `base` with every flag the user gave applied; flags not given keep the base's values, so a
  // verb chooses its own starting record. --color keeps the base's background and --background
  // keeps the base's colour model. Throws ToolError for a bad --padding.
  RasterizeSettings apply(RasterizeSettings base) const;

  // --resolution, for verbs whose own options exclude it (export's --width and --height).
  CLI::Option* resolutionOption() const { return resolution_; }
  bool resolutionGiven() const;

 private:
  double resolutionValue_ = 0.0;
  std::string color_;
  std::string background_;
  std::string antialias_;
  std::string padding_;
  bool spot_ = true;
  // Set by addTo; an option's count() tells whether the user gave it.
  CLI::Option* resolution_ = nullptr;
  CLI::Option* colorOption_ = nullptr;
  CLI::Option* backgroundOption_ = nullptr;
  CLI::Option* antialiasOption_ = nullptr;
  CLI::Option* paddingOption_ = nullptr;
  CLI::Option* spotOption_ = nullptr;
  CLI::Option* outlineTextOption_ = nullptr;
  CLI::Option* maskOption_ = nullptr;
};

}  // namespace cli
}  // namespace refhost
