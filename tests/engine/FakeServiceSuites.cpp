// Fake memory, preferences, document dictionary, geometry, user, strings, developer log and the basic suite.
#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <set>
#include <string>

#include "tests/engine/FakeHostInternal.h"

namespace dw::fake::detail {

namespace {

DWErr AllocateBlock(size_t size, void** block) {
  *block = nullptr;
  ENTER("AllocateBlock");
  std::lock_guard<std::mutex> lock(H().mutex);
  H().allocationSizes.push_back(size);
  if (size > H().maxBlock) return fourCharError("!MEM");
  if (H().failAllocationsFrom && H().allocationSizes.size() >= H().failAllocationsFrom) return fourCharError("!MEM");
  *block = std::malloc(size ? size : 1);
  if (!*block) return fourCharError("!MEM");
  std::memset(*block, 0xA5, size);  // not the background, so a missing clear shows
  H().blocks[*block] = size;
  return 0;
}
DWErr DisposeBlock(void* block) {
  const DWErr injected = H().enter("DisposeBlock");
  std::lock_guard<std::mutex> lock(H().mutex);
  if (!H().blocks.erase(block)) return kFakeError;
  std::free(block);
  return injected;
}
DWErr GetIntegerPreference(const char* prefix, const char* key, int32_t* value) {
  ENTER("GetIntegerPreference");
  auto it = H().preferences.find(std::string(prefix) + "/" + key);
  if (it != H().preferences.end()) *value = it->second;
  return 0;
}
DWErr SetIntegerPreference(const char*, const char*, int32_t) { return kFakeError; }
DWErr GetBooleanPreference(const char*, const char*, DWBool*) { return kFakeError; }
DWErr SetBooleanPreference(const char*, const char*, DWBool) { return kFakeError; }
DWErr GetRealPreference(const char*, const char*, double*) { return kFakeError; }
DWErr SetRealPreference(const char*, const char*, double) { return kFakeError; }

// Dictionaries: the document's, and its "DW Auto Rasterize" entry.
int gDocumentDictionary, gAutoEntry;
std::set<std::string>& keys() {
  static std::set<std::string> interned;
  return interned;
}
DWDictKey MakeKey(const char* name) {
  H().enter("MakeKey");
  return reinterpret_cast<DWDictKey>(const_cast<std::string*>(&*keys().insert(name).first));
}
const std::string& keyName(DWDictKey key) { return *reinterpret_cast<std::string*>(key); }
DWErr GetDictionary(DWDictionaryRef* dictionary) {
  ENTER("GetDictionary");
  *dictionary = reinterpret_cast<DWDictionaryRef>(&gDocumentDictionary);
  return 0;
}
DWErr GetDictEntry(DWDictionaryRef dictionary, DWDictKey key, DWDictionaryRef* entry) {
  ENTER("GetDictEntry");
  if (dictionary != reinterpret_cast<DWDictionaryRef>(&gDocumentDictionary) || keyName(key) != "DW Auto Rasterize" ||
      !H().documentHasDpi)
    return kMissing;
  *entry = reinterpret_cast<DWDictionaryRef>(&gAutoEntry);
  return 0;
}
DWErr GetInteger(DWDictionaryRef dictionary, DWDictKey key, int32_t* value) {
  ENTER("GetInteger");
  if (dictionary != reinterpret_cast<DWDictionaryRef>(&gAutoEntry) || keyName(key) != "dpi.") return kMissing;
  *value = H().documentDpi;
  return 0;
}
FAKE_CALL(ReleaseDictionary, DWDictionaryRef)

DWBool EqualWithinTol(double a, double b, double tolerance) {
  H().enter("EqualWithinTol");
  H().toleranceArgs.push_back(tolerance);
  return (a > b ? a - b : b - a) <= tolerance;
}
void SetMatrixScale(DWRealMatrix* m, double h, double v) {
  H().enter("SetMatrixScale");
  *m = DWRealMatrix{h, 0, 0, v, 0, 0};
}
void ConcatTranslate(DWRealMatrix* m, double tx, double ty) {
  H().enter("ConcatTranslate");
  m->tx += tx;
  m->ty += ty;
}
uint32_t GetMemoryFigure() {
  H().enter("GetMemoryFigure");
  return H().memoryFigure;
}
DWBool IsInteractive() { return 1; }

struct FakeString {
  std::string text;
};
DWErr NewFromLocalizable(const char* key, DWUnicodeString* string) {
  ENTER("NewFromLocalizable");
  const char* equals = std::strchr(key, '=');
  *string = reinterpret_cast<DWUnicodeString>(new FakeString{equals ? equals + 1 : key});
  return 0;
}
DWErr NewFromBytes(const char* bytes, int32_t length, int32_t, DWUnicodeString* string) {
  *string = reinterpret_cast<DWUnicodeString>(new FakeString{std::string(bytes, size_t(length))});
  return 0;
}
DWErr CopyString(DWUnicodeString source, DWUnicodeString* copy) {
  *copy = reinterpret_cast<DWUnicodeString>(new FakeString{*reinterpret_cast<FakeString*>(source)});
  return 0;
}
DWBool IsEmpty(DWUnicodeString string) { return reinterpret_cast<FakeString*>(string)->text.empty(); }
DWErr GetBytes(DWUnicodeString string, int32_t, char* buffer, int32_t capacity, int32_t* length) {
  const std::string& text = reinterpret_cast<FakeString*>(string)->text;
  *length = int32_t(text.size());
  if (buffer) std::memcpy(buffer, text.data(), std::min<size_t>(text.size(), size_t(capacity)));
  return 0;
}
void DisposeString(DWUnicodeString string) { delete reinterpret_cast<FakeString*>(string); }
int32_t QuestionAlert(DWUnicodeString message, int32_t defaultOk, int32_t reserved) {
  H().enter("QuestionAlert");
  H().questions.push_back(reinterpret_cast<FakeString*>(message)->text);
  return H().questionAnswer;
}

int gPerformanceLog, gDefaultLog, gClock;
DWLogHandle GetLog(const char* name) {
  H().enter("GetLog");
  if (name && std::strcmp(name, "DWPerformance.log") == 0 && H().performanceLogExists)
    return reinterpret_cast<DWLogHandle>(&gPerformanceLog);
  return reinterpret_cast<DWLogHandle>(&gDefaultLog);
}
void WriteLine(DWLogHandle log, const char* format, ...) {
  H().enter("WriteLine");
  char line[512];
  va_list args;
  va_start(args, format);
  std::vsnprintf(line, sizeof line, format, args);
  va_end(args);
  if (log == reinterpret_cast<DWLogHandle>(&gPerformanceLog)) H().logLines.push_back(line);
}
DWTimeStamp GetStartStamp() {
  H().enter("GetStartStamp");
  return H().clockNow;
}
DWClockRef GetClock() {
  H().enter("GetClock");
  return reinterpret_cast<DWClockRef>(&gClock);
}
DWTimeStamp ReadClock(DWClockRef) {
  H().enter("ReadClock");
  H().clockNow += H().clockStep;
  return H().clockNow;
}
int64_t Difference(DWTimeStamp later, DWTimeStamp earlier) { return later - earlier; }
uint32_t DurationMilliseconds(int64_t duration) { return uint32_t(duration); }

DWErr AcquireSuite(const char* name, int32_t version, const void** suite) {
  ENTER("AcquireSuite");
  *suite = nullptr;
  if (std::strcmp(name, kDWSymbolUtilsSuite) == 0 && version == kDWSymbolUtilsSuiteVersion)
    *suite = &kSymbolUtils;
  else if (std::strcmp(name, kDWHVExtensionSuite) == 0 && version == kDWHVExtensionSuiteVersion &&
           H().acceleratorAvailable)
    *suite = &kAccelerator;
  if (!*suite) return fourCharError("S!Fd");
  ++H().suitesHeld;
  return 0;
}
DWErr ReleaseSuite(const char*, int32_t) {
  const DWErr injected = H().enter("ReleaseSuite");
  --H().suitesHeld;
  return injected;
}

}  // namespace

const DWBlockSuite kBlock = {AllocateBlock, DisposeBlock};
const DWPreferenceSuite kPreference = {GetIntegerPreference, SetIntegerPreference, GetBooleanPreference,
                                       SetBooleanPreference, GetRealPreference,    SetRealPreference};
const DWDictionarySuite kDictionary = {MakeKey, nullptr, nullptr,      GetInteger,       nullptr, nullptr, nullptr,
                                       nullptr, nullptr, GetDictEntry, nullptr,          nullptr, ReleaseDictionary};
const DWDocumentSuite kDocument = {GetDictionary, nullptr, nullptr};
const DWRealMathSuite kRealMath = {EqualWithinTol, SetMatrixScale, ConcatTranslate, nullptr, nullptr, nullptr,
                                   nullptr,        nullptr,        nullptr,         nullptr, nullptr};
const DWRuntimeSuite kRuntime = {IsInteractive, GetMemoryFigure};
const DWUserSuite kUser = {nullptr, nullptr, QuestionAlert, nullptr, nullptr, nullptr, nullptr, nullptr};
const DWUnicodeStringSuite kStrings = {NewFromLocalizable, NewFromBytes, CopyString,
                                       IsEmpty,            GetBytes,     DisposeString};
const DWDevUtilsSuite kDevUtils = {GetLog, WriteLine, GetStartStamp, GetClock, ReadClock, Difference,
                                   DurationMilliseconds};
const DWBasicSuite kBasic = {AcquireSuite, ReleaseSuite};

}  // namespace dw::fake::detail
