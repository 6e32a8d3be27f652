#include "assure_line.h"

#include <gtest/gtest.h>

#include <csignal>
#include <fstream>

std::string assure_line(const std::string& source_file, const std::string& anchor,
                        const std::string& expression) {
  const std::string path = std::string(BASIC_THREADS_SOURCES) + "/" + source_file;
  std::ifstream in(path);
  const std::string check = "BASIC_ASSURE(" + expression + ")";
  bool anchored = false;
  int number = 0;
  for (std::string text; std::getline(in, text);) {
    ++number;
    anchored = anchored || text.find(anchor) != std::string::npos;
    if (anchored && text.find(check) != std::string::npos)
      return "basic::assure_failed(" + expression + ", " + path + ", " + std::to_string(number) +
             ")\n";
  }
  return {};
}

void use_threadsafe_death_tests() { GTEST_FLAG_SET(death_test_style, "threadsafe"); }

bool aborted(int exit_status) {
#if defined(_WIN32)
  return ::testing::ExitedWithCode(3)(exit_status);
#else
  return ::testing::KilledBySignal(SIGABRT)(exit_status);
#endif
}
