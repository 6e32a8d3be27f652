// Fake rasters, ports, drawing and the accelerator: drawing paints known rectangles into the port.
#include <cstring>

#include "engine/DownsampleKernels.h"
#include "tests/engine/FakeHostInternal.h"

namespace dw::fake::detail {

namespace {

FAKE_GET(GetRasterRecord, DWArtHandle, DWRasterRecord, A(h).record)
DWErr SetRasterRecord(DWArtHandle raster, const DWRasterRecord* record) {
  ENTER("SetRasterRecord");
  Art& a = A(raster);
  a.record = *record;
  a.pixels.assign(size_t(record->byteWidth) * size_t(record->bounds.bottom - record->bounds.top), 0);
  return 0;
}
FAKE_GET(GetRasterMatrix, DWArtHandle, DWRealMatrix, A(h).matrix)
FAKE_SET_FROM(SetRasterMatrix, DWRealMatrix, matrix)
FAKE_SET(SetColorSpace, DWColorSpaceHandle, rasterSpace)
FAKE_SET(SetRasterUsageFlag, DWBool, usageFlag)
DWErr WriteRasterTile(DWArtHandle raster, const DWSlice* rasterSlice, const DWTile* tile, const DWSlice* tileSlice) {
  ENTER("WriteRasterTile");
  Art& a = A(raster);
  H().tileWrites.push_back({*rasterSlice, *tileSlice, tile->rowBytes, tile->colBytes});
  const int32_t width = tileSlice->right - tileSlice->left;
  const size_t bytes = a.record.bitsPerPixel == 1 ? size_t(width + 7) / 8 : size_t(width) * size_t(tile->colBytes);
  for (int32_t r = tileSlice->top; r < tileSlice->bottom; ++r) {
    const int32_t row = rasterSlice->top + (r - tileSlice->top);
    if (row < 0 || row >= a.record.bounds.bottom) return kFakeError;
    std::memcpy(a.pixels.data() + size_t(row) * size_t(a.record.byteWidth),
                static_cast<const uint8_t*>(tile->data) + size_t(r) * size_t(tile->rowBytes), bytes);
  }
  return 0;
}
DWErr ReadRasterTile(DWArtHandle, const DWSlice*, DWTile*, const DWSlice*) { return kFakeError; }

int gPortSpaceToken;
DWErr NewPortColorSpace(DWColorSpaceHandle space, int32_t flags, DWPortColorSpace* portSpace) {
  ENTER("NewPortColorSpace");
  ++H().livePortSpaces;
  *portSpace = reinterpret_cast<DWPortColorSpace>(&gPortSpaceToken);
  return 0;
}
DWErr NewOffscreenPort(const DWIntRect* bounds, int32_t rowBytes, void* buffer, DWPortColorSpace, int32_t bits,
                       int32_t, DWPort* port) {
  ENTER("NewOffscreenPort");
  H().ports.emplace_back();
  Port& p = H().ports.back();
  p.bounds = *bounds;
  p.rowBytes = rowBytes;
  p.buffer = static_cast<uint8_t*>(buffer);
  p.bitsPerPixel = bits;
  ++H().livePorts;
  *port = reinterpret_cast<DWPort>(&p);
  return 0;
}
DWErr DisposePort(DWPort port) {
  const DWErr injected = H().enter("DisposePort");
  P(port).disposed = true;
  --H().livePorts;
  return injected;
}
DWErr ReleaseObject(void* object) {
  const DWErr injected = H().enter("ReleaseObject");
  if (object == &gPortSpaceToken)
    --H().livePortSpaces;
  else
    --H().liveObjects;
  return injected;
}
DWErr PortOptions(DWPort port, int32_t direction, uint32_t* flags) {
  ENTER(direction == kDWPortOptionsGet ? "PortOptionsGet" : "PortOptionsSet");
  if (direction == kDWPortOptionsGet)
    *flags = P(port).options;
  else
    P(port).options = *flags;
  return 0;
}
DWErr BeginDrawing(DWPort port, const DWIntRect*, DWGraphicsObject, int32_t, uint32_t) {
  ENTER("BeginDrawing");
  P(port).drawing = true;
  return 0;
}
int gPathObject;
DWErr NewObject(int32_t kind, DWGraphicsObject* object) {
  ENTER("NewObject");
  ++H().liveObjects;
  *object = reinterpret_cast<DWGraphicsObject>(&gPathObject);
  return 0;
}
FAKE_CALL(MoveTo, DWGraphicsObject, float, float)
FAKE_CALL(LineTo, DWGraphicsObject, float, float)
FAKE_CALL(ClosePath, DWGraphicsObject)
FAKE_CALL(SaveState, DWPort)
FAKE_CALL(UseDeviceSpace, DWPort)
DWErr ClipToObject(DWPort, DWGraphicsObject, int32_t* depth) {
  ENTER("ClipToObject");
  *depth = 1;
  return 0;
}
FAKE_CALL(ResetPaint, DWPort)
FAKE_CALL(UseUserSpace, DWPort)

void paint(const Art& art, const DWDrawRecord& r, Port& port) {
  const double scale = r.matrix.a;
  const int32_t bytes = port.bitsPerPixel / 8;
  for (int32_t py = r.device.top; py < r.device.bottom; ++py) {
    const double y = r.origin.v - (py + 0.5) / scale;
    if (y < art.paintRect.bottom || y >= art.paintRect.top) continue;
    uint8_t* row = port.buffer + size_t(py) * size_t(port.rowBytes);
    for (int32_t px = r.device.left; px < r.device.right; ++px) {
      const double x = r.origin.h + (px + 0.5) / scale;
      if (x < art.paintRect.left || x >= art.paintRect.right) continue;
      if (port.bitsPerPixel == 1)
        row[px / 8] = uint8_t(row[px / 8] & ~(0x80 >> (px % 8)));
      else
        for (int32_t k = 0; k < bytes && size_t(k) < art.paintPixel.size(); ++k) row[size_t(px) * bytes + k] = art.paintPixel[size_t(k)];
    }
  }
}

void drawTree(DWArtHandle handle, const DWDrawRecord& r, Port& port) {
  const Art& art = A(handle);
  if (art.paints) paint(art, r, port);
  for (Art& child : H().arts)
    if (child.parent == handle && !child.disposed) drawTree(reinterpret_cast<DWArtHandle>(&child), r, port);
}

DWErr DrawArt(DWDrawRecord* record, const int32_t* options) {
  ENTER("DrawArt");
  Port& port = P(record->port);
  if (!port.drawing) return fourCharError("NDRW");
  H().draws.push_back(
      {record->art, record->port, record->origin, record->matrix, record->flags, options ? *options : -1, record->device});
  drawTree(record->art, *record, port);
  return 0;
}
DWErr FinishDrawing(DWDrawRecord* record, int32_t*) {
  ENTER("FinishDrawing");
  P(record->port).drawing = false;
  return 0;
}

DWBool HvIsEnabled() {
  H().enter("HvIsEnabled");
  return H().acceleratorEnabled;
}
void HvFillBytes(uint8_t* buffer, int32_t rows, int32_t rowBytes, int32_t fillBytes, uint8_t value) {
  H().enter("HvFillBytes");
  H().byteFills.push_back(buffer);
  for (int32_t y = 0; y < rows; ++y) std::memset(buffer + size_t(y) * size_t(rowBytes), value, size_t(fillBytes));
}
void HvFillPixels32(uint8_t* buffer, int32_t count, uint8_t b0, uint8_t b1, uint8_t b2, uint8_t b3) {
  H().enter("HvFillPixels32");
  {
    std::lock_guard<std::mutex> lock(H().mutex);
    H().pixelFills.push_back({buffer, count});
  }
  for (int32_t i = 0; i < count; ++i) {
    buffer[4 * i] = b0;
    buffer[4 * i + 1] = b1;
    buffer[4 * i + 2] = b2;
    buffer[4 * i + 3] = b3;
  }
}
// The pixel calls do the work in software so that pixel checks hold on the accelerated path too;
// the channel calls only answer. Recorded under the call's name without its "Hv".
DWErr reduce(const char* name, const DWImageDescriptor* s, const DWImageDescriptor* a, const DWImageDescriptor* d,
             int32_t f, bool pixels) {
  ENTER(name);
  {
    std::lock_guard<std::mutex> lock(H().mutex);
    H().reductions.push_back({name + 2, *s, a ? *a : DWImageDescriptor{}, *d, f});
  }
  if (!pixels) return H().reduceChannelResult;
  if (H().reducePixelsResult) return H().reducePixelsResult;
  DownsampleTile t{s->base, s->rowBytes, d->base, d->rowBytes, d->columns, d->rows, d->pixelBytes, f};
  if (a)
    downsampleWithAlpha(t);
  else
    downsampleOpaque(t);
  return 0;
}
DWErr HvReducePixels(const DWImageDescriptor* s, const DWImageDescriptor* d, int32_t f) {
  return reduce("HvReducePixels", s, nullptr, d, f, true);
}
DWErr HvReducePixelsWithAlpha(const DWImageDescriptor* s, const DWImageDescriptor* a, const DWImageDescriptor* d,
                              int32_t f) {
  return reduce("HvReducePixelsWithAlpha", s, a, d, f, true);
}
DWErr HvReduceChannel(const DWImageDescriptor* s, const DWImageDescriptor* d, int32_t f) {
  return reduce("HvReduceChannel", s, nullptr, d, f, false);
}
DWErr HvReduceChannelWeighted(const DWImageDescriptor* s, const DWImageDescriptor* a, const DWImageDescriptor* d,
                              int32_t f) {
  return reduce("HvReduceChannelWeighted", s, a, d, f, false);
}

}  // namespace

const DWRasterSuite kRaster = {GetRasterRecord, SetRasterRecord,    GetRasterMatrix, SetRasterMatrix,
                               SetColorSpace,   SetRasterUsageFlag, WriteRasterTile, ReadRasterTile};
const DWGraphicsManagerSuite kGraphics = {NewPortColorSpace, NewOffscreenPort, DisposePort, ReleaseObject,
                                          PortOptions,       BeginDrawing,     NewObject,   MoveTo,
                                          LineTo,            ClosePath,        SaveState,   UseDeviceSpace,
                                          ClipToObject,      ResetPaint,       UseUserSpace};
const DWDrawArtSuite kDrawArt = {DrawArt, FinishDrawing};
const DWHVExtensionSuite kAccelerator = {HvIsEnabled,    HvFillBytes,     HvFillPixels32, HvReducePixels,
                                         HvReducePixelsWithAlpha, HvReduceChannel, HvReduceChannelWeighted};

}  // namespace dw::fake::detail
