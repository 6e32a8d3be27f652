#include "refhost/suites/PaintRecords.h"

#include <algorithm>
#include <map>
#include <mutex>

#include "refhost/loader/HostErrors.h"
#include "refhost/render/HostHandles.h"

namespace refhost {

namespace {

struct GradientTable {
  std::mutex mutex;
  std::map<const void*, std::shared_ptr<const Gradient>> gradients;
};

GradientTable& gradientTable() {
  static GradientTable t;
  return t;
}

// Gradient space to document: for bounding-box units the unit square spans the box, (0, 0) at its
// top-left corner and (1, 1) at its bottom-right.
Matrix gradientMatrix(const Gradient& g, const Rect& box) {
  if (g.units == Gradient::Units::UserSpace || box.isEmpty()) return g.transform;
  const Matrix unit{box.width(), 0, 0, -box.height(), box.left, box.top};
  return unit * g.transform;
}

bool unit(double v) { return v >= 0.0 && v <= 1.0; }

}  // namespace

DWGradientHandle gradientHandle(const std::shared_ptr<const Gradient>& gradient) {
  if (!gradient) return nullptr;
  GradientTable& t = gradientTable();
  std::lock_guard<std::mutex> lock(t.mutex);
  t.gradients.emplace(gradient.get(), gradient);
  return reinterpret_cast<DWGradientHandle>(const_cast<Gradient*>(gradient.get()));
}

std::shared_ptr<const Gradient> gradientOf(DWGradientHandle handle) {
  GradientTable& t = gradientTable();
  std::lock_guard<std::mutex> lock(t.mutex);
  auto it = t.gradients.find(handle);
  return it == t.gradients.end() ? nullptr : it->second;
}

DWColor toColorRecord(const Paint& paint, const Rect& box) {
  DWColor c{};
  switch (paint.type) {
    case Paint::Type::None: c.kind = kDWNoneColor; break;
    case Paint::Type::Gray:
      c.kind = kDWGrayColor;
      c.c.g.gray = paint.v[0];
      break;
    case Paint::Type::Rgb:
      c.kind = kDWThreeColor;
      c.c.rgb = DWThreeColor{paint.v[0], paint.v[1], paint.v[2]};
      break;
    case Paint::Type::Cmyk:
      c.kind = kDWFourColor;
      c.c.f = DWFourColor{paint.v[0], paint.v[1], paint.v[2], paint.v[3]};
      break;
    case Paint::Type::Spot:
      c.kind = kDWCustomColor;
      c.c.c.color = render::customColorHandle(paint.spot);
      c.c.c.tint = paint.tint;
      break;
    case Paint::Type::Gradient: {
      c.kind = kDWGradientColor;
      c.c.grad.gradient = gradientHandle(paint.gradient);
      const Matrix m = paint.gradient ? gradientMatrix(*paint.gradient, box) : Matrix{};
      c.c.grad.matrix = DWRealMatrix{m.a, m.b, m.c, m.d, m.tx, m.ty};
      break;
    }
  }
  return c;
}

DWErr fromColorRecord(const DWColor& color, const Document& doc, const Rect& box, Paint& paint) {
  switch (color.kind) {
    case kDWNoneColor: paint = Paint::none(); return kDWNoErr;
    case kDWGrayColor:
      if (!unit(color.c.g.gray)) return kHostBadParameter;
      paint = Paint::gray(color.c.g.gray);
      return kDWNoErr;
    case kDWThreeColor: {
      const DWThreeColor& v = color.c.rgb;
      if (!unit(v.red) || !unit(v.green) || !unit(v.blue)) return kHostBadParameter;
      paint = Paint::rgb(v.red, v.green, v.blue);
      return kDWNoErr;
    }
    case kDWFourColor: {
      const DWFourColor& v = color.c.f;
      if (!unit(v.cyan) || !unit(v.magenta) || !unit(v.yellow) || !unit(v.black)) return kHostBadParameter;
      paint = Paint::cmyk(v.cyan, v.magenta, v.yellow, v.black);
      return kDWNoErr;
    }
    case kDWCustomColor: {
      const CustomColorId id = render::customColorId(color.c.c.color);
      if (!doc.customColor(id) || !unit(color.c.c.tint)) return kHostBadParameter;
      paint = Paint::spotColor(id, color.c.c.tint);
      return kDWNoErr;
    }
    case kDWGradientColor: {
      std::shared_ptr<const Gradient> g = gradientOf(color.c.grad.gradient);
      if (!g) return kHostBadParameter;
      const DWRealMatrix& r = color.c.grad.matrix;
      const Matrix m{r.a, r.b, r.c, r.d, r.tx, r.ty};
      // The matrix read back unchanged keeps the gradient as it is, bounding-box units included.
      if (m != gradientMatrix(*g, box)) {
        auto moved = std::make_shared<Gradient>(*g);
        moved->units = Gradient::Units::UserSpace;
        moved->transform = m;
        g = moved;
      }
      paint = Paint::fromGradient(g);
      return kDWNoErr;
    }
    case kDWPatternColor: return kHostNotImplemented;
    default: return kHostBadParameter;
  }
}

DWPathStyle toStyleRecord(const PathStyle& style, const Rect& box) {
  DWPathStyle r{};
  r.fillPaint = style.fillPaint ? 1 : 0;
  r.strokePaint = style.strokePaint ? 1 : 0;
  r.fill.color = toColorRecord(style.fill, box);
  r.fill.opacity = style.fillOpacity;
  r.stroke.color = toColorRecord(style.stroke, box);
  r.stroke.opacity = style.strokeOpacity;
  r.stroke.width = style.strokeWidth;
  r.stroke.dashOffset = style.dashOffset;
  r.stroke.dashCount = int16_t(std::min<size_t>(style.dashArray.size(), kDWMaxDashes));
  for (int16_t i = 0; i < r.stroke.dashCount; ++i) r.stroke.dashes[i] = style.dashArray[size_t(i)];
  r.stroke.cap = int16_t(style.lineCap);
  r.stroke.join = int16_t(style.lineJoin);
  r.stroke.miterLimit = style.miterLimit;
  r.clip = style.clipping ? 1 : 0;
  r.evenodd = style.fillRule == FillRule::EvenOdd ? 1 : 0;
  r.preUnion = style.preUnion ? 1 : 0;
  return r;
}

DWErr fromStyleRecord(const DWPathStyle& r, const Document& doc, const Rect& box, PathStyle& style) {
  const DWStrokeStyle& s = r.stroke;
  if (!unit(r.fill.opacity) || !unit(s.opacity) || !(s.width >= 0.0) || s.dashCount < 0 ||
      s.dashCount > kDWMaxDashes || s.cap < kDWButtCap || s.cap > kDWProjectingCap || s.join < kDWMiterJoin ||
      s.join > kDWBevelJoin || !(s.miterLimit >= 0.0))
    return kHostBadParameter;
  for (int16_t i = 0; i < s.dashCount; ++i)
    if (!(s.dashes[i] >= 0.0)) return kHostBadParameter;
  PathStyle out = style;
  if (const DWErr e = fromColorRecord(r.fill.color, doc, box, out.fill)) return e;
  if (const DWErr e = fromColorRecord(s.color, doc, box, out.stroke)) return e;
  out.fillPaint = r.fillPaint != 0;
  out.strokePaint = r.strokePaint != 0;
  out.fillOpacity = r.fill.opacity;
  out.strokeOpacity = s.opacity;
  out.strokeWidth = s.width;
  out.dashOffset = s.dashOffset;
  out.dashArray.assign(s.dashes, s.dashes + s.dashCount);
  out.lineCap = LineCap(s.cap);
  out.lineJoin = LineJoin(s.join);
  out.miterLimit = s.miterLimit;
  out.clipping = r.clip != 0;
  out.fillRule = r.evenodd ? FillRule::EvenOdd : FillRule::NonZero;
  out.preUnion = r.preUnion != 0;
  style = std::move(out);
  return kDWNoErr;
}

}  // namespace refhost
