#pragma once
// Choosing one of the plug-in's menu items, as a user of a graphical host would.
#include "host/types.h"

namespace refhost {
class Host;

namespace cli {

// The names the plug-in gives its menu items.
constexpr const char kRasterizeMenuItem[] = "Rasterize 8 menu item";
constexpr const char kDocumentSettingsMenuItem[] = "Live Rasterize Effect Setting";

// Delivers "DW Menu"/"DW Go" for the item named `name` and returns the plug-in's code. Throws
// ToolError when no such item is installed (the plug-in installs no menus with --non-interactive).
DWErr runMenuCommand(Host& host, const char* name);

}  // namespace cli
}  // namespace refhost
