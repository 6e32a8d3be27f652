#pragma once
#include <atomic>
#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "host/rasterize_settings.h"

namespace refhost {

struct Alert {
  enum class Kind { Error, Warning, Question };
  Kind kind = Kind::Error;
  std::string text;   // localised
  bool answer = false;  // questions: true when the user chose to go on
};

struct ProgressState {
  std::string text;
  int32_t current = 0;
  int32_t total = 0;
  bool open = false;
  uint64_t updates = 0;
};

// What the host shows the user: alerts (kept, and passed to a listener such as the tool's printer),
// the progress display, the user's request to stop, and the rasterize dialog.
class UserInterface {
 public:
  void showAlert(Alert alert);
  const std::vector<Alert>& alerts() const { return alerts_; }
  void clearAlerts() { alerts_.clear(); }
  std::function<void(const Alert&)> onAlert;

  void setProgressText(std::string text);
  void updateProgress(int32_t current, int32_t total);
  void closeProgress();
  const ProgressState& progress() const { return progress_; }
  std::function<void(const ProgressState&)> onProgress;

  // Safe from a signal handler.
  void requestCancel() { cancel_.store(true); }
  bool cancelRequested() const { return cancel_.load(); }
  void resetCancel() { cancel_.store(false); }

  // How the "user" answers the rasterize dialog when no test answer is queued: 0 confirms (the
  // responder may change the record first), anything else cancels. Unset: confirm unchanged.
  std::function<int32_t(RasterizeSettings& settings, int32_t variant)> dialogResponder;
  uint64_t dialogsShown = 0;

 private:
  std::vector<Alert> alerts_;
  ProgressState progress_;
  std::atomic<bool> cancel_{false};
};

}  // namespace refhost
