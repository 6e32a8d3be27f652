#include "commands/ArtTree.h"

#include "shell/HostSuites.h"

namespace dw {

DWErr artKind(DWArtHandle art, int16_t& kind) { return gSuites.art->GetArtType(art, &kind); }

DWErr artParent(DWArtHandle art, DWArtHandle& parent) {
  parent = nullptr;
  return gSuites.art->GetArtParent(art, &parent);
}

DWErr firstChild(DWArtHandle art, DWArtHandle& child) {
  child = nullptr;
  return gSuites.art->GetArtFirstChild(art, &child);
}

DWErr nextSibling(DWArtHandle art, DWArtHandle& sibling) {
  sibling = nullptr;
  return gSuites.art->GetArtSibling(art, &sibling);
}

DWErr countChildren(DWArtHandle art, int32_t& count) {
  count = 0;
  DWArtHandle child = nullptr;
  if (const DWErr e = firstChild(art, child)) return e;
  while (child) {
    ++count;
    if (const DWErr e = nextSibling(child, child)) return e;
  }
  return kDWNoErr;
}

DWErr setSelected(DWArtHandle art, bool selected) {
  return gSuites.art->SetArtUserAttr(art, kDWArtSelected, selected ? kDWArtSelected : 0);
}

bool isContainer(int16_t kind) { return kind == kDWGroupArt || kind == kDWCompoundPathArt; }

DWErr artSetCount(DWArtSetHandle set, int32_t& count) {
  count = 0;
  return gSuites.artSet->CountArtSet(set, &count);
}

DWErr artSetObjects(DWArtSetHandle set, std::vector<DWArtHandle>& objects) {
  objects.clear();
  int32_t count = 0;
  if (const DWErr e = artSetCount(set, count)) return e;
  objects.reserve(size_t(count > 0 ? count : 0));
  for (int32_t i = 0; i < count; ++i) {
    DWArtHandle art = nullptr;
    if (const DWErr e = gSuites.artSet->IndexArtSet(set, i, &art)) return e;
    objects.push_back(art);
  }
  return kDWNoErr;
}

ArtSetOwner::~ArtSetOwner() {
  if (_set && gSuites.artSet) gSuites.artSet->DisposeArtSet(&_set);
}

DWErr ArtSetOwner::create() {
  if (_set) dispose();
  return gSuites.artSet->NewArtSet(&_set);
}

DWErr ArtSetOwner::dispose() {
  if (!_set) return kDWNoErr;
  const DWErr error = gSuites.artSet->DisposeArtSet(&_set);
  _set = nullptr;
  return error;
}

}  // namespace dw
