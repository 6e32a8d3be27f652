/* Edges of a mesh as Bezier segments. */
#ifndef DW_MESH_SEGMENT_SUITE_H
#define DW_MESH_SEGMENT_SUITE_H
#include "mesh_suite.h"
#ifdef __cplusplus
extern "C" {
#endif
#define kDWMeshSegmentSuite "DW Mesh Segment Suite"
#define kDWMeshSegmentSuiteVersion 3

typedef struct DWMeshSegmentSuite {
  /* The edge from vertex (i, j) in a direction (see the vertex suite): start, two controls, end. */
  DWErr (*GetEdge)(DWArtHandle mesh, int32_t i, int32_t j, int32_t direction, DWRealPoint bezier[4]);
} DWMeshSegmentSuite;
#ifdef __cplusplus
}
#endif
#endif
