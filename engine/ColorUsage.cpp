#include "engine/ColorUsage.h"

#include "shell/HostSuites.h"

namespace dw {

namespace {

constexpr int16_t kPathArt = kDWPathArt;
// Hidden art is skipped: it is not drawn, so its colours must not shape the raster.
constexpr uint32_t kSkippedAttribute = 0x4;

struct VisitContext {
  ColorUsage* usage;
  bool failed;
};

void visitColor(int32_t kind, const DWColorUse* use, void* context) {
  auto& visit = *static_cast<VisitContext*>(context);
  ColorUsage& usage = *visit.usage;
  if (!use || visit.failed) return;
  switch (kind) {
    case kDWUsesGray:
      if (use->values[0] != 0) usage.kind1Seen = true;
      break;
    case kDWUsesFullProcess:
      if (use->values[0] != 0) usage.fullProcess = true;
      break;
    case kDWUsesProcessInks:
      if (usage.processMask != 0xF)
        for (uint32_t k = 0; k < 4; ++k)
          if (use->values[k] != 0) usage.processMask |= 1u << k;
      break;
    case kDWUsesRaster:
      if (use->values[0] != 0) usage.rasterFlag = true;
      break;
    case kDWUsesSpot:
      // The host calls back through C: nothing may escape from here.
      try {
        usage.spotColors.insert(use->spot);
        usage.spotCount = int32_t(usage.spotColors.size());
      } catch (...) {
        visit.failed = true;
      }
      break;
    default:
      break;
  }
}

}  // namespace

void surveyColorUsage(DWArtSetHandle artSet, ColorUsage& usage) {
  usage.artSet = artSet;
  const HostSuites& s = gSuites;
  if (!artSet || !s.artSet || !s.art || !s.path || !s.foConversion) return;
  int32_t count = 0;
  if (s.artSet->CountArtSet(artSet, &count) != kDWNoErr) return;
  VisitContext context{&usage, false};
  for (int32_t i = 0; i < count; ++i) {
    DWArtHandle art = nullptr;
    if (s.artSet->IndexArtSet(artSet, i, &art) != kDWNoErr) return;
    int16_t kind = 0;
    if (s.art->GetArtType(art, &kind) != kDWNoErr) return;
    if (kind == kPathArt) {
      DWBool guide = 0;
      if (s.path->GetPathIsGuide(art, &guide) != kDWNoErr) return;
      if (guide) continue;
    }
    uint32_t attributes = 0;
    if (s.art->GetArtUserAttr(art, kSkippedAttribute, &attributes) != kDWNoErr) return;
    if (attributes & kSkippedAttribute) continue;
    if (s.foConversion->VisitColors(art, visitColor, &context) != kDWNoErr || context.failed) return;
  }
}

bool needsFullProcess(const ColorUsage& usage, int32_t familyCode) {
  if (!usage.fullProcess) return false;
  return familyCode == kDWCMYKFamily ? usage.processMask == 0xF : usage.processMask != 0;
}

int32_t processChannelCount(const ColorUsage& usage, int32_t familyCode) {
  if (needsFullProcess(usage, familyCode)) {
    switch (familyCode) {
      case kDWGrayFamily: return 1;
      case kDWRGBFamily: return 3;
      case kDWCMYKFamily: return 4;
      default: return 0;
    }
  }
  int32_t count = 0;
  for (uint32_t k = 0; k < 4; ++k)
    if (usage.processMask & (1u << k)) ++count;
  return count;
}

DWCustomColorHandle singleSpotColor(const ColorUsage& usage) {
  if (usage.fullProcess || usage.spotCount != 1 || usage.spotColors.empty()) return nullptr;
  return *usage.spotColors.begin();
}

}  // namespace dw
