#pragma once
#include <cstdint>

// Names under which the settings are kept in the document and the application preferences.
namespace dw {
namespace keys {

// Entries of a parameter dictionary (the live effect's, and the document's settings entry).
constexpr const char Type[] = "colr";
constexpr const char Resolution[] = "dpi.";
constexpr const char AntiAlias[] = "alis";
constexpr const char Mask[] = "mask";
constexpr const char Padding[] = "padd";
constexpr const char Options[] = "optn";
constexpr const char Spot[] = "spot";

// The document's raster effects settings: a dictionary under this name in the document's dictionary.
constexpr const char DocumentSettingsEntry[] = "DW Auto Rasterize";

// Application preferences that a document without settings starts from.
constexpr const char PreferencePrefix[] = "Rasterize/Defaults";
constexpr const char PrefType[] = "Type";
constexpr const char PrefResolution[] = "DPI";
constexpr const char PrefAntiAlias[] = "Alias";
constexpr const char PrefSpot[] = "Spot";
constexpr const char PrefMask[] = "Mask";
constexpr const char PrefPadding[] = "Padding";

}  // namespace keys

// Defaults of a document that has neither settings nor preferences.
constexpr int32_t kDefaultDocumentResolution = 72;
constexpr double kDefaultDocumentPadding = 36.0;
// Documents at this format level or newer keep spot colours by default.
constexpr int32_t kSpotDefaultLevel = 12;

// The on/off form of anti-aliasing reads back as this factor.
constexpr int16_t kAntiAliasOn = 4;

}  // namespace dw
