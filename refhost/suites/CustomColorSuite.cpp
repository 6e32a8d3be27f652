// "DW Custom Color Suite": the document's named colours in creation order. A colour's handle is
// its document id, so handles order as the colours were made (the renderer's convention too).
#include <algorithm>
#include <cstring>

#include "host/suites/custom_color_suite.h"
#include "refhost/loader/HostCall.h"
#include "refhost/loader/SuiteProviders.h"
#include "refhost/render/HostHandles.h"
#include "refhost/suites/DocumentAccess.h"

namespace refhost {
namespace {

// A name longer than the record's field is cut at 63 bytes.
DWErr GetCustomColor(DWCustomColorHandle color, DWCustomColorInfo* info) {
  REFHOST_CALL(kDWCustomColorSuite, "GetCustomColor");
  const Document* doc = openDocument();
  const CustomColor* c = doc ? doc->customColor(render::customColorId(color)) : nullptr;
  if (!c || !info) return kHostBadParameter;
  *info = DWCustomColorInfo{};
  std::memcpy(info->name, c->name.data(), std::min(c->name.size(), sizeof info->name - 1));
  info->kind = c->kind == CustomColor::Kind::Spot ? kDWCustomSpot : kDWCustomProcess;
  info->alternate = DWFourColor{c->cmyk[0], c->cmyk[1], c->cmyk[2], c->cmyk[3]};
  return kDWNoErr;
}

DWErr CountCustomColors(int32_t* count) {
  REFHOST_CALL(kDWCustomColorSuite, "CountCustomColors");
  const Document* doc = openDocument();
  if (!doc) return kHostNotFound;
  if (!count) return kHostBadParameter;
  *count = int32_t(doc->customColors().size());
  return kDWNoErr;
}

DWErr GetNthCustomColor(int32_t index, DWCustomColorHandle* color) {
  REFHOST_CALL(kDWCustomColorSuite, "GetNthCustomColor");
  const Document* doc = openDocument();
  if (!doc) return kHostNotFound;
  if (!color || index < 0 || size_t(index) >= doc->customColors().size()) return kHostBadParameter;
  *color = render::customColorHandle(doc->customColors()[size_t(index)].id);
  return kDWNoErr;
}

const DWCustomColorSuite kSuite = {GetCustomColor, CountCustomColors, GetNthCustomColor};
REFHOST_REGISTER_SUITE(kDWCustomColorSuite, kDWCustomColorSuiteVersion, kSuite);

}  // namespace
}  // namespace refhost
