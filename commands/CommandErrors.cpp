#include "commands/CommandErrors.h"

#include "shell/ErrorCodes.h"
#include "shell/HostString.h"
#include "shell/HostSuites.h"
#include "shell/Strings.h"

namespace dw {

const char* commandErrorMessage(DWErr code) {
  switch (code) {
    case kDWNoErr:
    case UserCancelled: return nullptr;
    case InvalidSelectionError: return strings::ErrorSelection;
    case OutOfMemoryError: return strings::ErrorMemory;
    case MaskMemoryError: return strings::ErrorMemoryMask;
    case LockedLayerError: return strings::ErrorUntouchable;
    case TooWideError: return strings::ErrorTooWide;
    default: return strings::ErrorUnknown;
  }
}

void showCommandError(DWErr code) {
  const char* message = commandErrorMessage(code);
  if (!message || !gSuites.user) return;
  const HostString text(message);
  if (!text.empty()) gSuites.user->ErrorAlert(text.handle());
}

}  // namespace dw
