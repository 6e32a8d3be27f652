#pragma once
#include <cstddef>
#include <cstdint>

#include "host/rasterize_settings.h"

namespace dw {

// Colour model and background of a raster. Stored forms carry 0..7; the engine may turn
// 0, 1, 4 or 5 into 8..11 for one operation.
enum class RasterType : int32_t {
  Rgb = 0,
  Cmyk = 1,
  Grayscale = 2,
  Bitmap = 3,
  RgbTransparent = 4,
  CmykTransparent = 5,
  GrayscaleTransparent = 6,
  BitmapTransparent = 7,
  Spot = 8,
  SpotTransparent = 9,
  NChannel = 10,
  NChannelTransparent = 11
};

namespace RasterizeOptions {
constexpr uint32_t DrawParentlessArt = kRasterizeDrawParentlessArt;
constexpr uint32_t BlackBackground = kRasterizeBlackBackground;
constexpr uint32_t NoPixelSnap = kRasterizeNoPixelSnap;
constexpr uint32_t OutlineText = kRasterizeOutlineText;
constexpr uint32_t TypeOptimized = kRasterizeTypeOptimized;
constexpr uint32_t UseEffectsResolution = kRasterizeUseEffectsResolution;
constexpr uint32_t DrawPortDevice = kRasterizeDrawPortDevice;
constexpr uint32_t AllowSpotRaster = kRasterizeAllowSpotRaster;
constexpr uint32_t AllowNChannelRaster = kRasterizeAllowNChannelRaster;
}  // namespace RasterizeOptions

// The host document's colour mode, as the host reports it.
enum class DocumentColorMode : int16_t { Gray = 0, Rgb = 1, Cmyk = 2 };

// RGB and CMYK types follow the document's colour mode; every other type passes unchanged.
constexpr int32_t followDocumentColorMode(int32_t mode, int32_t type) {
  const bool process = type == 0 || type == 1 || type == 4 || type == 5;
  if (!process) return type;
  const int32_t transparent = type >= 4 ? 4 : 0;
  switch (mode) {
    case 0: return 2 + transparent;
    case 1: return 0 + transparent;
    case 2: return 1 + transparent;
    default: return type;
  }
}

constexpr RasterType followDocumentColorMode(DocumentColorMode mode, RasterType type) {
  return RasterType(followDocumentColorMode(int32_t(mode), int32_t(type)));
}

// A stored colour code 0..7 is kept; anything else reads as Rgb.
constexpr int32_t clampStoredType(int32_t stored) { return stored >= 0 && stored <= 7 ? stored : 0; }

// The Rasterize command's settings when its menu item is installed. reserved and forEffect
// are not part of the defaults: reserved is left as the block held it, forEffect is set
// before each dialog.
constexpr RasterizeSettings makeCommandDefaults(int32_t reserved = 0, int32_t forEffect = 0) {
  RasterizeSettings s{};
  s.type = int32_t(RasterType::Rgb);
  s.resolution = 300.0;
  s.antialiasing = 4;
  s.options = RasterizeOptions::AllowSpotRaster | RasterizeOptions::AllowNChannelRaster;
  s.reserved = reserved;
  s.preserveSpotColors = 1;
  s.createClippingMask = 0;
  s.padding = 0.0;
  s.forEffect = forEffect;
  return s;
}

// The live effect's last-edited settings when the effect is registered.
constexpr RasterizeSettings makeEffectDefaults(int32_t forEffect = 1) {
  RasterizeSettings s{};
  s.type = int32_t(RasterType::RgbTransparent);
  s.resolution = 72.0;
  s.antialiasing = 0;
  s.options = 0;
  s.reserved = 0;
  s.preserveSpotColors = 1;
  s.createClippingMask = 0;
  s.padding = 36.0;
  s.forEffect = forEffect;
  return s;
}

// A record of the given base values, filled further from the document's raster effects settings.
constexpr RasterizeSettings makeDocumentSettingsBase() {
  RasterizeSettings s{};
  s.type = int32_t(RasterType::Grayscale);
  s.antialiasing = 1;
  s.resolution = 0.0;
  s.options = 0;
  s.reserved = 0;
  s.preserveSpotColors = 0;
  return s;
}

inline bool operator==(const RasterizeSettings& a, const RasterizeSettings& b) {
  return a.type == b.type && a.resolution == b.resolution && a.antialiasing == b.antialiasing &&
         a.options == b.options && a.reserved == b.reserved && a.preserveSpotColors == b.preserveSpotColors &&
         a.createClippingMask == b.createClippingMask && a.padding == b.padding && a.forEffect == b.forEffect;
}
inline bool operator!=(const RasterizeSettings& a, const RasterizeSettings& b) { return !(a == b); }

// Other plug-ins pass the record by pointer, so its layout is fixed on every ABI.
static_assert(sizeof(RasterizeSettings) == 56, "RasterizeSettings is 56 bytes");
static_assert(offsetof(RasterizeSettings, type) == 0, "type");
static_assert(offsetof(RasterizeSettings, resolution) == 8, "resolution");
static_assert(offsetof(RasterizeSettings, antialiasing) == 16, "antialiasing");
static_assert(offsetof(RasterizeSettings, options) == 20, "options");
static_assert(offsetof(RasterizeSettings, reserved) == 24, "reserved");
static_assert(offsetof(RasterizeSettings, preserveSpotColors) == 28, "preserveSpotColors");
static_assert(offsetof(RasterizeSettings, createClippingMask) == 32, "createClippingMask");
static_assert(offsetof(RasterizeSettings, padding) == 40, "padding");
static_assert(offsetof(RasterizeSettings, forEffect) == 48, "forEffect");

}  // namespace dw
