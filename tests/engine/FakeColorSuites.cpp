// Fake colour spaces with reference counts, so tests can tell that every space was released.
#include "tests/engine/FakeHostInternal.h"

namespace dw::fake::detail {

namespace {

Space* newSpace(int32_t family, bool alpha, int32_t channels, int32_t process) {
  std::lock_guard<std::mutex> lock(H().mutex);
  H().spaces.emplace_back();
  Space* s = &H().spaces.back();
  s->family = family;
  s->alpha = alpha;
  s->channels = channels + (alpha ? 1 : 0);
  s->processChannels = process;
  ++H().liveSpaces;
  return s;
}
void unref(Space* s) {
  if (--s->refs > 0) return;
  --H().liveSpaces;
  for (Space* part : s->parts) unref(part);
}
DWErr NewProcessColorSpace(int32_t family, DWBool alpha, DWColorSpaceHandle* space) {
  ENTER("NewProcessColorSpace");
  const int32_t channels = family == kDWGrayFamily ? 1 : family == kDWRGBFamily ? 3 : 4;
  *space = handleOf(newSpace(family, alpha != 0, channels, channels));
  return 0;
}
DWErr NewSpotColorSpace(DWCustomColorHandle spot, DWBool alpha, DWColorSpaceHandle* space) {
  ENTER("NewSpotColorSpace");
  Space* s = newSpace(kDWSpotFamily, alpha != 0, 1, 0);
  s->spot = spot;
  *space = handleOf(s);
  return 0;
}
DWErr NewProcessComponentColorSpace(int32_t component, DWColorSpaceHandle* space) {
  ENTER("NewProcessComponentColorSpace");
  *space = handleOf(newSpace(kDWCMYKFamily, false, 1, 1));
  return 0;
}
DWErr NewColorSpaceList(DWColorSpaceList* list) {
  ENTER("NewColorSpaceList");
  H().lists.emplace_back();
  ++H().liveLists;
  *list = reinterpret_cast<DWColorSpaceList>(&H().lists.back());
  return 0;
}
DWErr AddToList(DWColorSpaceList list, DWColorSpaceHandle part) {
  ENTER("AddToList");
  ++S(part)->refs;
  reinterpret_cast<std::vector<Space*>*>(list)->push_back(S(part));
  return 0;
}
DWErr NewColorSpaceFromList(DWColorSpaceList list, DWBool alpha, DWColorSpaceHandle* space) {
  ENTER("NewColorSpaceFromList");
  auto& parts = *reinterpret_cast<std::vector<Space*>*>(list);
  int32_t channels = 0, process = 0;
  for (Space* part : parts) {
    channels += part->channels;
    process += part->processChannels;
    ++part->refs;
  }
  Space* s = newSpace(kDWNChannelFamily, alpha != 0, channels, process);
  s->parts = parts;
  *space = handleOf(s);
  return 0;
}
DWErr DisposeList(DWColorSpaceList list) {
  const DWErr injected = H().enter("DisposeList");
  auto& parts = *reinterpret_cast<std::vector<Space*>*>(list);
  for (Space* part : parts) unref(part);
  parts.clear();
  --H().liveLists;
  return injected;
}
FAKE_GET(CountChannels, DWColorSpaceHandle, int32_t, S(h)->channels)
FAKE_GET(CountProcessChannels, DWColorSpaceHandle, int32_t, S(h)->processChannels)
DWErr GetNthPart(DWColorSpaceHandle space, int32_t index, DWColorSpaceHandle* part) {
  ENTER("GetNthPart");
  Space* s = S(space);
  if (s->parts.empty()) {
    if (index != 0) return kFakeError;
    *part = space;
    return 0;
  }
  if (index < 0 || size_t(index) >= s->parts.size()) return kFakeError;
  *part = handleOf(s->parts[size_t(index)]);
  return 0;
}
FAKE_GET(GetFamily, DWColorSpaceHandle, int32_t, S(h)->family)
// Releases and disposals do their bookkeeping even when they report a failure: the plug-in asked.
DWErr ReleaseSpace(DWColorSpaceHandle space) {
  const DWErr injected = H().enter("ReleaseColorSpace");
  std::lock_guard<std::mutex> lock(H().mutex);
  unref(S(space));
  return injected;
}

}  // namespace

const DWColorSpaceSuite kColorSpace = {NewProcessColorSpace,  NewSpotColorSpace, NewProcessComponentColorSpace,
                                       NewColorSpaceList,     AddToList,         NewColorSpaceFromList,
                                       DisposeList,           CountChannels,     CountProcessChannels,
                                       GetNthPart,            GetFamily,         ReleaseSpace};

}  // namespace dw::fake::detail
