#pragma once
#include <cstdint>

namespace dw {

// Pixels per inch of a rasterization: with UseEffectsResolution the document's raster effects
// resolution ("dpi." of the document's "DW Auto Rasterize" entry, else the "DPI" preference of
// "Rasterize/Defaults", else 72); otherwise the settings' resolution, 300 where it is 0.
double rasterResolution(uint32_t options, double resolution);

}  // namespace dw
