#include "refhost/suites/LiveEffectResults.h"

#include <algorithm>
#include <memory>
#include <set>
#include <vector>

#include "refhost/document/Document.h"
#include "refhost/loader/Host.h"
#include "refhost/loader/HostCall.h"
#include "refhost/render/LiveEffectHook.h"
#include "refhost/suites/LiveEffectMessages.h"

namespace refhost {

namespace {

// Results being drawn, innermost last: making a result draws its copy, which may hold effects too.
std::vector<const LiveEffectResults*> gActive;

constexpr int kMaxDepth = 64;

bool hasRegisteredEffect(Host& host, const Art& art) {
  const ArtStylePtr& style = art.artStyle();
  if (!style) return false;
  for (const LiveEffect& effect : style->effects)
    if (findLiveEffect(host, effect.name)) return true;
  return false;
}

// The art with effects that drawing `art` reaches: not inside another one (its copy carries the
// inner art along), but inside symbol definitions and plug-in group results.
void collect(Host& host, Art& art, std::vector<Art*>& found, std::set<const Art*>& definitions, int depth) {
  if (!art.isAlive() || art.isHidden() || depth > kMaxDepth) return;
  if (hasRegisteredEffect(host, art)) {
    found.push_back(&art);
    return;
  }
  for (Art* child = art.firstChild(); child; child = child->nextSibling()) collect(host, *child, found, definitions, depth + 1);
  if (const SymbolInstanceData* instance = art.symbolInstance()) {
    Art* definition = instance->symbol && instance->symbol->isAlive() ? instance->symbol->definition() : nullptr;
    if (definition && definitions.insert(definition).second) collect(host, *definition, found, definitions, depth + 1);
  }
  if (const PluginGroupData* group = art.pluginGroup())
    if (group->resultArt) collect(host, *group->resultArt, found, definitions, depth + 1);
}

// The lookup the renderer asks while drawing.
const Art* lookup(const Art& art) { return LiveEffectResults::resultFor(art); }

}  // namespace

LiveEffectResults::LiveEffectResults(Art& root) {
  Host* host = Host::currentOrNull();
  if (!host || !root.isAlive()) return;
  std::vector<Art*> found;
  std::set<const Art*> definitions;
  collect(*host, root, found, definitions, 0);
  if (found.empty()) return;

  render::setLiveEffectLookup(lookup);
  Document& document = root.document();
  document_ = &document;
  firstSerial_ = document.artArenaSize();
  ownTransaction_ = !document.inTransaction();
  if (ownTransaction_) document.beginTransaction();
  error_ = guarded([&] {
    scratch_ = document.newLayer("Live effect results");
    for (Art* art : found) {
      Art* shown = nullptr;
      if (const DWErr error = makeResult(*art, &shown)) return error;
      results_[art] = shown;
    }
    return DWErr(kDWNoErr);
  });
  gActive.push_back(this);
  active_ = true;
}

DWErr LiveEffectResults::makeResult(Art& art, Art** shown) {
  Host& host = Host::current();
  Document& document = *document_;
  const ArtStylePtr style = art.artStyle();
  Art* current = document.duplicateArt(&art, PaintOrder::InsideOnTop, scratch_->group());
  // The copy keeps the style's paint; its effects are what is being applied.
  auto plain = std::make_shared<ArtStyle>(*style);
  plain->effects.clear();
  plain->owner = nullptr;
  current->setArtStyle(plain->hasPaint ? ArtStylePtr(std::move(plain)) : nullptr);
  for (const LiveEffect& effect : style->effects) {
    const LiveEffectRecord* record = findLiveEffect(host, effect.name);
    if (!record) continue;
    Art* result = nullptr;
    if (const DWErr error = goLive(host, *record, effect.parameters, *current, &result)) return error;
    // An effect that returns nothing leaves nothing to draw.
    current = result ? result : document.newArt(ArtKind::Group, PaintOrder::InsideOnBottom, scratch_->group());
  }
  *shown = current;
  return kDWNoErr;
}

LiveEffectResults::~LiveEffectResults() {
  if (!document_) return;
  if (active_) gActive.erase(std::find(gActive.begin(), gActive.end(), this));
  Document& document = *document_;
  try {
    if (ownTransaction_) {
      document.revertTransaction();
      document.endTransaction();
    } else if (scratch_ && scratch_->isAlive()) {
      document.deleteLayer(scratch_);
    }
    // Dead results keep no pixels: a page drawn tile by tile makes them once per tile.
    for (std::size_t serial = firstSerial_; serial < document.artArenaSize(); ++serial) {
      Art* art = document.artBySerial(serial);
      if (art && !art->isAlive() && art->raster()) art->raster()->setRecord(RasterRecord{});
    }
  } catch (...) {
    // Restoring a snapshot or deleting a live layer does not fail; nothing may leave a destructor.
  }
}

const Art* LiveEffectResults::resultFor(const Art& art) {
  for (auto it = gActive.rbegin(); it != gActive.rend(); ++it) {
    const auto found = (*it)->results_.find(&art);
    if (found != (*it)->results_.end()) return found->second;
  }
  return nullptr;
}

}  // namespace refhost
