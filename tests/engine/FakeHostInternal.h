#pragma once
// Shared by the fake host's suite files: the current host, handle casts, and the suite tables that
// the FakeHost constructor installs.
#include "host/all_suites.h"
#include "shell/FourCharCode.h"
#include "tests/engine/FakeHost.h"

namespace dw::fake::detail {

constexpr DWErr kFakeError = fourCharError("FAKE");
constexpr DWErr kMissing = fourCharError("NONE");

inline FakeHost& H() { return FakeHost::current(); }
inline Art& A(DWArtHandle h) { return H().art(h); }
inline Space* S(DWColorSpaceHandle h) { return reinterpret_cast<Space*>(h); }
inline DWColorSpaceHandle handleOf(Space* s) { return reinterpret_cast<DWColorSpaceHandle>(s); }
inline Port& P(DWPort port) { return *reinterpret_cast<Port*>(port); }

// Every fake function that can fail starts here: the call is recorded, and an injected failure
// is answered at once.
#define ENTER(name)                                              \
  do {                                                           \
    if (DWErr injected = ::dw::fake::detail::H().enter(name)) return injected; \
  } while (0)

// Stubs of one shape, written once: each records its call and answers an injected failure first.
// FAKE_CALL only does that; FAKE_GET copies expr (which may use the handle h) out; FAKE_SET stores
// the value (FAKE_SET_FROM the pointed-to value) into an art field.
#define FAKE_CALL(fn, ...) \
  DWErr fn(__VA_ARGS__) { ENTER(#fn); return 0; }
#define FAKE_GET(fn, Handle, Type, expr) \
  DWErr fn(Handle h, Type* out) { ENTER(#fn); *out = expr; return 0; }
#define FAKE_SET(fn, Type, field) \
  DWErr fn(DWArtHandle h, Type value) { ENTER(#fn); A(h).field = value; return 0; }
#define FAKE_SET_FROM(fn, Type, field) \
  DWErr fn(DWArtHandle h, const Type* value) { ENTER(#fn); A(h).field = *value; return 0; }

extern const DWBasicSuite kBasic;
extern const DWArtSetSuite kArtSet;
extern const DWArtSuite kArt;
extern const DWPathSuite kPath;
extern const DWPathStyleSuite kPathStyle;
extern const DWFOConversionSuite kFoConversion;
extern const DWColorSpaceSuite kColorSpace;
extern const DWRasterSuite kRaster;
extern const DWLayerSuite kLayer;
extern const DWArtStyleSuite kArtStyle;
extern const DWBlendStyleSuite kBlendStyle;
extern const DWSymbolSuite kSymbol;
extern const DWSymbolUtilsSuite kSymbolUtils;
extern const DWBlockSuite kBlock;
extern const DWPreferenceSuite kPreference;
extern const DWDictionarySuite kDictionary;
extern const DWDocumentSuite kDocument;
extern const DWRealMathSuite kRealMath;
extern const DWRuntimeSuite kRuntime;
extern const DWUserSuite kUser;
extern const DWUnicodeStringSuite kStrings;
extern const DWDevUtilsSuite kDevUtils;
extern const DWGraphicsManagerSuite kGraphics;
extern const DWDrawArtSuite kDrawArt;
extern const DWHVExtensionSuite kAccelerator;

}  // namespace dw::fake::detail
