#pragma once
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "host/types.h"

namespace refhost {

// One suite the host hands out: the host's own or one a plug-in added through "QK Suites Suite".
struct RegisteredSuite {
  std::string name;
  int32_t version = 0;
  int32_t internalVersion = 0;
  const void* table = nullptr;
  // The plug-in that added it; null for the host's own suites.
  const void* owner = nullptr;
  // A host suite whose every function answers "not implemented" until someone builds it.
  bool placeholder = false;
  // Acquisitions not yet released, and all acquisitions ever.
  int64_t held = 0;
  int64_t acquisitions = 0;
};

// The host's suites by name and exact version. Entries never move, so a RegisteredSuite* is the
// DWSuiteRef handed back by AddSuite.
class SuiteRegistry {
 public:
  // kHostDuplicate when that name and version is already registered.
  DWErr add(const std::string& name, int32_t version, int32_t internalVersion, const void* table,
            const void* owner, bool placeholder = false, RegisteredSuite** added = nullptr);
  RegisteredSuite* find(const std::string& name, int32_t version) const;
  // kHostSuiteNotFound for an unknown name or version.
  DWErr acquire(const std::string& name, int32_t version, const void** table);
  // kHostNotHeld when the suite is not acquired.
  DWErr release(const std::string& name, int32_t version);
  // Drops every suite a plug-in added (at its shut-down).
  void removeOwnedBy(const void* owner);

  std::vector<const RegisteredSuite*> all() const;
  int64_t held(const std::string& name, int32_t version) const;

 private:
  std::vector<std::unique_ptr<RegisteredSuite>> suites_;
};

}  // namespace refhost
