#include "refhost/loader/UserInterface.h"

namespace refhost {

void UserInterface::showAlert(Alert alert) {
  alerts_.push_back(alert);
  if (onAlert) onAlert(alerts_.back());
}

void UserInterface::setProgressText(std::string text) {
  progress_.text = std::move(text);
  progress_.open = true;
  if (onProgress) onProgress(progress_);
}

void UserInterface::updateProgress(int32_t current, int32_t total) {
  progress_.current = current;
  progress_.total = total;
  progress_.open = true;
  ++progress_.updates;
  if (onProgress) onProgress(progress_);
}

void UserInterface::closeProgress() {
  if (!progress_.open) return;
  progress_.open = false;
  if (onProgress) onProgress(progress_);
  progress_ = ProgressState{};
}

}  // namespace refhost
