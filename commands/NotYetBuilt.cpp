// Handlers and suite functions whose rooms are not built yet. Each answers NotImplementedError, never
// a false success. Whoever implements one in its own file deletes its stub here.
#include "commands/RasterizeSuite.h"
#include "shell/ErrorCodes.h"

namespace dw {

DWErr RasterizeArt(DWArtSetHandle, RasterizeSettings*, const DWRealRect*, int32_t, DWArtHandle, DWArtHandle*,
                   DWRasterizeProgressProc) {
  return NotImplementedError;
}
DWErr RasterizeDocument(RasterizeSettings*, int32_t, DWArtHandle, DWArtHandle*, DWRasterizeProgressProc) {
  return NotImplementedError;
}
DWErr CanPreserveSpotColors(DWArtSetHandle, DWBool* canPreserve) {
  if (canPreserve) *canPreserve = 0;
  return NotImplementedError;
}

}  // namespace dw
