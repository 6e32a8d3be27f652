// "DW FO Conversion Suite": the colour visit (ColorUses.h says what is reported).
#include "host/suites/fo_conversion_suite.h"
#include "refhost/loader/HostCall.h"
#include "refhost/loader/SuiteProviders.h"
#include "refhost/suites/ColorUses.h"
#include "refhost/suites/DocumentAccess.h"

namespace refhost {
namespace {

DWErr VisitColors(DWArtHandle art, DWColorVisitProc visit, void* context) {
  REFHOST_CALL(kDWFOConversionSuite, "VisitColors");
  const Art* a = liveArt(art);
  if (!a || !visit) return kHostBadParameter;
  return guarded([&] {
    visitColorUses(*a, [&](int32_t kind, const DWColorUse& use) { visit(kind, &use, context); });
    return kDWNoErr;
  });
}

const DWFOConversionSuite kSuite = {VisitColors};
REFHOST_REGISTER_SUITE(kDWFOConversionSuite, kDWFOConversionSuiteVersion, kSuite);

}  // namespace
}  // namespace refhost
