// The lines the real plug-in writes to the host's "DWPerformance.log", character for character;
// elapsed times are read from each line and the line is rebuilt around them.
#include <gtest/gtest.h>
#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

#include "refhost/render/Accelerator.h"
#include "tests/e2e/PluginHost.h"

namespace e2e {
namespace {

// One expected line: its label and detail; `zero` when the number must be 0.
struct Line {
  std::string label;
  std::string detail;
  bool zero = false;
};

std::string labelLine(const std::string& label, const std::string& detail) {
  char text[256];
  std::snprintf(text, sizeof text, "%12s\t%s\t(%s)", "", label.c_str(), detail.c_str());
  return text;
}

std::string numberLine(unsigned number, const std::string& label, const std::string& detail) {
  char text[256];
  std::snprintf(text, sizeof text, "%12u\t%s\t(%s)", number, label.c_str(), detail.c_str());
  return text;
}

std::vector<Line> endLines(bool zeroStages) {
  return {{"Rasterize", "End"},
          {"Rasterize", "rasterizeTile", zeroStages},
          {"Rasterize", "downSample", zeroStages},
          {"Rasterize", "updateRasterTile", zeroStages}};
}

int32_t stopAtOnce(int32_t, int32_t) { return 0; }

TEST(PerformanceLog, LinesMatchTheirFormats) {
  const std::string start = render::acceleratorSwitches().enabled ? "Rasterize(ENABLE_BOTTELNECK)" : "Rasterize";
  const std::string processors = std::to_string(sysconf(_SC_NPROCESSORS_ONLN));
  // 200 x 300 transparent RGB: 800 bytes a row; a 1 MiB budget over 4 x 4 supersampling gives
  // tiles of (1048576 / 16) / 800 rows.
  const unsigned rows = (1048576u / 16u) / 800u;
  const std::string supersampledTiles = std::to_string((300 + rows - 1) / rows);
  struct Case {
    const char* name;
    int16_t antialiasing;
    int spots;  // with 28 the user is asked, and cancels
    DWRasterizeProgressProc progress;
    std::vector<Line> lines;
  };
  std::vector<Case> cases = {
      {"no supersampling", 0, 0, nullptr, {{"Begin Tile processing", "TileCount: 1, Threads: 1"}}},
      {"supersampled", 4, 0, nullptr, {{"Begin Tile processing", "TileCount: " + supersampledTiles + ", Threads: " + processors}}},
      {"stopped while drawing", 0, 0, stopAtOnce, {{"Begin Tile processing", "TileCount: 1, Threads: 1"}}},
      {"cancelled before planning", 4, 28, nullptr, {}},
  };
  for (Case& c : cases)
    if (c.spots == 0) {
      const std::vector<Line> end = endLines(c.antialiasing == 0);
      c.lines.insert(c.lines.end(), end.begin(), end.end());
    }

  for (const Case& c : cases) {
    PluginHost p;
    p.host.logs().keep("DWPerformance.log");
    p.host.preferences().setInteger("Rasterize", "rasterizeMemory", 1);
    std::vector<Art*> art;
    RasterizeSettings settings = settingsFor(kRasterTypeRgbTransparent, c.antialiasing);
    for (int i = 0; i < std::max(1, c.spots); ++i) {
      Paint paint = Paint::rgb(0, 0, 1);
      if (c.spots) {
        CustomColor spot;
        spot.name = "Spot " + std::to_string(i);
        paint = Paint::spotColor(p.doc->newCustomColor(spot));
      }
      art.push_back(p.add({10, 10, 190, 290}, paint));
    }
    if (c.spots) {
      settings.options = kRasterizeAllowNChannelRaster;
      settings.preserveSpotColors = 1;
      p.host.controls().questionAnswers.push_back(false);
    }
    p.rasterize(p.artSet(art), settings, Rect{0, 300, 200, 0}, c.progress);

    const std::vector<std::string> lines = p.host.logs().lines("DWPerformance.log");
    ASSERT_EQ(lines.size(), c.lines.size() + 1) << c.name;
    EXPECT_EQ(lines[0], labelLine(start, "Start")) << c.name;
    for (size_t i = 0; i < c.lines.size(); ++i) {
      const std::string& got = lines[i + 1];
      const unsigned number = unsigned(std::strtoul(got.substr(0, 12).c_str(), nullptr, 10));
      EXPECT_EQ(got, numberLine(number, c.lines[i].label, c.lines[i].detail)) << c.name << ", line " << i + 2;
      if (c.lines[i].zero) {
        EXPECT_EQ(number, 0u) << c.name << ": " << got;
      }
    }
  }
}

}  // namespace
}  // namespace e2e
