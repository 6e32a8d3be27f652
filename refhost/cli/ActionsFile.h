#pragma once
// The tool's actions file (JSON): the events the host's action manager recorded, in order, each
// with its dialog state, whether playback shows the plug-in's dialog, and the typed parameter
// block. `--record-actions` writes it; `play` reads it.
#include <string>
#include <vector>

#include "refhost/loader/ActionStore.h"

namespace refhost {
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

// Writes the file under a temporary name renamed over `path`. Throws ToolError.
void writeActionsFile(const std::string& path, const std::vector<RecordedAction>& recorded);

}  // namespace cli
}  // namespace refhost
