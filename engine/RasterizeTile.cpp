#include "engine/RasterizeTile.h"

#include "engine/Background.h"
#include "engine/RasterTypes.h"
#include "host/raster.h"
#include "settings/RasterizeSettings.h"
#include "shell/ErrorCodes.h"
#include "shell/HostSuites.h"

namespace dw {

namespace {

// Per tile: what drawing one object needs.
struct DrawContext {
  DWDrawRecord* record;
  int32_t reservedValue;
  DWArtSetHandle artSet;
  bool checkParents;
  DWRasterizeProgressProc progress;
  uint32_t counter;
  uint32_t total;
};

// Drawing a group draws its members, so a member whose parent group is in the set is skipped.
// With checkParents only set members that have a parent themselves count as such a group.
DWErr parentIsInSet(const DrawContext& context, int32_t count, DWArtHandle parent, bool& inSet) {
  inSet = false;
  for (int32_t j = 0; j < count; ++j) {
    DWArtHandle member = nullptr;
    // An unreadable member settles nothing: the object is drawn.
    if (gSuites.artSet->IndexArtSet(context.artSet, j, &member) != kDWNoErr) return kDWNoErr;
    if (member != parent) continue;
    if (context.checkParents) {
      DWArtHandle grandparent = nullptr;
      if (DWErr error = gSuites.art->GetArtParent(member, &grandparent)) return error;
      if (!grandparent) continue;
    }
    inSet = true;
    return kDWNoErr;
  }
  return kDWNoErr;
}

DWErr drawArtSet(DrawContext& context, int32_t count) {
  const HostSuites& s = gSuites;
  for (int32_t index = count - 1; index >= 0; --index) {
    ++context.counter;
    DWArtHandle art = nullptr;
    if (DWErr error = s.artSet->IndexArtSet(context.artSet, index, &art)) return error;
    DWArtHandle parent = nullptr;
    if (DWErr error = s.art->GetArtParent(art, &parent)) return error;
    if (context.checkParents && !parent) continue;
    if (parent) {
      bool inSet = false;
      if (DWErr error = parentIsInSet(context, count, parent, inSet)) return error;
      if (inSet) continue;
    }
    context.record->art = art;
    if (DWErr error = s.drawArt->DrawArt(context.record, &context.reservedValue)) return error;
    if (context.progress && context.progress(int32_t(context.counter), int32_t(context.total)) == 0)
      return UserCancelled;
  }
  return kDWNoErr;
}

DWErr drawAllLayers(DWDrawRecord& record, int32_t reservedValue) {
  const HostSuites& s = gSuites;
  int32_t layers = 0;
  if (DWErr error = s.layer->CountLayers(&layers)) return error;
  for (int32_t index = layers - 1; index >= 0; --index) {
    DWLayerHandle layer = nullptr;
    if (DWErr error = s.layer->GetNthLayer(index, &layer)) return error;
    DWArtHandle group = nullptr;
    if (DWErr error = s.art->GetLayerGroupArt(layer, &group)) return error;
    DWArtHandle parent = nullptr;
    if (DWErr error = s.art->GetArtParent(group, &parent)) return error;
    if (parent) continue;
    record.art = group;
    if (DWErr error = s.drawArt->DrawArt(&record, &reservedValue)) return error;
  }
  return kDWNoErr;
}

DWErr drawArt(const TileDrawing& drawing, uint32_t tileIndex, DWDrawRecord& record) {
  const int32_t reservedValue = drawing.callerReserved ? *drawing.callerReserved : 0;
  if (!drawing.artSet) return drawAllLayers(record, reservedValue);
  int32_t count = 0;
  if (DWErr error = gSuites.artSet->CountArtSet(drawing.artSet, &count)) return error;
  DrawContext context{&record,
                      reservedValue,
                      count > 0 ? drawing.artSet : nullptr,
                      (drawing.settings->options & RasterizeOptions::DrawParentlessArt) == 0,
                      drawing.progress,
                      uint32_t(count) * tileIndex,
                      uint32_t(count) * drawing.tileCount};
  return drawArtSet(context, count);
}

// Clips the drawing to the device rectangle through a path object: the graphics manager's set-up of
// a device drawing, in the order it expects. begun tells whether the session was opened.
DWErr beginDeviceDrawing(DWPort port, const DWDrawRecord& record, DWGraphicsObject& clip, uint32_t groupBlend,
                         bool& begun) {
  const DWGraphicsManagerSuite& gm = *gSuites.graphicsManager;
  if (DWErr error = gm.NewObject(kDWPathObject, &clip)) return error;
  if (DWErr error = gm.BeginDrawing(port, &record.device, clip, 1, groupBlend)) return error;
  begun = true;
  const float width = float(record.device.right);
  const float rows = float(record.device.bottom);
  int32_t clipDepth = 0;
  if (DWErr error = gm.SaveState(port)) return error;
  if (DWErr error = gm.UseDeviceSpace(port)) return error;
  if (DWErr error = gm.MoveTo(clip, 0.0f, 0.0f)) return error;
  if (DWErr error = gm.LineTo(clip, width, 0.0f)) return error;
  if (DWErr error = gm.LineTo(clip, width, rows)) return error;
  if (DWErr error = gm.LineTo(clip, 0.0f, rows)) return error;
  if (DWErr error = gm.ClosePath(clip)) return error;
  if (DWErr error = gm.ClipToObject(port, clip, &clipDepth)) return error;
  if (DWErr error = gm.ResetPaint(port)) return error;
  return gm.UseUserSpace(port);
}

class GraphicsObject {
 public:
  ~GraphicsObject() {
    if (handle) gSuites.graphicsManager->ReleaseObject(handle);
  }
  DWGraphicsObject handle = nullptr;
};

}  // namespace

TileDrawing makeTileDrawing(const RasterRequest& request, const RasterPlan& plan) {
  TileDrawing d;
  d.artSet = request.artSet;
  d.settings = &plan.settings;
  d.callerReserved = request.callerSettings ? &request.callerSettings->reserved : nullptr;
  d.colorSpace = plan.colorSpace.get();
  d.progress = request.progress;
  d.padding = request.padding;
  d.scale = plan.scale;
  d.factor = plan.factor;
  d.bounds = plan.pixelBounds;
  d.tileCount = plan.tileCount;
  const TileGeometry& g = plan.geometry;
  const bool super = plan.factor > 1;
  d.portWidth = super ? g.superWidth : g.tileWidth;
  d.portRows = super ? g.superRows : g.tileRows;
  d.portStride = super ? g.superStride : g.tileStride;
  d.groupBlendValue = plan.groupBlendValue;
  return d;
}

DWDrawRecord makeDrawRecord(const TileDrawing& d, uint32_t tileIndex, DWPort port) {
  DWDrawRecord r{};
  r.version = 1;
  r.flags = kDWDrawFlagsDefault | (d.groupBlendValue ? uint32_t(kDWDrawGroupBlend) : 0u);
  r.output = kDWDrawToPort;
  const double pixelsPerPoint = double(d.factor) * d.scale;
  // The product wraps like the unsigned 32-bit value it is.
  const uint32_t rowsAbove = tileIndex * uint32_t(d.portRows);
  r.origin.h = d.bounds.left - d.padding;
  r.origin.v = d.bounds.top + d.padding - double(rowsAbove) / pixelsPerPoint;
  r.matrix = DWRealMatrix{pixelsPerPoint, 0.0, 0.0, pixelsPerPoint, 0.0, 0.0};
  r.art = nullptr;
  r.reserved2 = -1.0;
  r.port = port;
  r.device = DWIntRect{0, 0, d.portWidth, d.portRows};
  return r;
}

DWErr rasterizeTile(const TileDrawing& d, uint32_t tileIndex, DWPort port, uint8_t* buffer, bool clearFirst) {
  const RasterizeSettings& settings = *d.settings;
  const bool black = (settings.options & RasterizeOptions::BlackBackground) != 0;
  if (clearFirst) fillBackground(settings.type, black, d.colorSpace, d.portWidth, d.portRows, d.portStride, buffer);

  DWDrawRecord record = makeDrawRecord(d, tileIndex, port);
  GraphicsObject clip;
  bool begun = false;
  DWErr error = kDWNoErr;
  if (settings.options & RasterizeOptions::DrawPortDevice) {
    error = beginDeviceDrawing(port, record, clip.handle, d.groupBlendValue, begun);
  } else {
    error = gSuites.graphicsManager->BeginDrawing(port, &record.device, nullptr, 1, d.groupBlendValue);
    begun = error == kDWNoErr;
  }
  if (!error) error = drawArt(d, tileIndex, record);
  // An opened session is always finished; its own result does not replace the drawing's.
  if (begun) {
    int32_t unused = 0;
    gSuites.drawArt->FinishDrawing(&record, d.callerReserved ? d.callerReserved : &unused);
  }
  if (error) return error;

  // The port draws white as 1; raster bitmaps store black as 1.
  if (isBitmapType(settings.type)) {
    const size_t bytes = size_t(d.portRows) * size_t(d.portStride);
    for (size_t i = 0; i < bytes; ++i) buffer[i] = uint8_t(~buffer[i]);
  }
  return kDWNoErr;
}

DWErr updateRasterTile(DWArtHandle raster, uint32_t tileIndex, int32_t width, int32_t height, int32_t channels,
                       int32_t tileWidth, int32_t tileRows, int32_t tileStride, uint8_t* tileBuffer) {
  (void)width;
  const int32_t top = int32_t(tileIndex) * tileRows;
  const int32_t rows = int32_t(tileIndex + 1) * tileRows > height ? height - top : tileRows;
  DWTile tile{};
  tile.data = tileBuffer;
  tile.bounds = DWSlice{0, 0, rows, tileWidth, 0, channels};
  tile.rowBytes = tileStride;
  tile.colBytes = channels;
  tile.planeBytes = 0;
  for (uint16_t k = 0; k < 32; ++k) tile.channelInterleave[k] = k;
  const DWSlice rasterSlice{top, 0, top + rows, tileWidth, 0, channels};
  const DWSlice tileSlice{0, 0, rows, tileWidth, 0, channels};
  return gSuites.raster->WriteRasterTile(raster, &rasterSlice, &tile, &tileSlice);
}

}  // namespace dw
