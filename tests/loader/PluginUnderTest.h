#pragma once
#include <string>

#include "refhost/loader/Host.h"
#include "refhost/loader/HostErrors.h"
#include "settings/RasterizeSettings.h"
#include "shell/PluginGlobals.h"

// The built Rasterize plug-in, loaded into a reference host by the end-to-end tests.
inline const std::string kPluginPath = DW_PLUGIN_PATH;

// The plug-in's global block, as the host keeps it.
inline dw::PluginGlobals& globalsOf(const refhost::Plugin& plugin) {
  return *static_cast<dw::PluginGlobals*>(plugin.globals());
}

// The record's equality lives in namespace dw, out of reach of gtest's lookup.
inline bool sameSettings(const RasterizeSettings& a, const RasterizeSettings& b) { return dw::operator==(a, b); }

constexpr DWErr kSuiteMissing = refhost::hostCode("S!Fd");
