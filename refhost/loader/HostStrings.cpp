#include "refhost/loader/HostStrings.h"

namespace refhost {

DWUnicodeString HostStrings::create(std::string utf8) {
  auto object = std::make_unique<std::string>(std::move(utf8));
  const auto handle = reinterpret_cast<DWUnicodeString>(object.get());
  strings_.emplace(object.get(), std::move(object));
  return handle;
}

const std::string* HostStrings::text(DWUnicodeString string) const {
  const auto found = strings_.find(string);
  return found == strings_.end() ? nullptr : found->second.get();
}

bool HostStrings::dispose(DWUnicodeString string) { return strings_.erase(string) != 0; }

std::string HostStrings::localize(const std::string& source) const {
  if (source.rfind("$$$/", 0) != 0) return source;
  const size_t equals = source.find('=');
  const std::string key = source.substr(0, equals);
  const auto translated = translations_.find(key);
  if (translated != translations_.end()) return translated->second;
  return equals == std::string::npos ? source : source.substr(equals + 1);
}

std::string menuDisplayText(const std::string& localised) {
  std::string shown;
  for (size_t i = 0; i < localised.size(); ++i) {
    if (localised[i] == '&') {
      if (i + 1 < localised.size() && localised[i + 1] == '&') shown += '&', ++i;
      continue;
    }
    shown += localised[i];
  }
  return shown;
}

}  // namespace refhost
