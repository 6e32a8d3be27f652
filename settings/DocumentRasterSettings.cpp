#include "settings/DocumentRasterSettings.h"

#include <type_traits>

#include "settings/ActionParameters.h"
#include "settings/DocumentQueries.h"
#include "settings/HostDictionary.h"
#include "settings/StoredConversions.h"
#include "settings/StoredKeys.h"
#include "shell/ErrorCodes.h"
#include "shell/HostSuites.h"

namespace dw {

namespace {

int32_t defaultTypeForMode(int32_t mode) {
  if (mode == int32_t(DocumentColorMode::Gray)) return int32_t(RasterType::GrayscaleTransparent);
  if (mode == int32_t(DocumentColorMode::Cmyk)) return int32_t(RasterType::CmykTransparent);
  return int32_t(RasterType::RgbTransparent);
}

// The document's dictionary for writing. A refusal of the host is kept in `error` and reported at
// the first write, so that an unchanged record still succeeds.
DictionaryRef documentDictionaryForWriting(DWErr& error) {
  error = kDWNoErr;
  if (!gSuites.document) return DictionaryRef();
  DWDictionaryRef dictionary = nullptr;
  error = gSuites.document->GetDictionary(&dictionary);
  return error == kDWNoErr ? DictionaryRef(dictionary) : DictionaryRef();
}

// The settings entry of `document` when it has one; a refused lookup goes to `error`.
DictionaryRef existingSettingsEntry(DWDictionaryRef document, DWErr& error) {
  if (!hasEntry(document, keys::DocumentSettingsEntry)) return DictionaryRef();
  DWDictionaryRef entry = nullptr;
  error = gSuites.dictionary->GetDictEntry(document, gSuites.dictionary->MakeKey(keys::DocumentSettingsEntry), &entry);
  return error == kDWNoErr ? DictionaryRef(entry) : DictionaryRef();
}

// The document's settings entry, created empty when the document has a dictionary but no entry.
// createError is the host's refusal to find, create or store it, reported at the first write.
DictionaryRef settingsEntryForWriting(DWDictionaryRef document, DWErr& createError) {
  createError = kDWNoErr;
  DictionaryRef entry = existingSettingsEntry(document, createError);
  if (entry || createError != kDWNoErr || !document || !gSuites.dictionary) return entry;

  DWDictionaryRef created = nullptr;
  createError = gSuites.dictionary->CreateDictionary(&created);
  if (createError != kDWNoErr) return DictionaryRef();
  DictionaryRef owned(created);
  createError = gSuites.dictionary->SetDictEntry(document, gSuites.dictionary->MakeKey(keys::DocumentSettingsEntry),
                                                 created);
  if (createError != kDWNoErr) return DictionaryRef();
  // Read it back rather than keep the created one: the host may have stored a copy.
  return existingSettingsEntry(document, createError);
}

}  // namespace

DWErr readDocumentRasterSettings(RasterizeSettings& record) {
  const int32_t mode = documentColorModeOrUnknown();
  const DictionaryRef document = documentDictionary();
  const DictionaryRef settings = dictionaryEntry(document.get(), keys::DocumentSettingsEntry);

  int32_t type = 0;
  if (!readInteger(settings.get(), keys::Type, type)) {
    type = defaultTypeForMode(mode);
    readPreference(keys::PrefType, type);
  }
  record.type = followDocumentColorMode(mode, clampStoredType(type));

  int32_t resolution = 0;
  if (!readInteger(settings.get(), keys::Resolution, resolution)) {
    resolution = kDefaultDocumentResolution;
    readPreference(keys::PrefResolution, resolution);
  }
  record.resolution = double(resolution);

  bool antiAlias = false;
  if (!readBoolean(settings.get(), keys::AntiAlias, antiAlias)) readPreference(keys::PrefAntiAlias, antiAlias);
  record.antialiasing = antiAliasFromStored(antiAlias);

  bool spot = false;
  if (!readBoolean(settings.get(), keys::Spot, spot) && documentLevelAtLeast(kSpotDefaultLevel)) {
    spot = true;
    readPreference(keys::PrefSpot, spot);
  }
  record.preserveSpotColors = spot ? 1 : 0;

  bool mask = false;
  if (!readBoolean(settings.get(), keys::Mask, mask)) readPreference(keys::PrefMask, mask);
  record.createClippingMask = mask ? 1 : 0;

  double padding = 0.0;
  if (!readReal(settings.get(), keys::Padding, padding)) {
    padding = kDefaultDocumentPadding;
    readPreference(keys::PrefPadding, padding);
  }
  record.padding = padding;
  return kDWNoErr;
}

RasterizeSettings currentDocumentRasterSettings() {
  RasterizeSettings record = makeDocumentSettingsBase();
  readDocumentRasterSettings(record);
  return record;
}

DWErr writeDocumentRasterSettings(const RasterizeSettings* record) {
  if (!record) return BadParameterError;
  const RasterizeSettings& next = *record;

  DWErr entryError = kDWNoErr;
  const DictionaryRef document = documentDictionaryForWriting(entryError);
  const DictionaryRef entry =
      entryError == kDWNoErr ? settingsEntryForWriting(document.get(), entryError) : DictionaryRef();
  const RasterizeSettings current = currentDocumentRasterSettings();

  int32_t mode = 0;
  if (const DWErr error = getDocumentColorMode(mode)) return error;

  // Each changed field goes to the document first, then to the preferences.
  auto store = [&](const char* key, const char* preference, auto value) -> DWErr {
    if (entryError != kDWNoErr) return entryError;
    DWErr error = kDWNoErr;
    if constexpr (std::is_same_v<decltype(value), int32_t>) error = writeInteger(entry.get(), key, value);
    else if constexpr (std::is_same_v<decltype(value), bool>) error = writeBoolean(entry.get(), key, value);
    else error = writeReal(entry.get(), key, value);
    if (error != kDWNoErr) return error;
    return writePreference(preference, value);
  };

  const int32_t type = clampStoredType(followDocumentColorMode(mode, next.type));
  if (type != current.type) {
    if (const DWErr error = store(keys::Type, keys::PrefType, type)) return error;
  }
  if (next.resolution != current.resolution) {
    if (const DWErr error = store(keys::Resolution, keys::PrefResolution, storedResolution(next.resolution)))
      return error;
  }
  if (next.antialiasing != current.antialiasing) {
    if (const DWErr error = store(keys::AntiAlias, keys::PrefAntiAlias, next.antialiasing != 0)) return error;
  }
  if ((next.preserveSpotColors != 0) != (current.preserveSpotColors != 0)) {
    if (const DWErr error = store(keys::Spot, keys::PrefSpot, next.preserveSpotColors != 0)) return error;
  }
  if ((next.createClippingMask != 0) != (current.createClippingMask != 0)) {
    if (const DWErr error = store(keys::Mask, keys::PrefMask, next.createClippingMask != 0)) return error;
  }

  DWErr result = kDWNoErr;
  if (next.padding != current.padding) {
    if (entryError != kDWNoErr) return entryError;
    if (const DWErr error = writeReal(entry.get(), keys::Padding, next.padding)) return error;
    // The last preference does not stop the procedure: the document already holds the value.
    result = writePreference(keys::PrefPadding, next.padding);
  }

  if (actionsAreRecording()) recordDocumentSettingsEvent(next);
  return result;
}

}  // namespace dw
