#include <CLI/CLI.hpp>

#include <algorithm>
#include <cstring>
#include <iostream>
#include <set>
#include <string>
#include <vector>

#include "refhost/cli/Tool.h"
#include "refhost/loader/Host.h"
#include "refhost/loader/HostErrors.h"

namespace refhost {
namespace cli {
#define REFHOST_VERB(function) void function(CLI::App& app, Tool& tool);
#include "refhost/cli/VerbList.h"
#undef REFHOST_VERB
}  // namespace cli
}  // namespace refhost

namespace {

using namespace refhost::cli;

// "rasterize in.svg -o out.png" means "rasterize export in.svg -o out.png": when the first word
// that is neither an option nor an option's value is not a verb, "export" goes before it.
std::vector<std::string> withDefaultVerb(const CLI::App& app, std::vector<std::string> args) {
  std::set<std::string> verbs;
  for (const CLI::App* sub : app.get_subcommands([](const CLI::App*) { return true; })) verbs.insert(sub->get_name());
  static const std::set<std::string> valued = {"--plugin", "--performance-log", "--answer", "--preferences",
                                                "--extra-plugin"};
  for (size_t i = 0; i < args.size(); ++i) {
    const std::string& arg = args[i];
    if (arg == "--") return args;
    if (!arg.empty() && arg[0] == '-') {
      if (valued.count(arg)) ++i;
      continue;
    }
    if (!verbs.count(arg)) args.insert(args.begin() + std::ptrdiff_t(i), "export");
    return args;
  }
  return args;
}

}  // namespace

int main(int argc, char** argv) {
  Tool tool;
  CLI::App app{"rasterize: turns vector artwork into pixels with the Rasterize plug-in, run in the reference host.",
               "rasterize"};
  app.require_subcommand(1);
  app.fallthrough();
  app.footer(
      "Without a verb, `rasterize INPUT -o OUTPUT` runs `export`.\n"
      "The plug-in is found by --plugin, then $RASTERIZE_PLUGIN, then Rasterize.so next to the tool or\n"
      "two folders up (the build tree).\n"
      "Exit status: 0 success, 1 error (one line \"error: ...\" on stderr), 130 cancelled.");
  tool.addOptions(app);
#define REFHOST_VERB(function) function(app, tool);
#include "refhost/cli/VerbList.h"
#undef REFHOST_VERB

  std::vector<std::string> args(argv + 1, argv + argc);
  args = withDefaultVerb(app, args);
  std::reverse(args.begin(), args.end());  // CLI11 takes the arguments last-first
  try {
    app.parse(args);
  } catch (const CLI::CallForHelp& help) {
    return app.exit(help);
  } catch (const CLI::CallForAllHelp& help) {
    return app.exit(help);
  } catch (const CLI::ParseError& error) {
    std::cerr << "error: " << error.what() << "\n";
    return kExitError;
  } catch (const ToolCancelled&) {
    return kExitCancelled;
  } catch (const ToolError& error) {
    if (!error.alreadyShown()) std::cerr << "error: " << error.what() << "\n";
    return kExitError;
  } catch (const std::exception& error) {
    std::cerr << "error: " << error.what() << "\n";
    return kExitError;
  }
  return kExitOk;
}
