// "DW Notifier Suite": plug-ins ask to hear of host events ("DW Notifier" messages).
#include "host/suites/notifier_suite.h"
#include "refhost/loader/HostCall.h"
#include "refhost/loader/SuiteProviders.h"

namespace refhost {
namespace {

DWErr AddNotifier(DWPluginRef ref, const char* name, const char* type, DWNotifierHandle* notifier) {
  REFHOST_CALL(kDWNotifierSuite, "AddNotifier");
  return guarded([&] {
    Host& host = Host::current();
    Plugin* plugin = host.plugin(ref);
    if (!plugin || !name || !type || !*type) return kHostBadParameter;
    NotifierRecord* added = host.registrations().addNotifier({plugin, name, type});
    if (notifier) *notifier = reinterpret_cast<DWNotifierHandle>(added);
    return kDWNoErr;
  });
}

const DWNotifierSuite kSuite = {AddNotifier};
REFHOST_REGISTER_SUITE(kDWNotifierSuite, kDWNotifierSuiteVersion, kSuite);

}  // namespace
}  // namespace refhost
