#include "tests/engine/FakeHost.h"

#include <algorithm>
#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "engine/Accelerator.h"
#include "engine/DownsampleKernels.h"
#include "engine/Multithreading.h"
#include "engine/PerformanceLog.h"
#include "shell/FourCharCode.h"
#include "shell/HostSuites.h"

namespace dw::fake {

namespace {

FakeHost* gHost = nullptr;

constexpr DWErr kFakeError = fourCharError("FAKE");
constexpr DWErr kMissing = fourCharError("NONE");

FakeHost& H() { return FakeHost::current(); }

#define ENTER(name)                                    \
  do {                                                 \
    if (DWErr injected = H().enter(name)) return injected; \
  } while (0)

Art& A(DWArtHandle h) { return H().art(h); }
Space* S(DWColorSpaceHandle h) { return reinterpret_cast<Space*>(h); }
DWColorSpaceHandle handleOf(Space* s) { return reinterpret_cast<DWColorSpaceHandle>(s); }
Port& P(DWPort port) { return *reinterpret_cast<Port*>(port); }

// --- art set ---
DWErr CountArtSet(DWArtSetHandle set, int32_t* count) {
  ENTER("CountArtSet");
  *count = int32_t(reinterpret_cast<std::vector<DWArtHandle>*>(set)->size());
  return 0;
}
DWErr IndexArtSet(DWArtSetHandle set, int32_t index, DWArtHandle* art) {
  ENTER("IndexArtSet");
  auto& v = *reinterpret_cast<std::vector<DWArtHandle>*>(set);
  if (index < 0 || size_t(index) >= v.size()) return kFakeError;
  *art = v[size_t(index)];
  return 0;
}
DWErr GetArtSetEntry(DWArtSetHandle set, int32_t index, DWArtHandle* art) {
  ENTER("GetArtSetEntry");
  return IndexArtSet(set, index, art);
}

// --- art ---
DWErr NewArt(int16_t kind, int16_t paintOrder, DWArtHandle prep, DWArtHandle* art) {
  ENTER("NewArt");
  DWArtHandle created = H().addArt(kind, prep ? A(prep).parent : nullptr);
  A(created).paintOrder = paintOrder;
  A(created).prep = prep;
  *art = created;
  return 0;
}
DWErr DisposeArt(DWArtHandle art) {
  ENTER("DisposeArt");
  A(art).disposed = true;
  return 0;
}
DWErr GetArtType(DWArtHandle art, int16_t* kind) {
  ENTER("GetArtType");
  *kind = A(art).kind;
  return 0;
}
DWErr GetArtParent(DWArtHandle art, DWArtHandle* parent) {
  ENTER("GetArtParent");
  *parent = A(art).parent;
  return 0;
}
DWErr GetArtUserAttr(DWArtHandle art, uint32_t mask, uint32_t* attr) {
  ENTER("GetArtUserAttr");
  *attr = A(art).userAttr & mask;
  return 0;
}
DWErr SetArtUserAttr(DWArtHandle art, uint32_t mask, uint32_t attr) {
  ENTER("SetArtUserAttr");
  A(art).userAttr = (A(art).userAttr & ~mask) | (attr & mask);
  return 0;
}
DWErr GetLayerOfArt(DWArtHandle art, DWLayerHandle* layer) {
  ENTER("GetLayerOfArt");
  *layer = A(art).layer;
  return 0;
}
DWErr ArtIsOutsideLayers(DWArtHandle art, DWBool* outside) {
  ENTER("ArtIsOutsideLayers");
  *outside = A(art).outsideLayers;
  return 0;
}
DWErr GetArtValuePair(DWArtHandle art, double* real, int32_t* integer) {
  ENTER("GetArtValuePair");
  *real = A(art).real;
  *integer = A(art).integer;
  return 0;
}
DWErr SetArtValuePair(DWArtHandle art, double real, int32_t integer) {
  ENTER("SetArtValuePair");
  A(art).real = real;
  A(art).integer = integer;
  return 0;
}
DWErr GetLayerGroupArt(DWLayerHandle layer, DWArtHandle* group) {
  ENTER("GetLayerGroupArt");
  *group = H().layer(layer).group;
  return 0;
}

// --- path, path style, colour visit ---
DWErr GetPathIsGuide(DWArtHandle path, DWBool* guide) {
  ENTER("GetPathIsGuide");
  *guide = A(path).guide;
  return 0;
}
DWErr GetPathStyle(DWArtHandle art, DWPathStyle* style) {
  ENTER("GetPathStyle");
  *style = A(art).style;
  return 0;
}
DWErr SetPathStyle(DWArtHandle art, const DWPathStyle* style) {
  ENTER("SetPathStyle");
  A(art).style = *style;
  return 0;
}
DWErr VisitColors(DWArtHandle art, DWColorVisitProc visit, void* context) {
  ENTER("VisitColors");
  for (const ColorUse& use : A(art).colors) {
    DWColorUse record{};
    std::memcpy(record.values, use.values, sizeof record.values);
    record.spot = use.spot;
    visit(use.kind, &record, context);
  }
  return 0;
}

// --- colour spaces ---
Space* newSpace(int32_t family, bool alpha, int32_t channels, int32_t process) {
  std::lock_guard<std::mutex> lock(H().mutex);
  H().spaces.emplace_back();
  Space* s = &H().spaces.back();
  s->family = family;
  s->alpha = alpha;
  s->channels = channels + (alpha ? 1 : 0);
  s->processChannels = process;
  ++H().liveSpaces;
  return s;
}
void unref(Space* s) {
  if (--s->refs > 0) return;
  --H().liveSpaces;
  for (Space* part : s->parts) unref(part);
}
DWErr NewProcessColorSpace(int32_t family, DWBool alpha, DWColorSpaceHandle* space) {
  ENTER("NewProcessColorSpace");
  const int32_t channels = family == kDWGrayFamily ? 1 : family == kDWRGBFamily ? 3 : 4;
  *space = handleOf(newSpace(family, alpha != 0, channels, channels));
  return 0;
}
DWErr NewSpotColorSpace(DWCustomColorHandle spot, DWBool alpha, DWColorSpaceHandle* space) {
  ENTER("NewSpotColorSpace");
  Space* s = newSpace(kDWSpotFamily, alpha != 0, 1, 0);
  s->spot = spot;
  *space = handleOf(s);
  return 0;
}
DWErr NewProcessComponentColorSpace(int32_t component, DWColorSpaceHandle* space) {
  ENTER("NewProcessComponentColorSpace");
  Space* s = newSpace(kDWCMYKFamily, false, 1, 1);
  s->component = component;
  *space = handleOf(s);
  return 0;
}
DWErr NewColorSpaceList(DWColorSpaceList* list) {
  ENTER("NewColorSpaceList");
  H().lists.emplace_back();
  ++H().liveLists;
  *list = reinterpret_cast<DWColorSpaceList>(&H().lists.back());
  return 0;
}
DWErr AddToList(DWColorSpaceList list, DWColorSpaceHandle part) {
  ENTER("AddToList");
  ++S(part)->refs;
  reinterpret_cast<std::vector<Space*>*>(list)->push_back(S(part));
  return 0;
}
DWErr NewColorSpaceFromList(DWColorSpaceList list, DWBool alpha, DWColorSpaceHandle* space) {
  ENTER("NewColorSpaceFromList");
  auto& parts = *reinterpret_cast<std::vector<Space*>*>(list);
  int32_t channels = 0, process = 0;
  for (Space* part : parts) {
    channels += part->channels;
    process += part->processChannels;
    ++part->refs;
  }
  Space* s = newSpace(kDWNChannelFamily, alpha != 0, channels, process);
  s->parts = parts;
  *space = handleOf(s);
  return 0;
}
DWErr DisposeList(DWColorSpaceList list) {
  const DWErr injected = H().enter("DisposeList");
  auto& parts = *reinterpret_cast<std::vector<Space*>*>(list);
  for (Space* part : parts) unref(part);
  parts.clear();
  --H().liveLists;
  return injected;
}
DWErr CountChannels(DWColorSpaceHandle space, int32_t* count) {
  ENTER("CountChannels");
  *count = S(space)->channels;
  return 0;
}
DWErr CountProcessChannels(DWColorSpaceHandle space, int32_t* count) {
  ENTER("CountProcessChannels");
  *count = S(space)->processChannels;
  return 0;
}
DWErr GetNthPart(DWColorSpaceHandle space, int32_t index, DWColorSpaceHandle* part) {
  ENTER("GetNthPart");
  Space* s = S(space);
  if (s->parts.empty()) {
    if (index != 0) return kFakeError;
    *part = space;
    return 0;
  }
  if (index < 0 || size_t(index) >= s->parts.size()) return kFakeError;
  *part = handleOf(s->parts[size_t(index)]);
  return 0;
}
DWErr GetFamily(DWColorSpaceHandle space, int32_t* family) {
  ENTER("GetFamily");
  *family = S(space)->family;
  return 0;
}
// Releases and disposals do their bookkeeping even when they report a failure: the plug-in asked.
DWErr ReleaseSpace(DWColorSpaceHandle space) {
  const DWErr injected = H().enter("ReleaseColorSpace");
  std::lock_guard<std::mutex> lock(H().mutex);
  unref(S(space));
  return injected;
}

// --- raster ---
DWErr GetRasterRecord(DWArtHandle raster, DWRasterRecord* record) {
  ENTER("GetRasterRecord");
  *record = A(raster).record;
  return 0;
}
DWErr SetRasterRecord(DWArtHandle raster, const DWRasterRecord* record) {
  ENTER("SetRasterRecord");
  Art& a = A(raster);
  a.record = *record;
  a.hasRecord = true;
  a.pixels.assign(size_t(record->byteWidth) * size_t(record->bounds.bottom - record->bounds.top), 0);
  return 0;
}
DWErr GetRasterMatrix(DWArtHandle raster, DWRealMatrix* matrix) {
  ENTER("GetRasterMatrix");
  *matrix = A(raster).matrix;
  return 0;
}
DWErr SetRasterMatrix(DWArtHandle raster, const DWRealMatrix* matrix) {
  ENTER("SetRasterMatrix");
  A(raster).matrix = *matrix;
  return 0;
}
DWErr SetColorSpace(DWArtHandle raster, DWColorSpaceHandle space) {
  ENTER("SetColorSpace");
  A(raster).rasterSpace = space;
  return 0;
}
DWErr SetRasterUsageFlag(DWArtHandle raster, DWBool flag) {
  ENTER("SetRasterUsageFlag");
  A(raster).usageFlag = flag;
  return 0;
}
DWErr WriteRasterTile(DWArtHandle raster, const DWSlice* rasterSlice, const DWTile* tile, const DWSlice* tileSlice) {
  ENTER("WriteRasterTile");
  Art& a = A(raster);
  H().tileWrites.push_back({raster, *rasterSlice, *tileSlice, tile->rowBytes, tile->colBytes});
  const int32_t width = tileSlice->right - tileSlice->left;
  const size_t bytes = a.record.bitsPerPixel == 1 ? size_t(width + 7) / 8 : size_t(width) * size_t(tile->colBytes);
  for (int32_t r = tileSlice->top; r < tileSlice->bottom; ++r) {
    const int32_t row = rasterSlice->top + (r - tileSlice->top);
    if (row < 0 || row >= a.record.bounds.bottom) return kFakeError;
    std::memcpy(a.pixels.data() + size_t(row) * size_t(a.record.byteWidth),
                static_cast<const uint8_t*>(tile->data) + size_t(r) * size_t(tile->rowBytes), bytes);
  }
  return 0;
}
DWErr ReadRasterTile(DWArtHandle, const DWSlice*, DWTile*, const DWSlice*) { return kFakeError; }

// --- layers ---
DWErr GetCurrentLayer(DWLayerHandle* layer) {
  ENTER("GetCurrentLayer");
  *layer = H().currentLayer;
  return 0;
}
DWErr GetLayerEditable(DWLayerHandle layer, DWBool* editable) {
  ENTER("GetLayerEditable");
  *editable = H().layer(layer).editable;
  return 0;
}
DWErr CountLayers(int32_t* count) {
  ENTER("CountLayers");
  *count = int32_t(H().layers.size());
  return 0;
}
DWErr GetNthLayer(int32_t index, DWLayerHandle* layer) {
  ENTER("GetNthLayer");
  if (index < 0 || size_t(index) >= H().layers.size()) return kFakeError;
  *layer = reinterpret_cast<DWLayerHandle>(&H().layers[size_t(index)]);
  return 0;
}
DWErr GetLayerVisible(DWLayerHandle, DWBool* visible) {
  *visible = 1;
  return 0;
}
DWErr GetLayerNonPrinting(DWLayerHandle, DWBool* nonPrinting) {
  *nonPrinting = 0;
  return 0;
}

// --- styles, blending, symbols ---
DWErr GetArtStyle(DWArtHandle, DWArtStyleHandle* style) {
  *style = nullptr;
  return 0;
}
DWErr SetArtStyle(DWArtHandle art, DWArtStyleHandle style) {
  ENTER("SetArtStyle");
  if (!style) A(art).styleReset = true;
  return 0;
}
DWErr GetStyleOwner(DWArtHandle, DWArtHandle* owner) {
  *owner = nullptr;
  return 0;
}
DWErr SetBlendFlag(DWArtHandle art, int32_t flag) {
  ENTER("SetBlendFlag");
  A(art).blendFlag = flag;
  return 0;
}
uint32_t GetBlendValue(DWArtHandle art) {
  H().enter("GetBlendValue");
  return A(art).blendValue;
}
uint32_t GetDocumentBlendValue() {
  H().enter("GetDocumentBlendValue");
  return H().documentBlendValue;
}
DWBool ArtIsInSymbolEditing(DWArtHandle art, int32_t) {
  H().enter("ArtIsInSymbolEditing");
  return H().symbolEditing;
}
DWErr NotifyArtChanged(DWArtHandle prep, DWArtHandle container, int32_t) {
  ENTER("NotifyArtChanged");
  H().symbolNotifications.push_back(prep);
  H().symbolNotifications.push_back(container);
  return 0;
}

// --- memory, preferences, document ---
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
DWErr ReleaseDictionary(DWDictionaryRef) {
  ENTER("ReleaseDictionary");
  return 0;
}

// --- real math ---
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

// --- user and strings ---
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

// --- developer log ---
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

// --- graphics manager and drawing ---
int gPortSpaceToken;
DWErr NewPortColorSpace(DWColorSpaceHandle space, int32_t flags, DWPortColorSpace* portSpace) {
  ENTER("NewPortColorSpace");
  ++H().livePortSpaces;
  *portSpace = reinterpret_cast<DWPortColorSpace>(&gPortSpaceToken);
  return 0;
}
DWErr NewOffscreenPort(const DWIntRect* bounds, int32_t rowBytes, void* buffer, DWPortColorSpace, int32_t bits,
                       int32_t, DWPort* port) {
  ENTER("NewOffscreenPort");
  H().ports.emplace_back();
  Port& p = H().ports.back();
  p.bounds = *bounds;
  p.rowBytes = rowBytes;
  p.buffer = static_cast<uint8_t*>(buffer);
  p.bitsPerPixel = bits;
  ++H().livePorts;
  *port = reinterpret_cast<DWPort>(&p);
  return 0;
}
DWErr DisposePort(DWPort port) {
  const DWErr injected = H().enter("DisposePort");
  P(port).disposed = true;
  --H().livePorts;
  return injected;
}
DWErr ReleaseObject(void* object) {
  const DWErr injected = H().enter("ReleaseObject");
  if (object == &gPortSpaceToken)
    --H().livePortSpaces;
  else
    --H().liveObjects;
  return injected;
}
DWErr PortOptions(DWPort port, int32_t direction, uint32_t* flags) {
  ENTER(direction == kDWPortOptionsGet ? "PortOptionsGet" : "PortOptionsSet");
  if (direction == kDWPortOptionsGet)
    *flags = P(port).options;
  else
    P(port).options = *flags;
  return 0;
}
DWErr BeginDrawing(DWPort port, const DWIntRect*, DWGraphicsObject, int32_t, uint32_t) {
  ENTER("BeginDrawing");
  P(port).drawing = true;
  return 0;
}
int gPathObject;
DWErr NewObject(int32_t kind, DWGraphicsObject* object) {
  ENTER("NewObject");
  ++H().liveObjects;
  *object = reinterpret_cast<DWGraphicsObject>(&gPathObject);
  return 0;
}
DWErr MoveTo(DWGraphicsObject, float, float) {
  ENTER("MoveTo");
  return 0;
}
DWErr LineTo(DWGraphicsObject, float, float) {
  ENTER("LineTo");
  return 0;
}
DWErr ClosePath(DWGraphicsObject) {
  ENTER("ClosePath");
  return 0;
}
DWErr SaveState(DWPort) {
  ENTER("SaveState");
  return 0;
}
DWErr UseDeviceSpace(DWPort) {
  ENTER("UseDeviceSpace");
  return 0;
}
DWErr ClipToObject(DWPort, DWGraphicsObject, int32_t* depth) {
  ENTER("ClipToObject");
  *depth = 1;
  return 0;
}
DWErr ResetPaint(DWPort) {
  ENTER("ResetPaint");
  return 0;
}
DWErr UseUserSpace(DWPort) {
  ENTER("UseUserSpace");
  return 0;
}

void paint(const Art& art, const DWDrawRecord& r, Port& port) {
  const double scale = r.matrix.a;
  const int32_t bytes = port.bitsPerPixel / 8;
  for (int32_t py = r.device.top; py < r.device.bottom; ++py) {
    const double y = r.origin.v - (py + 0.5) / scale;
    if (y < art.paintRect.bottom || y >= art.paintRect.top) continue;
    uint8_t* row = port.buffer + size_t(py) * size_t(port.rowBytes);
    for (int32_t px = r.device.left; px < r.device.right; ++px) {
      const double x = r.origin.h + (px + 0.5) / scale;
      if (x < art.paintRect.left || x >= art.paintRect.right) continue;
      if (port.bitsPerPixel == 1)
        row[px / 8] = uint8_t(row[px / 8] & ~(0x80 >> (px % 8)));
      else
        for (int32_t k = 0; k < bytes && size_t(k) < art.paintPixel.size(); ++k) row[size_t(px) * bytes + k] = art.paintPixel[size_t(k)];
    }
  }
}

void drawTree(DWArtHandle handle, const DWDrawRecord& r, Port& port) {
  const Art& art = A(handle);
  if (art.paints) paint(art, r, port);
  for (Art& child : H().arts)
    if (child.parent == handle && !child.disposed) drawTree(reinterpret_cast<DWArtHandle>(&child), r, port);
}

DWErr DrawArt(DWDrawRecord* record, const int32_t* options) {
  ENTER("DrawArt");
  Port& port = P(record->port);
  if (!port.drawing) return fourCharError("NDRW");
  H().draws.push_back(
      {record->art, record->port, record->origin, record->matrix, record->flags, options ? *options : -1, record->device});
  drawTree(record->art, *record, port);
  return 0;
}
DWErr FinishDrawing(DWDrawRecord* record, int32_t*) {
  ENTER("FinishDrawing");
  P(record->port).drawing = false;
  return 0;
}

// --- accelerator ---
DWBool HvIsEnabled() {
  H().enter("HvIsEnabled");
  return H().acceleratorEnabled;
}
void HvFillBytes(uint8_t* buffer, int32_t rows, int32_t rowBytes, int32_t fillBytes, uint8_t value) {
  H().enter("HvFillBytes");
  H().byteFills.push_back(buffer);
  for (int32_t y = 0; y < rows; ++y) std::memset(buffer + size_t(y) * size_t(rowBytes), value, size_t(fillBytes));
}
void HvFillPixels32(uint8_t* buffer, int32_t count, uint8_t b0, uint8_t b1, uint8_t b2, uint8_t b3) {
  H().enter("HvFillPixels32");
  {
    std::lock_guard<std::mutex> lock(H().mutex);
    H().pixelFills.push_back({buffer, count});
  }
  for (int32_t i = 0; i < count; ++i) {
    buffer[4 * i] = b0;
    buffer[4 * i + 1] = b1;
    buffer[4 * i + 2] = b2;
    buffer[4 * i + 3] = b3;
  }
}
void recordReduction(const char* call, const DWImageDescriptor* s, const DWImageDescriptor* a,
                     const DWImageDescriptor* d, int32_t f) {
  std::lock_guard<std::mutex> lock(H().mutex);
  H().reductions.push_back({call, *s, a ? *a : DWImageDescriptor{}, *d, f});
}
// The fake does the work in software so that pixel checks hold on the accelerated path too.
DWErr HvReducePixels(const DWImageDescriptor* s, const DWImageDescriptor* d, int32_t f) {
  ENTER("HvReducePixels");
  recordReduction("ReducePixels", s, nullptr, d, f);
  if (H().reducePixelsResult) return H().reducePixelsResult;
  DownsampleTile t{s->base, s->rowBytes, d->base, d->rowBytes, d->columns, d->rows, d->pixelBytes, f};
  downsampleOpaque(t);
  return 0;
}
DWErr HvReducePixelsWithAlpha(const DWImageDescriptor* s, const DWImageDescriptor* a, const DWImageDescriptor* d,
                              int32_t f) {
  ENTER("HvReducePixelsWithAlpha");
  recordReduction("ReducePixelsWithAlpha", s, a, d, f);
  if (H().reducePixelsResult) return H().reducePixelsResult;
  DownsampleTile t{s->base, s->rowBytes, d->base, d->rowBytes, d->columns, d->rows, d->pixelBytes, f};
  downsampleWithAlpha(t);
  return 0;
}
DWErr HvReduceChannel(const DWImageDescriptor* s, const DWImageDescriptor* d, int32_t f) {
  ENTER("HvReduceChannel");
  recordReduction("ReduceChannel", s, nullptr, d, f);
  return H().reduceChannelResult;
}
DWErr HvReduceChannelWeighted(const DWImageDescriptor* s, const DWImageDescriptor* a, const DWImageDescriptor* d,
                              int32_t f) {
  ENTER("HvReduceChannelWeighted");
  recordReduction("ReduceChannelWeighted", s, a, d, f);
  return H().reduceChannelResult;
}

// --- basic suite ---
const DWSymbolUtilsSuite kSymbolUtils = {NotifyArtChanged};
const DWHVExtensionSuite kAccelerator = {HvIsEnabled,    HvFillBytes,     HvFillPixels32, HvReducePixels,
                                         HvReducePixelsWithAlpha, HvReduceChannel, HvReduceChannelWeighted};
DWErr AcquireSuite(const char* name, int32_t version, const void** suite) {
  ENTER("AcquireSuite");
  *suite = nullptr;
  H().suitesAcquired.push_back(name);
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

const DWBasicSuite kBasic = {AcquireSuite, ReleaseSuite};
const DWArtSetSuite kArtSet = {nullptr,  nullptr, CountArtSet, IndexArtSet, nullptr,
                               nullptr,  nullptr, nullptr,     nullptr,     GetArtSetEntry};
const DWArtSuite kArt = {NewArt,         DisposeArt,      GetArtType,      GetArtParent,       nullptr,
                         nullptr,        GetArtUserAttr,  SetArtUserAttr,  GetLayerOfArt,      ArtIsOutsideLayers,
                         GetArtValuePair, SetArtValuePair, GetLayerGroupArt, nullptr,          nullptr,
                         nullptr,        nullptr,         nullptr,         nullptr};
const DWPathSuite kPath = {GetPathIsGuide, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr};
const DWPathStyleSuite kPathStyle = {GetPathStyle, SetPathStyle};
const DWFOConversionSuite kFoConversion = {VisitColors};
const DWColorSpaceSuite kColorSpace = {NewProcessColorSpace,  NewSpotColorSpace, NewProcessComponentColorSpace,
                                       NewColorSpaceList,     AddToList,         NewColorSpaceFromList,
                                       DisposeList,           CountChannels,     CountProcessChannels,
                                       GetNthPart,            GetFamily,         ReleaseSpace};
const DWRasterSuite kRaster = {GetRasterRecord, SetRasterRecord,    GetRasterMatrix, SetRasterMatrix,
                               SetColorSpace,   SetRasterUsageFlag, WriteRasterTile, ReadRasterTile};
const DWLayerSuite kLayer = {GetCurrentLayer, GetLayerEditable, CountLayers, GetNthLayer, GetLayerVisible,
                             GetLayerNonPrinting};
const DWArtStyleSuite kArtStyle = {GetArtStyle, SetArtStyle, GetStyleOwner};
const DWBlendStyleSuite kBlendStyle = {SetBlendFlag, GetBlendValue, GetDocumentBlendValue};
const DWSymbolSuite kSymbol = {ArtIsInSymbolEditing};
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
const DWGraphicsManagerSuite kGraphics = {NewPortColorSpace, NewOffscreenPort, DisposePort, ReleaseObject,
                                          PortOptions,       BeginDrawing,     NewObject,   MoveTo,
                                          LineTo,            ClosePath,        SaveState,   UseDeviceSpace,
                                          ClipToObject,      ResetPaint,       UseUserSpace};
const DWDrawArtSuite kDrawArt = {DrawArt, FinishDrawing};

}  // namespace

DWCustomColorHandle spotColor(uintptr_t n) { return reinterpret_cast<DWCustomColorHandle>(n * 16); }

FakeHost::FakeHost() {
  gHost = this;
  gSuites = HostSuites{};
  gSuites.basic = &kBasic;
  gSuites.artSet = &kArtSet;
  gSuites.art = &kArt;
  gSuites.path = &kPath;
  gSuites.pathStyle = &kPathStyle;
  gSuites.foConversion = &kFoConversion;
  gSuites.colorSpace = &kColorSpace;
  gSuites.raster = &kRaster;
  gSuites.layer = &kLayer;
  gSuites.artStyle = &kArtStyle;
  gSuites.blendStyle = &kBlendStyle;
  gSuites.symbol = &kSymbol;
  gSuites.block = &kBlock;
  gSuites.preference = &kPreference;
  gSuites.dictionary = &kDictionary;
  gSuites.document = &kDocument;
  gSuites.realMath = &kRealMath;
  gSuites.runtime = &kRuntime;
  gSuites.user = &kUser;
  gSuites.unicodeString = &kStrings;
  gSuites.devUtils = &kDevUtils;
  gSuites.graphicsManager = &kGraphics;
  gSuites.drawArt = &kDrawArt;
  // Process-wide answers of the engine belong to one host.
  engine_testing::resetAcceleratorCache();
  engine_testing::resetPerformanceLogCache();
  currentLayer = addLayer();
}

FakeHost::~FakeHost() {
  for (auto& block : blocks) std::free(block.first);
  gSuites = HostSuites{};
  engine_testing::resetAcceleratorCache();
  engine_testing::resetPerformanceLogCache();
  engine_testing::setProcessorCount(0);
  gHost = nullptr;
}

FakeHost& FakeHost::current() { return *gHost; }

DWArtHandle FakeHost::addArt(int16_t kind, DWArtHandle parent) {
  std::lock_guard<std::mutex> lock(mutex);
  arts.emplace_back();
  arts.back().kind = kind;
  arts.back().parent = parent;
  arts.back().layer = currentLayer;
  return reinterpret_cast<DWArtHandle>(&arts.back());
}

Art& FakeHost::art(DWArtHandle handle) { return *reinterpret_cast<Art*>(handle); }

DWArtSetHandle FakeHost::addArtSet(std::vector<DWArtHandle> members) {
  artSets.push_back(std::move(members));
  return reinterpret_cast<DWArtSetHandle>(&artSets.back());
}

DWLayerHandle FakeHost::addLayer(bool editable) {
  layers.emplace_back();
  Layer& l = layers.back();
  l.editable = editable;
  DWLayerHandle handle = reinterpret_cast<DWLayerHandle>(&l);
  arts.emplace_back();
  arts.back().kind = kDWGroupArt;
  arts.back().layer = handle;
  l.group = reinterpret_cast<DWArtHandle>(&arts.back());
  return handle;
}

Layer& FakeHost::layer(DWLayerHandle handle) { return *reinterpret_cast<Layer*>(handle); }

DWArtHandle FakeHost::addPaintedArt(const DWRealRect& rect, std::vector<uint8_t> pixel, DWArtHandle parent) {
  DWArtHandle handle = addArt(kDWPathArt, parent ? parent : layer(currentLayer).group);
  Art& a = art(handle);
  a.paints = true;
  a.paintRect = rect;
  a.paintPixel = std::move(pixel);
  return handle;
}

std::vector<std::string> FakeHost::calls() const {
  std::lock_guard<std::mutex> lock(mutex);
  return _calls;
}

size_t FakeHost::countCalls(const std::string& name) const {
  std::lock_guard<std::mutex> lock(mutex);
  return size_t(std::count(_calls.begin(), _calls.end(), name));
}

long FakeHost::findCall(const std::string& name, size_t from) const {
  std::lock_guard<std::mutex> lock(mutex);
  for (size_t i = from; i < _calls.size(); ++i)
    if (_calls[i] == name) return long(i);
  return -1;
}

std::vector<DWArtHandle> FakeHost::createdRasters() const {
  std::vector<DWArtHandle> result;
  for (const Art& a : arts)
    if (a.kind == kDWRasterArt) result.push_back(reinterpret_cast<DWArtHandle>(const_cast<Art*>(&a)));
  return result;
}

std::vector<DWArtHandle> FakeHost::liveRasters() const {
  std::vector<DWArtHandle> result;
  for (DWArtHandle h : createdRasters())
    if (!reinterpret_cast<Art*>(h)->disposed) result.push_back(h);
  return result;
}

void FakeHost::failCall(const std::string& name, int nth, DWErr code) { _failByName[name] = {nth, code}; }

void FakeHost::failNthCall(size_t nth, DWErr code) {
  _failNth = nth;
  _failNthCode = code;
}

DWErr FakeHost::enter(const char* name) {
  std::lock_guard<std::mutex> lock(mutex);
  _calls.push_back(name);
  const int count = ++_countByName[name];
  if (_failNth && _calls.size() == _failNth) return _failNthCode;
  auto it = _failByName.find(name);
  if (it != _failByName.end() && it->second.first == count) return it->second.second;
  return 0;
}

}  // namespace dw::fake
