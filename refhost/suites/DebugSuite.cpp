// "DW Debug Suite": messages for plug-in developers (kept; the tool prints them with --verbose).
#include "host/suites/debug_suite.h"
#include "refhost/loader/HostCall.h"
#include "refhost/loader/SuiteProviders.h"

namespace refhost {
namespace {

void DebugMessage(const char* text) {
  if (text) Host::current().logs().debugMessage(text);
}

const DWDebugSuite kSuite = {DebugMessage};
REFHOST_REGISTER_SUITE(kDWDebugSuite, kDWDebugSuiteVersion, kSuite);

}  // namespace
}  // namespace refhost
