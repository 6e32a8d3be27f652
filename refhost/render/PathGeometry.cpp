#include "refhost/render/PathGeometry.h"

#include "refhost/render/CoverageMask.h"

#include <cmath>
#include <vector>

namespace refhost::render {

namespace {

bool straight(const PathSegment& from, const PathSegment& to) { return from.out == from.p && to.in == to.p; }

void segmentTo(cairo_t* cr, const PathSegment& from, const PathSegment& to) {
  if (straight(from, to))
    cairo_line_to(cr, to.p.x, to.p.y);
  else
    cairo_curve_to(cr, from.out.x, from.out.y, to.in.x, to.in.y, to.p.x, to.p.y);
}

}  // namespace

void appendPath(cairo_t* cr, const PathData& path) {
  const auto& s = path.segments;
  if (s.empty()) return;
  cairo_move_to(cr, s[0].p.x, s[0].p.y);
  for (std::size_t i = 1; i < s.size(); ++i) segmentTo(cr, s[i - 1], s[i]);
  if (path.closed) {
    if (s.size() > 1) segmentTo(cr, s.back(), s.front());
    cairo_close_path(cr);
  }
}

void appendPolygon(cairo_t* cr, const Point* points, int count) {
  if (count < 3) return;
  cairo_move_to(cr, points[0].x, points[0].y);
  for (int i = 1; i < count; ++i) cairo_line_to(cr, points[i].x, points[i].y);
  cairo_close_path(cr);
}

void appendText(cairo_t* cr, const TextData& text) {
  if (text.text.empty() || text.fontSize <= 0) return;
  cairo_save(cr);
  cairo_matrix_t frame;
  toCairoMatrix(text.matrix, &frame);
  cairo_transform(cr, &frame);
  // Text space has y up; cairo lays glyphs out with y down.
  cairo_scale(cr, 1.0, -1.0);
  cairo_select_font_face(cr, text.fontFamily.empty() ? "sans-serif" : text.fontFamily.c_str(),
                         CAIRO_FONT_SLANT_NORMAL, CAIRO_FONT_WEIGHT_NORMAL);
  cairo_set_font_size(cr, text.fontSize);
  double x = 0.0;
  if (text.anchor != TextAnchor::Start) {
    cairo_text_extents_t e;
    cairo_text_extents(cr, text.text.c_str(), &e);
    x = text.anchor == TextAnchor::Middle ? -e.x_advance / 2 : -e.x_advance;
  }
  cairo_move_to(cr, x, 0.0);
  cairo_text_path(cr, text.text.c_str());
  cairo_restore(cr);
}

void appendOutline(cairo_t* cr, const Art& art) {
  if (art.isHidden()) return;
  switch (art.kind()) {
    case ArtKind::Path:
      if (const PathData* p = art.path()) appendPath(cr, *p);
      return;
    case ArtKind::TextFrame:
      if (const TextData* t = art.text()) appendText(cr, *t);
      return;
    case ArtKind::CompoundPath:
    case ArtKind::Group:
      for (const Art* c = art.lastChild(); c; c = c->previousSibling()) appendOutline(cr, *c);
      return;
    default:
      return;
  }
}

bool strokeDashes(const PathStyle& style, std::vector<double>& dashes, double& offset) {
  dashes.clear();
  offset = 0.0;
  double total = 0.0;
  for (double d : style.dashArray) {
    if (!(d >= 0.0) || !std::isfinite(d)) return true;
    total += d;
  }
  if (!(total > 0.0) || !std::isfinite(total)) return true;
  // An odd list is repeated to make (dash, gap) pairs.
  std::vector<double> list = style.dashArray;
  if (list.size() % 2) list.insert(list.end(), style.dashArray.begin(), style.dashArray.end());
  const double period = list.size() == style.dashArray.size() ? total : 2 * total;
  offset = std::isfinite(style.dashOffset) ? std::fmod(style.dashOffset, period) : 0.0;
  if (offset < 0) offset += period;
  if (style.lineCap != LineCap::Butt) {
    dashes = std::move(list);
    return true;
  }
  // Zero-length dashes before the first real one move to the end of the pattern, the start with them.
  std::size_t first = 0;
  double lead = 0.0;
  while (first < list.size() && list[first] == 0.0) {
    lead += list[first + 1];
    first += 2;
  }
  if (first == list.size()) return false;
  for (std::size_t i = first; i < list.size(); i += 2) {
    if (list[i] == 0.0) {
      dashes.back() += list[i + 1];
    } else {
      dashes.push_back(list[i]);
      dashes.push_back(list[i + 1]);
    }
  }
  dashes.back() += lead;
  offset -= lead;
  if (offset < 0) offset += period;
  return true;
}

void applyStroke(cairo_t* cr, const PathStyle& style, const std::vector<double>& dashes, double offset) {
  cairo_set_line_width(cr, style.strokeWidth);
  cairo_set_line_cap(cr, style.lineCap == LineCap::Round        ? CAIRO_LINE_CAP_ROUND
                         : style.lineCap == LineCap::Projecting ? CAIRO_LINE_CAP_SQUARE
                                                                : CAIRO_LINE_CAP_BUTT);
  cairo_set_line_join(cr, style.lineJoin == LineJoin::Round   ? CAIRO_LINE_JOIN_ROUND
                          : style.lineJoin == LineJoin::Bevel ? CAIRO_LINE_JOIN_BEVEL
                                                              : CAIRO_LINE_JOIN_MITER);
  cairo_set_miter_limit(cr, style.miterLimit);
  if (!dashes.empty()) cairo_set_dash(cr, dashes.data(), static_cast<int>(dashes.size()), offset);
}

}  // namespace refhost::render
