// Host suites not built yet: every function answers 'HNIM' (or 0 where it returns no error code),
// so a plug-in can acquire them and start. Whoever builds one deletes its lines here and adds
// refhost/suites/<Name>Suite.cpp (a real table replaces a placeholder even if both remain).
#include "host/all_suites.h"
#include "refhost/loader/SuiteProviders.h"
#include "refhost/suites/Placeholder.h"

namespace refhost {
namespace {

using placeholder::N;
using placeholder::placeholderTable;
using placeholder::Z;

#define PLACEHOLDER(Suite, name, version, ...)                             \
  const Suite REFHOST_CONCAT(kPlaceholder, __LINE__) = placeholderTable<Suite>(__VA_ARGS__); \
  REFHOST_REGISTER_PLACEHOLDER_SUITE(name, version, REFHOST_CONCAT(kPlaceholder, __LINE__))

// Every host suite is built now; this is where the next one waits for its implementation.

}  // namespace
}  // namespace refhost
