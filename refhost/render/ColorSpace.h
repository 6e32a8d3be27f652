#pragma once

#include "refhost/document/ArtData.h"
#include "refhost/document/Paint.h"

#include <cstdint>
#include <memory>
#include <vector>

namespace refhost::render {

enum class Family : std::int32_t { Gray = 0, Rgb = 1, Cmyk = 2, Spot = 4, NChannel = 5 };

using Channel = RasterChannel;

// The channels of a raster or port: a process model, one spot colour, one CMYK component, or a
// list of such parts; alpha, when present, is the first channel. Immutable once made and shared by
// the handles that refer to it.
class ColorSpace {
 public:
  using Ptr = std::shared_ptr<const ColorSpace>;

  static Ptr process(Family family, bool alpha);  // Gray, Rgb or Cmyk
  static Ptr spot(CustomColorId spot, bool alpha);
  static Ptr processComponent(int component);  // 0 cyan .. 3 black
  // Parts without alpha of their own; the result's family is NChannel.
  static Ptr fromParts(std::vector<Ptr> parts, bool alpha);
  // The space a raster record describes: a plain family code (plus 0x10 for alpha) or, for
  // multi-channel rasters, the channel list kept with the raster.
  static Ptr fromRaster(const RasterRecord& record, const std::vector<RasterChannel>& channels,
                        CustomColorId spotColor);

  Family family() const { return family_; }
  bool hasAlpha() const { return alpha_; }
  // Every channel, alpha first when present.
  const std::vector<Channel>& channels() const { return channels_; }
  int channelCount() const { return static_cast<int>(channels_.size()); }
  int processChannelCount() const;
  int spotChannelCount() const;
  // A space built from parts lists them; any other space is its own only part.
  int partCount() const { return parts_.empty() ? 1 : static_cast<int>(parts_.size()); }
  const ColorSpace* part(int index) const;
  // Index of the channel that holds `spot`, or -1.
  int spotChannel(CustomColorId spot) const;
  // The raster colour-space code: family, plus 0x10 with alpha.
  std::int16_t rasterCode() const;

 private:
  ColorSpace() = default;
  Family family_ = Family::Gray;
  bool alpha_ = false;
  std::vector<Channel> channels_;
  std::vector<Ptr> parts_;
};

bool isProcessChannel(Channel::Kind kind);

}  // namespace refhost::render
