#include "shell/HostSuites.h"

#include "shell/ErrorCodes.h"

namespace dw {

namespace {

template <typename Suite>
const void** slot(const Suite*& pointer) {
  return reinterpret_cast<const void**>(&pointer);
}

// Acquisition order matters to the host only in that a missing suite stops the run at its row.
const SuiteEntry kRequiredSuites[] = {
    {kDWFOConversionSuite, kDWFOConversionSuiteVersion, slot(gSuites.foConversion)},
    {kDWPathfinderSuite, kDWPathfinderSuiteVersion, slot(gSuites.pathfinder)},
    {kDWGraphicsManagerSuite, kDWGraphicsManagerSuiteVersion, slot(gSuites.graphicsManager)},
    {kDWArtSuite, kDWArtSuiteVersion, slot(gSuites.art)},
    {kDWArtboardSuite, kDWArtboardSuiteVersion, slot(gSuites.artboard)},
    {kDWArtSetSuite, kDWArtSetSuiteVersion, slot(gSuites.artSet)},
    {kDWArtStyleSuite, kDWArtStyleSuiteVersion, slot(gSuites.artStyle)},
    {kDWArtStyleParserSuite, kDWArtStyleParserSuiteVersion, slot(gSuites.artStyleParser)},
    {kDWBlockSuite, kDWBlockSuiteVersion, slot(gSuites.block)},
    {kDWBlendStyleSuite, kDWBlendStyleSuiteVersion, slot(gSuites.blendStyle)},
    {kDWColorSpaceSuite, kDWColorSpaceSuiteVersion, slot(gSuites.colorSpace)},
    {kDWCustomColorSuite, kDWCustomColorSuiteVersion, slot(gSuites.customColor)},
    {kDWDictionarySuite, kDWDictionarySuiteVersion, slot(gSuites.dictionary)},
    {kDWDocumentSuite, kDWDocumentSuiteVersion, slot(gSuites.document)},
    {kDWDrawArtSuite, kDWDrawArtSuiteVersion, slot(gSuites.drawArt)},
    {kDWGroupSuite, kDWGroupSuiteVersion, slot(gSuites.group)},
    {kDWLayerSuite, kDWLayerSuiteVersion, slot(gSuites.layer)},
    {kDWLayerListSuite, kDWLayerListSuiteVersion, slot(gSuites.layerList)},
    {kDWLiveEffectSuite, kDWLiveEffectSuiteVersion, slot(gSuites.liveEffect)},
    {kDWMenuSuite, kDWMenuSuiteVersion, slot(gSuites.menu)},
    {kDWMeshSuite, kDWMeshSuiteVersion, slot(gSuites.mesh)},
    {kDWMeshSegmentSuite, kDWMeshSegmentSuiteVersion, slot(gSuites.meshSegment)},
    {kDWMeshVertexSuite, kDWMeshVertexSuiteVersion, slot(gSuites.meshVertex)},
    {kDWNotifierSuite, kDWNotifierSuiteVersion, slot(gSuites.notifier)},
    {kDWPathSuite, kDWPathSuiteVersion, slot(gSuites.path)},
    {kDWPathStyleSuite, kDWPathStyleSuiteVersion, slot(gSuites.pathStyle)},
    {kDWPatternSuite, kDWPatternSuiteVersion, slot(gSuites.pattern)},
    {kDWPlacedSuite, kDWPlacedSuiteVersion, slot(gSuites.placed)},
    {kDWPluginSuite, kDWPluginSuiteVersion, slot(gSuites.plugin)},
    {kDWPluginGroupSuite, kDWPluginGroupSuiteVersion, slot(gSuites.pluginGroup)},
    {kDWPreferenceSuite, kDWPreferenceSuiteVersion, slot(gSuites.preference)},
    {kDWRasterSuite, kDWRasterSuiteVersion, slot(gSuites.raster)},
    {kDWRealMathSuite, kDWRealMathSuiteVersion, slot(gSuites.realMath)},
    {kDWRuntimeSuite, kDWRuntimeSuiteVersion, slot(gSuites.runtime)},
    {kDWStyleConverterSuite, kDWStyleConverterSuiteVersion, slot(gSuites.styleConverter)},
    {kDWTextFrameSuite, kDWTextFrameSuiteVersion, slot(gSuites.textFrame)},
    {kDWUndoSuite, kDWUndoSuiteVersion, slot(gSuites.undo)},
    {kDWUnicodeStringSuite, kDWUnicodeStringSuiteVersion, slot(gSuites.unicodeString)},
    {kDWUserSuite, kDWUserSuiteVersion, slot(gSuites.user)},
    {kDWDevUtilsSuite, kDWDevUtilsSuiteVersion, slot(gSuites.devUtils)},
    {kDWSymbolSuite, kDWSymbolSuiteVersion, slot(gSuites.symbol)},
    {kDWDebugSuite, kDWDebugSuiteVersion, slot(gSuites.debug)},
    {kDWBlocksSuite, kDWBlocksSuiteVersion, slot(gSuites.blocks)},
    {kDWSuitesSuite, kDWSuitesSuiteVersion, slot(gSuites.suites)},
};

const SuiteEntry kOptionalSuites[] = {
    {kDWPerspectiveTransformSuite, kDWPerspectiveTransformSuiteVersion, slot(gSuites.perspectiveTransform)},
    {kDWUsageDataSuite, kDWUsageDataSuiteVersion, slot(gSuites.usageData)},
};

}  // namespace

SuiteTable requiredSuiteTable() { return {kRequiredSuites, sizeof kRequiredSuites / sizeof kRequiredSuites[0]}; }
SuiteTable optionalSuiteTable() { return {kOptionalSuites, sizeof kOptionalSuites / sizeof kOptionalSuites[0]}; }

const void* acquireSuite(const char* name, int32_t version) {
  if (!gSuites.basic) return nullptr;
  const void* suite = nullptr;
  if (gSuites.basic->AcquireSuite(name, version, &suite) != kDWNoErr) return nullptr;
  return suite;
}

void releaseSuite(const char* name, int32_t version) {
  if (gSuites.basic) gSuites.basic->ReleaseSuite(name, version);
}

void releaseSuiteTable(SuiteTable table) {
  for (size_t i = 0; i < table.count; ++i) {
    const SuiteEntry& row = table.rows[i];
    if (*row.pointer) {
      releaseSuite(row.name, row.version);
      *row.pointer = nullptr;
    }
  }
}

DWErr acquireSuiteTable(SuiteTable table) {
  for (size_t i = 0; i < table.count; ++i) {
    const SuiteEntry& row = table.rows[i];
    if (!*row.pointer) *row.pointer = acquireSuite(row.name, row.version);
    if (!*row.pointer) {
      // Rows held before this run are released too: the table is all or nothing.
      releaseSuiteTable(table);
      return SuiteMissingError;
    }
  }
  return kDWNoErr;
}

DWErr AcquireRequiredSuites() { return acquireSuiteTable(requiredSuiteTable()); }
DWErr AcquireOptionalSuites() { return acquireSuiteTable(optionalSuiteTable()); }
void ReleaseRequiredSuites() { releaseSuiteTable(requiredSuiteTable()); }
void ReleaseOptionalSuites() { releaseSuiteTable(optionalSuiteTable()); }

}  // namespace dw
