// "DW Pattern Suite": documents of this host hold no patterns, so none is ever being edited.
#include "host/suites/pattern_suite.h"
#include "refhost/loader/SuiteProviders.h"

namespace refhost {
namespace {

DWBool GetEditedPatternArt(int32_t, DWArtHandle* art) {
  if (art) *art = nullptr;
  return 0;
}

const DWPatternSuite kSuite = {GetEditedPatternArt};
REFHOST_REGISTER_SUITE(kDWPatternSuite, kDWPatternSuiteVersion, kSuite);

}  // namespace
}  // namespace refhost
