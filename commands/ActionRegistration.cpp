#include "commands/Actions.h"
#include "settings/ActionKeys.h"
#include "shell/HostSuites.h"
#include "shell/PluginGlobals.h"
#include "shell/Strings.h"

namespace dw {

namespace {

using namespace actions;

struct ActionParameter {
  uint32_t key;
  const char* label;
  uint32_t type;
};

// 'ali+' is described twice, as a string and then as an enumeration; hosts see both rows.
const ActionParameter kRasterizeParameters[] = {
    {KeyColorModel, strings::ColorModelLabel, TypeEnumerated},
    {KeyTypeQuality, strings::TypeQualityLabel, TypeEnumerated},
    {KeyResolution, strings::ResolutionLabel, TypeInteger},
    {KeyEffectsResolution, strings::ResolutionLabel, TypeEnumerated},
    {KeyAntiAliasing, strings::AntiAliasingLabel, TypeString},
    {KeyBackground, strings::BackgroundLabel, TypeEnumerated},
    {KeyAntiAliasing, strings::AntiAliasingLabel, TypeEnumerated},
    {KeyMask, strings::ClippingMaskLabel, TypeBoolean},
    {KeyPadding, strings::PaddingLabel, TypeUnitReal},
    {KeyPreserveSpot, strings::PreserveSpotLabel, TypeBoolean},
};

const ActionParameter kSettingsParameters[] = {
    {KeyColorModel, strings::ColorModelLabel, TypeEnumerated},
    {KeyResolution, strings::ResolutionLabel, TypeInteger},
    {KeyBackground, strings::BackgroundLabel, TypeEnumerated},
    {KeyAntiAlias, strings::AntiAliasLabel, TypeBoolean},
    {KeyMask, strings::ClippingMaskLabel, TypeBoolean},
    {KeyPadding, strings::PaddingLabel, TypeUnitReal},
    {KeyPreserveSpot, strings::PreserveSpotLabel, TypeBoolean},
};

// Registers one event; `described` is false when the host gave no description to fill.
template <size_t count>
DWErr registerEvent(const char* name, const char* title, int32_t eventValue, const ActionParameter (&rows)[count],
                    DWPluginRef plugin, bool& described) {
  const DWActionManagerSuite& actions = *gSuites.actionManager;
  DWActionParamDesc description = nullptr;
  actions.NewParamDescription(&description);
  described = description != nullptr;
  if (!described) return kDWNoErr;

  DWErr result = kDWNoErr;
  for (const ActionParameter& row : rows) {
    result = actions.AddParamKey(description, row.key, row.label, row.type, 1);
    if (result) break;
  }
  // An incomplete description is not registered: playback would miss keys.
  if (!result) result = actions.RegisterEvent(name, title, 1, 0, 0, plugin, eventValue, description);
  actions.DisposeParamDescription(description);
  return result;
}

}  // namespace

DWErr RegisterActions(const MessageHeader& message) {
  DWErr result = kDWNoErr;
  if (message.basicSuite) {
    const void* suite = nullptr;
    result = message.basicSuite->AcquireSuite(kDWActionManagerSuite, kDWActionManagerSuiteVersion, &suite);
    gSuites.actionManager = result == kDWNoErr ? static_cast<const DWActionManagerSuite*>(suite) : nullptr;
  }
  if (!gSuites.actionManager || !message.pluginRef) return result;
  const DWPluginRef plugin = gGlobals ? gGlobals->pluginRef : message.pluginRef;

  bool described = false;
  result = registerEvent(RasterizeEvent, strings::RasterizeTitle, RasterizeEventValue, kRasterizeParameters, plugin,
                         described);
  const DWErr settingsResult = registerEvent(DocumentSettingsEvent, strings::DocumentSettingsTitle,
                                             DocumentSettingsEventValue, kSettingsParameters, plugin, described);
  return described ? settingsResult : result;
}

}  // namespace dw
