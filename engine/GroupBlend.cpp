#include "engine/GroupBlend.h"

#include <algorithm>
#include <vector>

#include "shell/HostSuites.h"

namespace dw {

DWErr nearestCommonAncestor(DWArtHandle a, DWArtHandle b, DWArtHandle& ancestor) {
  ancestor = nullptr;
  std::vector<DWArtHandle> chain;
  for (DWArtHandle art = a; art;) {
    chain.push_back(art);
    DWArtHandle parent = nullptr;
    if (DWErr error = gSuites.art->GetArtParent(art, &parent)) return error;
    art = parent;
  }
  for (DWArtHandle art = b; art;) {
    if (std::find(chain.begin(), chain.end(), art) != chain.end()) {
      ancestor = art;
      return kDWNoErr;
    }
    DWArtHandle parent = nullptr;
    if (DWErr error = gSuites.art->GetArtParent(art, &parent)) return error;
    art = parent;
  }
  return kDWNoErr;
}

uint32_t groupBlendValue(DWArtSetHandle artSet) {
  const HostSuites& s = gSuites;
  int32_t count = 0;
  if (!artSet || s.artSet->CountArtSet(artSet, &count) != kDWNoErr || count <= 0) return 0;

  DWArtHandle running = nullptr;
  DWErr error = s.artSet->IndexArtSet(artSet, 0, &running);
  if (!running) error = s.artSet->GetArtSetEntry(artSet, 0, &running);
  const bool firstFailed = error != kDWNoErr || !running;
  if (count == 1) return firstFailed ? 0 : s.blendStyle->GetBlendValue(running);

  bool failed = firstFailed;
  for (int32_t i = 1; i < count && running && !failed; ++i) {
    DWArtHandle art = nullptr;
    if (s.artSet->IndexArtSet(artSet, i, &art) != kDWNoErr) {
      failed = true;
      break;
    }
    if (art == running) continue;
    DWArtHandle ancestor = nullptr;
    if (nearestCommonAncestor(running, art, ancestor) != kDWNoErr) failed = true;
    running = ancestor;
  }
  if (running && !failed) return s.blendStyle->GetBlendValue(running);
  return s.blendStyle->GetDocumentBlendValue() != 0 ? 1 : 0;
}

}  // namespace dw
