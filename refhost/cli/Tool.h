#pragma once
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

#include "host/types.h"

namespace CLI {
class App;
}

namespace refhost {
class Host;
class Plugin;

namespace cli {

// Exit codes of the tool.
constexpr int kExitOk = 0;
constexpr int kExitError = 1;
constexpr int kExitCancelled = 130;

// A failure the tool reports as one line "error: <message>" (or not at all when the plug-in has
// already shown its own error alert), exiting with 1.
class ToolError : public std::runtime_error {
 public:
  explicit ToolError(const std::string& message, bool alreadyShown = false)
      : std::runtime_error(message), alreadyShown_(alreadyShown) {}
  bool alreadyShown() const { return alreadyShown_; }

 private:
  bool alreadyShown_;
};

// The user stopped the operation (Ctrl-C, or the plug-in answered 'STOP'): exit 130, no message.
class ToolCancelled : public std::runtime_error {
 public:
  ToolCancelled() : std::runtime_error("cancelled") {}
};

// Options every verb shares, and the running host with the plug-in started in it.
struct Tool {
  std::string pluginPath;      // --plugin, else $RASTERIZE_PLUGIN, else next to the tool
  bool nonInteractive = false;  // --non-interactive
  std::string performanceLog;  // --performance-log FILE
  std::string answer;          // --answer yes|no: how questions are answered
  std::string preferencesFile;  // --preferences FILE
  bool verbose = false;        // --verbose: the host's debug messages on stderr
  bool quiet = false;          // --quiet: no progress bar
  std::vector<std::string> extraPlugins;  // --extra-plugin PATH...: loaded after the plug-in, in order

  // Adds the shared options to the tool's top level (they may appear before or after the verb).
  void addOptions(CLI::App& app);

  // The plug-in file the options choose. Throws ToolError when there is none.
  std::string resolvePluginPath() const;

  // Starts a host, launches the plug-in (load, start-up, application-started notification) and
  // wires alerts, progress and Ctrl-C to the terminal. The session ends (shut-down, unload) when
  // the returned object goes.
  class Session;
  std::unique_ptr<Session> startSession();

  // Turns a plug-in's result into the tool's outcome: 0 passes, 'STOP' cancels, anything else is
  // a ToolError mentioning `what` (silent when the plug-in already showed an error alert).
  void check(DWErr result, const std::string& what) const;
};

class Tool::Session {
 public:
  explicit Session(const Tool& tool);
  ~Session();
  Session(const Session&) = delete;
  Session& operator=(const Session&) = delete;

  Host& host() { return *host_; }
  Plugin& plugin() { return *plugin_; }
  // The --extra-plugin plug-ins, started after the plug-in, in the order given.
  const std::vector<Plugin*>& extraPlugins() const { return extras_; }
  // Shuts the plug-in down now (also done by the destructor); a failure is a ToolError.
  void end();

 private:
  std::unique_ptr<Host> host_;
  Plugin* plugin_ = nullptr;
  std::vector<Plugin*> extras_;
};

// 'S!Fd' and what it means when the code is one the tool knows.
std::string describeCode(DWErr code);

}  // namespace cli
}  // namespace refhost
