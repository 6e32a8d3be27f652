#include "refhost/cli/ClippedRaster.h"

#include <vector>

#include "refhost/cli/Tool.h"
#include "refhost/document/Art.h"
#include "refhost/render/ArtRenderer.h"
#include "refhost/render/ColorSpace.h"
#include "refhost/render/DrawIntoPort.h"
#include "refhost/render/Port.h"

namespace refhost {
namespace cli {

namespace {

constexpr std::int16_t kAlphaFirst = 0x10;
constexpr std::uint16_t kSpotFillFlag = 0x8;

// The raster's record and channels with alpha first and 8 bits per channel, zeroed.
RasterData withAlpha(const RasterData& source) {
  RasterData out;
  out.matrix = source.matrix;
  out.channels = source.channels;
  if (!out.channels.empty() && out.channels.front().kind != RasterChannel::Kind::Alpha)
    out.channels.insert(out.channels.begin(), RasterChannel{RasterChannel::Kind::Alpha, 0});
  RasterRecord record = source.record;
  record.flags &= kSpotFillFlag;  // a mask bitmap's "white is clear" gives way to real alpha
  record.colorSpace = std::int16_t(record.colorSpace | kAlphaFirst);
  const int channels = render::ColorSpace::fromRaster(record, out.channels, 0)->channelCount();
  record.bitsPerPixel = std::int16_t(8 * channels);
  record.byteWidth = (source.width() * channels + 3) & ~3;
  out.setRecord(record);
  return out;
}

}  // namespace

const Art* clipGroupOf(const Art& raster) {
  for (const Art* a = raster.parent(); a && !a->isLayerGroup(); a = a->parent())
    if (a->kind() == ArtKind::Group && a->isClipped()) return a;
  return nullptr;
}

RasterData clippedRaster(const Art& raster) {
  const Art* group = clipGroupOf(raster);
  if (!group || !raster.raster()) throw ToolError("the raster is not inside a clipping mask");
  const RasterData& source = *raster.raster();
  RasterData out = withAlpha(source);
  const CustomColorId spot = (source.record.flags & kSpotFillFlag) && raster.pathStyle().fill.type == Paint::Type::Spot
                                 ? raster.pathStyle().fill.spot
                                 : 0;
  const render::ColorSpace::Ptr space = render::ColorSpace::fromRaster(out.record, out.channels, spot);

  std::uint8_t* pixels = out.mutablePixels();
  render::Surface target;
  target.data = pixels;
  target.stride = out.record.byteWidth;
  target.area = IntRect{0, 0, out.width(), out.height()};
  target.bytesPerPixel = space->channelCount();
  target.alpha = true;
  std::vector<std::uint8_t> empty(size_t(space->channelCount()));
  render::emptyPixel(*space, empty.data());
  for (std::int32_t y = 0; y < out.height(); ++y)
    for (std::int32_t x = 0; x < out.width(); ++x)
      std::copy(empty.begin(), empty.end(), target.row(y) + size_t(x) * empty.size());

  // Pixel (x, y) lies at raster space (x, -y), which the raster's matrix maps into the document.
  render::DrawRequest request;
  request.art = group;
  request.docToDevice = Matrix::scaling(1, -1) * source.matrix.inverted();
  request.target = target;
  request.space = space.get();
  request.limit = target.area;
  request.antialias = true;
  render::sharedRenderer().draw(request);
  return out;
}

}  // namespace cli
}  // namespace refhost
