#include "engine/TileSlots.h"

#include <cstddef>
#include <limits>

#include "engine/MemoryBudget.h"
#include "engine/RasterTypes.h"
#include "settings/RasterizeSettings.h"
#include "shell/ErrorCodes.h"
#include "shell/HostSuites.h"

namespace dw {

namespace {

void* allocateBlock(uint64_t size) {
  if (size == 0 || size > std::numeric_limits<size_t>::max()) return nullptr;
  void* block = nullptr;
  if (gSuites.block->AllocateBlock(size_t(size), &block) != kDWNoErr) return nullptr;
  return block;
}

void freeBlock(uint8_t*& block) {
  if (block) gSuites.block->DisposeBlock(block);
  block = nullptr;
}

// Below these sizes a failed allocation is not retried with fewer rows.
constexpr uint64_t kSingleRetryLimit = 65536;
constexpr uint64_t kSuperRetryLimit = 32768;

DWErr allocateSingle(TileSlot& slot, const TileGeometry& g, uint32_t rows, int32_t& got) {
  for (;;) {
    const uint64_t size = uint64_t(rows) * uint64_t(g.tileStride);
    slot.tileBuffer = static_cast<uint8_t*>(allocateBlock(size));
    if (slot.tileBuffer) {
      got = int32_t(rows);
      return kDWNoErr;
    }
    if (size <= kSingleRetryLimit || rows / 2 == 0) return OutOfMemoryError;
    rows /= 2;
  }
}

DWErr allocateSupersampled(TileSlot& slot, const TileGeometry& g, uint32_t factor, uint32_t rows, int32_t& got) {
  for (;;) {
    freeBlock(slot.tileBuffer);
    freeBlock(slot.superBuffer);
    const uint64_t tileSize = uint64_t(rows) * uint64_t(g.tileStride);
    slot.tileBuffer = static_cast<uint8_t*>(allocateBlock(tileSize));
    if (slot.tileBuffer)
      slot.superBuffer = static_cast<uint8_t*>(allocateBlock(uint64_t(factor) * rows * uint64_t(g.superStride)));
    if (slot.tileBuffer && slot.superBuffer) {
      got = int32_t(rows);
      return kDWNoErr;
    }
    if (tileSize <= kSuperRetryLimit || rows / 2 == 0) {
      freeBlock(slot.tileBuffer);
      freeBlock(slot.superBuffer);
      return OutOfMemoryError;
    }
    rows /= 2;
  }
}

// The port colour space is released on every path out of the port set-up.
class PortColorSpace {
 public:
  ~PortColorSpace() {
    if (handle) gSuites.graphicsManager->ReleaseObject(handle);
  }
  DWPortColorSpace handle = nullptr;
};

void updateGeometryRows(TileGeometry& g, int32_t factor, int32_t rows) {
  g.tileRows = rows;
  g.superRows = factor > 1 ? factor * rows : 0;
}

}  // namespace

DWErr allocateSlotBuffers(TileSlot& slot, TileGeometry& g, const RasterPlan& plan, uint32_t budget, int32_t rowCap,
                          int32_t& rows) {
  rows = 0;
  const int32_t factor = plan.factor;
  const int64_t tileStride = rowStride(plan.bitsPerPixel, plan.width);
  const int64_t superWidth = int64_t(factor) * plan.width;
  const int64_t superStride = factor > 1 ? rowStride(plan.bitsPerPixel, superWidth) : 0;
  // Rows this wide could not be drawn into any port.
  if (tileStride <= 0 || tileStride > std::numeric_limits<int32_t>::max() ||
      superStride > std::numeric_limits<int32_t>::max())
    return TooWideError;
  g.tileWidth = plan.width;
  g.tileStride = int32_t(tileStride);
  g.superWidth = factor > 1 ? int32_t(superWidth) : 0;
  g.superStride = int32_t(superStride);

  const uint32_t perRowBudget = factor > 1 ? budget / (uint32_t(factor) * uint32_t(factor)) : budget;
  uint32_t start = perRowBudget / uint32_t(tileStride);
  if (start > uint32_t(plan.height)) start = uint32_t(plan.height);
  if (rowCap > 0 && start > uint32_t(rowCap)) start = uint32_t(rowCap);
  // A budget below one row would plan tiles of no rows at all.
  if (start == 0) return OutOfMemoryError;
  return factor > 1 ? allocateSupersampled(slot, g, uint32_t(factor), start, rows) : allocateSingle(slot, g, start, rows);
}

uint32_t portOptionFlags(uint32_t current, const RasterizeSettings& settings) {
  uint32_t flags = current & ~uint32_t(0x2D8013);
  if (settings.antialiasing > 1) flags |= kDWPortAntialias;
  if (settings.options & RasterizeOptions::OutlineText) flags |= kDWPortOutlineText;
  if (settings.options & RasterizeOptions::TypeOptimized) flags |= kDWPortHintedText;
  return flags;
}

DWErr createSlotPort(TileSlot& slot, const RasterPlan& plan) {
  const DWGraphicsManagerSuite& gm = *gSuites.graphicsManager;
  const TileGeometry& g = plan.geometry;
  PortColorSpace space;
  if (DWErr error = gm.NewPortColorSpace(plan.colorSpace.get(), -1, &space.handle)) return error;
  if (!space.handle) return OutOfMemoryError;

  const bool super = plan.factor > 1;
  const int32_t width = super ? g.superWidth : g.tileWidth;
  const int32_t rows = super ? g.superRows : g.tileRows;
  uint8_t* buffer = super ? slot.superBuffer : slot.tileBuffer;
  const int32_t variant = rasterTypeInfo(plan.settings.type).transparentVariant;
  if (width > kMaxPortWidth || rowStride(rasterBitsPerPixel(variant, plan.channels), width) > kMaxPortRowBytes)
    return TooWideError;

  const DWIntRect bounds{0, 0, width, rows};
  const int32_t rowBytesOfType = int32_t(rowStride(plan.bitsPerPixel, width));
  DWPort port = nullptr;
  if (DWErr error = gm.NewOffscreenPort(&bounds, rowBytesOfType, buffer, space.handle, plan.bitsPerPixel, 0, &port))
    return error;
  if (!port) return OutOfMemoryError;
  slot.port = port;

  uint32_t flags = 0;
  if (DWErr error = gm.PortOptions(port, kDWPortOptionsGet, &flags)) return error;
  flags = portOptionFlags(flags, plan.settings);
  return gm.PortOptions(port, kDWPortOptionsSet, &flags);
}

DWErr planTileSlots(RasterPlan& plan, uint32_t slotCount) {
  plan.slots.assign(slotCount, TileSlot{});
  int32_t smallest = 0;
  for (uint32_t s = 0; s < slotCount; ++s) {
    TileGeometry candidate = plan.geometry;
    int32_t rows = 0;
    if (DWErr error = allocateSlotBuffers(plan.slots[s], candidate, plan, rasterMemoryBudget(), smallest, rows))
      return error;
    const bool fewer = smallest != 0 && rows < smallest;
    if (smallest == 0 || fewer) {
      smallest = rows;
      updateGeometryRows(candidate, plan.factor, rows);
      plan.geometry = candidate;
    }
    if (fewer) {
      // Earlier ports cover more rows than the shared geometry now has.
      for (uint32_t earlier = 0; earlier < s; ++earlier) {
        gSuites.graphicsManager->DisposePort(plan.slots[earlier].port);
        plan.slots[earlier].port = nullptr;
        if (DWErr error = createSlotPort(plan.slots[earlier], plan)) return error;
      }
    }
    if (DWErr error = createSlotPort(plan.slots[s], plan)) return error;
  }
  return kDWNoErr;
}

void destroySlotPorts(RasterPlan& plan) {
  for (TileSlot& slot : plan.slots) {
    if (slot.port && gSuites.graphicsManager) gSuites.graphicsManager->DisposePort(slot.port);
    slot.port = nullptr;
  }
}

void freeSlotBuffers(RasterPlan& plan) {
  if (!gSuites.block) return;
  for (TileSlot& slot : plan.slots) {
    freeBlock(slot.tileBuffer);
    freeBlock(slot.superBuffer);
  }
}

}  // namespace dw
