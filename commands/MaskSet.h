#pragma once
#include <cstdint>
#include <vector>

#include "host/types.h"

namespace dw {

// The art set a clipping mask consumes, mirrored so that membership can be asked without the host
// and so that the walk never touches an object after it was removed and deleted.
class MaskSet {
 public:
  DWErr load(DWArtSetHandle set);

  // The objects in their original order, and how many there were.
  const std::vector<DWArtHandle>& original() const { return _original; }
  int32_t originalCount() const { return int32_t(_original.size()); }

  bool contains(DWArtHandle art) const;
  // Removes the object from the host's set when it is a member.
  DWErr remove(DWArtHandle art);
  DWErr replace(DWArtHandle old, DWArtHandle replacement);
  // Removes an object and everything inside it, following plug-in groups into their edit art.
  DWErr removeWithContents(DWArtHandle art);

 private:
  DWArtSetHandle _set = nullptr;
  std::vector<DWArtHandle> _original;
  std::vector<DWArtHandle> _members;
};

}  // namespace dw
