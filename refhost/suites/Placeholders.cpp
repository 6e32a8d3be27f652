// Host suites not built yet: every function answers 'HNIM' (or 0 where it returns no error code),
// so a plug-in can acquire them and start. Whoever builds one deletes its lines here and adds
// refhost/suites/<Name>Suite.cpp (a real table replaces a placeholder even if both remain).
#include "host/all_suites.h"
#include "refhost/loader/SuiteProviders.h"
#include "refhost/suites/Placeholder.h"

namespace refhost {
namespace {

using placeholder::N;
using placeholder::placeholderTable;
using placeholder::Z;

#define PLACEHOLDER(Suite, name, version, ...)                             \
  const Suite REFHOST_CONCAT(kPlaceholder, __LINE__) = placeholderTable<Suite>(__VA_ARGS__); \
  REFHOST_REGISTER_PLACEHOLDER_SUITE(name, version, REFHOST_CONCAT(kPlaceholder, __LINE__))

PLACEHOLDER(DWFOConversionSuite, kDWFOConversionSuite, kDWFOConversionSuiteVersion, N);
PLACEHOLDER(DWPathfinderSuite, kDWPathfinderSuite, kDWPathfinderSuiteVersion, N);
PLACEHOLDER(DWArtSuite, kDWArtSuite, kDWArtSuiteVersion,
            N, N, N, N, N, N, N, N, N, N, N, N, N, N, N, N, N, N, N);
PLACEHOLDER(DWArtboardSuite, kDWArtboardSuite, kDWArtboardSuiteVersion, N, N, N, N, N, N);
PLACEHOLDER(DWArtSetSuite, kDWArtSetSuite, kDWArtSetSuiteVersion, N, N, N, N, N, N, N, N, N, N);
PLACEHOLDER(DWArtStyleSuite, kDWArtStyleSuite, kDWArtStyleSuiteVersion, N, N, N);
PLACEHOLDER(DWArtStyleParserSuite, kDWArtStyleParserSuite, kDWArtStyleParserSuiteVersion, N, N, N, N, N);
PLACEHOLDER(DWBlendStyleSuite, kDWBlendStyleSuite, kDWBlendStyleSuiteVersion, N, Z, Z);
PLACEHOLDER(DWCustomColorSuite, kDWCustomColorSuite, kDWCustomColorSuiteVersion, N, N, N);
PLACEHOLDER(DWDictionarySuite, kDWDictionarySuite, kDWDictionarySuiteVersion,
            Z, Z, Z, N, N, N, N, N, N, N, N, N, N);
PLACEHOLDER(DWDocumentSuite, kDWDocumentSuite, kDWDocumentSuiteVersion, N, N, N);
PLACEHOLDER(DWGroupSuite, kDWGroupSuite, kDWGroupSuiteVersion, N, N);
PLACEHOLDER(DWLayerSuite, kDWLayerSuite, kDWLayerSuiteVersion, N, N, N, N, N, N);
PLACEHOLDER(DWLayerListSuite, kDWLayerListSuite, kDWLayerListSuiteVersion, N, N, N);
PLACEHOLDER(DWMeshSuite, kDWMeshSuite, kDWMeshSuiteVersion, N, N);
PLACEHOLDER(DWMeshSegmentSuite, kDWMeshSegmentSuite, kDWMeshSegmentSuiteVersion, N);
PLACEHOLDER(DWMeshVertexSuite, kDWMeshVertexSuite, kDWMeshVertexSuiteVersion, N, N);
PLACEHOLDER(DWPathSuite, kDWPathSuite, kDWPathSuiteVersion, N, N, N, N, N, N, N);
PLACEHOLDER(DWPathStyleSuite, kDWPathStyleSuite, kDWPathStyleSuiteVersion, N, N);
PLACEHOLDER(DWPatternSuite, kDWPatternSuite, kDWPatternSuiteVersion, Z);
PLACEHOLDER(DWPlacedSuite, kDWPlacedSuite, kDWPlacedSuiteVersion, N, N);
PLACEHOLDER(DWPluginGroupSuite, kDWPluginGroupSuite, kDWPluginGroupSuiteVersion, N, N);
PLACEHOLDER(DWTextFrameSuite, kDWTextFrameSuite, kDWTextFrameSuiteVersion, N);
PLACEHOLDER(DWUndoSuite, kDWUndoSuite, kDWUndoSuiteVersion, N, N);
PLACEHOLDER(DWSymbolSuite, kDWSymbolSuite, kDWSymbolSuiteVersion, Z);
// Acquired on demand by the engine.
PLACEHOLDER(DWSymbolUtilsSuite, kDWSymbolUtilsSuite, kDWSymbolUtilsSuiteVersion, N);

}  // namespace
}  // namespace refhost
