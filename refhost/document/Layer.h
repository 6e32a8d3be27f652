#pragma once

#include <string>

namespace refhost {

class Art;
class Document;

struct LayerState {
  bool alive = false;
  std::string name;
  bool shown = true;
  bool editable = true;  // a locked layer is not editable
  bool printable = true;
  bool preview = true;   // drawn in preview rather than as outlines
  double color[3] = {0.3, 0.5, 1.0};  // selection colour, RGB
  Art* group = nullptr;
};

// A layer owns one top-level group art (its parent is null). Layer handles stay valid for the
// document's life; a deleted layer is a dead shell (isAlive() false).
class Layer {
 public:
  Layer(const Layer&) = delete;
  Layer& operator=(const Layer&) = delete;

  Document& document() const { return *doc_; }
  bool isAlive() const { return s_.alive; }
  Art* group() const { return s_.group; }

  const std::string& name() const { return s_.name; }
  void setName(std::string n) { s_.name = std::move(n); }
  bool isShown() const { return s_.shown; }
  void setShown(bool v) { s_.shown = v; }
  bool isEditable() const { return s_.editable; }
  void setEditable(bool v) { s_.editable = v; }
  bool isLocked() const { return !s_.editable; }
  bool isPrintable() const { return s_.printable; }
  void setPrintable(bool v) { s_.printable = v; }
  bool isPreview() const { return s_.preview; }
  void setPreview(bool v) { s_.preview = v; }
  const double* color() const { return s_.color; }
  void setColor(double r, double g, double b) {
    s_.color[0] = r;
    s_.color[1] = g;
    s_.color[2] = b;
  }

  std::size_t serial() const { return serial_; }
  const LayerState& state() const { return s_; }

 private:
  friend class Document;
  friend class DocumentSnapshot;
  Layer(Document* doc, std::size_t serial) : doc_(doc), serial_(serial) {}

  Document* doc_;
  std::size_t serial_;
  LayerState s_;
};

}  // namespace refhost
