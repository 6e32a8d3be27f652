// "Corvel Graphics Manager Suite": off-screen ports over caller memory, path objects and the
// device set-up of a drawing session (docs/host.md, "Drawing").
#include "host/suites/graphics_manager_suite.h"
#include "refhost/loader/HostCall.h"
#include "refhost/loader/SuiteProviders.h"
#include "refhost/render/HostHandles.h"

namespace refhost {
namespace {

using render::ColorSpace;
using render::PathObject;
using render::Port;

DWErr NewPortColorSpace(DWColorSpaceHandle space, int32_t flags, DWPortColorSpace* portSpace) {
  REFHOST_CALL(kDWGraphicsManagerSuite, "NewPortColorSpace");
  if (!portSpace) return kHostBadParameter;
  *portSpace = nullptr;
  ColorSpace::Ptr cs = render::colorSpaceOf(space);
  if (!cs) return kHostBadParameter;
  // flags: -1 asks for the defaults, which are the only port colour spaces this host makes.
  return guarded([&] {
    *portSpace = render::newPortColorSpaceHandle(std::move(cs));
    return kDWNoErr;
  });
}

DWErr NewOffscreenPort(const DWIntRect* bounds, int32_t rowBytes, void* buffer, DWPortColorSpace space,
                       int32_t bitsPerPixel, int32_t options, DWPort* port) {
  REFHOST_CALL(kDWGraphicsManagerSuite, "NewOffscreenPort");
  if (!port) return kHostBadParameter;
  *port = nullptr;
  ColorSpace::Ptr cs = render::portColorSpaceOf(space);
  if (!bounds || !cs) return kHostBadParameter;
  const IntRect r{bounds->left, bounds->top, bounds->right, bounds->bottom};
  if (!Port::validate(r, rowBytes, buffer, *cs, bitsPerPixel).empty()) return kHostBadParameter;
  return guarded([&] {
    *port = render::newPortHandle(
        std::make_unique<Port>(r, rowBytes, buffer, std::move(cs), bitsPerPixel, static_cast<uint32_t>(options)));
    return kDWNoErr;
  });
}

DWErr DisposePort(DWPort port) {
  REFHOST_CALL(kDWGraphicsManagerSuite, "DisposePort");
  return render::disposePortHandle(port) ? kDWNoErr : kHostBadParameter;
}

DWErr ReleaseObject(void* object) {
  REFHOST_CALL(kDWGraphicsManagerSuite, "ReleaseObject");
  return render::releaseGraphicsObject(object) ? kDWNoErr : kHostBadParameter;
}

DWErr PortOptions(DWPort port, int32_t direction, uint32_t* flags) {
  REFHOST_CALL(kDWGraphicsManagerSuite, "PortOptions");
  Port* p = render::portOf(port);
  if (!p || !flags) return kHostBadParameter;
  if (direction == kDWPortOptionsGet) {
    *flags = p->options();
    return kDWNoErr;
  }
  if (direction != kDWPortOptionsSet) return kHostBadParameter;
  p->setOptions(*flags);
  return kDWNoErr;
}

DWErr BeginDrawing(DWPort port, const DWIntRect* device, DWGraphicsObject clip, int32_t mode, uint32_t groupBlend) {
  REFHOST_CALL(kDWGraphicsManagerSuite, "BeginDrawing");
  Port* p = render::portOf(port);
  if (!p || !device || (mode != 0 && mode != 1)) return kHostBadParameter;
  const PathObject* path = nullptr;
  if (clip && !(path = render::pathObjectOf(clip))) return kHostBadParameter;
  // Only normal blending exists here, so an isolated group composites exactly like its members
  // drawn one by one; groupBlend needs no layer of its own.
  return p->beginDrawing(IntRect{device->left, device->top, device->right, device->bottom}, path, mode, groupBlend)
             ? kDWNoErr
             : kHostBadParameter;
}

DWErr NewObject(int32_t kind, DWGraphicsObject* object) {
  REFHOST_CALL(kDWGraphicsManagerSuite, "NewObject");
  if (!object) return kHostBadParameter;
  *object = nullptr;
  if (kind != kDWPathObject) return kHostBadParameter;
  return guarded([&] {
    *object = render::newPathObjectHandle();
    return kDWNoErr;
  });
}

template <typename Op>
DWErr onPath(DWGraphicsObject path, Op op) {
  PathObject* p = render::pathObjectOf(path);
  if (!p) return kHostBadParameter;
  return guarded([&] {
    op(*p);
    return kDWNoErr;
  });
}

DWErr MoveTo(DWGraphicsObject path, float x, float y) {
  REFHOST_CALL(kDWGraphicsManagerSuite, "MoveTo");
  return onPath(path, [&](PathObject& p) { p.moveTo(x, y); });
}

DWErr LineTo(DWGraphicsObject path, float x, float y) {
  REFHOST_CALL(kDWGraphicsManagerSuite, "LineTo");
  return onPath(path, [&](PathObject& p) { p.lineTo(x, y); });
}

DWErr ClosePath(DWGraphicsObject path) {
  REFHOST_CALL(kDWGraphicsManagerSuite, "ClosePath");
  return onPath(path, [](PathObject& p) { p.close(); });
}

// The device set-up operations act on the state of a drawing session, so they need one.
Port* drawingPort(DWPort port) {
  Port* p = render::portOf(port);
  return p && p->drawing() ? p : nullptr;
}

DWErr SaveState(DWPort port) {
  REFHOST_CALL(kDWGraphicsManagerSuite, "SaveState");
  Port* p = drawingPort(port);
  if (!p) return kHostBadParameter;
  p->saveState();
  return kDWNoErr;
}

DWErr UseDeviceSpace(DWPort port) {
  REFHOST_CALL(kDWGraphicsManagerSuite, "UseDeviceSpace");
  Port* p = drawingPort(port);
  if (!p) return kHostBadParameter;
  p->useDeviceSpace();
  return kDWNoErr;
}

DWErr ClipToObject(DWPort port, DWGraphicsObject path, int32_t* clipDepth) {
  REFHOST_CALL(kDWGraphicsManagerSuite, "ClipToObject");
  Port* p = drawingPort(port);
  const PathObject* object = render::pathObjectOf(path);
  if (!p || !object) return kHostBadParameter;
  return guarded([&] {
    const int depth = p->clipToObject(*object);
    if (clipDepth) *clipDepth = depth;
    return kDWNoErr;
  });
}

DWErr ResetPaint(DWPort port) {
  REFHOST_CALL(kDWGraphicsManagerSuite, "ResetPaint");
  Port* p = drawingPort(port);
  if (!p) return kHostBadParameter;
  p->resetPaint();
  return kDWNoErr;
}

DWErr UseUserSpace(DWPort port) {
  REFHOST_CALL(kDWGraphicsManagerSuite, "UseUserSpace");
  Port* p = drawingPort(port);
  if (!p) return kHostBadParameter;
  p->useUserSpace();
  return kDWNoErr;
}

const DWGraphicsManagerSuite kSuite = {NewPortColorSpace, NewOffscreenPort, DisposePort, ReleaseObject, PortOptions,
                                       BeginDrawing,      NewObject,        MoveTo,      LineTo,        ClosePath,
                                       SaveState,         UseDeviceSpace,   ClipToObject, ResetPaint,   UseUserSpace};
REFHOST_REGISTER_SUITE(kDWGraphicsManagerSuite, kDWGraphicsManagerSuiteVersion, kSuite);

}  // namespace
}  // namespace refhost
