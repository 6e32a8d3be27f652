#pragma once
// The page image that `effect -o` and `play -o` write: the open document's page rendered by the
// plug-in as `export` renders it (RGB on white, anti-aliased), after whatever the verb did.
#include <string>

namespace CLI {
class App;
class Option;
}  // namespace CLI

namespace refhost {
class Document;
class Host;

namespace cli {

class StagedFiles;
struct Tool;

struct PageImage {
  std::string path;          // -o OUT: .png or .tif
  double resolution = 96.0;  // --page-resolution

  // Adds -o and --page-resolution to the verb.
  CLI::Option* addTo(CLI::App& verb);
  // Throws ToolError for an output that is neither PNG nor TIFF, before anything runs.
  void check() const;
  // Renders the page (the plug-in must be running) and stages the image. It prepares the document
  // for the render, so a verb saves the document first. Throws ToolError or ToolCancelled.
  void stage(Tool& tool, Host& host, Document& document, StagedFiles& files) const;
};

}  // namespace cli
}  // namespace refhost
