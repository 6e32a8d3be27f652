#include "engine/ColorSpace.h"

#include "engine/RasterTypeChoice.h"
#include "engine/RasterTypes.h"
#include "shell/Error.h"
#include "shell/ErrorCodes.h"
#include "shell/HostSuites.h"

namespace dw {

namespace {

const DWColorSpaceSuite& spaces() {
  if (!gSuites.colorSpace) throw Error(SuiteMissingError);
  return *gSuites.colorSpace;
}

ColorSpace processSpace(int32_t family, bool alpha) {
  DWColorSpaceHandle handle = nullptr;
  check(spaces().NewProcessColorSpace(family, alpha ? 1 : 0, &handle));
  return ColorSpace(handle);
}

ColorSpace spotSpace(DWCustomColorHandle spot, bool alpha) {
  DWColorSpaceHandle handle = nullptr;
  check(spaces().NewSpotColorSpace(spot, alpha ? 1 : 0, &handle));
  return ColorSpace(handle);
}

class ColorSpaceList {
 public:
  ColorSpaceList() { check(spaces().NewColorSpaceList(&_list)); }
  ~ColorSpaceList() {
    if (_list && gSuites.colorSpace) gSuites.colorSpace->DisposeList(_list);
  }
  ColorSpaceList(const ColorSpaceList&) = delete;
  ColorSpaceList& operator=(const ColorSpaceList&) = delete;

  // The list keeps its own reference; ours goes when part does.
  void add(const ColorSpace& part) { check(spaces().AddToList(_list, part.get())); }
  DWColorSpaceList get() const { return _list; }

 private:
  DWColorSpaceList _list = nullptr;
};

ColorSpace processPlusSpotsSpace(const ColorUsage& usage, int32_t family, bool alpha) {
  if (processChannelCount(usage, family) + usage.spotCount > kMaxColorChannels ||
      usage.spotCount > kMaxSpotChannels)
    return ColorSpace();
  ColorSpaceList list;
  if (!needsFullProcess(usage, family)) {
    for (int32_t k = 0; k < 4; ++k) {
      if (!(usage.processMask & (1u << k))) continue;
      DWColorSpaceHandle handle = nullptr;
      check(spaces().NewProcessComponentColorSpace(k, &handle));
      list.add(ColorSpace(handle));
    }
  } else if (family == kDWCMYKFamily || family == kDWRGBFamily) {
    list.add(processSpace(family, false));
  }
  for (DWCustomColorHandle spot : usage.spotColors) list.add(spotSpace(spot, false));
  DWColorSpaceHandle handle = nullptr;
  check(spaces().NewColorSpaceFromList(list.get(), alpha ? 1 : 0, &handle));
  return ColorSpace(handle);
}

}  // namespace

void ColorSpace::reset() noexcept {
  if (_handle && gSuites.colorSpace) gSuites.colorSpace->Release(_handle);
  _handle = nullptr;
}

ColorSpace buildColorSpace(const ColorUsage& usage, int32_t effectiveType, int32_t requestedFamily) {
  switch (RasterType(effectiveType)) {
    case RasterType::Rgb: return processSpace(kDWRGBFamily, false);
    case RasterType::RgbTransparent: return processSpace(kDWRGBFamily, true);
    case RasterType::Cmyk: return processSpace(kDWCMYKFamily, false);
    case RasterType::CmykTransparent: return processSpace(kDWCMYKFamily, true);
    case RasterType::Grayscale:
    case RasterType::Bitmap:
    case RasterType::BitmapTransparent: return processSpace(kDWGrayFamily, false);
    case RasterType::GrayscaleTransparent: return processSpace(kDWGrayFamily, true);
    case RasterType::Spot:
    case RasterType::SpotTransparent: {
      DWCustomColorHandle spot = singleSpotColor(usage);
      if (!spot) return ColorSpace();
      return spotSpace(spot, effectiveType == int32_t(RasterType::SpotTransparent));
    }
    case RasterType::NChannel:
    case RasterType::NChannelTransparent:
      return processPlusSpotsSpace(usage, requestedFamily,
                                   effectiveType == int32_t(RasterType::NChannelTransparent));
  }
  return ColorSpace();
}

int32_t colorSpaceChannelCount(DWColorSpaceHandle space) {
  int32_t count = 0;
  check(spaces().CountChannels(space, &count));
  return count;
}

DWErr setUpRasterColor(DWArtHandle raster, int32_t effectiveType, DWCustomColorHandle spot, DWColorSpaceHandle space,
                       const ColorUsage& usage) {
  const HostSuites& s = gSuites;
  if (isSpotType(effectiveType) && spot) {
    DWPathStyle style{};
    if (DWErr error = s.pathStyle->GetPathStyle(raster, &style)) return error;
    style.fillPaint = 1;
    style.fill.color.kind = kDWCustomColor;
    style.fill.color.c.c.color = spot;
    style.fill.color.c.c.tint = 0.0;
    if (DWErr error = s.pathStyle->SetPathStyle(raster, &style)) return error;
  } else if (isNChannelType(effectiveType)) {
    if (DWErr error = s.raster->SetColorSpace(raster, space)) return error;
  }
  if (usage.rasterFlag) {
    if (DWErr error = s.raster->SetRasterUsageFlag(raster, 1)) return error;
  }
  return kDWNoErr;
}

}  // namespace dw
