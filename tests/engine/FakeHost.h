#pragma once
// An in-process host for the engine's unit tests: a small art tree, layers, colour spaces, ports
// that the fake draw-art paints rectangles into, rasters that record their tile writes, a block
// allocator that counts, a developer log that keeps its lines, and a switch to fail any call.
// Constructing one fills dw::gSuites with its tables; destroying it empties them again.
#include <cstdint>
#include <deque>
#include <map>
#include <memory>
#include <mutex>
#include <set>
#include <string>
#include <vector>

#include "host/all_suites.h"
#include "host/paint.h"
#include "host/raster.h"

namespace dw::fake {

// One colour use that the colour visit reports for an art object.
struct ColorUse {
  int32_t kind;
  double values[4];
  DWCustomColorHandle spot;
};

DWCustomColorHandle spotColor(uintptr_t n);

struct Art {
  int16_t kind = kDWPathArt;
  DWArtHandle parent = nullptr;
  uint32_t userAttr = 0;
  double real = 0.0;
  int32_t integer = 0;
  DWLayerHandle layer = nullptr;
  bool outsideLayers = false;
  bool guide = false;
  uint32_t blendValue = 0;
  std::vector<ColorUse> colors;
  // Drawing: every port pixel whose centre lies in paintRect (document points) gets paintPixel,
  // one byte per port channel. On 1-bit ports the art paints black (a cleared bit).
  bool paints = false;
  DWRealRect paintRect{};
  std::vector<uint8_t> paintPixel;
  bool disposed = false;
  // Raster art.
  int16_t paintOrder = 0;
  DWArtHandle prep = nullptr;
  bool styleReset = false;
  DWRasterRecord record{};
  DWRealMatrix matrix{};
  DWColorSpaceHandle rasterSpace = nullptr;
  DWBool usageFlag = 0;
  int32_t blendFlag = -1;
  DWPathStyle style{};
  std::vector<uint8_t> pixels;
};

struct Layer {
  bool editable = true;
  DWArtHandle group = nullptr;
};

struct Space {
  int32_t family = 0;
  bool alpha = false;
  DWCustomColorHandle spot = nullptr;
  std::vector<Space*> parts;
  int32_t channels = 0;
  int32_t processChannels = 0;
  int32_t refs = 1;
};

struct Port {
  DWIntRect bounds{};
  int32_t rowBytes = 0;
  uint8_t* buffer = nullptr;
  int32_t bitsPerPixel = 0;
  uint32_t options = 0x2D8013 | 0x40000000;  // some bits the engine must clear, one it must keep
  bool disposed = false;
  bool drawing = false;
};

struct TileWrite {
  DWSlice rasterSlice;
  DWSlice tileSlice;
  int32_t rowBytes;
  int32_t colBytes;
};

struct Draw {
  DWArtHandle art;
  DWPort port;
  DWRealPoint origin;
  DWRealMatrix matrix;
  uint32_t flags;
  int32_t options;
  DWIntRect device;
};

struct Descriptor {
  std::string call;
  DWImageDescriptor source;
  DWImageDescriptor alpha;
  DWImageDescriptor destination;
  int32_t factor;
};

class FakeHost {
 public:
  FakeHost();
  ~FakeHost();
  FakeHost(const FakeHost&) = delete;
  FakeHost& operator=(const FakeHost&) = delete;

  static FakeHost& current();

  // Building the document.
  DWArtHandle addArt(int16_t kind = kDWPathArt, DWArtHandle parent = nullptr);
  Art& art(DWArtHandle handle);
  DWArtSetHandle addArtSet(std::vector<DWArtHandle> arts);
  DWLayerHandle addLayer(bool editable = true);
  Layer& layer(DWLayerHandle handle);
  // An art that paints rect with pixel bytes.
  DWArtHandle addPaintedArt(const DWRealRect& rect, std::vector<uint8_t> pixel, DWArtHandle parent = nullptr);

  // What the host was asked.
  std::vector<std::string> calls() const;
  size_t countCalls(const std::string& name) const;
  // Index of the first call of name at or after from, or -1.
  long findCall(const std::string& name, size_t from = 0) const;
  // Raster arts created and not disposed.
  std::vector<DWArtHandle> liveRasters() const;
  std::vector<DWArtHandle> createdRasters() const;

  // Failures.
  // The nth call (1-based) of name answers code.
  void failCall(const std::string& name, int nth, DWErr code);
  // The next call of name answers code.
  void failNext(const std::string& name, DWErr code) { failCall(name, int(countCalls(name)) + 1, code); }
  // The nth host call of all (1-based, in the order of calls()) answers code when it can fail.
  void failNthCall(size_t nth, DWErr code);

  // State the tests read and set.
  std::deque<Art> arts;
  std::deque<std::vector<DWArtHandle>> artSets;
  std::deque<Layer> layers;
  DWLayerHandle currentLayer = nullptr;
  std::deque<Space> spaces;
  int32_t liveSpaces = 0;
  int32_t liveLists = 0;
  std::deque<std::vector<Space*>> lists;
  std::deque<Port> ports;
  int32_t livePorts = 0;
  int32_t livePortSpaces = 0;
  int32_t liveObjects = 0;
  std::map<void*, size_t> blocks;  // live allocations and their sizes
  std::vector<size_t> allocationSizes;
  size_t maxBlock = SIZE_MAX;      // larger allocations fail
  size_t failAllocationsFrom = 0;  // the nth allocation and every later one fail (0: none)
  std::vector<TileWrite> tileWrites;
  std::vector<Draw> draws;
  std::vector<std::string> logLines;  // lines written to the performance log
  bool performanceLogExists = true;
  int64_t clockNow = 1000;
  int64_t clockStep = 7;  // each reading of the clock advances it
  std::map<std::string, int32_t> preferences;  // "prefix/key"
  bool documentHasDpi = false;
  int32_t documentDpi = 0;
  uint32_t memoryFigure = 512u << 20;
  int32_t questionAnswer = 1;
  std::vector<std::string> questions;
  uint32_t documentBlendValue = 0;
  DWBool symbolEditing = 0;
  std::vector<DWArtHandle> symbolNotifications;
  // The accelerator suite: offered when available, answering isEnabled with enabled.
  bool acceleratorAvailable = false;
  DWBool acceleratorEnabled = 0;
  DWErr reducePixelsResult = 0;           // 0: handled (the fake reduces in software)
  DWErr reduceChannelResult = 0;
  std::vector<Descriptor> reductions;
  std::vector<std::pair<uint8_t*, int32_t>> pixelFills;  // FillPixels32 (buffer, pixel count)
  std::vector<uint8_t*> byteFills;                       // FillBytes buffers
  int32_t suitesHeld = 0;

  // Recorded by the fake when the engine asked for the tolerance test.
  std::vector<double> toleranceArgs;

  // Internal: every fake function enters here. Returns the injected code, if any.
  DWErr enter(const char* name);
  mutable std::mutex mutex;

 private:
  std::vector<std::string> _calls;
  std::map<std::string, std::pair<int, DWErr>> _failByName;
  std::map<std::string, int> _countByName;
  size_t _failNth = 0;
  DWErr _failNthCode = 0;
};

}  // namespace dw::fake
