#pragma once

namespace fake {

// Fills dw::gSuites with the fake art host's suites other than art, art set and layers.
void installArtSuites();

}  // namespace fake
