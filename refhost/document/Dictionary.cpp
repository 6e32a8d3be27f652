#include "refhost/document/Dictionary.h"

namespace refhost {

std::optional<Dictionary::Type> Dictionary::typeOf(const std::string& key) const {
  const Value* v = find(key);
  if (!v) return std::nullopt;
  return static_cast<Type>(v->index());
}

const Dictionary::Value* Dictionary::find(const std::string& key) const {
  auto it = entries_.find(key);
  return it == entries_.end() ? nullptr : &it->second;
}

std::vector<std::string> Dictionary::keys() const {
  std::vector<std::string> out;
  out.reserve(entries_.size());
  for (const auto& e : entries_) out.push_back(e.first);
  return out;
}

namespace {
template <class T>
std::optional<T> getAs(const Dictionary& d, const std::string& key) {
  const Dictionary::Value* v = d.find(key);
  if (!v) return std::nullopt;
  if (const T* t = std::get_if<T>(v)) return *t;
  return std::nullopt;
}
}  // namespace

std::optional<std::int32_t> Dictionary::getInteger(const std::string& key) const {
  return getAs<std::int32_t>(*this, key);
}
std::optional<bool> Dictionary::getBoolean(const std::string& key) const { return getAs<bool>(*this, key); }
std::optional<double> Dictionary::getReal(const std::string& key) const { return getAs<double>(*this, key); }
std::optional<std::string> Dictionary::getString(const std::string& key) const {
  return getAs<std::string>(*this, key);
}
DictionaryPtr Dictionary::getDictionary(const std::string& key) const {
  auto d = getAs<DictionaryPtr>(*this, key);
  return d ? *d : nullptr;
}

DictionaryPtr Dictionary::deepCopy() const {
  auto copy = create();
  for (const auto& [key, value] : entries_) {
    if (const DictionaryPtr* nested = std::get_if<DictionaryPtr>(&value)) {
      copy->entries_[key] = *nested ? (*nested)->deepCopy() : DictionaryPtr{};
    } else {
      copy->entries_[key] = value;
    }
  }
  return copy;
}

bool Dictionary::sameContent(const Dictionary& other) const {
  if (entries_.size() != other.entries_.size()) return false;
  auto it = other.entries_.begin();
  for (const auto& [key, value] : entries_) {
    if (key != it->first || value.index() != it->second.index()) return false;
    if (const DictionaryPtr* nested = std::get_if<DictionaryPtr>(&value)) {
      const DictionaryPtr& theirs = std::get<DictionaryPtr>(it->second);
      if (!*nested || !theirs) {
        if (*nested != theirs) return false;
      } else if (!(*nested)->sameContent(*theirs)) {
        return false;
      }
    } else if (value != it->second) {
      return false;
    }
    ++it;
  }
  return true;
}

}  // namespace refhost
