#pragma once
#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "fakes/FakeHost.h"
#include "host/all_suites.h"
#include "shell/PluginGlobals.h"

// The art side of the in-process fake host: an art tree with layers, kinds, attributes, styles,
// paths, placed art, plug-in groups and meshes, art sets, artboards, a Pathfinder that unites
// rectangles, and a stand-in for the rasterize engine. It adds its suites to dw::gSuites next to
// a FakeHost, which must be constructed first.
namespace fake {

constexpr DWErr kDeadArt = 0x64656164;   // 'dead': a call on deleted art
constexpr DWErr kNotMember = 0x6E6F744D;  // 'notM': removing what a set does not hold
constexpr DWErr kBadPlace = 0x706C6163;   // 'plac': a paint order the tree cannot honour

struct Art;

struct Style {
  std::string name;
  Art* owner = nullptr;  // the object whose appearance the style is
};

struct Art {
  int16_t kind = kDWGroupArt;
  std::string name;
  Art* parent = nullptr;
  std::vector<Art*> children;  // top first
  uint32_t attributes = 0;
  bool alive = true;
  DWRealRect bounds{};  // of leaves without segments
  Style* style = nullptr;
  Art* styleOwner = nullptr;  // overrides the style's owner when set
  bool ownStyle = false;      // the group query also answers yes for a group with a style
  bool graph = false;
  bool guide = false;
  bool closed = false;
  bool clipped = false;
  bool perspective = false;
  DWPathStyle pathStyle{};
  std::vector<DWPathSegment> segments;
  DWRealRect placedBounds{};
  DWRealMatrix placedMatrix{1, 0, 0, 1, 0, 0};
  Art* result = nullptr;  // plug-in group: neither is a child
  Art* edit = nullptr;
  int32_t meshI = 0;
  int32_t meshJ = 0;
  int32_t blendFlag = 0;  // as the blend style suite last set it (the live effect's grouped rasters)

  bool selected() const { return attributes & kDWArtSelected; }
};

struct ArtSet {
  std::vector<Art*> items;
};

struct UniteCall {
  DWPathfinderRequest request;
  void* message;
  std::vector<std::string> shapes;
};

struct EngineCall {
  std::vector<Art*> set;
  RasterizeSettings settings;
  DWRealRect bounds;
  int32_t paintOrder;
  Art* prep;
  double padding;
};

class FakeArtHost {
 public:
  FakeArtHost();
  ~FakeArtHost();
  FakeArtHost(const FakeArtHost&) = delete;
  FakeArtHost& operator=(const FakeArtHost&) = delete;
  static FakeArtHost& current();

  // Building documents. New objects go to the bottom of their parent.
  Art* addLayer(const std::string& name);
  Art* add(Art* parent, int16_t kind, const std::string& name, DWRealRect bounds = {});
  // A closed, filled rectangle path.
  Art* rectangle(Art* parent, const std::string& name, double left, double top, double right, double bottom);
  Art* pluginGroup(Art* parent, const std::string& name, Art*& result, Art*& edit);
  void select(Art* art, bool whole = true);
  Art* named(const std::string& name) const;  // the live object of that name
  Style* newStyle(const std::string& name, Art* owner = nullptr);

  DWArtSetHandle newSet(const std::vector<Art*>& objects);
  std::vector<Art*> contents(DWArtSetHandle set) const;
  static DWArtHandle handle(Art* art) { return reinterpret_cast<DWArtHandle>(art); }
  static Art* art(DWArtHandle handle) { return reinterpret_cast<Art*>(handle); }

  // Operations of the host: what the suites call (also usable by tests).
  DWErr insert(Art* art, int16_t paintOrder, Art* prep);
  void detach(Art* art);
  void kill(Art* art);
  Art* clone(const Art* source);
  DWRealRect boundsOf(const Art* art) const;
  std::vector<Art*> topmostSelected() const;
  // Objects of a kind that are alive inside a layer (layers themselves not counted).
  int32_t liveArt(int16_t kind) const;

  // Failure injection: "NewArt" fails every call, "NewArt#2" only the second.
  std::map<std::string, DWErr> failures;
  std::map<std::string, int32_t> calls;
  DWErr check(const std::string& operation);

  std::vector<Art*> layers;  // the layer groups, top layer first

  // Artboards.
  bool artboardListAvailable = true;
  bool activeIndexFails = false;
  DWRealRect artboard{0, 0, 0, 0};

  Art* editedPattern = nullptr;
  void holdPerspectiveSuite(bool held);
  void holdPathfinderSuite(bool held);

  // The Pathfinder: unites the rectangles it is given into one path (a compound path when they
  // fall apart), or into a group when asked, placed above the first shape.
  bool uniteGivesGroup = false;
  std::vector<UniteCall> uniteCalls;

  // The engine stand-in, installed in the exported table's RasterizeArtWithPadding slot.
  void installEngine(dw::PluginGlobals& globals);
  std::vector<EngineCall> engineCalls;
  DWErr engineResult = kDWNoErr;
  int32_t engineSteps = 3;
  Art* lastRaster = nullptr;

  int32_t liveSets = 0;
  int32_t liveParsers = 0;

  std::vector<std::unique_ptr<Art>> _art;
  std::vector<std::unique_ptr<ArtSet>> _sets;
  std::vector<std::unique_ptr<Style>> _styles;
  int32_t _created = 0;
};

}  // namespace fake
