#pragma once
#include "host/types.h"
#include "settings/RasterizeSettings.h"

namespace dw {

// The document's raster effects settings: its "DW Auto Rasterize" entry, with whatever it lacks
// taken from the "Rasterize/Defaults" preferences and then from built-in defaults. Fills type,
// resolution, antialiasing, preserveSpotColors, createClippingMask and padding; leaves options,
// reserved and forEffect. Never fails: a missing document, dictionary or entry falls back.
DWErr readDocumentRasterSettings(RasterizeSettings& record);

// makeDocumentSettingsBase() overlaid with readDocumentRasterSettings: the starting record of
// every short-lived operation on the document settings.
RasterizeSettings currentDocumentRasterSettings();

// Writes each field that differs from the current settings to the document's entry and then to
// the preferences, creating the entry on first use; records the settings event when the host is
// recording actions. A null record gives BadParameterError; the first failing write ends the
// procedure with its code, except a failing "Padding" preference, which only becomes the result.
// May throw dw::Error from the host's string service while recording.
DWErr writeDocumentRasterSettings(const RasterizeSettings* record);

}  // namespace dw
