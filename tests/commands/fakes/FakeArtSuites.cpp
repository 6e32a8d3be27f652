#include "fakes/FakeArtSuites.h"

#include <algorithm>
#include <cmath>
#include <functional>

#include "fakes/FakeArtHost.h"
#include "shell/HostSuites.h"

namespace fake {

namespace {

using namespace detail;

// ---- Art styles ----
FAKE_GET(GetArtStyle, DWArtStyleHandle, reinterpret_cast<DWArtStyleHandle>(A(art)->style))
FAKE_SET(SetArtStyle, DWArtStyleHandle, A(art)->style = reinterpret_cast<Style*>(value))
FAKE_GET(GetStyleOwner, DWArtHandle,
         H(A(art)->styleOwner ? A(art)->styleOwner : A(art)->style ? A(art)->style->owner : nullptr))
const DWArtStyleSuite kArtStyle = {GetArtStyle, SetArtStyle, GetStyleOwner};

struct Parser {
  Style* parsed = nullptr;
  DWPathStyle focus{};
};
DWErr NewParser(DWStyleParser* parser) {
  FAKE_CHECK("NewParser");
  ++tree().liveParsers;
  *parser = reinterpret_cast<DWStyleParser>(new Parser);
  return kDWNoErr;
}
DWErr ParseStyle(DWStyleParser parser, DWArtStyleHandle style) {
  FAKE_CHECK("ParseStyle");
  reinterpret_cast<Parser*>(parser)->parsed = reinterpret_cast<Style*>(style);
  return kDWNoErr;
}
DWErr SetFocusPathStyle(DWStyleParser parser, const DWPathStyle* style) {
  reinterpret_cast<Parser*>(parser)->focus = *style;
  return kDWNoErr;
}
DWErr CreateNewStyle(DWStyleParser parser, DWArtStyleHandle* style) {
  FAKE_CHECK("CreateNewStyle");
  const Parser& p = *reinterpret_cast<Parser*>(parser);
  *style = reinterpret_cast<DWArtStyleHandle>(
      tree().newStyle(std::string(p.focus.clip ? "clip" : "paint") + " from " + (p.parsed ? p.parsed->name : "none")));
  return kDWNoErr;
}
DWErr DisposeParser(DWStyleParser parser) {
  --tree().liveParsers;
  delete reinterpret_cast<Parser*>(parser);
  return kDWNoErr;
}
const DWArtStyleParserSuite kParser = {NewParser, ParseStyle, SetFocusPathStyle, CreateNewStyle, DisposeParser};

// ---- Groups ----
FAKE_GET_OF(kDWGroupArt, GetGroupClipped, DWBool, A(art)->clipped)
FAKE_SET_OF(kDWGroupArt, SetGroupClipped, DWBool, A(art)->clipped = value != 0)
const DWGroupSuite kGroup = {GetGroupClipped, SetGroupClipped};

// ---- Paths ----
FAKE_GET_OF(kDWPathArt, GetPathIsGuide, DWBool, A(art)->guide)
FAKE_GET_OF(kDWPathArt, GetPathClosed, DWBool, A(art)->closed)
FAKE_SET_OF(kDWPathArt, SetPathClosed, DWBool, A(art)->closed = value != 0)
DWErr GetPathSegmentCount(DWArtHandle path, int16_t* count) {
  FAKE_LIVE(path);
  *count = int16_t(A(path)->segments.size());
  return kDWNoErr;
}
FAKE_SET_OF(kDWPathArt, SetPathSegmentCount, int16_t, A(art)->segments.resize(size_t(value)))
DWErr GetPathSegments(DWArtHandle path, int16_t first, int16_t count, DWPathSegment* segments) {
  FAKE_LIVE(path);
  std::copy_n(A(path)->segments.begin() + first, count, segments);
  return kDWNoErr;
}
DWErr SetPathSegments(DWArtHandle path, int16_t first, int16_t count, const DWPathSegment* segments) {
  FAKE_CHECK("SetPathSegments");
  FAKE_LIVE(path);
  if (size_t(first) + size_t(count) > A(path)->segments.size()) return kBadPlace;
  std::copy_n(segments, count, A(path)->segments.begin() + first);
  return kDWNoErr;
}
const DWPathSuite kPath = {GetPathIsGuide,      GetPathClosed,   SetPathClosed,  GetPathSegmentCount,
                           SetPathSegmentCount, GetPathSegments, SetPathSegments};

FAKE_GET(GetPathStyle, DWPathStyle, A(art)->pathStyle)
FAKE_SET(SetPathStyle, const DWPathStyle*, A(art)->pathStyle = *value)
const DWPathStyleSuite kPathStyle = {GetPathStyle, SetPathStyle};

// ---- Placed art, plug-in groups, meshes ----
FAKE_GET_OF(kDWPlacedArt, GetPlacedBounds, DWRealRect, A(art)->placedBounds)
DWErr GetPlacedMatrix(DWArtHandle placed, DWRealMatrix* matrix) {
  FAKE_LIVE(placed);
  FAKE_KIND(placed, kDWPlacedArt);
  *matrix = A(placed)->placedMatrix;
  return kDWNoErr;
}
const DWPlacedSuite kPlaced = {GetPlacedBounds, GetPlacedMatrix};

FAKE_GET_OF(kDWPluginGroupArt, GetPluginArtResultArt, DWArtHandle, H(A(art)->result))
DWErr GetPluginArtEditArt(DWArtHandle art, DWArtHandle* edit) {
  FAKE_LIVE(art);
  FAKE_KIND(art, kDWPluginGroupArt);
  *edit = H(A(art)->edit);
  return kDWNoErr;
}
const DWPluginGroupSuite kPluginGroup = {GetPluginArtResultArt, GetPluginArtEditArt};

DWRealPoint meshPoint(const Art* mesh, int32_t i, int32_t j) {
  const DWRealRect& b = mesh->bounds;
  return {b.left + (b.right - b.left) * i / (mesh->meshI - 1), b.bottom + (b.top - b.bottom) * j / (mesh->meshJ - 1)};
}
DWErr GetGridSize(DWArtHandle mesh, int32_t* i, int32_t* j) {
  FAKE_CHECK("GetGridSize");
  FAKE_LIVE(mesh);
  FAKE_KIND(mesh, kDWMeshArt);
  *i = A(mesh)->meshI;
  *j = A(mesh)->meshJ;
  return kDWNoErr;
}
DWErr GetVertex(DWArtHandle, int32_t, int32_t, DWMeshVertex*) { return kInjected; }
const DWMeshSuite kMesh = {GetGridSize, GetVertex};
DWErr GetEdge(DWArtHandle mesh, int32_t i, int32_t j, int32_t direction, DWRealPoint bezier[4]) {
  FAKE_CHECK("GetEdge");
  FAKE_LIVE(mesh);
  const int32_t di[4] = {1, 0, -1, 0};
  const int32_t dj[4] = {0, 1, 0, -1};
  const Art* m = A(mesh);
  const int32_t ti = i + di[direction], tj = j + dj[direction];
  if (i < 0 || j < 0 || ti < 0 || tj < 0 || i >= m->meshI || ti >= m->meshI || j >= m->meshJ || tj >= m->meshJ)
    return kBadPlace;
  const DWRealPoint from = meshPoint(m, i, j), to = meshPoint(m, ti, tj);
  bezier[0] = from;
  bezier[1] = {from.h + (to.h - from.h) / 3, from.v + (to.v - from.v) / 3};
  bezier[2] = {from.h + 2 * (to.h - from.h) / 3, from.v + 2 * (to.v - from.v) / 3};
  bezier[3] = to;
  return kDWNoErr;
}
const DWMeshSegmentSuite kMeshSegment = {GetEdge};
DWErr GetPoint(DWMeshVertex, DWRealPoint*) { return kInjected; }
DWErr GetTangent(DWMeshVertex, int32_t, DWRealPoint*) { return kInjected; }
const DWMeshVertexSuite kMeshVertex = {GetPoint, GetTangent};

// ---- Real math ----
DWBool EqualWithinTol(double a, double b, double t) { return a - b <= t && b - a <= t; }
void SetMatrixScale(DWRealMatrix* m, double h, double v) { *m = {h, 0, 0, v, 0, 0}; }
void ConcatTranslate(DWRealMatrix* m, double tx, double ty) {
  m->tx += tx;
  m->ty += ty;
}
void SetRect(DWRealRect* r, double l, double t, double rr, double b) { *r = {l, t, rr, b}; }
DWBool IsRectEmpty(const DWRealRect* r) { return r->right <= r->left || r->top <= r->bottom; }
void UnionRect(const DWRealRect* a, const DWRealRect* b, DWRealRect* out) {
  *out = {std::min(a->left, b->left), std::max(a->top, b->top), std::max(a->right, b->right),
          std::min(a->bottom, b->bottom)};
}
void TransformPoint(const DWRealMatrix* m, const DWRealPoint* p, DWRealPoint* out) {
  *out = {m->a * p->h + m->c * p->v + m->tx, m->b * p->h + m->d * p->v + m->ty};
}
double VectorLength(double h, double v) { return std::sqrt(h * h + v * v); }
void SetIdentityMatrix(DWRealMatrix* m) { *m = {1, 0, 0, 1, 0, 0}; }
void ConcatScale(DWRealMatrix* m, double h, double v) {
  *m = {m->a * h, m->b * v, m->c * h, m->d * v, m->tx * h, m->ty * v};
}
void ConcatMatrix(const DWRealMatrix* m, const DWRealMatrix* n, DWRealMatrix* r) {
  *r = {m->a * n->a + m->b * n->c,         m->a * n->b + m->b * n->d,         m->c * n->a + m->d * n->c,
        m->c * n->b + m->d * n->d,         m->tx * n->a + m->ty * n->c + n->tx, m->tx * n->b + m->ty * n->d + n->ty};
}
const DWRealMathSuite kRealMath = {EqualWithinTol, SetMatrixScale, ConcatTranslate, SetRect,
                                   IsRectEmpty,    UnionRect,      TransformPoint,  VectorLength,
                                   SetIdentityMatrix, ConcatScale, ConcatMatrix};

// ---- Artboards ----
DWErr GetArtboardList(DWArtboardList* list) {
  if (!tree().artboardListAvailable) return kInjected;
  *list = reinterpret_cast<DWArtboardList>(&tree().artboard);
  return kDWNoErr;
}
DWErr ReleaseArtboardList(DWArtboardList) { return kDWNoErr; }
DWErr GetActiveArtboardIndex(DWArtboardList, int32_t* index) {
  if (tree().activeIndexFails) return kInjected;
  *index = 0;
  return kDWNoErr;
}
DWErr GetArtboardProperties(DWArtboardList list, int32_t, DWArtboardProperties* properties) {
  *properties = reinterpret_cast<DWArtboardProperties>(list);
  return kDWNoErr;
}
DWErr GetArtboardBounds(DWArtboardProperties properties, DWRealRect* bounds) {
  *bounds = *reinterpret_cast<DWRealRect*>(properties);
  return kDWNoErr;
}
DWErr DisposeArtboardProperties(DWArtboardProperties) { return kDWNoErr; }
const DWArtboardSuite kArtboard = {GetArtboardList,       ReleaseArtboardList, GetActiveArtboardIndex,
                                   GetArtboardProperties, GetArtboardBounds,   DisposeArtboardProperties};

// ---- Pattern editing and perspective ----
DWBool GetEditedPatternArt(int32_t, DWArtHandle* art) {
  *art = H(tree().editedPattern);
  return tree().editedPattern != nullptr;
}
const DWPatternSuite kPattern = {GetEditedPatternArt};
DWBool IsPerspectiveArt(DWArtHandle art) { return A(art)->perspective; }
const DWPerspectiveTransformSuite kPerspective = {IsPerspectiveArt};

// ---- Blend style: only the flag the live effect sets on its rasters ----
FAKE_SET(SetBlendFlag, int32_t, A(art)->blendFlag = value)
uint32_t GetBlendValue(DWArtHandle) { return 0; }
uint32_t GetDocumentBlendValue() { return 0; }
const DWBlendStyleSuite kBlendStyle = {SetBlendFlag, GetBlendValue, GetDocumentBlendValue};

// ---- Pathfinder ----
void collectPaths(Art* art, std::vector<Art*>& paths) {
  if (art->kind == kDWPathArt) paths.push_back(art);
  for (Art* child : art->children) collectPaths(child, paths);
}

bool overlap(const DWRealRect& a, const DWRealRect& b) {
  return a.left < b.right && b.left < a.right && a.bottom < b.top && b.bottom < a.top;
}

Art* rectanglePath(const DWRealRect& r, const DWPathStyle& style) {
  Art* path = tree().rectangle(nullptr, "united", r.left, r.top, r.right, r.bottom);
  path->pathStyle = style;
  return path;
}

DWErr Unite(DWPathfinderRequest* request, void* message) {
  FAKE_CHECK("Unite");
  std::vector<Art*> shapes;
  if (request->shapeCount > 0) {
    for (int32_t i = 0; i < request->shapeCount; ++i) shapes.push_back(A(request->shapes[i]));
  } else {
    shapes = tree().topmostSelected();
  }
  UniteCall call{*request, message, {}};
  for (Art* shape : shapes) call.shapes.push_back(shape->name);
  tree().uniteCalls.push_back(call);

  std::vector<Art*> paths;
  for (Art* shape : shapes) collectPaths(shape, paths);
  if (paths.empty()) return kDWNoErr;

  // Connected groups of overlapping rectangles, each becoming one rectangle of their union.
  std::vector<DWRealRect> parts;
  for (Art* path : paths) {
    DWRealRect r = tree().boundsOf(path);
    for (auto it = parts.begin(); it != parts.end();) {
      if (overlap(*it, r)) {
        UnionRect(&r, &*it, &r);
        it = parts.erase(it);
      } else {
        ++it;
      }
    }
    parts.push_back(r);
  }
  const DWPathStyle style = paths.front()->pathStyle;
  Art* united = nullptr;
  if (parts.size() == 1 && !tree().uniteGivesGroup) {
    united = rectanglePath(parts[0], style);
  } else {
    united = tree().add(nullptr, tree().uniteGivesGroup ? kDWGroupArt : kDWCompoundPathArt, "united");
    for (const DWRealRect& part : parts) {
      Art* piece = rectanglePath(part, style);
      piece->parent = united;
      united->children.push_back(piece);
    }
  }
  if (const DWErr e = tree().insert(united, kDWPlaceAbove, shapes.front())) return e;
  for (Art* shape : shapes) {
    tree().detach(shape);
    tree().kill(shape);
  }
  return kDWNoErr;
}
const DWPathfinderSuite kPathfinder = {Unite};

}  // namespace

void installArtSuites() {
  dw::gSuites.artStyle = &kArtStyle;
  dw::gSuites.artStyleParser = &kParser;
  dw::gSuites.group = &kGroup;
  dw::gSuites.path = &kPath;
  dw::gSuites.pathStyle = &kPathStyle;
  dw::gSuites.placed = &kPlaced;
  dw::gSuites.pluginGroup = &kPluginGroup;
  dw::gSuites.mesh = &kMesh;
  dw::gSuites.meshSegment = &kMeshSegment;
  dw::gSuites.meshVertex = &kMeshVertex;
  dw::gSuites.realMath = &kRealMath;
  dw::gSuites.artboard = &kArtboard;
  dw::gSuites.pattern = &kPattern;
  dw::gSuites.pathfinder = &kPathfinder;
  dw::gSuites.blendStyle = &kBlendStyle;
}

void FakeArtHost::holdPerspectiveSuite(bool held) { dw::gSuites.perspectiveTransform = held ? &kPerspective : nullptr; }
void FakeArtHost::holdPathfinderSuite(bool held) { dw::gSuites.pathfinder = held ? &kPathfinder : nullptr; }

}  // namespace fake
