#include "refhost/cli/ColorModeChange.h"

#include <map>
#include <memory>
#include <set>

#include "refhost/cli/Tool.h"
#include "refhost/loader/Host.h"
#include "refhost/render/ColorConversion.h"
#include "refhost/suites/LiveEffectMessages.h"

namespace refhost {
namespace cli {

namespace {

int32_t targetCode(ColorMode mode) {
  switch (mode) {
    case ColorMode::Gray: return kConvertToGray;
    case ColorMode::Cmyk: return kConvertToCmyk;
    case ColorMode::Rgb: return kConvertToRgb;
  }
  return kConvertToRgb;
}

// Every art of the document, symbol definitions and plug-in group results included.
std::vector<Art*> everyArt(const Document& document) {
  std::vector<Art*> all;
  const auto add = [&all](Art* art) { all.push_back(art); };
  document.forEachArt(add);
  for (Symbol* symbol : document.symbols())
    if (symbol->isAlive() && symbol->definition()) Document::forEachArtIn(symbol->definition(), add);
  std::vector<Art*> results;
  for (Art* art : all)
    if (const PluginGroupData* group = art->pluginGroup(); group && group->resultArt)
      Document::forEachArtIn(group->resultArt, [&results](Art* inside) { results.push_back(inside); });
  all.insert(all.end(), results.begin(), results.end());
  return all;
}

class PaintConverter {
 public:
  explicit PaintConverter(ColorMode mode) : mode_(mode) {}

  // True when the paint changed.
  bool convert(Paint& paint) {
    if (paint.type == Paint::Type::Gradient && paint.gradient) {
      auto& converted = gradients_[paint.gradient.get()];
      if (!converted) {
        auto copy = std::make_shared<Gradient>(*paint.gradient);
        bool changed = false;
        for (GradientStop& stop : copy->stops) changed = convertColor(stop.color) || changed;
        converted = changed ? std::shared_ptr<const Gradient>(copy) : paint.gradient;
      }
      if (converted == paint.gradient) return false;
      paint.gradient = converted;
      ++count;
      return true;
    }
    return convertColor(paint);
  }

  bool convert(PathStyle& style) {
    bool changed = false;
    if (style.fillPaint) changed = convert(style.fill) || changed;
    if (style.strokePaint) changed = convert(style.stroke) || changed;
    return changed;
  }

  std::size_t count = 0;

 private:
  bool convertColor(Paint& paint) {
    using namespace render;
    const double* v = paint.v;
    Paint out = paint;
    if (mode_ == ColorMode::Gray && paint.type == Paint::Type::Rgb) out = Paint::gray(rgbToGray({v[0], v[1], v[2]}));
    if (mode_ == ColorMode::Gray && paint.type == Paint::Type::Cmyk) out = Paint::gray(cmykToGray({v[0], v[1], v[2], v[3]}));
    if (mode_ == ColorMode::Rgb && paint.type == Paint::Type::Cmyk) {
      const Rgb rgb = cmykToRgb({v[0], v[1], v[2], v[3]});
      out = Paint::rgb(rgb.r, rgb.g, rgb.b);
    }
    if (mode_ == ColorMode::Cmyk && paint.type == Paint::Type::Rgb) {
      const Cmyk cmyk = rgbToCmyk({v[0], v[1], v[2]});
      out = Paint::cmyk(cmyk.c, cmyk.m, cmyk.y, cmyk.k);
    }
    if (out.type == paint.type) return false;
    paint = out;
    ++count;
    return true;
  }

  ColorMode mode_;
  std::map<const Gradient*, std::shared_ptr<const Gradient>> gradients_;
};

}  // namespace

ColorModeChange changeColorMode(Host& host, Document& document, ColorMode mode) {
  ColorModeChange change;
  const std::vector<Art*> arts = everyArt(document);

  std::set<const Dictionary*> told;
  for (Art* art : arts) {
    if (!art->artStyle()) continue;
    for (const LiveEffect& effect : art->artStyle()->effects) {
      const LiveEffectRecord* record = findLiveEffect(host, effect.name);
      if (!record || !effect.parameters || !told.insert(effect.parameters.get()).second) continue;
      int32_t code = targetCode(mode);
      const DWErr result = convertLiveEffectColorSpace(host, *record, effect.parameters, &code);
      if (result != kDWNoErr)
        throw ToolError("converting the parameters of the effect \"" + effect.name + "\" failed: " + describeCode(result));
      ++change.effects;
      if (code == kConversionHandled) ++change.converted;
    }
  }

  // Styles are shared and immutable: each converted one is replaced once, everywhere it is used.
  PaintConverter converter(mode);
  std::map<const ArtStyle*, ArtStylePtr> styles;
  for (Art* art : arts) {
    converter.convert(art->pathStyle());
    if (MeshData* mesh = art->mesh())
      for (Paint& patch : mesh->patchColors) converter.convert(patch);
    if (const ArtStylePtr& style = art->artStyle(); style && style->hasPaint) {
      ArtStylePtr& replacement = styles[style.get()];
      if (!replacement) {
        auto copy = std::make_shared<ArtStyle>(*style);
        replacement = converter.convert(copy->paint) ? ArtStylePtr(copy) : style;
      }
      art->setArtStyle(replacement);
    }
  }
  change.paints = converter.count;
  document.setColorMode(mode);
  return change;
}

}  // namespace cli
}  // namespace refhost
