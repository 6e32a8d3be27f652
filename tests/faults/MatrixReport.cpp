#include "tests/faults/MatrixReport.h"

#include <cstdio>
#include <fstream>
#include <sstream>

namespace faults {

size_t MatrixReport::failures() const {
  size_t n = 0;
  for (const Cell& c : cells) n += c.failures.size();
  return n;
}

std::string MatrixReport::markdown() const {
  std::ostringstream out;
  out << "Produced by `" << command << "`"
      << (leakChecked ? " in an AddressSanitizer/LeakSanitizer build" : " (no leak checker in this build)") << ", "
      << static_cast<long>(seconds + 0.5) << " s.\n\n";
  out << "| scenario | failure | calls | reruns | code returned | mapped code | ignored | not reached | known deviation | failures |\n";
  out << "|---|---|---:|---:|---:|---:|---:|---:|---:|---:|\n";
  Cell total;
  size_t scenarios = 0;
  std::string last;
  size_t deviations = 0;
  for (const Cell& c : cells) {
    out << "| " << c.scenario << " | " << modeName(c.mode) << " | " << c.calls << " | " << c.reruns << " | "
        << c.reported << " | " << c.mapped << " | " << c.ignored << " | " << c.unreached << " | "
        << c.deviations.size() << " | " << c.failures.size() << " |\n";
    if (c.scenario != last) ++scenarios;
    last = c.scenario;
    total.reruns += c.reruns;
    total.reported += c.reported;
    total.mapped += c.mapped;
    total.ignored += c.ignored;
    total.unreached += c.unreached;
    deviations += c.deviations.size();
  }
  out << "| **" << scenarios << " scenarios** | | | " << total.reruns << " | " << total.reported << " | " << total.mapped
      << " | " << total.ignored << " | " << total.unreached << " | " << deviations << " | " << failures() << " |\n";
  if (deviations != 0) {
    out << "\nKnown deviations:\n\n";
    for (const Cell& c : cells)
      for (const std::string& line : c.deviations) out << "- " << line << "\n";
  }
  if (failures() != 0) {
    out << "\nFailures:\n\n";
    for (const Cell& c : cells)
      for (const std::string& line : c.failures) out << "- " << line << "\n";
  }
  return out.str();
}

std::string replaceBetweenMarkers(const std::string& document, const std::string& text) {
  const size_t begin = document.find(kBeginMarker);
  if (begin == std::string::npos) return {};
  const size_t end = document.find(kEndMarker, begin);
  if (end == std::string::npos) return {};
  const size_t after = begin + std::string(kBeginMarker).size();
  return document.substr(0, after) + "\n" + text + document.substr(end);
}

bool writeBetweenMarkers(const std::string& path, const std::string& text) {
  std::ifstream in(path, std::ios::binary);
  if (!in) return false;
  std::stringstream buffer;
  buffer << in.rdbuf();
  const std::string updated = replaceBetweenMarkers(buffer.str(), text);
  if (updated.empty()) return false;
  // Written beside and renamed over, so an interrupted run leaves the old document whole.
  const std::string temporary = path + ".tmp";
  {
    std::ofstream out(temporary, std::ios::binary | std::ios::trunc);
    out << updated;
    if (!out.flush()) {
      std::remove(temporary.c_str());
      return false;
    }
  }
  return std::rename(temporary.c_str(), path.c_str()) == 0;
}

}  // namespace faults
