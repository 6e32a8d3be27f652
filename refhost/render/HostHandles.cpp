#include "refhost/render/HostHandles.h"

#include <map>
#include <mutex>

namespace refhost::render {

namespace {

struct SpaceEntry {
  ColorSpace::Ptr space;
  const void* owner = nullptr;  // the space whose part this borrowed handle is
  std::map<int, std::unique_ptr<int>> parts;  // part index -> key of its borrowed handle
};

struct GraphicsEntry {
  ColorSpace::Ptr portSpace;
  std::unique_ptr<PathObject> path;
};

struct Tables {
  std::mutex mutex;
  std::map<const void*, std::unique_ptr<SpaceEntry>> spaces;
  std::map<const void*, std::unique_ptr<std::vector<ColorSpace::Ptr>>> lists;
  std::map<const void*, std::unique_ptr<GraphicsEntry>> objects;
  std::map<const void*, std::unique_ptr<Port>> ports;
};

Tables& tables() {
  static Tables t;
  return t;
}

void dropSpace(Tables& t, const void* key) {
  auto it = t.spaces.find(key);
  if (it == t.spaces.end()) return;
  for (auto& part : it->second->parts) t.spaces.erase(part.second.get());
  t.spaces.erase(it);
}

}  // namespace

DWColorSpaceHandle newColorSpaceHandle(ColorSpace::Ptr space) {
  Tables& t = tables();
  std::lock_guard<std::mutex> lock(t.mutex);
  auto entry = std::make_unique<SpaceEntry>();
  entry->space = std::move(space);
  const void* key = entry.get();
  t.spaces.emplace(key, std::move(entry));
  return reinterpret_cast<DWColorSpaceHandle>(const_cast<void*>(key));
}

ColorSpace::Ptr colorSpaceOf(DWColorSpaceHandle handle) {
  Tables& t = tables();
  std::lock_guard<std::mutex> lock(t.mutex);
  auto it = t.spaces.find(handle);
  return it == t.spaces.end() ? nullptr : it->second->space;
}

bool releaseColorSpaceHandle(DWColorSpaceHandle handle) {
  Tables& t = tables();
  std::lock_guard<std::mutex> lock(t.mutex);
  auto it = t.spaces.find(handle);
  if (it == t.spaces.end() || it->second->owner) return false;
  dropSpace(t, handle);
  return true;
}

DWColorSpaceHandle colorSpacePartHandle(DWColorSpaceHandle handle, int index) {
  Tables& t = tables();
  std::lock_guard<std::mutex> lock(t.mutex);
  auto it = t.spaces.find(handle);
  if (it == t.spaces.end()) return nullptr;
  SpaceEntry& entry = *it->second;
  if (index < 0 || index >= entry.space->partCount()) return nullptr;
  if (entry.space->part(index) == entry.space.get()) return handle;
  auto found = entry.parts.find(index);
  if (found != entry.parts.end()) return reinterpret_cast<DWColorSpaceHandle>(found->second.get());
  // The part's handle is a key of its own whose entry shares the part's colour space.
  auto key = std::make_unique<int>(index);
  auto partEntry = std::make_unique<SpaceEntry>();
  const ColorSpace* part = entry.space->part(index);
  partEntry->space = ColorSpace::Ptr(entry.space, part);
  partEntry->owner = handle;
  const void* k = key.get();
  t.spaces.emplace(k, std::move(partEntry));
  entry.parts.emplace(index, std::move(key));
  return reinterpret_cast<DWColorSpaceHandle>(const_cast<void*>(k));
}

DWColorSpaceList newColorSpaceList() {
  Tables& t = tables();
  std::lock_guard<std::mutex> lock(t.mutex);
  auto list = std::make_unique<std::vector<ColorSpace::Ptr>>();
  const void* key = list.get();
  t.lists.emplace(key, std::move(list));
  return reinterpret_cast<DWColorSpaceList>(const_cast<void*>(key));
}

bool addToColorSpaceList(DWColorSpaceList list, ColorSpace::Ptr part) {
  Tables& t = tables();
  std::lock_guard<std::mutex> lock(t.mutex);
  auto it = t.lists.find(list);
  if (it == t.lists.end() || !part) return false;
  it->second->push_back(std::move(part));
  return true;
}

bool colorSpaceListParts(DWColorSpaceList list, std::vector<ColorSpace::Ptr>* parts) {
  Tables& t = tables();
  std::lock_guard<std::mutex> lock(t.mutex);
  auto it = t.lists.find(list);
  if (it == t.lists.end()) return false;
  *parts = *it->second;
  return true;
}

bool disposeColorSpaceList(DWColorSpaceList list) {
  Tables& t = tables();
  std::lock_guard<std::mutex> lock(t.mutex);
  return t.lists.erase(list) == 1;
}

DWPortColorSpace newPortColorSpaceHandle(ColorSpace::Ptr space) {
  Tables& t = tables();
  std::lock_guard<std::mutex> lock(t.mutex);
  auto entry = std::make_unique<GraphicsEntry>();
  entry->portSpace = std::move(space);
  const void* key = entry.get();
  t.objects.emplace(key, std::move(entry));
  return reinterpret_cast<DWPortColorSpace>(const_cast<void*>(key));
}

ColorSpace::Ptr portColorSpaceOf(DWPortColorSpace handle) {
  Tables& t = tables();
  std::lock_guard<std::mutex> lock(t.mutex);
  auto it = t.objects.find(handle);
  return it == t.objects.end() ? nullptr : it->second->portSpace;
}

DWGraphicsObject newPathObjectHandle() {
  Tables& t = tables();
  std::lock_guard<std::mutex> lock(t.mutex);
  auto entry = std::make_unique<GraphicsEntry>();
  entry->path = std::make_unique<PathObject>();
  const void* key = entry.get();
  t.objects.emplace(key, std::move(entry));
  return reinterpret_cast<DWGraphicsObject>(const_cast<void*>(key));
}

PathObject* pathObjectOf(DWGraphicsObject handle) {
  Tables& t = tables();
  std::lock_guard<std::mutex> lock(t.mutex);
  auto it = t.objects.find(handle);
  return it == t.objects.end() ? nullptr : it->second->path.get();
}

bool releaseGraphicsObject(void* handle) {
  Tables& t = tables();
  std::lock_guard<std::mutex> lock(t.mutex);
  return t.objects.erase(handle) == 1;
}

DWPort newPortHandle(std::unique_ptr<Port> port) {
  Tables& t = tables();
  std::lock_guard<std::mutex> lock(t.mutex);
  const void* key = port.get();
  t.ports.emplace(key, std::move(port));
  return reinterpret_cast<DWPort>(const_cast<void*>(key));
}

Port* portOf(DWPort handle) {
  Tables& t = tables();
  std::lock_guard<std::mutex> lock(t.mutex);
  auto it = t.ports.find(handle);
  return it == t.ports.end() ? nullptr : it->second.get();
}

bool disposePortHandle(DWPort handle) {
  Tables& t = tables();
  std::lock_guard<std::mutex> lock(t.mutex);
  return t.ports.erase(handle) == 1;
}

}  // namespace refhost::render
