// "DW Plugin Group Suite": a plug-in group's edit art (what the user edits) and result art (what
// is drawn); both are groups whose parent is the plug-in group but which are not its children.
#include "host/suites/plugin_group_suite.h"
#include "refhost/loader/HostCall.h"
#include "refhost/loader/SuiteProviders.h"
#include "refhost/suites/DocumentAccess.h"

namespace refhost {
namespace {

DWErr groupOf(DWArtHandle art, const PluginGroupData*& group) {
  const Art* a = liveArt(art);
  if (!a) return kHostBadParameter;
  group = a->pluginGroup();
  return group ? kDWNoErr : kHostWrongType;
}

DWErr GetPluginArtResultArt(DWArtHandle art, DWArtHandle* result) {
  REFHOST_CALL(kDWPluginGroupSuite, "GetPluginArtResultArt");
  const PluginGroupData* g = nullptr;
  if (const DWErr e = groupOf(art, g)) return e;
  if (!result) return kHostBadParameter;
  *result = artHandle(g->resultArt);
  return kDWNoErr;
}

DWErr GetPluginArtEditArt(DWArtHandle art, DWArtHandle* edit) {
  REFHOST_CALL(kDWPluginGroupSuite, "GetPluginArtEditArt");
  const PluginGroupData* g = nullptr;
  if (const DWErr e = groupOf(art, g)) return e;
  if (!edit) return kHostBadParameter;
  *edit = artHandle(g->editArt);
  return kDWNoErr;
}

const DWPluginGroupSuite kSuite = {GetPluginArtResultArt, GetPluginArtEditArt};
REFHOST_REGISTER_SUITE(kDWPluginGroupSuite, kDWPluginGroupSuiteVersion, kSuite);

}  // namespace
}  // namespace refhost
