#include "engine/RasterArt.h"

#include "engine/RasterTypes.h"
#include "shell/ErrorCodes.h"
#include "shell/HostSuites.h"

namespace dw {

namespace {

constexpr uint32_t kValuePairFlag = 0x10000;

DWErr layerTest(DWArtHandle prep) {
  const HostSuites& s = gSuites;
  if (prep) {
    DWBool outside = 0;
    if (DWErr error = s.art->ArtIsOutsideLayers(prep, &outside)) return error;
    if (outside) return kDWNoErr;
  }
  DWLayerHandle layer = nullptr;
  if (DWErr error = prep ? s.art->GetLayerOfArt(prep, &layer) : s.layer->GetCurrentLayer(&layer)) return error;
  if (!layer) return kDWNoErr;
  DWBool editable = 1;
  if (DWErr error = s.layer->GetLayerEditable(layer, &editable)) return error;
  return editable ? kDWNoErr : LockedLayerError;
}

// Steps after the art exists; the caller removes the art when one fails.
DWErr describeRasterArt(DWArtHandle art, const RasterPlan& plan) {
  const HostSuites& s = gSuites;
  if (DWErr error = s.artStyle->SetArtStyle(art, nullptr)) return error;
  const int32_t type = plan.settings.type;
  const DWRasterRecord record = makeRasterRecord(type, plan.spot != nullptr, plan.width, plan.height, plan.bitsPerPixel);
  if (DWErr error = s.raster->SetRasterRecord(art, &record)) return error;
  if (hasAlpha(type) || type == int32_t(RasterType::BitmapTransparent))
    if (DWErr error = s.blendStyle->SetBlendFlag(art, 1)) return error;
  return kDWNoErr;
}

}  // namespace

DWRasterRecord makeRasterRecord(int32_t effectiveType, bool singleSpot, int32_t width, int32_t height,
                                int32_t bitsPerPixel) {
  int32_t described = effectiveType;
  if (singleSpot && effectiveType == int32_t(RasterType::Spot)) described = int32_t(RasterType::Grayscale);
  if (singleSpot && effectiveType == int32_t(RasterType::SpotTransparent))
    described = int32_t(RasterType::GrayscaleTransparent);
  DWRasterRecord record{};
  if (singleSpot && isSpotType(effectiveType))
    record.flags = kDWRasterSpotFlag;
  else if (effectiveType == int32_t(RasterType::BitmapTransparent))
    record.flags = kDWRasterMaskFlag;
  record.bounds = DWIntRect{0, 0, width, height};
  record.byteWidth = int32_t(rowStride(bitsPerPixel, width));
  record.colorSpace = int16_t(rasterTypeInfo(described).colorSpaceCode);
  record.bitsPerPixel = int16_t(bitsPerPixel);
  record.originalColorSpace = -1;
  return record;
}

DWErr createRasterArt(const RasterRequest& request, const RasterPlan& plan, DWArtHandle& art) {
  art = nullptr;
  if (DWErr error = layerTest(request.prep)) return error;
  DWArtHandle created = nullptr;
  if (DWErr error = gSuites.art->NewArt(kDWRasterArt, int16_t(request.paintOrder), request.prep, &created))
    return error;
  if (!created) return OutOfMemoryError;
  if (DWErr error = describeRasterArt(created, plan)) {
    gSuites.art->DisposeArt(created);
    return error;
  }
  art = created;
  return kDWNoErr;
}

DWErr setRasterMatrix(const RasterRequest& request, const RasterPlan& plan) {
  DWRealMatrix matrix{};
  gSuites.realMath->SetMatrixScale(&matrix, 1.0 / plan.scale, 1.0 / plan.scale);
  gSuites.realMath->ConcatTranslate(&matrix, plan.pixelBounds.left - request.padding,
                                    plan.pixelBounds.top + request.padding);
  return gSuites.raster->SetRasterMatrix(plan.rasterArt, &matrix);
}

void copyUserValuePair(DWArtSetHandle artSet, DWArtHandle raster) {
  const HostSuites& s = gSuites;
  int32_t count = 0;
  if (!artSet || !raster || s.artSet->CountArtSet(artSet, &count) != kDWNoErr || count != 1) return;
  DWArtHandle source = nullptr;
  if (s.artSet->IndexArtSet(artSet, 0, &source) != kDWNoErr || !source) return;
  uint32_t flags = 0;
  if (s.art->GetArtUserAttr(source, kValuePairFlag, &flags) != kDWNoErr || !(flags & kValuePairFlag)) return;
  double real = 6.0;
  int32_t integer = 0;
  if (s.art->GetArtValuePair(source, &real, &integer) != kDWNoErr) return;
  if (s.art->SetArtUserAttr(raster, kValuePairFlag, kValuePairFlag) != kDWNoErr) return;
  s.art->SetArtValuePair(raster, real, integer);
}

void handBackRaster(DWArtHandle prep, DWArtHandle raster, DWArtHandle* result) {
  if (!raster || !result) return;
  if (prep && gSuites.symbol && gSuites.symbol->ArtIsInSymbolEditing(prep, 0) != 0) {
    auto utils = acquireSuiteAs<DWSymbolUtilsSuite>(kDWSymbolUtilsSuite, kDWSymbolUtilsSuiteVersion);
    if (utils) {
      DWArtHandle parent = nullptr;
      if (gSuites.art->GetArtParent(raster, &parent) == kDWNoErr && parent) utils->NotifyArtChanged(prep, parent, 0);
      releaseSuite(kDWSymbolUtilsSuite, kDWSymbolUtilsSuiteVersion);
    }
  }
  *result = raster;
}

}  // namespace dw
