#include "refhost/document/DocumentSnapshot.h"

#include <unordered_set>

namespace refhost {

namespace {

void collectDictionaries(const DictionaryPtr& dict, std::unordered_set<const Dictionary*>& seen,
                         std::vector<std::pair<DictionaryPtr, std::map<std::string, Dictionary::Value>>>& out) {
  if (!dict || !seen.insert(dict.get()).second) return;
  out.emplace_back(dict, dict->rawEntries());
  for (const auto& entry : dict->rawEntries()) {
    if (const DictionaryPtr* nested = std::get_if<DictionaryPtr>(&entry.second)) {
      collectDictionaries(*nested, seen, out);
    }
  }
}

}  // namespace

DocumentSnapshot::DocumentSnapshot(const Document& doc) {
  std::unordered_set<const Dictionary*> seen;
  collectDictionaries(doc.dictionary_, seen, dictionaries_);
  arts_.reserve(doc.arts_.size());
  for (const auto& art : doc.arts_) {
    arts_.push_back(art->s_);
    if (art->s_.artStyle) {
      for (const LiveEffect& effect : art->s_.artStyle->effects) collectDictionaries(effect.parameters, seen, dictionaries_);
    }
  }
  for (const auto& layer : doc.layerArena_) layers_.push_back(layer->s_);
  layerOrder_ = doc.layerOrder_;
  currentLayer_ = doc.currentLayer_;
  for (const auto& symbol : doc.symbolArena_) symbols_.push_back(symbol->s_);
  symbolOrder_ = doc.symbolOrder_;
  customColors_ = doc.customColors_;
  artboards_ = doc.artboards_;
  activeArtboard_ = doc.activeArtboard_;
  colorMode_ = doc.colorMode_;
  levelNumber_ = doc.levelNumber_;
}

void DocumentSnapshot::restore(Document& doc) const {
  for (std::size_t i = 0; i < doc.arts_.size(); ++i) {
    if (i < arts_.size()) {
      doc.arts_[i]->s_ = arts_[i];
    } else {
      ArtState dead;
      dead.kind = doc.arts_[i]->s_.kind;
      doc.arts_[i]->s_ = std::move(dead);
    }
  }
  for (std::size_t i = 0; i < doc.layerArena_.size(); ++i) {
    doc.layerArena_[i]->s_ = i < layers_.size() ? layers_[i] : LayerState{};
  }
  doc.layerOrder_ = layerOrder_;
  doc.currentLayer_ = currentLayer_;
  for (std::size_t i = 0; i < doc.symbolArena_.size(); ++i) {
    doc.symbolArena_[i]->s_ = i < symbols_.size() ? symbols_[i] : SymbolState{};
  }
  doc.symbolOrder_ = symbolOrder_;
  doc.customColors_ = customColors_;
  doc.artboards_ = artboards_;
  doc.activeArtboard_ = activeArtboard_;
  doc.colorMode_ = colorMode_;
  doc.levelNumber_ = levelNumber_;
  for (const auto& [dict, entries] : dictionaries_) dict->restoreEntries(entries);
}

}  // namespace refhost
