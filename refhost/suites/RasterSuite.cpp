// "DW Raster Suite": raster art description, placement, channels and pixels.
#include "host/suites/raster_suite.h"
#include "refhost/document/Document.h"
#include "refhost/loader/HostCall.h"
#include "refhost/loader/SuiteProviders.h"
#include "refhost/render/HostHandles.h"
#include "refhost/render/RasterAccess.h"

namespace refhost {
namespace {

RasterData* rasterOf(DWArtHandle handle) {
  Document* doc = Host::current().document();
  Art* art = doc ? doc->liveArt(handle) : nullptr;
  return art ? art->raster() : nullptr;
}

DWErr GetRasterRecord(DWArtHandle raster, DWRasterRecord* record) {
  REFHOST_CALL(kDWRasterSuite, "GetRasterRecord");
  const RasterData* r = rasterOf(raster);
  if (!r || !record) return kHostBadParameter;
  const RasterRecord& s = r->record;
  record->flags = s.flags;
  record->bounds = DWIntRect{s.bounds.left, s.bounds.top, s.bounds.right, s.bounds.bottom};
  record->byteWidth = s.byteWidth;
  record->colorSpace = s.colorSpace;
  record->bitsPerPixel = s.bitsPerPixel;
  record->originalColorSpace = s.originalColorSpace;
  return kDWNoErr;
}

DWErr SetRasterRecord(DWArtHandle raster, const DWRasterRecord* record) {
  REFHOST_CALL(kDWRasterSuite, "SetRasterRecord");
  RasterData* r = rasterOf(raster);
  if (!r || !record) return kHostBadParameter;
  RasterRecord s;
  s.flags = record->flags;
  s.bounds = IntRect{record->bounds.left, record->bounds.top, record->bounds.right, record->bounds.bottom};
  s.byteWidth = record->byteWidth;
  s.colorSpace = record->colorSpace;
  s.bitsPerPixel = record->bitsPerPixel;
  s.originalColorSpace = record->originalColorSpace;
  if (!render::validateRasterRecord(s).empty()) return kHostBadParameter;
  RasterData probe;
  probe.record = s;
  if (probe.storageSize() > Host::current().controls().rasterBytesCap) return kHostOutOfMemory;
  return guarded([&] {
    r->setRecord(s);
    r->channels.clear();
    return kDWNoErr;
  });
}

DWErr GetRasterMatrix(DWArtHandle raster, DWRealMatrix* matrix) {
  REFHOST_CALL(kDWRasterSuite, "GetRasterMatrix");
  const RasterData* r = rasterOf(raster);
  if (!r || !matrix) return kHostBadParameter;
  const Matrix& m = r->matrix;
  *matrix = DWRealMatrix{m.a, m.b, m.c, m.d, m.tx, m.ty};
  return kDWNoErr;
}

DWErr SetRasterMatrix(DWArtHandle raster, const DWRealMatrix* matrix) {
  REFHOST_CALL(kDWRasterSuite, "SetRasterMatrix");
  RasterData* r = rasterOf(raster);
  if (!r || !matrix) return kHostBadParameter;
  r->matrix = Matrix{matrix->a, matrix->b, matrix->c, matrix->d, matrix->tx, matrix->ty};
  return kDWNoErr;
}

DWErr SetColorSpace(DWArtHandle raster, DWColorSpaceHandle space) {
  REFHOST_CALL(kDWRasterSuite, "SetColorSpace");
  RasterData* r = rasterOf(raster);
  const render::ColorSpace::Ptr cs = render::colorSpaceOf(space);
  if (!r || !cs) return kHostBadParameter;
  return guarded([&] { return render::setRasterChannels(*r, *cs).empty() ? kDWNoErr : kHostBadParameter; });
}

DWErr SetRasterUsageFlag(DWArtHandle raster, DWBool flag) {
  REFHOST_CALL(kDWRasterSuite, "SetRasterUsageFlag");
  RasterData* r = rasterOf(raster);
  if (!r) return kHostBadParameter;
  r->rasterFlag = flag != 0;
  return kDWNoErr;
}

// Planar tiles are the one layout this host does not copy.
DWErr tileResult(const std::string& problem, const DWTile& tile) {
  if (problem.empty()) return kDWNoErr;
  return tile.planeBytes != 0 ? kHostNotImplemented : kHostBadParameter;
}

DWErr WriteRasterTile(DWArtHandle raster, const DWSlice* rasterSlice, const DWTile* tile, const DWSlice* tileSlice) {
  REFHOST_CALL(kDWRasterSuite, "WriteRasterTile");
  RasterData* r = rasterOf(raster);
  if (!r || !rasterSlice || !tile || !tileSlice) return kHostBadParameter;
  return guarded([&] { return tileResult(render::writeRasterTile(*r, *rasterSlice, *tile, *tileSlice), *tile); });
}

DWErr ReadRasterTile(DWArtHandle raster, const DWSlice* rasterSlice, DWTile* tile, const DWSlice* tileSlice) {
  REFHOST_CALL(kDWRasterSuite, "ReadRasterTile");
  const RasterData* r = rasterOf(raster);
  if (!r || !rasterSlice || !tile || !tileSlice) return kHostBadParameter;
  return guarded([&] { return tileResult(render::readRasterTile(*r, *rasterSlice, *tile, *tileSlice), *tile); });
}

const DWRasterSuite kSuite = {GetRasterRecord, SetRasterRecord,    GetRasterMatrix, SetRasterMatrix,
                              SetColorSpace,   SetRasterUsageFlag, WriteRasterTile, ReadRasterTile};
REFHOST_REGISTER_SUITE(kDWRasterSuite, kDWRasterSuiteVersion, kSuite);

}  // namespace
}  // namespace refhost
