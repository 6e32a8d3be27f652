#include "refhost/cli/WholeDocument.h"

#include <string>

#include "host/suites/rasterize_suite.h"
#include "refhost/cli/Tool.h"
#include "refhost/document/Document.h"
#include "refhost/loader/Host.h"

namespace refhost {
namespace cli {

DWErr rasterizeWholeDocument(Host& host, RasterizeSettings settings, Art** raster) {
  *raster = nullptr;
  const void* table = nullptr;
  if (const DWErr error = host.acquireSuite(kDWRasterizeSuite, kDWRasterizeSuiteVersion, &table))
    throw ToolError(std::string("the plug-in offers no \"") + kDWRasterizeSuite + "\": " + describeCode(error));
  const auto* suite = static_cast<const DWRasterizeSuite*>(table);
  DWArtHandle made = nullptr;
  const DWErr result =
      suite->RasterizeDocument(&settings, int32_t(PaintOrder::AboveAll), nullptr, &made, nullptr);
  host.releaseSuite(kDWRasterizeSuite, kDWRasterizeSuiteVersion);
  if (result != kDWNoErr) return result;
  *raster = host.document() ? host.document()->liveArt(made) : nullptr;
  if (!*raster) throw ToolError("the plug-in reported success but made no raster art");
  return result;
}

}  // namespace cli
}  // namespace refhost
