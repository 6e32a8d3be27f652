#pragma once
#include <cstdint>

#include "engine/RasterPlan.h"

namespace dw {

// Port limits: 16383 pixels, and 65535 row bytes at the depth of the type's transparent variant.
constexpr int32_t kMaxPortWidth = 16383;
constexpr int64_t kMaxPortRowBytes = 65535;

// Allocates the slot's buffers from the memory budget. rowCap limits the rows tried (the smallest
// row count an earlier slot got, or the raster height); rows receives what this slot got. A budget
// below one row, or allocations that fail down to the smallest size tried, give OutOfMemoryError.
DWErr allocateSlotBuffers(TileSlot& slot, TileGeometry& geometry, const RasterPlan& plan, uint32_t budget,
                          int32_t rowCap, int32_t& rows);

// Creates the slot's port over its supersampled buffer (factor > 1) or its tile buffer (factor 1)
// and sets the port's option flags.
DWErr createSlotPort(TileSlot& slot, const RasterPlan& plan);

// Allocates every slot and creates its port. All slots share one geometry: the smallest row count
// any slot got; ports created for more rows before a later slot got fewer are made again.
DWErr planTileSlots(RasterPlan& plan, uint32_t slotCount);

// The port option flags for the settings: the current flags without 0x2D8013, plus anti-aliasing
// and the type options.
uint32_t portOptionFlags(uint32_t current, const RasterizeSettings& settings);

// Destroys every slot's port, in slot order.
void destroySlotPorts(RasterPlan& plan);
// Frees every slot's buffers.
void freeSlotBuffers(RasterPlan& plan);

}  // namespace dw
