// "DW Art Set Suite": ordered sets of art, each object at most once. A set keeps the handles it
// was given; an entry whose art has since been deleted reads as null through IndexArtSet and as
// the old handle through GetArtSetEntry.
#include <algorithm>
#include <map>
#include <memory>
#include <vector>

#include "host/suites/art_set_suite.h"
#include "refhost/loader/HostCall.h"
#include "refhost/loader/SuiteProviders.h"
#include "refhost/suites/DocumentAccess.h"

namespace refhost {
namespace {

using ArtSet = std::vector<DWArtHandle>;

std::map<const void*, std::unique_ptr<ArtSet>>& sets() {
  static std::map<const void*, std::unique_ptr<ArtSet>> table;
  return table;
}

ArtSet* setOf(DWArtSetHandle handle) {
  auto it = sets().find(handle);
  return it == sets().end() ? nullptr : it->second.get();
}

ArtSet::iterator find(ArtSet& set, DWArtHandle art) { return std::find(set.begin(), set.end(), art); }

DWErr NewArtSet(DWArtSetHandle* set) {
  REFHOST_CALL(kDWArtSetSuite, "NewArtSet");
  if (!set) return kHostBadParameter;
  return guarded([&] {
    auto created = std::make_unique<ArtSet>();
    *set = reinterpret_cast<DWArtSetHandle>(created.get());
    sets().emplace(created.get(), std::move(created));
    return kDWNoErr;
  });
}

DWErr DisposeArtSet(DWArtSetHandle* set) {
  REFHOST_CALL(kDWArtSetSuite, "DisposeArtSet");
  if (!set || !setOf(*set)) return kHostBadParameter;
  sets().erase(*set);
  *set = nullptr;
  return kDWNoErr;
}

DWErr CountArtSet(DWArtSetHandle set, int32_t* count) {
  REFHOST_CALL(kDWArtSetSuite, "CountArtSet");
  const ArtSet* s = setOf(set);
  if (!s || !count) return kHostBadParameter;
  *count = int32_t(s->size());
  return kDWNoErr;
}

DWErr entryAt(DWArtSetHandle set, int32_t index, DWArtHandle* art, DWArtHandle& entry) {
  const ArtSet* s = setOf(set);
  if (!s || !art || index < 0 || size_t(index) >= s->size()) return kHostBadParameter;
  entry = (*s)[size_t(index)];
  return kDWNoErr;
}

DWErr IndexArtSet(DWArtSetHandle set, int32_t index, DWArtHandle* art) {
  REFHOST_CALL(kDWArtSetSuite, "IndexArtSet");
  DWArtHandle entry = nullptr;
  if (const DWErr e = entryAt(set, index, art, entry)) return e;
  *art = liveArt(entry) ? entry : nullptr;
  return kDWNoErr;
}

DWErr GetArtSetEntry(DWArtSetHandle set, int32_t index, DWArtHandle* art) {
  REFHOST_CALL(kDWArtSetSuite, "GetArtSetEntry");
  DWArtHandle entry = nullptr;
  if (const DWErr e = entryAt(set, index, art, entry)) return e;
  *art = entry;
  return kDWNoErr;
}

// Replaces the contents: selected objects none of whose containers below the layer is selected
// as a whole, in document order. A targeted layer (its group selected) comes with its contents.
DWErr SelectedArtSet(DWArtSetHandle set) {
  REFHOST_CALL(kDWArtSetSuite, "SelectedArtSet");
  ArtSet* s = setOf(set);
  Document* doc = openDocument();
  if (!s || !doc) return kHostBadParameter;
  return guarded([&] {
    s->clear();
    for (Art* art : doc->selectedArt(SelectionScope::Topmost)) s->push_back(artHandle(art));
    return kDWNoErr;
  });
}

DWErr AddArtToArtSet(DWArtSetHandle set, DWArtHandle art) {
  REFHOST_CALL(kDWArtSetSuite, "AddArtToArtSet");
  ArtSet* s = setOf(set);
  if (!s || !liveArt(art)) return kHostBadParameter;
  return guarded([&] {
    if (find(*s, art) == s->end()) s->push_back(art);
    return kDWNoErr;
  });
}

// Removing an object the set does not hold changes nothing; deleted art can still be removed.
DWErr RemoveArtFromArtSet(DWArtSetHandle set, DWArtHandle art) {
  REFHOST_CALL(kDWArtSetSuite, "RemoveArtFromArtSet");
  ArtSet* s = setOf(set);
  if (!s || !art) return kHostBadParameter;
  auto it = find(*s, art);
  if (it != s->end()) s->erase(it);
  return kDWNoErr;
}

DWErr ReplaceArtInArtSet(DWArtSetHandle set, DWArtHandle old, DWArtHandle replacement) {
  REFHOST_CALL(kDWArtSetSuite, "ReplaceArtInArtSet");
  ArtSet* s = setOf(set);
  if (!s || !old || (replacement && !liveArt(replacement))) return kHostBadParameter;
  auto it = find(*s, old);
  if (it == s->end()) return kHostNotFound;
  if (replacement == old) return kDWNoErr;
  // A replacement the set already holds stays where it is: a set holds each object once.
  if (!replacement || find(*s, replacement) != s->end())
    s->erase(it);
  else
    *it = replacement;
  return kDWNoErr;
}

DWErr ClearArtSet(DWArtSetHandle set) {
  REFHOST_CALL(kDWArtSetSuite, "ClearArtSet");
  ArtSet* s = setOf(set);
  if (!s) return kHostBadParameter;
  s->clear();
  return kDWNoErr;
}

const DWArtSetSuite kSuite = {NewArtSet,      DisposeArtSet,       CountArtSet,        IndexArtSet, SelectedArtSet,
                              AddArtToArtSet, RemoveArtFromArtSet, ReplaceArtInArtSet, ClearArtSet, GetArtSetEntry};
REFHOST_REGISTER_SUITE(kDWArtSetSuite, kDWArtSetSuiteVersion, kSuite);

}  // namespace
}  // namespace refhost
