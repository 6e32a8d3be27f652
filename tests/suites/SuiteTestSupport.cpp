#include "SuiteTestSupport.h"

#include <memory>

namespace suitetest {

namespace {
Document& openFresh(Host& host) {
  host.setDocument(std::make_unique<Document>());
  return *host.document();
}
}  // namespace

SuiteTest::SuiteTest() : doc(openFresh(host)), layer(doc.newLayer("Layer 1")) {}

Art* SuiteTest::rect(double left, double bottom, double right, double top, PaintOrder order, Art* prep) {
  Art* path = doc.newArt(ArtKind::Path, order, prep);
  path->path()->segments = {PathSegment::at(left, bottom), PathSegment::at(right, bottom), PathSegment::at(right, top),
                            PathSegment::at(left, top)};
  path->path()->closed = true;
  path->pathStyle().fillPaint = true;
  path->pathStyle().fill = Paint::gray(1.0);
  return path;
}

Art* SuiteTest::group(PaintOrder order, Art* prep) { return doc.newArt(ArtKind::Group, order, prep); }

}  // namespace suitetest
