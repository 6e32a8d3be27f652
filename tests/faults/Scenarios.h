#pragma once
// The operations of the fault matrix, each over a small document whose clean run is quick.
#include <string>
#include <vector>

#include "tests/faults/FaultDriver.h"

namespace faults {

// The menu command, the document settings command and action playback.
std::vector<Scenario> commandScenarios();
// Go Live, the exported suite's whole-document and resampling entries, start-up and shut-down.
std::vector<Scenario> serviceScenarios();

std::vector<Scenario> allScenarios();

}  // namespace faults
