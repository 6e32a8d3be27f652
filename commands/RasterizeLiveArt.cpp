#include "commands/ArtTree.h"
#include "commands/LiveEffect.h"
#include "commands/RasterizeEngine.h"
#include "commands/RasterizeSelection.h"
#include "shell/Error.h"
#include "shell/ErrorCodes.h"
#include "shell/HostString.h"
#include "shell/HostSuites.h"
#include "shell/Strings.h"

namespace dw {

namespace {

// Tells the host to composite the raster through its alpha channel.
constexpr int32_t kHonourAlpha = 1;

bool keepsTransparency(int32_t type) {
  return type >= int32_t(RasterType::RgbTransparent) && type <= int32_t(RasterType::BitmapTransparent);
}

// The progress text is a courtesy: a host that cannot show it still gets its raster.
void showProgressText() {
  try {
    const HostString text(strings::Progress);
    gSuites.user->SetProgressText(text.handle());
  } catch (const Error&) {
  }
}

// Puts the result into a new group above it. On failure neither the result nor the group stays.
DWErr wrapInGroup(DWArtHandle& result, DWArtHandle raster) {
  DWArtHandle group = nullptr;
  DWErr error = gSuites.art->NewArt(kDWGroupArt, kDWPlaceAbove, result, &group);
  if (!error) error = gSuites.art->ReorderArt(result, kDWPlaceInsideOnTop, group);
  if (!error) error = gSuites.blendStyle->SetBlendFlag(raster, kHonourAlpha);
  if (error) {
    gSuites.art->DisposeArt(result);
    if (group) gSuites.art->DisposeArt(group);
    result = nullptr;
    return error;
  }
  result = group;
  return kDWNoErr;
}

}  // namespace

DWErr RasterizeLiveArt(const RasterizeSettings& settings, DWArtHandle art, DWArtHandle* result) {
  if (!result) return BadParameterError;
  DWRealRect bounds{};
  if (const DWErr e = gSuites.art->GetArtBounds(art, &bounds)) return e;
  if (gSuites.realMath->IsRectEmpty(&bounds)) {
    *result = art;
    return kDWNoErr;
  }

  ArtSetOwner set;
  if (const DWErr e = set.create()) return e;
  if (const DWErr e = gSuites.artSet->AddArtToArtSet(set.get(), art)) return e;
  showProgressText();

  // The engine gets its own copy: the type it settles on may differ from the one asked for.
  RasterizeSettings request = settings;
  DWArtHandle raster = nullptr;
  DWErr error =
      rasterizeEngine()(set.get(), &request, &bounds, kDWPlaceAbove, art, &raster, RasterizeProgress, settings.padding);
  DWArtHandle made = nullptr;
  if (!error) {
    if (gSuites.pathfinder && settings.createClippingMask && raster) {
      error = CreateClippingMask(set.get(), kDWPlaceAbove, raster, &made);
    } else {
      error = gSuites.art->DisposeArt(art);
      made = raster;
    }
  }
  const DWErr disposed = set.dispose();
  if (!error) error = disposed;
  if (!error && made && keepsTransparency(settings.type)) error = wrapInGroup(made, raster);
  *result = made;
  return error;
}

}  // namespace dw
