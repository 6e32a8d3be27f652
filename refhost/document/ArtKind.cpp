#include "refhost/document/ArtKind.h"

namespace refhost {

bool isValidArtKind(std::int32_t code) {
  switch (code) {
    case 0: case 1: case 2: case 3: case 7: case 9: case 10: case 11: case 12: case 13:
      return true;
    default:
      return false;
  }
}

const char* artKindName(ArtKind kind) {
  switch (kind) {
    case ArtKind::Unknown: return "unknown";
    case ArtKind::Group: return "group";
    case ArtKind::Path: return "path";
    case ArtKind::CompoundPath: return "compoundPath";
    case ArtKind::Placed: return "placed";
    case ArtKind::Raster: return "raster";
    case ArtKind::PluginGroup: return "pluginGroup";
    case ArtKind::Mesh: return "mesh";
    case ArtKind::TextFrame: return "textFrame";
    case ArtKind::SymbolInstance: return "symbolInstance";
  }
  return "invalid";
}

bool isContainerKind(ArtKind kind) {
  return kind == ArtKind::Group || kind == ArtKind::CompoundPath || kind == ArtKind::Unknown;
}

bool isValidPaintOrder(std::int32_t code) { return code >= 1 && code <= 6; }

}  // namespace refhost
