#include "refhost/render/ArtRenderer.h"

#include "refhost/document/Bounds.h"
#include "refhost/document/Document.h"
#include "refhost/document/Symbol.h"
#include "refhost/render/Compositor.h"
#include "refhost/render/InkColor.h"
#include "refhost/render/LiveEffectHook.h"
#include "refhost/render/PathGeometry.h"

#include <algorithm>
#include <cmath>
#include <cstring>

namespace refhost::render {

namespace {

// Symbols may contain instances of themselves; deeper nesting draws nothing.
constexpr int kMaxDepth = 64;

const PathStyle& styleOf(const Art& art) {
  const ArtStylePtr& s = art.artStyle();
  return s && s->hasPaint ? s->paint : art.pathStyle();
}

double matrixNorm(const Matrix& m) { return std::sqrt(m.a * m.a + m.b * m.b + m.c * m.c + m.d * m.d); }

bool paintsFill(const PathStyle& s) { return s.fillPaint && !s.fill.isNone(); }
bool paintsStroke(const PathStyle& s) { return s.strokePaint && !s.stroke.isNone() && s.strokeWidth > 0; }

}  // namespace

struct ArtRenderer::ClipLevel {
  IntRect region;
  bool hasMask = false;
  CoverageMask mask;
};

struct ArtRenderer::LayerLevel {
  HugeBuffer buffer;
};

ArtRenderer::ArtRenderer() = default;
ArtRenderer::~ArtRenderer() = default;

void ArtRenderer::draw(const DrawRequest& r) {
  if (!r.art || !r.space || !r.target.data) return;
  space_ = r.space;
  document_ = &r.art->document();
  antialias_ = r.antialias;
  targets_.clear();
  targets_.push_back(r.target);
  if (clips_.empty()) clips_.push_back(std::make_unique<ClipLevel>());
  clipDepth_ = 0;
  clips_[0]->region = intersect(r.limit, r.target.area);
  clips_[0]->hasMask = false;
  if (isEmpty(clips_[0]->region)) return;
  if (r.clip)
    for (const ClipPath& path : *r.clip)
      if (!pushDeviceClip(path)) return;
  drawArt(*r.art, r.docToDevice, 1.0, 0);
}

IntRect ArtRenderer::currentLimit() const { return intersect(clips_[static_cast<std::size_t>(clipDepth_)]->region, targets_.back().area); }

IntRect ArtRenderer::toPixels(const Box& b) const {
  if (b.empty()) return IntRect{};
  auto clampInt = [](double v) { return static_cast<std::int32_t>(std::max(-1e9, std::min(1e9, v))); };
  // One pixel more on every side for anti-aliased edges and rounding in the rasterizer.
  return IntRect{clampInt(std::floor(b.x0) - 1), clampInt(std::floor(b.y0) - 1), clampInt(std::ceil(b.x1) + 1),
                 clampInt(std::ceil(b.y1) + 1)};
}

ArtRenderer::Box ArtRenderer::extentOf(const Art& art, const Matrix& m, int depth) const {
  Box box{HUGE_VAL, HUGE_VAL, -HUGE_VAL, -HUGE_VAL};
  auto add = [&](Point p) {
    const Point d = m.apply(p);
    box.x0 = std::min(box.x0, d.x);
    box.y0 = std::min(box.y0, d.y);
    box.x1 = std::max(box.x1, d.x);
    box.y1 = std::max(box.y1, d.y);
  };
  auto unite = [&](const Box& o) {
    if (o.empty()) return;
    box.x0 = std::min(box.x0, o.x0);
    box.y0 = std::min(box.y0, o.y0);
    box.x1 = std::max(box.x1, o.x1);
    box.y1 = std::max(box.y1, o.y1);
  };
  auto addPath = [&](const PathData& p) {
    for (const PathSegment& s : p.segments) add(s.p), add(s.in), add(s.out);
  };
  auto pad = [&](const PathStyle& s) {
    if (!paintsStroke(s) || box.x0 > box.x1 || box.y0 > box.y1) return;
    const double reach = 0.5 * s.strokeWidth * matrixNorm(m) *
                         (s.lineJoin == LineJoin::Miter ? std::max(s.miterLimit, 1.5) : 1.5);
    box.x0 -= reach, box.y0 -= reach, box.x1 += reach, box.y1 += reach;
  };
  if (art.isHidden() || depth > kMaxDepth) return box;
  if (const Art* shown = liveEffectResult(art)) return extentOf(*shown, m, depth + 1);
  switch (art.kind()) {
    case ArtKind::Path:
      if (const PathData* p = art.path()) addPath(*p);
      pad(styleOf(art));
      break;
    case ArtKind::CompoundPath:
      for (const Art* c = art.firstChild(); c; c = c->nextSibling())
        if (!c->isHidden() && c->path()) addPath(*c->path());
      pad(styleOf(art));
      break;
    case ArtKind::Group:
    case ArtKind::Unknown: {
      Box clip{HUGE_VAL, HUGE_VAL, -HUGE_VAL, -HUGE_VAL};
      bool clipped = false;
      for (const Art* c = art.firstChild(); c; c = c->nextSibling()) {
        const Box b = extentOf(*c, m, depth + 1);
        if (art.isClipped() && c->pathStyle().clipping && !c->isHidden()) {
          clipped = true;
          if (!b.empty())
            clip = Box{std::min(clip.x0, b.x0), std::min(clip.y0, b.y0), std::max(clip.x1, b.x1), std::max(clip.y1, b.y1)};
        } else {
          unite(b);
        }
      }
      if (clipped)
        box = Box{std::max(box.x0, clip.x0), std::max(box.y0, clip.y0), std::min(box.x1, clip.x1), std::min(box.y1, clip.y1)};
      break;
    }
    case ArtKind::Placed:
      if (const PlacedData* p = art.placed()) {
        const Rect& r = p->bounds;
        for (Point q : {Point{r.left, r.top}, Point{r.right, r.top}, Point{r.right, r.bottom}, Point{r.left, r.bottom}})
          add(p->matrix.apply(q));
      }
      break;
    case ArtKind::Raster:
      if (const RasterData* r = art.raster()) {
        const double w = r->width(), h = r->height();
        for (Point q : {Point{0, 0}, Point{w, 0}, Point{w, -h}, Point{0, -h}}) add(r->matrix.apply(q));
      }
      break;
    case ArtKind::Mesh:
      if (const MeshData* mesh = art.mesh())
        for (Point v : mesh->vertices) add(v);
      break;
    case ArtKind::TextFrame: {
      // Glyphs reach beyond the estimated advance and ascent; half an em more on every side.
      const Rect r = artBounds(art, m);
      if (!r.isEmpty() && art.text()) {
        const double em = art.text()->fontSize * matrixNorm(m * art.text()->matrix);
        box = Box{r.left - em, r.bottom - em, r.right + em, r.top + em};
      }
      pad(styleOf(art));
      break;
    }
    case ArtKind::SymbolInstance:
      if (const SymbolInstanceData* s = art.symbolInstance())
        if (s->symbol && s->symbol->isAlive() && s->symbol->definition())
          box = extentOf(*s->symbol->definition(), m * s->matrix, depth + 1);
      break;
    case ArtKind::PluginGroup:
      if (const PluginGroupData* g = art.pluginGroup())
        if (g->resultArt) box = extentOf(*g->resultArt, m, depth + 1);
      break;
  }
  return box;
}

void ArtRenderer::drawArt(const Art& art, const Matrix& m, double alpha, int depth) {
  if (!art.isAlive() || art.isHidden() || alpha <= 0.0 || depth > kMaxDepth) return;
  if (const Art* shown = liveEffectResult(art)) {
    drawArt(*shown, m, alpha, depth + 1);
    return;
  }
  switch (art.kind()) {
    case ArtKind::Group:
    case ArtKind::Unknown:
      drawGroup(art, m, alpha, depth);
      return;
    case ArtKind::Path:
      if (const PathData* p = art.path()) drawShape(art, m, alpha, styleOf(art), [p](cairo_t* cr) { appendPath(cr, *p); });
      return;
    case ArtKind::CompoundPath:
      drawShape(art, m, alpha, styleOf(art), [&art](cairo_t* cr) {
        for (const Art* c = art.lastChild(); c; c = c->previousSibling())
          if (!c->isHidden() && c->path()) appendPath(cr, *c->path());
      });
      return;
    case ArtKind::TextFrame:
      if (const TextData* t = art.text()) drawShape(art, m, alpha, styleOf(art), [t](cairo_t* cr) { appendText(cr, *t); });
      return;
    case ArtKind::Placed:
    case ArtKind::Raster:
      drawImage(art, m, alpha * styleOf(art).opacity);
      return;
    case ArtKind::Mesh:
      drawMesh(art, m, alpha * styleOf(art).opacity);
      return;
    case ArtKind::SymbolInstance:
      if (const SymbolInstanceData* s = art.symbolInstance())
        if (s->symbol && s->symbol->isAlive() && s->symbol->definition())
          drawArt(*s->symbol->definition(), m * s->matrix, alpha * styleOf(art).opacity, depth + 1);
      return;
    case ArtKind::PluginGroup:
      if (const PluginGroupData* g = art.pluginGroup())
        if (g->resultArt) drawArt(*g->resultArt, m, alpha * styleOf(art).opacity, depth + 1);
      return;
  }
}

void ArtRenderer::drawGroup(const Art& art, const Matrix& m, double alpha, int depth) {
  const double opacity = alpha * styleOf(art).opacity;
  if (opacity <= 0.0) return;
  const bool clipGroup = art.isClipped();
  int members = 0, clipping = 0;
  for (const Art* c = art.firstChild(); c; c = c->nextSibling()) {
    if (c->isHidden()) continue;
    if (clipGroup && c->pathStyle().clipping)
      ++clipping;
    else
      ++members;
  }
  if (members == 0) return;
  const int savedDepth = clipDepth_;
  if (clipping > 0 && !pushClip(art, m)) return;
  // Opacity of a group with one member folds into that member; several members that may overlap
  // need a layer over the group's bounds.
  const bool layer = opacity < 1.0 && members > 1;
  if (!layer || beginLayer(toPixels(extentOf(art, m, depth)))) {
    const double inner = layer ? 1.0 : opacity;
    for (const Art* c = art.lastChild(); c; c = c->previousSibling()) {
      if (clipGroup && c->pathStyle().clipping) continue;
      drawArt(*c, m, inner, depth + 1);
    }
    if (layer) endLayer(opacity);
  }
  while (clipDepth_ > savedDepth) popClip();
}

void ArtRenderer::drawShape(const Art& art, const Matrix& m, double alpha, const PathStyle& style, const Builder& outline) {
  const bool fill = paintsFill(style), stroke = paintsStroke(style);
  const double opacity = alpha * style.opacity;
  if ((!fill && !stroke) || opacity <= 0.0) return;
  const Box extent = extentOf(art, m, 0);
  if (extent.empty()) return;
  Rect bounds;
  if ((fill && style.fill.type == Paint::Type::Gradient) || (stroke && style.stroke.type == Paint::Type::Gradient))
    bounds = artBounds(art);
  // Fill and stroke overlap, so a shape with both and an opacity is drawn through a layer.
  const bool layer = fill && stroke && opacity < 1.0;
  if (layer && !beginLayer(intersect(toPixels(extent), currentLimit()))) return;
  const double inner = layer ? 1.0 : opacity;
  if (fill) paint(m, extent, outline, style, false, style.fill, inner * style.fillOpacity, bounds);
  if (stroke) paint(m, extent, outline, style, true, style.stroke, inner * style.strokeOpacity, bounds);
  if (layer) endLayer(opacity);
}

void ArtRenderer::paint(const Matrix& m, const Box& extent, const Builder& outline, const PathStyle& style, bool stroke,
                        const Paint& p, double alpha, const Rect& artBounds) {
  if (alpha <= 0.0 || p.isNone()) return;
  const IntRect region = intersect(toPixels(extent), currentLimit());
  if (isEmpty(region)) return;
  std::vector<double> dashes;
  double dashOffset = 0.0;
  if (stroke && !strokeDashes(style, dashes, dashOffset)) return;
  cairo_t* cr = shape_.begin(region, m, antialias_);
  if (!cr) return;
  outline(cr);
  if (stroke) {
    applyStroke(cr, style, dashes, dashOffset);
    cairo_stroke(cr);
  } else {
    cairo_set_fill_rule(cr, style.fillRule == FillRule::EvenOdd ? CAIRO_FILL_RULE_EVEN_ODD : CAIRO_FILL_RULE_WINDING);
    cairo_fill(cr);
  }
  shape_.end();
  compositeMask(p, alpha, m, artBounds);
}

namespace {

// Shapes cover a fraction of their bounding box's rows: the empty ends are skipped eight bytes a
// step. Narrows [a, b) to the covered part; false when nothing is covered.
bool trimZeros(const std::uint8_t* row, std::int32_t& a, std::int32_t& b) {
  std::uint64_t w;
  while (a + 8 <= b && (std::memcpy(&w, row + a, 8), w == 0)) a += 8;
  while (a < b && row[a] == 0) ++a;
  while (b - 8 >= a && (std::memcpy(&w, row + b - 8, 8), w == 0)) b -= 8;
  while (b > a && row[b - 1] == 0) --b;
  return a < b;
}

// out = coverage x clip / 255, rounded; runs of full or no clip are copies and zeros.
void clipCoverage(const std::uint8_t* row, const std::uint8_t* clip, std::uint8_t* out, std::int32_t n) {
  std::int32_t i = 0;
  while (i < n) {
    if (i + 8 <= n) {
      std::uint64_t w;
      std::memcpy(&w, clip + i, 8);
      if (w == ~std::uint64_t(0)) {
        std::memcpy(out + i, row + i, 8);
        i += 8;
        continue;
      }
      if (w == 0) {
        std::memset(out + i, 0, 8);
        i += 8;
        continue;
      }
    }
    out[i] = static_cast<std::uint8_t>(div255(row[i] * clip[i]));
    ++i;
  }
}

}  // namespace

const std::uint8_t* ArtRenderer::coverageRow(const CoverageMask& mask, std::int32_t y, std::int32_t& x0, std::int32_t& x1) {
  const std::uint8_t* row = mask.row(y) + (x0 - mask.region().left);
  std::int32_t a = 0, b = x1 - x0;
  if (!trimZeros(row, a, b)) return nullptr;
  const ClipLevel& clip = *clips_[static_cast<std::size_t>(clipDepth_)];
  if (clip.hasMask) {
    const std::uint8_t* c = clip.mask.row(y) + (x0 - clip.mask.region().left);
    clipCoverage(row + a, c + a, coverage_.data() + a, b - a);
    row = coverage_.data();
    if (!trimZeros(row, a, b)) return nullptr;
  }
  x0 += a;
  x1 = x0 + (b - a);
  return row + a;
}

void ArtRenderer::compositeMask(const Paint& p, double alpha, const Matrix& m, const Rect& artBounds) {
  const IntRect region = shape_.region();
  const Surface& target = targets_.back();
  const std::size_t width = static_cast<std::size_t>(region.width());
  if (coverage_.size() < width) coverage_.resize(width);
  if (p.type == Paint::Type::Gradient) {
    if (!p.gradient || !gradient_.prepare(*p.gradient, artBounds, m, document_, *space_, alpha)) return;
    const std::size_t need = width * static_cast<std::size_t>(gradient_.bytesPerPixel());
    if (source_.size() < need) source_.resize(need);
    for (std::int32_t y = region.top; y < region.bottom; ++y) {
      std::int32_t x0 = region.left, x1 = region.right;
      const std::uint8_t* cov = coverageRow(shape_, y, x0, x1);
      if (!cov) continue;
      gradient_.shadeRow(y, x0, x1, source_.data());
      compositePixels(target, y, x0, x1, cov, source_.data(), 255);
    }
    return;
  }
  SolidSource solid;
  inkToBytes(resolvePaint(p, document_, *space_), *space_, solid.color);
  solid.alpha = toByte(alpha);
  if (solid.alpha == 0) return;
  for (std::int32_t y = region.top; y < region.bottom; ++y) {
    std::int32_t x0 = region.left, x1 = region.right;
    const std::uint8_t* cov = coverageRow(shape_, y, x0, x1);
    if (cov) compositeSolid(target, y, x0, x1, cov, solid);
  }
}

void ArtRenderer::drawImage(const Art& art, const Matrix& m, double alpha) {
  if (alpha <= 0.0) return;
  bool ok = false;
  if (const PlacedData* placed = art.placed()) {
    ok = image_.preparePlaced(*placed, m, *space_, document_);
  } else if (const RasterData* raster = art.raster()) {
    const Paint& fill = styleOf(art).fill;
    const CustomColorId spot = (raster->record.flags & 0x8) && fill.type == Paint::Type::Spot ? fill.spot : 0;
    ok = image_.prepareRaster(*raster, spot, m, *space_, document_);
  }
  if (!ok) return;
  Box box{HUGE_VAL, HUGE_VAL, -HUGE_VAL, -HUGE_VAL};
  for (int i = 0; i < 4; ++i) {
    const Point d = m.apply(image_.corners()[i]);
    box = Box{std::min(box.x0, d.x), std::min(box.y0, d.y), std::max(box.x1, d.x), std::max(box.y1, d.y)};
  }
  const IntRect region = intersect(toPixels(box), currentLimit());
  if (isEmpty(region)) return;
  cairo_t* cr = shape_.begin(region, m, antialias_);
  if (!cr) return;
  appendPolygon(cr, image_.corners(), 4);
  cairo_fill(cr);
  shape_.end();
  const std::size_t width = static_cast<std::size_t>(region.width());
  if (coverage_.size() < width) coverage_.resize(width);
  const std::size_t need = width * static_cast<std::size_t>(image_.bytesPerPixel());
  if (source_.size() < need) source_.resize(need);
  const std::uint8_t opacity = toByte(alpha);
  const Surface& target = targets_.back();
  for (std::int32_t y = region.top; y < region.bottom; ++y) {
    std::int32_t x0 = region.left, x1 = region.right;
    const std::uint8_t* cov = coverageRow(shape_, y, x0, x1);
    if (!cov) continue;
    image_.sampleRow(y, x0, x1, source_.data());
    compositePixels(target, y, x0, x1, cov, source_.data(), opacity);
  }
}

void ArtRenderer::drawMesh(const Art& art, const Matrix& m, double alpha) {
  const MeshData* mesh = art.mesh();
  if (!mesh || mesh->rows < 2 || mesh->columns < 2 || alpha <= 0.0) return;
  if (mesh->vertices.size() < static_cast<std::size_t>(mesh->rows) * static_cast<std::size_t>(mesh->columns)) return;
  PathStyle style;
  for (std::int32_t r = 0; r + 1 < mesh->rows; ++r) {
    for (std::int32_t c = 0; c + 1 < mesh->columns; ++c) {
      const std::size_t index = static_cast<std::size_t>(r) * static_cast<std::size_t>(mesh->columns - 1) + static_cast<std::size_t>(c);
      if (index >= mesh->patchColors.size() || !mesh->patchColors[index].isColor()) continue;
      const Point quad[4] = {mesh->vertex(r, c), mesh->vertex(r, c + 1), mesh->vertex(r + 1, c + 1), mesh->vertex(r + 1, c)};
      Box box{HUGE_VAL, HUGE_VAL, -HUGE_VAL, -HUGE_VAL};
      for (const Point& q : quad) {
        const Point d = m.apply(q);
        box = Box{std::min(box.x0, d.x), std::min(box.y0, d.y), std::max(box.x1, d.x), std::max(box.y1, d.y)};
      }
      paint(m, box, [&quad](cairo_t* cr) { appendPolygon(cr, quad, 4); }, style, false, mesh->patchColors[index], alpha,
            Rect{});
    }
  }
}

bool ArtRenderer::pushDeviceClip(const ClipPath& path) {
  Box box{HUGE_VAL, HUGE_VAL, -HUGE_VAL, -HUGE_VAL};
  for (const DevicePolygon& poly : path)
    for (const Point& p : poly)
      box = Box{std::min(box.x0, p.x), std::min(box.y0, p.y), std::max(box.x1, p.x), std::max(box.y1, p.y)};
  if (static_cast<std::size_t>(clipDepth_ + 1) >= clips_.size()) clips_.push_back(std::make_unique<ClipLevel>());
  ClipLevel& level = *clips_[static_cast<std::size_t>(clipDepth_ + 1)];
  const ClipLevel& up = *clips_[static_cast<std::size_t>(clipDepth_)];
  ++clipDepth_;
  // A rectangle on whole pixels is a smaller region and needs no mask of its own.
  bool rect = false;
  if (path.size() == 1 && path[0].size() == 4) {
    const DevicePolygon& q = path[0];
    const bool whole = std::all_of(q.begin(), q.end(), [](const Point& p) { return p.x == std::floor(p.x) && p.y == std::floor(p.y); });
    rect = whole && ((q[0].x == q[1].x && q[1].y == q[2].y && q[2].x == q[3].x && q[3].y == q[0].y) ||
                     (q[0].y == q[1].y && q[1].x == q[2].x && q[2].y == q[3].y && q[3].x == q[0].x));
  }
  if (box.empty()) {
    level.region = IntRect{};
    return false;
  }
  if (rect) {
    level.region = intersect(IntRect{static_cast<std::int32_t>(box.x0), static_cast<std::int32_t>(box.y0),
                                     static_cast<std::int32_t>(box.x1), static_cast<std::int32_t>(box.y1)},
                             up.region);
    level.hasMask = up.hasMask;
  } else {
    level.region = intersect(toPixels(box), up.region);
    level.hasMask = true;
  }
  const IntRect region = level.region;
  if (isEmpty(region)) return false;
  if (!level.hasMask) return true;
  cairo_t* cr = level.mask.begin(region, Matrix{}, antialias_);
  if (!cr) return false;
  if (rect) {
    cairo_rectangle(cr, region.left, region.top, region.width(), region.height());
  } else {
    for (const DevicePolygon& poly : path) appendPolygon(cr, poly.data(), static_cast<int>(poly.size()));
  }
  cairo_fill(cr);
  level.mask.end();
  if (up.hasMask) {
    for (std::int32_t y = region.top; y < region.bottom; ++y) {
      std::uint8_t* d = level.mask.mutableRow(y);
      const std::uint8_t* u = up.mask.row(y) + (region.left - up.mask.region().left);
      for (std::int32_t i = 0; i < region.width(); ++i) d[i] = static_cast<std::uint8_t>(div255(d[i] * u[i]));
    }
  }
  return true;
}

bool ArtRenderer::pushClip(const Art& group, const Matrix& m) {
  Box box{HUGE_VAL, HUGE_VAL, -HUGE_VAL, -HUGE_VAL};
  for (const Art* c = group.firstChild(); c; c = c->nextSibling()) {
    if (c->isHidden() || !c->pathStyle().clipping) continue;
    const Box b = extentOf(*c, m, 0);
    if (!b.empty()) box = Box{std::min(box.x0, b.x0), std::min(box.y0, b.y0), std::max(box.x1, b.x1), std::max(box.y1, b.y1)};
  }
  const IntRect region = intersect(toPixels(box), currentLimit());
  if (isEmpty(region)) return false;
  if (static_cast<std::size_t>(clipDepth_ + 1) >= clips_.size()) clips_.push_back(std::make_unique<ClipLevel>());
  ClipLevel& level = *clips_[static_cast<std::size_t>(clipDepth_ + 1)];
  const ClipLevel& up = *clips_[static_cast<std::size_t>(clipDepth_)];
  level.region = region;
  level.hasMask = true;
  cairo_t* cr = level.mask.begin(region, m, antialias_);
  if (!cr) return false;
  // Each clipping path is filled on its own, so the clip is their union whatever their directions.
  for (const Art* c = group.lastChild(); c; c = c->previousSibling()) {
    if (c->isHidden() || !c->pathStyle().clipping) continue;
    appendOutline(cr, *c);
    cairo_set_fill_rule(cr, styleOf(*c).fillRule == FillRule::EvenOdd ? CAIRO_FILL_RULE_EVEN_ODD : CAIRO_FILL_RULE_WINDING);
    cairo_fill(cr);
  }
  level.mask.end();
  if (up.hasMask) {
    for (std::int32_t y = region.top; y < region.bottom; ++y) {
      std::uint8_t* d = level.mask.mutableRow(y);
      const std::uint8_t* u = up.mask.row(y) + (region.left - up.mask.region().left);
      for (std::int32_t i = 0; i < region.width(); ++i) d[i] = static_cast<std::uint8_t>(div255(d[i] * u[i]));
    }
  }
  ++clipDepth_;
  return true;
}

void ArtRenderer::popClip() {
  if (clipDepth_ > 0) --clipDepth_;
}

bool ArtRenderer::beginLayer(const IntRect& wanted) {
  const IntRect region = intersect(wanted, currentLimit());
  if (isEmpty(region)) return false;
  const std::size_t depth = targets_.size() - 1;
  if (layers_.size() <= depth) layers_.push_back(std::make_unique<LayerLevel>());
  LayerLevel& level = *layers_[depth];
  const int spp = space_->channelCount() - (space_->hasAlpha() ? 1 : 0) + 1;
  const std::int32_t stride = region.width() * spp;
  const std::size_t bytes = static_cast<std::size_t>(stride) * static_cast<std::size_t>(region.height());
  std::uint8_t* data = level.buffer.reserve(bytes);
  std::memset(data, 0, bytes);
  Surface s;
  s.data = data;
  s.stride = stride;
  s.area = region;
  s.bytesPerPixel = spp;
  s.alpha = true;
  targets_.push_back(s);
  ++layersUsed_;
  return true;
}

void ArtRenderer::endLayer(double opacity) {
  const Surface layer = targets_.back();
  targets_.pop_back();
  const Surface& parent = targets_.back();
  const std::uint8_t op = toByte(opacity);
  for (std::int32_t y = layer.area.top; y < layer.area.bottom; ++y)
    compositePixels(parent, y, layer.area.left, layer.area.right, nullptr, layer.row(y), op);
}

}  // namespace refhost::render
