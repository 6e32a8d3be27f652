#include "refhost/cli/Tool.h"

#include <CLI/CLI.hpp>
#include <unistd.h>

#include <csignal>
#include <cstdlib>
#include <iostream>

#include "refhost/loader/Host.h"
#include "refhost/loader/HostErrors.h"

namespace refhost {
namespace cli {

namespace {

constexpr DWErr kUserCancelled = hostCode("STOP");

bool fileExists(const std::string& path) { return !path.empty() && access(path.c_str(), R_OK) == 0; }

std::string canonical(const std::string& path) {
  char* resolved = realpath(path.c_str(), nullptr);
  if (!resolved) return path;
  std::string text(resolved);
  std::free(resolved);
  return text;
}

std::string toolDirectory() {
  char buffer[4096];
  const ssize_t length = readlink("/proc/self/exe", buffer, sizeof buffer - 1);
  if (length <= 0) return ".";
  std::string path(buffer, size_t(length));
  const size_t slash = path.rfind('/');
  return slash == std::string::npos ? "." : path.substr(0, slash);
}

void onInterrupt(int) {
  // Only an atomic store here; the plug-in sees it at its next cancel query.
  if (Host* host = Host::currentOrNull()) host->ui().requestCancel();
}

// One line on a terminal: "\r[#####.....]  45% Rasterizing Artwork...".
void drawProgress(const ProgressState& progress) {
  if (!progress.open) {
    std::cerr << "\r\033[K" << std::flush;
    return;
  }
  const int width = 30;
  const int percent =
      progress.total > 0 ? int(100.0 * double(std::max(0, progress.current)) / double(progress.total)) : 0;
  const int filled = std::min(width, percent * width / 100);
  std::cerr << "\r[" << std::string(size_t(filled), '#') << std::string(size_t(width - filled), '.') << "] "
            << std::min(percent, 100) << "% " << progress.text << "\033[K" << std::flush;
}

}  // namespace

void Tool::addOptions(CLI::App& app) {
  app.add_option("--plugin", pluginPath, "The plug-in to load (default: $RASTERIZE_PLUGIN, then Rasterize.so next to "
                                         "the tool)")
      ->type_name("PATH");
  app.add_flag("--non-interactive", nonInteractive,
               "Run the host without a user interface: no menus or actions are installed");
  app.add_option("--performance-log", performanceLog, "Keep the developer log \"DWPerformance.log\" in FILE")
      ->type_name("FILE");
  app.add_option("--answer", answer, "Answer the plug-in's questions with yes or no (default: each question's default)")
      ->check(CLI::IsMember({"yes", "no"}));
  app.add_option("--preferences", preferencesFile, "Read and keep the application preferences in FILE (JSON)")
      ->type_name("FILE");
  app.add_flag("--verbose", verbose, "Print the host's debug messages");
  app.add_flag("--quiet", quiet, "No progress bar");
  app.add_option("--extra-plugin", extraPlugins,
                 "Load another plug-in beside Rasterize, started after it (repeatable), e.g. RasterizeClient.so")
      ->type_name("PATH")
      ->allow_extra_args(false);
}

std::string Tool::resolvePluginPath() const {
  if (!pluginPath.empty()) {
    if (!fileExists(pluginPath)) throw ToolError("cannot read the plug-in " + pluginPath);
    return pluginPath;
  }
  if (const char* environment = std::getenv("RASTERIZE_PLUGIN"); environment && *environment) {
    if (!fileExists(environment)) throw ToolError(std::string("cannot read the plug-in ") + environment +
                                                  " (from RASTERIZE_PLUGIN)");
    return environment;
  }
  const std::string here = toolDirectory();
  for (const std::string& candidate : {here + "/Rasterize.so", here + "/../../Rasterize.so"})
    if (fileExists(candidate)) return canonical(candidate);
  throw ToolError("cannot find Rasterize.so; give it with --plugin PATH or RASTERIZE_PLUGIN");
}

std::unique_ptr<Tool::Session> Tool::startSession() { return std::make_unique<Session>(*this); }

Tool::Session::Session(const Tool& tool) : host_(std::make_unique<Host>()) {
  Host& host = *host_;
  host.controls().interactive = !tool.nonInteractive;
  if (tool.answer == "yes") host.controls().questionAnswer = true;
  if (tool.answer == "no") host.controls().questionAnswer = false;
  if (!tool.performanceLog.empty()) host.logs().keep("DWPerformance.log", tool.performanceLog);
  if (!tool.preferencesFile.empty()) {
    host.preferences().setPath(tool.preferencesFile);
    host.preferences().load();
  }
  // The bar is drawn only on a terminal; an alert first clears its line there.
  const bool bar = !tool.quiet && isatty(STDERR_FILENO);
  host.ui().onAlert = [bar](const Alert& alert) {
    if (bar) std::cerr << "\r\033[K";
    switch (alert.kind) {
      case Alert::Kind::Error: std::cerr << "error: " << alert.text << "\n"; break;
      case Alert::Kind::Warning: std::cerr << "warning: " << alert.text << "\n"; break;
      case Alert::Kind::Question:
        std::cerr << "warning: " << alert.text << (alert.answer ? "" : " (answered no)") << "\n";
        break;
    }
  };
  if (bar) host.ui().onProgress = drawProgress;
  if (tool.verbose) host.logs().onDebugMessage = [](const std::string& text) { std::cerr << "debug: " << text << "\n"; };

  try {
    plugin_ = &host.launchPlugin(tool.resolvePluginPath());
    for (const std::string& path : tool.extraPlugins) extras_.push_back(&host.launchPlugin(path));
  } catch (const HostError& error) {
    throw ToolError(error.what());
  }
  host.notifyApplicationStarted();
  std::signal(SIGINT, onInterrupt);
}

void Tool::Session::end() {
  // The others may hold the plug-in's suite: they go first.
  while (!extras_.empty()) {
    Plugin& extra = *extras_.back();
    extras_.pop_back();
    if (const DWErr result = host_->shutdownPlugin(extra))
      throw ToolError(extra.name() + " did not shut down cleanly: " + describeCode(result));
  }
  if (!plugin_) return;
  Plugin& plugin = *plugin_;
  plugin_ = nullptr;
  if (const DWErr result = host_->shutdownPlugin(plugin))
    throw ToolError(plugin.name() + " did not shut down cleanly: " + describeCode(result));
}

Tool::Session::~Session() {
  std::signal(SIGINT, SIG_DFL);
  for (auto extra = extras_.rbegin(); extra != extras_.rend(); ++extra) host_->shutdownPlugin(**extra);
  if (plugin_) host_->shutdownPlugin(*plugin_);
  // A destructor must not throw: a preferences file that cannot be written is a warning.
  try {
    if (!host_->preferences().path().empty()) host_->preferences().save();
  } catch (const std::exception& error) {
    std::cerr << "warning: " << error.what() << "\n";
  }
}

void Tool::check(DWErr result, const std::string& what) const {
  if (result == kDWNoErr) return;
  if (result == kUserCancelled) throw ToolCancelled();
  Host* host = Host::currentOrNull();
  bool shown = false;
  if (host)
    for (const Alert& alert : host->ui().alerts()) shown = shown || alert.kind == Alert::Kind::Error;
  throw ToolError(what + " failed: " + describeCode(result), shown);
}

std::string describeCode(DWErr code) {
  struct Known {
    DWErr code;
    const char* meaning;
  };
  static const Known known[] = {
      {hostCode("S!Fd"), "a required host suite is missing"},
      {hostCode("NIMP"), "not implemented in the plug-in yet"},
      {hostCode("!MEM"), "out of memory"},
      {hostCode("!sel"), "invalid selection"},
      {hostCode("R2Wd"), "the raster would be too large"},
      {hostCode("NESS"), "the layer is locked"},
      {kHostNotImplemented, "not implemented in the reference host yet"},
      {kHostSuiteNotFound, "no such host suite"},
      {kHostBadParameter, "bad parameter"},
      {kHostOutOfMemory, "the host is out of memory"},
  };
  std::string text = formatCode(code);
  for (const Known& entry : known)
    if (entry.code == code) return text + " (" + entry.meaning + ")";
  return text;
}

}  // namespace cli
}  // namespace refhost
