#include "refhost/render/Port.h"

#include "refhost/render/Compositor.h"

#include <cstring>

namespace refhost::render {

void PathObject::moveTo(float x, float y) {
  subpaths_.push_back(DevicePolygon{Point{x, y}});
  open_ = true;
}

void PathObject::lineTo(float x, float y) {
  if (!open_) moveTo(subpaths_.empty() ? 0.0f : static_cast<float>(subpaths_.back().front().x),
                     subpaths_.empty() ? 0.0f : static_cast<float>(subpaths_.back().front().y));
  subpaths_.back().push_back(Point{x, y});
}

void PathObject::close() { open_ = false; }

std::vector<DevicePolygon> PathObject::polygons() const {
  std::vector<DevicePolygon> out;
  for (const DevicePolygon& p : subpaths_)
    if (p.size() >= 3) out.push_back(p);
  return out;
}

std::string Port::validate(const IntRect& bounds, std::int32_t rowBytes, const void* buffer, const ColorSpace& space,
                           std::int32_t bitsPerPixel) {
  if (!buffer) return "no pixel buffer";
  if (bounds.left != 0 || bounds.top != 0 || bounds.right <= 0 || bounds.bottom <= 0)
    return "port bounds must start at (0, 0) and be non-empty";
  std::int64_t needed = 0;
  if (bitsPerPixel == 1) {
    if (space.family() != Family::Gray || space.hasAlpha()) return "1-bit ports are gray without alpha";
    needed = (static_cast<std::int64_t>(bounds.right) + 7) / 8;
  } else {
    if (bitsPerPixel != 8 * space.channelCount()) return "bits per pixel do not match the colour space";
    needed = static_cast<std::int64_t>(bounds.right) * space.channelCount();
  }
  if (rowBytes < needed) return "row bytes shorter than a row";
  return {};
}

Port::Port(const IntRect& bounds, std::int32_t rowBytes, void* buffer, ColorSpace::Ptr space, std::int32_t bitsPerPixel,
           std::uint32_t options)
    : bounds_(bounds),
      rowBytes_(rowBytes),
      buffer_(static_cast<std::uint8_t*>(buffer)),
      space_(std::move(space)),
      bitsPerPixel_(bitsPerPixel),
      options_(options) {}

Surface Port::surface() const {
  Surface s;
  s.data = buffer_;
  s.stride = rowBytes_;
  s.area = bounds_;
  s.oneBit = bitsPerPixel_ == 1;
  s.bytesPerPixel = s.oneBit ? 0 : space_->channelCount();
  s.alpha = space_->hasAlpha();
  return s;
}

void emptyPixel(const ColorSpace& space, std::uint8_t* pixel) {
  using K = Channel::Kind;
  int i = 0;
  for (const Channel& c : space.channels()) {
    const bool light = c.kind == K::Gray || c.kind == K::Red || c.kind == K::Green || c.kind == K::Blue;
    pixel[i++] = light ? 255 : 0;
  }
}

bool Port::beginDrawing(const IntRect& device, const PathObject* clip, std::int32_t mode, std::uint32_t groupBlend) {
  if (drawing_) return false;
  device_ = intersect(device, bounds_);
  groupBlend_ = groupBlend;
  state_ = PortState{};
  saved_.clear();
  // The clip of BeginDrawing is in device pixels.
  if (clip && !clip->empty()) state_.clip.push_back(PortClip{clip->polygons(), true});
  drawing_ = true;
  if (mode == 0 && !isEmpty(device_)) {
    std::uint8_t pixel[33];
    emptyPixel(*space_, pixel);
    const Surface s = surface();
    for (std::int32_t y = device_.top; y < device_.bottom; ++y) fillSpan(s, y, device_.left, device_.right, pixel);
  }
  return true;
}

void Port::finishDrawing() {
  drawing_ = false;
  state_ = PortState{};
  saved_.clear();
}

void Port::saveState() { saved_.push_back(state_); }

int Port::clipToObject(const PathObject& path) {
  state_.clip.push_back(PortClip{path.polygons(), state_.deviceSpace});
  return ++state_.clipDepth;
}

std::vector<ClipPath> Port::deviceClip(const Matrix& docToDevice) const {
  std::vector<ClipPath> out;
  for (const PortClip& c : state_.clip) {
    ClipPath path = c.polygons;
    if (!c.device)
      for (DevicePolygon& poly : path)
        for (Point& p : poly) p = docToDevice.apply(p);
    out.push_back(std::move(path));
  }
  return out;
}

}  // namespace refhost::render
