#pragma once
// Drawing art whose style carries live effects draws what the effects make of it. Before a drawing
// of `root` starts, each such art in its tree is copied into a scratch layer without its effects,
// and the copy goes to the effects' plug-ins ("Go Live"), one effect after the other; the renderer
// then draws the last result in the art's place. The results are made before the drawing rather
// than during it because making them draws too.
//
// The document keeps its editable art: when the drawing is over, copies and results go. Outside a
// command the document is restored exactly as it was (no undo step); inside a command's
// transaction the scratch layer is deleted and its contents stay dead.
#include <map>

#include "host/types.h"

namespace refhost {

class Art;
class Document;
class Layer;

class LiveEffectResults {
 public:
  // Makes the results for the tree of `root`; nothing happens when it holds no art with an effect
  // that a loaded plug-in registered.
  explicit LiveEffectResults(Art& root);
  ~LiveEffectResults();
  LiveEffectResults(const LiveEffectResults&) = delete;
  LiveEffectResults& operator=(const LiveEffectResults&) = delete;

  // The first failure of a plug-in or of the host (0 when every result was made); the drawing
  // fails with it.
  DWErr error() const { return error_; }

  // The result to draw for `art` among the results being drawn now, or null.
  static const Art* resultFor(const Art& art);

 private:
  DWErr makeResult(Art& art, Art** shown);

  Document* document_ = nullptr;
  Layer* scratch_ = nullptr;
  bool ownTransaction_ = false;
  bool active_ = false;
  std::size_t firstSerial_ = 0;
  std::map<const Art*, Art*> results_;
  DWErr error_ = 0;
};

}  // namespace refhost
