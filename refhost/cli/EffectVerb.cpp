#include <CLI/CLI.hpp>

#include <cstdio>
#include <memory>
#include <string>
#include <vector>

#include "refhost/cli/DialogAnswers.h"
#include "refhost/cli/DocumentFiles.h"
#include "refhost/cli/PageImage.h"
#include "refhost/cli/PreferencesOnSuccess.h"
#include "refhost/cli/RasterizeFlags.h"
#include "refhost/cli/Selection.h"
#include "refhost/cli/ActionsFile.h"
#include "refhost/cli/StagedFiles.h"
#include "refhost/cli/Tool.h"
#include "refhost/document/Document.h"
#include "refhost/loader/Host.h"
#include "refhost/suites/LiveEffectMessages.h"

namespace refhost {
namespace cli {

namespace {

struct EffectRequest {
  std::string input;
  std::string save;
  std::vector<std::string> select;
  PageImage page;
  RasterizeFlags flags;
  DialogAnswers dialog;
  ActionRecording recording;
};

// The art's appearance with the effect added last; each object gets its own parameters.
void attachEffect(Art& art, const LiveEffectRecord& effect, const Dictionary& parameters) {
  auto style = art.artStyle() ? std::make_shared<ArtStyle>(*art.artStyle()) : std::make_shared<ArtStyle>();
  LiveEffect added;
  added.name = effect.name;
  added.parameters = parameters.deepCopy();
  added.majorVersion = effect.majorVersion;
  added.minorVersion = effect.minorVersion;
  style->effects.push_back(std::move(added));
  art.setArtStyle(std::move(style));
}

void runEffect(Tool& tool, EffectRequest& request) {
  if (request.page.path.empty() && request.save.empty()) throw ToolError("effect: give -o FILE, --save DOC or both");
  request.page.check();
  request.flags.apply(RasterizeSettings{});  // a bad --padding fails before anything runs

  const std::unique_ptr<Tool::Session> session = tool.startSession();
  Host& host = session->host();
  const PreferencesOnSuccess preferences(host);
  Document& document = openDocumentFile(host, request.input);
  if (selectArt(document, request.select) == 0) throw ToolError("nothing to apply the effect to: the selection is empty");
  const LiveEffectRecord* effect = findLiveEffect(host, kRasterizeEffectName);
  if (!effect) throw ToolError(std::string("the plug-in registered no live effect \"") + kRasterizeEffectName + "\"");

  request.dialog.install(host, request.flags);
  request.recording.start(host);
  const DictionaryPtr parameters = Dictionary::create();
  bool updated = false;
  const DWErr result = editLiveEffectParameters(host, *effect, parameters, &updated);
  if (request.dialog.cancelled() || host.ui().cancelRequested()) throw ToolCancelled();
  tool.check(result, "editing the Rasterize effect");
  if (!updated) throw ToolError("the plug-in confirmed the effect's dialog but reported no parameters");

  const std::vector<Art*> targets = document.selectedArt(SelectionScope::Topmost);
  for (Art* art : targets) attachEffect(*art, *effect, *parameters);

  StagedFiles files;
  stageDocument(document, request.save, files);
  request.recording.stage(host, files);
  if (!request.page.path.empty()) request.page.stage(tool, host, document, files);
  session->end();
  if (host.ui().cancelRequested()) throw ToolCancelled();
  files.commit();
  std::printf("effect: Rasterize on %zu object%s\n", targets.size(), targets.size() == 1 ? "" : "s");
}

}  // namespace

void addEffectVerb(CLI::App& app, Tool& tool) {
  auto* verb = app.add_subcommand(
      "effect",
      "Apply the live effect Rasterize to the selected art of INPUT: the effect's dialog is answered by the flags, "
      "the art stays editable and is drawn rasterized. Writes the page as drawn (-o) and/or the document with the "
      "effect (--save).");
  auto request = std::make_shared<EffectRequest>();
  verb->add_option("INPUT", request->input, "The document (SVG or native JSON)")->required();
  request->page.addTo(*verb);
  verb->add_option("--save", request->save, "Save the document with the effect as a native JSON document")
      ->type_name("DOC.json");
  verb->add_option("--select", request->select,
                   "What gets the effect, repeatable: all (the default), saved, layer:NAME, or the NAME of objects")
      ->type_name("WHAT")
      ->expected(1)
      ->take_all();
  request->flags.addTo(*verb);
  request->dialog.addTo(*verb);
  request->recording.addTo(*verb);
  verb->callback([&tool, request] { runEffect(tool, *request); });
}

}  // namespace cli
}  // namespace refhost
