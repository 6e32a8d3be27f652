// "DW Mesh Vertex Suite": a vertex's position and the control points of the edges that leave it.
#include "host/suites/mesh_vertex_suite.h"
#include "refhost/loader/HostCall.h"
#include "refhost/loader/SuiteProviders.h"
#include "refhost/suites/DocumentAccess.h"
#include "refhost/suites/MeshGrid.h"

namespace refhost {
namespace {

DWErr GetPoint(DWMeshVertex vertex, DWRealPoint* point) {
  REFHOST_CALL(kDWMeshVertexSuite, "GetPoint");
  const MeshVertexRef* v = meshVertexOf(vertex);
  if (!v || !point) return kHostBadParameter;
  *point = toRecord(meshPoint(*v->mesh->mesh(), v->i, v->j));
  return kDWNoErr;
}

// Edges are straight, so the control point lies on the vertex; a direction off the grid has no edge.
DWErr GetTangent(DWMeshVertex vertex, int32_t direction, DWRealPoint* control) {
  REFHOST_CALL(kDWMeshVertexSuite, "GetTangent");
  const MeshVertexRef* v = meshVertexOf(vertex);
  if (!v || !control) return kHostBadParameter;
  const MeshData& mesh = *v->mesh->mesh();
  int32_t ni = 0;
  int32_t nj = 0;
  if (!meshNeighbour(mesh, v->i, v->j, direction, ni, nj)) return kHostBadParameter;
  *control = toRecord(meshPoint(mesh, v->i, v->j));
  return kDWNoErr;
}

const DWMeshVertexSuite kSuite = {GetPoint, GetTangent};
REFHOST_REGISTER_SUITE(kDWMeshVertexSuite, kDWMeshVertexSuiteVersion, kSuite);

}  // namespace
}  // namespace refhost
