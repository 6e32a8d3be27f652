// "QK Plug-ins Suite": the host's list of plug-ins; a plug-in names itself here.
#include "host/suites/plugins_suite.h"
#include "refhost/loader/HostCall.h"
#include "refhost/loader/SuiteProviders.h"

namespace refhost {
namespace {

DWErr SetPluginName(DWPluginRef ref, const char* name) {
  REFHOST_CALL(kDWPluginsSuite, "SetPluginName");
  return guarded([&] {
    Plugin* plugin = Host::current().plugin(ref);
    if (!plugin || !name || !*name) return kHostBadParameter;
    Host::current().renamePlugin(*plugin, name);
    return kDWNoErr;
  });
}

const DWPluginsSuite kSuite = {SetPluginName};
REFHOST_REGISTER_SUITE(kDWPluginsSuite, kDWPluginsSuiteVersion, kSuite);

}  // namespace
}  // namespace refhost
