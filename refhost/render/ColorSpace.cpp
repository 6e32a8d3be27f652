#include "refhost/render/ColorSpace.h"

#include <stdexcept>

namespace refhost::render {

namespace {

std::vector<Channel> processChannels(Family family) {
  using K = Channel::Kind;
  switch (family) {
    case Family::Gray:
      return {Channel{K::Gray, 0}};
    case Family::Rgb:
      return {Channel{K::Red, 0}, Channel{K::Green, 0}, Channel{K::Blue, 0}};
    case Family::Cmyk:
      return {Channel{K::Cyan, 0}, Channel{K::Magenta, 0}, Channel{K::Yellow, 0}, Channel{K::Black, 0}};
    default:
      throw std::invalid_argument("not a process colour family");
  }
}

}  // namespace

bool isProcessChannel(Channel::Kind kind) { return kind != Channel::Kind::Alpha && kind != Channel::Kind::Spot; }

ColorSpace::Ptr ColorSpace::process(Family family, bool alpha) {
  auto cs = std::shared_ptr<ColorSpace>(new ColorSpace());
  cs->family_ = family;
  cs->alpha_ = alpha;
  if (alpha) cs->channels_.push_back(Channel{Channel::Kind::Alpha, 0});
  for (const Channel& c : processChannels(family)) cs->channels_.push_back(c);
  return cs;
}

ColorSpace::Ptr ColorSpace::spot(CustomColorId spot, bool alpha) {
  auto cs = std::shared_ptr<ColorSpace>(new ColorSpace());
  cs->family_ = Family::Spot;
  cs->alpha_ = alpha;
  if (alpha) cs->channels_.push_back(Channel{Channel::Kind::Alpha, 0});
  cs->channels_.push_back(Channel{Channel::Kind::Spot, spot});
  return cs;
}

ColorSpace::Ptr ColorSpace::processComponent(int component) {
  if (component < 0 || component > 3) throw std::invalid_argument("process component out of range");
  auto cs = std::shared_ptr<ColorSpace>(new ColorSpace());
  cs->family_ = Family::Cmyk;
  cs->channels_.push_back(processChannels(Family::Cmyk)[static_cast<std::size_t>(component)]);
  return cs;
}

ColorSpace::Ptr ColorSpace::fromParts(std::vector<Ptr> parts, bool alpha) {
  auto cs = std::shared_ptr<ColorSpace>(new ColorSpace());
  cs->family_ = Family::NChannel;
  cs->alpha_ = alpha;
  if (alpha) cs->channels_.push_back(Channel{Channel::Kind::Alpha, 0});
  for (const Ptr& p : parts) {
    if (!p) throw std::invalid_argument("missing colour space part");
    for (const Channel& c : p->channels())
      if (c.kind != Channel::Kind::Alpha) cs->channels_.push_back(c);
  }
  cs->parts_ = std::move(parts);
  return cs;
}

ColorSpace::Ptr ColorSpace::fromRaster(const RasterRecord& record, const std::vector<RasterChannel>& channels,
                                       CustomColorId spotColor) {
  const bool alpha = (record.colorSpace & 0x10) != 0;
  const int family = record.colorSpace & 0x0F;
  if (family == static_cast<int>(Family::NChannel) || !channels.empty()) {
    auto cs = std::shared_ptr<ColorSpace>(new ColorSpace());
    cs->family_ = Family::NChannel;
    cs->channels_ = channels;
    cs->alpha_ = !channels.empty() && channels.front().kind == Channel::Kind::Alpha;
    return cs;
  }
  // A one-channel raster flagged as painted with a spot colour holds ink of that colour.
  if (family == static_cast<int>(Family::Spot) || ((record.flags & 0x8) != 0 && family == 0 && spotColor != 0))
    return spot(spotColor, alpha);
  if (family > 2) throw std::invalid_argument("unknown raster colour space");
  return process(static_cast<Family>(family), alpha);
}

int ColorSpace::processChannelCount() const {
  int n = 0;
  for (const Channel& c : channels_) n += isProcessChannel(c.kind) ? 1 : 0;
  return n;
}

int ColorSpace::spotChannelCount() const {
  int n = 0;
  for (const Channel& c : channels_) n += c.kind == Channel::Kind::Spot ? 1 : 0;
  return n;
}

const ColorSpace* ColorSpace::part(int index) const {
  if (parts_.empty()) return index == 0 ? this : nullptr;
  if (index < 0 || index >= static_cast<int>(parts_.size())) return nullptr;
  return parts_[static_cast<std::size_t>(index)].get();
}

int ColorSpace::spotChannel(CustomColorId spot) const {
  for (std::size_t i = 0; i < channels_.size(); ++i)
    if (channels_[i].kind == Channel::Kind::Spot && channels_[i].spot == spot) return static_cast<int>(i);
  return -1;
}

std::int16_t ColorSpace::rasterCode() const {
  return static_cast<std::int16_t>(static_cast<int>(family_) | (alpha_ ? 0x10 : 0));
}

}  // namespace refhost::render
