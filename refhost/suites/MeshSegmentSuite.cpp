// "DW Mesh Segment Suite": the edges of a mesh's grid as cubic Beziers.
#include "host/suites/mesh_segment_suite.h"
#include "refhost/loader/HostCall.h"
#include "refhost/loader/SuiteProviders.h"
#include "refhost/suites/DocumentAccess.h"
#include "refhost/suites/MeshGrid.h"

namespace refhost {
namespace {

DWErr GetEdge(DWArtHandle mesh, int32_t i, int32_t j, int32_t direction, DWRealPoint bezier[4]) {
  REFHOST_CALL(kDWMeshSegmentSuite, "GetEdge");
  const Art* m = liveArt(mesh);
  if (!m) return kHostBadParameter;
  const MeshData* data = m->mesh();
  if (!data) return kHostWrongType;
  int32_t ni = 0;
  int32_t nj = 0;
  if (!bezier || !hasVertex(*data, i, j) || !meshNeighbour(*data, i, j, direction, ni, nj)) return kHostBadParameter;
  const DWRealPoint start = toRecord(meshPoint(*data, i, j));
  const DWRealPoint end = toRecord(meshPoint(*data, ni, nj));
  bezier[0] = bezier[1] = start;
  bezier[2] = bezier[3] = end;
  return kDWNoErr;
}

const DWMeshSegmentSuite kSuite = {GetEdge};
REFHOST_REGISTER_SUITE(kDWMeshSegmentSuite, kDWMeshSegmentSuiteVersion, kSuite);

}  // namespace
}  // namespace refhost
