#pragma once
// Changing a document's colour mode, as `convert-mode` does.
#include <cstddef>

#include "refhost/document/Document.h"

namespace refhost {
class Host;

namespace cli {

struct ColorModeChange {
  std::size_t effects = 0;    // live-effect parameter sets told of the change
  std::size_t converted = 0;  // those whose plug-in converted them
  std::size_t paints = 0;     // process colours converted
};

// Sends "Convert Color Space" with the mode's target code to the plug-in of every live effect in
// the document (symbol definitions included; a parameter set shared by several objects once),
// converts process colours of other models to the new one (gray stays in RGB and CMYK documents;
// spot colours and raster pixels stay as they are), then sets the mode. Throws ToolError when a
// plug-in fails, before any colour is converted.
ColorModeChange changeColorMode(Host& host, Document& document, ColorMode mode);

}  // namespace cli
}  // namespace refhost
