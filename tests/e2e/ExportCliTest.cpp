// `rasterize export` as a user runs it: the page of an SVG through the real plug-in into image
// files, one-line errors, and nothing written when anything fails.
#include <gtest/gtest.h>

#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <fstream>
#include <iterator>
#include <memory>
#include <sstream>
#include <string>
#include <vector>

#include "refhost/io/PngDecode.h"
#include "tests/e2e/PluginHost.h"

namespace e2e {
namespace {

struct ToolRun {
  int status = -1;
  std::string err;
};

// Per process: ctest runs this file's tests side by side, and they share file names.
std::string temp(const std::string& name) {
  return ::testing::TempDir() + "e2e_export_" + std::to_string(getpid()) + "_" + name;
}

std::string readFile(const std::string& path) {
  std::ifstream in(path, std::ios::binary);
  return std::string(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
}

ToolRun run(const std::string& arguments) {
  const std::string errFile = temp("stderr.txt");
  const std::string command = kToolPath + " --plugin " + kPluginPath + " --quiet " + arguments + " 2>" + errFile;
  ToolRun result;
  const int status = std::system(command.c_str());
  result.status = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
  result.err = readFile(errFile);
  std::remove(errFile.c_str());
  return result;
}

// A 40 x 20 px page: a red 20 x 8 px rectangle at (10, 4), and a hidden layer filled with blue.
std::string pageSvg() {
  const std::string path = temp("page.svg");
  std::ofstream(path) << R"(<svg xmlns="http://www.w3.org/2000/svg" width="40" height="20" viewBox="0 0 40 20">
  <g id="hidden" style="display:none"><rect width="40" height="20" fill="blue"/></g>
  <g id="art"><rect x="10" y="4" width="20" height="8" fill="#ff0000"/></g>
</svg>)";
  return path;
}

std::shared_ptr<Image> readPng(const std::string& path) {
  const std::string bytes = readFile(path);
  std::string error;
  return io::decodePng(std::vector<std::uint8_t>(bytes.begin(), bytes.end()), error);
}

TEST(ExportCli, RendersThePageAtTheAskedSize) {
  const std::string svg = pageSvg();
  struct Case {
    std::string flags;
    std::string output;  // the file whose pixels are checked
    int width, height;
    double scale;  // page pixels per SVG px; 0: check the size only
    std::vector<int> outside;  // RGBA; inside the rectangle is opaque red
  };
  const Case cases[] = {
      {"--resolution 96", "a.png", 40, 20, 1, {255, 255, 255, 255}},
      {"--width 80 --antialias none", "b.png", 80, 40, 2, {255, 255, 255, 255}},
      {"--height 10 --background transparent", "c.png", 20, 10, 0.5, {255, 255, 255, 0}},
      {"--resolution 96 --color bitmap", "d.png", 40, 20, 0, {255, 255, 255, 255}},
      {"--resolution 192 --color cmyk -o " + temp("e.tif") + " --preview", "e.png", 80, 40, 2, {255, 255, 255, 255}},
      {"", "f.png", 125, 63, 0, {255, 255, 255, 255}},  // 300 ppi: 40 px * 300 / 96 and 20 px * 300 / 96, rounded up
  };
  for (const Case& c : cases) {
    const std::string out = temp(c.output);
    std::remove(out.c_str());
    const ToolRun r = run(svg + " " + c.flags + (c.flags.find(" -o ") == std::string::npos ? " -o " : " ") + out);
    ASSERT_EQ(r.status, 0) << c.flags << ": " << r.err;
    const std::shared_ptr<Image> image = readPng(out);
    ASSERT_TRUE(image) << c.flags;
    EXPECT_EQ(image->width, c.width) << c.flags;
    EXPECT_EQ(image->height, c.height) << c.flags;
    if (c.scale == 0 || !image) continue;
    int wrong = 0;
    for (int y = 0; y < image->height; ++y)
      for (int x = 0; x < image->width; ++x) {
        const bool inside = x >= 10 * c.scale && x < 30 * c.scale && y >= 4 * c.scale && y < 12 * c.scale;
        const std::vector<int> want = inside ? std::vector<int>{255, 0, 0, 255} : c.outside;
        const std::uint8_t* got = &image->rgba[(size_t(y) * size_t(image->width) + size_t(x)) * 4];
        const bool same = std::equal(want.begin(), want.end(), got, [](int a, std::uint8_t b) { return a == b; });
        if (!same && ++wrong <= 3) ADD_FAILURE() << c.flags << ": pixel (" << x << ", " << y << ")";
      }
  }
  EXPECT_EQ(readFile(temp("e.tif")).substr(0, 4), std::string("II*\0", 4)) << "a little-endian TIFF";
}

// A page 40.5 x 20.25 px at 96 ppi becomes 41 x 21 pixels at the same scale: the rectangle keeps
// its exact pixels and the part-page column and row show the background, nothing is stretched.
TEST(ExportCli, AFractionalPageKeepsItsScale) {
  const std::string svg = temp("fractional.svg"), out = temp("fractional.png");
  std::ofstream(svg) << R"(<svg xmlns="http://www.w3.org/2000/svg" width="40.5" height="20.25" viewBox="0 0 40.5 20.25">
  <rect x="10" y="4" width="20" height="8" fill="#ff0000"/>
</svg>)";
  const ToolRun r = run(svg + " --resolution 96 -o " + out);
  ASSERT_EQ(r.status, 0) << r.err;
  const std::shared_ptr<Image> image = readPng(out);
  ASSERT_TRUE(image);
  ASSERT_EQ(image->width, 41);
  ASSERT_EQ(image->height, 21);
  int wrong = 0;
  for (int y = 0; y < image->height; ++y)
    for (int x = 0; x < image->width; ++x) {
      const bool inside = x >= 10 && x < 30 && y >= 4 && y < 12;
      const std::uint8_t* got = &image->rgba[(size_t(y) * size_t(image->width) + size_t(x)) * 4];
      const bool same = inside ? got[0] == 255 && got[1] == 0 && got[2] == 0 : got[0] == 255 && got[1] == 255 && got[2] == 255;
      if (!same && ++wrong <= 3) ADD_FAILURE() << "pixel (" << x << ", " << y << ")";
    }
}

TEST(ExportCli, KeepsThePerformanceLog) {
  const std::string log = temp("performance.log");
  std::remove(log.c_str());
  const ToolRun r = run(pageSvg() + " -o " + temp("log.png") + " --performance-log " + log);
  ASSERT_EQ(r.status, 0) << r.err;
  const std::string text = readFile(log);
  EXPECT_EQ(std::count(text.begin(), text.end(), '\n'), 6) << text;
  EXPECT_NE(text.find("\tRasterize\t(End)\n"), std::string::npos) << text;
}

TEST(ExportCli, FailuresAreOneLineAndWriteNothing) {
  const std::string svg = pageSvg();
  const std::string broken = temp("broken.svg");
  std::ofstream(broken) << "<svg xmlns=\"http://www.w3.org/2000/svg\"><rect";
  const std::string out = temp("kept.png");
  struct Case {
    std::string arguments;
    std::string mentions;
  };
  const Case cases[] = {
      {temp("missing.svg") + " -o " + out, "missing.svg"},
      {broken + " -o " + out, "broken.svg"},
      {svg + " -o " + temp("out.jpg"), ".png or .tif"},
      {svg + " -o " + out + " --color cmyk", ".tif file"},
      {svg + " -o " + out + " --color purple", "purple"},
      {svg + " -o " + out + " --width 10 --resolution 5", "excludes"},
      {svg + " -o " + out + " --padding 3furlongs", "3furlongs"},
      {svg + " -o " + temp("no/such/folder.png"), "folder.png"},
  };
  for (const Case& c : cases) {
    std::ofstream(out) << "earlier";
    const ToolRun r = run(c.arguments);
    EXPECT_EQ(r.status, 1) << c.arguments;
    EXPECT_EQ(r.err.rfind("error: ", 0), 0u) << c.arguments << ": " << r.err;
    EXPECT_EQ(std::count(r.err.begin(), r.err.end(), '\n'), 1) << c.arguments << ": " << r.err;
    EXPECT_NE(r.err.find(c.mentions), std::string::npos) << c.arguments << ": " << r.err;
    EXPECT_EQ(readFile(out), "earlier") << c.arguments;
  }
}

}  // namespace
}  // namespace e2e
