#pragma once

#include <string>

namespace refhost {

class Art;
class Document;

struct SymbolState {
  bool alive = false;
  std::string name;
  Art* definition = nullptr;  // a group outside every layer
};

// A symbol definition; symbol instances refer to it.
class Symbol {
 public:
  Symbol(const Symbol&) = delete;
  Symbol& operator=(const Symbol&) = delete;

  Document& document() const { return *doc_; }
  bool isAlive() const { return s_.alive; }
  const std::string& name() const { return s_.name; }
  void setName(std::string n) { s_.name = std::move(n); }
  Art* definition() const { return s_.definition; }
  std::size_t serial() const { return serial_; }
  const SymbolState& state() const { return s_; }

 private:
  friend class Document;
  friend class DocumentSnapshot;
  Symbol(Document* doc, std::size_t serial) : doc_(doc), serial_(serial) {}

  Document* doc_;
  std::size_t serial_;
  SymbolState s_;
};

}  // namespace refhost
