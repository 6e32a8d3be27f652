#pragma once
#include <cstdint>

#include "host/types.h"

namespace dw {

// The host's developer log "DWPerformance.log", or null when the host keeps no such log (it then
// hands out its default log for the name). Looked up on the first call in the process and kept.
DWLogHandle performanceLog();

// Measures one rasterization with the host's clock.
struct StopWatch {
  DWTimeStamp start = 0;
  DWClockRef clock = nullptr;

  void restart();
  uint32_t elapsedMilliseconds() const;
};

// "%12s\t%s\t(%s)" with "", label, detail.
void writeLabelLine(const char* label, const char* detail);
// "%12u\t%s\t(%s)" with number, label, detail.
void writeNumberLine(const char* label, const char* detail, uint32_t number);

// Milliseconds spent in each stage of one rasterization's tile loop.
struct StageTimes {
  uint32_t rasterizeTile = 0;
  uint32_t downSample = 0;
  uint32_t updateRasterTile = 0;
};

// The log lines of one rasterization.
void writeStartLine(bool acceleratorOn);
void writeTileLine(uint32_t tileCount, uint32_t slotCount, uint32_t elapsed);
void writeEndLines(uint32_t elapsed, const StageTimes& times);

namespace engine_testing {
// Forgets the kept log handle so that the next call looks it up again.
void resetPerformanceLogCache();
}  // namespace engine_testing

}  // namespace dw
