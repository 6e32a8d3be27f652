#include "commands/RasterizeSuite.h"
#include "engine/Accelerator.h"
#include "engine/ColorSpace.h"
#include "engine/GroupBlend.h"
#include "engine/Multithreading.h"
#include "engine/PerformanceLog.h"
#include "engine/PlanningRules.h"
#include "engine/RasterArt.h"
#include "engine/RasterPlan.h"
#include "engine/RasterTypeChoice.h"
#include "engine/RasterTypes.h"
#include "engine/Resolution.h"
#include "engine/TileLoop.h"
#include "engine/TileSlots.h"
#include "settings/RasterizeSettings.h"
#include "shell/Error.h"
#include "shell/ErrorCodes.h"
#include "shell/HostSuites.h"

// The engine's one working operation, slot 3 of "DW Rasterize Suite" (declared with the suite's
// other functions in commands/RasterizeSuite.h).
namespace dw {

namespace {

// The single-precision 0.01 the host's tolerance test has always been given.
constexpr double kUnitScaleTolerance = double(0.01f);

// Colour decisions, up to the colour space's channel count. A failure here returns at once: no art
// exists yet, and the end lines of the log are not written.
DWErr planColor(const RasterRequest& request, RasterPlan& plan) {
  const int32_t requested = plan.settings.type;
  const RasterTypeChoice choice = chooseRasterType(requested, plan.settings.options, plan.settings.preserveSpotColors,
                                                   request.artSet, plan.usage);
  if (choice.error) return choice.error;
  plan.settings.type = choice.type;
  plan.spot = choice.spot;

  plan.colorSpace = buildColorSpace(plan.usage, choice.type, familyCode(requested));
  if (!plan.colorSpace) return InvalidValueError;
  plan.channels = colorSpaceChannelCount(plan.colorSpace.get());
  plan.bitsPerPixel = int16_t(rasterBitsPerPixel(choice.type, plan.channels));
  if (plan.channels <= 0 || plan.bitsPerPixel == 0) return BadParameterError;
  // The buffers are sized from the type's depth and read with the space's channel count: a space
  // that disagrees with its type would have them read past their rows.
  const int32_t typeChannels = rasterTypeInfo(choice.type).channels;
  if (plan.channels > kMaxPixelBytes || (typeChannels != 0 && typeChannels != plan.channels))
    return BadParameterError;
  return kDWNoErr;
}

// Resolution, factor, pixel grid and pixel size (steps that create nothing).
DWErr planGeometry(const RasterRequest& request, RasterPlan& plan) {
  const RasterizeSettings& s = plan.settings;
  plan.resolution = rasterResolution(s.options, s.resolution);
  plan.scale = plan.resolution / 72.0;
  if (isBitmapType(s.type) || (s.options & RasterizeOptions::TypeOptimized)) plan.factor = 1;

  plan.pixelBounds = request.bounds;
  if (!(s.options & RasterizeOptions::NoPixelSnap) && gSuites.realMath->EqualWithinTol(plan.scale, 1.0, kUnitScaleTolerance))
    plan.pixelBounds = snapToPixelGrid(request.bounds);

  const PixelSize size = pixelSize(plan.pixelBounds, request.padding, plan.scale);
  plan.width = size.width;
  plan.height = size.height;
  return size.error;
}

// From the raster art's creation to the end of the tile loop. Whatever fails, the caller's clean-up
// runs; exceptions are turned into codes here so that it always does.
DWErr createAndDraw(const RasterRequest& request, RasterPlan& plan, uint32_t processors, const StopWatch& watch) {
  try {
    if (DWErr error = planGeometry(request, plan)) return error;
    if (DWErr error = createRasterArt(request, plan, plan.rasterArt)) return error;
    if (DWErr error = setUpRasterColor(plan.rasterArt, plan.settings.type, plan.spot, plan.colorSpace.get(), plan.usage))
      return error;
    if (DWErr error = setRasterMatrix(request, plan)) return error;
    plan.groupBlendValue = groupBlendValue(request.artSet);
    plan.factor = factorForWidth(plan.factor, plan.width);
    const uint32_t slots = slotCount(plan.factor, multithreadingEnabled(), processors);
    if (DWErr error = planTileSlots(plan, slots)) return error;
    plan.tileCount = tileCountFor(plan.height, plan.geometry.tileRows);
    writeTileLine(plan.tileCount, slots, watch.elapsedMilliseconds());
    return runTileLoop(request, plan);
  } catch (const Error& error) {
    return error.code;
  } catch (...) {
    return OutOfMemoryError;
  }
}

// The end of every call that got past the colour decisions.
void finish(const RasterRequest& request, RasterPlan& plan, DWErr error, DWArtHandle* result) {
  destroySlotPorts(plan);
  if (error == kDWNoErr) {
    copyUserValuePair(request.artSet, plan.rasterArt);
    handBackRaster(request.prep, plan.rasterArt, result);
  } else if (plan.rasterArt) {
    gSuites.art->DisposeArt(plan.rasterArt);
    plan.rasterArt = nullptr;
  }
  freeSlotBuffers(plan);
  plan.slots.clear();
  plan.colorSpace.reset();
}

DWErr rasterize(const RasterRequest& request, bool boundsGiven, DWArtHandle* result) {
  multithreadingEnabled();
  StopWatch watch;
  const bool accelerated = acceleratorEnabled();
  watch.restart();
  writeStartLine(accelerated);
  if (!request.callerSettings || !boundsGiven) return BadParameterError;

  RasterPlan plan;
  const RasterizeSettings& caller = *request.callerSettings;
  plan.settings.type = caller.type;
  plan.settings.resolution = caller.resolution;
  plan.settings.antialiasing = caller.antialiasing;
  plan.settings.options = caller.options;
  plan.settings.reserved = caller.reserved;
  plan.settings.preserveSpotColors = caller.preserveSpotColors;
  plan.factor = supersamplingFactor(plan.settings.antialiasing);
  const uint32_t processors = processorCount();

  if (DWErr error = planColor(request, plan)) return error;

  const DWErr error = createAndDraw(request, plan, processors, watch);
  finish(request, plan, error, result);
  writeEndLines(watch.elapsedMilliseconds(), plan.times);
  return error;
}

}  // namespace

DWErr RasterizeArtWithPadding(DWArtSetHandle art, RasterizeSettings* settings, const DWRealRect* bounds,
                              int32_t paintOrder, DWArtHandle prep, DWArtHandle* raster,
                              DWRasterizeProgressProc progress, double padding) {
  try {
    RasterRequest request;
    request.artSet = art;
    request.callerSettings = settings;
    if (bounds) request.bounds = *bounds;
    request.paintOrder = paintOrder;
    request.prep = prep;
    request.progress = progress;
    request.padding = padding;
    return rasterize(request, bounds != nullptr, raster);
  } catch (const Error& error) {
    return error.code;
  } catch (...) {
    return OutOfMemoryError;
  }
}

}  // namespace dw
