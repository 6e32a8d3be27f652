#pragma once
// Rendering a document's page with the plug-in, as the `export` verb does: the engine of the
// exported suite, called with no art set, draws every layer into a raster of the page.
#include <cstdint>

#include "host/rasterize_settings.h"
#include "host/types.h"
#include "refhost/document/Geometry.h"

namespace refhost {
class Art;
class Document;
class Host;

namespace cli {

// The active artboard (for SVG, the viewport). Throws ToolError when the document has none.
Rect pageBounds(const Document& document);

// The resolution at which `extent` points plus the padding on both sides become exactly `pixels`
// pixels by the engine's rule (the padded extent times resolution / 72, rounded up).
double resolutionForPixels(double extent, double padding, int32_t pixels);

// Pixels the engine makes of `extent` points with the padding at `resolution`, without grid snapping.
int64_t pixelsAt(double extent, double padding, double resolution);

// The resolution moved by a few units in the last place when a side's pixel size is a whole
// number up to rounding error (30 pt at 300 ppi is 125.00000000000001 pixels, which the engine
// rounds up to 126), so that the page gets the pixels other SVG tools give it. A page whose sides
// are both fractional keeps the resolution: its size is rounded up and the art is not stretched.
// Left alone near 72 ppi unless `options` has NoPixelSnap, since the engine then snaps the bounds
// to whole points.
double settleResolution(const Rect& page, double padding, double resolution, uint32_t options);

// Prepares the open document for a page render: hidden layers are not drawn, and a new hidden,
// unlocked layer becomes current so that the raster the engine creates there is not drawn into
// itself while it is being filled.
void preparePage(Document& document);

// Calls "DW Rasterize Suite" RasterizeArtWithPadding with no art set over `bounds`. Returns the
// plug-in's code; on success `raster` is the new raster art.
DWErr rasterizePage(Host& host, RasterizeSettings settings, const Rect& bounds, Art** raster);

}  // namespace cli
}  // namespace refhost
