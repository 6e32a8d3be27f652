#include "fakes/FakeHost.h"

#include <cstdio>
#include <cstring>
#include <stdexcept>

#include "shell/HostSuites.h"

namespace fake {

namespace {

FakeHost* gHost = nullptr;

FakeHost& host() { return FakeHost::current(); }

Dictionary* dict(DWDictionaryRef ref) { return reinterpret_cast<Dictionary*>(ref); }
const std::string& keyName(DWDictKey key) { return *reinterpret_cast<const std::string*>(key); }
std::string* str(DWUnicodeString s) { return reinterpret_cast<std::string*>(s); }
ParamBlock* block(DWActionParamBlock b) { return reinterpret_cast<ParamBlock*>(b); }

DWUnicodeString newString(const std::string& text) {
  ++host().liveStrings;
  return reinterpret_cast<DWUnicodeString>(new std::string(text));
}

// ---- Unicode strings ----
DWErr NewFromLocalizable(const char* key, DWUnicodeString* string) {
  if (DWErr e = host().failure("NewFromLocalizable")) return e;
  const std::string whole = key;
  const size_t equals = whole.find('=');
  const std::string path = whole.substr(0, equals);
  auto translated = host().translations.find(path);
  *string = newString(translated != host().translations.end() ? translated->second
                      : equals == std::string::npos       ? whole
                                                          : whole.substr(equals + 1));
  return kDWNoErr;
}
DWErr NewFromBytes(const char* bytes, int32_t length, int32_t, DWUnicodeString* string) {
  *string = newString(std::string(bytes, size_t(length)));
  return kDWNoErr;
}
DWErr Copy(DWUnicodeString source, DWUnicodeString* copy) {
  *copy = newString(*str(source));
  return kDWNoErr;
}
DWBool IsEmpty(DWUnicodeString string) { return !string || str(string)->empty(); }
DWErr GetBytes(DWUnicodeString string, int32_t, char* buffer, int32_t capacity, int32_t* length) {
  const std::string& text = *str(string);
  *length = int32_t(text.size());
  if (buffer) std::memcpy(buffer, text.data(), size_t(std::min<int32_t>(capacity, *length)));
  return kDWNoErr;
}
void Dispose(DWUnicodeString string) {
  --host().liveStrings;
  delete str(string);
}
const DWUnicodeStringSuite kStrings = {NewFromLocalizable, NewFromBytes, Copy, IsEmpty, GetBytes, Dispose};

// ---- Dictionaries ----
DWDictKey MakeKey(const char* name) {
  return reinterpret_cast<DWDictKey>(const_cast<std::string*>(&*host().keys.insert(name).first));
}
DWBool IsValid(DWDictionaryRef d) { return d != nullptr; }
DWBool IsKnown(DWDictionaryRef d, DWDictKey key) { return d && dict(d)->entries.count(keyName(key)) != 0; }

template <typename T>
DWErr getValue(const char* op, DWDictionaryRef d, DWDictKey key, Value::Kind kind, T Value::*field, T* out) {
  if (DWErr e = host().failure(std::string(op) + " " + keyName(key))) return e;
  if (!d) return kNoDictionary;
  auto it = dict(d)->entries.find(keyName(key));
  if (it == dict(d)->entries.end() || it->second.kind != kind) return kMissingKey;
  *out = it->second.*field;
  return kDWNoErr;
}
DWErr setValue(const char* op, DWDictionaryRef d, DWDictKey key, const Value& value) {
  if (DWErr e = host().failure(std::string(op) + " " + keyName(key))) return e;
  if (!d) return kNoDictionary;
  dict(d)->entries[keyName(key)] = value;
  host().writes.push_back(dict(d)->name + ":" + keyName(key));
  return kDWNoErr;
}
DWErr GetInteger(DWDictionaryRef d, DWDictKey k, int32_t* v) {
  return getValue("GetInteger", d, k, Value::Kind::Integer, &Value::integer, v);
}
DWErr SetInteger(DWDictionaryRef d, DWDictKey k, int32_t v) { return setValue("SetInteger", d, k, Value::ofInteger(v)); }
DWErr GetBoolean(DWDictionaryRef d, DWDictKey k, DWBool* v) {
  bool b = false;
  DWErr e = getValue("GetBoolean", d, k, Value::Kind::Boolean, &Value::boolean, &b);
  if (!e) *v = b;
  return e;
}
DWErr SetBoolean(DWDictionaryRef d, DWDictKey k, DWBool v) { return setValue("SetBoolean", d, k, Value::ofBoolean(v)); }
DWErr GetReal(DWDictionaryRef d, DWDictKey k, double* v) {
  return getValue("GetReal", d, k, Value::Kind::Real, &Value::real, v);
}
DWErr SetReal(DWDictionaryRef d, DWDictKey k, double v) { return setValue("SetReal", d, k, Value::ofReal(v)); }
DWErr GetDictEntry(DWDictionaryRef d, DWDictKey k, DWDictionaryRef* entry) {
  Dictionary* found = nullptr;
  if (DWErr e = getValue("GetDictEntry", d, k, Value::Kind::Dictionary, &Value::dictionary, &found)) return e;
  ++host()._referencesTaken;
  *entry = handleOf(found);
  return kDWNoErr;
}
DWErr SetDictEntry(DWDictionaryRef d, DWDictKey k, DWDictionaryRef entry) {
  if (keyName(k) == "DW Auto Rasterize" && entry) dict(entry)->name = "settings";
  Value v;
  v.kind = Value::Kind::Dictionary;
  v.dictionary = dict(entry);
  return setValue("SetDictEntry", d, k, v);
}
DWErr CreateDictionary(DWDictionaryRef* d) {
  if (DWErr e = host().failure("CreateDictionary")) return e;
  ++host()._referencesTaken;
  *d = handleOf(host().newDictionary("created"));
  return kDWNoErr;
}
DWErr Release(DWDictionaryRef) {
  ++host()._referencesReleased;
  return kDWNoErr;
}
const DWDictionarySuite kDictionaries = {MakeKey,    IsValid,    IsKnown, GetInteger,   SetInteger,   GetBoolean,
                                         SetBoolean, GetReal,    SetReal, GetDictEntry, SetDictEntry, CreateDictionary,
                                         Release};

// ---- Document ----
DWErr GetDictionary(DWDictionaryRef* d) {
  if (DWErr e = host().failure("GetDictionary")) return e;
  if (!host().documentHasDictionary) {
    *d = nullptr;
    return kNoDictionary;
  }
  ++host()._referencesTaken;
  *d = handleOf(host().document);
  return kDWNoErr;
}
DWErr GetColorMode(int16_t* mode) {
  if (DWErr e = host().failure("GetColorMode")) return e;
  *mode = host().colorMode;
  return kDWNoErr;
}
DWErr GetLevelNumber(int32_t* level) {
  if (DWErr e = host().failure("GetLevelNumber")) return e;
  *level = host().level;
  return kDWNoErr;
}
const DWDocumentSuite kDocument = {GetDictionary, GetColorMode, GetLevelNumber};

// ---- Preferences ----
std::string prefKey(const char* prefix, const char* key) {
  if (std::strcmp(prefix, "Rasterize/Defaults") != 0) throw std::logic_error("unexpected preference prefix");
  return key;
}
template <typename T>
DWErr getPref(const char* prefix, const char* key, Value::Kind kind, T Value::*field, T* out) {
  if (DWErr e = host().failure(std::string("GetPreference ") + key)) return e;
  auto it = host().preferences.find(prefKey(prefix, key));
  if (it != host().preferences.end() && it->second.kind == kind) *out = it->second.*field;
  return kDWNoErr;
}
DWErr setPref(const char* prefix, const char* key, const Value& value) {
  if (DWErr e = host().failure(std::string("SetPreference ") + key)) return e;
  host().preferences[prefKey(prefix, key)] = value;
  host().writes.push_back(std::string("pref:") + key);
  return kDWNoErr;
}
DWErr GetIntegerPreference(const char* p, const char* k, int32_t* v) {
  return getPref(p, k, Value::Kind::Integer, &Value::integer, v);
}
DWErr SetIntegerPreference(const char* p, const char* k, int32_t v) { return setPref(p, k, Value::ofInteger(v)); }
DWErr GetBooleanPreference(const char* p, const char* k, DWBool* v) {
  bool b = *v != 0;
  DWErr e = getPref(p, k, Value::Kind::Boolean, &Value::boolean, &b);
  *v = b;
  return e;
}
DWErr SetBooleanPreference(const char* p, const char* k, DWBool v) { return setPref(p, k, Value::ofBoolean(v)); }
DWErr GetRealPreference(const char* p, const char* k, double* v) {
  return getPref(p, k, Value::Kind::Real, &Value::real, v);
}
DWErr SetRealPreference(const char* p, const char* k, double v) { return setPref(p, k, Value::ofReal(v)); }
const DWPreferenceSuite kPreferences = {GetIntegerPreference, SetIntegerPreference, GetBooleanPreference,
                                        SetBooleanPreference, GetRealPreference,    SetRealPreference};

// ---- User ----
void ErrorAlert(DWUnicodeString message) { host().errorAlerts.push_back(host().text(message)); }
void WarningAlert(DWUnicodeString message) { host().warningAlerts.push_back(host().text(message)); }
int32_t QuestionAlert(DWUnicodeString, int32_t defaultOk, int32_t) { return defaultOk; }
DWErr SetProgressText(DWUnicodeString text) {
  if (DWErr e = host().failure("SetProgressText")) return e;
  host().progressTexts.push_back(host().text(text));
  return kDWNoErr;
}
void UpdateProgress(int32_t current, int32_t total) { host().progressUpdates.emplace_back(current, total); }
DWBool Cancelled() {
  const int32_t at = host().cancelAtUpdate;
  return at > 0 && int32_t(host().progressUpdates.size()) >= at;
}
void CloseProgress() { ++host().progressClosed; }
DWErr FormatNumber(double value, int32_t decimalPlaces, DWUnicodeString* text) {
  if (host().formatNumberFails) return kInjected;
  char buffer[64];
  std::snprintf(buffer, sizeof buffer, "%.*f", int(decimalPlaces), value);
  *text = newString(buffer);
  return kDWNoErr;
}
const DWUserSuite kUser = {ErrorAlert,     WarningAlert, QuestionAlert, SetProgressText,
                           UpdateProgress, Cancelled,    CloseProgress, FormatNumber};

// ---- Undo ----
DWErr SetUndoText(DWUnicodeString undo, DWUnicodeString redo) {
  host().undoTexts.emplace_back(host().text(undo), host().text(redo));
  return kDWNoErr;
}
DWErr UndoChanges() {
  ++host().reverts;
  return kDWNoErr;
}
const DWUndoSuite kUndo = {SetUndoText, UndoChanges};

// ---- Dialog ----
int32_t ShowRasterizeDialog(RasterizeSettings* settings, int32_t variant) {
  host().dialogCalls.push_back({*settings, variant});
  if (host().dialogEdit) host().dialogEdit(*settings);
  return host().dialogAnswer;
}
const DWRasterizeUISuite kDialog = {ShowRasterizeDialog};

// ---- Basic ----
DWErr AcquireSuite(const char* name, int32_t version, const void** suite) {
  *suite = nullptr;
  if (std::strcmp(name, kDWRasterizeUISuite) != 0 || version != kDWRasterizeUISuiteVersion) return kInjected;
  switch (host().dialogAvailability) {
    case FakeHost::DialogAvailability::Present:
      ++host().dialogSuiteAcquired;
      *suite = &kDialog;
      return kDWNoErr;
    case FakeHost::DialogAvailability::Absent: return kDWNoErr;
    case FakeHost::DialogAvailability::Refused: return kInjected;
  }
  return kInjected;
}
DWErr ReleaseSuite(const char* name, int32_t) {
  if (std::strcmp(name, kDWRasterizeUISuite) == 0) ++host().dialogSuiteReleased;
  return kDWNoErr;
}
const DWBasicSuite kBasic = {AcquireSuite, ReleaseSuite};

// ---- Usage data ----
DWUsageEvent CreateEvent(const char* name) {
  if (!host().usageCollects) return nullptr;
  host().usageEvents.push_back({name, {}});
  return reinterpret_cast<DWUsageEvent>(host().usageEvents.size());
}
DWErr AddAttribute(DWUsageEvent event, const char* key, const char* value) {
  host().usageEvents.at(reinterpret_cast<size_t>(event) - 1).attributes.emplace_back(key, value);
  return kDWNoErr;
}
const DWUsageDataSuite kUsage = {CreateEvent, AddAttribute};

// ---- Live effect ----
DWErr AddLiveEffect(const DWLiveEffectData*, DWLiveEffectHandle*) { return kInjected; }
DWErr AddLiveEffectMenuItem(DWLiveEffectHandle, const char*, const DWLiveEffectMenuData*, DWMenuItemHandle*,
                            DWMenuGroupHandle*) {
  return kInjected;
}
DWErr UpdateParameters(DWLiveEffectParamContext context) {
  if (DWErr e = host().failure("UpdateParameters")) return e;
  host().parameterUpdates.push_back(context);
  return kDWNoErr;
}
const DWLiveEffectSuite kLiveEffect = {AddLiveEffect, AddLiveEffectMenuItem, UpdateParameters};

// ---- Actions ----
DWErr NewParamDescription(DWActionParamDesc*) { return kInjected; }
DWErr DisposeParamDescription(DWActionParamDesc) { return kInjected; }
DWErr AddParamKey(DWActionParamDesc, uint32_t, const char*, uint32_t, DWBool) { return kInjected; }
DWErr RegisterEvent(const char*, const char*, int32_t, int32_t, int32_t, DWPluginRef, int32_t, DWActionParamDesc) {
  return kInjected;
}
DWErr IsRecording(DWBool* recording) {
  *recording = host().recording;
  return kDWNoErr;
}
DWErr NewParamBlock(DWActionParamBlock* b) {
  if (DWErr e = host().failure("NewParamBlock")) return e;
  *b = handleOf(host().newBlock());
  return kDWNoErr;
}
DWErr DisposeParamBlock(DWActionParamBlock b) {
  host().disposeBlock(block(b));
  return kDWNoErr;
}
DWErr SetEnumerated(DWActionParamBlock b, uint32_t key, const char* name, int32_t value) {
  block(b)->set(key, ActionValue::ofEnumerated(name, value));
  return kDWNoErr;
}
DWErr SetActionInteger(DWActionParamBlock b, uint32_t key, int32_t value) {
  block(b)->set(key, ActionValue::ofInteger(value));
  return kDWNoErr;
}
DWErr SetActionBoolean(DWActionParamBlock b, uint32_t key, DWBool value) {
  block(b)->set(key, ActionValue::ofBoolean(value != 0));
  return kDWNoErr;
}
DWErr SetUnitReal(DWActionParamBlock b, uint32_t key, uint32_t unit, double value) {
  block(b)->set(key, ActionValue::ofUnitReal(unit, value));
  return kDWNoErr;
}
DWErr RecordEvent(const char* name, int32_t dialogState, DWActionParamBlock b) {
  host().recorded.push_back({name, dialogState, *block(b)});
  return kDWNoErr;
}
const ActionValue* find(DWActionParamBlock b, uint32_t key, ActionValue::Kind kind) {
  auto it = block(b)->values.find(key);
  return it != block(b)->values.end() && it->second.kind == kind ? &it->second : nullptr;
}
DWErr GetEnumerated(DWActionParamBlock b, uint32_t key, char* name, int32_t capacity, int32_t* value) {
  const ActionValue* v = find(b, key, ActionValue::Kind::Enumerated);
  if (!v) return kMissingKey;
  if (name && capacity > 0) {
    std::strncpy(name, v->name.c_str(), size_t(capacity - 1));
    name[capacity - 1] = '\0';
  }
  *value = v->integer;
  return kDWNoErr;
}
DWErr GetActionInteger(DWActionParamBlock b, uint32_t key, int32_t* value) {
  const ActionValue* v = find(b, key, ActionValue::Kind::Integer);
  if (!v) return kMissingKey;
  *value = v->integer;
  return kDWNoErr;
}
DWErr GetActionBoolean(DWActionParamBlock b, uint32_t key, DWBool* value) {
  const ActionValue* v = find(b, key, ActionValue::Kind::Boolean);
  if (!v) return kMissingKey;
  *value = v->boolean;
  return kDWNoErr;
}
DWErr GetUnitReal(DWActionParamBlock b, uint32_t key, uint32_t* unit, double* value) {
  const ActionValue* v = find(b, key, ActionValue::Kind::UnitReal);
  if (!v) return kMissingKey;
  *unit = v->unit;
  *value = v->real;
  return kDWNoErr;
}
const DWActionManagerSuite kActions = {
    NewParamDescription, DisposeParamDescription, AddParamKey,      RegisterEvent,    IsRecording,
    NewParamBlock,       DisposeParamBlock,       SetEnumerated,    SetActionInteger, SetActionBoolean,
    SetUnitReal,         RecordEvent,             GetEnumerated,    GetActionInteger, GetActionBoolean,
    GetUnitReal};

}  // namespace

FakeHost::FakeHost() {
  if (gHost) throw std::logic_error("one FakeHost at a time");
  gHost = this;
  document = newDictionary("document");
  dw::gSuites = dw::HostSuites{};
  dw::gSuites.basic = &kBasic;
  dw::gSuites.unicodeString = &kStrings;
  dw::gSuites.dictionary = &kDictionaries;
  dw::gSuites.document = &kDocument;
  dw::gSuites.preference = &kPreferences;
  dw::gSuites.user = &kUser;
  dw::gSuites.undo = &kUndo;
  dw::gSuites.liveEffect = &kLiveEffect;
}

FakeHost::~FakeHost() {
  dw::gSuites = dw::HostSuites{};
  gHost = nullptr;
}

FakeHost& FakeHost::current() {
  if (!gHost) throw std::logic_error("no FakeHost");
  return *gHost;
}

DWErr FakeHost::failure(const std::string& operation) const {
  auto it = failures.find(operation);
  return it == failures.end() ? kDWNoErr : it->second;
}

Dictionary* FakeHost::newDictionary(const std::string& name) {
  _dictionaries.push_back(std::make_unique<Dictionary>());
  _dictionaries.back()->name = name;
  return _dictionaries.back().get();
}

Dictionary* FakeHost::settingsEntry(bool create) {
  auto it = document->entries.find("DW Auto Rasterize");
  if (it != document->entries.end()) return it->second.dictionary;
  if (!create) return nullptr;
  Value v;
  v.kind = Value::Kind::Dictionary;
  v.dictionary = newDictionary("settings");
  document->entries["DW Auto Rasterize"] = v;
  return v.dictionary;
}

std::string FakeHost::text(DWUnicodeString string) const { return string ? *str(string) : std::string(); }

void FakeHost::holdUsageSuite(bool held) { dw::gSuites.usageData = held ? &kUsage : nullptr; }
void FakeHost::holdActionSuite(bool held) { dw::gSuites.actionManager = held ? &kActions : nullptr; }

ParamBlock* FakeHost::newBlock() {
  ++liveBlocks;
  _blocks.push_back(std::make_unique<ParamBlock>());
  return _blocks.back().get();
}

void FakeHost::disposeBlock(ParamBlock*) { --liveBlocks; }

}  // namespace fake
