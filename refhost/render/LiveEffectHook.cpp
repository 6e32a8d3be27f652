#include "refhost/render/LiveEffectHook.h"

#include "refhost/document/Art.h"

namespace refhost::render {

namespace {

LiveEffectLookup gLookup = nullptr;

}  // namespace

void setLiveEffectLookup(LiveEffectLookup lookup) { gLookup = lookup; }

const Art* liveEffectResult(const Art& art) {
  const ArtStylePtr& style = art.artStyle();
  if (!gLookup || !style || style->effects.empty()) return nullptr;
  const Art* result = gLookup(art);
  return result == &art ? nullptr : result;
}

}  // namespace refhost::render
