#pragma once
#include <map>
#include <set>
#include <string>
#include <vector>

#include "host/all_suites.h"

// A small in-process host for the shell's unit tests: hands out any suite by name (a dummy table
// unless a real fake is registered below), records every acquire and release, and can refuse
// chosen suites. One at a time; it resets the plug-in's process-wide state on both ends.
class FakeHost {
 public:
  FakeHost();
  ~FakeHost();
  FakeHost(const FakeHost&) = delete;
  FakeHost& operator=(const FakeHost&) = delete;

  static FakeHost& current();

  const DWBasicSuite* basic() const;
  // A message header as the host fills it.
  MessageHeader header(void* globals = nullptr) const;

  std::set<std::string> missing;             // acquisitions of these fail
  std::map<std::string, int> held;           // acquisitions minus releases, by name
  std::vector<std::string> events;           // "acquire NAME" / "release NAME", in order
  bool interactive = true;
  int interactiveQueries = 0;
  bool freeFails = false;                    // QK Blocks FreeBlock answers an error
  std::vector<std::string> blockNames;       // names of allocated named blocks
  std::vector<void*> liveBlocks;

  int acquisitionsOf(const std::string& name) const;
  const void* dummyTable(const std::string& name);

 private:
  std::map<std::string, std::vector<char>> dummies_;
};
