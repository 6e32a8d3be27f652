// The rasterize tool as a user runs it: exit codes, one-line errors, plugin-info.
#include <gtest/gtest.h>

#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <fstream>
#include <iterator>
#include <sstream>
#include <string>

#include "tests/loader/PluginUnderTest.h"

namespace {

struct ToolRun {
  int status = -1;
  std::string out;
  std::string err;
};

ToolRun run(const std::string& arguments) {
  // Per process: ctest runs the tests of this file side by side, each in its own process.
  const std::string errFile = ::testing::TempDir() + "rasterize_stderr_" + std::to_string(getpid()) + ".txt";
  const std::string command = std::string(DW_TOOL_PATH) + " " + arguments + " 2>" + errFile;
  ToolRun result;
  FILE* pipe = popen(command.c_str(), "r");
  if (!pipe) return result;
  char buffer[4096];
  size_t read = 0;
  while ((read = fread(buffer, 1, sizeof buffer, pipe)) > 0) result.out.append(buffer, read);
  const int status = pclose(pipe);
  result.status = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
  std::ifstream err(errFile);
  std::stringstream text;
  text << err.rdbuf();
  result.err = text.str();
  std::remove(errFile.c_str());
  return result;
}

bool contains(const std::string& text, const std::string& part) { return text.find(part) != std::string::npos; }

TEST(Cli, PluginInfoListsWhatThePluginRegistered) {
  const ToolRun r = run("plugin-info --plugin " + kPluginPath);
  ASSERT_EQ(r.status, 0) << r.err;
  EXPECT_EQ(r.err, "");
  for (const char* line : {
           "plug-in: \"Rasterize 8\"",
           "\"DWPlugin Object Raster\" by \"Object Utilities\"",
           "\"DWPlugin Object Raster\" / \"Rasterize 8 menu item\": \"Rasterize...\"",
           "\"Effects Misc\" / \"Live Rasterize Effect Setting\": \"Document Raster Effects Settings...\"",
           "\"Corvel Rasterize\": title \"Rasterize\"",
           "style converter \"DW Auto Rasterize\"",
           "\"DW Rasterize Suite\" version 10, internal version 1",
           "announces suite \"DW Rasterize Suite\" version 5",
           "\"dw_plugin_rasterize\": \"Rasterize\", event value 1, 10 parameters",
           "\"dw_plugin_rasterEffectSettings\": \"Document Raster Effects Settings\", event value 0, 7 parameters",
           "\"Rasterize App Started Notifier\" for \"DW Application Started Notifier\"",
       })
    EXPECT_TRUE(contains(r.out, line)) << line << "\n" << r.out;
}

TEST(Cli, PluginInfoWithoutAUserInterfaceHasNoMenusOrActions) {
  const ToolRun r = run("--non-interactive plugin-info --plugin " + kPluginPath);
  ASSERT_EQ(r.status, 0) << r.err;
  for (const char* absent : {"Rasterize 8 menu item", "Live Rasterize Effect Setting", "menu item \"Rasterize\"",
                             "DWPlugin Object Raster", "dw_plugin_rasterize"})
    EXPECT_FALSE(contains(r.out, absent)) << absent << "\n" << r.out;
  EXPECT_TRUE(contains(r.out, "\"Corvel Rasterize\""));
  EXPECT_TRUE(contains(r.out, "\"DW Rasterize Suite\" version 10"));
}

TEST(Cli, TheEnvironmentNamesThePlugin) {
  const ToolRun r = run("plugin-info");  // found next to the tool in the build tree
  EXPECT_EQ(r.status, 0) << r.err;
  const ToolRun env = run("plugin-info 2>&1; RASTERIZE_PLUGIN=/nonexistent/Rasterize.so " + std::string(DW_TOOL_PATH) +
                      " plugin-info");
  EXPECT_EQ(env.status, 1);
  EXPECT_TRUE(contains(env.err, "RASTERIZE_PLUGIN")) << env.err;
}

// Failures are one line "error: ..." on stderr, exit status 1, nothing on stdout.
TEST(Cli, FailuresAreOneErrorLine) {
  const std::string notAPlugin = ::testing::TempDir() + "not_a_plugin.so";
  std::ofstream(notAPlugin) << "text";
  struct Case {
    std::string arguments;
    std::string mentions;
  };
  const Case cases[] = {
      {"plugin-info --plugin /nonexistent/Rasterize.so", "/nonexistent/Rasterize.so"},
      {"plugin-info --plugin " + notAPlugin, "not a readable ELF file"},
      {"plugin-info --no-such-flag", "no-such-flag"},
      {"plugin-info --answer maybe", "maybe"},
      {"", "subcommand"},
  };
  for (const Case& c : cases) {
    const ToolRun r = run(c.arguments);
    EXPECT_EQ(r.status, 1) << c.arguments;
    EXPECT_EQ(r.out, "") << c.arguments;
    EXPECT_EQ(r.err.rfind("error: ", 0), 0u) << c.arguments << ": " << r.err;
    EXPECT_EQ(std::count(r.err.begin(), r.err.end(), '\n'), 1) << c.arguments << ": " << r.err;
    EXPECT_TRUE(contains(r.err, c.mentions)) << c.arguments << ": " << r.err;
  }
  std::remove(notAPlugin.c_str());
}

TEST(Cli, AStartupFailureNamesTheCode) {
  // No required suite can be missing from the reference host, so break the plug-in instead:
  // a copy of it whose property list names an entry point that does not exist.
  std::ifstream in(kPluginPath, std::ios::binary);
  std::string bytes((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
  const size_t at = bytes.find(std::string("PluginMain\0\0", 12));
  ASSERT_NE(at, std::string::npos);
  bytes[at] = 'Q';
  const std::string broken = ::testing::TempDir() + "broken_Rasterize.so";
  std::ofstream(broken, std::ios::binary) << bytes;
  const ToolRun r = run("plugin-info --plugin " + broken);
  EXPECT_EQ(r.status, 1);
  EXPECT_TRUE(contains(r.err, "no entry point \"QluginMain\"")) << r.err;
  std::remove(broken.c_str());
}

TEST(Cli, HelpListsEveryVerbAndOption) {
  const ToolRun r = run("--help");
  EXPECT_EQ(r.status, 0);
  for (const char* word : {"export", "plugin-info", "--plugin", "--non-interactive", "--performance-log", "--answer",
                           "RASTERIZE_PLUGIN", "130"})
    EXPECT_TRUE(contains(r.out, word)) << word;
  const ToolRun verb = run("plugin-info --help");
  EXPECT_EQ(verb.status, 0);
  EXPECT_TRUE(contains(verb.out, "plugin-info")) << verb.out;
}

}  // namespace
