#include "assure_line.h"

#include <gtest/gtest.h>

#include <csignal>
#include <fstream>
#include <ostream>

namespace {

class assure_message_matcher : public ::testing::MatcherInterface<const std::string&> {
 public:
  assure_message_matcher(std::string expression, std::string file_end, int line)
      : head_("basic::assure_failed(" + expression + ", "), file_end_(std::move(file_end)),
        tail_(", " + std::to_string(line) + ")\n") {}

  bool MatchAndExplain(const std::string& output, ::testing::MatchResultListener*) const override {
    if (tail_ == ", 0)\n") return false;
    for (std::size_t at = output.find(head_); at != std::string::npos; at = output.find(head_, at + 1)) {
      const std::size_t path = at + head_.size();
      const std::size_t end = output.find(tail_, path);
      const std::size_t newline = output.find('\n', path);
      if (end == std::string::npos || end > newline) continue;
      const std::string file = output.substr(path, end - path);
      if (file.size() >= file_end_.size() && file.compare(file.size() - file_end_.size(), file_end_.size(), file_end_) == 0)
        return true;
    }
    return false;
  }
  void DescribeTo(std::ostream* out) const override {
    *out << "holds \"" << head_ << "<path ending in " << file_end_ << ">" << tail_.substr(0, tail_.size() - 1)
         << "\" on one line";
  }

 private:
  std::string head_, file_end_, tail_;
};

}  // namespace

int assure_check_line(const std::string& source_file, const std::string& anchor, const std::string& expression) {
  std::ifstream in(std::string(BASIC_THREADS_SOURCES) + "/" + source_file);
  const std::string check = "BASIC_ASSURE(" + expression + ")";
  bool anchored = false;
  int number = 0;
  for (std::string text; std::getline(in, text);) {
    ++number;
    anchored = anchored || text.find(anchor) != std::string::npos;
    if (anchored && text.find(check) != std::string::npos) return number;
  }
  return 0;
}

::testing::Matcher<const std::string&> assure_message(const std::string& source_file, const std::string& anchor,
                                                      const std::string& expression) {
  return ::testing::MakeMatcher(new assure_message_matcher(expression, "sources/" + source_file,
                                                           assure_check_line(source_file, anchor, expression)));
}

void use_threadsafe_death_tests() { GTEST_FLAG_SET(death_test_style, "threadsafe"); }

bool aborted(int exit_status) {
#if defined(_WIN32)
  return ::testing::ExitedWithCode(3)(exit_status);
#else
  return ::testing::KilledBySignal(SIGABRT)(exit_status);
#endif
}
