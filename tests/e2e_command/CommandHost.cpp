#include "tests/e2e_command/CommandHost.h"

#include <memory>
#include <stdexcept>

#include "refhost/io/NativeFormat.h"

namespace e2e_command {

namespace {

const MenuItemRecord& menuItem(Host& host, const std::string& name) {
  for (const MenuItemRecord* item : host.registrations().menuItems())
    if (item->name == name) return *item;
  throw std::runtime_error("the plug-in installed no menu item " + name);
}

PaintOrder placement(Art* parent) { return parent ? PaintOrder::InsideOnTop : PaintOrder::AboveAll; }

}  // namespace

CommandHost::CommandHost(const std::string& withheld) {
  if (!withheld.empty()) host.controls().withholdSuite(withheld);
  host.setDocument(std::make_unique<Document>());
  doc = host.document();
  doc->newLayer("Layer 1");
  plugin = &host.launchPlugin(kPluginPath);
  host.notifyApplicationStarted();
}

CommandHost::~CommandHost() { host.shutdownPlugin(*plugin); }

Art* CommandHost::rect(double left, double bottom, double right, double top, Art* parent) {
  Art* path = doc->newArt(ArtKind::Path, placement(parent), parent);
  path->path()->segments = {PathSegment::at(left, bottom), PathSegment::at(right, bottom), PathSegment::at(right, top),
                            PathSegment::at(left, top)};
  path->path()->closed = true;
  path->pathStyle().fillPaint = true;
  path->pathStyle().fill = Paint::gray(1.0);
  return path;
}

Art* CommandHost::group(Art* parent) { return doc->newArt(ArtKind::Group, placement(parent), parent); }

Art* CommandHost::text(const std::string& words, double x, double y) {
  Art* frame = doc->newArt(ArtKind::TextFrame, PaintOrder::AboveAll, nullptr);
  frame->text()->text = words;
  frame->text()->fontSize = 12.0;
  frame->text()->matrix = Matrix::translation(x, y);
  frame->pathStyle().fillPaint = true;
  frame->pathStyle().fill = Paint::gray(1.0);
  return frame;
}

Art* CommandHost::raster(double left, double top) {
  Art* art = doc->newArt(ArtKind::Raster, PaintOrder::AboveAll, nullptr);
  RasterRecord record;
  record.bounds = IntRect{0, 0, 4, 4};
  record.byteWidth = 12;
  record.colorSpace = 1;
  record.bitsPerPixel = 24;
  art->raster()->setRecord(record);
  art->raster()->matrix = Matrix::translation(left, top);
  return art;
}

void CommandHost::select(const std::vector<Art*>& art) {
  doc->deselectAll();
  for (Art* a : art) Document::setSelected(a, true);
}

DWErr CommandHost::rasterize(const Edit& edit) {
  host.controls().dialogAnswers.push_back({0, edit});
  return host.chooseMenuItem(menuItem(host, "Rasterize 8 menu item"));
}

DWErr CommandHost::documentSettings(const Edit& edit, int32_t result, RasterizeSettings* shown) {
  host.ui().dialogResponder = [edit, result, shown](RasterizeSettings& record, int32_t) {
    if (shown) *shown = record;
    if (result == 0 && edit) edit(record);
    return result;
  };
  return host.chooseMenuItem(menuItem(host, "Live Rasterize Effect Setting"));
}

std::vector<std::string> CommandHost::alerts(Alert::Kind kind) {
  std::vector<std::string> texts;
  for (const Alert& alert : host.ui().alerts())
    if (alert.kind == kind) texts.push_back(alert.text);
  return texts;
}

std::vector<Art*> CommandHost::live(ArtKind kind) const {
  std::vector<Art*> found;
  doc->forEachArt([&](Art* art) {
    if (art->kind() == kind) found.push_back(art);
  });
  return found;
}

std::string CommandHost::content() const { return io::documentToJson(*doc); }

}  // namespace e2e_command
