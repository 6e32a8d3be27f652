#pragma once
#include <cstdint>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include "host/messages.h"
#include "refhost/loader/PropertyList.h"

namespace refhost {

// One plug-in file the host knows. Its address is the DWPluginRef the plug-in is given; the
// object lives as long as the Host, also after the library is unloaded.
class Plugin {
 public:
  enum class State {
    Loaded,   // mapped, "Reload" delivered
    Started,  // "Startup" succeeded
    Unloaded, // unmapped between an "Unload" and the next "Reload"; the global block is kept
    Ended,    // shut down (or start-up failed) and unmapped for good
  };

  const std::string& path() const { return path_; }
  const PluginProperties& properties() const { return properties_; }
  // The name the plug-in gave itself at start-up; the property list's name until then.
  const std::string& name() const { return name_; }
  uint32_t options() const { return options_; }
  // The global block the host keeps for the plug-in (MessageHeader.globals).
  void* globals() const { return globals_; }
  State state() const { return state_; }
  bool isMapped() const { return library_ != nullptr; }
  DWPluginRef ref() const { return reinterpret_cast<DWPluginRef>(const_cast<Plugin*>(this)); }

  // Suites the plug-in acquired (while handling its messages) and has not released.
  using SuiteKey = std::pair<std::string, int32_t>;
  const std::map<SuiteKey, int64_t>& heldSuites() const { return held_; }
  // What the host released on the plug-in's behalf when it was unloaded for good, e.g. suites a
  // plug-in keeps until its library goes. Empty when the plug-in gave everything back itself.
  const std::vector<std::string>& reclaimedSuites() const { return reclaimed_; }

 private:
  friend class Host;

  std::string path_;
  PluginProperties properties_;
  std::string name_;
  uint32_t options_ = 0;
  void* globals_ = nullptr;
  State state_ = State::Ended;
  State stateBeforeUnload_ = State::Ended;
  void* library_ = nullptr;
  DWPluginMainProc main_ = nullptr;
  std::map<SuiteKey, int64_t> held_;
  std::vector<std::string> reclaimed_;
};

}  // namespace refhost
