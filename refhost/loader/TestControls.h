#pragma once
#include <cstddef>
#include <cstdint>
#include <deque>
#include <functional>
#include <mutex>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "host/rasterize_settings.h"
#include "host/types.h"

namespace refhost {

// What tests and the fault-injection driver may change about the host. Users never see these;
// the tool only exposes --non-interactive and the answers to questions and dialogs.
class TestControls {
 public:
  // Acquiring a withheld suite fails as if the host had none.
  void withholdSuite(const std::string& name) { withheld_.insert(name); }
  void restoreSuite(const std::string& name) { withheld_.erase(name); }
  bool isWithheld(const std::string& name) const { return withheld_.count(name) != 0; }

  // The answer of the runtime suite's interactive query.
  bool interactive = true;

  // The runtime suite's memory figure; unset: the machine's available memory.
  std::optional<uint32_t> memoryFigure;

  // DW Block Suite: allocations larger than `blockSizeCap` fail, and so does any allocation that
  // would take the outstanding total above `blockTotalCap`.
  size_t blockSizeCap = SIZE_MAX;
  size_t blockTotalCap = SIZE_MAX;
  // DW Raster Suite: a raster record whose pixels would take more bytes than this is refused as
  // out of memory (the fuzzers keep legitimate but giant rasters within their memory limit).
  size_t rasterBytesCap = SIZE_MAX;

  // The `n`th counted host call (1-based) answers `code` instead of doing its work. With a suite
  // (and a function) given, only calls of that suite (function) are counted towards n.
  void failCall(uint64_t n, DWErr code, std::string suite = {}, std::string function = {});
  void clearFailure();
  // Called by REFHOST_CALL at the top of every error-returning suite function.
  DWErr countCall(const char* suite, const char* function);
  // Every counted call since the host started (thread-safe).
  uint64_t callCount() const;
  // With tracing on, every counted call is kept as "Suite/Function" (for the fault driver).
  void traceCalls(bool on);
  std::vector<std::string> calls() const;
  // Whether the chosen failure has been delivered.
  bool failureDelivered() const;

  // Dialogs: queued answers are used first, one per dialog. An answer of 0 confirms (after `edit`
  // has changed the record); anything else cancels.
  struct DialogAnswer {
    int32_t result = 0;
    std::function<void(RasterizeSettings&)> edit;
  };
  std::deque<DialogAnswer> dialogAnswers;

  // Question alerts: queued answers first (true: go on); then `questionAnswer`; unset: the
  // question's own default.
  std::deque<bool> questionAnswers;
  std::optional<bool> questionAnswer;

  // The user asks to stop after this many progress updates (0: never).
  uint64_t cancelAfterProgressUpdates = 0;

 private:
  std::set<std::string> withheld_;
  mutable std::mutex mutex_;
  uint64_t calls_ = 0;
  uint64_t matching_ = 0;
  uint64_t failAt_ = 0;
  DWErr failCode_ = 0;
  std::string failSuite_;
  std::string failFunction_;
  bool delivered_ = false;
  bool tracing_ = false;
  std::vector<std::string> trace_;
};

}  // namespace refhost
