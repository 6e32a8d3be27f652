#pragma once
#include <fstream>
#include <functional>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

namespace refhost {

// Developer logs ("DW Dev Utils Suite"). A named log exists only when the host was asked to keep
// it (the tool's --performance-log FILE keeps "DWPerformance.log"); asking for any other name gives
// the default log, which is kept in memory only.
class DevLogs {
 public:
  struct Log {
    std::string name;
    std::string path;  // empty: memory only
    std::vector<std::string> lines;
    std::unique_ptr<std::ofstream> file;
  };

  DevLogs();
  // Keeps a named log, written line by line to `path` when one is given. Throws HostError when
  // the file cannot be opened.
  void keep(const std::string& name, const std::string& path = {});
  // The named log, or the default log for null or an unknown name.
  Log* get(const char* name);
  Log* defaultLog() { return logs_.front().get(); }
  bool isLog(const void* handle) const;
  void writeLine(Log* log, std::string line);
  // Lines of a kept log (empty for a name not kept).
  std::vector<std::string> lines(const std::string& name) const;

  // "DW Debug Suite" messages, kept and passed to a listener.
  void debugMessage(std::string text);
  std::vector<std::string> debugMessages() const;
  std::function<void(const std::string&)> onDebugMessage;

 private:
  mutable std::mutex mutex_;
  std::vector<std::unique_ptr<Log>> logs_;
  std::vector<std::string> debug_;
};

}  // namespace refhost
