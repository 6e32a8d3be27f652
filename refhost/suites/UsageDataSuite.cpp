// "DW Orrimet Suite" (optional for plug-ins): usage events. The host keeps every event it is sent
// (Host::usage()); with collection off it gives no handle, which callers take as "not collected".
#include "host/suites/usage_data_suite.h"
#include "refhost/loader/HostCall.h"
#include "refhost/loader/SuiteProviders.h"

namespace refhost {
namespace {

DWUsageEvent CreateEvent(const char* name) {
  Host& host = Host::current();
  if (!name || !host.usage().collecting) return nullptr;
  try {
    return reinterpret_cast<DWUsageEvent>(host.usage().create(name));
  } catch (...) {
    return nullptr;
  }
}

DWErr AddAttribute(DWUsageEvent event, const char* key, const char* value) {
  REFHOST_CALL(kDWUsageDataSuite, "AddAttribute");
  UsageEvent* found = Host::current().usage().find(event);
  if (!found || !key || !value) return kHostBadParameter;
  return guarded([&] {
    found->attributes.emplace_back(key, value);
    return kDWNoErr;
  });
}

const DWUsageDataSuite kSuite = {CreateEvent, AddAttribute};
REFHOST_REGISTER_SUITE(kDWUsageDataSuite, kDWUsageDataSuiteVersion, kSuite);

}  // namespace
}  // namespace refhost
