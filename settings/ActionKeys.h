#pragma once
#include <cstdint>

#include "shell/FourCharCode.h"

// Keys, types and events of the two recorded actions.
namespace dw {
namespace actions {

constexpr const char RasterizeEvent[] = "dw_plugin_rasterize";
constexpr const char DocumentSettingsEvent[] = "dw_plugin_rasterEffectSettings";
// The event values the host hands back at playback.
constexpr int32_t RasterizeEventValue = 1;
constexpr int32_t DocumentSettingsEventValue = 0;
// Dialog state with which both events are recorded (its meaning is the host's).
constexpr int32_t RecordDialogState = 3;

constexpr uint32_t KeyColorModel = fourCharCode("colr");
constexpr uint32_t KeyEffectsResolution = fourCharCode("dres");
constexpr uint32_t KeyResolution = fourCharCode("dpi.");
constexpr uint32_t KeyBackground = fourCharCode("bkgd");
constexpr uint32_t KeyTypeQuality = fourCharCode("type");
constexpr uint32_t KeyAntiAliasing = fourCharCode("ali+");
constexpr uint32_t KeyAntiAlias = fourCharCode("alis");
constexpr uint32_t KeyMask = fourCharCode("mask");
constexpr uint32_t KeyPreserveSpot = fourCharCode("pspt");
constexpr uint32_t KeyPadding = fourCharCode("padd");

// Parameter types of the event descriptions.
constexpr uint32_t TypeEnumerated = fourCharCode("enum");
constexpr uint32_t TypeInteger = fourCharCode("long");
constexpr uint32_t TypeString = fourCharCode("strn");
constexpr uint32_t TypeBoolean = fourCharCode("bool");
constexpr uint32_t TypeUnitReal = fourCharCode("utrl");

// The padding is recorded in pixels.
constexpr uint32_t UnitPixels = fourCharCode("#Pxl");

// Values of the enumerated keys.
constexpr int32_t BackgroundWhite = 0;
constexpr int32_t BackgroundTransparent = 1;
constexpr int32_t TypeStreamline = 0;
constexpr int32_t TypeOutline = 1;
constexpr int32_t AntiAliasNone = 0;
constexpr int32_t AntiAliasArtOptimized = 1;
constexpr int32_t AntiAliasTypeOptimized = 2;

static_assert(KeyColorModel == 0x636F6C72u, "colr");
static_assert(KeyPadding == 0x70616464u, "padd");
static_assert(UnitPixels == 0x2350786Cu, "#Pxl");

}  // namespace actions
}  // namespace dw
