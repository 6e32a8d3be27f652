#include "refhost/suites/DictionaryRefs.h"

#include <map>
#include <memory>
#include <mutex>
#include <unordered_set>

namespace refhost {

namespace {

struct Reference {
  DictionaryPtr dictionary;
  int64_t count = 0;
};

// Messages may reach the host from any thread the tool runs, so the tables are locked.
struct Tables {
  std::mutex mutex;
  std::map<const void*, std::unique_ptr<Reference>> byHandle;
  std::map<const Dictionary*, Reference*> byDictionary;
  std::map<std::string, std::unique_ptr<std::string>> keys;
  std::unordered_set<const void*> keyHandles;
};

Tables& tables() {
  static Tables t;
  return t;
}

}  // namespace

DWDictionaryRef retainDictionary(const DictionaryPtr& dictionary) {
  if (!dictionary) return nullptr;
  Tables& t = tables();
  std::lock_guard<std::mutex> lock(t.mutex);
  Reference*& slot = t.byDictionary[dictionary.get()];
  if (!slot) {
    auto reference = std::make_unique<Reference>();
    reference->dictionary = dictionary;
    slot = reference.get();
    t.byHandle.emplace(slot, std::move(reference));
  }
  ++slot->count;
  return reinterpret_cast<DWDictionaryRef>(slot);
}

DictionaryPtr dictionaryOf(DWDictionaryRef handle) {
  Tables& t = tables();
  std::lock_guard<std::mutex> lock(t.mutex);
  auto it = t.byHandle.find(handle);
  return it == t.byHandle.end() ? nullptr : it->second->dictionary;
}

bool releaseDictionary(DWDictionaryRef handle) {
  Tables& t = tables();
  std::lock_guard<std::mutex> lock(t.mutex);
  auto it = t.byHandle.find(handle);
  if (it == t.byHandle.end()) return false;
  if (--it->second->count == 0) {
    t.byDictionary.erase(it->second->dictionary.get());
    t.byHandle.erase(it);
  }
  return true;
}

int64_t dictionaryReferences(DWDictionaryRef handle) {
  Tables& t = tables();
  std::lock_guard<std::mutex> lock(t.mutex);
  auto it = t.byHandle.find(handle);
  return it == t.byHandle.end() ? 0 : it->second->count;
}

DWDictKey internKey(const char* name) {
  if (!name) return nullptr;
  Tables& t = tables();
  std::lock_guard<std::mutex> lock(t.mutex);
  std::unique_ptr<std::string>& slot = t.keys[name];
  if (!slot) {
    slot = std::make_unique<std::string>(name);
    t.keyHandles.insert(slot.get());
  }
  return reinterpret_cast<DWDictKey>(slot.get());
}

const std::string* keyName(DWDictKey key) {
  Tables& t = tables();
  std::lock_guard<std::mutex> lock(t.mutex);
  return t.keyHandles.count(key) ? reinterpret_cast<const std::string*>(key) : nullptr;
}

}  // namespace refhost
