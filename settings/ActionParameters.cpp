#include "settings/ActionParameters.h"

#include <string>

#include "settings/ActionKeys.h"
#include "settings/DocumentQueries.h"
#include "settings/DocumentRasterSettings.h"
#include "settings/StoredConversions.h"
#include "shell/HostString.h"
#include "shell/HostSuites.h"
#include "shell/Strings.h"

namespace dw {

namespace {

using namespace actions;

std::string localized(const char* localisable) { return HostString(localisable).bytes(); }

const char* colorModeLabel(int32_t storedType) {
  switch (storedType % 4) {
    case 0: return strings::ColorModelRgb;
    case 1: return strings::ColorModelCmyk;
    case 2: return strings::ColorModelGrayscale;
    default: return strings::ColorModelBitmap;
  }
}

bool transparentBackground(int32_t storedType) { return storedType >= 4; }

void setColorModel(const DWActionManagerSuite& am, DWActionParamBlock block, const RasterizeSettings& record) {
  const int32_t type = clampStoredType(record.type);
  am.SetEnumerated(block, KeyColorModel, localized(colorModeLabel(type)).c_str(), type);
}

void setBackground(const DWActionManagerSuite& am, DWActionParamBlock block, const RasterizeSettings& record) {
  if (transparentBackground(clampStoredType(record.type)))
    am.SetEnumerated(block, KeyBackground, localized(strings::BackgroundTransparent).c_str(), BackgroundTransparent);
  else
    am.SetEnumerated(block, KeyBackground, localized(strings::BackgroundWhite).c_str(), BackgroundWhite);
}

void setMaskSpotPadding(const DWActionManagerSuite& am, DWActionParamBlock block, const RasterizeSettings& record) {
  am.SetBoolean(block, KeyMask, record.createClippingMask != 0);
  am.SetBoolean(block, KeyPreserveSpot, record.preserveSpotColors != 0);
  am.SetUnitReal(block, KeyPadding, UnitPixels, record.padding);
}

using KeySetter = void (*)(DWActionParamBlock, const RasterizeSettings&);

DWErr recordEvent(const char* eventName, KeySetter setKeys, const RasterizeSettings& record) {
  if (!actionsAreRecording()) return kDWNoErr;
  const DWActionManagerSuite& am = *gSuites.actionManager;
  DWActionParamBlock block = nullptr;
  if (am.NewParamBlock(&block) != kDWNoErr || !block) return kDWNoErr;
  struct BlockOwner {
    const DWActionManagerSuite& am;
    DWActionParamBlock block;
    ~BlockOwner() { am.DisposeParamBlock(block); }
  } owner{am, block};
  setKeys(block, record);
  return am.RecordEvent(eventName, RecordDialogState, block);
}

}  // namespace

bool actionsAreRecording() {
  if (!gSuites.actionManager) return false;
  DWBool recording = 0;
  return gSuites.actionManager->IsRecording(&recording) == kDWNoErr && recording != 0;
}

void setRasterizeEventParameters(DWActionParamBlock block, const RasterizeSettings& record) {
  if (!gSuites.actionManager) return;
  const DWActionManagerSuite& am = *gSuites.actionManager;
  setColorModel(am, block, record);
  if (record.options & RasterizeOptions::UseEffectsResolution)
    am.SetEnumerated(block, KeyEffectsResolution, localized(strings::UseEffectsResolution).c_str(), 0);
  else
    am.SetInteger(block, KeyResolution, storedResolution(record.resolution));
  setBackground(am, block, record);
  if (record.options & RasterizeOptions::OutlineText)
    am.SetEnumerated(block, KeyTypeQuality, localized(strings::TypeOutline).c_str(), TypeOutline);
  else
    am.SetEnumerated(block, KeyTypeQuality, localized(strings::TypeStreamline).c_str(), TypeStreamline);
  if (record.antialiasing < 2)
    am.SetEnumerated(block, KeyAntiAliasing, localized(strings::AntiAliasNone).c_str(), AntiAliasNone);
  else if (record.options & RasterizeOptions::TypeOptimized)
    am.SetEnumerated(block, KeyAntiAliasing, localized(strings::AntiAliasTypeOptimized).c_str(),
                     AntiAliasTypeOptimized);
  else
    am.SetEnumerated(block, KeyAntiAliasing, localized(strings::AntiAliasArtOptimized).c_str(),
                     AntiAliasArtOptimized);
  setMaskSpotPadding(am, block, record);
}

void setDocumentSettingsEventParameters(DWActionParamBlock block, const RasterizeSettings& record) {
  if (!gSuites.actionManager) return;
  const DWActionManagerSuite& am = *gSuites.actionManager;
  setColorModel(am, block, record);
  am.SetInteger(block, KeyResolution, storedResolution(record.resolution));
  setBackground(am, block, record);
  am.SetBoolean(block, KeyAntiAlias, record.antialiasing >= 2);
  setMaskSpotPadding(am, block, record);
}

DWErr recordRasterizeEvent(const RasterizeSettings& record) {
  return recordEvent(RasterizeEvent, setRasterizeEventParameters, record);
}

DWErr recordDocumentSettingsEvent(const RasterizeSettings& record) {
  return recordEvent(DocumentSettingsEvent, setDocumentSettingsEventParameters, record);
}

void applyActionParameters(DWActionParamBlock block, RasterizeSettings& record) {
  if (!gSuites.actionManager || !block) return;
  record.reserved = 0;
  const DWActionManagerSuite& am = *gSuites.actionManager;
  const uint32_t outline = RasterizeOptions::OutlineText;
  const uint32_t typeOptimized = RasterizeOptions::TypeOptimized;

  int32_t value = 0;
  if (am.GetEnumerated(block, KeyColorModel, nullptr, 0, &value) == kDWNoErr) {
    if (value >= 0 && value <= 7) record.type = value;
    int32_t mode = 0;
    if (getDocumentColorMode(mode) == kDWNoErr) record.type = followDocumentColorMode(mode, record.type);
  }

  if (am.GetEnumerated(block, KeyEffectsResolution, nullptr, 0, &value) == kDWNoErr)
    record.options |= RasterizeOptions::UseEffectsResolution;
  else
    record.options &= ~RasterizeOptions::UseEffectsResolution;

  if (am.GetInteger(block, KeyResolution, &value) == kDWNoErr) record.resolution = double(value);

  if (am.GetEnumerated(block, KeyTypeQuality, nullptr, 0, &value) != kDWNoErr || value == TypeOutline)
    record.options |= outline;
  else if (value == TypeStreamline)
    record.options &= ~outline;

  if (am.GetEnumerated(block, KeyAntiAliasing, nullptr, 0, &value) == kDWNoErr) {
    if (value == AntiAliasNone) {
      record.antialiasing = 0;
      record.options &= ~typeOptimized;
    } else if (value == AntiAliasArtOptimized) {
      record.antialiasing = kAntiAliasOn;
      record.options &= ~typeOptimized;
    } else if (value == AntiAliasTypeOptimized) {
      record.antialiasing = kAntiAliasOn;
      record.options |= typeOptimized | RasterizeOptions::NoPixelSnap;
    }
  } else {
    DWBool on = 0;
    if (am.GetBoolean(block, KeyAntiAlias, &on) == kDWNoErr) record.antialiasing = antiAliasFromStored(on != 0);
    record.options &= ~typeOptimized;
  }

  DWBool flag = 0;
  record.createClippingMask = am.GetBoolean(block, KeyMask, &flag) == kDWNoErr && flag ? 1 : 0;
  flag = 0;
  record.preserveSpotColors = am.GetBoolean(block, KeyPreserveSpot, &flag) == kDWNoErr && flag ? 1 : 0;
  uint32_t unit = 0;
  double padding = 0.0;
  record.padding = am.GetUnitReal(block, KeyPadding, &unit, &padding) == kDWNoErr ? padding : 0.0;
}

RasterizeSettings documentSettingsEventBase() { return currentDocumentRasterSettings(); }

}  // namespace dw
