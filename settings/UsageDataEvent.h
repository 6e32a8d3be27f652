#pragma once
#include "settings/RasterizeSettings.h"

namespace dw {

constexpr const char kDocumentSettingsUsageEvent[] = "Document Raster Effects Settings";

// Reports the document raster effects settings a dialog closed with, when the optional usage-data
// suite is held and the host collects the event. Usage data never fails an operation: the host's
// answers are not consulted, and a number the host cannot format is sent empty.
void sendDocumentSettingsUsage(const RasterizeSettings& record);

}  // namespace dw
