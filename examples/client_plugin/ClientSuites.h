#pragma once
// The host suites the client uses, and "DW Rasterize Suite", which the Rasterize plug-in adds.
#include "host/messages.h"
#include "host/suites/art_set_suite.h"
#include "host/suites/basic_suite.h"
#include "host/suites/art_suite.h"
#include "host/suites/blocks_suite.h"
#include "host/suites/dev_utils_suite.h"
#include "host/suites/layer_suite.h"
#include "host/suites/menu_suite.h"
#include "host/suites/raster_suite.h"
#include "host/suites/rasterize_suite.h"
#include "host/suites/unicode_string_suite.h"
#include "host/suites/user_suite.h"

namespace client {

// Codes as the host's other plug-ins use them: 'S!Fd' for a suite they cannot get, 'PARM', '!MEM'.
constexpr DWErr kSuiteMissing = 0x53214664;
constexpr DWErr kBadParameter = 0x5041524D;
constexpr DWErr kOutOfMemory = 0x214D454D;

struct Suites {
  const DWBasicSuite* basic = nullptr;  // the one of the message being handled
  const DWArtSetSuite* artSet = nullptr;
  const DWArtSuite* art = nullptr;
  const DWLayerSuite* layer = nullptr;
  const DWRasterSuite* raster = nullptr;
  const DWMenuSuite* menu = nullptr;
  const DWDevUtilsSuite* devUtils = nullptr;
  const DWUserSuite* user = nullptr;
  const DWUnicodeStringSuite* strings = nullptr;
  // Acquired once and kept: the table lives in the Rasterize plug-in's host-kept global block, so
  // the pointer stays good while that plug-in is unloaded and reloaded; its entries are null
  // in between, and each call checks them.
  const DWRasterizeSuite* rasterize = nullptr;
};

// This library's suite pointers (reset whenever the library is loaded anew).
extern Suites gSuites;

// Every host suite above; on a missing one, releases what it took and answers kSuiteMissing.
DWErr acquireHostSuites();
void releaseHostSuites();

// "DW Rasterize Suite" version 10, acquired on first need so that the order in which the host
// starts plug-ins does not matter. Null when no plug-in offers it.
const DWRasterizeSuite* rasterizeSuite();
void releaseRasterizeSuite();

}  // namespace client
