#pragma once
#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "host/all_suites.h"

// An in-process host for unit tests: the suites behind settings, dialogs, strings, alerts, undo
// and actions, kept in plain containers that tests set up and inspect. One FakeHost exists at a
// time; it fills dw::gSuites while alive and empties it when destroyed.
namespace fake {

// A host code no real call answers, so that tests can tell an injected failure apart.
constexpr DWErr kInjected = 0x46414B45;      // 'FAKE'
constexpr DWErr kNoDictionary = 0x6E446963;  // 'nDic': a write into no dictionary
constexpr DWErr kMissingKey = 0x6D4B6579;    // 'mKey'

struct Dictionary;

struct Value {
  enum class Kind { Integer, Boolean, Real, Dictionary } kind = Kind::Integer;
  int32_t integer = 0;
  bool boolean = false;
  double real = 0.0;
  Dictionary* dictionary = nullptr;

  static Value ofInteger(int32_t v) { Value x; x.kind = Kind::Integer; x.integer = v; return x; }
  static Value ofBoolean(bool v) { Value x; x.kind = Kind::Boolean; x.boolean = v; return x; }
  static Value ofReal(double v) { Value x; x.kind = Kind::Real; x.real = v; return x; }
};

struct Dictionary {
  std::string name;
  std::map<std::string, Value> entries;
};

struct ActionValue {
  enum class Kind { Enumerated, Integer, Boolean, UnitReal } kind = Kind::Integer;
  std::string name;
  int32_t integer = 0;
  bool boolean = false;
  uint32_t unit = 0;
  double real = 0.0;

  static ActionValue ofEnumerated(const char* n, int32_t v) { return {Kind::Enumerated, n, v}; }
  static ActionValue ofInteger(int32_t v) { return {Kind::Integer, "", v}; }
  static ActionValue ofBoolean(bool v) { return {Kind::Boolean, "", 0, v}; }
  static ActionValue ofUnitReal(uint32_t u, double v) { return {Kind::UnitReal, "", 0, false, u, v}; }
};

struct ParamBlock {
  std::vector<uint32_t> order;  // keys in the order they were first set
  std::map<uint32_t, ActionValue> values;
  void set(uint32_t key, const ActionValue& value) {
    if (!values.count(key)) order.push_back(key);
    values[key] = value;
  }
};

struct RecordedEvent {
  std::string name;
  int32_t dialogState = 0;
  ParamBlock block;
};

struct UsageEvent {
  std::string name;
  std::vector<std::pair<std::string, std::string>> attributes;
};

struct DialogCall {
  RasterizeSettings shown;
  int32_t variant = 0;
};

class FakeHost {
 public:
  FakeHost();
  ~FakeHost();
  FakeHost(const FakeHost&) = delete;
  FakeHost& operator=(const FakeHost&) = delete;

  static FakeHost& current();

  // Failure injection: the operation named "Suite call key" (for example "SetInteger colr",
  // "SetIntegerPreference DPI", "GetColorMode", "CreateDictionary") answers the code.
  std::map<std::string, DWErr> failures;
  DWErr failure(const std::string& operation) const;

  // Document.
  int16_t colorMode = kDWRGBColorMode;
  int32_t level = 12;
  bool documentHasDictionary = true;
  Dictionary* document = nullptr;  // the document's own dictionary
  Dictionary* newDictionary(const std::string& name);
  // The "DW Auto Rasterize" entry, created (empty) on demand when create is true.
  Dictionary* settingsEntry(bool create = false);
  int32_t outstandingReferences() const { return _referencesTaken - _referencesReleased; }

  // Every successful write, as "<dictionary name>:<key>" or "pref:<key>", in order.
  std::vector<std::string> writes;
  // Preferences under "Rasterize/Defaults", by key.
  std::map<std::string, Value> preferences;

  // Strings: a key listed here is localised to its text, other keys give their default text.
  std::map<std::string, std::string> translations;
  int32_t liveStrings = 0;
  std::string text(DWUnicodeString string) const;

  // User suite.
  std::vector<std::string> errorAlerts;
  std::vector<std::string> warningAlerts;
  std::vector<std::string> progressTexts;
  std::vector<std::pair<int32_t, int32_t>> progressUpdates;
  int32_t progressClosed = 0;
  // The cancel query answers yes from this update on (0: never).
  int32_t cancelAtUpdate = 0;
  bool formatNumberFails = false;

  // Undo suite.
  std::vector<std::pair<std::string, std::string>> undoTexts;
  int32_t reverts = 0;

  // The dialog suite, acquired through the basic suite.
  enum class DialogAvailability { Present, Absent, Refused };
  DialogAvailability dialogAvailability = DialogAvailability::Present;
  int32_t dialogAnswer = 0;
  std::function<void(RasterizeSettings&)> dialogEdit;
  std::vector<DialogCall> dialogCalls;
  int32_t dialogSuiteAcquired = 0;
  int32_t dialogSuiteReleased = 0;

  // Usage data (optional suite).
  void holdUsageSuite(bool held);
  bool usageCollects = true;
  std::vector<UsageEvent> usageEvents;

  // Live effect suite: the parameter contexts the plug-in reported as changed ("UpdateParameters"
  // can be made to fail). Registration is not faked here.
  std::vector<DWLiveEffectParamContext> parameterUpdates;

  // Action manager.
  void holdActionSuite(bool held);
  bool recording = false;
  std::vector<RecordedEvent> recorded;
  int32_t liveBlocks = 0;
  ParamBlock* newBlock();
  void disposeBlock(ParamBlock* block);

  // The interned dictionary keys.
  std::set<std::string> keys;
  int32_t _referencesTaken = 0;
  int32_t _referencesReleased = 0;
  std::vector<std::unique_ptr<Dictionary>> _dictionaries;
  std::vector<std::unique_ptr<ParamBlock>> _blocks;
};

// The parameter block handle of a fake block.
inline DWActionParamBlock handleOf(ParamBlock* block) { return reinterpret_cast<DWActionParamBlock>(block); }
inline DWDictionaryRef handleOf(Dictionary* dictionary) { return reinterpret_cast<DWDictionaryRef>(dictionary); }

}  // namespace fake
