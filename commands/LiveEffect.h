#pragma once
#include "host/messages.h"
#include "settings/RasterizeSettings.h"

namespace dw {

// Identities of the live effect and of its menu entries.
constexpr const char kEffectName[] = "Corvel Rasterize";
constexpr const char kEffectMenuName[] = "Rasterize";
constexpr int32_t kEffectMajorVersion = 1;
constexpr int32_t kEffectMinorVersion = 0;
constexpr uint32_t kEffectInputOptions = 0x2FFFF;
constexpr uint32_t kEffectStyleOptions = 0x40002;
constexpr uint32_t kEffectMenuOptions = 0xF0000000;
constexpr const char kEffectsMiscGroup[] = "Effects Misc";
constexpr const char kSeparatorName[] = "-";
constexpr const char kSettingsMenuItem[] = "Live Rasterize Effect Setting";
constexpr const char kStyleConverterName[] = "DW Auto Rasterize";
constexpr uint32_t kStyleConverterKinds = 0xFFFF;
constexpr uint32_t kStyleConverterOptions = 0x100;
// Enabling rule of the settings item: the fifth mask of the host's rule.
constexpr uint32_t kSettingsItemEnableMask = 0x40;

// At start-up: the effect, its menu entries (interactive hosts only), effectDefaults and the
// style-converter name. The first failing step's code is returned.
DWErr RegisterRasterizeEffect(const MessageHeader& message);

// The five "DW Live Effect" selectors.
DWErr EditParameters(LiveEffectEditParamMessage& message);
DWErr GoLive(LiveEffectGoMessage& message);
DWErr InterpolateParameters(LiveEffectInterpParamMessage& message);
DWErr GetConversionParameters(LiveEffectGetConversionParamsMessage& message);
DWErr ConvertColorSpace(LiveEffectConvertColorMessage& message);

// Renders one object for Go Live: the raster (clipped by the object's shapes when the settings ask
// and the host can unite paths), grouped when the type keeps transparency. The source object is
// deleted once its raster exists. Art with empty bounds is its own result.
DWErr RasterizeLiveArt(const RasterizeSettings& settings, DWArtHandle art, DWArtHandle* result);

}  // namespace dw
