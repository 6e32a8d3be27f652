// The `effect`, `convert-mode` and `play` verbs and `--record-actions`, run as a user runs them.
#include <gtest/gtest.h>

#include <sys/stat.h>
#include <sys/wait.h>

#include <cstdio>
#include <fstream>
#include <iterator>

#include "refhost/document/Equivalence.h"
#include "refhost/io/NativeFormat.h"
#include "refhost/io/PngDecode.h"
#include "tests/e2e_effect/EffectHost.h"

namespace e2e_effect {
namespace {

struct ToolRun {
  int status = -1;
  std::string err;
};

ToolRun run(const std::string& arguments) {
  // Named after the running test: CTest runs the tests of this program in parallel processes.
  const std::string errFile = ::testing::TempDir() + "effect_cli_stderr_" +
                              ::testing::UnitTest::GetInstance()->current_test_info()->name() + ".txt";
  const std::string command =
      kToolPath + " --plugin " + kPluginPath + " " + arguments + " >/dev/null 2>" + errFile;
  ToolRun result;
  const int status = std::system(command.c_str());
  result.status = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
  std::ifstream err(errFile);
  result.err.assign(std::istreambuf_iterator<char>(err), std::istreambuf_iterator<char>());
  std::remove(errFile.c_str());
  return result;
}

std::string path(const std::string& name) { return ::testing::TempDir() + "effect_cli_" + name; }

bool exists(const std::string& file) {
  struct stat info;
  return stat(file.c_str(), &info) == 0;
}

Art* square(Document& doc, double left, double bottom, double size, const Paint& fill) {
  Art* art = doc.newArt(ArtKind::Path, PaintOrder::AboveAll, nullptr);
  art->path()->segments = {PathSegment::at(left, bottom), PathSegment::at(left + size, bottom),
                           PathSegment::at(left + size, bottom + size), PathSegment::at(left, bottom + size)};
  art->path()->closed = true;
  art->pathStyle().fillPaint = true;
  art->pathStyle().fill = fill;
  return art;
}

// A 100 x 100 pt page with a red square, and more squares after it when `squares` says so.
std::string writeDocument(const std::string& name, int squares, const DictionaryPtr& effect = nullptr) {
  Document doc;
  doc.artboards().push_back({"Page", Rect{0, 100, 100, 0}});
  doc.setActiveArtboard(0);
  doc.newLayer("Art");
  Art* red = square(doc, 30, 30, 40, Paint::rgb(1, 0, 0));
  if (effect) {
    auto style = std::make_shared<ArtStyle>();
    style->effects.push_back(LiveEffect{kRasterizeEffectName, effect, 1, 0});
    red->setArtStyle(style);
  }
  for (int i = 1; i < squares; ++i) square(doc, 5.0 * i, 70.0 - 7.0 * i, 12.5, Paint::gray(0.25 * i));
  const std::string file = path(name);
  io::saveDocument(doc, file);
  return file;
}

// Red, green and blue of the pixel at the centre of a PNG.
std::vector<int> centre(const std::string& file) {
  std::ifstream in(file, std::ios::binary);
  const std::vector<uint8_t> bytes{std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
  std::string error;
  const std::shared_ptr<Image> image = io::decodePng(bytes, error);
  if (!image) return {};
  const size_t at = (size_t(image->height / 2) * size_t(image->width) + size_t(image->width / 2)) * 4;
  return {image->rgba[at], image->rgba[at + 1], image->rgba[at + 2]};
}

TEST(EffectCli, TheEffectIsSavedAndDrawnWhereverThePageIsRendered) {
  const std::string input = writeDocument("effect_in.json", 1);
  const std::string saved = path("effect_saved.json"), page = path("effect_page.png"), exported = path("export.png");
  ASSERT_EQ(run("effect " + input + " --color gray --save " + saved + " -o " + page).status, 0);
  ASSERT_EQ(run(saved + " -o " + exported + " --resolution 96").status, 0);
  for (const std::string& image : {page, exported}) {
    const std::vector<int> rgb = centre(image);
    ASSERT_EQ(rgb.size(), 3u) << image;
    EXPECT_TRUE(rgb[0] == rgb[1] && rgb[1] == rgb[2] && rgb[0] < 255) << image << ": the red square drawn gray";
  }
  const std::unique_ptr<Document> doc = io::loadDocument(saved);
  const Art* red = doc->layers()[0]->group()->firstChild();
  ASSERT_TRUE(red && red->kind() == ArtKind::Path && red->artStyle());
  ASSERT_EQ(red->artStyle()->effects.size(), 1u);
  EXPECT_EQ(red->artStyle()->effects[0].name, kRasterizeEffectName);
  EXPECT_EQ(red->artStyle()->effects[0].parameters->getInteger("colr"), kRasterTypeGrayscaleTransparent);
}

TEST(EffectCli, ConvertModeConvertsEffectParametersAndColours) {
  const std::string input = writeDocument("convert_in.json", 1, dictionary({kRasterTypeRgb, 72, false, false, 0.0}));
  const std::string output = path("convert_out.json");
  ASSERT_EQ(run("convert-mode " + input + " --to cmyk --save " + output).status, 0);
  const std::unique_ptr<Document> doc = io::loadDocument(output);
  EXPECT_EQ(doc->colorMode(), ColorMode::Cmyk);
  const Art* red = doc->layers()[0]->group()->firstChild();
  EXPECT_EQ(red->artStyle()->effects[0].parameters->getInteger("colr"), kRasterTypeCmyk);
  EXPECT_EQ(red->pathStyle().fill, Paint::cmyk(0, 1, 1, 0));
}

TEST(EffectCli, ARecordedCommandReplaysOnAnotherDocumentAsTheCommandRunsThere) {
  const std::string first = writeDocument("record_a.json", 2), second = writeDocument("record_b.json", 4);
  const std::string actions = path("actions.json"), played = path("played.json"), direct = path("direct.json");
  const std::string flags = " --color gray --resolution 150 --padding 2pt --antialias none";
  ASSERT_EQ(run("command " + first + flags + " --record-actions " + actions + " --save " + path("recorded.json")).status, 0);
  ASSERT_EQ(run("play " + actions + " " + second + " --save " + played).status, 0);
  ASSERT_EQ(run("command " + second + flags + " --save " + direct).status, 0);
  const std::unique_ptr<Document> replayed = io::loadDocument(played), ran = io::loadDocument(direct);
  size_t rasters = 0;
  replayed->forEachArt([&rasters](Art* art) { rasters += art->kind() == ArtKind::Raster; });
  EXPECT_EQ(rasters, 1u);
  std::string difference;
  EXPECT_TRUE(equivalent(*replayed, *ran, &difference)) << difference;
}

TEST(EffectCli, FailuresWriteNothing) {
  const std::string input = writeDocument("fail_in.json", 1);
  const std::string unknownEvent = path("unknown_event.json");
  std::ofstream(unknownEvent) << R"({"format": "rasterize-actions", "version": 1, "actions": [{"event": "nobody"}]})";
  const std::string out = path("fail_out.json"), actions = path("fail_actions.json");
  struct Case {
    const char* name;
    std::string arguments;
    int status;
  } const cases[] = {
      {"a selection that names nothing", "command " + input + " --select nothing --record-actions " + actions + " --save " + out, 1},
      {"the effect's dialog cancelled", "effect " + input + " --cancel-dialog --record-actions " + actions + " --save " + out, 130},
      {"an event no plug-in registered", "play " + unknownEvent + " " + input + " --save " + out, 1},
      {"an actions file that is not there", "play " + path("missing.json") + " " + input + " --save " + out, 1},
  };
  for (const Case& c : cases) {
    const ToolRun result = run(c.arguments);
    EXPECT_EQ(result.status, c.status) << c.name << ": " << result.err;
    EXPECT_FALSE(exists(out)) << c.name;
    EXPECT_FALSE(exists(actions)) << c.name;
  }
}

}  // namespace
}  // namespace e2e_effect
