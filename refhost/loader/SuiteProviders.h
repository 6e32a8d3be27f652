#pragma once
#include <cstdint>
#include <vector>

namespace refhost {

// A host suite implementation, announced by its own .cpp at static initialisation (see
// refhost/suites/README.md). Every Host installs all of them into its registry; a real
// implementation wins over a placeholder of the same name and version.
struct SuiteProvider {
  const char* name;
  int32_t version;
  const void* table;
  bool placeholder;
};

const std::vector<SuiteProvider>& suiteProviders();

class SuiteProviderRegistration {
 public:
  SuiteProviderRegistration(const char* name, int32_t version, const void* table, bool placeholder = false);
};

}  // namespace refhost

#define REFHOST_CONCAT_INNER(a, b) a##b
#define REFHOST_CONCAT(a, b) REFHOST_CONCAT_INNER(a, b)

// REFHOST_REGISTER_SUITE(kDWArtSuite, kDWArtSuiteVersion, kArtSuite): `table` is a const suite struct.
#define REFHOST_REGISTER_SUITE(name, version, table)                                                 \
  static const ::refhost::SuiteProviderRegistration REFHOST_CONCAT(refhostSuiteProvider_, __LINE__)( \
      name, version, &(table), false)

#define REFHOST_REGISTER_PLACEHOLDER_SUITE(name, version, table)                                     \
  static const ::refhost::SuiteProviderRegistration REFHOST_CONCAT(refhostSuiteProvider_, __LINE__)( \
      name, version, &(table), true)
