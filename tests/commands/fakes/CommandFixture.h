#pragma once
#include "commands/RasterizeSelection.h"
#include "fakes/CommandsTestSupport.h"
#include "settings/RasterizeSettings.h"

namespace fake {

// The Rasterize command's surroundings: default command settings, its menu item, the engine
// stand-in, and a menu message to run it with.
class CommandFixture : public CommandsTest {
 protected:
  CommandFixture() {
    globals.commandSettings = dw::makeCommandDefaults();
    globals.rasterizeMenuItem = reinterpret_cast<DWMenuItemHandle>(&menuItem);
    globals.settingsMenuItem = reinterpret_cast<DWMenuItemHandle>(&settingsItem);
    art.installEngine(globals);
    message.menuItem = globals.rasterizeMenuItem;
  }

  DWErr run() { return dw::RasterizeSelection(message.d); }

  int menuItem = 0;
  int settingsItem = 0;
  MenuMessage message{};
};

}  // namespace fake
