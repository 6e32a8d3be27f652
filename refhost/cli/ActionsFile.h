#pragma once
// The tool's actions file (JSON): the events the host's action manager recorded, in order, each
// with its dialog state, whether playback shows the plug-in's dialog, and the typed parameter
// block. `--record-actions` writes it; `play` reads it.
#include <string>
#include <vector>

#include "refhost/loader/ActionStore.h"

namespace CLI {
class App;
}

namespace refhost {
class Host;
namespace cli {

// One step of an action.
struct ActionStep {
  RecordedAction action;
  bool showDialog = false;
};

// The file's text for these events (recorded events start with the dialog off).
std::string actionsJson(const std::vector<RecordedAction>& recorded);

// Reads the file. Throws ToolError naming the file and the place of anything malformed.
std::vector<ActionStep> readActionsFile(const std::string& path);

class StagedFiles;

// `--record-actions FILE` of a verb: the host's action manager records while the verb runs, and
// the events go to FILE with the verb's other outputs, only when the verb succeeds.
struct ActionRecording {
  std::string path;

  void addTo(CLI::App& verb);
  void start(Host& host) const;
  // Stages the file in `files` (no-op without --record-actions). Throws ToolError.
  void stage(Host& host, StagedFiles& files) const;
};

}  // namespace cli
}  // namespace refhost
