// "DW Orrimet Suite" (optional for plug-ins): usage events. The reference host collects none, so
// every event comes back as null, which callers take as "not collected".
#include "host/suites/usage_data_suite.h"
#include "refhost/loader/HostCall.h"
#include "refhost/loader/SuiteProviders.h"

namespace refhost {
namespace {

DWUsageEvent CreateEvent(const char*) { return nullptr; }

DWErr AddAttribute(DWUsageEvent event, const char* key, const char* value) {
  REFHOST_CALL(kDWUsageDataSuite, "AddAttribute");
  return event && key && value ? kDWNoErr : kHostBadParameter;
}

const DWUsageDataSuite kSuite = {CreateEvent, AddAttribute};
REFHOST_REGISTER_SUITE(kDWUsageDataSuite, kDWUsageDataSuiteVersion, kSuite);

}  // namespace
}  // namespace refhost
