// "DW Color Space Suite": process, single-spot, one-component and part-built colour spaces.
#include "host/suites/color_space_suite.h"
#include "refhost/document/Document.h"
#include "refhost/loader/HostCall.h"
#include "refhost/loader/SuiteProviders.h"
#include "refhost/render/HostHandles.h"

namespace refhost {
namespace {

using render::ColorSpace;
using render::Family;

DWErr hand(ColorSpace::Ptr space, DWColorSpaceHandle* out) {
  *out = render::newColorSpaceHandle(std::move(space));
  return kDWNoErr;
}

DWErr NewProcessColorSpace(int32_t family, DWBool alpha, DWColorSpaceHandle* space) {
  REFHOST_CALL(kDWColorSpaceSuite, "NewProcessColorSpace");
  if (!space) return kHostBadParameter;
  *space = nullptr;
  if (family != kDWGrayFamily && family != kDWRGBFamily && family != kDWCMYKFamily) return kHostBadParameter;
  return guarded([&] { return hand(ColorSpace::process(static_cast<Family>(family), alpha != 0), space); });
}

DWErr NewSpotColorSpace(DWCustomColorHandle spot, DWBool alpha, DWColorSpaceHandle* space) {
  REFHOST_CALL(kDWColorSpaceSuite, "NewSpotColorSpace");
  if (!space) return kHostBadParameter;
  *space = nullptr;
  const Document* doc = Host::current().document();
  const CustomColorId id = render::customColorId(spot);
  if (!doc || !doc->customColor(id)) return kHostBadParameter;
  return guarded([&] { return hand(ColorSpace::spot(id, alpha != 0), space); });
}

DWErr NewProcessComponentColorSpace(int32_t component, DWColorSpaceHandle* space) {
  REFHOST_CALL(kDWColorSpaceSuite, "NewProcessComponentColorSpace");
  if (!space) return kHostBadParameter;
  *space = nullptr;
  if (component < 0 || component > 3) return kHostBadParameter;
  return guarded([&] { return hand(ColorSpace::processComponent(component), space); });
}

DWErr NewColorSpaceList(DWColorSpaceList* list) {
  REFHOST_CALL(kDWColorSpaceSuite, "NewColorSpaceList");
  if (!list) return kHostBadParameter;
  return guarded([&] {
    *list = render::newColorSpaceList();
    return kDWNoErr;
  });
}

DWErr AddToList(DWColorSpaceList list, DWColorSpaceHandle part) {
  REFHOST_CALL(kDWColorSpaceSuite, "AddToList");
  ColorSpace::Ptr space = render::colorSpaceOf(part);
  // A part brings channels, never an alpha of its own.
  if (!space || space->hasAlpha()) return kHostBadParameter;
  return render::addToColorSpaceList(list, std::move(space)) ? kDWNoErr : kHostBadParameter;
}

DWErr NewColorSpaceFromList(DWColorSpaceList list, DWBool alpha, DWColorSpaceHandle* space) {
  REFHOST_CALL(kDWColorSpaceSuite, "NewColorSpaceFromList");
  if (!space) return kHostBadParameter;
  *space = nullptr;
  std::vector<ColorSpace::Ptr> parts;
  if (!render::colorSpaceListParts(list, &parts) || parts.empty()) return kHostBadParameter;
  return guarded([&] { return hand(ColorSpace::fromParts(std::move(parts), alpha != 0), space); });
}

DWErr DisposeList(DWColorSpaceList list) {
  REFHOST_CALL(kDWColorSpaceSuite, "DisposeList");
  return render::disposeColorSpaceList(list) ? kDWNoErr : kHostBadParameter;
}

DWErr CountChannels(DWColorSpaceHandle handle, int32_t* count) {
  REFHOST_CALL(kDWColorSpaceSuite, "CountChannels");
  const ColorSpace::Ptr space = render::colorSpaceOf(handle);
  if (!space || !count) return kHostBadParameter;
  *count = space->channelCount();
  return kDWNoErr;
}

DWErr CountProcessChannels(DWColorSpaceHandle handle, int32_t* count) {
  REFHOST_CALL(kDWColorSpaceSuite, "CountProcessChannels");
  const ColorSpace::Ptr space = render::colorSpaceOf(handle);
  if (!space || !count) return kHostBadParameter;
  *count = space->processChannelCount();
  return kDWNoErr;
}

DWErr GetNthPart(DWColorSpaceHandle handle, int32_t index, DWColorSpaceHandle* part) {
  REFHOST_CALL(kDWColorSpaceSuite, "GetNthPart");
  if (!part) return kHostBadParameter;
  *part = nullptr;
  return guarded([&] {
    *part = render::colorSpacePartHandle(handle, index);
    return *part ? kDWNoErr : kHostBadParameter;
  });
}

DWErr GetFamily(DWColorSpaceHandle handle, int32_t* family) {
  REFHOST_CALL(kDWColorSpaceSuite, "GetFamily");
  const ColorSpace::Ptr space = render::colorSpaceOf(handle);
  if (!space || !family) return kHostBadParameter;
  *family = static_cast<int32_t>(space->family());
  return kDWNoErr;
}

DWErr Release(DWColorSpaceHandle handle) {
  REFHOST_CALL(kDWColorSpaceSuite, "Release");
  return render::releaseColorSpaceHandle(handle) ? kDWNoErr : kHostBadParameter;
}

const DWColorSpaceSuite kSuite = {NewProcessColorSpace, NewSpotColorSpace, NewProcessComponentColorSpace,
                                  NewColorSpaceList,    AddToList,         NewColorSpaceFromList,
                                  DisposeList,          CountChannels,     CountProcessChannels,
                                  GetNthPart,           GetFamily,         Release};
REFHOST_REGISTER_SUITE(kDWColorSpaceSuite, kDWColorSpaceSuiteVersion, kSuite);

}  // namespace
}  // namespace refhost
