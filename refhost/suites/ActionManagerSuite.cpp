// "DW Action Manager Suite": event registration with parameter descriptions, recording, and typed
// parameter blocks.
#include <algorithm>
#include <cstring>

#include "host/suites/action_manager_suite.h"
#include "refhost/loader/HostCall.h"
#include "refhost/loader/SuiteProviders.h"

namespace refhost {
namespace {

ActionStore& store() { return Host::current().actions(); }

DWErr NewParamDescription(DWActionParamDesc* description) {
  REFHOST_CALL(kDWActionManagerSuite, "NewParamDescription");
  if (!description) return kHostBadParameter;
  return guarded([&] {
    *description = store().newDescription();
    return kDWNoErr;
  });
}

DWErr DisposeParamDescription(DWActionParamDesc description) {
  REFHOST_CALL(kDWActionManagerSuite, "DisposeParamDescription");
  return store().disposeDescription(description) ? kDWNoErr : kHostBadParameter;
}

DWErr AddParamKey(DWActionParamDesc description, uint32_t key, const char* label, uint32_t typeCode, DWBool flag) {
  REFHOST_CALL(kDWActionManagerSuite, "AddParamKey");
  ActionParamDescription* record = store().description(description);
  if (!record || !label) return kHostBadParameter;
  return guarded([&] {
    record->parameters.push_back({key, label, typeCode, flag});
    return kDWNoErr;
  });
}

DWErr RegisterEvent(const char* eventName, const char* title, int32_t version, int32_t reserved1, int32_t reserved2,
                    DWPluginRef ref, int32_t eventValue, DWActionParamDesc description) {
  REFHOST_CALL(kDWActionManagerSuite, "RegisterEvent");
  Host& host = Host::current();
  Plugin* plugin = host.plugin(ref);
  const ActionParamDescription* parameters = description ? store().description(description) : nullptr;
  if (!plugin || !eventName || !title || (description && !parameters)) return kHostBadParameter;
  return guarded([&] {
    ActionEventRecord event;
    event.name = eventName;
    event.title = title;
    event.version = version;
    event.reserved1 = reserved1;
    event.reserved2 = reserved2;
    event.plugin = plugin;
    event.eventValue = eventValue;
    // The host keeps its own copy: the plug-in disposes of the description right after.
    if (parameters) event.parameters = parameters->parameters;
    return store().registerEvent(std::move(event));
  });
}

DWErr IsRecording(DWBool* recording) {
  REFHOST_CALL(kDWActionManagerSuite, "IsRecording");
  if (!recording) return kHostBadParameter;
  *recording = store().recording ? 1 : 0;
  return kDWNoErr;
}

DWErr NewParamBlock(DWActionParamBlock* block) {
  REFHOST_CALL(kDWActionManagerSuite, "NewParamBlock");
  if (!block) return kHostBadParameter;
  return guarded([&] {
    *block = store().newBlock();
    return kDWNoErr;
  });
}

DWErr DisposeParamBlock(DWActionParamBlock block) {
  REFHOST_CALL(kDWActionManagerSuite, "DisposeParamBlock");
  return store().disposeBlock(block) ? kDWNoErr : kHostBadParameter;
}

DWErr setValue(DWActionParamBlock block, uint32_t key, ActionValue value) {
  ActionParamBlock* record = store().block(block);
  if (!record) return kHostBadParameter;
  return guarded([&] {
    record->values[key] = std::move(value);
    return kDWNoErr;
  });
}

DWErr SetEnumerated(DWActionParamBlock block, uint32_t key, const char* name, int32_t value) {
  REFHOST_CALL(kDWActionManagerSuite, "SetEnumerated");
  ActionValue entry;
  entry.type = ActionValue::Type::Enumerated;
  entry.name = name ? name : "";
  entry.integer = value;
  return setValue(block, key, std::move(entry));
}

DWErr SetInteger(DWActionParamBlock block, uint32_t key, int32_t value) {
  REFHOST_CALL(kDWActionManagerSuite, "SetInteger");
  ActionValue entry;
  entry.type = ActionValue::Type::Integer;
  entry.integer = value;
  return setValue(block, key, std::move(entry));
}

DWErr SetBoolean(DWActionParamBlock block, uint32_t key, DWBool value) {
  REFHOST_CALL(kDWActionManagerSuite, "SetBoolean");
  ActionValue entry;
  entry.type = ActionValue::Type::Boolean;
  entry.integer = value ? 1 : 0;
  return setValue(block, key, std::move(entry));
}

DWErr SetUnitReal(DWActionParamBlock block, uint32_t key, uint32_t unit, double value) {
  REFHOST_CALL(kDWActionManagerSuite, "SetUnitReal");
  ActionValue entry;
  entry.type = ActionValue::Type::UnitReal;
  entry.unit = unit;
  entry.real = value;
  return setValue(block, key, std::move(entry));
}

DWErr RecordEvent(const char* eventName, int32_t dialogState, DWActionParamBlock block) {
  REFHOST_CALL(kDWActionManagerSuite, "RecordEvent");
  ActionStore& actions = store();
  const ActionParamBlock* parameters = block ? actions.block(block) : nullptr;
  if (!eventName || (block && !parameters)) return kHostBadParameter;
  if (!actions.event(eventName)) return kHostNotFound;
  if (!actions.recording) return kDWNoErr;
  return guarded([&] {
    actions.record({eventName, dialogState, parameters ? *parameters : ActionParamBlock{}});
    return kDWNoErr;
  });
}

// The value of a key of the wanted type: kHostNotFound when absent, kHostWrongType when stored
// as another type.
DWErr lookup(DWActionParamBlock block, uint32_t key, ActionValue::Type type, const ActionValue*& value) {
  const ActionParamBlock* record = store().block(block);
  if (!record) return kHostBadParameter;
  const auto found = record->values.find(key);
  if (found == record->values.end()) return kHostNotFound;
  if (found->second.type != type) return kHostWrongType;
  value = &found->second;
  return kDWNoErr;
}

DWErr GetEnumerated(DWActionParamBlock block, uint32_t key, char* name, int32_t capacity, int32_t* value) {
  REFHOST_CALL(kDWActionManagerSuite, "GetEnumerated");
  if (!value || (name && capacity <= 0)) return kHostBadParameter;
  const ActionValue* entry = nullptr;
  if (DWErr result = lookup(block, key, ActionValue::Type::Enumerated, entry)) return result;
  if (name) {
    const size_t size = std::min(entry->name.size(), size_t(capacity - 1));
    std::memcpy(name, entry->name.data(), size);
    name[size] = '\0';
  }
  *value = entry->integer;
  return kDWNoErr;
}

DWErr GetInteger(DWActionParamBlock block, uint32_t key, int32_t* value) {
  REFHOST_CALL(kDWActionManagerSuite, "GetInteger");
  if (!value) return kHostBadParameter;
  const ActionValue* entry = nullptr;
  if (DWErr result = lookup(block, key, ActionValue::Type::Integer, entry)) return result;
  *value = entry->integer;
  return kDWNoErr;
}

DWErr GetBoolean(DWActionParamBlock block, uint32_t key, DWBool* value) {
  REFHOST_CALL(kDWActionManagerSuite, "GetBoolean");
  if (!value) return kHostBadParameter;
  const ActionValue* entry = nullptr;
  if (DWErr result = lookup(block, key, ActionValue::Type::Boolean, entry)) return result;
  *value = entry->integer;
  return kDWNoErr;
}

DWErr GetUnitReal(DWActionParamBlock block, uint32_t key, uint32_t* unit, double* value) {
  REFHOST_CALL(kDWActionManagerSuite, "GetUnitReal");
  if (!unit || !value) return kHostBadParameter;
  const ActionValue* entry = nullptr;
  if (DWErr result = lookup(block, key, ActionValue::Type::UnitReal, entry)) return result;
  *unit = entry->unit;
  *value = entry->real;
  return kDWNoErr;
}

const DWActionManagerSuite kSuite = {
    NewParamDescription, DisposeParamDescription, AddParamKey,  RegisterEvent, IsRecording, NewParamBlock,
    DisposeParamBlock,   SetEnumerated,           SetInteger,   SetBoolean,    SetUnitReal, RecordEvent,
    GetEnumerated,       GetInteger,              GetBoolean,   GetUnitReal,
};
REFHOST_REGISTER_SUITE(kDWActionManagerSuite, kDWActionManagerSuiteVersion, kSuite);

}  // namespace
}  // namespace refhost
