// "DW Style Converter Suite": which live effect stands for a named legacy style entry.
#include "host/suites/style_converter_suite.h"
#include "refhost/loader/HostCall.h"
#include "refhost/loader/SuiteProviders.h"

namespace refhost {
namespace {

DWErr RegisterStyleName(DWLiveEffectHandle effect, uint32_t kinds, uint32_t options, const char* name) {
  REFHOST_CALL(kDWStyleConverterSuite, "RegisterStyleName");
  LiveEffectRecord* record = Host::current().registrations().liveEffect(effect);
  if (!record || !name || !*name) return kHostBadParameter;
  return guarded([&] {
    record->styleNames.push_back({kinds, options, name});
    return kDWNoErr;
  });
}

const DWStyleConverterSuite kSuite = {RegisterStyleName};
REFHOST_REGISTER_SUITE(kDWStyleConverterSuite, kDWStyleConverterSuiteVersion, kSuite);

}  // namespace
}  // namespace refhost
