#include "refhost/document/Paint.h"

#include <utility>

namespace refhost {

Paint Paint::gray(double ink) {
  Paint p;
  p.type = Type::Gray;
  p.v[0] = ink;
  return p;
}

Paint Paint::rgb(double r, double g, double b) {
  Paint p;
  p.type = Type::Rgb;
  p.v[0] = r;
  p.v[1] = g;
  p.v[2] = b;
  return p;
}

Paint Paint::cmyk(double c, double m, double y, double k) {
  Paint p;
  p.type = Type::Cmyk;
  p.v[0] = c;
  p.v[1] = m;
  p.v[2] = y;
  p.v[3] = k;
  return p;
}

Paint Paint::spotColor(CustomColorId id, double tint) {
  Paint p;
  p.type = Type::Spot;
  p.spot = id;
  p.tint = tint;
  return p;
}

Paint Paint::fromGradient(std::shared_ptr<const Gradient> g) {
  Paint p;
  p.type = Type::Gradient;
  p.gradient = std::move(g);
  return p;
}

bool operator==(const Paint& a, const Paint& b) {
  if (a.type != b.type) return false;
  switch (a.type) {
    case Paint::Type::None:
      return true;
    case Paint::Type::Gray:
      return a.v[0] == b.v[0];
    case Paint::Type::Rgb:
      return a.v[0] == b.v[0] && a.v[1] == b.v[1] && a.v[2] == b.v[2];
    case Paint::Type::Cmyk:
      return a.v[0] == b.v[0] && a.v[1] == b.v[1] && a.v[2] == b.v[2] && a.v[3] == b.v[3];
    case Paint::Type::Spot:
      return a.spot == b.spot && a.tint == b.tint;
    case Paint::Type::Gradient:
      if (a.gradient == b.gradient) return true;
      if (!a.gradient || !b.gradient) return false;
      return *a.gradient == *b.gradient;
  }
  return false;
}

bool operator==(const GradientStop& a, const GradientStop& b) {
  return a.offset == b.offset && a.color == b.color && a.opacity == b.opacity;
}

bool operator==(const Gradient& a, const Gradient& b) {
  return a.kind == b.kind && a.spread == b.spread && a.units == b.units && a.transform == b.transform &&
         a.start == b.start && a.end == b.end && a.center == b.center && a.radius == b.radius &&
         a.focus == b.focus && a.focusRadius == b.focusRadius && a.stops == b.stops;
}

}  // namespace refhost
