#include "settings/DocumentQueries.h"
#include "settings/DocumentRasterSettings.h"
#include "settings/EffectParameters.h"
#include "settings/HostDictionary.h"
#include "settings/StoredConversions.h"
#include "settings/StoredKeys.h"

namespace dw {

DWErr alignConversionParameters(DWDictionaryRef parameters) {
  RasterizeSettings document = makeDocumentSettingsBase();
  if (const DWErr error = readDocumentRasterSettings(document)) return error;

  bool wrote = false;
  auto written = [&wrote](DWErr error) {
    wrote = true;
    return error;
  };

  const int32_t type = clampStoredType(document.type);
  int32_t storedType = 0;
  if (!readInteger(parameters, keys::Type, storedType) || storedType != type) {
    if (const DWErr e = written(writeInteger(parameters, keys::Type, type))) return e;
  }

  int32_t storedResolutionValue = 0;
  if (!readInteger(parameters, keys::Resolution, storedResolutionValue) ||
      double(storedResolutionValue) != document.resolution) {
    if (const DWErr e = written(writeInteger(parameters, keys::Resolution, storedResolution(document.resolution))))
      return e;
  }

  bool antiAlias = false;
  const bool antiAliasKept = readBoolean(parameters, keys::AntiAlias, antiAlias) &&
                             ((!antiAlias && document.antialiasing <= 0) || (antiAlias && document.antialiasing != 0));
  if (!antiAliasKept) {
    if (const DWErr e = written(writeBoolean(parameters, keys::AntiAlias, document.antialiasing > 0))) return e;
  }

  bool mask = false;
  if (!readBoolean(parameters, keys::Mask, mask) || mask != (document.createClippingMask != 0)) {
    if (const DWErr e = written(writeBoolean(parameters, keys::Mask, document.createClippingMask != 0))) return e;
  }

  double padding = 0.0;
  if (!readReal(parameters, keys::Padding, padding) || padding != document.padding) {
    if (const DWErr e = written(writeReal(parameters, keys::Padding, document.padding))) return e;
  }

  const bool documentSpot = document.preserveSpotColors != 0;
  bool spot = false;
  if (!readBoolean(parameters, keys::Spot, spot)) return writeBoolean(parameters, keys::Spot, documentSpot);
  // A stored "on" is only taken back when the parameters changed in other ways too.
  if (!spot && documentSpot) return writeBoolean(parameters, keys::Spot, true);
  if (spot && !documentSpot && wrote) return writeBoolean(parameters, keys::Spot, false);
  return kDWNoErr;
}

DWErr convertEffectColorSpace(DWDictionaryRef parameters, int32_t& conversion) {
  if (!parameters) return kDWNoErr;
  int32_t mode = 0;
  switch (conversion) {
    case 0: mode = int32_t(DocumentColorMode::Gray); break;
    case 1: mode = int32_t(DocumentColorMode::Cmyk); break;
    case 5: mode = int32_t(DocumentColorMode::Rgb); break;
    default: return kDWNoErr;
  }
  int32_t stored = 0;
  if (!readInteger(parameters, keys::Type, stored)) return kDWNoErr;
  const int32_t converted = followDocumentColorMode(mode, clampStoredType(stored));
  if (converted == stored) return kDWNoErr;
  const DWErr error = writeInteger(parameters, keys::Type, converted);
  if (error == kDWNoErr) conversion = kColorConversionDone;
  return error;
}

}  // namespace dw
