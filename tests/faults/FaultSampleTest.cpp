// A sample of the fault matrix: every 7th host call of each scenario fails in turn, with a host
// error and, where the call allocates, with the host's out-of-memory code. The full matrix is the
// fault_matrix program's (docs/reliability.md).
#include <gtest/gtest.h>

#include <cctype>
#include <functional>
#include <memory>
#include <string>

#include "host/all_suites.h"
#include "refhost/loader/HostErrors.h"
#include "tests/faults/Scenarios.h"

namespace faults {
namespace {

constexpr uint64_t kStride = 7;

std::string joined(const std::vector<std::string>& lines) {
  std::string text;
  for (const std::string& line : lines) text += "\n  " + line;
  return text;
}

class FaultSample : public ::testing::TestWithParam<size_t> {};

TEST_P(FaultSample, EveryFailedCallIsReportedAndLeavesNothingBehind) {
  const std::vector<Scenario> scenarios = allScenarios();
  const Scenario& scenario = scenarios.at(GetParam());
  // Each scenario starts at another residue, so that the sample as a whole reaches every one.
  const uint64_t first = 1 + GetParam() % kStride;
  for (Mode mode : {Mode::HostError, Mode::Allocation}) {
    const Cell cell = runScenario(scenario, mode, kStride, first);
    EXPECT_TRUE(cell.failures.empty()) << scenario.name << " [" << modeName(mode) << "]" << joined(cell.failures);
    if (mode == Mode::HostError) {
      EXPECT_GT(cell.reruns, 0u) << scenario.name;
      EXPECT_GT(cell.reported + cell.mapped, 0u) << scenario.name << ": no failure was ever reported";
    }
  }
}

std::string scenarioName(const ::testing::TestParamInfo<size_t>& info) {
  std::string name = allScenarios().at(info.param).name;
  for (char& c : name)
    if (!std::isalnum(static_cast<unsigned char>(c))) c = '_';
  return name;
}

INSTANTIATE_TEST_SUITE_P(Scenarios, FaultSample, ::testing::Range<size_t>(0, allScenarios().size()), scenarioName);

// Wraps a scenario's run and spoils what it does after a failure, to see that the driver notices.
struct Spoiled : ScenarioRun {
  std::unique_ptr<ScenarioRun> inner;
  std::function<DWErr(ScenarioRun&, DWErr)> spoil;
  refhost::Host& host() override { return inner->host(); }
  DWErr act() override { return spoil(*inner, inner->act()); }
  std::string checkAfterFailure() override { return inner->checkAfterFailure(); }
  void finish() override { inner->finish(); }
};

Scenario spoiled(const std::function<DWErr(ScenarioRun&, DWErr)>& spoil) {
  Scenario s = allScenarios().at(0);
  const auto make = s.make;
  s.make = [make, spoil] {
    auto run = std::make_unique<Spoiled>();
    run->inner = make();
    run->spoil = spoil;
    return run;
  };
  return s;
}

TEST(FaultDriver, NoticesWrongCodesAndKeptHandles) {
  struct Case {
    const char* name;
    std::function<DWErr(ScenarioRun&, DWErr)> spoil;
    const char* expected;  // in every failure line
  };
  const Case cases[] = {
      {"a code other than the injected one",
       [](ScenarioRun&, DWErr code) { return code == 0 ? code : refhost::hostCode("ODD!"); }, "answered 'ODD!'"},
      {"an art set kept after a failure",
       [](ScenarioRun& run, DWErr code) {
         if (code != 0) {
           const void* table = nullptr;
           run.host().acquireSuite(kDWArtSetSuite, kDWArtSetSuiteVersion, &table);
           DWArtSetHandle set = nullptr;
           static_cast<const DWArtSetSuite*>(table)->NewArtSet(&set);
           run.host().releaseSuite(kDWArtSetSuite, kDWArtSetSuiteVersion);
         }
         return code;
       },
       "art sets kept"},
  };
  for (const Case& c : cases) {
    const Cell cell = runScenario(spoiled(c.spoil), Mode::HostError, 3);
    ASSERT_GT(cell.reruns, cell.ignored + cell.unreached) << c.name;
    EXPECT_EQ(cell.failures.size(), cell.reruns - cell.ignored - cell.unreached) << c.name;
    for (const std::string& line : cell.failures)
      EXPECT_NE(line.find(c.expected), std::string::npos) << c.name << ": " << line;
  }
}

}  // namespace
}  // namespace faults
