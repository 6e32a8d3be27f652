#include "commands/MaskSet.h"

#include <algorithm>

#include "commands/ArtTree.h"
#include "shell/HostSuites.h"

namespace dw {

DWErr MaskSet::load(DWArtSetHandle set) {
  _set = set;
  const DWErr error = artSetObjects(set, _original);
  _members = _original;
  return error;
}

bool MaskSet::contains(DWArtHandle art) const {
  return art && std::find(_members.begin(), _members.end(), art) != _members.end();
}

DWErr MaskSet::remove(DWArtHandle art) {
  if (!contains(art)) return kDWNoErr;
  if (const DWErr e = gSuites.artSet->RemoveArtFromArtSet(_set, art)) return e;
  _members.erase(std::remove(_members.begin(), _members.end(), art), _members.end());
  return kDWNoErr;
}

DWErr MaskSet::replace(DWArtHandle old, DWArtHandle replacement) {
  if (const DWErr e = gSuites.artSet->ReplaceArtInArtSet(_set, old, replacement)) return e;
  auto it = std::find(_members.begin(), _members.end(), old);
  if (it != _members.end()) *it = replacement;
  return kDWNoErr;
}

DWErr MaskSet::removeWithContents(DWArtHandle art) {
  if (const DWErr e = remove(art)) return e;
  int16_t kind = 0;
  if (const DWErr e = artKind(art, kind)) return e;
  if (kind == kDWPluginGroupArt) {
    DWArtHandle edit = nullptr;
    if (const DWErr e = gSuites.pluginGroup->GetPluginArtEditArt(art, &edit)) return e;
    if (edit) {
      if (const DWErr e = removeWithContents(edit)) return e;
    }
  }
  DWArtHandle child = nullptr;
  if (const DWErr e = firstChild(art, child)) return e;
  while (child) {
    if (const DWErr e = removeWithContents(child)) return e;
    if (const DWErr e = nextSibling(child, child)) return e;
  }
  return kDWNoErr;
}

}  // namespace dw
