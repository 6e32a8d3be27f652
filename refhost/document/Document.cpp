#include "refhost/document/Document.h"

#include "refhost/document/DocumentSnapshot.h"

#include <algorithm>

namespace refhost {

struct Document::UndoStep {
  std::string undoText;
  std::string redoText;
  DocumentSnapshot before;
  DocumentSnapshot after;
};

namespace {
constexpr std::size_t kUndoDepth = 20;

DocumentError bad(const std::string& what) { return DocumentError(DocumentError::Code::BadParameter, what); }
}  // namespace

Document::Document() : dictionary_(Dictionary::create()) {}

Document::~Document() = default;

// ---- Layers

Layer* Document::layerAt(std::size_t index) const {
  return index < layerOrder_.size() ? layerOrder_[index] : nullptr;
}

Layer* Document::nextLayer(const Layer* layer) const {
  const std::int64_t i = layerIndex(layer);
  return i < 0 ? nullptr : layerAt(static_cast<std::size_t>(i) + 1);
}

std::int64_t Document::layerIndex(const Layer* layer) const {
  auto it = std::find(layerOrder_.begin(), layerOrder_.end(), layer);
  return it == layerOrder_.end() ? -1 : static_cast<std::int64_t>(it - layerOrder_.begin());
}

Layer* Document::findLayer(const std::string& name) const {
  for (Layer* l : layerOrder_) {
    if (l->name() == name) return l;
  }
  return nullptr;
}

Layer* Document::newLayer(const std::string& name, std::size_t index) {
  layerArena_.push_back(std::unique_ptr<Layer>(new Layer(this, layerArena_.size())));
  Layer* layer = layerArena_.back().get();
  layerHandles_.insert(layer);
  layer->s_.alive = true;
  layer->s_.name = name;
  Art* group = makeArt(ArtKind::Group);
  group->s_.layer = layer;
  layer->s_.group = group;
  index = std::min(index, layerOrder_.size());
  layerOrder_.insert(layerOrder_.begin() + static_cast<std::ptrdiff_t>(index), layer);
  if (!currentLayer_) currentLayer_ = layer;
  return layer;
}

void Document::deleteLayer(Layer* layer) {
  if (!liveLayer(layer)) throw DocumentError(DocumentError::Code::DeadObject, "deleteLayer: not a live layer");
  const std::int64_t index = layerIndex(layer);
  markDead(layer->s_.group);
  layer->s_.alive = false;
  layerOrder_.erase(layerOrder_.begin() + index);
  if (currentLayer_ == layer) {
    if (layerOrder_.empty()) {
      currentLayer_ = nullptr;
    } else {
      currentLayer_ = layerOrder_[std::min(static_cast<std::size_t>(index), layerOrder_.size() - 1)];
    }
  }
}

void Document::setCurrentLayer(Layer* layer) {
  if (!liveLayer(layer)) throw DocumentError(DocumentError::Code::DeadObject, "setCurrentLayer: not a live layer");
  currentLayer_ = layer;
}

// ---- Handles

// A pointer found in the set was handed out as that type, so the cast is sound.
Art* Document::liveArt(const void* handle) const {
  if (!handle || !artHandles_.count(handle)) return nullptr;
  Art* art = static_cast<Art*>(const_cast<void*>(handle));
  return art->isAlive() ? art : nullptr;
}

Layer* Document::liveLayer(const void* handle) const {
  if (!handle || !layerHandles_.count(handle)) return nullptr;
  Layer* layer = static_cast<Layer*>(const_cast<void*>(handle));
  return layer->isAlive() ? layer : nullptr;
}

Symbol* Document::liveSymbol(const void* handle) const {
  if (!handle || !symbolHandles_.count(handle)) return nullptr;
  Symbol* symbol = static_cast<Symbol*>(const_cast<void*>(handle));
  return symbol->isAlive() ? symbol : nullptr;
}

void Document::checkLive(const Art* art, const char* what) const {
  if (!art) throw bad(std::string(what) + ": no art given");
  if (art->doc_ != this || !art->isAlive()) {
    throw DocumentError(DocumentError::Code::DeadObject, std::string(what) + ": the art is not live in this document");
  }
}

// ---- Art

Art* Document::makeArt(ArtKind kind) {
  arts_.push_back(std::unique_ptr<Art>(new Art(this, arts_.size())));
  Art* art = arts_.back().get();
  artHandles_.insert(art);
  art->s_.kind = kind;
  art->s_.alive = true;
  switch (kind) {
    case ArtKind::Path: art->s_.payload = PathData{}; break;
    case ArtKind::Raster: art->s_.payload = RasterData{}; break;
    case ArtKind::Placed: art->s_.payload = PlacedData{}; break;
    case ArtKind::Mesh: art->s_.payload = MeshData{}; break;
    case ArtKind::TextFrame: art->s_.payload = TextData{}; break;
    case ArtKind::SymbolInstance: art->s_.payload = SymbolInstanceData{}; break;
    case ArtKind::PluginGroup: {
      PluginGroupData data;
      data.editArt = makeArt(ArtKind::Group);
      data.resultArt = makeArt(ArtKind::Group);
      data.editArt->s_.parent = art;
      data.resultArt->s_.parent = art;
      art->s_.payload = data;
      break;
    }
    case ArtKind::Unknown:
    case ArtKind::Group:
    case ArtKind::CompoundPath:
      break;
  }
  return art;
}

void Document::link(Art* art, PaintOrder order, Art* prep) {
  Art* parent = nullptr;
  Art* before = nullptr;  // art goes just above this sibling; null: at the bottom
  switch (order) {
    case PaintOrder::Above:
    case PaintOrder::Below:
      checkLive(prep, "paint order above/below");
      if (!prep->s_.parent) throw bad("paint order above/below: the prep art has no parent");
      if (prep->s_.parent->kind() == ArtKind::PluginGroup) {
        throw bad("paint order above/below: the prep art is a plug-in group's edit or result art");
      }
      parent = prep->s_.parent;
      before = order == PaintOrder::Above ? prep : prep->s_.next;
      break;
    case PaintOrder::InsideOnTop:
    case PaintOrder::InsideOnBottom:
      checkLive(prep, "paint order inside");
      if (!isContainerKind(prep->kind())) {
        throw DocumentError(DocumentError::Code::NotAContainer,
                            std::string("paint order inside: a ") + artKindName(prep->kind()) + " holds no art");
      }
      parent = prep;
      before = order == PaintOrder::InsideOnTop ? prep->s_.firstChild : nullptr;
      break;
    case PaintOrder::AboveAll:
    case PaintOrder::BelowAll:
      if (!currentLayer_) throw DocumentError(DocumentError::Code::NoCurrentLayer, "paint order above/below all: no current layer");
      parent = currentLayer_->s_.group;
      before = order == PaintOrder::AboveAll ? parent->s_.firstChild : nullptr;
      break;
    default:
      throw bad("unknown paint order " + std::to_string(static_cast<int>(order)));
  }
  if (parent == art || art->isAncestorOf(parent)) {
    throw DocumentError(DocumentError::Code::CyclicMove, "cannot place art inside itself");
  }
  art->s_.parent = parent;
  art->s_.next = before;
  art->s_.previous = before ? before->s_.previous : parent->s_.lastChild;
  if (art->s_.previous) {
    art->s_.previous->s_.next = art;
  } else {
    parent->s_.firstChild = art;
  }
  if (before) {
    before->s_.previous = art;
  } else {
    parent->s_.lastChild = art;
  }
}

void Document::unlink(Art* art) {
  Art* parent = art->s_.parent;
  if (!parent) return;
  if (art->s_.previous) {
    art->s_.previous->s_.next = art->s_.next;
  } else if (parent->s_.firstChild == art) {
    parent->s_.firstChild = art->s_.next;
  }
  if (art->s_.next) {
    art->s_.next->s_.previous = art->s_.previous;
  } else if (parent->s_.lastChild == art) {
    parent->s_.lastChild = art->s_.previous;
  }
  art->s_.parent = art->s_.next = art->s_.previous = nullptr;
}

void Document::markDead(Art* root) {
  std::vector<Art*> stack{root};
  while (!stack.empty()) {
    Art* a = stack.back();
    stack.pop_back();
    a->s_.alive = false;
    if (const PluginGroupData* pg = a->pluginGroup()) {
      if (pg->editArt) stack.push_back(pg->editArt);
      if (pg->resultArt) stack.push_back(pg->resultArt);
    }
    for (Art* c = a->s_.firstChild; c; c = c->s_.next) stack.push_back(c);
  }
}

static void checkMovable(const Art* art, const char* what) {
  if (art->isLayerGroup()) throw DocumentError(DocumentError::Code::BadParameter, std::string(what) + ": a layer's group");
  if (art->isSymbolDefinition()) {
    throw DocumentError(DocumentError::Code::BadParameter, std::string(what) + ": a symbol definition");
  }
  if (art->parent() && art->parent()->kind() == ArtKind::PluginGroup) {
    throw DocumentError(DocumentError::Code::BadParameter, std::string(what) + ": a plug-in group's edit or result art");
  }
}

Art* Document::newArt(ArtKind kind, PaintOrder order, Art* prep) {
  if (!isValidArtKind(static_cast<std::int16_t>(kind))) throw bad("newArt: unknown art kind");
  if (!isValidPaintOrder(static_cast<std::int32_t>(order))) throw bad("newArt: unknown paint order");
  Art* art = makeArt(kind);
  try {
    link(art, order, prep);
  } catch (...) {
    markDead(art);
    throw;
  }
  return art;
}

void Document::moveArt(Art* art, PaintOrder order, Art* prep) {
  checkLive(art, "moveArt");
  checkMovable(art, "moveArt");
  if (!isValidPaintOrder(static_cast<std::int32_t>(order))) throw bad("moveArt: unknown paint order");
  if (art == prep) throw DocumentError(DocumentError::Code::CyclicMove, "moveArt: art placed relative to itself");
  // Validate before unlinking so that a refused move leaves the tree as it was.
  if (order == PaintOrder::Above || order == PaintOrder::Below || order == PaintOrder::InsideOnTop ||
      order == PaintOrder::InsideOnBottom) {
    checkLive(prep, "moveArt");
    if (art->isAncestorOf(prep)) throw DocumentError(DocumentError::Code::CyclicMove, "moveArt: into its own contents");
  }
  Art* oldParent = art->s_.parent;
  Art* oldNext = art->s_.next;
  unlink(art);
  try {
    link(art, order, prep);
  } catch (...) {
    if (oldParent) link(art, oldNext ? PaintOrder::Above : PaintOrder::InsideOnBottom, oldNext ? oldNext : oldParent);
    throw;
  }
}

void Document::disposeArt(Art* art) {
  checkLive(art, "disposeArt");
  checkMovable(art, "disposeArt");
  unlink(art);
  markDead(art);
}

Art* Document::copySubtree(const Art* source) {
  Art* copy = makeArt(source->kind());
  PluginGroupData* freshGroups = copy->pluginGroup();
  Art* freshEdit = freshGroups ? freshGroups->editArt : nullptr;
  Art* freshResult = freshGroups ? freshGroups->resultArt : nullptr;
  ArtState& s = copy->s_;
  s.attributes = source->s_.attributes & ~(ArtAttr::Selected | ArtAttr::FullySelected);
  s.userFlags = source->s_.userFlags;
  s.valuePair = source->s_.valuePair;
  s.name = source->s_.name;
  s.clipped = source->s_.clipped;
  s.graph = source->s_.graph;
  s.pathStyle = source->s_.pathStyle;
  s.artStyle = source->s_.artStyle;
  s.payload = source->s_.payload;
  if (PluginGroupData* pg = copy->pluginGroup()) {
    const PluginGroupData* from = source->pluginGroup();
    pg->editArt = freshEdit;
    pg->resultArt = freshResult;
    auto copyChildren = [this](const Art* from, Art* into) {
      for (const Art* c = from->s_.firstChild; c; c = c->s_.next) link(copySubtree(c), PaintOrder::InsideOnBottom, into);
    };
    if (from->editArt) copyChildren(from->editArt, freshEdit);
    if (from->resultArt) copyChildren(from->resultArt, freshResult);
  }
  for (const Art* c = source->s_.firstChild; c; c = c->s_.next) link(copySubtree(c), PaintOrder::InsideOnBottom, copy);
  return copy;
}

Art* Document::duplicateArt(const Art* source, PaintOrder order, Art* prep) {
  checkLive(source, "duplicateArt");
  if (!isValidPaintOrder(static_cast<std::int32_t>(order))) throw bad("duplicateArt: unknown paint order");
  Art* copy = copySubtree(source);
  try {
    link(copy, order, prep);
  } catch (...) {
    markDead(copy);
    throw;
  }
  return copy;
}

// ---- Walks and selection

void Document::forEachArtIn(Art* root, const std::function<void(Art*)>& visit) {
  if (!root) return;
  std::vector<Art*> stack{root};
  std::vector<Art*> children;
  while (!stack.empty()) {
    Art* a = stack.back();
    stack.pop_back();
    visit(a);
    children.clear();
    if (const PluginGroupData* pg = a->pluginGroup()) {
      if (pg->editArt) children.push_back(pg->editArt);
    }
    for (Art* c = a->s_.firstChild; c; c = c->s_.next) children.push_back(c);
    for (auto it = children.rbegin(); it != children.rend(); ++it) stack.push_back(*it);
  }
}

void Document::forEachArt(const std::function<void(Art*)>& visit) const {
  for (Layer* layer : layerOrder_) forEachArtIn(layer->s_.group, visit);
}

std::vector<Art*> Document::selectedArt(SelectionScope scope) const {
  std::vector<Art*> out;
  for (Layer* layer : layerOrder_) {
    std::vector<Art*> stack{layer->s_.group};
    while (!stack.empty()) {
      Art* a = stack.back();
      stack.pop_back();
      bool descend = true;
      if (a->isSelected()) {
        out.push_back(a);
        if (scope == SelectionScope::Topmost && !a->isLayerGroup() && (a->attributes() & ArtAttr::FullySelected)) {
          descend = false;
        }
      }
      if (!descend) continue;
      std::vector<Art*> children;
      if (const PluginGroupData* pg = a->pluginGroup()) {
        if (pg->editArt) children.push_back(pg->editArt);
      }
      for (Art* c = a->s_.firstChild; c; c = c->s_.next) children.push_back(c);
      for (auto it = children.rbegin(); it != children.rend(); ++it) stack.push_back(*it);
    }
  }
  return out;
}

void Document::setSelected(Art* art, bool selected) {
  const std::uint32_t bits = ArtAttr::Selected | ArtAttr::FullySelected;
  forEachArtIn(art, [&](Art* a) { a->setAttributes(bits, selected ? bits : 0); });
}

void Document::deselectAll() {
  forEachArt([](Art* a) { a->setAttributes(ArtAttr::Selected | ArtAttr::FullySelected, 0); });
}

// ---- Symbols

Symbol* Document::newSymbol(const std::string& name) {
  symbolArena_.push_back(std::unique_ptr<Symbol>(new Symbol(this, symbolArena_.size())));
  Symbol* symbol = symbolArena_.back().get();
  symbolHandles_.insert(symbol);
  symbol->s_.alive = true;
  symbol->s_.name = name;
  Art* definition = makeArt(ArtKind::Group);
  definition->s_.symbol = symbol;
  symbol->s_.definition = definition;
  symbolOrder_.push_back(symbol);
  return symbol;
}

Symbol* Document::findSymbol(const std::string& name) const {
  for (Symbol* s : symbolOrder_) {
    if (s->name() == name) return s;
  }
  return nullptr;
}

// ---- Custom colours

CustomColorId Document::newCustomColor(CustomColor color) {
  color.id = nextCustomColorId_++;
  customColors_.push_back(std::move(color));
  return customColors_.back().id;
}

void Document::restoreCustomColor(const CustomColor& color) {
  if (color.id < nextCustomColorId_) throw bad("restoreCustomColor: ids must increase");
  customColors_.push_back(color);
  nextCustomColorId_ = color.id + 1;
}

CustomColor* Document::customColor(CustomColorId id) {
  return const_cast<CustomColor*>(static_cast<const Document*>(this)->customColor(id));
}

const CustomColor* Document::customColor(CustomColorId id) const {
  auto it = std::lower_bound(customColors_.begin(), customColors_.end(), id,
                             [](const CustomColor& c, CustomColorId v) { return c.id < v; });
  return it != customColors_.end() && it->id == id ? &*it : nullptr;
}

const CustomColor* Document::findCustomColor(const std::string& name) const {
  for (const CustomColor& c : customColors_) {
    if (c.name == name) return &c;
  }
  return nullptr;
}

// ---- Undo

void Document::beginTransaction() {
  if (transaction_) throw bad("beginTransaction: a transaction is already open");
  transaction_ = std::make_unique<DocumentSnapshot>(*this);
  reverted_ = false;
  undoText_.clear();
  redoText_.clear();
}

void Document::setUndoTexts(std::string undoText, std::string redoText) {
  undoText_ = std::move(undoText);
  redoText_ = std::move(redoText);
}

void Document::revertTransaction() {
  if (!transaction_) throw DocumentError(DocumentError::Code::NotInTransaction, "revertTransaction: no transaction");
  transaction_->restore(*this);
  reverted_ = true;
}

void Document::endTransaction() {
  if (!transaction_) throw DocumentError(DocumentError::Code::NotInTransaction, "endTransaction: no transaction");
  if (!reverted_) {
    undoStack_.push_back(std::unique_ptr<UndoStep>(
        new UndoStep{undoText_, redoText_, std::move(*transaction_), DocumentSnapshot(*this)}));
    if (undoStack_.size() > kUndoDepth) undoStack_.erase(undoStack_.begin());
    redoStack_.clear();
  }
  transaction_.reset();
  reverted_ = false;
}

std::string Document::nextUndoText() const { return undoStack_.empty() ? std::string() : undoStack_.back()->undoText; }
std::string Document::nextRedoText() const { return redoStack_.empty() ? std::string() : redoStack_.back()->redoText; }

void Document::undo() {
  if (transaction_) throw bad("undo: a transaction is open");
  if (undoStack_.empty()) return;
  undoStack_.back()->before.restore(*this);
  redoStack_.push_back(std::move(undoStack_.back()));
  undoStack_.pop_back();
}

void Document::redo() {
  if (transaction_) throw bad("redo: a transaction is open");
  if (redoStack_.empty()) return;
  redoStack_.back()->after.restore(*this);
  undoStack_.push_back(std::move(redoStack_.back()));
  redoStack_.pop_back();
}

}  // namespace refhost
