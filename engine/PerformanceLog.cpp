#include "engine/PerformanceLog.h"

#include <cstdio>

#include "shell/HostSuites.h"

namespace dw {

namespace {
constexpr const char kLogName[] = "DWPerformance.log";
bool gLogLookedUp = false;
DWLogHandle gLog = nullptr;
}  // namespace

DWLogHandle performanceLog() {
  if (gLogLookedUp) return gLog;
  const DWDevUtilsSuite* dev = gSuites.devUtils;
  if (!dev) return nullptr;
  gLogLookedUp = true;
  DWLogHandle named = dev->GetLog(kLogName);
  DWLogHandle fallback = dev->GetLog(nullptr);
  gLog = named == fallback ? nullptr : dev->GetLog(kLogName);
  return gLog;
}

void StopWatch::restart() {
  const DWDevUtilsSuite* dev = gSuites.devUtils;
  if (!dev) return;
  start = dev->GetStartStamp();
  clock = dev->GetClock();
}

uint32_t StopWatch::elapsedMilliseconds() const {
  const DWDevUtilsSuite* dev = gSuites.devUtils;
  if (!dev) return 0;
  return dev->DurationMilliseconds(dev->Difference(dev->ReadClock(clock), start));
}

void writeLabelLine(const char* label, const char* detail) {
  if (DWLogHandle log = performanceLog()) gSuites.devUtils->WriteLine(log, "%12s\t%s\t(%s)", "", label, detail);
}

void writeNumberLine(const char* label, const char* detail, uint32_t number) {
  if (DWLogHandle log = performanceLog())
    gSuites.devUtils->WriteLine(log, "%12u\t%s\t(%s)", unsigned(number), label, detail);
}

void writeStartLine(bool acceleratorOn) {
  writeLabelLine(acceleratorOn ? "Rasterize(ENABLE_BOTTELNECK)" : "Rasterize", "Start");
}

void writeTileLine(uint32_t tileCount, uint32_t slotCount, uint32_t elapsed) {
  char detail[64];
  std::snprintf(detail, sizeof detail, "TileCount: %u, Threads: %u", unsigned(tileCount), unsigned(slotCount));
  writeNumberLine("Begin Tile processing", detail, elapsed);
}

void writeEndLines(uint32_t elapsed, const StageTimes& times) {
  writeNumberLine("Rasterize", "End", elapsed);
  writeNumberLine("Rasterize", "rasterizeTile", times.rasterizeTile);
  writeNumberLine("Rasterize", "downSample", times.downSample);
  writeNumberLine("Rasterize", "updateRasterTile", times.updateRasterTile);
}

namespace engine_testing {
void resetPerformanceLogCache() {
  gLogLookedUp = false;
  gLog = nullptr;
}
}  // namespace engine_testing

}  // namespace dw
