#include "ClientSuites.h"

#include <cstddef>

namespace client {

Suites gSuites;

namespace {

struct SuiteRow {
  const char* name;
  int32_t version;
  const void** pointer;
};

template <typename Suite>
const void** slot(const Suite*& pointer) {
  return reinterpret_cast<const void**>(&pointer);
}

const SuiteRow kRows[] = {
    {kDWArtSetSuite, kDWArtSetSuiteVersion, slot(gSuites.artSet)},
    {kDWArtSuite, kDWArtSuiteVersion, slot(gSuites.art)},
    {kDWLayerSuite, kDWLayerSuiteVersion, slot(gSuites.layer)},
    {kDWRasterSuite, kDWRasterSuiteVersion, slot(gSuites.raster)},
    {kDWMenuSuite, kDWMenuSuiteVersion, slot(gSuites.menu)},
    {kDWDevUtilsSuite, kDWDevUtilsSuiteVersion, slot(gSuites.devUtils)},
    {kDWUserSuite, kDWUserSuiteVersion, slot(gSuites.user)},
    {kDWUnicodeStringSuite, kDWUnicodeStringSuiteVersion, slot(gSuites.strings)},
};

}  // namespace

DWErr acquireHostSuites() {
  for (const SuiteRow& row : kRows) {
    if (*row.pointer) continue;
    if (gSuites.basic->AcquireSuite(row.name, row.version, row.pointer) != kDWNoErr || !*row.pointer) {
      *row.pointer = nullptr;
      releaseHostSuites();
      return kSuiteMissing;
    }
  }
  return kDWNoErr;
}

void releaseHostSuites() {
  for (const SuiteRow& row : kRows) {
    if (!*row.pointer) continue;
    gSuites.basic->ReleaseSuite(row.name, row.version);
    *row.pointer = nullptr;
  }
}

const DWRasterizeSuite* rasterizeSuite() {
  if (!gSuites.rasterize) {
    const void* table = nullptr;
    if (gSuites.basic->AcquireSuite(kDWRasterizeSuite, kDWRasterizeSuiteVersion, &table) == kDWNoErr)
      gSuites.rasterize = static_cast<const DWRasterizeSuite*>(table);
  }
  return gSuites.rasterize;
}

void releaseRasterizeSuite() {
  if (!gSuites.rasterize) return;
  gSuites.basic->ReleaseSuite(kDWRasterizeSuite, kDWRasterizeSuiteVersion);
  gSuites.rasterize = nullptr;
}

}  // namespace client
