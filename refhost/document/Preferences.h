#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <utility>
#include <variant>

namespace refhost {

// Application preferences: (prefix, key) -> integer, boolean, real or string, kept in a JSON file
// {"prefix": {"key": value}} that the tool can point at. Integers and reals stay apart in the file
// (a real is always written with a decimal point).
class Preferences {
 public:
  using Value = std::variant<std::int32_t, bool, double, std::string>;

  Preferences() = default;
  // Reads `path` when it exists (a missing file gives empty preferences); saves go there.
  // Throws std::runtime_error naming the file and line for a malformed file.
  explicit Preferences(std::string path);

  const std::string& path() const { return path_; }
  void setPath(std::string path) { path_ = std::move(path); }
  void load();
  // Writes the file through a temporary name; no-op without a path.
  void save() const;
  // Saves after every set when on.
  void setAutoSave(bool on) { autoSave_ = on; }

  bool contains(const std::string& prefix, const std::string& key) const;
  std::optional<std::int32_t> getInteger(const std::string& prefix, const std::string& key) const;
  std::optional<bool> getBoolean(const std::string& prefix, const std::string& key) const;
  std::optional<double> getReal(const std::string& prefix, const std::string& key) const;
  std::optional<std::string> getString(const std::string& prefix, const std::string& key) const;

  void setInteger(const std::string& prefix, const std::string& key, std::int32_t v) { set(prefix, key, v); }
  void setBoolean(const std::string& prefix, const std::string& key, bool v) { set(prefix, key, v); }
  void setReal(const std::string& prefix, const std::string& key, double v) { set(prefix, key, v); }
  void setString(const std::string& prefix, const std::string& key, std::string v) { set(prefix, key, std::move(v)); }
  bool erase(const std::string& prefix, const std::string& key);

  const std::map<std::pair<std::string, std::string>, Value>& values() const { return values_; }

  // JSON text of the preferences, and the inverse (errors name `sourceName`).
  std::string toJson() const;
  void fromJson(const std::string& text, const std::string& sourceName);

 private:
  void set(const std::string& prefix, const std::string& key, Value v);

  std::string path_;
  bool autoSave_ = false;
  std::map<std::pair<std::string, std::string>, Value> values_;
};

}  // namespace refhost
