// "DW Symbol Suite": this host edits symbol definitions in place, so art inside a definition (outside
// every layer, under a symbol's root group) is art of a symbol being edited.
#include "host/suites/symbol_suite.h"
#include "refhost/loader/SuiteProviders.h"
#include "refhost/suites/DocumentAccess.h"
#include "refhost/suites/SymbolEditing.h"

namespace refhost {
namespace {

DWBool ArtIsInSymbolEditing(DWArtHandle art, int32_t) {
  const Art* a = liveArt(art);
  return a && definingSymbol(*a) ? 1 : 0;
}

const DWSymbolSuite kSuite = {ArtIsInSymbolEditing};
REFHOST_REGISTER_SUITE(kDWSymbolSuite, kDWSymbolSuiteVersion, kSuite);

}  // namespace
}  // namespace refhost
