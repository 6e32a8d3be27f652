// What the message and settings fuzzers found in the reference host, replayed through its suites.
#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <string>

#include "host/suites/preference_suite.h"
#include "refhost/loader/Host.h"

namespace bad_input {
namespace {

// fuzz_settings_dictionaries: a real preference read as an integer was converted whatever its
// size (undefined behaviour); a real beyond an integer must read as missing.
TEST(HostFindings, RealPreferencesReadAsIntegersOnlyWhenTheyFit) {
  refhost::Host host;
  const void* table = nullptr;
  ASSERT_EQ(host.acquireSuite(kDWPreferenceSuite, kDWPreferenceSuiteVersion, &table), 0);
  const auto* suite = static_cast<const DWPreferenceSuite*>(table);
  constexpr int32_t kUntouched = 4242;
  const double inf = std::numeric_limits<double>::infinity();
  struct Case {
    double stored;
    int32_t read;
  };
  const Case cases[] = {
      {150.7, 150},
      {-3.9, -3},
      {2147483647.0, 2147483647},
      {-2147483648.0, std::numeric_limits<int32_t>::min()},
      {2147483648.0, kUntouched},
      {-2147483649.0, kUntouched},
      {9.44344e307, kUntouched},
      {-1e300, kUntouched},
      {inf, kUntouched},
      {-inf, kUntouched},
      {std::numeric_limits<double>::quiet_NaN(), kUntouched},
  };
  for (const Case& c : cases) {
    host.preferences().setReal("Rasterize/Defaults", "DPI", c.stored);
    int32_t value = kUntouched;
    EXPECT_EQ(suite->GetIntegerPreference("Rasterize/Defaults", "DPI", &value), 0) << c.stored;
    EXPECT_EQ(value, c.read) << "stored " << c.stored;
  }
  host.releaseSuite(kDWPreferenceSuite, kDWPreferenceSuiteVersion);
}

}  // namespace
}  // namespace bad_input
