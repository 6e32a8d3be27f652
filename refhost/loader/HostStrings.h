#pragma once
#include <map>
#include <memory>
#include <string>
#include <unordered_map>

#include "host/types.h"

namespace refhost {

// The host's string objects (handles of "DW Unicode String Suite") and its localisation table.
class HostStrings {
 public:
  DWUnicodeString create(std::string utf8);
  // Null for a handle the host did not give out or that was disposed.
  const std::string* text(DWUnicodeString string) const;
  bool dispose(DWUnicodeString string);
  size_t live() const { return strings_.size(); }

  // "$$$/key/path=Default text": the translation of "$$$/key/path" when the table has one, otherwise
  // the text after the first "="; any other string is its own text.
  std::string localize(const std::string& source) const;
  void setTranslation(const std::string& key, std::string text) { translations_[key] = std::move(text); }

 private:
  std::unordered_map<const void*, std::unique_ptr<std::string>> strings_;
  std::map<std::string, std::string> translations_;
};

// A menu text as shown: "&" marks the mnemonic and is dropped ("&&" shows one "&").
std::string menuDisplayText(const std::string& localised);

}  // namespace refhost
