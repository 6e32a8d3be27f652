#pragma once

namespace dw {

// The message of the Rasterize command while it runs, null otherwise. The clipping mask hands it to
// the host's Pathfinder operation so that the host can tie its work to the running command.
void* currentCommandMessage();

// Sets the current command message for one run and clears it on every way out.
class CommandMessageScope {
 public:
  explicit CommandMessageScope(void* message);
  ~CommandMessageScope();
  CommandMessageScope(const CommandMessageScope&) = delete;
  CommandMessageScope& operator=(const CommandMessageScope&) = delete;
};

}  // namespace dw
