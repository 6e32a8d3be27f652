#include <new>

#include "commands/RasterizeSuite.h"
#include "shell/Error.h"
#include "shell/ErrorCodes.h"
#include "shell/HostSuites.h"
#include "shell/PluginGlobals.h"

namespace dw {

namespace {

// Other plug-ins call these through plain C pointers: nothing may be thrown across.
template <auto function>
struct Boundary;

template <typename... Args, DWErr (*function)(Args...)>
struct Boundary<function> {
  static DWErr call(Args... args) noexcept {
    try {
      return function(args...);
    } catch (const Error& error) {
      return error.code;
    } catch (const std::bad_alloc&) {
      return OutOfMemoryError;
    } catch (...) {
      return CannotError;
    }
  }
};

}  // namespace

void fillRasterizeSuite(DWRasterizeSuite& table) {
  table.GetArtBounds = Boundary<GetArtBounds>::call;
  table.RasterizeArt = Boundary<RasterizeArt>::call;
  table.CreateClippingMask = Boundary<CreateClippingMask>::call;
  table.RasterizeArtWithPadding = Boundary<RasterizeArtWithPadding>::call;
  table.RasterizeDocument = Boundary<RasterizeDocument>::call;
  table.ResampleRasterArt = Boundary<resampleRasterArt>::call;
  table.CanPreserveSpotColors = Boundary<CanPreserveSpotColors>::call;
}

void clearRasterizeSuite(DWRasterizeSuite& table) { table = DWRasterizeSuite{}; }

DWErr AddRasterizeSuite(const MessageHeader& message) {
  if (!gGlobals) return OutOfMemoryError;
  fillRasterizeSuite(gGlobals->rasterizeSuite);
  DWSuiteRef added = nullptr;
  return gSuites.suites->AddSuite(0, gGlobals->pluginRef, kDWRasterizeSuite, kDWRasterizeSuiteVersion,
                                  kDWRasterizeSuiteInternalVersion, &gGlobals->rasterizeSuite, &added);
}

}  // namespace dw
