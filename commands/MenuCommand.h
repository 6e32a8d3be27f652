#pragma once
#include "host/messages.h"

namespace dw {

// Menu identities of the Rasterize command.
constexpr const char kRasterizeMenuGroup[] = "DWPlugin Object Raster";
constexpr const char kRasterizeMenuGroupNear[] = "Object Utilities";
constexpr const char kRasterizeMenuItem[] = "Rasterize 8 menu item";
constexpr uint32_t kRasterizeMenuItemOptions = 0x3C000000;

// At start-up on an interactive host: the menu group and item (enabled while any art is selected),
// the item's handle in PluginGlobals.rasterizeMenuItem and the command's default settings.
DWErr InstallRasterizeMenu(const MessageHeader& message);

// "DW Menu"/"DW Go": the Rasterize item runs the command after its options dialog; any other item
// runs the Document Raster Effects Settings command.
DWErr GoMenuItem(MenuMessage& message);

}  // namespace dw
