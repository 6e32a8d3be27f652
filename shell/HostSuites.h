#pragma once
#include <cstddef>

#include "host/all_suites.h"

namespace dw {

// Process-wide pointers to the host's suites, each null while not held. Worker threads read
// them but never acquire or release.
struct HostSuites {
  // Replaced at every call of PluginMain.
  const DWBasicSuite* basic = nullptr;

  // Required suites, acquired together at start-up (and at reload after an unload).
  const DWFOConversionSuite* foConversion = nullptr;
  const DWPathfinderSuite* pathfinder = nullptr;
  const DWGraphicsManagerSuite* graphicsManager = nullptr;
  const DWArtSuite* art = nullptr;
  const DWArtboardSuite* artboard = nullptr;
  const DWArtSetSuite* artSet = nullptr;
  const DWArtStyleSuite* artStyle = nullptr;
  const DWArtStyleParserSuite* artStyleParser = nullptr;
  const DWBlockSuite* block = nullptr;
  const DWBlendStyleSuite* blendStyle = nullptr;
  const DWColorSpaceSuite* colorSpace = nullptr;
  const DWCustomColorSuite* customColor = nullptr;
  const DWDictionarySuite* dictionary = nullptr;
  const DWDocumentSuite* document = nullptr;
  const DWDrawArtSuite* drawArt = nullptr;
  const DWGroupSuite* group = nullptr;
  const DWLayerSuite* layer = nullptr;
  const DWLayerListSuite* layerList = nullptr;
  const DWLiveEffectSuite* liveEffect = nullptr;
  const DWMenuSuite* menu = nullptr;
  const DWMeshSuite* mesh = nullptr;
  const DWMeshSegmentSuite* meshSegment = nullptr;
  const DWMeshVertexSuite* meshVertex = nullptr;
  const DWNotifierSuite* notifier = nullptr;
  const DWPathSuite* path = nullptr;
  const DWPathStyleSuite* pathStyle = nullptr;
  const DWPatternSuite* pattern = nullptr;
  const DWPlacedSuite* placed = nullptr;
  const DWPluginSuite* plugin = nullptr;
  const DWPluginGroupSuite* pluginGroup = nullptr;
  const DWPreferenceSuite* preference = nullptr;
  const DWRasterSuite* raster = nullptr;
  const DWRealMathSuite* realMath = nullptr;
  const DWRuntimeSuite* runtime = nullptr;
  const DWStyleConverterSuite* styleConverter = nullptr;
  const DWTextFrameSuite* textFrame = nullptr;
  const DWUndoSuite* undo = nullptr;
  const DWUnicodeStringSuite* unicodeString = nullptr;
  const DWUserSuite* user = nullptr;
  const DWDevUtilsSuite* devUtils = nullptr;
  const DWSymbolSuite* symbol = nullptr;
  const DWDebugSuite* debug = nullptr;
  const DWBlocksSuite* blocks = nullptr;
  const DWSuitesSuite* suites = nullptr;

  // Optional suites: code that uses one tests its pointer first.
  const DWPerspectiveTransformSuite* perspectiveTransform = nullptr;
  const DWUsageDataSuite* usageData = nullptr;

  // Held from reload to unload (and again from start-up when interactive).
  const DWActionManagerSuite* actionManager = nullptr;
  // Acquired at its first use and then kept.
  const DWHVExtensionSuite* hvExtension = nullptr;
};

extern HostSuites gSuites;

// One row of a suite table: a suite's name and version and the pointer that receives it.
struct SuiteEntry {
  const char* name;
  int32_t version;
  const void** pointer;
};

// An ordered suite table: a missing row makes the whole table fail.
struct SuiteTable {
  const SuiteEntry* rows;
  size_t count;
};

// The 44 required suites in acquisition order, and the two optional ones.
SuiteTable requiredSuiteTable();
SuiteTable optionalSuiteTable();

// Acquires every row not yet held; on the first row the host cannot give, releases every held
// row of this table (not of the other) and answers SuiteMissingError.
DWErr acquireSuiteTable(SuiteTable table);
// Releases every held row, ignoring release errors.
void releaseSuiteTable(SuiteTable table);

// Acquires one suite through the current basic suite: the table or null on any error.
const void* acquireSuite(const char* name, int32_t version);
void releaseSuite(const char* name, int32_t version);

template <typename Suite>
const Suite* acquireSuiteAs(const char* name, int32_t version) {
  return static_cast<const Suite*>(acquireSuite(name, version));
}

DWErr AcquireRequiredSuites();
DWErr AcquireOptionalSuites();
void ReleaseRequiredSuites();
void ReleaseOptionalSuites();

}  // namespace dw
