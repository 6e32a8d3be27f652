#include "refhost/cli/PageRaster.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "host/suites/rasterize_suite.h"
#include "refhost/cli/Tool.h"
#include "refhost/document/Document.h"
#include "refhost/loader/Host.h"

namespace refhost {
namespace cli {

Rect pageBounds(const Document& document) {
  const int32_t active = document.activeArtboard();
  if (active < 0 || size_t(active) >= document.artboards().size())
    throw ToolError("the document has no artboard to render");
  const Rect page = document.artboards()[size_t(active)].bounds;
  if (page.isEmpty() || page.width() <= 0.0 || page.height() <= 0.0) throw ToolError("the artboard is empty");
  return page;
}

int64_t pixelsAt(double extent, double padding, double resolution) {
  // The engine's expression, term for term, so that both round the same way.
  const double size = std::ceil((extent + 2 * padding) * (resolution / 72.0));
  return size >= 0.0 && size < 1e18 ? int64_t(size) : std::numeric_limits<int64_t>::max();
}

double resolutionForPixels(double extent, double padding, int32_t pixels) {
  double resolution = double(pixels) * 72.0 / (extent + 2 * padding);
  // One step of the last bit either way settles the rounding up of the product.
  for (int i = 0; i < 64 && pixelsAt(extent, padding, resolution) > pixels; ++i)
    resolution = std::nextafter(resolution, 0.0);
  for (int i = 0; i < 64 && pixelsAt(extent, padding, resolution) < pixels; ++i)
    resolution = std::nextafter(resolution, std::numeric_limits<double>::infinity());
  return resolution;
}

double settleResolution(const Rect& page, double padding, double resolution, uint32_t options) {
  const bool snaps = !(options & kRasterizeNoPixelSnap) && std::fabs(resolution / 72.0 - 1.0) <= 0.01;
  if (snaps || !(resolution > 0.0) || !std::isfinite(resolution)) return resolution;
  // A side counts as whole when its exact pixel size is an integer up to rounding error.
  const auto measure = [&](double extent, double& pixels) {
    const double exact = (extent + 2 * padding) * (resolution / 72.0);
    const double nearest = std::round(exact);
    const bool whole = std::fabs(exact - nearest) <= 1e-9 * std::max(1.0, nearest);
    pixels = whole ? nearest : std::ceil(exact);
    return whole;
  };
  double width = 0.0, height = 0.0;
  const bool wholeWidth = measure(page.width(), width), wholeHeight = measure(page.height(), height);
  // A page of a fractional pixel size keeps its scale: the engine rounds the size up and the last
  // column or row is part page, part background, as other SVG tools draw it.
  if (!wholeWidth && !wholeHeight) return resolution;
  if (width < 1.0 || height < 1.0 || width > 32767.0 || height > 32767.0) return resolution;
  // A whole side fixes the resolution (the wider one when both are); the other must still come out
  // as intended.
  const bool byWidth = wholeWidth && (!wholeHeight || page.width() >= page.height());
  const double settled = resolutionForPixels(byWidth ? page.width() : page.height(), padding,
                                             int32_t(byWidth ? width : height));
  const bool fits = pixelsAt(page.width(), padding, settled) == int64_t(width) &&
                    pixelsAt(page.height(), padding, settled) == int64_t(height);
  return fits ? settled : resolution;
}

void preparePage(Document& document) {
  for (Layer* layer : document.layers())
    if (!layer->isShown()) layer->group()->setAttributes(ArtAttr::Hidden, ArtAttr::Hidden);
  Layer* target = document.newLayer("Rasterize export");
  target->group()->setAttributes(ArtAttr::Hidden, ArtAttr::Hidden);
  document.setCurrentLayer(target);
}

DWErr rasterizePage(Host& host, RasterizeSettings settings, const Rect& bounds, Art** raster) {
  const void* table = nullptr;
  if (const DWErr error = host.acquireSuite(kDWRasterizeSuite, kDWRasterizeSuiteVersion, &table))
    throw ToolError(std::string("the plug-in offers no \"") + kDWRasterizeSuite + "\": " + describeCode(error));
  const auto* suite = static_cast<const DWRasterizeSuite*>(table);
  const DWRealRect area{bounds.left, bounds.top, bounds.right, bounds.bottom};
  DWArtHandle made = nullptr;
  const DWErr result = suite->RasterizeArtWithPadding(nullptr, &settings, &area, int32_t(PaintOrder::AboveAll), nullptr,
                                                      &made, nullptr, settings.padding);
  host.releaseSuite(kDWRasterizeSuite, kDWRasterizeSuiteVersion);
  *raster = result == kDWNoErr && host.document() ? host.document()->liveArt(made) : nullptr;
  if (result == kDWNoErr && !*raster) throw ToolError("the plug-in reported success but made no raster art");
  return result;
}

}  // namespace cli
}  // namespace refhost
