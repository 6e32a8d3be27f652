#include "commands/Actions.h"
#include "shell/FourCharCode.h"
#include "shell/HostSuites.h"
#include "shell/PluginGlobals.h"
#include "shell/Strings.h"

namespace dw {

namespace {

constexpr const char kRasterizeEvent[] = "dw_plugin_rasterize";
constexpr const char kSettingsEvent[] = "dw_plugin_rasterEffectSettings";
constexpr int32_t kRasterizeEventValue = 1;
constexpr int32_t kSettingsEventValue = 0;

constexpr uint32_t kColorModel = fourCharCode("colr");
constexpr uint32_t kTypeQuality = fourCharCode("type");
constexpr uint32_t kResolution = fourCharCode("dpi.");
constexpr uint32_t kEffectsResolution = fourCharCode("dres");
constexpr uint32_t kAntiAliasing = fourCharCode("ali+");
constexpr uint32_t kBackground = fourCharCode("bkgd");
constexpr uint32_t kAntiAlias = fourCharCode("alis");
constexpr uint32_t kMask = fourCharCode("mask");
constexpr uint32_t kPadding = fourCharCode("padd");
constexpr uint32_t kPreserveSpot = fourCharCode("pspt");

constexpr uint32_t kEnumerated = fourCharCode("enum");
constexpr uint32_t kInteger = fourCharCode("long");
constexpr uint32_t kString = fourCharCode("strn");
constexpr uint32_t kBoolean = fourCharCode("bool");
constexpr uint32_t kUnitReal = fourCharCode("utrl");

struct ActionParameter {
  uint32_t key;
  const char* label;
  uint32_t type;
};

// 'ali+' is described twice, as a string and then as an enumeration; hosts see both rows.
const ActionParameter kRasterizeParameters[] = {
    {kColorModel, strings::ColorModelLabel, kEnumerated},
    {kTypeQuality, strings::TypeQualityLabel, kEnumerated},
    {kResolution, strings::ResolutionLabel, kInteger},
    {kEffectsResolution, strings::ResolutionLabel, kEnumerated},
    {kAntiAliasing, strings::AntiAliasingLabel, kString},
    {kBackground, strings::BackgroundLabel, kEnumerated},
    {kAntiAliasing, strings::AntiAliasingLabel, kEnumerated},
    {kMask, strings::ClippingMaskLabel, kBoolean},
    {kPadding, strings::PaddingLabel, kUnitReal},
    {kPreserveSpot, strings::PreserveSpotLabel, kBoolean},
};

const ActionParameter kSettingsParameters[] = {
    {kColorModel, strings::ColorModelLabel, kEnumerated},
    {kResolution, strings::ResolutionLabel, kInteger},
    {kBackground, strings::BackgroundLabel, kEnumerated},
    {kAntiAlias, strings::AntiAliasLabel, kBoolean},
    {kMask, strings::ClippingMaskLabel, kBoolean},
    {kPadding, strings::PaddingLabel, kUnitReal},
    {kPreserveSpot, strings::PreserveSpotLabel, kBoolean},
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
  result = registerEvent(kRasterizeEvent, strings::RasterizeTitle, kRasterizeEventValue, kRasterizeParameters, plugin,
                         described);
  const DWErr settingsResult = registerEvent(kSettingsEvent, strings::DocumentSettingsTitle,
                                             kSettingsEventValue, kSettingsParameters, plugin, described);
  return described ? settingsResult : result;
}

}  // namespace dw
