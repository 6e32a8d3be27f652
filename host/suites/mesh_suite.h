/* Gradient meshes: a grid of vertices joined by Bezier edges. */
#ifndef DW_MESH_SUITE_H
#define DW_MESH_SUITE_H
#include "../types.h"
#ifdef __cplusplus
extern "C" {
#endif
#define kDWMeshSuite "DW Mesh Suite"
#define kDWMeshSuiteVersion 6

typedef struct DWMeshVertexOpaque* DWMeshVertex;

typedef struct DWMeshSuite {
  /* Vertices per row (i) and per column (j). */
  DWErr (*GetGridSize)(DWArtHandle mesh, int32_t* iCount, int32_t* jCount);
  DWErr (*GetVertex)(DWArtHandle mesh, int32_t i, int32_t j, DWMeshVertex* vertex);
} DWMeshSuite;
#ifdef __cplusplus
}
#endif
#endif
