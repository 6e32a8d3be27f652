#include "refhost/loader/SuiteProviders.h"

namespace refhost {

namespace {
// Built on first use: providers register from other translation units' static initialisers.
std::vector<SuiteProvider>& providers() {
  static std::vector<SuiteProvider> list;
  return list;
}
}  // namespace

const std::vector<SuiteProvider>& suiteProviders() { return providers(); }

SuiteProviderRegistration::SuiteProviderRegistration(const char* name, int32_t version, const void* table,
                                                     bool placeholder) {
  providers().push_back({name, version, table, placeholder});
}

}  // namespace refhost
