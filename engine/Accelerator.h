#pragma once
#include "host/suites/hv_extension_suite.h"

namespace dw {

// Whether the host's accelerated pixel routines ("DW HVExtension Suite") are to be used. The suite
// is acquired on first use and kept; the answer is fixed by the first call in the process, which
// every rasterization makes on its calling thread before any worker starts.
bool acceleratorEnabled();

// The accelerator suite when acceleratorEnabled() answered true, otherwise null.
const DWHVExtensionSuite* accelerator();

namespace engine_testing {
// Forgets the cached answer and the held suite pointer (unit tests switch hosts within one process).
void resetAcceleratorCache();
}  // namespace engine_testing

}  // namespace dw
