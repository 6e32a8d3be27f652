#include "refhost/cli/MenuCommand.h"

#include <string>

#include "refhost/cli/Tool.h"
#include "refhost/loader/Host.h"

namespace refhost {
namespace cli {

DWErr runMenuCommand(Host& host, const char* name) {
  for (const MenuItemRecord* item : host.registrations().menuItems())
    if (item->name == name) return host.chooseMenuItem(*item);
  throw ToolError(std::string("the plug-in installed no menu item \"") + name + "\"" +
                  (host.controls().interactive ? "" : " (menus need a host with a user interface: drop --non-interactive)"));
}

}  // namespace cli
}  // namespace refhost
