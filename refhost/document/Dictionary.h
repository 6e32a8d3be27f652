#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <variant>
#include <vector>

namespace refhost {

class Dictionary;
using DictionaryPtr = std::shared_ptr<Dictionary>;

// A dictionary of typed entries, shared by reference: the document's dictionary, live-effect
// parameters and nested entries are all DictionaryPtr. Keys are kept sorted, so walking a
// dictionary (and saving it) is deterministic.
class Dictionary {
 public:
  enum class Type : std::uint8_t { Integer, Boolean, Real, String, Dictionary };
  using Value = std::variant<std::int32_t, bool, double, std::string, DictionaryPtr>;

  static DictionaryPtr create() { return std::make_shared<Dictionary>(); }

  bool contains(const std::string& key) const { return entries_.count(key) != 0; }
  std::optional<Type> typeOf(const std::string& key) const;
  const Value* find(const std::string& key) const;
  std::size_t size() const { return entries_.size(); }
  bool empty() const { return entries_.empty(); }
  std::vector<std::string> keys() const;
  const std::map<std::string, Value>& entries() const { return entries_; }

  // Each getter answers nothing when the key is absent or holds another type.
  std::optional<std::int32_t> getInteger(const std::string& key) const;
  std::optional<bool> getBoolean(const std::string& key) const;
  std::optional<double> getReal(const std::string& key) const;
  std::optional<std::string> getString(const std::string& key) const;
  DictionaryPtr getDictionary(const std::string& key) const;

  void set(const std::string& key, Value value) { entries_[key] = std::move(value); }
  void setInteger(const std::string& key, std::int32_t v) { entries_[key] = v; }
  void setBoolean(const std::string& key, bool v) { entries_[key] = v; }
  void setReal(const std::string& key, double v) { entries_[key] = v; }
  void setString(const std::string& key, std::string v) { entries_[key] = std::move(v); }
  void setDictionary(const std::string& key, DictionaryPtr v) { entries_[key] = std::move(v); }
  bool erase(const std::string& key) { return entries_.erase(key) != 0; }
  void clear() { entries_.clear(); }

  // Copy with nested dictionaries copied too.
  DictionaryPtr deepCopy() const;
  // Same keys, types and values, nested dictionaries compared by content.
  bool sameContent(const Dictionary& other) const;

  // Everything the undo snapshot needs: this dictionary's entries, as they are.
  const std::map<std::string, Value>& rawEntries() const { return entries_; }
  void restoreEntries(std::map<std::string, Value> entries) { entries_ = std::move(entries); }

 private:
  std::map<std::string, Value> entries_;
};

// A reference to one entry of a dictionary, as the dictionary suite hands out; it keeps the
// dictionary alive and reads the entry anew each time.
struct DictionaryEntryRef {
  DictionaryPtr dictionary;
  std::string key;

  bool exists() const { return dictionary && dictionary->contains(key); }
  const Dictionary::Value* value() const { return dictionary ? dictionary->find(key) : nullptr; }
};

}  // namespace refhost
