#pragma once

#include "refhost/document/Dictionary.h"
#include "refhost/document/PathStyle.h"

#include <memory>
#include <string>
#include <vector>

namespace refhost {

class Art;

struct LiveEffect {
  std::string name;           // the registered effect name, e.g. "Corvel Rasterize"
  DictionaryPtr parameters;   // edited in place by the effect's plug-in
  std::int32_t majorVersion = 1;
  std::int32_t minorVersion = 0;
};

// An art's appearance beyond its own path style: live effects and the style's paint. Styles are
// shared between art and immutable once attached (the parameter dictionaries are not: effects edit
// them); to change a style, build a new one and attach it.
struct ArtStyle {
  std::string name;
  std::vector<LiveEffect> effects;
  bool hasPaint = false;
  PathStyle paint;
  // The art this style is the appearance of (for instance a layer whose appearance moved onto a
  // group); null when it belongs to whatever art carries it. Not owned.
  Art* owner = nullptr;
};

using ArtStylePtr = std::shared_ptr<const ArtStyle>;

}  // namespace refhost
