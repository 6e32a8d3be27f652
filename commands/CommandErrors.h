#pragma once
#include "host/types.h"

namespace dw {

// The localisable message of the Rasterize command for an error code: its own codes have their own
// message, any other non-zero code the general one. Null for 0 and for a cancel, which show nothing.
const char* commandErrorMessage(DWErr code);

// Shows the message of a code as an error alert, unless there is none or its localised text is empty.
void showCommandError(DWErr code);

}  // namespace dw
