#include "shell/Interactive.h"

#include "shell/HostSuites.h"

namespace dw {

bool hostIsInteractive() { return gSuites.runtime && gSuites.runtime->IsInteractive() != 0; }

}  // namespace dw
