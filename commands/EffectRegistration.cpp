#include <algorithm>
#include <cstring>
#include <string>

#include "commands/LiveEffect.h"
#include "settings/RasterizeSettings.h"
#include "shell/ErrorCodes.h"
#include "shell/HostString.h"
#include "shell/HostSuites.h"
#include "shell/Interactive.h"
#include "shell/PluginGlobals.h"
#include "shell/Strings.h"

namespace dw {

namespace {

// At most size-1 bytes, zero-filled behind.
template <size_t size>
void copyTitle(char (&buffer)[size], const std::string& text) {
  std::memset(buffer, 0, size);
  std::memcpy(buffer, text.data(), std::min(text.size(), size - 1));
}

DWErr addMenuEntries(DWLiveEffectHandle effect, DWPluginRef plugin) {
  DWLiveEffectMenuData effectMenu = {};
  effectMenu.category = nullptr;
  copyTitle(effectMenu.title, strings::EffectMenuName);
  effectMenu.options = kEffectMenuOptions;
  if (DWErr result = gSuites.liveEffect->AddLiveEffectMenuItem(effect, kEffectMenuName, &effectMenu, nullptr, nullptr))
    return result;

  const DWMenuSuite& menu = *gSuites.menu;
  const DWMenuItemData separator = {kEffectsMiscGroup, kSeparatorName};
  DWMenuItemHandle separatorItem = nullptr;
  if (DWErr result = menu.AddMenuItem(plugin, kSeparatorName, &separator, 0, &separatorItem)) return result;

  const DWMenuItemData settings = {kEffectsMiscGroup, strings::AutoMenuName};
  DWMenuItemHandle settingsItem = nullptr;
  if (DWErr result = menu.AddMenuItem(plugin, kSettingsMenuItem, &settings, 0, &settingsItem)) return result;
  gGlobals->settingsMenuItem = settingsItem;
  return menu.UpdateMenuItemAutomatically(settingsItem, 1, 0, 0, 0, 0, kSettingsItemEnableMask, 0);
}

}  // namespace

DWErr RegisterRasterizeEffect(const MessageHeader& message) {
  if (!gGlobals) return OutOfMemoryError;
  const DWPluginRef plugin = gGlobals->pluginRef;

  DWLiveEffectData data = {};
  data.plugin = plugin;
  data.name = kEffectName;
  copyTitle(data.title, HostString(strings::RasterizeTitle).bytes(kDWPlatformEncoding));
  data.majorVersion = kEffectMajorVersion;
  data.minorVersion = kEffectMinorVersion;
  data.inputOptions = kEffectInputOptions;
  data.styleOptions = kEffectStyleOptions;
  DWLiveEffectHandle effect = nullptr;
  if (DWErr result = gSuites.liveEffect->AddLiveEffect(&data, &effect)) return result;

  if (hostIsInteractive()) {
    if (DWErr result = addMenuEntries(effect, plugin)) return result;
  }

  gGlobals->effectHandle = effect;
  gGlobals->effectDefaults = makeEffectDefaults();
  return gSuites.styleConverter->RegisterStyleName(effect, kStyleConverterKinds, kStyleConverterOptions,
                                                   kStyleConverterName);
}

}  // namespace dw
