#include "settings/EffectParameters.h"

#include "settings/DocumentQueries.h"
#include "settings/DocumentRasterSettings.h"
#include "settings/HostDictionary.h"
#include "settings/StoredConversions.h"
#include "settings/StoredKeys.h"

namespace dw {

namespace {

// "colr", "dpi.", "alis", "mask" and "padd" into the record; a key that is missing or that the
// host cannot give leaves its field.
void overlayParameters(DWDictionaryRef parameters, RasterizeSettings& record) {
  int32_t integer = 0;
  if (readInteger(parameters, keys::Type, integer)) record.type = clampStoredType(integer);
  if (readInteger(parameters, keys::Resolution, integer)) record.resolution = double(integer);
  bool flag = false;
  if (readBoolean(parameters, keys::AntiAlias, flag)) record.antialiasing = antiAliasFromStored(flag);
  if (readBoolean(parameters, keys::Mask, flag)) record.createClippingMask = flag ? 1 : 0;
  double real = 0.0;
  if (readReal(parameters, keys::Padding, real)) record.padding = real;
}

}  // namespace

RasterizeSettings effectEditRecord(DWDictionaryRef parameters, const RasterizeSettings& lastEdited) {
  RasterizeSettings record = lastEdited;
  if (hasEntry(parameters, keys::Type)) {
    overlayParameters(parameters, record);
    int32_t options = 0;
    record.options = readInteger(parameters, keys::Options, options) ? uint32_t(options) : 0u;
  }
  record.type = followDocumentColorMode(documentColorModeOrUnknown(), record.type);
  record.forEffect = 1;
  return record;
}

DWErr writeEffectEditParameters(DWDictionaryRef parameters, const RasterizeSettings& record) {
  if (const DWErr e = writeInteger(parameters, keys::Type, clampStoredType(record.type))) return e;
  if (const DWErr e = writeInteger(parameters, keys::Resolution, storedResolution(record.resolution))) return e;
  if (const DWErr e = writeBoolean(parameters, keys::AntiAlias, record.antialiasing >= 2)) return e;
  if (const DWErr e = writeBoolean(parameters, keys::Mask, record.createClippingMask != 0)) return e;
  if (const DWErr e = writeReal(parameters, keys::Padding, record.padding)) return e;
  return writeInteger(parameters, keys::Options, int32_t(record.options));
}

RasterizeSettings effectRunSettings(DWDictionaryRef parameters) {
  // The effect's registration defaults are also the base of every run.
  RasterizeSettings record = makeEffectDefaults();
  readDocumentRasterSettings(record);
  overlayParameters(parameters, record);
  int32_t options = 0;
  readInteger(parameters, keys::Options, options);
  record.options = uint32_t(options) | RasterizeOptions::AllowSpotRaster | RasterizeOptions::AllowNChannelRaster;
  record.type = followDocumentColorMode(documentColorModeOrUnknown(), record.type);
  return record;
}

}  // namespace dw
