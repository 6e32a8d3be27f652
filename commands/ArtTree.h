#pragma once
#include <cstdint>
#include <vector>

#include "host/types.h"

// Small wrappers over the art and art-set suites for the commands: each answers the host's code.
namespace dw {

DWErr artKind(DWArtHandle art, int16_t& kind);
DWErr artParent(DWArtHandle art, DWArtHandle& parent);
DWErr firstChild(DWArtHandle art, DWArtHandle& child);
DWErr nextSibling(DWArtHandle art, DWArtHandle& sibling);
DWErr countChildren(DWArtHandle art, int32_t& count);
DWErr setSelected(DWArtHandle art, bool selected);
// True for a group or a compound path: the kinds whose children the mask walks.
bool isContainer(int16_t kind);

DWErr artSetCount(DWArtSetHandle set, int32_t& count);
DWErr artSetObjects(DWArtSetHandle set, std::vector<DWArtHandle>& objects);

// Owns one art set and disposes of it on every path.
class ArtSetOwner {
 public:
  ArtSetOwner() = default;
  ArtSetOwner(const ArtSetOwner&) = delete;
  ArtSetOwner& operator=(const ArtSetOwner&) = delete;
  ~ArtSetOwner();

  DWErr create();
  DWArtSetHandle get() const { return _set; }
  // Disposes now and answers the host's code.
  DWErr dispose();

 private:
  DWArtSetHandle _set = nullptr;
};

}  // namespace dw
