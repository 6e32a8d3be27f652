#pragma once

#include "refhost/render/ArtRenderer.h"
#include "refhost/render/ColorSpace.h"
#include "refhost/render/Surface.h"

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace refhost::render {

// Port option bits this host acts on.
constexpr std::uint32_t kPortAntialias = 0x200000;

// A path made by the graphics manager's path operations, in single-precision coordinates.
class PathObject {
 public:
  void moveTo(float x, float y);
  void lineTo(float x, float y);
  void close();
  // Closed polygons (an open subpath counts as closed, as fills treat it).
  std::vector<DevicePolygon> polygons() const;
  bool empty() const { return subpaths_.empty(); }

 private:
  std::vector<DevicePolygon> subpaths_;
  bool open_ = false;
};

// A clip path: its polygons filled together (non-zero); in device pixels, or in the document
// points of the drawing when it was set in user space.
struct PortClip {
  std::vector<DevicePolygon> polygons;
  bool device = true;
};

// The state that SaveState keeps and FinishDrawing discards.
struct PortState {
  bool deviceSpace = false;  // path objects given to the port are in device pixels
  std::vector<PortClip> clip;  // drawing is limited to the intersection of these
  int clipDepth = 0;
  bool paintIsDefault = true;  // current paint: opaque black fill, no stroke
};

// An off-screen port over caller memory. The port never owns or reallocates the buffer.
class Port {
 public:
  // Checks the layout: bounds from (0, 0), 1 bit per pixel only for gray without alpha, otherwise
  // 8 bits per channel of the colour space; rows of rowBytes holding a full row. Empty on success,
  // otherwise the reason.
  static std::string validate(const IntRect& bounds, std::int32_t rowBytes, const void* buffer,
                              const ColorSpace& space, std::int32_t bitsPerPixel);
  Port(const IntRect& bounds, std::int32_t rowBytes, void* buffer, ColorSpace::Ptr space, std::int32_t bitsPerPixel,
       std::uint32_t options);

  const ColorSpace& space() const { return *space_; }
  std::int32_t width() const { return bounds_.width(); }
  std::int32_t rows() const { return bounds_.height(); }
  std::int32_t rowBytes() const { return rowBytes_; }
  std::int32_t bitsPerPixel() const { return bitsPerPixel_; }
  std::uint8_t* buffer() const { return buffer_; }
  Surface surface() const;

  std::uint32_t options() const { return options_; }
  void setOptions(std::uint32_t o) { options_ = o; }
  bool antialias() const { return (options_ & kPortAntialias) != 0; }

  // The clip in device pixels for a drawing whose document maps to the device by docToDevice.
  std::vector<ClipPath> deviceClip(const Matrix& docToDevice) const;

  // Drawing session. Mode 0 clears the device rectangle to the port's empty value (alpha 0, or
  // no ink / white) first; mode 1 composites over what is there.
  bool beginDrawing(const IntRect& device, const PathObject* clip, std::int32_t mode, std::uint32_t groupBlend);
  void finishDrawing();
  bool drawing() const { return drawing_; }
  const IntRect& device() const { return device_; }

  void saveState();
  void useDeviceSpace() { state_.deviceSpace = true; }
  void useUserSpace() { state_.deviceSpace = false; }
  // Intersects the clip with the path (device pixels after UseDeviceSpace, document points
  // otherwise); the new depth is returned.
  int clipToObject(const PathObject& path);
  void resetPaint() { state_.paintIsDefault = true; }
  const PortState& state() const { return state_; }
  std::size_t savedStates() const { return saved_.size(); }

 private:
  IntRect bounds_;
  std::int32_t rowBytes_;
  std::uint8_t* buffer_;
  ColorSpace::Ptr space_;
  std::int32_t bitsPerPixel_;
  std::uint32_t options_;
  bool drawing_ = false;
  IntRect device_;
  std::uint32_t groupBlend_ = 0;
  PortState state_;
  std::vector<PortState> saved_;
};

// The empty pixel of a colour space: alpha 0 with white (no ink) colour, or opaque white.
void emptyPixel(const ColorSpace& space, std::uint8_t* pixel);

}  // namespace refhost::render
