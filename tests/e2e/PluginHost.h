#pragma once
// The real Rasterize plug-in started in a reference host over an empty document, driven through
// "DW Rasterize Suite" as another plug-in would drive it.
#include <cstdint>
#include <string>
#include <vector>

#include "host/all_suites.h"
#include "refhost/document/Document.h"
#include "refhost/loader/Host.h"
#include "refhost/loader/HostErrors.h"

namespace e2e {

using namespace refhost;

inline const std::string kPluginPath = DW_PLUGIN_PATH;
inline const std::string kToolPath = DW_TOOL_PATH;

constexpr DWErr kUserCancelled = hostCode("STOP");

// An axis-aligned rectangle in points, y up.
struct Box {
  double left, bottom, right, top;
};

// A settings record at 72 ppi (one point is one pixel) with no option bits and no spot handling.
RasterizeSettings settingsFor(int32_t type, int16_t antialiasing);

class PluginHost {
 public:
  PluginHost();
  ~PluginHost();
  PluginHost(const PluginHost&) = delete;
  PluginHost& operator=(const PluginHost&) = delete;

  // A rectangle filled with `paint` on top of the current layer.
  Art* add(const Box& box, const Paint& paint);
  // A set holding `art` in this order, made through "DW Art Set Suite".
  DWArtSetHandle artSet(const std::vector<Art*>& art);

  struct Result {
    DWErr code = 0;
    Art* raster = nullptr;
  };
  // Slot 3 of the exported suite over `bounds` (left, top, right, bottom), on top of the current layer.
  Result rasterize(DWArtSetHandle set, RasterizeSettings settings, const Rect& bounds,
                   DWRasterizeProgressProc progress = nullptr);

  // Every live raster art of the document.
  std::vector<Art*> rasters() const;

  Host host;
  Plugin* plugin = nullptr;
  Document* doc = nullptr;

 private:
  const DWRasterizeSuite* rasterize_ = nullptr;
  const DWArtSetSuite* artSets_ = nullptr;
  std::vector<DWArtSetHandle> sets_;
};

// Byte `channel` of pixel (x, y); for 1-bit rasters the pixel's bit (0 or 1).
int pixelByte(const RasterData& raster, int32_t x, int32_t y, int32_t channel);

}  // namespace e2e
