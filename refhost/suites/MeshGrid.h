#pragma once
// The mesh suites' view of a mesh: vertex (i, j) is column i of row j of the model's grid, so i
// runs along a row ("vertices per row") and j down a column. Edges are straight: both control
// points of an edge lie on its end vertices.
#include <cstdint>

#include "host/suites/mesh_suite.h"
#include "refhost/document/Art.h"

namespace refhost {

struct MeshVertexRef {
  Art* mesh = nullptr;
  int32_t i = 0;
  int32_t j = 0;
};

// One handle per vertex of a mesh, kept for the process.
DWMeshVertex meshVertexHandle(Art* mesh, int32_t i, int32_t j);
// Null for a handle the host did not give out, or whose mesh is gone or no longer has that vertex.
const MeshVertexRef* meshVertexOf(DWMeshVertex handle);

bool hasVertex(const MeshData& mesh, int32_t i, int32_t j);
Point meshPoint(const MeshData& mesh, int32_t i, int32_t j);
// The vertex one step away in a direction (kDWMeshIPlus ...); false off the grid.
bool meshNeighbour(const MeshData& mesh, int32_t i, int32_t j, int32_t direction, int32_t& ni, int32_t& nj);

}  // namespace refhost
