#pragma once

namespace dw {

// The host's answer to whether it runs with a user interface (menus, actions, dialogs). Asked anew
// at each use; a host whose runtime suite is not held counts as not interactive.
bool hostIsInteractive();

}  // namespace dw
