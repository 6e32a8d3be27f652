#pragma once
#include <cstdint>

#include "host/types.h"
#include "settings/RasterizeSettings.h"

// The live effect's parameter dictionary ("colr", "dpi.", "alis", "mask", "padd", "optn", "spot")
// and the rules by which the effect's handlers read and write it. The handlers own the messages,
// the dialog and the host notifications; these functions own the keys and conversions.
namespace dw {

// Edit Parameters, before the dialog: lastEdited with the dictionary's values when it holds a
// "colr" (a key the host cannot give keeps the field; a missing "optn" gives options 0), adjusted
// to the document's colour mode, with forEffect 1.
RasterizeSettings effectEditRecord(DWDictionaryRef parameters, const RasterizeSettings& lastEdited);

// Edit Parameters, after a confirmed dialog: writes "colr", "dpi.", "alis" (on when antialiasing
// >= 2), "mask", "padd" and "optn"; "spot" is not written. Answers the first failing write's code.
DWErr writeEffectEditParameters(DWDictionaryRef parameters, const RasterizeSettings& record);

// Go Live: the effect's base record overlaid with the document settings, then with the
// dictionary's "colr", "dpi.", "alis", "mask" and "padd" (missing keys keep the document's value;
// "spot" always follows the document), options from "optn" plus AllowSpotRaster and
// AllowNChannelRaster, and the type adjusted to the document's colour mode.
RasterizeSettings effectRunSettings(DWDictionaryRef parameters);

// Get Conversion Parameters: brings the dictionary in line with the document settings key by key,
// writing only what differs. A missing "spot" is always written, so the dictionary then carries the
// document's choice. Answers the first failing write's code.
DWErr alignConversionParameters(DWDictionaryRef parameters);

// Interpolate Parameters: blends start (t = 1) and end (t = 0) into out. Missing keys read 0, a
// "colr" missing from end takes start's; with one dictionary absent both sides are the other.
// Discrete values come from end while t < 0.5. Writes "colr", "dpi.", "alis", "mask" and "padd"
// and answers the first failing write's code; without an output dictionary nothing is written.
DWErr interpolateEffectParameters(DWDictionaryRef start, DWDictionaryRef end, DWDictionaryRef out, double t);

// Convert Color Space: for targets 0 (gray), 1 (CMYK) and 5 (RGB), moves a stored "colr" of RGB or
// CMYK to the target's model. When it writes, conversion becomes kColorConversionDone after a
// successful write and the write's code is the answer; otherwise nothing changes and the answer is 0.
constexpr int32_t kColorConversionDone = 6;
DWErr convertEffectColorSpace(DWDictionaryRef parameters, int32_t& conversion);

}  // namespace dw
