#include "refhost/suites/ArtStyleHandles.h"

#include <map>
#include <mutex>

namespace refhost {

namespace {

struct Table {
  std::mutex mutex;
  std::map<const void*, ArtStylePtr> styles;
};

Table& table() {
  static Table t;
  return t;
}

}  // namespace

DWArtStyleHandle artStyleHandle(const ArtStylePtr& style) {
  if (!style) return nullptr;
  Table& t = table();
  std::lock_guard<std::mutex> lock(t.mutex);
  t.styles.emplace(style.get(), style);
  return reinterpret_cast<DWArtStyleHandle>(const_cast<ArtStyle*>(style.get()));
}

ArtStylePtr artStyleOf(DWArtStyleHandle handle) {
  Table& t = table();
  std::lock_guard<std::mutex> lock(t.mutex);
  auto it = t.styles.find(handle);
  return it == t.styles.end() ? nullptr : it->second;
}

}  // namespace refhost
