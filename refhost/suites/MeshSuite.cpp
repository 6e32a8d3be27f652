// "DW Mesh Suite": the vertex grid of mesh art (see MeshGrid.h for the axes).
#include "host/suites/mesh_suite.h"
#include "refhost/loader/HostCall.h"
#include "refhost/loader/SuiteProviders.h"
#include "refhost/suites/DocumentAccess.h"
#include "refhost/suites/MeshGrid.h"

namespace refhost {
namespace {

DWErr meshOf(DWArtHandle art, Art*& mesh) {
  mesh = liveArt(art);
  if (!mesh) return kHostBadParameter;
  return mesh->mesh() ? kDWNoErr : kHostWrongType;
}

DWErr GetGridSize(DWArtHandle mesh, int32_t* iCount, int32_t* jCount) {
  REFHOST_CALL(kDWMeshSuite, "GetGridSize");
  Art* m = nullptr;
  if (const DWErr e = meshOf(mesh, m)) return e;
  if (!iCount || !jCount) return kHostBadParameter;
  *iCount = m->mesh()->columns;
  *jCount = m->mesh()->rows;
  return kDWNoErr;
}

DWErr GetVertex(DWArtHandle mesh, int32_t i, int32_t j, DWMeshVertex* vertex) {
  REFHOST_CALL(kDWMeshSuite, "GetVertex");
  Art* m = nullptr;
  if (const DWErr e = meshOf(mesh, m)) return e;
  if (!vertex || !hasVertex(*m->mesh(), i, j)) return kHostBadParameter;
  return guarded([&] {
    *vertex = meshVertexHandle(m, i, j);
    return kDWNoErr;
  });
}

const DWMeshSuite kSuite = {GetGridSize, GetVertex};
REFHOST_REGISTER_SUITE(kDWMeshSuite, kDWMeshSuiteVersion, kSuite);

}  // namespace
}  // namespace refhost
