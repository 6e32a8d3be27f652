// "DW Group Suite": clip groups. A clipped group is drawn through the union of its children whose
// path style has the clipping flag.
#include "host/suites/group_suite.h"
#include "refhost/loader/HostCall.h"
#include "refhost/loader/SuiteProviders.h"
#include "refhost/suites/DocumentAccess.h"

namespace refhost {
namespace {

DWErr groupOf(DWArtHandle art, Art*& group) {
  group = liveArt(art);
  if (!group) return kHostBadParameter;
  return group->kind() == ArtKind::Group ? kDWNoErr : kHostWrongType;
}

DWErr GetGroupClipped(DWArtHandle group, DWBool* clipped) {
  REFHOST_CALL(kDWGroupSuite, "GetGroupClipped");
  Art* g = nullptr;
  if (const DWErr e = groupOf(group, g)) return e;
  if (!clipped) return kHostBadParameter;
  *clipped = g->isClipped() ? 1 : 0;
  return kDWNoErr;
}

DWErr SetGroupClipped(DWArtHandle group, DWBool clipped) {
  REFHOST_CALL(kDWGroupSuite, "SetGroupClipped");
  Art* g = nullptr;
  if (const DWErr e = groupOf(group, g)) return e;
  g->setClipped(clipped != 0);
  return kDWNoErr;
}

const DWGroupSuite kSuite = {GetGroupClipped, SetGroupClipped};
REFHOST_REGISTER_SUITE(kDWGroupSuite, kDWGroupSuiteVersion, kSuite);

}  // namespace
}  // namespace refhost
