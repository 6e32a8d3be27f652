#include "refhost/render/InkColor.h"

#include "refhost/document/Document.h"

namespace refhost::render {

InkColor InkColor::gray(double ink) {
  InkColor c;
  c.model = Model::Gray;
  c.v[0] = ink;
  return c;
}

InkColor InkColor::rgb(double r, double g, double b) {
  InkColor c;
  c.model = Model::Rgb;
  c.v[0] = r;
  c.v[1] = g;
  c.v[2] = b;
  return c;
}

InkColor InkColor::cmyk(double cy, double m, double y, double k) {
  InkColor c;
  c.model = Model::Cmyk;
  c.v[0] = cy;
  c.v[1] = m;
  c.v[2] = y;
  c.v[3] = k;
  return c;
}

double InkColor::asGray() const {
  switch (model) {
    case Model::None:
      return 0.0;
    case Model::Gray:
      return clamp01(v[0]);
    case Model::Rgb:
      return rgbToGray(Rgb{v[0], v[1], v[2]});
    case Model::Cmyk:
      return cmykToGray(Cmyk{v[0], v[1], v[2], v[3]});
  }
  return 0.0;
}

Rgb InkColor::asRgb() const {
  switch (model) {
    case Model::None:
      return Rgb{1, 1, 1};
    case Model::Gray:
      return grayToRgb(v[0]);
    case Model::Rgb:
      return Rgb{clamp01(v[0]), clamp01(v[1]), clamp01(v[2])};
    case Model::Cmyk:
      return cmykToRgb(Cmyk{v[0], v[1], v[2], v[3]});
  }
  return Rgb{1, 1, 1};
}

Cmyk InkColor::asCmyk() const {
  switch (model) {
    case Model::None:
      return Cmyk{};
    case Model::Gray:
      return grayToCmyk(v[0]);
    case Model::Rgb:
      return rgbToCmyk(Rgb{v[0], v[1], v[2]});
    case Model::Cmyk:
      return Cmyk{clamp01(v[0]), clamp01(v[1]), clamp01(v[2]), clamp01(v[3])};
  }
  return Cmyk{};
}

void InkColor::addSpot(CustomColorId id, double a) {
  for (int i = 0; i < spotCount; ++i) {
    if (spot[i] == id) {
      amount[i] = 1.0 - (1.0 - amount[i]) * (1.0 - clamp01(a));
      return;
    }
  }
  if (spotCount == kMaxSpots) return;
  spot[spotCount] = id;
  amount[spotCount] = clamp01(a);
  ++spotCount;
}

void InkColor::addProcessInk(const Cmyk& ink) {
  if (model == Model::None) {
    model = Model::Cmyk;
    v[0] = ink.c;
    v[1] = ink.m;
    v[2] = ink.y;
    v[3] = ink.k;
    return;
  }
  const Cmyk both = overprint(asCmyk(), ink);
  model = Model::Cmyk;
  v[0] = both.c;
  v[1] = both.m;
  v[2] = both.y;
  v[3] = both.k;
}

InkColor resolvePaint(const Paint& paint, const Document* document, const ColorSpace& target) {
  switch (paint.type) {
    case Paint::Type::Gray:
      return InkColor::gray(paint.v[0]);
    case Paint::Type::Rgb:
      return InkColor::rgb(paint.v[0], paint.v[1], paint.v[2]);
    case Paint::Type::Cmyk:
      return InkColor::cmyk(paint.v[0], paint.v[1], paint.v[2], paint.v[3]);
    case Paint::Type::Spot: {
      const double a = 1.0 - clamp01(paint.tint);
      InkColor c;
      if (target.spotChannel(paint.spot) >= 0) {
        c.addSpot(paint.spot, a);
        return c;
      }
      const CustomColor* custom = document ? document->customColor(paint.spot) : nullptr;
      if (!custom) return InkColor::cmyk(0, 0, 0, a);
      return InkColor::cmyk(custom->cmyk[0] * a, custom->cmyk[1] * a, custom->cmyk[2] * a, custom->cmyk[3] * a);
    }
    case Paint::Type::None:
    case Paint::Type::Gradient:
      break;
  }
  return InkColor{};
}

void inkToChannels(const InkColor& color, const ColorSpace& target, double* out) {
  using K = Channel::Kind;
  bool haveRgb = false, haveCmyk = false;
  Rgb rgb;
  Cmyk cmyk;
  int n = 0;
  for (const Channel& ch : target.channels()) {
    double v = 0.0;
    switch (ch.kind) {
      case K::Alpha:
        continue;
      case K::Gray:
        v = 1.0 - color.asGray();
        break;
      case K::Red:
      case K::Green:
      case K::Blue:
        if (!haveRgb) rgb = color.asRgb(), haveRgb = true;
        v = ch.kind == K::Red ? rgb.r : ch.kind == K::Green ? rgb.g : rgb.b;
        break;
      case K::Cyan:
      case K::Magenta:
      case K::Yellow:
      case K::Black:
        if (!haveCmyk) cmyk = color.asCmyk(), haveCmyk = true;
        v = ch.kind == K::Cyan ? cmyk.c : ch.kind == K::Magenta ? cmyk.m : ch.kind == K::Yellow ? cmyk.y : cmyk.k;
        break;
      case K::Spot:
        for (int i = 0; i < color.spotCount; ++i)
          if (color.spot[i] == ch.spot) v = color.amount[i];
        break;
    }
    out[n++] = clamp01(v) * 255.0;
  }
}

void inkToBytes(const InkColor& color, const ColorSpace& target, std::uint8_t* out) {
  double values[32];
  inkToChannels(color, target, values);
  const int n = target.channelCount() - (target.hasAlpha() ? 1 : 0);
  for (int i = 0; i < n; ++i) out[i] = static_cast<std::uint8_t>(values[i] + 0.5);
}

}  // namespace refhost::render
