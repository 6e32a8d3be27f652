#include <algorithm>
#include <stdexcept>

#include "fakes/FakeArtHost.h"
#include "fakes/FakeArtSuites.h"
#include "shell/HostSuites.h"

namespace fake {

namespace {

FakeArtHost* gArtHost = nullptr;

using namespace detail;
ArtSet* S(DWArtSetHandle h) { return reinterpret_cast<ArtSet*>(h); }

// ---- Art ----
DWErr NewArt(int16_t kind, int16_t paintOrder, DWArtHandle prep, DWArtHandle* out) {
  FAKE_CHECK("NewArt");
  if (prep && !A(prep)->alive) return kDeadArt;
  auto art = std::make_unique<Art>();
  art->kind = kind;
  art->name = "new" + std::to_string(++tree()._created);
  if (const DWErr e = tree().insert(art.get(), paintOrder, A(prep))) return e;
  *out = H(art.get());
  tree()._art.push_back(std::move(art));
  return kDWNoErr;
}
DWErr DisposeArt(DWArtHandle art) {
  FAKE_CHECK("DisposeArt");
  FAKE_LIVE(art);
  tree().detach(A(art));
  tree().kill(A(art));
  return kDWNoErr;
}
FAKE_GET(GetArtType, int16_t, A(art)->kind)
FAKE_GET(GetArtParent, DWArtHandle, H(A(art)->parent))
FAKE_GET(GetArtFirstChild, DWArtHandle, A(art)->children.empty() ? nullptr : H(A(art)->children.front()))
DWErr GetArtSibling(DWArtHandle art, DWArtHandle* sibling) {
  FAKE_CHECK("GetArtSibling");
  FAKE_LIVE(art);
  *sibling = nullptr;
  Art* parent = A(art)->parent;
  if (!parent) return kDWNoErr;
  auto& siblings = parent->children;
  auto it = std::find(siblings.begin(), siblings.end(), A(art));
  if (it != siblings.end() && it + 1 != siblings.end()) *sibling = H(*(it + 1));
  return kDWNoErr;
}
DWErr GetArtUserAttr(DWArtHandle art, uint32_t mask, uint32_t* attr) {
  FAKE_CHECK("GetArtUserAttr");
  FAKE_LIVE(art);
  *attr = A(art)->attributes & mask;
  return kDWNoErr;
}
DWErr SetArtUserAttr(DWArtHandle art, uint32_t mask, uint32_t attr) {
  FAKE_CHECK("SetArtUserAttr");
  FAKE_LIVE(art);
  A(art)->attributes = (A(art)->attributes & ~mask) | (attr & mask);
  return kDWNoErr;
}
DWErr Unused() { return kInjected; }
DWErr GetLayerOfArt(DWArtHandle, DWLayerHandle*) { return Unused(); }
DWErr ArtIsOutsideLayers(DWArtHandle, DWBool*) { return Unused(); }
DWErr GetArtValuePair(DWArtHandle, double*, int32_t*) { return Unused(); }
DWErr SetArtValuePair(DWArtHandle, double, int32_t) { return Unused(); }
DWErr GetLayerGroupArt(DWLayerHandle layer, DWArtHandle* group) {
  *group = H(reinterpret_cast<Art*>(layer));
  return kDWNoErr;
}
DWErr GetFirstArtOfLayer(DWLayerHandle layer, DWArtHandle* art) {
  FAKE_CHECK("GetFirstArtOfLayer");
  Art* group = reinterpret_cast<Art*>(layer);
  *art = group->children.empty() ? nullptr : H(group->children.front());
  return kDWNoErr;
}
FAKE_GET(GetArtBounds, DWRealRect, tree().boundsOf(A(art)))
DWErr ReorderArt(DWArtHandle art, int16_t paintOrder, DWArtHandle prep) {
  FAKE_CHECK("ReorderArt");
  FAKE_LIVE(art);
  if (prep && !A(prep)->alive) return kDeadArt;
  for (Art* p = A(prep); p; p = p->parent)
    if (p == A(art) && paintOrder >= kDWPlaceInsideOnTop) return kBadPlace;
  if (A(art) == A(prep)) return kBadPlace;
  tree().detach(A(art));
  return tree().insert(A(art), paintOrder, A(prep));
}
FAKE_GET(IsArtGraph, DWBool, A(art)->graph)
FAKE_GET(ArtHasOwnStyle, DWBool, A(art)->ownStyle || (A(art)->kind == kDWGroupArt && A(art)->style))
DWErr DuplicateArt(DWArtHandle art, int16_t paintOrder, DWArtHandle prep, DWArtHandle* copy) {
  FAKE_CHECK("DuplicateArt");
  FAKE_LIVE(art);
  if (prep && !A(prep)->alive) return kDeadArt;
  Art* made = tree().clone(A(art));
  if (const DWErr e = tree().insert(made, paintOrder, A(prep))) return e;
  *copy = H(made);
  return kDWNoErr;
}
const DWArtSuite kArtSuite = {NewArt,          DisposeArt,       GetArtType,         GetArtParent,   GetArtFirstChild,
                              GetArtSibling,   GetArtUserAttr,   SetArtUserAttr,     GetLayerOfArt,  ArtIsOutsideLayers,
                              GetArtValuePair, SetArtValuePair,  GetLayerGroupArt,   GetFirstArtOfLayer,
                              GetArtBounds,    ReorderArt,       IsArtGraph,         ArtHasOwnStyle, DuplicateArt};

// ---- Art sets ----
DWErr NewArtSet(DWArtSetHandle* set) {
  FAKE_CHECK("NewArtSet");
  tree()._sets.push_back(std::make_unique<ArtSet>());
  ++tree().liveSets;
  *set = reinterpret_cast<DWArtSetHandle>(tree()._sets.back().get());
  return kDWNoErr;
}
DWErr DisposeArtSet(DWArtSetHandle* set) {
  --tree().liveSets;
  *set = nullptr;
  return kDWNoErr;
}
DWErr CountArtSet(DWArtSetHandle set, int32_t* count) {
  FAKE_CHECK("CountArtSet");
  *count = int32_t(S(set)->items.size());
  return kDWNoErr;
}
DWErr IndexArtSet(DWArtSetHandle set, int32_t index, DWArtHandle* art) {
  FAKE_CHECK("IndexArtSet");
  if (index < 0 || size_t(index) >= S(set)->items.size()) return kBadPlace;
  *art = H(S(set)->items[size_t(index)]);
  return kDWNoErr;
}
DWErr SelectedArtSet(DWArtSetHandle set) {
  FAKE_CHECK("SelectedArtSet");
  S(set)->items = tree().topmostSelected();
  return kDWNoErr;
}
DWErr AddArtToArtSet(DWArtSetHandle set, DWArtHandle art) {
  FAKE_CHECK("AddArtToArtSet");
  S(set)->items.push_back(A(art));
  return kDWNoErr;
}
DWErr RemoveArtFromArtSet(DWArtSetHandle set, DWArtHandle art) {
  FAKE_CHECK("RemoveArtFromArtSet");
  auto& items = S(set)->items;
  auto it = std::find(items.begin(), items.end(), A(art));
  if (it == items.end()) return kNotMember;
  items.erase(it);
  return kDWNoErr;
}
DWErr ReplaceArtInArtSet(DWArtSetHandle set, DWArtHandle old, DWArtHandle replacement) {
  FAKE_CHECK("ReplaceArtInArtSet");
  auto& items = S(set)->items;
  auto it = std::find(items.begin(), items.end(), A(old));
  if (it == items.end()) return kNotMember;
  if (replacement)
    *it = A(replacement);
  else
    items.erase(it);
  return kDWNoErr;
}
DWErr ClearArtSet(DWArtSetHandle set) {
  S(set)->items.clear();
  return kDWNoErr;
}
const DWArtSetSuite kArtSetSuite = {NewArtSet,      DisposeArtSet,       CountArtSet,        IndexArtSet,
                                    SelectedArtSet, AddArtToArtSet,      RemoveArtFromArtSet, ReplaceArtInArtSet,
                                    ClearArtSet,    IndexArtSet};

// ---- Layers ----
DWErr GetCurrentLayer(DWLayerHandle* layer) {
  *layer = reinterpret_cast<DWLayerHandle>(tree().layers.at(0));
  return kDWNoErr;
}
DWErr GetLayerEditable(DWLayerHandle, DWBool* editable) {
  *editable = 1;
  return kDWNoErr;
}
DWErr CountLayers(int32_t* count) {
  FAKE_CHECK("CountLayers");
  *count = int32_t(tree().layers.size());
  return kDWNoErr;
}
DWErr GetNthLayer(int32_t index, DWLayerHandle* layer) {
  FAKE_CHECK("GetNthLayer");
  *layer = reinterpret_cast<DWLayerHandle>(tree().layers.at(size_t(index)));
  return kDWNoErr;
}
DWErr GetLayerVisible(DWLayerHandle, DWBool* visible) {
  *visible = 1;
  return kDWNoErr;
}
DWErr GetLayerNonPrinting(DWLayerHandle, DWBool* nonPrinting) {
  *nonPrinting = 0;
  return kDWNoErr;
}
const DWLayerSuite kLayerSuite = {GetCurrentLayer, GetLayerEditable, CountLayers,
                                  GetNthLayer,     GetLayerVisible,  GetLayerNonPrinting};

void collectSelected(Art* art, std::vector<Art*>& out) {
  if (art->selected()) {
    out.push_back(art);
    return;
  }
  for (Art* child : art->children) collectSelected(child, out);
}

}  // namespace

FakeArtHost::FakeArtHost() {
  if (gArtHost) throw std::logic_error("one FakeArtHost at a time");
  FakeHost::current();  // the base host must exist: it owns strings, user, undo and dictionaries
  gArtHost = this;
  dw::gSuites.art = &kArtSuite;
  dw::gSuites.artSet = &kArtSetSuite;
  dw::gSuites.layer = &kLayerSuite;
  installArtSuites();
  addLayer("Layer 1");
}

FakeArtHost::~FakeArtHost() { gArtHost = nullptr; }

FakeArtHost& FakeArtHost::current() {
  if (!gArtHost) throw std::logic_error("no FakeArtHost");
  return *gArtHost;
}

DWErr FakeArtHost::check(const std::string& operation) {
  const int32_t count = ++calls[operation];
  auto every = failures.find(operation);
  if (every != failures.end()) return every->second;
  auto nth = failures.find(operation + "#" + std::to_string(count));
  return nth == failures.end() ? kDWNoErr : nth->second;
}

Art* FakeArtHost::addLayer(const std::string& name) {
  _art.push_back(std::make_unique<Art>());
  Art* group = _art.back().get();
  group->name = name;
  layers.push_back(group);
  return group;
}

Art* FakeArtHost::add(Art* parent, int16_t kind, const std::string& name, DWRealRect bounds) {
  _art.push_back(std::make_unique<Art>());
  Art* art = _art.back().get();
  art->kind = kind;
  art->name = name;
  art->bounds = bounds;
  art->parent = parent;
  if (parent) parent->children.push_back(art);
  return art;
}

Art* FakeArtHost::rectangle(Art* parent, const std::string& name, double left, double top, double right,
                            double bottom) {
  Art* path = add(parent, kDWPathArt, name);
  const DWRealPoint corners[4] = {{left, top}, {right, top}, {right, bottom}, {left, bottom}};
  for (const DWRealPoint& p : corners) {
    DWPathSegment segment{};
    segment.p = segment.in = segment.out = p;
    segment.corner = 1;
    path->segments.push_back(segment);
  }
  path->closed = true;
  path->pathStyle.fillPaint = 1;
  return path;
}

Art* FakeArtHost::pluginGroup(Art* parent, const std::string& name, Art*& result, Art*& edit) {
  Art* group = add(parent, kDWPluginGroupArt, name);
  result = add(nullptr, kDWGroupArt, name + " result");
  edit = add(nullptr, kDWGroupArt, name + " edit");
  result->parent = edit->parent = group;
  group->result = result;
  group->edit = edit;
  return group;
}

void FakeArtHost::select(Art* art, bool whole) {
  art->attributes |= uint32_t(kDWArtSelected) | (whole ? uint32_t(kDWArtFullySelected) : 0u);
}

Art* FakeArtHost::named(const std::string& name) const {
  for (const auto& art : _art)
    if (art->alive && art->name == name) return art.get();
  return nullptr;
}

Style* FakeArtHost::newStyle(const std::string& name, Art* owner) {
  _styles.push_back(std::make_unique<Style>());
  _styles.back()->name = name;
  _styles.back()->owner = owner;
  return _styles.back().get();
}

DWArtSetHandle FakeArtHost::newSet(const std::vector<Art*>& objects) {
  _sets.push_back(std::make_unique<ArtSet>());
  _sets.back()->items = objects;
  ++liveSets;
  return reinterpret_cast<DWArtSetHandle>(_sets.back().get());
}

std::vector<Art*> FakeArtHost::contents(DWArtSetHandle set) const { return S(set)->items; }

DWErr FakeArtHost::insert(Art* art, int16_t paintOrder, Art* prep) {
  Art* parent = nullptr;
  std::vector<Art*>::iterator at;
  switch (paintOrder) {
    case kDWPlaceAbove:
    case kDWPlaceBelow: {
      if (!prep || !prep->parent) return kBadPlace;
      parent = prep->parent;
      at = std::find(parent->children.begin(), parent->children.end(), prep);
      if (at == parent->children.end()) return kBadPlace;
      if (paintOrder == kDWPlaceBelow) ++at;
      break;
    }
    case kDWPlaceInsideOnTop:
    case kDWPlaceInsideOnBottom:
      if (!prep) return kBadPlace;
      parent = prep;
      at = paintOrder == kDWPlaceInsideOnTop ? parent->children.begin() : parent->children.end();
      break;
    case kDWPlaceAboveAll:
    case kDWPlaceBelowAll:
      parent = layers.at(0);
      at = paintOrder == kDWPlaceAboveAll ? parent->children.begin() : parent->children.end();
      break;
    default: return kBadPlace;
  }
  parent->children.insert(at, art);
  art->parent = parent;
  return kDWNoErr;
}

void FakeArtHost::detach(Art* art) {
  if (!art->parent) return;
  auto& siblings = art->parent->children;
  siblings.erase(std::remove(siblings.begin(), siblings.end(), art), siblings.end());
  art->parent = nullptr;
}

void FakeArtHost::kill(Art* art) {
  art->alive = false;
  for (Art* child : art->children) kill(child);
  if (art->result) kill(art->result);
  if (art->edit) kill(art->edit);
}

Art* FakeArtHost::clone(const Art* source) {
  _art.push_back(std::make_unique<Art>(*source));
  Art* copy = _art.back().get();
  copy->name = source->name + " copy";
  copy->parent = nullptr;
  copy->children.clear();
  for (const Art* child : source->children) {
    Art* childCopy = clone(child);
    childCopy->parent = copy;
    copy->children.push_back(childCopy);
  }
  if (source->result) {
    copy->result = clone(source->result);
    copy->result->parent = copy;
  }
  if (source->edit) {
    copy->edit = clone(source->edit);
    copy->edit->parent = copy;
  }
  return copy;
}

DWRealRect FakeArtHost::boundsOf(const Art* art) const {
  if (art->kind == kDWPathArt && !art->segments.empty()) {
    DWRealRect r{art->segments[0].p.h, art->segments[0].p.v, art->segments[0].p.h, art->segments[0].p.v};
    for (const DWPathSegment& s : art->segments) {
      r.left = std::min(r.left, s.p.h);
      r.right = std::max(r.right, s.p.h);
      r.bottom = std::min(r.bottom, s.p.v);
      r.top = std::max(r.top, s.p.v);
    }
    return r;
  }
  if (art->kind == kDWGroupArt || art->kind == kDWCompoundPathArt) {
    bool any = false;
    DWRealRect r{0, 0, 0, 0};
    for (const Art* child : art->children) {
      if (child->attributes & kDWArtHidden) continue;
      const DWRealRect c = boundsOf(child);
      if (c.right <= c.left || c.top <= c.bottom) continue;
      if (!any) {
        r = c;
        any = true;
      } else {
        r = {std::min(r.left, c.left), std::max(r.top, c.top), std::max(r.right, c.right),
             std::min(r.bottom, c.bottom)};
      }
    }
    return r;
  }
  return art->bounds;
}

std::vector<Art*> FakeArtHost::topmostSelected() const {
  std::vector<Art*> selected;
  for (Art* layer : layers) collectSelected(layer, selected);
  return selected;
}

int32_t FakeArtHost::liveArt(int16_t kind) const {
  int32_t count = 0;
  for (const auto& art : _art)
    if (art->alive && art->kind == kind && art->parent) ++count;
  return count;
}

}  // namespace fake
