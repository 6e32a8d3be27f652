#pragma once
// Several output files that appear together or not at all.
#include <unistd.h>

#include <cstdio>
#include <string>
#include <utility>
#include <vector>

#include "refhost/cli/Tool.h"

namespace refhost {
namespace cli {

// Each file is written under a temporary name beside its target; commit() renames them all, and
// whatever was not committed is removed, so a failure or Ctrl-C at any point changes no file.
class StagedFiles {
 public:
  StagedFiles() = default;
  StagedFiles(const StagedFiles&) = delete;
  StagedFiles& operator=(const StagedFiles&) = delete;
  ~StagedFiles() {
    for (const auto& file : files_) std::remove(file.second.c_str());
  }

  // The temporary name to write `target` to.
  std::string stage(const std::string& target) {
    files_.emplace_back(target, target + ".part-" + std::to_string(::getpid()));
    return files_.back().second;
  }

  void commit() {
    for (const auto& file : files_)
      if (std::rename(file.second.c_str(), file.first.c_str()) != 0) throw ToolError(file.first + ": cannot be written");
    files_.clear();
  }

 private:
  std::vector<std::pair<std::string, std::string>> files_;  // target, temporary
};

}  // namespace cli
}  // namespace refhost
