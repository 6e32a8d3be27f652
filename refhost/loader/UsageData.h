#pragma once
#include <deque>
#include <string>
#include <utility>
#include <vector>

namespace refhost {

// One usage-data event a plug-in sent: its name and its attributes in the order they came.
struct UsageEvent {
  std::string name;
  std::vector<std::pair<std::string, std::string>> attributes;
};

// The usage data the host collected ("DW Orrimet Suite"). The reference host sends it nowhere; it
// keeps the events so that tests and --verbose can see exactly what a plug-in reported.
class UsageData {
 public:
  // Whether the host collects events at all; when not, event creation gives no handle.
  bool collecting = true;

  // A new event; the pointer is its handle and stays valid for the host's life.
  UsageEvent* create(std::string name) {
    events_.push_back(UsageEvent{std::move(name), {}});
    return &events_.back();
  }
  // The event of a handle this host gave out, or null.
  UsageEvent* find(const void* handle) {
    for (UsageEvent& event : events_)
      if (&event == handle) return &event;
    return nullptr;
  }
  const std::deque<UsageEvent>& events() const { return events_; }

 private:
  std::deque<UsageEvent> events_;  // a deque never moves what it holds
};

}  // namespace refhost
