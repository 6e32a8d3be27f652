// The rasterize tool given files that are missing, unreadable, empty, truncated, of absurd size or
// built to exhaust the reader, and flags with absurd numbers: each run ends with exit status 1 and
// one line "error: ..." naming the problem, and leaves nothing in the output folder.
#include <gtest/gtest.h>

#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <functional>
#include <iterator>
#include <string>
#include <vector>

#include <dirent.h>

#include "tests/bad_input/BadFiles.h"

namespace bad_input {
namespace {

const std::string kTool = DW_TOOL_PATH;
const std::string kPlugin = DW_PLUGIN_PATH;
const std::string kSource = DW_SOURCE_DIR;

struct ToolRun {
  int status = -1;
  std::string err;
};

std::string readFile(const std::string& path) {
  std::ifstream in(path, std::ios::binary);
  return std::string(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
}

// A fresh, empty folder for one case.
std::string folderFor(const std::string& name) {
  const std::string dir = ::testing::TempDir() + "bad_input_" + name;
  std::system(("rm -rf '" + dir + "'").c_str());
  mkdir(dir.c_str(), 0755);
  return dir;
}

std::vector<std::string> entries(const std::string& dir) {
  std::vector<std::string> names;
  if (DIR* d = opendir(dir.c_str())) {
    while (const dirent* e = readdir(d))
      if (std::string(e->d_name) != "." && std::string(e->d_name) != "..") names.push_back(e->d_name);
    closedir(d);
  }
  std::sort(names.begin(), names.end());
  return names;
}

// The tool is stopped after two minutes: a reader that loops must fail the case, not hang it.
ToolRun run(const std::string& arguments, const std::string& errFile) {
  const std::string command = "timeout 120 " + kTool + " --plugin " + kPlugin + " --quiet " + arguments + " 2>'" +
                              errFile + "' >/dev/null";
  const int status = std::system(command.c_str());
  ToolRun result;
  result.status = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
  result.err = readFile(errFile);
  std::remove(errFile.c_str());
  return result;
}

std::string slice(const std::string& bytes, size_t from, size_t to) { return bytes.substr(from, to - from); }

struct Case {
  std::string name;
  std::string input;                       // file name inside the case's folder
  std::function<std::string()> content;    // null: no file is written
  std::string arguments;                   // verb and flags; INPUT and OUT are replaced
  std::string mentions;                    // part of the error line
};

std::string substitute(std::string text, const std::string& key, const std::string& value) {
  for (size_t at = text.find(key); at != std::string::npos; at = text.find(key, at + value.size()))
    text.replace(at, key.size(), value);
  return text;
}

const std::string kSvg = "<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"10\" height=\"10\">"
                         "<rect width=\"5\" height=\"5\"/></svg>\n";

std::vector<Case> cases() {
  const std::string shapes = readFile(kSource + "/examples/shapes.svg");
  const std::string layers = readFile(kSource + "/examples/layers.json");
  const std::string png = smallPng();
  const std::string tiff = smallTiff();
  auto text = [](std::string s) { return [s] { return s; }; };
  const std::string exportTo = "export INPUT -o OUT/out.png";
  return {
      // Unreadable.
      {"missing", "missing.svg", nullptr, exportTo, "missing.svg"},
      {"not a folder", "file.svg/inside.svg", nullptr, exportTo, "inside.svg"},
      {"a folder", "folder.svg", nullptr, "export OUT -o OUT/out.png", "bad_input_a_folder"},
      // Empty.
      {"empty svg", "empty.svg", text(""), exportTo, "empty.svg"},
      {"empty native", "empty.json", text(""), exportTo, "empty.json"},
      {"empty png", "empty.png", text(""), exportTo, "empty.png"},
      {"empty tiff", "empty.tif", text(""), exportTo, "empty.tif"},
      {"empty, no extension", "empty", text(""), exportTo, "empty"},
      {"empty for the command", "empty.svg", text(""), "command INPUT -o OUT/out.png", "empty.svg"},
      // Truncated.
      {"truncated svg", "cut.svg", text(slice(shapes, 0, shapes.size() / 2)), exportTo, "cut.svg"},
      {"truncated native", "cut.json", text(slice(layers, 0, layers.size() / 2)), exportTo, "cut.json"},
      {"truncated png", "cut.png", text(slice(png, 0, png.size() - 20)), exportTo, "cut.png"},
      {"png header alone", "header.png", text(slice(png, 0, 8)), exportTo, "header.png"},
      {"truncated tiff", "cut.tif", text(slice(tiff, 0, 40)), exportTo, "cut.tif"},
      // Huge dimensions.
      {"svg a billion px wide", "wide.svg",
       text("<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"1e9\" height=\"10\"><rect width=\"5\" height=\"5\"/></svg>"),
       exportTo, "wide.svg"},
      {"svg page too large to render", "page.svg",
       text("<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"900000\" height=\"900000\"/>"), exportTo, "too large"},
      {"png of 100000 x 100000", "huge.png", text(pngClaiming(100000, 100000)), exportTo, "huge.png"},
      {"png of 0 x 0", "zero.png", text(pngClaiming(0, 0)), exportTo, "zero.png"},
      {"tiff of 2^31 x 2^31", "huge.tif", text(tiffClaiming(0x7FFFFFFF, 0x7FFFFFFF)), exportTo, "huge.tif"},
      {"tiff of 0 x 0", "zero.tif", text(tiffClaiming(0, 0)), exportTo, "zero.tif"},
      // Built to exhaust the reader.
      {"billion laughs", "laughs.svg", billionLaughsSvg, exportTo, "laughs.svg"},
      {"nested 100000 groups deep", "deep.svg", [] { return deeplyNestedSvg(100000); }, exportTo, "deep.svg"},
      {"native nested 100000 arrays deep", "deep.json", [] { return deeplyNestedJson(100000); }, exportTo,
       "deep.json"},
      {"path of ten million and one points", "path.svg", [] { return giantPathSvg(10000001); }, exportTo, "path.svg"},
      // Absurd flags.
      {"resolution 1e12", "page.svg", text(kSvg), exportTo + " --resolution 1e12", "too large"},
      {"resolution inf", "page.svg", text(kSvg), exportTo + " --resolution inf", "--resolution"},
      {"resolution nan", "page.svg", text(kSvg), exportTo + " --resolution nan", "--resolution"},
      {"resolution 1e-300", "page.svg", text(kSvg), exportTo + " --resolution 1e-300", "page.svg"},
      {"padding 1e30pt", "page.svg", text(kSvg), exportTo + " --padding 1e30pt", "too large"},
      {"padding nan", "page.svg", text(kSvg), exportTo + " --padding nanpt", "--padding"},
      {"negative padding", "page.svg", text(kSvg), exportTo + " --padding -3pt", "--padding"},
      {"command at 1e9 ppi", "page.svg", text(kSvg), "command INPUT -o OUT/out.png --resolution 1e9", "maximum"},
      {"command padded by 1e9 in", "page.svg", text(kSvg), "command INPUT -o OUT/out.png --padding 1e9in", "maximum"},
      {"effect at 1e9 ppi", "page.svg", text(kSvg), "effect INPUT -o OUT/out.png --resolution 1e9", "too large"},
  };
}

TEST(BadInputCli, EachFailsWithOneErrorLineAndWritesNothing) {
  for (const Case& c : cases()) {
    std::string id = c.name;
    std::replace(id.begin(), id.end(), ' ', '_');
    std::replace(id.begin(), id.end(), ',', '_');
    const std::string dir = folderFor(id);
    const std::string input = dir + "/" + c.input;
    if (c.content) writeFile(input, c.content());
    if (c.name == "not a folder") writeFile(dir + "/file.svg", kSvg);
    const std::vector<std::string> before = entries(dir);

    const std::string arguments = substitute(substitute(c.arguments, "INPUT", input), "OUT", dir);
    const ToolRun r = run(arguments, ::testing::TempDir() + "bad_input_stderr_" + std::to_string(getpid()) + ".txt");
    EXPECT_EQ(r.status, 1) << c.name << ": " << r.err;
    EXPECT_EQ(r.err.rfind("error: ", 0), 0u) << c.name << ": " << r.err;
    EXPECT_EQ(std::count(r.err.begin(), r.err.end(), '\n'), 1) << c.name << ": " << r.err;
    EXPECT_LT(r.err.size(), 400u) << c.name << ": " << r.err;
    EXPECT_NE(r.err.find(c.mentions), std::string::npos) << c.name << ": " << r.err;
    EXPECT_EQ(entries(dir), before) << c.name << ": the output folder changed";
    std::system(("rm -rf '" + dir + "'").c_str());
  }
}

}  // namespace
}  // namespace bad_input
