// "DW Pathfinder Suite": unites shapes into one path, or a compound path of paths when the union
// has several contours (holes or separate pieces). Curves are flattened finely (ShapeUnion.h), so
// the result has corner anchors only. The shapes are those the request names, or else the
// selected ones: selected objects none of whose containers is selected, paths, compound paths and
// groups holding paths. The result takes the place of the first of them (just above it, with its
// style and selection) and the shapes are deleted. The request's numbers tune other hosts'
// operations and are not read.
#include <algorithm>
#include <vector>

#include "host/suites/pathfinder_suite.h"
#include "refhost/loader/HostCall.h"
#include "refhost/loader/SuiteProviders.h"
#include "refhost/suites/DocumentAccess.h"
#include "refhost/suites/ShapeUnion.h"

namespace refhost {
namespace {

bool shapeKind(const Art& art) {
  return art.kind() == ArtKind::Path || art.kind() == ArtKind::CompoundPath || art.kind() == ArtKind::Group;
}

const Art* firstPathIn(const Art& art) {
  if (art.kind() == ArtKind::Path || art.kind() == ArtKind::CompoundPath) return &art;
  for (const Art* c = art.firstChild(); c; c = c->nextSibling())
    if (const Art* found = firstPathIn(*c)) return found;
  return nullptr;
}

void collectSelected(Art* art, std::vector<Art*>& out) {
  for (Art* c = art->firstChild(); c; c = c->nextSibling()) {
    if (!c->isSelected()) {
      collectSelected(c, out);
    } else if (shapeKind(*c) && firstPathIn(*c)) {
      out.push_back(c);
    }
  }
}

DWErr namedShapes(const DWPathfinderRequest& request, std::vector<Art*>& shapes) {
  if (request.shapeCount < 0 || (request.shapeCount > 0 && !request.shapes)) return kHostBadParameter;
  for (int32_t i = 0; i < request.shapeCount; ++i) {
    Art* a = liveArt(request.shapes[i]);
    if (!a) return kHostBadParameter;
    if (!shapeKind(*a)) return kHostWrongType;
    if (std::find(shapes.begin(), shapes.end(), a) == shapes.end()) shapes.push_back(a);
  }
  return kDWNoErr;
}

// The style the result paints with: the first shape's, its paths sharing it when compound.
PathStyle resultStyle(const Art& first) {
  const Art* source = firstPathIn(first);
  const Art* holder = source ? source : &first;
  while (holder->parent() && holder->parent()->kind() == ArtKind::CompoundPath) holder = holder->parent();
  PathStyle style = holder->pathStyle();
  style.fillRule = FillRule::NonZero;
  style.preUnion = false;
  return style;
}

Art* newPath(Document& doc, const Contour& contour, PaintOrder order, Art* prep, const PathStyle& style) {
  Art* path = doc.newArt(ArtKind::Path, order, prep);
  PathData& data = *path->path();
  for (const Point& p : contour) data.segments.push_back(PathSegment::at(p));
  data.closed = true;
  path->setPathStyle(style);
  return path;
}

Art* placeResult(Document& doc, const std::vector<Contour>& contours, Art* first, const PathStyle& style) {
  if (contours.size() <= 1) return newPath(doc, contours.empty() ? Contour{} : contours[0], PaintOrder::Above, first, style);
  Art* compound = doc.newArt(ArtKind::CompoundPath, PaintOrder::Above, first);
  compound->setPathStyle(style);
  for (const Contour& contour : contours) newPath(doc, contour, PaintOrder::InsideOnBottom, compound, style);
  return compound;
}

DWErr Unite(DWPathfinderRequest* request, void*) {
  REFHOST_CALL(kDWPathfinderSuite, "Unite");
  Document* doc = openDocument();
  if (!doc || !request) return kHostBadParameter;
  std::vector<Art*> shapes;
  if (const DWErr e = namedShapes(*request, shapes)) return e;
  if (shapes.empty())
    for (Layer* layer : doc->layers()) collectSelected(layer->group(), shapes);
  if (shapes.empty()) return kHostNotFound;
  for (const Art* shape : shapes)
    if (!shape->parent() || shape->parent()->kind() == ArtKind::PluginGroup) return kHostBadParameter;

  return guarded([&] {
    std::vector<FilledShape> filled;
    for (const Art* shape : shapes) collectShapes(*shape, filled);
    // Everything is computed before the document changes, so a failure leaves it as it was.
    const std::vector<Contour> contours = uniteShapes(filled);
    // A shape inside another one goes with it, so the result takes the outer one's place.
    Art* first = shapes.front();
    for (Art* shape : shapes)
      if (shape->isAncestorOf(first)) first = shape;
    Art* result = placeResult(*doc, contours, first, resultStyle(*shapes.front()));
    if (first->isSelected()) Document::setSelected(result, true);
    for (Art* shape : shapes)
      if (shape->isAlive()) doc->disposeArt(shape);
    return kDWNoErr;
  });
}

const DWPathfinderSuite kSuite = {Unite};
REFHOST_REGISTER_SUITE(kDWPathfinderSuite, kDWPathfinderSuiteVersion, kSuite);

}  // namespace
}  // namespace refhost
