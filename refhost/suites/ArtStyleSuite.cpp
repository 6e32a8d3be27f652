// "DW Art Style Suite": the appearance attached to art (live effects, a paint of its own). When a
// style moves from an art onto art inside it, as a layer's appearance moves onto a group that
// takes the layer's contents, the style stays the appearance of the art it came from: that art
// becomes its owner.
#include <memory>

#include "host/suites/art_style_suite.h"
#include "refhost/loader/HostCall.h"
#include "refhost/loader/SuiteProviders.h"
#include "refhost/suites/ArtStyleHandles.h"
#include "refhost/suites/DocumentAccess.h"

namespace refhost {
namespace {

ArtStylePtr ownedByCarrier(const Art& target, const ArtStylePtr& style) {
  if (style->owner) return style;
  for (Art* ancestor = target.parent(); ancestor; ancestor = ancestor->parent()) {
    if (ancestor->artStyle() == style) {
      auto owned = std::make_shared<ArtStyle>(*style);
      owned->owner = ancestor;
      return owned;
    }
  }
  return style;
}

DWErr GetArtStyle(DWArtHandle art, DWArtStyleHandle* style) {
  REFHOST_CALL(kDWArtStyleSuite, "GetArtStyle");
  const Art* a = liveArt(art);
  if (!a || !style) return kHostBadParameter;
  return guarded([&] {
    *style = artStyleHandle(a->artStyle());
    return kDWNoErr;
  });
}

DWErr SetArtStyle(DWArtHandle art, DWArtStyleHandle style) {
  REFHOST_CALL(kDWArtStyleSuite, "SetArtStyle");
  Art* a = liveArt(art);
  const ArtStylePtr s = style ? artStyleOf(style) : nullptr;
  if (!a || (style && !s)) return kHostBadParameter;
  return guarded([&] {
    a->setArtStyle(s ? ownedByCarrier(*a, s) : nullptr);
    return kDWNoErr;
  });
}

// Null for art without a style, and when the owning art has been deleted.
DWErr GetStyleOwner(DWArtHandle art, DWArtHandle* owner) {
  REFHOST_CALL(kDWArtStyleSuite, "GetStyleOwner");
  const Art* a = liveArt(art);
  if (!a || !owner) return kHostBadParameter;
  const Art* o = a->artStyleOwner();
  *owner = o && o->isAlive() ? artHandle(o) : nullptr;
  return kDWNoErr;
}

const DWArtStyleSuite kSuite = {GetArtStyle, SetArtStyle, GetStyleOwner};
REFHOST_REGISTER_SUITE(kDWArtStyleSuite, kDWArtStyleSuiteVersion, kSuite);

}  // namespace
}  // namespace refhost
