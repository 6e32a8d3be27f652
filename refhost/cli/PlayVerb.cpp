#include <CLI/CLI.hpp>

#include <cstdio>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "refhost/cli/ActionsFile.h"
#include "refhost/cli/DialogAnswers.h"
#include "refhost/cli/DocumentFiles.h"
#include "refhost/cli/PageImage.h"
#include "refhost/cli/PreferencesOnSuccess.h"
#include "refhost/cli/RasterizeFlags.h"
#include "refhost/cli/Selection.h"
#include "refhost/cli/StagedFiles.h"
#include "refhost/cli/Tool.h"
#include "refhost/document/Document.h"
#include "refhost/loader/ActionPlayback.h"
#include "refhost/loader/Host.h"
#include "refhost/loader/HostErrors.h"

namespace refhost {
namespace cli {

namespace {

struct PlayRequest {
  std::string actions;
  std::string input;
  std::string save;
  std::vector<std::string> select;
  bool showDialog = false;
  CLI::Option* dialogOption = nullptr;
  PageImage page;
  RasterizeFlags flags;
  DialogAnswers dialog;
};

void runPlay(Tool& tool, PlayRequest& request) {
  request.page.check();
  request.flags.apply(RasterizeSettings{});
  const std::vector<ActionStep> steps = readActionsFile(request.actions);
  const std::optional<bool> dialogOverride =
      request.dialogOption->count() > 0 ? std::optional<bool>(request.showDialog) : std::nullopt;

  const std::unique_ptr<Tool::Session> session = tool.startSession();
  Host& host = session->host();
  const PreferencesOnSuccess preferences(host);
  Document& document = openDocumentFile(host, request.input);
  selectArt(document, request.select);
  request.dialog.install(host, request.flags);

  for (size_t i = 0; i < steps.size(); ++i) {
    const RecordedAction& action = steps[i].action;
    const DWErr result = playAction(host, action, dialogOverride.value_or(steps[i].showDialog));
    if (result == kHostNotFound && !host.actions().event(action.eventName))
      throw ToolError(request.actions + ": actions[" + std::to_string(i) + "]: no plug-in registered the event \"" +
                      action.eventName + "\"" +
                      (host.controls().interactive ? "" : " (actions need a host with a user interface: drop --non-interactive)"));
    if (request.dialog.cancelled() || host.ui().cancelRequested()) throw ToolCancelled();
    tool.check(result, "replaying \"" + action.eventName + "\" (actions[" + std::to_string(i) + "])");
  }

  StagedFiles files;
  stageDocument(document, request.save, files);
  if (!request.page.path.empty()) request.page.stage(tool, host, document, files);
  session->end();
  if (host.ui().cancelRequested()) throw ToolCancelled();
  files.commit();
  std::printf("played: %zu event%s\n", steps.size(), steps.size() == 1 ? "" : "s");
}

}  // namespace

void addPlayVerb(CLI::App& app, Tool& tool) {
  auto* verb = app.add_subcommand(
      "play",
      "Replay the events of ACTIONS (a file written by --record-actions) on DOC, in order, through the plug-in's "
      "action playback. A step shows the plug-in's dialog when the file says so (\"showDialog\") or --show-dialog "
      "asks; the flags answer it.");
  auto request = std::make_shared<PlayRequest>();
  verb->add_option("ACTIONS", request->actions, "The actions file (JSON)")->required();
  verb->add_option("DOC", request->input, "The document to play them on (SVG or native JSON)")->required();
  request->page.addTo(*verb);
  verb->add_option("--save", request->save, "Save the changed document as a native JSON document")->type_name("DOC.json");
  verb->add_option("--select", request->select,
                   "The selection the actions start from, repeatable: all (the default), saved, layer:NAME, or the "
                   "NAME of objects")
      ->type_name("WHAT")
      ->expected(1)
      ->take_all();
  request->dialogOption = verb->add_flag("--show-dialog,!--no-dialog", request->showDialog,
                                         "Show the dialog at every step, or at none (default: as each step says)");
  request->flags.addTo(*verb);
  request->dialog.addTo(*verb);
  verb->callback([&tool, request] { runPlay(tool, *request); });
}

}  // namespace cli
}  // namespace refhost
