#pragma once

#include "refhost/document/Art.h"
#include "refhost/document/CustomColor.h"
#include "refhost/document/Dictionary.h"
#include "refhost/document/DocumentError.h"
#include "refhost/document/Layer.h"
#include "refhost/document/Symbol.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <unordered_set>
#include <vector>

namespace refhost {

class DocumentSnapshot;

enum class ColorMode : std::int16_t { Gray = 0, Rgb = 1, Cmyk = 2 };

struct Artboard {
  std::string name;
  Rect bounds;  // points, y up
};

inline bool operator==(const Artboard& a, const Artboard& b) { return a.name == b.name && a.bounds == b.bounds; }

// Which selected art selectedArt() reports.
enum class SelectionScope {
  All,      // every art whose Selected bit is set
  Topmost,  // selected art none of whose ancestors below the layer is fully selected
};

// One open document: layers with their art trees, symbols, custom colours, artboards, the document
// dictionary, colour mode and undo. Every object it hands out (Art*, Layer*, Symbol*) stays a valid
// pointer for the document's life; deleted objects become dead shells and undo brings them back in
// place. Not thread-safe: the host uses it from its main thread.
class Document {
 public:
  Document();
  ~Document();
  Document(const Document&) = delete;
  Document& operator=(const Document&) = delete;

  // ---- Layers, top to bottom.
  const std::vector<Layer*>& layers() const { return layerOrder_; }
  std::size_t layerCount() const { return layerOrder_.size(); }
  Layer* layerAt(std::size_t index) const;  // null past the end
  Layer* firstLayer() const { return layerAt(0); }
  Layer* nextLayer(const Layer* layer) const;  // the one below, or null
  // Index from the top, or -1 when the layer is not in the document's list.
  std::int64_t layerIndex(const Layer* layer) const;
  Layer* findLayer(const std::string& name) const;
  // Inserts a layer at `index` (0 = top; past the end = bottom). The first layer becomes current.
  Layer* newLayer(const std::string& name, std::size_t index = SIZE_MAX);
  // Deletes the layer and its art; the current layer moves to the nearest remaining one.
  void deleteLayer(Layer* layer);
  Layer* currentLayer() const { return currentLayer_; }
  void setCurrentLayer(Layer* layer);

  // ---- Art.
  // Creates art of `kind` placed by `order` relative to `prep` (ignored for AboveAll/BelowAll).
  // Paths start empty, rasters with an empty record, plug-in groups with empty edit and result
  // groups. Throws DocumentError.
  Art* newArt(ArtKind kind, PaintOrder order, Art* prep);
  void moveArt(Art* art, PaintOrder order, Art* prep);
  // Removes the art and everything inside it from the document.
  void disposeArt(Art* art);
  // Deep copy placed by `order` relative to `prep`; the copy is not selected.
  Art* duplicateArt(const Art* source, PaintOrder order, Art* prep);

  // Handle checks for the suites: the pointer is art (a layer, a symbol) of this document and alive.
  Art* liveArt(const void* handle) const;
  Layer* liveLayer(const void* handle) const;
  Symbol* liveSymbol(const void* handle) const;

  // Every live art in layers, in document order: layers from the top, each tree depth first with a
  // container before its contents and children from the top. Plug-in groups are followed into
  // their edit art (not their result art). Symbol definitions are not visited.
  void forEachArt(const std::function<void(Art*)>& visit) const;
  // The same walk below one art (the art itself first).
  static void forEachArtIn(Art* root, const std::function<void(Art*)>& visit);
  std::vector<Art*> selectedArt(SelectionScope scope = SelectionScope::All) const;
  // Sets or clears Selected and FullySelected on the art and everything inside it.
  static void setSelected(Art* art, bool selected);
  void deselectAll();

  // ---- Symbols.
  Symbol* newSymbol(const std::string& name);
  const std::vector<Symbol*>& symbols() const { return symbolOrder_; }
  Symbol* findSymbol(const std::string& name) const;

  // ---- Custom colours, in creation order.
  CustomColorId newCustomColor(CustomColor color);  // the id field is assigned here
  // Adds a colour keeping its id, for loaders: ids must be above every id given out so far.
  void restoreCustomColor(const CustomColor& color);
  // Valid until the next newCustomColor() or undo step; the id is the lasting handle.
  CustomColor* customColor(CustomColorId id);
  const CustomColor* customColor(CustomColorId id) const;
  const std::vector<CustomColor>& customColors() const { return customColors_; }
  const CustomColor* findCustomColor(const std::string& name) const;

  // ---- Artboards.
  std::vector<Artboard>& artboards() { return artboards_; }
  const std::vector<Artboard>& artboards() const { return artboards_; }
  std::int32_t activeArtboard() const { return activeArtboard_; }  // -1 when there is none
  void setActiveArtboard(std::int32_t index) { activeArtboard_ = index; }

  // ---- Document properties.
  ColorMode colorMode() const { return colorMode_; }
  void setColorMode(ColorMode mode) { colorMode_ = mode; }
  std::int32_t levelNumber() const { return levelNumber_; }
  void setLevelNumber(std::int32_t n) { levelNumber_ = n; }
  const DictionaryPtr& dictionary() const { return dictionary_; }
  // Where the document was read from or last saved (not part of the content).
  const std::string& filePath() const { return filePath_; }
  void setFilePath(std::string p) { filePath_ = std::move(p); }

  // ---- Undo. A command runs inside a transaction. Reverting restores the document exactly as it
  // was at beginTransaction(), in place: art, layers and symbols keep their addresses, art created
  // since becomes dead. Ending a transaction that was not reverted records an undo step.
  void beginTransaction();
  bool inTransaction() const { return transaction_ != nullptr; }
  void setUndoTexts(std::string undoText, std::string redoText);
  const std::string& undoText() const { return undoText_; }
  const std::string& redoText() const { return redoText_; }
  void revertTransaction();
  void endTransaction();
  bool canUndo() const { return !undoStack_.empty(); }
  bool canRedo() const { return !redoStack_.empty(); }
  // Texts of the step undo() / redo() would take.
  std::string nextUndoText() const;
  std::string nextRedoText() const;
  void undo();
  void redo();

  // All art ever created, by serial (dead shells included): for savers and equality checks.
  std::size_t artArenaSize() const { return arts_.size(); }
  Art* artBySerial(std::size_t serial) const { return serial < arts_.size() ? arts_[serial].get() : nullptr; }

 private:
  friend class DocumentSnapshot;
  struct UndoStep;

  Art* makeArt(ArtKind kind);
  void link(Art* art, PaintOrder order, Art* prep);
  void unlink(Art* art);
  void markDead(Art* art);
  Art* copySubtree(const Art* source);
  void checkLive(const Art* art, const char* what) const;

  std::vector<std::unique_ptr<Art>> arts_;
  std::vector<std::unique_ptr<Layer>> layerArena_;
  std::vector<Layer*> layerOrder_;
  Layer* currentLayer_ = nullptr;
  std::vector<std::unique_ptr<Symbol>> symbolArena_;
  std::vector<Symbol*> symbolOrder_;
  std::vector<CustomColor> customColors_;
  CustomColorId nextCustomColorId_ = 1;  // not restored by undo, so ids are never reused
  std::vector<Artboard> artboards_;
  std::int32_t activeArtboard_ = -1;
  ColorMode colorMode_ = ColorMode::Rgb;
  std::int32_t levelNumber_ = 0;
  DictionaryPtr dictionary_;
  std::string filePath_;
  std::unordered_set<const void*> artHandles_;
  std::unordered_set<const void*> layerHandles_;
  std::unordered_set<const void*> symbolHandles_;

  std::unique_ptr<DocumentSnapshot> transaction_;
  bool reverted_ = false;
  std::string undoText_;
  std::string redoText_;
  std::vector<std::unique_ptr<UndoStep>> undoStack_;
  std::vector<std::unique_ptr<UndoStep>> redoStack_;
};

}  // namespace refhost
