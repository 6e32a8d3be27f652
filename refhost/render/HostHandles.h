#pragma once

#include "host/types.h"
#include "refhost/document/Paint.h"
#include "refhost/render/ColorSpace.h"
#include "refhost/render/Port.h"

#include <cstdint>
#include <memory>
#include <vector>

namespace refhost::render {

// The handles that the colour-space, graphics-manager, draw-art and raster suites hand out.
// Every lookup checks that the handle is one of ours and alive, so a stale or foreign pointer
// gives an error instead of a crash. Lookups are thread-safe: worker threads query colour spaces.

// Custom colours are named by their document id; the handle is the id, so handles sort in the
// colours' creation order.
inline DWCustomColorHandle customColorHandle(CustomColorId id) {
  return reinterpret_cast<DWCustomColorHandle>(static_cast<std::uintptr_t>(id));
}
inline CustomColorId customColorId(DWCustomColorHandle handle) {
  return static_cast<CustomColorId>(reinterpret_cast<std::uintptr_t>(handle));
}

DWColorSpaceHandle newColorSpaceHandle(ColorSpace::Ptr space);
ColorSpace::Ptr colorSpaceOf(DWColorSpaceHandle handle);
// False for an unknown handle or a borrowed part.
bool releaseColorSpaceHandle(DWColorSpaceHandle handle);
// A handle for part `index`, borrowed from the space's handle (valid while that one is).
DWColorSpaceHandle colorSpacePartHandle(DWColorSpaceHandle handle, int index);

DWColorSpaceList newColorSpaceList();
bool addToColorSpaceList(DWColorSpaceList list, ColorSpace::Ptr part);
// A copy of the parts; false for an unknown list.
bool colorSpaceListParts(DWColorSpaceList list, std::vector<ColorSpace::Ptr>* parts);
bool disposeColorSpaceList(DWColorSpaceList list);

// Graphics-manager objects: port colour spaces and path objects share ReleaseObject.
DWPortColorSpace newPortColorSpaceHandle(ColorSpace::Ptr space);
ColorSpace::Ptr portColorSpaceOf(DWPortColorSpace handle);
DWGraphicsObject newPathObjectHandle();
PathObject* pathObjectOf(DWGraphicsObject handle);
bool releaseGraphicsObject(void* handle);

DWPort newPortHandle(std::unique_ptr<Port> port);
Port* portOf(DWPort handle);
bool disposePortHandle(DWPort handle);

}  // namespace refhost::render
