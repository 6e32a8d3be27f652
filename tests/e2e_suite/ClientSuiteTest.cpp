// The sample client plug-in drives "DW Rasterize Suite" through the reference host: the suite it
// finds, what the seven functions give it, and the table it keeps across an unload of Rasterize.
#include <gtest/gtest.h>

#include <cstring>
#include <memory>
#include <string>
#include <vector>

#include "SuiteHost.h"
#include "host/suites/rasterize_suite.h"
#include "refhost/loader/HostErrors.h"
#include "shell/ErrorCodes.h"
#include "shell/PluginGlobals.h"

namespace {

using namespace refhost;
using e2e::addRectangle;
using e2e::SuiteHost;

const std::vector<std::string> kSlots = {"GetArtBounds", "RasterizeArt",       "CreateClippingMask",
                                         "RasterizeArtWithPadding", "RasterizeDocument", "ResampleRasterArt",
                                         "CanPreserveSpotColors"};

// One layer that counts, holding art from (0, 100) to (50, 0); one hidden and one not printed.
std::unique_ptr<Document> layerExample() {
  auto document = std::make_unique<Document>();
  Layer* shown = document->newLayer("Included");
  addRectangle(*document, shown, 0, 100, 50, 0, Paint::rgb(1, 0, 0));
  Layer* hidden = document->newLayer("Hidden");
  hidden->setShown(false);
  addRectangle(*document, hidden, 100, 300, 400, 200, Paint::rgb(0, 0, 1));
  Layer* unprinted = document->newLayer("Not printed");
  unprinted->setPrintable(false);
  addRectangle(*document, unprinted, -200, 50, -100, -300, Paint::rgb(0, 1, 0));
  return document;
}

std::unique_ptr<Document> hiddenOnly() {
  auto document = std::make_unique<Document>();
  Layer* hidden = document->newLayer("Hidden");
  hidden->setShown(false);
  addRectangle(*document, hidden, 0, 10, 10, 0, Paint::rgb(0, 0, 1));
  return document;
}

// 40000 points at the client's 72 ppi: wider than any raster may be.
std::unique_ptr<Document> tooWide() {
  auto document = std::make_unique<Document>();
  addRectangle(*document, document->newLayer("Wide"), 0, 10, 40000, 0, Paint::rgb(0, 0, 1));
  return document;
}

// Slanted edges, so that many pixels are partly covered.
std::unique_ptr<Document> slantedShapes() {
  auto document = std::make_unique<Document>();
  Layer* layer = document->newLayer("Shapes");
  Art* triangle = document->newArt(ArtKind::Path, PaintOrder::InsideOnTop, layer->group());
  triangle->path()->segments = {PathSegment::at(0.5, 0.25), PathSegment::at(37.3, 80.1), PathSegment::at(61.7, 12.4)};
  triangle->path()->closed = true;
  triangle->pathStyle().fillPaint = true;
  triangle->pathStyle().fill = Paint::rgb(0.2, 0.4, 0.9);
  addRectangle(*document, layer, 20.25, 50.5, 70.75, 30.125, Paint::rgb(1, 0.5, 0));
  return document;
}

std::unique_ptr<Document> spotDocument(int spots) {
  auto document = std::make_unique<Document>();
  document->setColorMode(ColorMode::Rgb);
  Layer* layer = document->newLayer("Spots");
  for (int i = 0; i < spots; ++i) {
    CustomColor color;
    color.name = "Spot " + std::to_string(i + 1);
    color.cmyk[i % 4] = 1.0;
    const CustomColorId id = document->newCustomColor(color);
    addRectangle(*document, layer, 10.0 * i, 10, 10.0 * i + 8, 0, Paint::spotColor(id));
  }
  return document;
}

const RasterData& rasterOf(SuiteHost& suiteHost, const std::string& function) {
  const Art* art = suiteHost.art(suiteHost.line(function).hexAfter("raster"));
  if (!art || !art->raster()) throw std::runtime_error(function + " named no raster art");
  return *art->raster();
}

TEST(ClientSuite, TheSuiteIsFoundAtVersion10NotAtTheAnnouncedVersion5) {
  SuiteHost suiteHost;
  const Plugin& rasterize = suiteHost.rasterize();
  ASSERT_EQ(rasterize.properties().exports.size(), 1u);
  EXPECT_EQ(rasterize.properties().exports[0].name, kDWRasterizeSuite);
  EXPECT_EQ(rasterize.properties().exports[0].version, 5);

  const RegisteredSuite* added = suiteHost.host().suites().find(kDWRasterizeSuite, 10);
  ASSERT_NE(added, nullptr);
  EXPECT_EQ(added->owner, &rasterize);
  EXPECT_EQ(suiteHost.host().suites().find(kDWRasterizeSuite, 5), nullptr);
  EXPECT_EQ(suiteHost.client().heldSuites().count({kDWRasterizeSuite, 10}), 1u);

  suiteHost.open(layerExample());
  ASSERT_EQ(suiteHost.runClient(), 0);
  const auto& globals = *static_cast<const dw::PluginGlobals*>(rasterize.globals());
  EXPECT_EQ(suiteHost.line("DW Rasterize Suite").hexAfter("table"),
            reinterpret_cast<uintptr_t>(&globals.rasterizeSuite));
}

TEST(ClientSuite, RasterizeArtEqualsRasterizeArtWithPaddingZero) {
  SuiteHost suiteHost;
  suiteHost.open(slantedShapes());
  ASSERT_EQ(suiteHost.runClient(), 0);
  const RasterData& plain = rasterOf(suiteHost, "RasterizeArt");
  const RasterData& padded = rasterOf(suiteHost, "RasterizeArtWithPadding");
  EXPECT_NE(&plain, &padded);
  EXPECT_EQ(plain.record, padded.record);
  EXPECT_EQ(plain.matrix, padded.matrix);
  EXPECT_TRUE(plain.samePixels(padded));

  // Partly covered pixels: the two rasters agree on more than a flat fill.
  int partial = 0;
  for (int32_t y = 0; y < plain.height(); ++y)
    for (int32_t x = 0; x < plain.width(); ++x) {
      const uint8_t alpha = plain.pixels()[size_t(y) * size_t(plain.record.byteWidth) + size_t(x) * 4];
      partial += alpha > 0 && alpha < 255;
    }
  EXPECT_GT(partial, 50);
}

TEST(ClientSuite, TheDocumentRasterHoldsOnlyTheShownPrintableLayer) {
  SuiteHost suiteHost;
  suiteHost.open(layerExample());
  ASSERT_EQ(suiteHost.runClient(), 0);
  ASSERT_EQ(suiteHost.line("RasterizeDocument").code(), 0) << suiteHost.line("RasterizeDocument").text;
  const RasterData& page = rasterOf(suiteHost, "RasterizeDocument");
  ASSERT_EQ(page.width(), 50);
  ASSERT_EQ(page.height(), 100);
  const Rect placed = page.documentBounds();
  EXPECT_DOUBLE_EQ(placed.left, 0);
  EXPECT_DOUBLE_EQ(placed.top, 100);
  EXPECT_DOUBLE_EQ(placed.right, 50);
  EXPECT_DOUBLE_EQ(placed.bottom, 0);
  // Every pixel is the included layer's opaque red (alpha first).
  int wrong = 0;
  for (int32_t y = 0; y < 100; ++y)
    for (int32_t x = 0; x < 50; ++x) {
      const uint8_t* p = page.pixels() + size_t(y) * size_t(page.record.byteWidth) + size_t(x) * 4;
      wrong += !(p[0] == 255 && p[1] == 255 && p[2] == 0 && p[3] == 0);
    }
  EXPECT_EQ(wrong, 0);
}

TEST(ClientSuite, TheCallersOptionsAreTheSameAfterRasterizeDocument) {
  struct Case {
    const char* name;
    std::unique_ptr<Document> (*document)();
    DWErr code;
  };
  const Case cases[] = {
      {"a shown, printable layer", layerExample, 0},
      {"no layer that counts", hiddenOnly, dw::BadParameterError},
      {"the engine refusing the size", tooWide, dw::TooWideError},
  };
  for (const Case& c : cases) {
    SuiteHost suiteHost;
    suiteHost.open(c.document());
    ASSERT_EQ(suiteHost.runClient(), 0) << c.name;
    const e2e::ReportLine line = suiteHost.line("RasterizeDocument");
    EXPECT_EQ(line.code(), c.code) << c.name << ": " << line.text;
    const uint64_t before = line.hexAfter("options");
    EXPECT_NE(before, 0u) << c.name;
    EXPECT_EQ(line.hexAfter("before,"), before) << c.name << ": " << line.text;
  }
}

TEST(ClientSuite, SpotColoursFitOneRasterUpTo27) {
  const struct {
    int spots;
    int flag;
  } cases[] = {{0, 0}, {1, 1}, {27, 1}, {28, 0}};
  for (const auto& c : cases) {
    SuiteHost suiteHost;
    suiteHost.host().controls().questionAnswer = false;
    suiteHost.open(spotDocument(c.spots));
    ASSERT_EQ(suiteHost.runClient(), 0) << c.spots << " spot colours";
    const e2e::ReportLine line = suiteHost.line("CanPreserveSpotColors");
    EXPECT_EQ(line.code(), 0) << c.spots << " spot colours: " << line.text;
    EXPECT_NE(line.text.find("flag " + std::to_string(c.flag)), std::string::npos)
        << c.spots << " spot colours: " << line.text;
  }
}

// Rasterize unloaded: the client's table has null entries and it says so. Reloaded: the same table,
// written again, serves every function; also after the client itself was unloaded and reloaded.
TEST(ClientSuite, TheKeptTablePointerWorksAfterUnloadAndReload) {
  SuiteHost suiteHost;
  Host& host = suiteHost.host();
  suiteHost.open(slantedShapes());
  ASSERT_EQ(suiteHost.runClient(), 0);
  const uint64_t table = suiteHost.line("DW Rasterize Suite").hexAfter("table");

  ASSERT_EQ(host.unloadPlugin(suiteHost.rasterize()), 0);
  EXPECT_EQ(suiteHost.runClient(), dw::SuiteMissingError);
  EXPECT_NE(suiteHost.line("DW Rasterize Suite").text.find("not available"), std::string::npos);
  ASSERT_FALSE(host.ui().alerts().empty());
  EXPECT_EQ(host.ui().alerts().back().kind, Alert::Kind::Error);

  ASSERT_EQ(host.reloadPlugin(suiteHost.rasterize()), 0);
  ASSERT_EQ(host.unloadPlugin(suiteHost.client()), 0);
  ASSERT_EQ(host.reloadPlugin(suiteHost.client()), 0);
  ASSERT_EQ(suiteHost.runClient(), 0);
  EXPECT_EQ(suiteHost.line("DW Rasterize Suite").hexAfter("table"), table);
  for (const std::string& slot : kSlots)
    EXPECT_EQ(suiteHost.line(slot).code(), 0) << slot << ": " << suiteHost.line(slot).text;
  EXPECT_EQ(suiteHost.client().heldSuites().count({kDWRasterizeSuite, 10}), 1u);
}

}  // namespace
