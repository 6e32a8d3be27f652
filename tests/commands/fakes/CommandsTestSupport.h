#pragma once
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "fakes/FakeArtHost.h"
#include "fakes/SettingsTestSupport.h"

namespace fake {

// The settings fake host with the art tree on top, a global block, and one layer to draw in.
class CommandsTest : public HostTest {
 protected:
  CommandsTest() : layer(art.layers.at(0)) {}

  static DWArtHandle h(Art* a) { return FakeArtHost::handle(a); }
  static Art* a(DWArtHandle handle) { return FakeArtHost::art(handle); }

  // The names of an object's children, top first.
  static std::vector<std::string> childNames(const Art* parent) {
    std::vector<std::string> names;
    for (const Art* child : parent->children) names.push_back(child->name);
    return names;
  }

  FakeArtHost art;
  Art* layer;
};

inline bool sameRect(const DWRealRect& a, const DWRealRect& b) {
  return a.left == b.left && a.top == b.top && a.right == b.right && a.bottom == b.bottom;
}

inline std::string describe(const DWRealRect& r) {
  return "(" + std::to_string(r.left) + ", " + std::to_string(r.top) + ", " + std::to_string(r.right) + ", " +
         std::to_string(r.bottom) + ")";
}

}  // namespace fake

namespace fake {

// A result tree in one line: "group[clip[path*,raster]]" — clip is a clipped group, * a clipping path.
inline std::string shape(const Art* art) {
  std::string text;
  switch (art->kind) {
    case kDWGroupArt: text = art->clipped ? "clip" : "group"; break;
    case kDWPathArt: text = art->pathStyle.clip ? "path*" : "path"; break;
    case kDWCompoundPathArt: text = "compound"; break;
    case kDWRasterArt: text = "raster"; break;
    case kDWTextFrameArt: text = "text"; break;
    default: text = "kind" + std::to_string(art->kind); break;
  }
  if (art->kind == kDWGroupArt || art->kind == kDWCompoundPathArt) {
    text += "[";
    for (size_t i = 0; i < art->children.size(); ++i) text += (i ? "," : "") + shape(art->children[i]);
    text += "]";
  }
  return text;
}

}  // namespace fake
