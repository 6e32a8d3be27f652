#include "commands/MaskShapes.h"

#include <vector>

#include "commands/ArtTree.h"
#include "shell/ErrorCodes.h"
#include "shell/HostSuites.h"

namespace dw {

namespace {

DWPathSegment cornerAt(const DWRealPoint& p) {
  DWPathSegment segment{};
  segment.p = segment.in = segment.out = p;
  segment.corner = 1;
  return segment;
}

DWErr writeClosedPath(DWArtHandle path, const std::vector<DWPathSegment>& segments) {
  if (segments.size() > size_t(INT16_MAX)) return BadParameterError;
  const int16_t count = int16_t(segments.size());
  if (const DWErr e = gSuites.path->SetPathSegmentCount(path, count)) return e;
  if (count > 0) {
    if (const DWErr e = gSuites.path->SetPathSegments(path, 0, count, segments.data())) return e;
  }
  return gSuites.path->SetPathClosed(path, 1);
}

// Deletes a half-made path when filling it failed.
DWErr discardOnFailure(DWErr error, DWArtHandle& path) {
  if (error != kDWNoErr && path) {
    gSuites.art->DisposeArt(path);
    path = nullptr;
  }
  return error;
}

struct MeshEdge {
  int32_t i, j, direction;
};

// The grid's outer edges in turn, counter-clockwise from vertex (0, 0).
std::vector<MeshEdge> outerEdges(int32_t iCount, int32_t jCount) {
  std::vector<MeshEdge> edges;
  if (iCount < 2 || jCount < 2) return edges;
  for (int32_t i = 0; i < iCount - 1; ++i) edges.push_back({i, 0, kDWMeshIPlus});
  for (int32_t j = 0; j < jCount - 1; ++j) edges.push_back({iCount - 1, j, kDWMeshJPlus});
  for (int32_t i = iCount - 1; i > 0; --i) edges.push_back({i, jCount - 1, kDWMeshIMinus});
  for (int32_t j = jCount - 1; j > 0; --j) edges.push_back({0, j, kDWMeshJMinus});
  return edges;
}

DWErr selectTree(DWArtHandle art) {
  if (const DWErr e = setSelected(art, true)) return e;
  int16_t kind = 0;
  if (const DWErr e = artKind(art, kind)) return e;
  if (kind == kDWPluginGroupArt) {
    DWArtHandle edit = nullptr;
    if (const DWErr e = gSuites.pluginGroup->GetPluginArtEditArt(art, &edit)) return e;
    if (edit) {
      if (const DWErr e = selectTree(edit)) return e;
    }
  }
  DWArtHandle child = nullptr;
  if (const DWErr e = firstChild(art, child)) return e;
  while (child) {
    if (const DWErr e = selectTree(child)) return e;
    if (const DWErr e = nextSibling(child, child)) return e;
  }
  return kDWNoErr;
}

DWErr rebuildArtStyle(DWArtHandle path, const DWPathStyle& style) {
  const DWArtStyleParserSuite& parsers = *gSuites.artStyleParser;
  DWArtStyleHandle current = nullptr;
  if (const DWErr e = gSuites.artStyle->GetArtStyle(path, &current)) return e;
  DWStyleParser parser = nullptr;
  if (const DWErr e = parsers.NewParser(&parser)) return e;
  DWArtStyleHandle rebuilt = nullptr;
  DWErr error = parsers.ParseStyle(parser, current);
  if (error == kDWNoErr) error = parsers.SetFocusPathStyle(parser, &style);
  if (error == kDWNoErr) error = parsers.CreateNewStyle(parser, &rebuilt);
  parsers.DisposeParser(parser);
  if (error != kDWNoErr) return error;
  return gSuites.artStyle->SetArtStyle(path, rebuilt);
}

}  // namespace

DWErr makePlacedRectanglePath(DWArtHandle placed, DWArtHandle& path) {
  path = nullptr;
  DWRealRect bounds{};
  if (const DWErr e = gSuites.placed->GetPlacedBounds(placed, &bounds)) return e;
  DWRealMatrix matrix{};
  if (const DWErr e = gSuites.placed->GetPlacedMatrix(placed, &matrix)) return e;
  matrix.b = -matrix.b;
  matrix.c = -matrix.c;
  if (const DWErr e = gSuites.art->NewArt(kDWPathArt, kDWPlaceAboveAll, nullptr, &path)) return e;

  const DWRealPoint corners[4] = {
      {bounds.left, bounds.top}, {bounds.right, bounds.top}, {bounds.right, bounds.bottom}, {bounds.left, bounds.bottom}};
  std::vector<DWPathSegment> segments;
  for (const DWRealPoint& corner : corners) {
    DWRealPoint mapped{};
    gSuites.realMath->TransformPoint(&matrix, &corner, &mapped);
    segments.push_back(cornerAt(mapped));
  }
  return discardOnFailure(writeClosedPath(path, segments), path);
}

DWErr makeMeshOutlinePath(DWArtHandle mesh, int16_t paintOrder, DWArtHandle prep, DWArtHandle& path) {
  path = nullptr;
  if (const DWErr e = gSuites.art->NewArt(kDWPathArt, paintOrder, prep, &path)) return e;
  int32_t iCount = 0;
  int32_t jCount = 0;
  DWErr error = gSuites.mesh->GetGridSize(mesh, &iCount, &jCount);
  const std::vector<MeshEdge> edges = error == kDWNoErr ? outerEdges(iCount, jCount) : std::vector<MeshEdge>();

  // Anchor k starts edge k; its incoming control ends the edge before it.
  std::vector<DWPathSegment> segments(edges.size());
  for (size_t k = 0; k < edges.size() && error == kDWNoErr; ++k) {
    DWRealPoint bezier[4] = {};
    error = gSuites.meshSegment->GetEdge(mesh, edges[k].i, edges[k].j, edges[k].direction, bezier);
    if (error != kDWNoErr) break;
    segments[k].p = bezier[0];
    segments[k].out = bezier[1];
    segments[k].corner = 1;
    segments[(k + 1) % segments.size()].in = bezier[2];
  }
  if (error == kDWNoErr) error = writeClosedPath(path, segments);
  return discardOnFailure(error, path);
}

DWErr makeClippingPath(DWArtHandle art) {
  int16_t kind = 0;
  if (const DWErr e = artKind(art, kind)) return e;
  if (isContainer(kind)) {
    DWArtHandle child = nullptr;
    if (const DWErr e = firstChild(art, child)) return e;
    while (child) {
      if (const DWErr e = makeClippingPath(child)) return e;
      if (const DWErr e = nextSibling(child, child)) return e;
    }
    return kDWNoErr;
  }
  if (kind != kDWPathArt) return kDWNoErr;

  DWPathStyle style{};
  if (const DWErr e = gSuites.pathStyle->GetPathStyle(art, &style)) return e;
  style.fillPaint = 0;
  style.strokePaint = 0;
  style.clip = 1;
  if (const DWErr e = gSuites.pathStyle->SetPathStyle(art, &style)) return e;
  return rebuildArtStyle(art, style);
}

DWErr clearPreUnion(DWArtHandle root) {
  int16_t kind = 0;
  if (const DWErr e = artKind(root, kind)) return e;
  if (kind == kDWPathArt) {
    DWPathStyle style{};
    if (const DWErr e = gSuites.pathStyle->GetPathStyle(root, &style)) return e;
    if (!style.preUnion) return kDWNoErr;
    style.preUnion = 0;
    return gSuites.pathStyle->SetPathStyle(root, &style);
  }
  DWArtHandle child = nullptr;
  if (const DWErr e = firstChild(root, child)) return e;
  while (child) {
    if (const DWErr e = clearPreUnion(child)) return e;
    if (const DWErr e = nextSibling(child, child)) return e;
  }
  return kDWNoErr;
}

DWErr selectWithContents(DWArtHandle art) {
  if (const DWErr e = setSelected(art, true)) return e;
  int16_t kind = 0;
  if (const DWErr e = artKind(art, kind)) return e;
  if (kind != kDWPluginGroupArt) return kDWNoErr;
  DWArtHandle edit = nullptr;
  if (const DWErr e = gSuites.pluginGroup->GetPluginArtEditArt(art, &edit)) return e;
  return edit ? selectTree(edit) : kDWNoErr;
}

}  // namespace dw

