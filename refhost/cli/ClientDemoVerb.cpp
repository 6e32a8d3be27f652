#include <CLI/CLI.hpp>
#include <unistd.h>

#include <cstdlib>
#include <iostream>
#include <memory>
#include <string>

#include "refhost/cli/DocumentFiles.h"
#include "refhost/cli/Tool.h"
#include "refhost/document/Document.h"
#include "refhost/io/NativeFormat.h"
#include "refhost/loader/Host.h"

// `rasterize client-demo`: the sample client plug-in (examples/client_plugin) loaded beside
// Rasterize, its menu command run on a document, and its report printed.
namespace refhost {
namespace cli {

namespace {

constexpr const char* kClientFile = "RasterizeClient.so";
constexpr const char* kClientMenuItem = "Rasterize Suite Demo";
constexpr const char* kClientLog = "DWRasterizeClient.log";

struct DemoRequest {
  std::string input;
  std::string output;
};

bool readable(const std::string& path) { return access(path.c_str(), R_OK) == 0; }

// $RASTERIZE_CLIENT, else beside the tool, else where the build tree puts it.
std::string defaultClientPath() {
  if (const char* environment = std::getenv("RASTERIZE_CLIENT"); environment && *environment) return environment;
  char buffer[4096];
  const ssize_t length = readlink("/proc/self/exe", buffer, sizeof buffer - 1);
  const std::string exe = length > 0 ? std::string(buffer, size_t(length)) : std::string("./rasterize");
  const std::string here = exe.substr(0, exe.rfind('/'));
  for (const std::string& candidate :
       {here + "/" + kClientFile, here + "/../../examples/client_plugin/" + kClientFile})
    if (readable(candidate)) return candidate;
  throw ToolError(std::string("cannot find ") + kClientFile + "; give it with --extra-plugin PATH or RASTERIZE_CLIENT");
}

const MenuItemRecord* demoItem(Host& host) {
  for (const MenuItemRecord* item : host.registrations().menuItems())
    if (item->name == kClientMenuItem) return item;
  throw ToolError(std::string("no plug-in installed the menu item \"") + kClientMenuItem + "\"");
}

void runDemo(Tool& tool, const DemoRequest& request) {
  if (tool.extraPlugins.empty()) tool.extraPlugins.push_back(defaultClientPath());
  auto session = tool.startSession();
  Host& host = session->host();
  Document& document = openDocumentFile(host, request.input);
  host.logs().keep(kClientLog);
  const DWErr result = host.chooseMenuItem(*demoItem(host));
  for (const std::string& line : host.logs().lines(kClientLog)) std::cout << line << "\n";
  tool.check(result, "the client's demo");
  if (!request.output.empty()) io::saveDocument(document, request.output);
  session->end();
}

}  // namespace

void addClientDemoVerb(CLI::App& app, Tool& tool) {
  auto request = std::make_shared<DemoRequest>();
  auto* verb = app.add_subcommand("client-demo",
                                  "Load the sample client plug-in beside Rasterize and run its menu command, which "
                                  "calls every function of \"DW Rasterize Suite\" on the document");
  verb->add_option("INPUT", request->input, "The document (SVG, native .json, PNG or TIFF)")->required();
  verb->add_option("-o,--output", request->output, "Save the document with the client's results (native .json)");
  verb->footer("The client is the first --extra-plugin, else $RASTERIZE_CLIENT, else RasterizeClient.so next to "
               "the tool or in the build tree. It works on the selection, or on every object of the shown layers "
               "when nothing is selected, and reports one line per call on stdout.");
  verb->callback([&tool, request] { runDemo(tool, *request); });
}

}  // namespace cli
}  // namespace refhost
