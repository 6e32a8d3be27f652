// "DW Placed Suite": placed images. The bounds are the image's natural rectangle. The matrix is
// reported in the image's own orientation, rows growing downward: its b and c are those of the
// document's matrix negated, so a caller negates them back before mapping the bounds.
#include "host/suites/placed_suite.h"
#include "refhost/loader/HostCall.h"
#include "refhost/loader/SuiteProviders.h"
#include "refhost/suites/DocumentAccess.h"

namespace refhost {
namespace {

DWErr placedOf(DWArtHandle art, const PlacedData*& placed) {
  const Art* a = liveArt(art);
  if (!a) return kHostBadParameter;
  placed = a->placed();
  return placed ? kDWNoErr : kHostWrongType;
}

DWErr GetPlacedBounds(DWArtHandle placed, DWRealRect* bounds) {
  REFHOST_CALL(kDWPlacedSuite, "GetPlacedBounds");
  const PlacedData* p = nullptr;
  if (const DWErr e = placedOf(placed, p)) return e;
  if (!bounds) return kHostBadParameter;
  *bounds = toRecord(p->bounds);
  return kDWNoErr;
}

DWErr GetPlacedMatrix(DWArtHandle placed, DWRealMatrix* matrix) {
  REFHOST_CALL(kDWPlacedSuite, "GetPlacedMatrix");
  const PlacedData* p = nullptr;
  if (const DWErr e = placedOf(placed, p)) return e;
  if (!matrix) return kHostBadParameter;
  const Matrix& m = p->matrix;
  *matrix = DWRealMatrix{m.a, -m.b, -m.c, m.d, m.tx, m.ty};
  return kDWNoErr;
}

const DWPlacedSuite kSuite = {GetPlacedBounds, GetPlacedMatrix};
REFHOST_REGISTER_SUITE(kDWPlacedSuite, kDWPlacedSuiteVersion, kSuite);

}  // namespace
}  // namespace refhost
