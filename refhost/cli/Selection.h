#pragma once
// What `--select` selects in the open document before a command runs.
#include <string>
#include <vector>

namespace refhost {
class Document;

namespace cli {

// Selects what the specs name, after clearing the document's selection (unless one of them is
// "saved"). Specs add up:
//   all          every top-level object of the shown, unlocked layers that is itself neither
//                hidden nor locked (the default when no --select is given)
//   saved        the selection the document was saved with (native files keep it; SVG has none)
//   layer:NAME   the layer NAME targeted: the layer itself and all of its art
//   NAME         every object named NAME (an SVG element's id, a native file's "name"), at any depth
// Throws ToolError for a layer or name the document does not have. Returns how many objects the
// specs selected (each object counted once).
size_t selectArt(Document& document, const std::vector<std::string>& specs);

}  // namespace cli
}  // namespace refhost
