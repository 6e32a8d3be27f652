#pragma once
#include "host/types.h"

namespace client {

// The client's menu command: every function of "DW Rasterize Suite" once, on the current
// document, each result reported by Report.h. Answers 0 when the suite could be called at all
// (the functions' own failures are part of the report), kSuiteMissing otherwise.
DWErr RunRasterizeSuiteDemo();

}  // namespace client
