// "DW Blend Style Suite": transparency. This host composites every object with its alpha (raster
// alpha channels included), so the blend flag needs no storing; an object is an isolated group
// when its opacity is below 1, and the document has transparency when any object is transparent.
#include "host/suites/blend_style_suite.h"
#include "refhost/loader/HostCall.h"
#include "refhost/loader/SuiteProviders.h"
#include "refhost/suites/DocumentAccess.h"

namespace refhost {
namespace {

const PathStyle& paintOf(const Art& art) {
  const ArtStylePtr& style = art.artStyle();
  return style && style->hasPaint ? style->paint : art.pathStyle();
}

bool gradientFades(const Paint& paint) {
  if (!paint.gradient) return false;
  for (const GradientStop& stop : paint.gradient->stops)
    if (stop.opacity < 1.0) return true;
  return false;
}

bool transparent(const Art& art) {
  const PathStyle& s = paintOf(art);
  if (s.opacity < 1.0) return true;
  if (s.fillPaint && (s.fillOpacity < 1.0 || gradientFades(s.fill))) return true;
  if (s.strokePaint && (s.strokeOpacity < 1.0 || gradientFades(s.stroke))) return true;
  const RasterData* raster = art.raster();
  return raster && (raster->record.colorSpace & 0x10) != 0;
}

DWErr SetBlendFlag(DWArtHandle art, int32_t flag) {
  REFHOST_CALL(kDWBlendStyleSuite, "SetBlendFlag");
  if (!liveArt(art) || (flag != 0 && flag != 1)) return kHostBadParameter;
  return kDWNoErr;
}

uint32_t GetBlendValue(DWArtHandle art) {
  const Art* a = liveArt(art);
  return a && paintOf(*a).opacity < 1.0 ? 1 : 0;
}

uint32_t GetDocumentBlendValue() {
  const Document* doc = openDocument();
  if (!doc) return 0;
  bool any = false;
  doc->forEachArt([&any](Art* a) { any = any || (!a->isHidden() && transparent(*a)); });
  return any ? 1 : 0;
}

const DWBlendStyleSuite kSuite = {SetBlendFlag, GetBlendValue, GetDocumentBlendValue};
REFHOST_REGISTER_SUITE(kDWBlendStyleSuite, kDWBlendStyleSuiteVersion, kSuite);

}  // namespace
}  // namespace refhost
