/* Vertices of a mesh. */
#ifndef DW_MESH_VERTEX_SUITE_H
#define DW_MESH_VERTEX_SUITE_H
#include "mesh_suite.h"
#ifdef __cplusplus
extern "C" {
#endif
#define kDWMeshVertexSuite "DW Mesh Vertex Suite"
#define kDWMeshVertexSuiteVersion 4

/* Directions from a vertex: towards i+1, j+1, i-1, j-1. */
enum { kDWMeshIPlus = 0, kDWMeshJPlus = 1, kDWMeshIMinus = 2, kDWMeshJMinus = 3 };

typedef struct DWMeshVertexSuite {
  DWErr (*GetPoint)(DWMeshVertex vertex, DWRealPoint* point);
  /* The control point of the edge that leaves the vertex in a direction. */
  DWErr (*GetTangent)(DWMeshVertex vertex, int32_t direction, DWRealPoint* control);
} DWMeshVertexSuite;
#ifdef __cplusplus
}
#endif
#endif
