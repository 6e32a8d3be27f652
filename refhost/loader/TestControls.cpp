#include "refhost/loader/TestControls.h"

namespace refhost {

void TestControls::failCall(uint64_t n, DWErr code, std::string suite, std::string function) {
  std::lock_guard<std::mutex> lock(mutex_);
  failAt_ = n;
  failCode_ = code;
  failSuite_ = std::move(suite);
  failFunction_ = std::move(function);
  matching_ = 0;
  delivered_ = false;
}

void TestControls::clearFailure() { failCall(0, 0); }

DWErr TestControls::countCall(const char* suite, const char* function) {
  std::lock_guard<std::mutex> lock(mutex_);
  ++calls_;
  if (tracing_) trace_.push_back(std::string(suite) + "/" + function);
  if (failAt_ == 0) return kDWNoErr;
  if (!failSuite_.empty() && failSuite_ != suite) return kDWNoErr;
  if (!failFunction_.empty() && failFunction_ != function) return kDWNoErr;
  if (++matching_ != failAt_) return kDWNoErr;
  delivered_ = true;
  return failCode_;
}

uint64_t TestControls::callCount() const {
  std::lock_guard<std::mutex> lock(mutex_);
  return calls_;
}

void TestControls::traceCalls(bool on) {
  std::lock_guard<std::mutex> lock(mutex_);
  tracing_ = on;
  if (!on) trace_.clear();
}

std::vector<std::string> TestControls::calls() const {
  std::lock_guard<std::mutex> lock(mutex_);
  return trace_;
}

bool TestControls::failureDelivered() const {
  std::lock_guard<std::mutex> lock(mutex_);
  return delivered_;
}

}  // namespace refhost
