#pragma once

#include "refhost/document/ArtData.h"
#include "refhost/document/ArtKind.h"
#include "refhost/document/ArtStyle.h"
#include "refhost/document/PathStyle.h"

#include <cstdint>
#include <string>
#include <variant>

namespace refhost {

class Document;
class Layer;

// The user's value pair stored on an art object.
struct ValuePair {
  double real = 0.0;
  std::int32_t integer = 0;
};

inline bool operator==(const ValuePair& a, const ValuePair& b) { return a.real == b.real && a.integer == b.integer; }
inline bool operator!=(const ValuePair& a, const ValuePair& b) { return !(a == b); }

using ArtPayload =
    std::variant<std::monostate, PathData, RasterData, PlacedData, MeshData, TextData, SymbolInstanceData, PluginGroupData>;

// Everything about an art object except its identity. Undo snapshots copy it whole.
struct ArtState {
  ArtKind kind = ArtKind::Group;
  bool alive = false;
  Art* parent = nullptr;
  Art* firstChild = nullptr;  // topmost child
  Art* lastChild = nullptr;   // bottommost child
  Art* next = nullptr;        // the sibling below
  Art* previous = nullptr;    // the sibling above
  Layer* layer = nullptr;     // set on a layer's group only
  Symbol* symbol = nullptr;   // set on a symbol definition's root group only
  std::uint32_t attributes = 0;
  std::uint32_t userFlags = 0;
  ValuePair valuePair;
  std::string name;
  bool clipped = false;  // groups: a clip group
  bool graph = false;    // unknown kind: the art is a graph
  PathStyle pathStyle;
  ArtStylePtr artStyle;
  ArtPayload payload;
};

// One art object. Handles (Art*) stay valid for the document's life: disposed art is kept as a dead
// shell (isAlive() false), and undo restores objects in place. Structural changes (create, move,
// dispose, duplicate) go through Document; everything else is set here.
//
// Children are ordered top to bottom: firstChild() is painted last (on top), lastChild() first.
class Art {
 public:
  Art(const Art&) = delete;
  Art& operator=(const Art&) = delete;

  Document& document() const { return *doc_; }
  ArtKind kind() const { return s_.kind; }
  bool isAlive() const { return s_.alive; }

  Art* parent() const { return s_.parent; }
  Art* firstChild() const { return s_.firstChild; }
  Art* lastChild() const { return s_.lastChild; }
  Art* nextSibling() const { return s_.next; }
  Art* previousSibling() const { return s_.previous; }
  std::size_t childCount() const;
  bool isAncestorOf(const Art* other) const;

  // The group that a layer owns (its parent is null).
  bool isLayerGroup() const { return s_.layer != nullptr; }
  Layer* layerOfGroup() const { return s_.layer; }
  // The layer the art lies in, or null for art outside any layer (symbol definitions).
  Layer* layer() const;
  // The root group of a symbol definition.
  bool isSymbolDefinition() const { return s_.symbol != nullptr; }
  Symbol* symbolOfDefinition() const { return s_.symbol; }

  std::uint32_t attributes() const { return s_.attributes; }
  std::uint32_t attributes(std::uint32_t mask) const { return s_.attributes & mask; }
  void setAttributes(std::uint32_t mask, std::uint32_t value) {
    s_.attributes = (s_.attributes & ~mask) | (value & mask);
  }
  bool isHidden() const { return (s_.attributes & ArtAttr::Hidden) != 0; }
  bool isSelected() const { return (s_.attributes & ArtAttr::Selected) != 0; }

  std::uint32_t userFlags() const { return s_.userFlags; }
  void setUserFlags(std::uint32_t mask, std::uint32_t value) {
    s_.userFlags = (s_.userFlags & ~mask) | (value & mask);
  }
  const ValuePair& valuePair() const { return s_.valuePair; }
  void setValuePair(ValuePair v) { s_.valuePair = v; }

  const std::string& name() const { return s_.name; }
  void setName(std::string n) { s_.name = std::move(n); }

  bool isClipped() const { return s_.clipped; }
  void setClipped(bool c) { s_.clipped = c; }
  bool isGraph() const { return s_.graph; }
  void setGraph(bool g) { s_.graph = g; }

  const PathStyle& pathStyle() const { return s_.pathStyle; }
  PathStyle& pathStyle() { return s_.pathStyle; }
  void setPathStyle(const PathStyle& style) { s_.pathStyle = style; }

  const ArtStylePtr& artStyle() const { return s_.artStyle; }
  void setArtStyle(ArtStylePtr style) { s_.artStyle = std::move(style); }
  // The art whose appearance the attached style is: its owner when it names one, else this art;
  // null without a style.
  Art* artStyleOwner() const;

  // Kind-specific data; null for other kinds.
  PathData* path() { return std::get_if<PathData>(&s_.payload); }
  const PathData* path() const { return std::get_if<PathData>(&s_.payload); }
  RasterData* raster() { return std::get_if<RasterData>(&s_.payload); }
  const RasterData* raster() const { return std::get_if<RasterData>(&s_.payload); }
  PlacedData* placed() { return std::get_if<PlacedData>(&s_.payload); }
  const PlacedData* placed() const { return std::get_if<PlacedData>(&s_.payload); }
  MeshData* mesh() { return std::get_if<MeshData>(&s_.payload); }
  const MeshData* mesh() const { return std::get_if<MeshData>(&s_.payload); }
  TextData* text() { return std::get_if<TextData>(&s_.payload); }
  const TextData* text() const { return std::get_if<TextData>(&s_.payload); }
  SymbolInstanceData* symbolInstance() { return std::get_if<SymbolInstanceData>(&s_.payload); }
  const SymbolInstanceData* symbolInstance() const { return std::get_if<SymbolInstanceData>(&s_.payload); }
  PluginGroupData* pluginGroup() { return std::get_if<PluginGroupData>(&s_.payload); }
  const PluginGroupData* pluginGroup() const { return std::get_if<PluginGroupData>(&s_.payload); }

  // Position in the document's arena: creation order, stable, unique within the document.
  std::size_t serial() const { return serial_; }

  const ArtState& state() const { return s_; }

 private:
  friend class Document;
  friend class DocumentSnapshot;
  Art(Document* doc, std::size_t serial) : doc_(doc), serial_(serial) {}

  Document* doc_;
  std::size_t serial_;
  ArtState s_;
};

}  // namespace refhost
