#pragma once

#include <cstdint>

namespace refhost {

// Art kinds with the host's 16-bit codes.
enum class ArtKind : std::int16_t {
  Unknown = 0,  // graphs are among these (Art::isGraph)
  Group = 1,
  Path = 2,
  CompoundPath = 3,
  Placed = 7,
  Raster = 9,
  PluginGroup = 10,
  Mesh = 11,
  TextFrame = 12,
  SymbolInstance = 13,
};

bool isValidArtKind(std::int32_t code);
const char* artKindName(ArtKind kind);
// Group, compound path and unknown (graph) art hold children.
bool isContainerKind(ArtKind kind);

// Where new or moved art goes relative to a prep art.
enum class PaintOrder : std::int32_t {
  Above = 1,           // just above the prep art, in its parent
  Below = 2,           // just below the prep art
  InsideOnTop = 3,     // first child of the prep art
  InsideOnBottom = 4,  // last child of the prep art
  AboveAll = 5,        // on top of the current layer; no prep art
  BelowAll = 6,        // at the bottom of the current layer; no prep art
};

bool isValidPaintOrder(std::int32_t code);

// Attribute bits of an art object.
namespace ArtAttr {
constexpr std::uint32_t Selected = 0x1;
constexpr std::uint32_t Locked = 0x2;
constexpr std::uint32_t Hidden = 0x4;
// Selected as a whole; a path with only some anchors selected has Selected but not FullySelected.
constexpr std::uint32_t FullySelected = 0x8;
}  // namespace ArtAttr

}  // namespace refhost
