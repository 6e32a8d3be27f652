#include "SvgTestSupport.h"
#include "TestDocuments.h"

#include "refhost/document/Equivalence.h"
#include "refhost/io/IoError.h"
#include "refhost/io/NativeFormat.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <sys/stat.h>
#include <unistd.h>

namespace refhost {
namespace {

std::string tempFile(const char* name) {
  return ::testing::TempDir() + "/" + name + "-" + std::to_string(::getpid()) + ".json";
}

// Everything the rich test document lacks: gradients, placed images, plug-in groups, graphs,
// every paint kind, multi-channel rasters.
void addEverythingElse(Document& doc) {
  Art* top = doc.findLayer("Top")->group();
  auto gradient = std::make_shared<Gradient>();
  gradient->kind = Gradient::Kind::Radial;
  gradient->spread = Gradient::Spread::Reflect;
  gradient->units = Gradient::Units::BoundingBox;
  gradient->center = {0.4, 0.6};
  gradient->focus = {0.1, 0.2};
  gradient->radius = 0.7;
  gradient->focusRadius = 0.05;
  gradient->transform = Matrix{1, 0.5, -0.25, 2, 3, 4};
  gradient->stops = {{0, Paint::gray(0.25), 1}, {0.3, Paint::cmyk(0.1, 0.2, 0.3, 0.4), 0.5}, {1, Paint::spotColor(1, 0.75), 0.9}};
  Art* path = doc.newArt(ArtKind::Path, PaintOrder::InsideOnBottom, top);
  path->path()->segments = {PathSegment{{0.1, 0.2}, {-1.0 / 3, 0.2}, {1e-17, 3.5e10}, false}, PathSegment::at(5, 5)};
  PathStyle& s = path->pathStyle();
  s.fillPaint = true;
  s.fill = Paint::fromGradient(gradient);
  s.strokePaint = true;
  s.stroke = Paint::rgb(0.1, 0.2, 0.3);
  s.strokeWidth = 2.5;
  s.lineJoin = LineJoin::Bevel;
  s.lineCap = LineCap::Round;
  s.miterLimit = 7;
  s.dashArray = {1, 2.5};
  s.dashOffset = 0.5;
  s.fillRule = FillRule::EvenOdd;
  s.opacity = 0.9;
  s.fillOpacity = 0.8;
  s.strokeOpacity = 0.7;
  s.clipping = true;
  s.preUnion = true;

  Art* placed = doc.newArt(ArtKind::Placed, PaintOrder::InsideOnBottom, top);
  auto image = std::make_shared<Image>();
  image->width = 2;
  image->height = 1;
  image->rgba = {1, 2, 3, 4, 5, 6, 7, 8};
  placed->placed()->image = image;
  placed->placed()->fileReference = "/images/a.png";
  placed->placed()->bounds = Rect{0, 1, 2, 0};
  placed->placed()->matrix = Matrix::rotation(0.3);

  Art* graph = doc.newArt(ArtKind::Unknown, PaintOrder::InsideOnBottom, top);
  graph->setGraph(true);
  doc.newArt(ArtKind::Path, PaintOrder::InsideOnTop, graph);

  Art* plugin = doc.newArt(ArtKind::PluginGroup, PaintOrder::InsideOnBottom, top);
  plugin->pluginGroup()->pluginName = "Envelope";
  doc.newArt(ArtKind::Path, PaintOrder::InsideOnTop, plugin->pluginGroup()->editArt)->setName("edited");
  doc.newArt(ArtKind::Raster, PaintOrder::InsideOnTop, plugin->pluginGroup()->resultArt);

  Art* raster = doc.newArt(ArtKind::Raster, PaintOrder::InsideOnBottom, top);
  RasterRecord rec;
  rec.bounds = IntRect{0, 0, 1, 1};
  rec.byteWidth = 4;
  rec.colorSpace = 0x15;
  rec.bitsPerPixel = 24;
  raster->raster()->setRecord(rec);
  raster->raster()->channels = {{RasterChannel::Kind::Alpha, 0}, {RasterChannel::Kind::Black, 0}, {RasterChannel::Kind::Spot, 1}};
  raster->raster()->rasterFlag = true;

  Art* compound = doc.newArt(ArtKind::CompoundPath, PaintOrder::InsideOnBottom, top);
  doc.newArt(ArtKind::Path, PaintOrder::InsideOnTop, compound);
  Art* clip = doc.newArt(ArtKind::Group, PaintOrder::InsideOnBottom, top);
  clip->setClipped(true);

  auto shared = std::make_shared<ArtStyle>();
  shared->name = "shared";
  shared->hasPaint = true;
  shared->paint.fillPaint = true;
  shared->paint.fill = Paint::gray(0.5);
  shared->owner = raster;
  raster->setArtStyle(shared);
  compound->setArtStyle(shared);
  CustomColor process;
  process.name = "Process";
  process.kind = CustomColor::Kind::Process;
  process.hasRgb = true;
  process.rgb[2] = 1;
  doc.newCustomColor(process);
  auto nested = Dictionary::create();
  nested->setString("deep", "value \"quoted\" \xc3\xa9");
  doc.dictionary()->getDictionary("DW Auto Rasterize")->setDictionary("nested", nested);
}

TEST(NativeFormat, RoundTripKeepsTheWholeModel) {
  auto doc = testing::buildRichDocument();
  addEverythingElse(*doc);
  const std::string path = tempFile("roundtrip");
  io::saveDocument(*doc, path);
  auto loaded = io::loadDocument(path);
  std::string why;
  EXPECT_TRUE(equivalent(*doc, *loaded, &why)) << why;
  // Load, save, load: the same model, and the same text.
  const std::string again = io::documentToJson(*loaded);
  EXPECT_EQ(again, io::documentToJson(*doc));
  auto third = io::documentFromJson(again, "again.json");
  EXPECT_TRUE(equivalent(*loaded, *third, &why)) << why;
  // A style shared by two objects is still one style.
  const Art* top = loaded->findLayer("Top")->group();
  const Art* sharedA = nullptr;
  const Art* sharedB = nullptr;
  for (const Art* a = top->firstChild(); a; a = a->nextSibling()) {
    if (a->artStyle() && a->artStyle()->name == "shared") (sharedA ? sharedB : sharedA) = a;
  }
  ASSERT_NE(sharedB, nullptr);
  EXPECT_EQ(sharedA->artStyle(), sharedB->artStyle());
  std::remove(path.c_str());
}

TEST(NativeFormat, ImportedSvgRoundTrips) {
  auto r = testing::importSvg(testing::svgDoc(
      "<defs><symbol id='s'><circle r='3'/></symbol><linearGradient id='g'><stop offset='0'/><stop offset='1' stop-color='red'/>"
      "</linearGradient><clipPath id='c'><rect width='5' height='5'/></clipPath></defs>"
      "<g id='L'><rect width='10' height='10' fill='url(#g)' clip-path='url(#c)' stroke-dasharray='1,2'/>"
      "<use href='#s' x='4'/><text y='9'>hi</text></g>"));
  auto loaded = io::documentFromJson(io::documentToJson(*r.document), "x.json");
  std::string why;
  EXPECT_TRUE(equivalent(*r.document, *loaded, &why)) << why;
}

TEST(NativeFormat, SavingIsAtomic) {
  auto doc = testing::buildRichDocument();
  const std::string path = tempFile("atomic");
  {
    std::ofstream(path) << "previous content";
  }
  // Saving into a folder that does not exist fails before touching anything.
  EXPECT_THROW(io::saveDocument(*doc, "/nonexistent-folder/x.json"), io::IoError);
  struct stat st;
  EXPECT_NE(::stat("/nonexistent-folder/x.json", &st), 0);
  io::saveDocument(*doc, path);
  auto loaded = io::loadDocument(path);
  std::string why;
  EXPECT_TRUE(equivalent(*doc, *loaded, &why)) << why;
  // No temporary files stay behind.
  const std::string tmp = "atomic-" + std::to_string(::getpid()) + ".json.tmp";
  for (const auto& e : std::filesystem::directory_iterator(::testing::TempDir())) {
    EXPECT_EQ(e.path().filename().string().find(tmp), std::string::npos) << e.path();
  }
  std::remove(path.c_str());
}

TEST(NativeFormat, TheDocumentedExampleLoads) {
  std::ifstream in(std::string(RASTERIZE_DOCS_DIR) + "/document-format.md");
  ASSERT_TRUE(in);
  std::stringstream ss;
  ss << in.rdbuf();
  const std::string md = ss.str();
  const std::size_t start = md.find("```json\n");
  ASSERT_NE(start, std::string::npos);
  const std::size_t end = md.find("```", start + 8);
  auto doc = io::documentFromJson(md.substr(start + 8, end - start - 8), "document-format.md");
  ASSERT_EQ(doc->layerCount(), 1u);
  const Art* badge = doc->firstLayer()->group()->firstChild();
  EXPECT_EQ(badge->name(), "badge");
  EXPECT_EQ(badge->pathStyle().fill, Paint::spotColor(1, 0.0));
  EXPECT_EQ(doc->selectedArt(), (std::vector<Art*>{const_cast<Art*>(badge)}));
  EXPECT_EQ(doc->colorMode(), ColorMode::Cmyk);
}

TEST(NativeFormat, DocumentIsReadableJson) {
  auto doc = testing::buildRichDocument();
  const std::string text = io::documentToJson(*doc);
  for (const char* key : {"\"format\": \"refhost-document\"", "\"layers\"", "\"customColors\"", "\"artStyles\"",
                          "\"kind\": \"raster\"", "\"pixels\"", "\"symbols\"", "\"valuePair\""}) {
    EXPECT_NE(text.find(key), std::string::npos) << key;
  }
}

}  // namespace
}  // namespace refhost
