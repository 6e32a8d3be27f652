#pragma once
#include "host/types.h"
#include "shell/FourCharCode.h"

namespace dw {

// Every code the plug-in itself produces. Host codes pass through unchanged.
constexpr DWErr NoError = 0;
constexpr DWErr SuiteMissingError = fourCharError("S!Fd");
constexpr DWErr InvalidSelectionError = fourCharError("!sel");
constexpr DWErr OutOfMemoryError = fourCharError("!MEM");
constexpr DWErr MaskMemoryError = fourCharError("!Mmk");
constexpr DWErr LockedLayerError = fourCharError("NESS");
constexpr DWErr TooWideError = fourCharError("R2Wd");
constexpr DWErr UserCancelled = fourCharError("STOP");
constexpr DWErr InvalidValueError = fourCharError("!VAL");
constexpr DWErr BadParameterError = fourCharError("PARM");
constexpr DWErr CannotError = fourCharError("CANT");
constexpr DWErr UnsupportedResampleError = fourCharError("!IMP");
// Handlers whose work has not been built yet answer this instead of a false success.
constexpr DWErr NotImplementedError = fourCharError("NIMP");

static_assert(SuiteMissingError == 0x53214664, "S!Fd");
static_assert(OutOfMemoryError == 0x214D454D, "!MEM");
static_assert(UnsupportedResampleError == 0x21494D50, "!IMP");

}  // namespace dw
