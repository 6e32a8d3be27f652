#pragma once

#include "refhost/document/Document.h"

#include <map>
#include <utility>
#include <vector>

namespace refhost {

// The whole content of a document at one moment, restorable in place: objects keep their addresses,
// objects created after the snapshot become dead. Raster pixels are shared, not copied.
class DocumentSnapshot {
 public:
  explicit DocumentSnapshot(const Document& doc);
  void restore(Document& doc) const;

 private:
  std::vector<ArtState> arts_;
  std::vector<LayerState> layers_;
  std::vector<Layer*> layerOrder_;
  Layer* currentLayer_ = nullptr;
  std::vector<SymbolState> symbols_;
  std::vector<Symbol*> symbolOrder_;
  std::vector<CustomColor> customColors_;
  std::vector<Artboard> artboards_;
  std::int32_t activeArtboard_ = -1;
  ColorMode colorMode_ = ColorMode::Rgb;
  std::int32_t levelNumber_ = 0;
  std::vector<std::pair<DictionaryPtr, std::map<std::string, Dictionary::Value>>> dictionaries_;
};

}  // namespace refhost
