// The generated part of docs/reliability.md: the table's totals and its place between markers.
#include <gtest/gtest.h>

#include "tests/faults/MatrixReport.h"

namespace faults {
namespace {

Cell cell(const char* scenario, Mode mode, uint64_t reruns, uint64_t reported, std::vector<std::string> failures) {
  Cell c;
  c.scenario = scenario;
  c.mode = mode;
  c.calls = reruns;
  c.reruns = reruns;
  c.reported = reported;
  c.ignored = reruns - reported - failures.size();
  c.failures = std::move(failures);
  return c;
}

TEST(MatrixReport, TotalsCountScenariosOnceAndListEveryFailure) {
  MatrixReport report{{cell("a", Mode::HostError, 10, 7, {}), cell("a", Mode::Allocation, 3, 2, {"a: call 2 odd"}),
                       cell("b", Mode::HostError, 5, 5, {})},
                      "fault_matrix", true, 1.0};
  const std::string text = report.markdown();
  EXPECT_EQ(report.failures(), 1u);
  EXPECT_NE(text.find("| **2 scenarios** | | | 18 | 14 | 0 | 3 | 0 | 0 | 1 |"), std::string::npos) << text;
  EXPECT_NE(text.find("- a: call 2 odd\n"), std::string::npos) << text;
  EXPECT_NE(text.find("`fault_matrix` in an AddressSanitizer"), std::string::npos) << text;
}

TEST(MatrixReport, OnlyTheTextBetweenTheMarkersIsReplaced) {
  const std::string begin = kBeginMarker, end = kEndMarker;
  struct Case {
    const char* name;
    std::string document;
    std::string expected;
  } const cases[] = {
      {"old table", "intro\n" + begin + "\nold\n" + end + "\nafter\n", "intro\n" + begin + "\nnew\n" + end + "\nafter\n"},
      {"empty between", begin + end, begin + "\nnew\n" + end},
      {"no end marker", "intro\n" + begin + "\nold\n", ""},
      {"no markers", "intro\n", ""},
  };
  for (const Case& c : cases) EXPECT_EQ(replaceBetweenMarkers(c.document, "new\n"), c.expected) << c.name;
}

}  // namespace
}  // namespace faults
