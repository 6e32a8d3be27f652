// `rasterize resample`: the tool calls slot 5 of the suite on an image or a document's raster and
// writes the new raster (or the document) out.
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <fstream>
#include <memory>
#include <sstream>
#include <string>

#include "SuiteHost.h"
#include "refhost/io/NativeFormat.h"
#include "refhost/io/RasterImport.h"
#include "refhost/io/export/RasterExport.h"

namespace {

using namespace refhost;

struct ToolRun {
  int status = -1;
  std::string errors;
};

std::string readText(const std::string& path) {
  std::ifstream in(path);
  std::stringstream text;
  text << in.rdbuf();
  return text.str();
}

bool exists(const std::string& path) { return access(path.c_str(), F_OK) == 0; }

class ResampleVerb : public ::testing::Test {
 protected:
  void SetUp() override {
    const auto* info = ::testing::UnitTest::GetInstance()->current_test_info();
    folder_ = ::testing::TempDir() + "resample_" + info->name();
    std::system(("rm -rf '" + folder_ + "' && mkdir -p '" + folder_ + "'").c_str());
  }
  std::string file(const std::string& name) const { return folder_ + "/" + name; }

  ToolRun rasterize(const std::string& arguments) const {
    const std::string errors = file("stderr.txt");
    const std::string command = "'" + e2e::kToolPath + "' --plugin '" + e2e::kPluginPath + "' --quiet " + arguments +
                                " >/dev/null 2>'" + errors + "'";
    const int status = std::system(command.c_str());
    return ToolRun{WIFEXITED(status) ? WEXITSTATUS(status) : -1, readText(errors)};
  }

 private:
  std::string folder_;
};

// An RGB raster whose every pixel differs from its neighbours, `ppi` pixels per inch, placed by
// `placement` after the pixel scale.
Art* addPatternRaster(Document& document, const std::string& name, int32_t width, int32_t height, double ppi,
                      const Matrix& placement = Matrix::identity()) {
  Art* art = document.newArt(ArtKind::Raster, PaintOrder::AboveAll, nullptr);
  art->setName(name);
  RasterData& raster = *art->raster();
  RasterRecord record;
  record.bounds = IntRect{0, 0, width, height};
  record.byteWidth = (width * 3 + 3) & ~3;
  record.colorSpace = 1;
  record.bitsPerPixel = 24;
  raster.setRecord(record);
  uint8_t* pixels = raster.mutablePixels();
  for (int32_t y = 0; y < height; ++y)
    for (int32_t x = 0; x < width; ++x) {
      uint8_t* p = pixels + size_t(y) * size_t(record.byteWidth) + size_t(x) * 3;
      p[0] = uint8_t(x * 7 + y * 3);
      p[1] = uint8_t(x * y);
      p[2] = uint8_t(255 - x * 5);
    }
  raster.matrix = placement * Matrix::scaling(72.0 / ppi, 72.0 / ppi);
  return art;
}

std::string patternPng(const std::string& path, double ppi) {
  Document document;
  document.setCurrentLayer(document.newLayer("Image"));
  Art* art = addPatternRaster(document, "pattern", 30, 20, ppi);
  io::exportPng(io::rasterSourceOf(*art), path);
  return path;
}

const RasterData& onlyRaster(const Document& document) {
  const RasterData* found = nullptr;
  document.forEachArt([&](Art* art) {
    if (art->raster()) found = art->raster();
  });
  if (!found) throw std::runtime_error("no raster");
  return *found;
}

TEST_F(ResampleVerb, AResolutionAboveTheSourcesIsOneErrorLineAndNoFile) {
  const std::string input = patternPng(file("in.png"), 150);
  const ToolRun run = rasterize("resample '" + input + "' --resolution 151 -o '" + file("out.png") + "'");
  EXPECT_EQ(run.status, 1);
  EXPECT_EQ(run.errors.rfind("error: ", 0), 0u) << run.errors;
  EXPECT_EQ(std::count(run.errors.begin(), run.errors.end(), '\n'), 1) << run.errors;
  EXPECT_NE(run.errors.find("151"), std::string::npos) << run.errors;
  EXPECT_FALSE(exists(file("out.png")));
}

TEST_F(ResampleVerb, TheSourcesOwnResolutionCopiesThePixels) {
  const std::string input = patternPng(file("in.png"), 150);
  const auto source = io::importRasterImage(input);
  for (const char* method : {"nearest", "bicubic"}) {
    const std::string output = file(std::string(method) + ".png");
    const ToolRun run = rasterize("resample '" + input + "' --resolution 150 --method " + method + " -o '" + output + "'");
    ASSERT_EQ(run.status, 0) << method << ": " << run.errors;
    const auto copy = io::importRasterImage(output);
    EXPECT_EQ(onlyRaster(*copy).record, onlyRaster(*source).record) << method;
    EXPECT_TRUE(onlyRaster(*copy).samePixels(onlyRaster(*source))) << method;
    // PNG keeps whole pixels per metre: 150 ppi is stored as 5906 per metre, 150.0124 ppi.
    EXPECT_NEAR(io::rasterResolution(onlyRaster(*copy)), 150, 0.02) << method;
  }
}

// The new size is the source's length in points at the new resolution, rounded half up.
TEST_F(ResampleVerb, TheNewSizeIsTheSourcesLengthAtTheNewResolution) {
  struct Case {
    const char* name;
    int32_t width, height;
    double ppi;
    const char* resolution;
    int32_t newWidth, newHeight;
  };
  const Case cases[] = {
      {"1000 pixels at 300 ppi to 100", 1000, 6, 300, "100", 333, 2},
      {"a width of exactly 332.5", 665, 9, 72, "36", 333, 5},
  };
  for (const Case& c : cases) {
    {
      Document document;
      document.setCurrentLayer(document.newLayer("Photos"));
      addPatternRaster(document, "photo", c.width, c.height, c.ppi);
      io::saveDocument(document, file("in.json"));
    }
    const ToolRun run = rasterize("resample '" + file("in.json") + "' --select photo --resolution " + c.resolution +
                                  " --method nearest -o '" + file("out.json") + "'");
    ASSERT_EQ(run.status, 0) << c.name << ": " << run.errors;
    const auto result = io::loadDocument(file("out.json"));
    const RasterData& made = onlyRaster(*result);
    EXPECT_EQ(made.width(), c.newWidth) << c.name;
    EXPECT_EQ(made.height(), c.newHeight) << c.name;
  }
}

TEST_F(ResampleVerb, ARotatedRasterInADocumentKeepsItsRotation) {
  const Matrix placement = Matrix::translation(100, 200) * Matrix::rotation(0.5);
  {
    Document document;
    document.setCurrentLayer(document.newLayer("Photos"));
    addPatternRaster(document, "other", 10, 10, 72);
    addPatternRaster(document, "photo", 40, 30, 144, placement);
    io::saveDocument(document, file("in.json"));
  }
  const ToolRun run = rasterize("resample '" + file("in.json") + "' --select photo --resolution 72 --method average -o '" +
                            file("out.json") + "'");
  ASSERT_EQ(run.status, 0) << run.errors;

  const auto result = io::loadDocument(file("out.json"));
  const RasterData* made = nullptr;
  int rasters = 0;
  result->forEachArt([&](Art* art) {
    rasters += art->raster() != nullptr;
    if (art->raster() && art->name() != "other") made = art->raster();
  });
  EXPECT_EQ(rasters, 2) << "the new raster replaces the source";
  ASSERT_NE(made, nullptr);
  EXPECT_EQ(made->width(), 20);
  EXPECT_EQ(made->height(), 15);
  // Pixels of one point, turned and placed as the source was.
  const double expected[6] = {placement.a, placement.b, placement.c, placement.d, placement.tx, placement.ty};
  const double actual[6] = {made->matrix.a, made->matrix.b, made->matrix.c, made->matrix.d, made->matrix.tx,
                            made->matrix.ty};
  for (int i = 0; i < 6; ++i) EXPECT_NEAR(actual[i], expected[i], 1e-9) << "matrix entry " << i;
}

}  // namespace
