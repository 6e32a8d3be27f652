#include "refhost/loader/SuiteRegistry.h"

#include <algorithm>

#include "refhost/loader/HostErrors.h"

namespace refhost {

DWErr SuiteRegistry::add(const std::string& name, int32_t version, int32_t internalVersion, const void* table,
                         const void* owner, bool placeholder, RegisteredSuite** added) {
  if (name.empty() || !table) return kHostBadParameter;
  if (find(name, version)) return kHostDuplicate;
  auto suite = std::make_unique<RegisteredSuite>();
  suite->name = name;
  suite->version = version;
  suite->internalVersion = internalVersion;
  suite->table = table;
  suite->owner = owner;
  suite->placeholder = placeholder;
  if (added) *added = suite.get();
  suites_.push_back(std::move(suite));
  return kDWNoErr;
}

RegisteredSuite* SuiteRegistry::find(const std::string& name, int32_t version) const {
  for (const auto& suite : suites_)
    if (suite->version == version && suite->name == name) return suite.get();
  return nullptr;
}

DWErr SuiteRegistry::acquire(const std::string& name, int32_t version, const void** table) {
  RegisteredSuite* suite = find(name, version);
  if (!suite) return kHostSuiteNotFound;
  ++suite->held;
  ++suite->acquisitions;
  *table = suite->table;
  return kDWNoErr;
}

DWErr SuiteRegistry::release(const std::string& name, int32_t version) {
  RegisteredSuite* suite = find(name, version);
  if (!suite) return kHostSuiteNotFound;
  if (suite->held == 0) return kHostNotHeld;
  --suite->held;
  return kDWNoErr;
}

void SuiteRegistry::removeOwnedBy(const void* owner) {
  suites_.erase(std::remove_if(suites_.begin(), suites_.end(),
                               [owner](const auto& suite) { return owner && suite->owner == owner; }),
                suites_.end());
}

std::vector<const RegisteredSuite*> SuiteRegistry::all() const {
  std::vector<const RegisteredSuite*> list;
  for (const auto& suite : suites_) list.push_back(suite.get());
  return list;
}

int64_t SuiteRegistry::held(const std::string& name, int32_t version) const {
  const RegisteredSuite* suite = find(name, version);
  return suite ? suite->held : 0;
}

}  // namespace refhost
