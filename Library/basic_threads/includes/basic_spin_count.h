#pragma once

#include <cstdint>

namespace basic {

// The spin every semaphore of the library and the engine is built with: 1024 when the process can
// run on more than one processor, 0 when it is confined to one (spinning there only burns the
// time slice of the thread that would post).
//
// A function rather than a variable so that it is ready for any static initialiser in any
// translation unit: it is computed on first use and never changes afterwards. The library also
// calls it during its own static initialisation, so it is fixed before main in every process.
std::uint32_t spin_count();

}  // namespace basic
