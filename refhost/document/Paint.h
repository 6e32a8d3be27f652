#pragma once

#include "refhost/document/Geometry.h"

#include <cstdint>
#include <memory>
#include <vector>

namespace refhost {

// Custom colours are named by their document id (1, 2, 3 ... in creation order, never reused), so
// a paint needs no pointer into the document and sorting by id gives creation order.
using CustomColorId = std::uint32_t;

struct Gradient;

// One colour or gradient. Channel values are 0..1: gray is ink (0 white, 1 black); RGB is light;
// CMYK is ink. A spot paint names a custom colour with a tint (0 the full colour, 1 none of it).
struct Paint {
  enum class Type : std::uint8_t { None, Gray, Rgb, Cmyk, Spot, Gradient };

  Type type = Type::None;
  // Gray: v[0]; RGB: v[0..2]; CMYK: v[0..3].
  double v[4] = {0.0, 0.0, 0.0, 0.0};
  CustomColorId spot = 0;
  double tint = 0.0;
  // Shared and immutable once attached; replace it to change a gradient.
  std::shared_ptr<const Gradient> gradient;

  static Paint none() { return Paint{}; }
  static Paint gray(double ink);
  static Paint rgb(double r, double g, double b);
  static Paint cmyk(double c, double m, double y, double k);
  static Paint spotColor(CustomColorId id, double tint = 0.0);
  static Paint fromGradient(std::shared_ptr<const Gradient> g);

  bool isNone() const { return type == Type::None; }
  bool isColor() const { return type != Type::None && type != Type::Gradient; }
};

// Deep equality: gradients compare by content.
bool operator==(const Paint& a, const Paint& b);
inline bool operator!=(const Paint& a, const Paint& b) { return !(a == b); }

struct GradientStop {
  double offset = 0.0;  // 0..1 along the gradient
  Paint color;          // Gray, Rgb, Cmyk or Spot
  double opacity = 1.0;
};

bool operator==(const GradientStop& a, const GradientStop& b);
inline bool operator!=(const GradientStop& a, const GradientStop& b) { return !(a == b); }

// A linear or radial gradient. Its geometry is in gradient space; `transform` maps gradient space to
// document points (units UserSpace) or to the unit square of the art's geometric bounds, (0,0) at
// bounds (left, top) and (1,1) at (right, bottom) (units BoundingBox). The SVG importer always
// resolves to UserSpace, composing the element's full transform into `transform`.
struct Gradient {
  enum class Kind : std::uint8_t { Linear, Radial };
  enum class Spread : std::uint8_t { Pad, Reflect, Repeat };
  enum class Units : std::uint8_t { UserSpace, BoundingBox };

  Kind kind = Kind::Linear;
  Spread spread = Spread::Pad;
  Units units = Units::UserSpace;
  Matrix transform;
  // Linear: from start to end.
  Point start{0.0, 0.0};
  Point end{1.0, 0.0};
  // Radial: circle (center, radius) with the focal point at focus (focal radius focusRadius).
  Point center{0.5, 0.5};
  double radius = 0.5;
  Point focus{0.5, 0.5};
  double focusRadius = 0.0;
  std::vector<GradientStop> stops;
};

bool operator==(const Gradient& a, const Gradient& b);
inline bool operator!=(const Gradient& a, const Gradient& b) { return !(a == b); }

}  // namespace refhost
