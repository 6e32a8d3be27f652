// "DW Draw Art Suite": draws one art object (its contents included) into a graphics-manager port.
#include "host/suites/draw_art_suite.h"
#include "refhost/document/Document.h"
#include "refhost/loader/HostCall.h"
#include "refhost/loader/SuiteProviders.h"
#include "refhost/render/DrawIntoPort.h"
#include "refhost/render/HostHandles.h"
#include "refhost/suites/LiveEffectResults.h"

#include <cmath>
#include <mutex>

namespace refhost {
namespace {

std::mutex& drawingMutex() {
  static std::mutex m;
  return m;
}

// The record's option word (`options`) carries the caller's reserved settings field; nothing
// in this host's drawing depends on it.
DWErr DrawArt(DWDrawRecord* record, const int32_t* options) {
  REFHOST_CALL(kDWDrawArtSuite, "DrawArt");
  if (!record || record->output != kDWDrawToPort) return kHostBadParameter;
  render::Port* port = render::portOf(record->port);
  Document* doc = Host::current().document();
  Art* art = doc ? doc->liveArt(record->art) : nullptr;
  if (!port || !art) return kHostBadParameter;
  const DWRealMatrix& m = record->matrix;
  const double scale = std::sqrt(std::fabs(m.a * m.d - m.b * m.c));
  if (!(scale > 0.0) || !std::isfinite(scale)) return kHostBadParameter;
  const IntRect device{record->device.left, record->device.top, record->device.right, record->device.bottom};
  return guarded([&] {
    // Made before the drawing lock is taken: making a result draws its copy.
    const LiveEffectResults effects(*art);
    if (effects.error()) return effects.error();
    std::lock_guard<std::mutex> lock(drawingMutex());
    render::drawIntoPort(render::sharedRenderer(), *port, *art, Point{record->origin.h, record->origin.v}, scale, device);
    return kDWNoErr;
  });
}

DWErr FinishDrawing(DWDrawRecord* record, int32_t* options) {
  REFHOST_CALL(kDWDrawArtSuite, "FinishDrawing");
  if (!record) return kHostBadParameter;
  render::Port* port = render::portOf(record->port);
  if (!port) return kHostBadParameter;
  port->finishDrawing();
  return kDWNoErr;
}

const DWDrawArtSuite kSuite = {DrawArt, FinishDrawing};
REFHOST_REGISTER_SUITE(kDWDrawArtSuite, kDWDrawArtSuiteVersion, kSuite);

}  // namespace
}  // namespace refhost
