// The whole fault matrix: every host call of every scenario fails once in turn. Prints the matrix
// and, with --write, puts it into a Markdown file between its markers.
//   fault_matrix [--stride N] [--only TEXT] [--write docs/reliability.md]
#include <chrono>
#include <cstdio>
#include <cstring>
#include <string>
#include <vector>

#include "tests/faults/LeakCheck.h"
#include "tests/faults/MatrixReport.h"
#include "tests/faults/Scenarios.h"

int main(int argc, char** argv) {
  uint64_t stride = 1;
  std::string only;
  std::string write;
  std::string command = "fault_matrix";
  for (int i = 1; i < argc; ++i) {
    const std::string arg = argv[i];
    const bool hasValue = i + 1 < argc;
    if (arg == "--stride" && hasValue) {
      stride = std::stoull(argv[++i]);
      command += " --stride " + std::to_string(stride);
    } else if (arg == "--only" && hasValue) {
      only = argv[++i];
      command += " --only '" + only + "'";
    } else if (arg == "--write" && hasValue) {
      write = argv[++i];
      command += " --write " + write;
    } else {
      std::fprintf(stderr, "usage: fault_matrix [--stride N] [--only TEXT] [--write FILE]\n");
      return 2;
    }
  }
  if (stride == 0) stride = 1;

  std::vector<faults::Cell> cells;
  const auto start = std::chrono::steady_clock::now();
  for (const faults::Scenario& scenario : faults::allScenarios()) {
    if (!only.empty() && scenario.name.find(only) == std::string::npos) continue;
    for (faults::Mode mode : {faults::Mode::HostError, faults::Mode::Allocation}) {
      cells.push_back(faults::runScenario(scenario, mode, stride));
      const faults::Cell& c = cells.back();
      std::printf("%-45s %-10s calls %5llu reruns %5llu failures %zu\n", c.scenario.c_str(), faults::modeName(mode),
                  static_cast<unsigned long long>(c.calls), static_cast<unsigned long long>(c.reruns),
                  c.failures.size());
      for (const std::string& line : c.failures) std::printf("  %s\n", line.c_str());
      std::fflush(stdout);
    }
  }
  const double seconds = std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();

  faults::MatrixReport report{cells, command, faults::LeakCheck::available(), seconds};
  const std::string table = report.markdown();
  std::printf("\n%s", table.c_str());
  if (!write.empty() && !faults::writeBetweenMarkers(write, table)) {
    std::fprintf(stderr, "fault_matrix: cannot update %s (it needs the two marker lines)\n", write.c_str());
    return 2;
  }
  return report.failures() == 0 ? 0 : 1;
}
