#pragma once
#include <cstdint>

#include "host/suites/rasterize_ui_suite.h"
#include "host/types.h"
#include "settings/RasterizeSettings.h"

namespace dw {

// Shows the host's options dialog (the "DW RasterizeUI Suite", acquired for this one dialog) on a
// copy of the record. 0 means confirmed: the record then holds the dialog's values. Any other
// value (cancelled, failed, or the host's refusal to give the suite) leaves the record untouched.
// A host without the suite answers 0 without showing anything, so the caller goes on with the
// record as it is. After a shown document-settings dialog (variant 0) the usage-data event is
// sent with the record as it now stands.
DWErr runRasterizeDialog(RasterizeSettings& record, int32_t variant);

}  // namespace dw
