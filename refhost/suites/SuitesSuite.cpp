// "QK Suites Suite": plug-ins add suites to the registry for other plug-ins.
#include "host/suites/suites_suite.h"
#include "refhost/loader/HostCall.h"
#include "refhost/loader/SuiteProviders.h"

namespace refhost {
namespace {

DWErr AddSuite(int32_t reserved, DWPluginRef ref, const char* name, int32_t apiVersion, int32_t internalVersion,
               const void* table, DWSuiteRef* suite) {
  REFHOST_CALL(kDWSuitesSuite, "AddSuite");
  return guarded([&] {
    Host& host = Host::current();
    Plugin* plugin = host.plugin(ref);
    if (!plugin || !name || !table || reserved != 0) return kHostBadParameter;
    RegisteredSuite* added = nullptr;
    const DWErr result = host.suites().add(name, apiVersion, internalVersion, table, plugin, false, &added);
    if (suite) *suite = result ? nullptr : reinterpret_cast<DWSuiteRef>(added);
    return result;
  });
}

const DWSuitesSuite kSuite = {AddSuite};
REFHOST_REGISTER_SUITE(kDWSuitesSuite, kDWSuitesSuiteVersion, kSuite);

}  // namespace
}  // namespace refhost
