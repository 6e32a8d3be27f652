#include <CLI/CLI.hpp>

#include "refhost/cli/Tool.h"

namespace refhost {
namespace cli {

// The default verb. Rendering a page needs the document, renderer and exporters, which are not
// wired into the tool yet: until then it says so instead of writing anything.
void addExportVerb(CLI::App& app, Tool& tool) {
  auto* verb = app.add_subcommand("export", "Render the page of INPUT (SVG or native document) to OUTPUT (the default verb)");
  auto input = std::make_shared<std::string>();
  auto output = std::make_shared<std::string>();
  verb->add_option("INPUT", *input, "The document to render")->required();
  verb->add_option("-o,--output", *output, "The image to write (PNG or TIFF)")->required();
  verb->callback([] { throw ToolError("export is not implemented yet"); });
  (void)tool;
}

}  // namespace cli
}  // namespace refhost
