#include "refhost/suites/ColorUses.h"

#include "refhost/render/ColorConversion.h"
#include "refhost/render/HostHandles.h"

namespace refhost {

namespace {

// Symbols may contain instances of themselves; deeper nesting reports nothing more.
constexpr int kMaxDepth = 64;

class Visit {
 public:
  Visit(const Document& doc, const ColorUseVisitor& visit) : doc_(doc), visit_(visit) {}

  void art(const Art& a, int depth) {
    if (!a.isAlive() || a.isHidden() || depth > kMaxDepth) return;
    switch (a.kind()) {
      case ArtKind::Group:
      case ArtKind::Unknown:
        for (const Art* c = a.firstChild(); c; c = c->nextSibling())
          if (!(a.isClipped() && c->pathStyle().clipping)) art(*c, depth + 1);
        return;
      case ArtKind::Path:
      case ArtKind::CompoundPath:
      case ArtKind::TextFrame: {
        const PathStyle& s = styleOf(a);
        if (s.fillPaint) paint(s.fill);
        if (s.strokePaint && s.strokeWidth > 0) paint(s.stroke);
        return;
      }
      case ArtKind::Placed:
        report(kDWUsesRaster, 1, 0, 0, 0);
        processPixels();
        return;
      case ArtKind::Raster:
        report(kDWUsesRaster, 1, 0, 0, 0);
        raster(a);
        return;
      case ArtKind::Mesh:
        for (const Paint& p : a.mesh()->patchColors) paint(p);
        return;
      case ArtKind::SymbolInstance: {
        const SymbolInstanceData* s = a.symbolInstance();
        if (s->symbol && s->symbol->isAlive() && s->symbol->definition()) art(*s->symbol->definition(), depth + 1);
        return;
      }
      case ArtKind::PluginGroup:
        if (const Art* result = a.pluginGroup()->resultArt) art(*result, depth + 1);
        return;
    }
  }

 private:
  static const PathStyle& styleOf(const Art& a) {
    const ArtStylePtr& style = a.artStyle();
    return style && style->hasPaint ? style->paint : a.pathStyle();
  }

  void report(int32_t kind, double v0, double v1, double v2, double v3, CustomColorId spot = 0) {
    DWColorUse use{};
    use.values[0] = v0;
    use.values[1] = v1;
    use.values[2] = v2;
    use.values[3] = v3;
    use.spot = spot ? render::customColorHandle(spot) : nullptr;
    visit_(kind, use);
  }

  void inks(double c, double m, double y, double k) {
    report(kDWUsesFullProcess, c > 0 || m > 0 || y > 0 || k > 0 ? 1 : 0, 0, 0, 0);
    report(kDWUsesProcessInks, c, m, y, k);
  }

  // Pixels of any process colour: every process channel may be needed.
  void processPixels() { inks(1, 1, 1, 1); }

  void paint(const Paint& p) {
    switch (p.type) {
      case Paint::Type::None: return;
      case Paint::Type::Gray:
        report(kDWUsesGray, p.v[0], 0, 0, 0);
        inks(0, 0, 0, p.v[0]);
        return;
      case Paint::Type::Rgb: {
        const render::Cmyk c = render::rgbToCmyk(render::Rgb{p.v[0], p.v[1], p.v[2]});
        inks(c.c, c.m, c.y, c.k);
        return;
      }
      case Paint::Type::Cmyk: inks(p.v[0], p.v[1], p.v[2], p.v[3]); return;
      case Paint::Type::Spot: spot(p.spot, p.tint); return;
      case Paint::Type::Gradient:
        if (p.gradient)
          for (const GradientStop& stop : p.gradient->stops) paint(stop.color);
        return;
    }
  }

  // A global process colour prints as its inks times its amount; an unknown colour draws black.
  void spot(CustomColorId id, double tint) {
    const CustomColor* c = doc_.customColor(id);
    if (!c) {
      inks(0, 0, 0, 1);
    } else if (c->kind == CustomColor::Kind::Spot) {
      report(kDWUsesSpot, 0, 0, 0, 0, id);
    } else {
      const double amount = 1.0 - tint;
      inks(c->cmyk[0] * amount, c->cmyk[1] * amount, c->cmyk[2] * amount, c->cmyk[3] * amount);
    }
  }

  void raster(const Art& a) {
    const RasterData& r = *a.raster();
    switch (r.record.colorSpace & 0x0F) {
      case 0:  // gray
        report(kDWUsesGray, 1, 0, 0, 0);
        inks(0, 0, 0, 1);
        return;
      case 4: {  // one spot channel, painted with the art's fill
        const Paint& fill = styleOf(a).fill;
        if (fill.type == Paint::Type::Spot) spot(fill.spot, 0.0);
        return;
      }
      case 5:
        for (const RasterChannel& channel : r.channels) rasterChannel(channel);
        return;
      default: processPixels(); return;
    }
  }

  void rasterChannel(const RasterChannel& channel) {
    using Kind = RasterChannel::Kind;
    switch (channel.kind) {
      case Kind::Alpha: return;
      case Kind::Gray:
        report(kDWUsesGray, 1, 0, 0, 0);
        inks(0, 0, 0, 1);
        return;
      case Kind::Red:
      case Kind::Green:
      case Kind::Blue: processPixels(); return;
      case Kind::Cyan: inks(1, 0, 0, 0); return;
      case Kind::Magenta: inks(0, 1, 0, 0); return;
      case Kind::Yellow: inks(0, 0, 1, 0); return;
      case Kind::Black: inks(0, 0, 0, 1); return;
      case Kind::Spot: spot(channel.spot, 0.0); return;
    }
  }

  const Document& doc_;
  const ColorUseVisitor& visit_;
};

}  // namespace

void visitColorUses(const Art& art, const ColorUseVisitor& visit) { Visit(art.document(), visit).art(art, 0); }

}  // namespace refhost
