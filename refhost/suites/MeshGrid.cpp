#include "refhost/suites/MeshGrid.h"

#include <map>
#include <memory>
#include <tuple>

#include "host/suites/mesh_vertex_suite.h"
#include "refhost/document/Document.h"
#include "refhost/loader/Host.h"

namespace refhost {

namespace {

using Key = std::tuple<const Art*, int32_t, int32_t>;

struct Tables {
  std::map<Key, std::unique_ptr<MeshVertexRef>> byVertex;
  std::map<const void*, MeshVertexRef*> byHandle;
};

Tables& tables() {
  static Tables t;
  return t;
}

}  // namespace

DWMeshVertex meshVertexHandle(Art* mesh, int32_t i, int32_t j) {
  Tables& t = tables();
  std::unique_ptr<MeshVertexRef>& slot = t.byVertex[Key{mesh, i, j}];
  if (!slot) {
    slot = std::make_unique<MeshVertexRef>(MeshVertexRef{mesh, i, j});
    t.byHandle.emplace(slot.get(), slot.get());
  }
  return reinterpret_cast<DWMeshVertex>(slot.get());
}

const MeshVertexRef* meshVertexOf(DWMeshVertex handle) {
  Tables& t = tables();
  auto it = t.byHandle.find(handle);
  if (it == t.byHandle.end()) return nullptr;
  const MeshVertexRef* v = it->second;
  Document* doc = Host::current().document();
  const Art* mesh = doc ? doc->liveArt(v->mesh) : nullptr;
  return mesh && mesh->mesh() && hasVertex(*mesh->mesh(), v->i, v->j) ? v : nullptr;
}

bool hasVertex(const MeshData& mesh, int32_t i, int32_t j) {
  return i >= 0 && j >= 0 && i < mesh.columns && j < mesh.rows &&
         size_t(mesh.rows) * size_t(mesh.columns) <= mesh.vertices.size();
}

Point meshPoint(const MeshData& mesh, int32_t i, int32_t j) { return mesh.vertex(j, i); }

bool meshNeighbour(const MeshData& mesh, int32_t i, int32_t j, int32_t direction, int32_t& ni, int32_t& nj) {
  ni = i;
  nj = j;
  switch (direction) {
    case kDWMeshIPlus: ++ni; break;
    case kDWMeshJPlus: ++nj; break;
    case kDWMeshIMinus: --ni; break;
    case kDWMeshJMinus: --nj; break;
    default: return false;
  }
  return hasVertex(mesh, ni, nj);
}

}  // namespace refhost
