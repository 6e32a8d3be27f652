#include "refhost/document/Preferences.h"

#include "refhost/document/AtomicWrite.h"

#include <nlohmann/json.hpp>

#include <fstream>
#include <sstream>
#include <stdexcept>

namespace refhost {

namespace {

// Line and column of a byte offset, for error messages.
std::string lineAndColumn(const std::string& text, std::size_t offset) {
  std::size_t line = 1, column = 1;
  for (std::size_t i = 0; i < offset && i < text.size(); ++i) {
    if (text[i] == '\n') {
      ++line;
      column = 1;
    } else {
      ++column;
    }
  }
  return std::to_string(line) + ":" + std::to_string(column);
}

}  // namespace

Preferences::Preferences(std::string path) : path_(std::move(path)) { load(); }

void Preferences::load() {
  values_.clear();
  if (path_.empty()) return;
  std::ifstream in(path_, std::ios::binary);
  if (!in) return;
  std::stringstream ss;
  ss << in.rdbuf();
  fromJson(ss.str(), path_);
}

void Preferences::save() const {
  if (!path_.empty()) writeFileAtomically(path_, toJson());
}

void Preferences::set(const std::string& prefix, const std::string& key, Value v) {
  values_[{prefix, key}] = std::move(v);
  if (autoSave_) save();
}

bool Preferences::erase(const std::string& prefix, const std::string& key) {
  const bool erased = values_.erase({prefix, key}) != 0;
  if (erased && autoSave_) save();
  return erased;
}

bool Preferences::contains(const std::string& prefix, const std::string& key) const {
  return values_.count({prefix, key}) != 0;
}

namespace {
template <class T>
std::optional<T> getAs(const std::map<std::pair<std::string, std::string>, Preferences::Value>& values,
                       const std::string& prefix, const std::string& key) {
  auto it = values.find({prefix, key});
  if (it == values.end()) return std::nullopt;
  if (const T* v = std::get_if<T>(&it->second)) return *v;
  return std::nullopt;
}
}  // namespace

std::optional<std::int32_t> Preferences::getInteger(const std::string& p, const std::string& k) const {
  return getAs<std::int32_t>(values_, p, k);
}
std::optional<bool> Preferences::getBoolean(const std::string& p, const std::string& k) const {
  return getAs<bool>(values_, p, k);
}
std::optional<double> Preferences::getReal(const std::string& p, const std::string& k) const {
  return getAs<double>(values_, p, k);
}
std::optional<std::string> Preferences::getString(const std::string& p, const std::string& k) const {
  return getAs<std::string>(values_, p, k);
}

std::string Preferences::toJson() const {
  nlohmann::ordered_json root = nlohmann::ordered_json::object();
  for (const auto& [name, value] : values_) {
    nlohmann::ordered_json& section = root[name.first];
    const std::string& key = name.second;  // clang's C++17 cannot capture a structured binding
    std::visit([&](const auto& v) { section[key] = v; }, value);
  }
  return root.dump(2) + "\n";
}

void Preferences::fromJson(const std::string& text, const std::string& sourceName) {
  nlohmann::json root;
  try {
    root = nlohmann::json::parse(text);
  } catch (const nlohmann::json::parse_error& e) {
    throw std::runtime_error(sourceName + ":" + lineAndColumn(text, e.byte > 0 ? e.byte - 1 : 0) +
                             ": malformed preferences: " + e.what());
  }
  if (!root.is_object()) throw std::runtime_error(sourceName + ": preferences must be a JSON object");
  std::map<std::pair<std::string, std::string>, Value> values;
  for (const auto& [prefix, section] : root.items()) {
    if (!section.is_object()) throw std::runtime_error(sourceName + ": preference section \"" + prefix + "\" is not an object");
    for (const auto& [key, v] : section.items()) {
      if (v.is_boolean()) {
        values[{prefix, key}] = v.get<bool>();
      } else if (v.is_number_integer() && v.get<std::int64_t>() >= INT32_MIN && v.get<std::int64_t>() <= INT32_MAX) {
        values[{prefix, key}] = static_cast<std::int32_t>(v.get<std::int64_t>());
      } else if (v.is_number()) {
        values[{prefix, key}] = v.get<double>();
      } else if (v.is_string()) {
        values[{prefix, key}] = v.get<std::string>();
      } else {
        throw std::runtime_error(sourceName + ": preference \"" + prefix + "/" + key + "\" has an unsupported type");
      }
    }
  }
  values_ = std::move(values);
}

}  // namespace refhost
