#pragma once

#include "refhost/document/Document.h"

#include <optional>
#include <string>

// Names of enumerations in the native format, both ways.
namespace refhost::io::native {

const char* colorModeName(ColorMode m);
std::optional<ColorMode> colorModeFromName(const std::string& s);
const char* spreadName(Gradient::Spread s);
std::optional<Gradient::Spread> spreadFromName(const std::string& s);
const char* joinName(LineJoin j);
std::optional<LineJoin> joinFromName(const std::string& s);
const char* capName(LineCap c);
std::optional<LineCap> capFromName(const std::string& s);
const char* channelName(RasterChannel::Kind k);
std::optional<RasterChannel::Kind> channelFromName(const std::string& s);
const char* anchorName(TextAnchor a);
std::optional<TextAnchor> anchorFromName(const std::string& s);
std::optional<ArtKind> kindFromName(const std::string& s);

}  // namespace refhost::io::native
