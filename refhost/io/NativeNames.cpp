#include "refhost/io/NativeNames.h"

namespace refhost::io::native {

namespace {
template <class E, std::size_t N>
std::optional<E> fromName(const std::string& s, const char* const (&names)[N], const E (&values)[N]) {
  for (std::size_t i = 0; i < N; ++i) {
    if (s == names[i]) return values[i];
  }
  return std::nullopt;
}

const char* const kModes[] = {"gray", "rgb", "cmyk"};
const ColorMode kModeValues[] = {ColorMode::Gray, ColorMode::Rgb, ColorMode::Cmyk};
const char* const kSpreads[] = {"pad", "reflect", "repeat"};
const Gradient::Spread kSpreadValues[] = {Gradient::Spread::Pad, Gradient::Spread::Reflect, Gradient::Spread::Repeat};
const char* const kJoins[] = {"miter", "round", "bevel"};
const LineJoin kJoinValues[] = {LineJoin::Miter, LineJoin::Round, LineJoin::Bevel};
const char* const kCaps[] = {"butt", "round", "projecting"};
const LineCap kCapValues[] = {LineCap::Butt, LineCap::Round, LineCap::Projecting};
const char* const kChannels[] = {"alpha", "gray", "red", "green", "blue", "cyan", "magenta", "yellow", "black", "spot"};
const RasterChannel::Kind kChannelValues[] = {RasterChannel::Kind::Alpha, RasterChannel::Kind::Gray, RasterChannel::Kind::Red,
                                              RasterChannel::Kind::Green, RasterChannel::Kind::Blue, RasterChannel::Kind::Cyan,
                                              RasterChannel::Kind::Magenta, RasterChannel::Kind::Yellow, RasterChannel::Kind::Black,
                                              RasterChannel::Kind::Spot};
const char* const kAnchors[] = {"start", "middle", "end"};
const TextAnchor kAnchorValues[] = {TextAnchor::Start, TextAnchor::Middle, TextAnchor::End};
const ArtKind kKinds[] = {ArtKind::Unknown, ArtKind::Group, ArtKind::Path, ArtKind::CompoundPath, ArtKind::Placed,
                          ArtKind::Raster, ArtKind::PluginGroup, ArtKind::Mesh, ArtKind::TextFrame, ArtKind::SymbolInstance};
}  // namespace

const char* colorModeName(ColorMode m) { return kModes[static_cast<int>(m)]; }
std::optional<ColorMode> colorModeFromName(const std::string& s) { return fromName(s, kModes, kModeValues); }
const char* spreadName(Gradient::Spread s) { return kSpreads[static_cast<int>(s)]; }
std::optional<Gradient::Spread> spreadFromName(const std::string& s) { return fromName(s, kSpreads, kSpreadValues); }
const char* joinName(LineJoin j) { return kJoins[static_cast<int>(j)]; }
std::optional<LineJoin> joinFromName(const std::string& s) { return fromName(s, kJoins, kJoinValues); }
const char* capName(LineCap c) { return kCaps[static_cast<int>(c)]; }
std::optional<LineCap> capFromName(const std::string& s) { return fromName(s, kCaps, kCapValues); }
const char* channelName(RasterChannel::Kind k) { return kChannels[static_cast<int>(k)]; }
std::optional<RasterChannel::Kind> channelFromName(const std::string& s) { return fromName(s, kChannels, kChannelValues); }
const char* anchorName(TextAnchor a) { return kAnchors[static_cast<int>(a)]; }
std::optional<TextAnchor> anchorFromName(const std::string& s) { return fromName(s, kAnchors, kAnchorValues); }

std::optional<ArtKind> kindFromName(const std::string& s) {
  for (ArtKind k : kKinds) {
    if (s == artKindName(k)) return k;
  }
  return std::nullopt;
}

}  // namespace refhost::io::native
