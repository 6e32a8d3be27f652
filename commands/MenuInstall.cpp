#include "commands/MenuCommand.h"
#include "settings/RasterizeSettings.h"
#include "shell/ErrorCodes.h"
#include "shell/HostSuites.h"
#include "shell/PluginGlobals.h"
#include "shell/Strings.h"

namespace dw {

DWErr InstallRasterizeMenu(const MessageHeader& message) {
  if (!gGlobals) return OutOfMemoryError;
  const DWMenuSuite& menu = *gSuites.menu;

  if (DWErr result = menu.AddMenuGroup(kRasterizeMenuGroup, 0, kRasterizeMenuGroupNear, nullptr)) return result;

  const DWMenuItemData data = {kRasterizeMenuGroup, strings::MenuItemName};
  DWMenuItemHandle item = nullptr;
  if (DWErr result =
          menu.AddMenuItem(gGlobals->pluginRef, kRasterizeMenuItem, &data, kRasterizeMenuItemOptions, &item))
    return result;
  // Enabled whenever art of any kind is selected (the third mask).
  if (DWErr result = menu.UpdateMenuItemAutomatically(item, 1, 0, 0, 0xFFFFFFFFu, 0, 0, 0)) return result;

  gGlobals->rasterizeMenuItem = item;
  const RasterizeSettings& kept = gGlobals->commandSettings;
  gGlobals->commandSettings = makeCommandDefaults(kept.reserved, kept.forEffect);
  return kDWNoErr;
}

}  // namespace dw
