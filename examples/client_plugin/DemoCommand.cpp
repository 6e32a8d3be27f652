#include "DemoCommand.h"

#include <cstdio>
#include <string>

#include "ClientSuites.h"
#include "Report.h"

namespace client {

namespace {

// Owns the art set the demo works on.
class ArtSet {
 public:
  ArtSet() { gSuites.artSet->NewArtSet(&_set); }
  ~ArtSet() {
    if (_set) gSuites.artSet->DisposeArtSet(&_set);
  }
  ArtSet(const ArtSet&) = delete;
  ArtSet& operator=(const ArtSet&) = delete;

  DWArtSetHandle get() const { return _set; }
  int32_t count() const {
    int32_t n = 0;
    if (_set) gSuites.artSet->CountArtSet(_set, &n);
    return n;
  }

 private:
  DWArtSetHandle _set = nullptr;
};

// The selection; with nothing selected, every top-level object of the shown layers.
const char* gatherArt(const ArtSet& set) {
  if (!set.get()) return "none";
  gSuites.artSet->SelectedArtSet(set.get());
  if (set.count() > 0) return "the selection";
  int32_t layers = 0;
  gSuites.layer->CountLayers(&layers);
  for (int32_t i = 0; i < layers; ++i) {
    DWLayerHandle layer = nullptr;
    DWBool shown = 0;
    if (gSuites.layer->GetNthLayer(i, &layer) || gSuites.layer->GetLayerVisible(layer, &shown) || !shown) continue;
    DWArtHandle art = nullptr;
    gSuites.art->GetFirstArtOfLayer(layer, &art);
    while (art) {
      gSuites.artSet->AddArtToArtSet(set.get(), art);
      if (gSuites.art->GetArtSibling(art, &art)) break;
    }
  }
  return "every object of the shown layers";
}

// One point per pixel, anti-aliased, on a transparent background; spot colours kept where the
// raster can carry them. The suite may change nothing in it that it does not give back.
RasterizeSettings demoSettings() {
  RasterizeSettings settings{};
  settings.type = kRasterTypeRgbTransparent;
  settings.resolution = 72.0;
  settings.antialiasing = 4;
  settings.options = kRasterizeAllowSpotRaster | kRasterizeAllowNChannelRaster;
  settings.preserveSpotColors = 1;
  return settings;
}

// The host's cancel request stops a long rasterization.
int32_t progress(int32_t, int32_t) { return gSuites.user->Cancelled() ? 0 : 1; }

std::string describeRaster(DWArtHandle raster) {
  DWRasterRecord record{};
  if (!raster || gSuites.raster->GetRasterRecord(raster, &record) != kDWNoErr) return "no raster";
  char text[160];
  std::snprintf(text, sizeof text, "raster %p: %d x %d px, colour space 0x%02X, %d bits", static_cast<void*>(raster),
                record.bounds.right - record.bounds.left, record.bounds.bottom - record.bounds.top,
                unsigned(record.colorSpace), int(record.bitsPerPixel));
  return text;
}

// "0; raster ...", or the error's code.
std::string resultText(DWErr error, DWArtHandle raster) {
  return error ? codeText(error) : "0; " + describeRaster(raster);
}

}  // namespace

DWErr RunRasterizeSuiteDemo() {
  const DWRasterizeSuite* suite = rasterizeSuite();
  // Null entries: the Rasterize plug-in is unloaded for now and will write them again at reload.
  if (!suite || !suite->GetArtBounds) {
    reportLine("DW Rasterize Suite: version %d not available", kDWRasterizeSuiteVersion);
    errorAlert("$$$/RasterizeClient/Errors/NoSuite=The Rasterize plug-in's suite is not available.");
    return kSuiteMissing;
  }
  reportLine("DW Rasterize Suite: version %d, table %p", kDWRasterizeSuiteVersion,
             static_cast<const void*>(suite));

  ArtSet set;
  const char* what = gatherArt(set);
  reportLine("art set: %d objects, %s", set.count(), what);
  RasterizeSettings settings = demoSettings();

  DWRealRect bounds{};
  DWErr error = suite->GetArtBounds(set.get(), &bounds, 0);
  if (error)
    reportLine("GetArtBounds: %s", codeText(error).c_str());
  else
    reportLine("GetArtBounds: 0; bounds %g %g %g %g", bounds.left, bounds.top, bounds.right, bounds.bottom);

  // First, before the demo adds rasters of its own to the document.
  DWArtHandle page = nullptr;
  const uint32_t optionsBefore = settings.options;
  error = suite->RasterizeDocument(&settings, kDWPlaceAboveAll, nullptr, &page, progress);
  reportLine("RasterizeDocument: %s; options 0x%08X before, 0x%08X after", resultText(error, page).c_str(),
             optionsBefore, settings.options);

  DWArtHandle plain = nullptr;
  error = suite->RasterizeArt(set.get(), &settings, &bounds, kDWPlaceAboveAll, nullptr, &plain, progress);
  reportLine("RasterizeArt: %s", resultText(error, plain).c_str());

  DWArtHandle padded = nullptr;
  error = suite->RasterizeArtWithPadding(set.get(), &settings, &bounds, kDWPlaceAboveAll, nullptr, &padded,
                                         progress, 0.0);
  reportLine("RasterizeArtWithPadding: %s", resultText(error, padded).c_str());

  // Half the resolution, placed just above its source.
  if (padded) {
    DWArtHandle half = nullptr;
    error = suite->ResampleRasterArt(padded, kDWResampleBicubic, settings.resolution / 2, kDWPlaceAbove, padded,
                                     &half);
    reportLine("ResampleRasterArt: %s", resultText(error, half).c_str());
  } else {
    reportLine("ResampleRasterArt: not called, no raster to resample");
  }

  // Before the mask, which deletes the objects of the set.
  DWBool keepsSpots = 0;
  error = suite->CanPreserveSpotColors(set.get(), &keepsSpots);
  reportLine("CanPreserveSpotColors: %s; flag %d", codeText(error).c_str(), int(keepsSpots));
  // The paths of the set clip the first raster (and leave the document in their place).
  if (plain) {
    DWArtHandle clipGroup = nullptr;
    error = suite->CreateClippingMask(set.get(), kDWPlaceAbove, plain, &clipGroup);
    if (error)
      reportLine("CreateClippingMask: %s", codeText(error).c_str());
    else
      reportLine("CreateClippingMask: 0; clip group %p", static_cast<void*>(clipGroup));
  } else {
    reportLine("CreateClippingMask: not called, no raster to clip");
  }

  return kDWNoErr;
}

}  // namespace client
