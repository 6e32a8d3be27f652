#include "TestDocuments.h"

namespace refhost::testing {

std::string childNames(const Art* container) {
  std::string out;
  for (const Art* c = container->firstChild(); c; c = c->nextSibling()) {
    if (!out.empty()) out += ",";
    out += c->name();
  }
  return out;
}

std::unique_ptr<Document> buildRichDocument() {
  auto doc = std::make_unique<Document>();
  doc->setColorMode(ColorMode::Cmyk);
  doc->setLevelNumber(14);
  doc->artboards().push_back(Artboard{"Page", Rect{0, 200, 300, 0}});
  doc->setActiveArtboard(0);
  CustomColor gold;
  gold.name = "Gold";
  gold.cmyk[1] = 0.2;
  gold.cmyk[2] = 0.8;
  const CustomColorId goldId = doc->newCustomColor(gold);
  auto settings = Dictionary::create();
  settings->setInteger("dpi.", 300);
  settings->setBoolean("spot", true);
  doc->dictionary()->setDictionary("DW Auto Rasterize", settings);
  doc->dictionary()->setString("title", "rich");

  Layer* top = doc->newLayer("Top");
  Layer* locked = doc->newLayer("Locked");
  locked->setEditable(false);
  doc->setCurrentLayer(top);

  Art* group = doc->newArt(ArtKind::Group, PaintOrder::AboveAll, nullptr);
  group->setName("group");
  Art* path = doc->newArt(ArtKind::Path, PaintOrder::InsideOnTop, group);
  path->setName("path");
  path->path()->segments = {PathSegment::at(0, 0), PathSegment::at(100, 0), PathSegment::at(100, 50)};
  path->path()->closed = true;
  path->pathStyle().fillPaint = true;
  path->pathStyle().fill = Paint::spotColor(goldId, 0.25);
  path->setUserFlags(0x10000, 0x10000);
  path->setValuePair(ValuePair{6.5, 3});
  Document::setSelected(path, true);

  Art* raster = doc->newArt(ArtKind::Raster, PaintOrder::Below, group);
  raster->setName("raster");
  RasterRecord rec;
  rec.bounds = IntRect{0, 0, 3, 2};
  rec.byteWidth = 12;
  rec.colorSpace = 0x11;
  rec.bitsPerPixel = 32;
  raster->raster()->setRecord(rec);
  raster->raster()->matrix = Matrix::translation(10, 20);
  for (int i = 0; i < 24; ++i) raster->raster()->mutablePixels()[i] = static_cast<std::uint8_t>(i * 7);

  auto style = std::make_shared<ArtStyle>();
  auto params = Dictionary::create();
  params->setInteger("colr", 4);
  params->setReal("padd", 36.0);
  style->effects.push_back(LiveEffect{"Corvel Rasterize", params, 1, 0});
  style->owner = group;
  group->setArtStyle(style);

  Art* text = doc->newArt(ArtKind::TextFrame, PaintOrder::BelowAll, nullptr);
  text->setName("text");
  text->text()->text = "Hello";
  text->text()->fontSize = 20;
  text->text()->matrix = Matrix::translation(5, 150);

  Symbol* star = doc->newSymbol("star");
  Art* starPath = doc->newArt(ArtKind::Path, PaintOrder::InsideOnTop, star->definition());
  starPath->path()->segments = {PathSegment::at(0, 0), PathSegment::at(10, 0), PathSegment::at(5, 8)};
  Art* instance = doc->newArt(ArtKind::SymbolInstance, PaintOrder::AboveAll, nullptr);
  instance->setName("instance");
  instance->symbolInstance()->symbol = star;
  instance->symbolInstance()->matrix = Matrix::translation(200, 100);

  doc->setCurrentLayer(locked);
  Art* mesh = doc->newArt(ArtKind::Mesh, PaintOrder::AboveAll, nullptr);
  mesh->setName("mesh");
  mesh->mesh()->rows = 2;
  mesh->mesh()->columns = 2;
  mesh->mesh()->vertices = {{0, 0}, {10, 0}, {0, 10}, {10, 10}};
  mesh->mesh()->patchColors = {Paint::rgb(1, 0, 0)};
  mesh->setAttributes(ArtAttr::Hidden, ArtAttr::Hidden);
  doc->setCurrentLayer(top);
  return doc;
}

}  // namespace refhost::testing
