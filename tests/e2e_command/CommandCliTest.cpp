// The `command` and `settings` verbs run as a user runs them: exit codes, one error line, and
// either every output file or none.
#include <gtest/gtest.h>

#include <sys/stat.h>
#include <sys/wait.h>

#include <algorithm>
#include <cstdio>
#include <fstream>
#include <iterator>
#include <sstream>

#include "refhost/io/NativeFormat.h"
#include "refhost/io/PngDecode.h"
#include "tests/e2e_command/CommandHost.h"

namespace e2e_command {
namespace {

struct ToolRun {
  int status = -1;
  std::string out;
  std::string err;
};

// Named after the running test: CTest runs the tests of this program in parallel processes.
std::string path(const std::string& name) {
  return ::testing::TempDir() + "command_cli_" + ::testing::UnitTest::GetInstance()->current_test_info()->name() +
         "_" + name;
}

ToolRun run(const std::string& arguments) {
  const std::string errFile = path("stderr.txt");
  const std::string command = kToolPath + " --plugin " + kPluginPath + " " + arguments + " 2>" + errFile;
  ToolRun result;
  FILE* pipe = popen(command.c_str(), "r");
  if (!pipe) return result;
  char buffer[4096];
  size_t read = 0;
  while ((read = fread(buffer, 1, sizeof buffer, pipe)) > 0) result.out.append(buffer, read);
  const int status = pclose(pipe);
  result.status = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
  std::ifstream err(errFile);
  result.err.assign(std::istreambuf_iterator<char>(err), std::istreambuf_iterator<char>());
  std::remove(errFile.c_str());
  return result;
}

bool exists(const std::string& path) {
  struct stat info;
  return stat(path.c_str(), &info) == 0;
}

Art* rect(Document& doc, const std::string& name, double left, double bottom, double right, double top) {
  Art* art = doc.newArt(ArtKind::Path, PaintOrder::AboveAll, nullptr);
  art->setName(name);
  art->path()->segments = {PathSegment::at(left, bottom), PathSegment::at(right, bottom), PathSegment::at(right, top),
                           PathSegment::at(left, top)};
  art->path()->closed = true;
  art->pathStyle().fillPaint = true;
  art->pathStyle().fill = Paint::gray(1.0);
  return art;
}

// Two overlapping black rectangles, a partly selected path and, on a locked layer, one more.
std::string writeInput() {
  Document doc;
  doc.artboards().push_back({"Page", Rect{0, 100, 100, 0}});
  doc.setActiveArtboard(0);
  Layer* locked = doc.newLayer("Locked");
  doc.setCurrentLayer(locked);
  rect(doc, "pinned", 10, 70, 20, 80);
  locked->setEditable(false);
  doc.setCurrentLayer(doc.newLayer("Art", 0));
  rect(doc, "box", 10, 10, 50, 40);
  rect(doc, "band", 30, 20, 80, 60);
  rect(doc, "partial", 60, 70, 90, 90)->setAttributes(ArtAttr::Selected, ArtAttr::Selected);
  const std::string file = path("input.json");
  io::saveDocument(doc, file);
  return file;
}

TEST(CommandCli, TheMaskedRasterAndTheDocumentAreWritten) {
  const std::string input = writeInput(), image = path("masked.png"), saved = path("masked.json");
  const ToolRun r = run("command " + input + " --select box --select band --mask --resolution 72 -o " + image +
                        " --save " + saved);
  ASSERT_EQ(r.status, 0) << r.err;
  EXPECT_EQ(r.err, "");
  EXPECT_EQ(r.out, "raster: 70 x 50 pixels, 72 ppi, RGB, clipped by a mask\n");

  std::ifstream in(image, std::ios::binary);
  const std::vector<uint8_t> bytes((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
  std::string error;
  const auto png = io::decodePng(bytes, error);
  ASSERT_TRUE(png) << error;
  ASSERT_EQ(png->width, 70);
  ASSERT_EQ(png->height, 50);
  // Pixel (x, y) shows document point (10 + x + 0.5, 60 - y - 0.5): black inside either rectangle,
  // transparent in the two corners the union leaves out.
  struct Probe {
    int x, y;
    uint8_t alpha;
  };
  for (const Probe& p : {Probe{5, 45, 255}, Probe{30, 30, 255}, Probe{60, 5, 255}, Probe{50, 45, 0}, Probe{5, 5, 0}}) {
    const uint8_t* px = &png->rgba[size_t(p.y * png->width + p.x) * 4];
    EXPECT_EQ(px[3], p.alpha) << p.x << ", " << p.y;
    if (p.alpha) {
      EXPECT_EQ(px[0], 0) << p.x << ", " << p.y;
    }
  }

  const auto doc = io::loadDocument(saved);
  EXPECT_EQ(doc->findLayer("Art")->group()->childCount(), 2u) << "the masked raster's group and the partial path";
  std::remove(image.c_str());
  std::remove(saved.c_str());
}

TEST(CommandCli, AFailureWritesNothing) {
  const std::string input = writeInput(), image = path("failed.png"), saved = path("failed.json"),
                    preferences = path("failed-preferences.json");
  std::ofstream(preferences) << "{}\n";
  // The settings verb writes no image: it is given the document and preferences outputs only.
  const std::string outputs = " --save " + saved + " --preferences " + preferences;
  struct Case {
    std::string arguments;
    int status;
    std::string error;  // the one line on stderr, after "error: "; empty: no line
  };
  const Case cases[] = {
      {"command " + input + " --select saved", 1, "You have attempted to rasterize an invalid selection."},
      {"command " + input + " --select pinned", 1, "The current layer is locked."},
      {"command " + input + " --select missing", 1, "--select missing: no object is named \"missing\""},
      {"command " + input + " --cancel-dialog", 130, ""},
      {"command " + input + " --spot-limit maybe", 1, ""},
      {"settings " + input + " --resolution 150 --padding 3furlongs", 1, ""},
      {"settings " + input + " --resolution 150 --cancel-dialog", 130, ""},
  };
  for (const Case& c : cases) {
    const bool command = c.arguments.rfind("command ", 0) == 0;
    const ToolRun r = run(c.arguments + outputs + (command ? " -o " + image : ""));
    EXPECT_EQ(r.status, c.status) << c.arguments << "\n" << r.err;
    EXPECT_EQ(r.out, "") << c.arguments;
    if (c.status == 130) {
      EXPECT_EQ(r.err, "") << c.arguments;
    } else {
      EXPECT_EQ(std::count(r.err.begin(), r.err.end(), '\n'), 1) << c.arguments << "\n" << r.err;
      EXPECT_EQ(r.err.rfind("error: " + c.error, 0), 0u) << c.arguments << "\n" << r.err;
    }
    EXPECT_FALSE(exists(image)) << c.arguments;
    EXPECT_FALSE(exists(saved)) << c.arguments;
    std::ifstream kept(preferences);
    EXPECT_EQ(std::string(std::istreambuf_iterator<char>(kept), std::istreambuf_iterator<char>()), "{}\n")
        << c.arguments;
  }
  std::remove(preferences.c_str());
}

TEST(SettingsCli, ChangedSettingsAreSavedAndBecomeTheDefaults) {
  const std::string input = writeInput(), saved = path("settings.json"), preferences = path("preferences.json");
  std::remove(preferences.c_str());
  const ToolRun r = run("settings " + input + " --resolution 150.7 --background white --preferences " + preferences +
                        " --save " + saved);
  ASSERT_EQ(r.status, 0) << r.err;
  EXPECT_NE(r.out.find("background: white\n"), std::string::npos) << r.out;

  const auto doc = io::loadDocument(saved);
  const DictionaryPtr entry = doc->dictionary()->getDictionary("DW Auto Rasterize");
  ASSERT_NE(entry, nullptr);
  EXPECT_EQ(entry->keys(), (std::vector<std::string>{"colr", "dpi."}));
  EXPECT_EQ(entry->getInteger("dpi."), 150);
  EXPECT_EQ(entry->getInteger("colr"), 0);
  const Preferences kept(preferences);
  EXPECT_EQ(kept.getInteger("Rasterize/Defaults", "DPI"), 150);
  EXPECT_EQ(kept.getInteger("Rasterize/Defaults", "Type"), 0);
  EXPECT_EQ(kept.values().size(), 2u);
  std::remove(saved.c_str());
  std::remove(preferences.c_str());
}

}  // namespace
}  // namespace e2e_command
