#include <CLI/CLI.hpp>

#include <cstdio>
#include <map>
#include <memory>
#include <string>

#include "refhost/cli/ColorModeChange.h"
#include "refhost/cli/DocumentFiles.h"
#include "refhost/cli/PreferencesOnSuccess.h"
#include "refhost/cli/StagedFiles.h"
#include "refhost/cli/Tool.h"
#include "refhost/loader/Host.h"

namespace refhost {
namespace cli {

namespace {

struct ConvertModeRequest {
  std::string input;
  std::string mode;
  std::string save;
};

void runConvertMode(Tool& tool, const ConvertModeRequest& request) {
  static const std::map<std::string, ColorMode> kModes = {
      {"gray", ColorMode::Gray}, {"rgb", ColorMode::Rgb}, {"cmyk", ColorMode::Cmyk}};
  const std::unique_ptr<Tool::Session> session = tool.startSession();
  Host& host = session->host();
  const PreferencesOnSuccess preferences(host);
  Document& document = openDocumentFile(host, request.input);
  const ColorModeChange change = changeColorMode(host, document, kModes.at(request.mode));
  StagedFiles files;
  stageDocument(document, request.save, files);
  session->end();
  files.commit();
  std::printf("colour mode: %s; %zu of %zu effect parameter sets converted, %zu colours converted\n",
              request.mode.c_str(), change.converted, change.effects, change.paints);
}

}  // namespace

void addConvertModeVerb(CLI::App& app, Tool& tool) {
  auto* verb = app.add_subcommand("convert-mode",
                                  "Change the colour mode of DOC: every live effect's parameters are converted by its "
                                  "plug-in, process colours of other models are converted, and the document is saved.");
  auto request = std::make_shared<ConvertModeRequest>();
  verb->add_option("DOC", request->input, "The document (SVG or native JSON)")->required();
  verb->add_option("--to", request->mode, "The new colour mode")->required()->check(CLI::IsMember({"gray", "rgb", "cmyk"}));
  verb->add_option("--save", request->save, "Where to save the converted document (native JSON)")
      ->required()
      ->type_name("DOC.json");
  verb->callback([&tool, request] { runConvertMode(tool, *request); });
}

}  // namespace cli
}  // namespace refhost
