#include "refhost/io/SvgPathData.h"

#include "refhost/io/SvgNumbers.h"

#include <cctype>
#include <cmath>
#include <cstring>

namespace refhost::io::svg {

namespace {

Point add(Point a, Point b) { return Point{a.x + b.x, a.y + b.y}; }
Point lerp(Point a, Point b, double t) { return Point{a.x + (b.x - a.x) * t, a.y + (b.y - a.y) * t}; }

void lineTo(Subpath& sub, Point p) {
  // A zero-length line adds nothing, except as the only segment (a dot that round caps draw).
  if (sub.anchors.size() > 1 && sub.anchors.back().p == p && sub.anchors.back().out == p) return;
  sub.anchors.push_back(PathSegment::at(p));
}

void cubicTo(Subpath& sub, Point c1, Point c2, Point p) {
  sub.anchors.back().out = c1;
  sub.anchors.push_back(PathSegment{p, c2, p, true});
}

bool isCommand(char c) { return std::strchr("MmLlHhVvCcSsQqTtAaZz", c) != nullptr && c != '\0'; }

}  // namespace

void appendArc(Subpath& sub, Point from, double rx, double ry, double rotationDegrees, bool largeArc, bool sweep,
               Point to) {
  if (from == to) return;
  rx = std::fabs(rx);
  ry = std::fabs(ry);
  if (rx == 0 || ry == 0) {
    lineTo(sub, to);
    return;
  }
  const double phi = rotationDegrees * M_PI / 180.0;
  const double cs = std::cos(phi), sn = std::sin(phi);
  const double dx2 = (from.x - to.x) / 2, dy2 = (from.y - to.y) / 2;
  const double x1p = cs * dx2 + sn * dy2;
  const double y1p = -sn * dx2 + cs * dy2;
  const double lambda = (x1p * x1p) / (rx * rx) + (y1p * y1p) / (ry * ry);
  if (lambda > 1) {
    rx *= std::sqrt(lambda);
    ry *= std::sqrt(lambda);
  }
  const double num = rx * rx * ry * ry - rx * rx * y1p * y1p - ry * ry * x1p * x1p;
  const double den = rx * rx * y1p * y1p + ry * ry * x1p * x1p;
  double coef = den > 0 ? std::sqrt(std::max(0.0, num / den)) : 0.0;
  if (largeArc == sweep) coef = -coef;
  const double cxp = coef * rx * y1p / ry;
  const double cyp = -coef * ry * x1p / rx;
  const double cx = cs * cxp - sn * cyp + (from.x + to.x) / 2;
  const double cy = sn * cxp + cs * cyp + (from.y + to.y) / 2;
  auto angle = [](double ux, double uy, double vx, double vy) { return std::atan2(ux * vy - uy * vx, ux * vx + uy * vy); };
  const double theta1 = angle(1, 0, (x1p - cxp) / rx, (y1p - cyp) / ry);
  double dtheta = angle((x1p - cxp) / rx, (y1p - cyp) / ry, (-x1p - cxp) / rx, (-y1p - cyp) / ry);
  if (!sweep && dtheta > 0) dtheta -= 2 * M_PI;
  if (sweep && dtheta < 0) dtheta += 2 * M_PI;
  const int n = std::max(1, static_cast<int>(std::ceil(std::fabs(dtheta) / (M_PI / 2) - 1e-9)));
  const double step = dtheta / n;
  const double k = 4.0 / 3.0 * std::tan(step / 4);
  auto pointAt = [&](double t) {
    return Point{cx + rx * std::cos(t) * cs - ry * std::sin(t) * sn, cy + rx * std::cos(t) * sn + ry * std::sin(t) * cs};
  };
  auto tangentAt = [&](double t) {
    return Point{-rx * std::sin(t) * cs - ry * std::cos(t) * sn, -rx * std::sin(t) * sn + ry * std::cos(t) * cs};
  };
  for (int i = 0; i < n; ++i) {
    const double t1 = theta1 + i * step, t2 = t1 + step;
    const Point p1 = i == 0 ? from : pointAt(t1);
    const Point d1 = tangentAt(t1), d2 = tangentAt(t2);
    const Point p2 = i == n - 1 ? to : pointAt(t2);
    cubicTo(sub, Point{p1.x + k * d1.x, p1.y + k * d1.y}, Point{pointAt(t2).x - k * d2.x, pointAt(t2).y - k * d2.y}, p2);
  }
}

void finishSubpath(Subpath& sub) {
  auto& a = sub.anchors;
  if (sub.closed && a.size() >= 2) {
    const Point f = a.front().p, l = a.back().p;
    const double tol = 1e-9 * (1.0 + std::fabs(f.x) + std::fabs(f.y));
    if (std::fabs(f.x - l.x) <= tol && std::fabs(f.y - l.y) <= tol) {
      a.front().in = a.back().in;
      a.pop_back();
    }
  }
  for (PathSegment& s : a) {
    const double ax = s.p.x - s.in.x, ay = s.p.y - s.in.y;
    const double bx = s.out.x - s.p.x, by = s.out.y - s.p.y;
    const double la = std::hypot(ax, ay), lb = std::hypot(bx, by);
    if (la == 0 || lb == 0) {
      s.corner = true;
      continue;
    }
    const double cross = ax * by - ay * bx;
    const double dot = ax * bx + ay * by;
    s.corner = !(dot > 0 && std::fabs(cross) <= 1e-6 * la * lb);
  }
}

PathParseResult parsePathData(std::string_view data, std::size_t maxAnchors) {
  PathParseResult out;
  NumberScanner scan(data);
  Subpath* sub = nullptr;
  Point current{0, 0}, start{0, 0};
  Point lastCubicControl{0, 0}, lastQuadControl{0, 0};
  char previous = 0;
  char command = 0;
  std::size_t anchors = 0;
  auto fail = [&](const std::string& message) {
    out.error = message;
    out.errorOffset = scan.position();
  };
  auto ensureSubpath = [&]() {
    if (!sub) {
      out.subpaths.emplace_back();
      sub = &out.subpaths.back();
      sub->anchors.push_back(PathSegment::at(current));
    }
  };

  while (true) {
    scan.skipSpaces();
    if (scan.atEnd()) break;
    const char c = scan.peek();
    if (std::isalpha(static_cast<unsigned char>(c))) {
      if (!isCommand(c)) {
        fail(std::string("unknown path command '") + c + "'");
        break;
      }
      command = c;
      scan.advance();
    } else if (command == 0) {
      fail("path data must start with a moveto");
      break;
    } else if (command == 'Z' || command == 'z') {
      fail("numbers after closepath");
      break;
    }
    if (previous == 0 && command != 'M' && command != 'm') {
      fail("path data must start with a moveto");
      break;
    }
    const bool rel = std::islower(static_cast<unsigned char>(command)) != 0;
    const char upper = static_cast<char>(std::toupper(static_cast<unsigned char>(command)));
    auto num = [&](double& v) {
      scan.skipSeparator();
      auto n = scan.number();
      if (!n || !std::isfinite(*n)) return false;
      v = *n;
      return true;
    };
    auto pt = [&](Point& p) {
      if (!num(p.x) || !num(p.y)) return false;
      if (rel) p = add(p, current);
      return true;
    };
    bool ok = true;
    switch (upper) {
      case 'Z':
        if (sub) {
          sub->closed = true;
          current = start;
          sub = nullptr;
        }
        break;
      case 'M': {
        Point p;
        if (!(ok = pt(p))) break;
        if (sub && sub->anchors.size() == 1 && !sub->closed) out.subpaths.pop_back();
        sub = nullptr;
        current = start = p;
        ensureSubpath();
        // Further pairs are implicit linetos.
        command = rel ? 'l' : 'L';
        break;
      }
      case 'L': {
        Point p;
        if (!(ok = pt(p))) break;
        ensureSubpath();
        lineTo(*sub, p);
        current = p;
        break;
      }
      case 'H': {
        double x;
        if (!(ok = num(x))) break;
        ensureSubpath();
        current = Point{rel ? current.x + x : x, current.y};
        lineTo(*sub, current);
        break;
      }
      case 'V': {
        double y;
        if (!(ok = num(y))) break;
        ensureSubpath();
        current = Point{current.x, rel ? current.y + y : y};
        lineTo(*sub, current);
        break;
      }
      case 'C': {
        Point c1, c2, p;
        if (!(ok = pt(c1) && pt(c2) && pt(p))) break;
        ensureSubpath();
        cubicTo(*sub, c1, c2, p);
        lastCubicControl = c2;
        current = p;
        break;
      }
      case 'S': {
        Point c2, p;
        if (!(ok = pt(c2) && pt(p))) break;
        const char prevUpper = static_cast<char>(std::toupper(static_cast<unsigned char>(previous)));
        const Point c1 = (prevUpper == 'C' || prevUpper == 'S')
                             ? Point{2 * current.x - lastCubicControl.x, 2 * current.y - lastCubicControl.y}
                             : current;
        ensureSubpath();
        cubicTo(*sub, c1, c2, p);
        lastCubicControl = c2;
        current = p;
        break;
      }
      case 'Q':
      case 'T': {
        Point q, p;
        if (upper == 'Q') {
          if (!(ok = pt(q) && pt(p))) break;
        } else {
          if (!(ok = pt(p))) break;
          const char prevUpper = static_cast<char>(std::toupper(static_cast<unsigned char>(previous)));
          q = (prevUpper == 'Q' || prevUpper == 'T')
                  ? Point{2 * current.x - lastQuadControl.x, 2 * current.y - lastQuadControl.y}
                  : current;
        }
        ensureSubpath();
        // The cubic with the same curve: control points two thirds of the way to the quadratic's.
        cubicTo(*sub, lerp(current, q, 2.0 / 3.0), lerp(p, q, 2.0 / 3.0), p);
        lastQuadControl = q;
        current = p;
        break;
      }
      case 'A': {
        double rx, ry, rot;
        if (!(ok = num(rx) && num(ry) && num(rot))) break;
        scan.skipSeparator();
        auto large = scan.flag();
        scan.skipSeparator();
        auto sweep = scan.flag();
        Point p;
        if (!(ok = large.has_value() && sweep.has_value() && pt(p))) break;
        ensureSubpath();
        appendArc(*sub, current, rx, ry, rot, *large, *sweep, p);
        current = p;
        break;
      }
      default:
        ok = false;
    }
    if (!ok) {
      fail(std::string("bad arguments for path command '") + command + "'");
      break;
    }
    // Implicit repetition continues with the same command; a closepath takes no numbers.
    previous = command;
    // One command adds at most four anchors (a full-circle arc).
    anchors += 4;
    if (anchors > maxAnchors) {
      fail("too many path points (limit " + std::to_string(maxAnchors) + ")");
      break;
    }
  }
  if (sub && sub->anchors.size() == 1 && !sub->closed) out.subpaths.pop_back();
  for (Subpath& s : out.subpaths) finishSubpath(s);
  return out;
}

Subpath rectangle(double x, double y, double w, double h, double rx, double ry) {
  Subpath s;
  s.closed = true;
  if (rx <= 0 || ry <= 0) {
    s.anchors = {PathSegment::at(x, y), PathSegment::at(x + w, y), PathSegment::at(x + w, y + h), PathSegment::at(x, y + h)};
    finishSubpath(s);
    return s;
  }
  s.anchors.push_back(PathSegment::at(x + rx, y));
  lineTo(s, Point{x + w - rx, y});
  appendArc(s, Point{x + w - rx, y}, rx, ry, 0, false, true, Point{x + w, y + ry});
  lineTo(s, Point{x + w, y + h - ry});
  appendArc(s, Point{x + w, y + h - ry}, rx, ry, 0, false, true, Point{x + w - rx, y + h});
  lineTo(s, Point{x + rx, y + h});
  appendArc(s, Point{x + rx, y + h}, rx, ry, 0, false, true, Point{x, y + h - ry});
  lineTo(s, Point{x, y + ry});
  appendArc(s, Point{x, y + ry}, rx, ry, 0, false, true, Point{x + rx, y});
  finishSubpath(s);
  return s;
}

Subpath ellipse(double cx, double cy, double rx, double ry) {
  Subpath s;
  s.closed = true;
  s.anchors.push_back(PathSegment::at(cx + rx, cy));
  appendArc(s, Point{cx + rx, cy}, rx, ry, 0, false, true, Point{cx, cy + ry});
  appendArc(s, Point{cx, cy + ry}, rx, ry, 0, false, true, Point{cx - rx, cy});
  appendArc(s, Point{cx - rx, cy}, rx, ry, 0, false, true, Point{cx, cy - ry});
  appendArc(s, Point{cx, cy - ry}, rx, ry, 0, false, true, Point{cx + rx, cy});
  finishSubpath(s);
  return s;
}

}  // namespace refhost::io::svg
