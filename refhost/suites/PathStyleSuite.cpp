// "DW Path Style Suite": fill and stroke of art. The paths of a compound path share one style,
// the outermost compound path's: reading a member reads it, writing a member writes it and every
// member, so a compound path becomes a clipping path when its paths do.
#include "host/suites/path_style_suite.h"
#include "refhost/document/Bounds.h"
#include "refhost/loader/HostCall.h"
#include "refhost/loader/SuiteProviders.h"
#include "refhost/suites/DocumentAccess.h"
#include "refhost/suites/PaintRecords.h"

namespace refhost {
namespace {

Art* styleHolder(Art* art) {
  while (art->parent() && art->parent()->kind() == ArtKind::CompoundPath) art = art->parent();
  return art;
}

DWErr GetPathStyle(DWArtHandle art, DWPathStyle* style) {
  REFHOST_CALL(kDWPathStyleSuite, "GetPathStyle");
  Art* a = liveArt(art);
  if (!a || !style) return kHostBadParameter;
  return guarded([&] {
    const Art* holder = styleHolder(a);
    *style = toStyleRecord(holder->pathStyle(), artBounds(*holder));
    return kDWNoErr;
  });
}

DWErr SetPathStyle(DWArtHandle art, const DWPathStyle* style) {
  REFHOST_CALL(kDWPathStyleSuite, "SetPathStyle");
  Art* a = liveArt(art);
  if (!a || !style) return kHostBadParameter;
  return guarded([&] {
    Art* holder = styleHolder(a);
    PathStyle updated = holder->pathStyle();
    if (const DWErr e = fromStyleRecord(*style, a->document(), artBounds(*holder), updated)) return e;
    if (holder->kind() == ArtKind::CompoundPath)
      Document::forEachArtIn(holder, [&updated](Art* member) { member->setPathStyle(updated); });
    else
      holder->setPathStyle(updated);
    return kDWNoErr;
  });
}

const DWPathStyleSuite kSuite = {GetPathStyle, SetPathStyle};
REFHOST_REGISTER_SUITE(kDWPathStyleSuite, kDWPathStyleSuiteVersion, kSuite);

}  // namespace
}  // namespace refhost
