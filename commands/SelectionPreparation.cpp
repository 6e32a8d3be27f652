#include "commands/SelectionPreparation.h"

#include <vector>

#include "commands/ArtTree.h"
#include "shell/HostSuites.h"

namespace dw {

namespace {

DWErr insidePerspective(DWArtHandle art, bool& inside) {
  inside = false;
  DWArtHandle ancestor = nullptr;
  if (const DWErr e = artParent(art, ancestor)) return e;
  while (ancestor) {
    if (gSuites.perspectiveTransform->IsPerspectiveArt(ancestor)) {
      inside = true;
      return kDWNoErr;
    }
    if (const DWErr e = artParent(ancestor, ancestor)) return e;
  }
  return kDWNoErr;
}

enum class Verdict { Keep, TestWholeSelection };

// A group keeps its place when it is a clip group or carries an appearance another object owns.
DWErr judgeGroup(DWArtHandle group, Verdict& verdict) {
  DWBool ownStyle = 0;
  gSuites.art->ArtHasOwnStyle(group, &ownStyle);  // a refusal only leaves the flag at 0
  DWBool clipped = 0;
  if (const DWErr e = gSuites.group->GetGroupClipped(group, &clipped)) return e;
  verdict = Verdict::TestWholeSelection;
  if (clipped) {
    verdict = Verdict::Keep;
    return kDWNoErr;
  }
  if (!ownStyle) return kDWNoErr;
  DWArtStyleHandle style = nullptr;
  if (const DWErr e = gSuites.artStyle->GetArtStyle(group, &style)) return e;
  if (!style) return kDWNoErr;
  DWArtHandle owner = nullptr;
  if (const DWErr e = gSuites.artStyle->GetStyleOwner(group, &owner)) return e;
  if (owner && owner != group) verdict = Verdict::Keep;
  return kDWNoErr;
}

DWErr judge(DWArtHandle art, Verdict& verdict) {
  int16_t kind = 0;
  if (const DWErr e = artKind(art, kind)) return e;
  verdict = Verdict::TestWholeSelection;
  switch (kind) {
    case kDWUnknownArt:
    case kDWCompoundPathArt:
    case kDWTextFrameArt: verdict = Verdict::Keep; return kDWNoErr;
    case kDWPluginGroupArt: {
      DWArtHandle edited = nullptr;
      const bool editing = gSuites.pattern->GetEditedPatternArt(0, &edited) != 0 && edited;
      if (!(editing && edited == art)) verdict = Verdict::Keep;
      return kDWNoErr;
    }
    case kDWGroupArt: return judgeGroup(art, verdict);
    default: return kDWNoErr;
  }
}

}  // namespace

DWErr WrapStyledLayers(DWArtSetHandle set) {
  std::vector<DWArtHandle> objects;
  if (const DWErr e = artSetObjects(set, objects)) return e;
  for (const DWArtHandle art : objects) {
    DWArtHandle parent = nullptr;
    if (const DWErr e = artParent(art, parent)) return e;
    if (parent) continue;
    DWArtStyleHandle style = nullptr;
    if (const DWErr e = gSuites.artStyle->GetArtStyle(art, &style)) return e;
    if (!style) continue;

    DWArtHandle group = nullptr;
    if (const DWErr e = gSuites.art->NewArt(kDWGroupArt, kDWPlaceInsideOnTop, art, &group)) return e;
    if (const DWErr e = gSuites.artStyle->SetArtStyle(group, style)) return e;
    if (const DWErr e = gSuites.artStyle->SetArtStyle(art, nullptr)) return e;
    // The layer's other content follows in its former order.
    DWArtHandle sibling = nullptr;
    if (const DWErr e = nextSibling(group, sibling)) return e;
    while (sibling) {
      if (const DWErr e = gSuites.art->ReorderArt(sibling, kDWPlaceInsideOnBottom, group)) return e;
      if (const DWErr e = nextSibling(group, sibling)) return e;
    }
    if (const DWErr e = gSuites.artSet->ReplaceArtInArtSet(set, art, group)) return e;
  }
  return kDWNoErr;
}

DWErr DropPerspectiveContent(DWArtSetHandle set) {
  if (!gSuites.perspectiveTransform) return kDWNoErr;
  ArtSetOwner collected;
  if (const DWErr e = collected.create()) return e;
  std::vector<DWArtHandle> objects;
  if (const DWErr e = artSetObjects(set, objects)) return e;
  for (const DWArtHandle art : objects) {
    bool inside = false;
    if (const DWErr e = insidePerspective(art, inside)) return e;
    if (inside) {
      if (const DWErr e = gSuites.artSet->AddArtToArtSet(collected.get(), art)) return e;
    }
  }
  std::vector<DWArtHandle> dropped;
  if (const DWErr e = artSetObjects(collected.get(), dropped)) return e;
  for (const DWArtHandle art : dropped) {
    if (const DWErr e = gSuites.artSet->RemoveArtFromArtSet(set, art)) return e;
  }
  return collected.dispose();
}

DWErr KeepWholeObjects(DWArtSetHandle set) {
  int32_t count = 0;
  if (const DWErr e = artSetCount(set, count)) return e;
  for (int32_t index = 0; index < count;) {
    DWArtHandle art = nullptr;
    if (const DWErr e = gSuites.artSet->IndexArtSet(set, index, &art)) return e;
    Verdict verdict = Verdict::Keep;
    if (const DWErr e = judge(art, verdict)) return e;
    if (verdict == Verdict::TestWholeSelection) {
      uint32_t attributes = 0;
      if (const DWErr e = gSuites.art->GetArtUserAttr(art, kDWArtFullySelected, &attributes)) return e;
      if (!(attributes & kDWArtFullySelected)) {
        if (const DWErr e = gSuites.artSet->RemoveArtFromArtSet(set, art)) return e;
        if (const DWErr e = artSetCount(set, count)) return e;
        continue;
      }
    }
    ++index;
  }
  return kDWNoErr;
}

DWErr FindPlacementArt(DWArtSetHandle set, DWArtHandle& placement) {
  placement = nullptr;
  std::vector<DWArtHandle> objects;
  if (const DWErr e = artSetObjects(set, objects)) return e;
  for (const DWArtHandle art : objects) {
    DWArtHandle parent = nullptr;
    if (const DWErr e = artParent(art, parent)) return e;
    if (!parent) continue;
    int16_t kind = 0;
    if (const DWErr e = artKind(parent, kind)) return e;
    if (kind == kDWGroupArt) {
      placement = art;
      return kDWNoErr;
    }
  }
  return kDWNoErr;
}

}  // namespace dw
