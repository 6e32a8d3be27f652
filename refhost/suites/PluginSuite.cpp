// "DW Plugin Suite": per-plug-in option bits (their meaning is the host's; kept, not acted on).
#include "host/suites/plugin_suite.h"
#include "refhost/loader/HostCall.h"
#include "refhost/loader/SuiteProviders.h"

namespace refhost {
namespace {

DWErr GetPluginOptions(DWPluginRef ref, uint32_t* options) {
  REFHOST_CALL(kDWPluginSuite, "GetPluginOptions");
  Plugin* plugin = Host::current().plugin(ref);
  if (!plugin || !options) return kHostBadParameter;
  *options = plugin->options();
  return kDWNoErr;
}

DWErr SetPluginOptions(DWPluginRef ref, uint32_t options) {
  REFHOST_CALL(kDWPluginSuite, "SetPluginOptions");
  Plugin* plugin = Host::current().plugin(ref);
  if (!plugin) return kHostBadParameter;
  Host::current().setPluginOptions(*plugin, options);
  return kDWNoErr;
}

const DWPluginSuite kSuite = {GetPluginOptions, SetPluginOptions};
REFHOST_REGISTER_SUITE(kDWPluginSuite, kDWPluginSuiteVersion, kSuite);

}  // namespace
}  // namespace refhost
