#pragma once
// The real Rasterize plug-in started in a reference host over a one-layer document, for its live
// effect and its actions as the host delivers them.
#include <functional>
#include <string>
#include <vector>

#include "refhost/document/Document.h"
#include "refhost/loader/Host.h"
#include "refhost/loader/HostErrors.h"
#include "refhost/suites/LiveEffectMessages.h"

namespace e2e_effect {

using namespace refhost;

inline const std::string kPluginPath = DW_PLUGIN_PATH;
inline const std::string kToolPath = DW_TOOL_PATH;

// The entries of an effect's parameter dictionary.
struct Parameters {
  int32_t colr = 4;
  int32_t dpi = 72;
  bool alis = false;
  bool mask = false;
  double padd = 0.0;
};
DictionaryPtr dictionary(const Parameters& p);

class EffectHost {
 public:
  // `withheld`: a suite the host does not offer (taken away before the plug-in starts).
  explicit EffectHost(ColorMode mode = ColorMode::Rgb, const std::string& withheld = {});
  ~EffectHost();
  EffectHost(const EffectHost&) = delete;
  EffectHost& operator=(const EffectHost&) = delete;

  // A filled rectangle (points, y up) on top of the current layer.
  Art* rect(double left, double bottom, double right, double top, const Paint& fill = Paint::gray(1.0));
  // The Rasterize effect with these parameters added to the art's style.
  void attach(Art* art, const DictionaryPtr& parameters);
  const LiveEffectRecord& effect();

  // Rasterizes `art` through "DW Rasterize Suite" over `bounds` as another plug-in would: the host
  // draws it, effects included. Returns the raster, or null on failure.
  Art* rasterize(Art* art, const RasterizeSettings& settings, const Rect& bounds);

  // Chooses a menu item of the plug-in with the dialog answered by `answer` (0 confirms).
  DWErr choose(const std::string& item, const std::function<int32_t(RasterizeSettings&)>& answer);
  // Selects `art` as a whole.
  void select(const std::vector<Art*>& art);

  std::vector<Art*> live(ArtKind kind) const;

  Host host;
  Plugin* plugin = nullptr;
  Document* doc = nullptr;
};

constexpr const char kRasterizeItem[] = "Rasterize 8 menu item";
constexpr const char kSettingsItem[] = "Live Rasterize Effect Setting";

// Byte `channel` of pixel (x, y) of a raster.
int pixel(const RasterData& raster, int32_t x, int32_t y, int32_t channel);

}  // namespace e2e_effect
