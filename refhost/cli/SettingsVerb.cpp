#include <CLI/CLI.hpp>

#include <cstdio>
#include <iostream>
#include <memory>
#include <string>

#include "refhost/cli/DialogAnswers.h"
#include "refhost/cli/DocumentFiles.h"
#include "refhost/cli/MenuCommand.h"
#include "refhost/cli/PreferencesOnSuccess.h"
#include "refhost/cli/RasterizeFlags.h"
#include "refhost/cli/ActionsFile.h"
#include "refhost/cli/StagedFiles.h"
#include "refhost/cli/Tool.h"
#include "refhost/loader/Host.h"

namespace refhost {
namespace cli {

namespace {

struct SettingsRequest {
  std::string document;
  std::string save;
  bool noMask = false;
  RasterizeFlags flags;
  DialogAnswers dialog;
  ActionRecording recording;
};

void printSettings(const RasterizeSettings& s) {
  static const char* const kModels[] = {"rgb", "cmyk", "gray", "bitmap"};
  const bool stored = s.type >= 0 && s.type <= 7;
  std::printf("color: %s\nbackground: %s\nresolution: %.6g ppi\nantialias: %s\nmask: %s\npadding: %.6g pt\nspot: %s\n",
              stored ? kModels[s.type & 3] : "?", stored && s.type >= 4 ? "transparent" : "white", s.resolution,
              s.antialiasing ? "on" : "off", s.createClippingMask ? "on" : "off", s.padding,
              s.preserveSpotColors ? "on" : "off");
}

void printUsageData(Host& host) {
  for (const UsageEvent& event : host.usage().events()) {
    std::cerr << "debug: usage data \"" << event.name << "\":";
    for (const auto& attribute : event.attributes) std::cerr << " \"" << attribute.first << "\"=\"" << attribute.second << "\"";
    std::cerr << "\n";
  }
}

void runSettings(Tool& tool, SettingsRequest& request) {
  request.flags.apply(RasterizeSettings{});  // bad flags fail here, before anything runs

  const std::unique_ptr<Tool::Session> session = tool.startSession();
  Host& host = session->host();
  const PreferencesOnSuccess preferences(host);
  Document& document = openDocumentFile(host, request.document);
  const bool noMask = request.noMask;
  request.dialog.install(host, request.flags, [noMask](RasterizeSettings& s) {
    if (noMask) s.createClippingMask = 0;
  });

  request.recording.start(host);
  const DWErr result = runMenuCommand(host, kDocumentSettingsMenuItem);
  if (tool.verbose) printUsageData(host);
  if (request.dialog.cancelled() || host.ui().cancelRequested()) throw ToolCancelled();
  tool.check(result, "the Document Raster Effects Settings command");
  session->end();

  StagedFiles files;
  stageDocument(document, request.save, files);
  request.recording.stage(host, files);
  if (host.ui().cancelRequested()) throw ToolCancelled();
  files.commit();
  if (request.dialog.confirmed()) printSettings(*request.dialog.confirmed());
}

}  // namespace

void addSettingsVerb(CLI::App& app, Tool& tool) {
  auto* verb = app.add_subcommand(
      "settings",
      "Run the Document Raster Effects Settings command on DOC: show its raster effects settings, or change them "
      "with the flags (they also become the defaults in the --preferences file) and --save the document");
  auto request = std::make_shared<SettingsRequest>();
  verb->add_option("DOC", request->document, "The document (SVG or native JSON)")->required();
  verb->add_option("--save", request->save, "Save the changed document as a native JSON document")->type_name("DOC.json");
  request->flags.addTo(*verb);
  verb->add_flag("--no-mask", request->noMask, "Turn the clipping mask off")->excludes("--mask");
  request->dialog.addTo(*verb);
  request->recording.addTo(*verb);
  verb->callback([&tool, request] { runSettings(tool, *request); });
}

}  // namespace cli
}  // namespace refhost
