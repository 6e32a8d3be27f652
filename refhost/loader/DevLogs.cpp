#include "refhost/loader/DevLogs.h"

#include "refhost/loader/HostErrors.h"

namespace refhost {

DevLogs::DevLogs() {
  auto log = std::make_unique<Log>();
  log->name = "(default)";
  logs_.push_back(std::move(log));
}

void DevLogs::keep(const std::string& name, const std::string& path) {
  auto log = std::make_unique<Log>();
  log->name = name;
  log->path = path;
  if (!path.empty()) {
    log->file = std::make_unique<std::ofstream>(path, std::ios::out | std::ios::app);
    if (!*log->file) throw HostError("cannot open the log file " + path, kHostNotFound);
  }
  std::lock_guard<std::mutex> lock(mutex_);
  logs_.push_back(std::move(log));
}

DevLogs::Log* DevLogs::get(const char* name) {
  std::lock_guard<std::mutex> lock(mutex_);
  if (name)
    for (size_t i = 1; i < logs_.size(); ++i)
      if (logs_[i]->name == name) return logs_[i].get();
  return logs_.front().get();
}

bool DevLogs::isLog(const void* handle) const {
  std::lock_guard<std::mutex> lock(mutex_);
  for (const auto& log : logs_)
    if (log.get() == handle) return true;
  return false;
}

void DevLogs::writeLine(Log* log, std::string line) {
  std::lock_guard<std::mutex> lock(mutex_);
  if (log->file) {
    *log->file << line << '\n';
    log->file->flush();
  }
  log->lines.push_back(std::move(line));
}

std::vector<std::string> DevLogs::lines(const std::string& name) const {
  std::lock_guard<std::mutex> lock(mutex_);
  for (size_t i = 1; i < logs_.size(); ++i)
    if (logs_[i]->name == name) return logs_[i]->lines;
  return {};
}

void DevLogs::debugMessage(std::string text) {
  {
    std::lock_guard<std::mutex> lock(mutex_);
    debug_.push_back(text);
  }
  if (onDebugMessage) onDebugMessage(text);
}

std::vector<std::string> DevLogs::debugMessages() const {
  std::lock_guard<std::mutex> lock(mutex_);
  return debug_;
}

}  // namespace refhost
