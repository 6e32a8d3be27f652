// "DW Artboard Suite": the open document's artboards (bounds in points). A list belongs to the
// document it was taken from; properties are a copy of one artboard, valid until disposed.
#include <map>
#include <memory>

#include "host/suites/artboard_suite.h"
#include "refhost/loader/HostCall.h"
#include "refhost/loader/SuiteProviders.h"
#include "refhost/suites/DocumentAccess.h"

namespace refhost {
namespace {

struct ArtboardList {
  const Document* document = nullptr;
};

template <typename T>
std::map<const void*, std::unique_ptr<T>>& table() {
  static std::map<const void*, std::unique_ptr<T>> entries;
  return entries;
}

template <typename T>
T* lookup(const void* handle) {
  auto it = table<T>().find(handle);
  return it == table<T>().end() ? nullptr : it->second.get();
}

template <typename T>
const void* keep(std::unique_ptr<T> entry) {
  const void* key = entry.get();
  table<T>().emplace(key, std::move(entry));
  return key;
}

// A list of the document that is still open.
const Document* listDocument(DWArtboardList list) {
  const ArtboardList* l = lookup<ArtboardList>(list);
  return l && l->document == openDocument() ? l->document : nullptr;
}

DWErr GetArtboardList(DWArtboardList* list) {
  REFHOST_CALL(kDWArtboardSuite, "GetArtboardList");
  const Document* doc = openDocument();
  if (!doc) return kHostNotFound;
  if (!list) return kHostBadParameter;
  return guarded([&] {
    *list = reinterpret_cast<DWArtboardList>(const_cast<void*>(keep(std::make_unique<ArtboardList>(ArtboardList{doc}))));
    return kDWNoErr;
  });
}

DWErr ReleaseArtboardList(DWArtboardList list) {
  REFHOST_CALL(kDWArtboardSuite, "ReleaseArtboardList");
  return table<ArtboardList>().erase(list) == 1 ? kDWNoErr : kHostBadParameter;
}

// -1, without an error, when the document has no active artboard.
DWErr GetActiveArtboardIndex(DWArtboardList list, int32_t* index) {
  REFHOST_CALL(kDWArtboardSuite, "GetActiveArtboardIndex");
  const Document* doc = listDocument(list);
  if (!doc || !index) return kHostBadParameter;
  const int32_t active = doc->activeArtboard();
  *index = active >= 0 && size_t(active) < doc->artboards().size() ? active : -1;
  return kDWNoErr;
}

DWErr GetArtboardProperties(DWArtboardList list, int32_t index, DWArtboardProperties* properties) {
  REFHOST_CALL(kDWArtboardSuite, "GetArtboardProperties");
  const Document* doc = listDocument(list);
  if (!doc || !properties || index < 0 || size_t(index) >= doc->artboards().size()) return kHostBadParameter;
  return guarded([&] {
    const void* key = keep(std::make_unique<Artboard>(doc->artboards()[size_t(index)]));
    *properties = reinterpret_cast<DWArtboardProperties>(const_cast<void*>(key));
    return kDWNoErr;
  });
}

DWErr GetArtboardBounds(DWArtboardProperties properties, DWRealRect* bounds) {
  REFHOST_CALL(kDWArtboardSuite, "GetArtboardBounds");
  const Artboard* board = lookup<Artboard>(properties);
  if (!board || !bounds) return kHostBadParameter;
  *bounds = toRecord(board->bounds);
  return kDWNoErr;
}

DWErr DisposeArtboardProperties(DWArtboardProperties properties) {
  REFHOST_CALL(kDWArtboardSuite, "DisposeArtboardProperties");
  return table<Artboard>().erase(properties) == 1 ? kDWNoErr : kHostBadParameter;
}

const DWArtboardSuite kSuite = {GetArtboardList,       ReleaseArtboardList, GetActiveArtboardIndex,
                                GetArtboardProperties, GetArtboardBounds,   DisposeArtboardProperties};
REFHOST_REGISTER_SUITE(kDWArtboardSuite, kDWArtboardSuiteVersion, kSuite);

}  // namespace
}  // namespace refhost
