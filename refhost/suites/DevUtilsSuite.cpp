// "DW Dev Utils Suite": named developer logs and a monotonic clock (microseconds).
#include <chrono>
#include <cstdarg>
#include <cstdio>
#include <vector>

#include "host/suites/dev_utils_suite.h"
#include "refhost/loader/HostCall.h"
#include "refhost/loader/SuiteProviders.h"

namespace refhost {
namespace {

DWLogHandle GetLog(const char* name) { return reinterpret_cast<DWLogHandle>(Host::current().logs().get(name)); }

void WriteLine(DWLogHandle log, const char* format, ...) {
  DevLogs& logs = Host::current().logs();
  if (!format || !logs.isLog(log)) return;
  va_list arguments;
  va_start(arguments, format);
  va_list copy;
  va_copy(copy, arguments);
  const int length = std::vsnprintf(nullptr, 0, format, copy);
  va_end(copy);
  std::string line;
  if (length > 0) {
    std::vector<char> buffer(size_t(length) + 1);
    std::vsnprintf(buffer.data(), buffer.size(), format, arguments);
    line.assign(buffer.data(), size_t(length));
  }
  va_end(arguments);
  logs.writeLine(reinterpret_cast<DevLogs::Log*>(log), std::move(line));
}

DWTimeStamp now() {
  using namespace std::chrono;
  return duration_cast<microseconds>(steady_clock::now().time_since_epoch()).count();
}

// One clock: the reference only has to be something the plug-in can hand back.
int gClock;

DWTimeStamp GetStartStamp() { return now(); }
DWClockRef GetClock() { return reinterpret_cast<DWClockRef>(&gClock); }
DWTimeStamp ReadClock(DWClockRef) { return now(); }
int64_t Difference(DWTimeStamp later, DWTimeStamp earlier) { return later - earlier; }
uint32_t DurationMilliseconds(int64_t duration) { return duration <= 0 ? 0 : uint32_t(duration / 1000); }

const DWDevUtilsSuite kSuite = {GetLog, WriteLine, GetStartStamp, GetClock, ReadClock, Difference,
                                DurationMilliseconds};
REFHOST_REGISTER_SUITE(kDWDevUtilsSuite, kDWDevUtilsSuiteVersion, kSuite);

}  // namespace
}  // namespace refhost
