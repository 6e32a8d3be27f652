// "DW Symbol Utils Suite": plug-ins report art they changed inside a symbol definition.
#include <atomic>

#include "host/suites/symbol_utils_suite.h"
#include "refhost/loader/HostCall.h"
#include "refhost/loader/SuiteProviders.h"
#include "refhost/suites/DocumentAccess.h"
#include "refhost/suites/SymbolEditing.h"

namespace refhost {

namespace {
std::atomic<std::uint64_t> gNotifications{0};
}  // namespace

std::uint64_t symbolChangeNotifications() { return gNotifications.load(); }

namespace {

// Both objects must lie in the same definition; the container must hold art.
DWErr NotifyArtChanged(DWArtHandle prep, DWArtHandle container, int32_t) {
  REFHOST_CALL(kDWSymbolUtilsSuite, "NotifyArtChanged");
  const Art* p = liveArt(prep);
  const Art* c = liveArt(container);
  if (!p || !c || !isContainerKind(c->kind())) return kHostBadParameter;
  const Symbol* symbol = definingSymbol(*c);
  if (!symbol || definingSymbol(*p) != symbol) return kHostBadParameter;
  ++gNotifications;
  return kDWNoErr;
}

const DWSymbolUtilsSuite kSuite = {NotifyArtChanged};
REFHOST_REGISTER_SUITE(kDWSymbolUtilsSuite, kDWSymbolUtilsSuiteVersion, kSuite);

}  // namespace
}  // namespace refhost
