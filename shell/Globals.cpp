#include "shell/HostSuites.h"
#include "shell/PluginGlobals.h"

namespace dw {
HostSuites gSuites;
PluginGlobals* gGlobals = nullptr;
}  // namespace dw
