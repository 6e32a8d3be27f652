#pragma once

// Every localisable string of the plug-in: "$$$/" key path "=" default text. The host looks the
// key up and falls back to the text after the first "=". User-visible text is never built from pieces.
namespace dw {
namespace strings {

constexpr const char MenuItemName[] = "$$$/Rasterize/Str/MenuItemName=Rasteri&ze...";
constexpr const char Progress[] = "$$$/Rasterize/Str/Progress=Rasterizing Artwork...";
constexpr const char Undo[] = "$$$/Rasterize/Str/Undo=Undo Rasterize";
constexpr const char Redo[] = "$$$/Rasterize/Str/Redo=Redo Rasterize";
constexpr const char WarningInvalidArtInMask[] = "$$$/Rasterize/Str/stringWarningInvalidArtInMask=The selection contains Text objects, Symbols or Graphs, which will be rasterized but not added to the clipping mask.";
constexpr const char WarningRasterInMask[] = "$$$/Rasterize/Str/WarningRasterInMask=The selection contains raster objects, which will be re-rasterized but not added to the clipping mask.";
constexpr const char ErrorMemory[] = "$$$/Rasterize/Str/ErrorMemory=There was insufficient memory to rasterize the selected artwork.";
constexpr const char ErrorMemoryMask[] = "$$$/Rasterize/Str/ErrorMemoryMask=There was insufficient memory for Pathfinder to create the mask.";
constexpr const char ErrorUntouchable[] = "$$$/Rasterize/Str/ErrorUntouchable=The current layer is locked.";
constexpr const char ErrorSelection[] = "$$$/Rasterize/Str/ErrorSelection=You have attempted to rasterize an invalid selection.";
constexpr const char ErrorTooWide[] = "$$$/Rasterize/Str/ErrorTooWide=The combination of artwork size and resolution exceeds the maximum that can be rasterized.";
constexpr const char ErrorUnknown[] = "$$$/Rasterize/Str/ErrorUnknown=An error occurred and your command could not be processed.";
constexpr const char EffectMenuName[] = "$$$/Rasterize/Str/EffectMenuName=&Rasterize...";
constexpr const char AutoMenuName[] = "$$$/Rasterize/Str/AutoMenuName=Document Raster &Effects Settings...";
constexpr const char RasterizeTitle[] = "$$$/Rasterize/Str/11001=Rasterize";
constexpr const char DocumentSettingsTitle[] = "$$$/Rasterize/Str/11002=Document Raster Effects Settings";
constexpr const char ColorModelLabel[] = "$$$/Rasterize/Str/11003=Color Model: ";
constexpr const char ColorModelRgb[] = "$$$/Rasterize/Str/11004=RGB";
constexpr const char ColorModelCmyk[] = "$$$/Rasterize/Str/11005=CMYK";
constexpr const char ColorModelGrayscale[] = "$$$/Rasterize/Str/11006=Grayscale";
constexpr const char ColorModelBitmap[] = "$$$/Rasterize/Str/11007=Bitmap";
constexpr const char ResolutionLabel[] = "$$$/Rasterize/Str/11008=Resolution (ppi): ";
constexpr const char UseEffectsResolution[] = "$$$/Rasterize/Str/11009=Use Raster Effects Setting";
constexpr const char BackgroundLabel[] = "$$$/Rasterize/Str/11010=Background: ";
constexpr const char BackgroundWhite[] = "$$$/Rasterize/Str/11011=White";
constexpr const char BackgroundTransparent[] = "$$$/Rasterize/Str/11012=Transparent";
constexpr const char TypeQualityLabel[] = "$$$/Rasterize/Str/11013=Type Quality: ";
constexpr const char TypeStreamline[] = "$$$/Rasterize/Str/11014=Streamline";
constexpr const char TypeOutline[] = "$$$/Rasterize/Str/11015=Outline";
constexpr const char AntiAliasLabel[] = "$$$/Rasterize/Str/11016=Anti-alias: ";
constexpr const char AntiAliasingLabel[] = "$$$/Rasterize/Str/11017=Anti-aliasing: ";
constexpr const char AntiAliasNone[] = "$$$/Rasterize/Str/11018=None";
constexpr const char AntiAliasArtOptimized[] = "$$$/Rasterize/Str/11019=Art Optimized";
constexpr const char AntiAliasTypeOptimized[] = "$$$/Rasterize/Str/11020=Type Optimized";
constexpr const char ClippingMaskLabel[] = "$$$/Rasterize/Str/11021=Create Clipping Mask: ";
constexpr const char PaddingLabel[] = "$$$/Rasterize/Str/11022=Padding: ";
constexpr const char PreserveSpotLabel[] = "$$$/Rasterize/Str/11023=Preserve Spot Colors: ";
constexpr const char ConvertToProcessWarning[] = "$$$/Rasterize/Dlg/ConvertToProcessWarning=Draftwell can support a maximum of 27 spot colors in a raster. The result of this rasterization exceeds this limit and will be converted to process.";

}  // namespace strings
}  // namespace dw
