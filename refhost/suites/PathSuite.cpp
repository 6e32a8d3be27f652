// "DW Path Suite": the anchors of path art. Documents of this host hold no guides, so no path is
// one. Segment counts are 16-bit on the boundary: a longer path answers 'HPRM' when counted.
#include <algorithm>

#include "host/suites/path_suite.h"
#include "refhost/loader/HostCall.h"
#include "refhost/loader/SuiteProviders.h"
#include "refhost/suites/DocumentAccess.h"

namespace refhost {
namespace {

DWErr pathOf(DWArtHandle art, PathData*& path) {
  Art* a = liveArt(art);
  if (!a) return kHostBadParameter;
  path = a->path();
  return path ? kDWNoErr : kHostWrongType;
}

// The range first .. first + count - 1 lies within the path.
bool inRange(const PathData& path, int16_t first, int16_t count) {
  return first >= 0 && count >= 0 && size_t(first) + size_t(count) <= path.segments.size();
}

DWErr GetPathIsGuide(DWArtHandle path, DWBool* guide) {
  REFHOST_CALL(kDWPathSuite, "GetPathIsGuide");
  PathData* p = nullptr;
  if (const DWErr e = pathOf(path, p)) return e;
  if (!guide) return kHostBadParameter;
  *guide = 0;
  return kDWNoErr;
}

DWErr GetPathClosed(DWArtHandle path, DWBool* closed) {
  REFHOST_CALL(kDWPathSuite, "GetPathClosed");
  PathData* p = nullptr;
  if (const DWErr e = pathOf(path, p)) return e;
  if (!closed) return kHostBadParameter;
  *closed = p->closed ? 1 : 0;
  return kDWNoErr;
}

DWErr SetPathClosed(DWArtHandle path, DWBool closed) {
  REFHOST_CALL(kDWPathSuite, "SetPathClosed");
  PathData* p = nullptr;
  if (const DWErr e = pathOf(path, p)) return e;
  p->closed = closed != 0;
  return kDWNoErr;
}

DWErr GetPathSegmentCount(DWArtHandle path, int16_t* count) {
  REFHOST_CALL(kDWPathSuite, "GetPathSegmentCount");
  PathData* p = nullptr;
  if (const DWErr e = pathOf(path, p)) return e;
  if (!count || p->segments.size() > size_t(INT16_MAX)) return kHostBadParameter;
  *count = int16_t(p->segments.size());
  return kDWNoErr;
}

// New anchors are corners at the last anchor (at the origin for an empty path).
DWErr SetPathSegmentCount(DWArtHandle path, int16_t count) {
  REFHOST_CALL(kDWPathSuite, "SetPathSegmentCount");
  PathData* p = nullptr;
  if (const DWErr e = pathOf(path, p)) return e;
  if (count < 0) return kHostBadParameter;
  return guarded([&] {
    const PathSegment filler = p->segments.empty() ? PathSegment::at(0, 0) : PathSegment::at(p->segments.back().p);
    p->segments.resize(size_t(count), filler);
    return kDWNoErr;
  });
}

DWErr GetPathSegments(DWArtHandle path, int16_t first, int16_t count, DWPathSegment* segments) {
  REFHOST_CALL(kDWPathSuite, "GetPathSegments");
  PathData* p = nullptr;
  if (const DWErr e = pathOf(path, p)) return e;
  if (!inRange(*p, first, count) || (count > 0 && !segments)) return kHostBadParameter;
  for (int16_t i = 0; i < count; ++i) {
    const PathSegment& s = p->segments[size_t(first + i)];
    segments[i] = DWPathSegment{toRecord(s.p), toRecord(s.in), toRecord(s.out), s.corner ? 1 : 0};
  }
  return kDWNoErr;
}

DWErr SetPathSegments(DWArtHandle path, int16_t first, int16_t count, const DWPathSegment* segments) {
  REFHOST_CALL(kDWPathSuite, "SetPathSegments");
  PathData* p = nullptr;
  if (const DWErr e = pathOf(path, p)) return e;
  if (!inRange(*p, first, count) || (count > 0 && !segments)) return kHostBadParameter;
  for (int16_t i = 0; i < count; ++i) {
    const DWPathSegment& s = segments[i];
    p->segments[size_t(first + i)] = PathSegment{fromRecord(s.p), fromRecord(s.in), fromRecord(s.out), s.corner != 0};
  }
  return kDWNoErr;
}

const DWPathSuite kSuite = {GetPathIsGuide,      GetPathClosed,   SetPathClosed,  GetPathSegmentCount,
                            SetPathSegmentCount, GetPathSegments, SetPathSegments};
REFHOST_REGISTER_SUITE(kDWPathSuite, kDWPathSuiteVersion, kSuite);

}  // namespace
}  // namespace refhost
