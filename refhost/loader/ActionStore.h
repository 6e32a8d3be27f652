#pragma once
#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "host/types.h"

namespace refhost {

class Plugin;

// One described parameter of an action event.
struct ActionParameterRecord {
  uint32_t key = 0;
  std::string label;
  uint32_t type = 0;
  int32_t flag = 0;
};

struct ActionParamDescription {
  std::vector<ActionParameterRecord> parameters;
};

// A typed value of a parameter block.
struct ActionValue {
  enum class Type { Enumerated, Integer, Boolean, UnitReal };
  Type type = Type::Integer;
  std::string name;    // enumerated: the value's name
  int32_t integer = 0;  // enumerated value, integer, boolean
  uint32_t unit = 0;    // unit real
  double real = 0.0;
};

struct ActionParamBlock {
  std::map<uint32_t, ActionValue> values;
};

struct ActionEventRecord {
  std::string name;
  std::string title;
  int32_t version = 0;
  int32_t reserved1 = 0;
  int32_t reserved2 = 0;
  const Plugin* plugin = nullptr;
  int32_t eventValue = 0;
  std::vector<ActionParameterRecord> parameters;
};

struct RecordedAction {
  std::string eventName;
  int32_t dialogState = 0;
  ActionParamBlock parameters;
};

// The host's action manager: registered events, the parameter descriptions and blocks plug-ins
// build, and what was recorded while recording was on.
class ActionStore {
 public:
  DWActionParamDesc newDescription();
  ActionParamDescription* description(const void* handle) const;
  bool disposeDescription(const void* handle);

  DWActionParamBlock newBlock();
  ActionParamBlock* block(const void* handle) const;
  bool disposeBlock(const void* handle);
  size_t liveBlocks() const { return blocks_.size(); }
  size_t liveDescriptions() const { return descriptions_.size(); }

  // kHostDuplicate when an event of that name is registered.
  DWErr registerEvent(ActionEventRecord event);
  const ActionEventRecord* event(const std::string& name) const;
  std::vector<const ActionEventRecord*> events() const;

  bool recording = false;
  void record(RecordedAction action) { recorded_.push_back(std::move(action)); }
  const std::vector<RecordedAction>& recorded() const { return recorded_; }

  void removeOwnedBy(const Plugin* plugin);

 private:
  std::map<const void*, std::unique_ptr<ActionParamDescription>> descriptions_;
  std::map<const void*, std::unique_ptr<ActionParamBlock>> blocks_;
  std::vector<std::unique_ptr<ActionEventRecord>> events_;
  std::vector<RecordedAction> recorded_;
};

// A four-character code as text ("colr").
std::string fourCharText(uint32_t code);

}  // namespace refhost
