// Fill and cut between two networks without any rounding: every triangle of one against every triangle of the other,
// in rational numbers, within a simple polygon if there is one. What the exact volumes are compared with.
#pragma once

#include <array>
#include <vector>

#include <OrvikDTMAlgorithm/tin/CEType.h>
#include <OrvikDTMAlgorithm/tin/TPoint.h>

#include "ExactPlane.h"

namespace exact {

struct Corner {
  Rational x;
  Rational y;
  Rational difference;
};

using Polygon = std::vector<Corner>;

struct FillCut {
  Rational fillArea;
  Rational cutArea;
  Rational fillVolume;
  Rational cutVolume;
  Rational coverage;
};

inline Rational turn(const Corner& a, const Corner& b, const Corner& c) {
  return (b.x - a.x) * (c.y - a.y) - (b.y - a.y) * (c.x - a.x);
}

template <typename Side>
Polygon clipped(const Polygon& polygon, Side side) {
  Polygon result;
  for (std::size_t i = 0; i < polygon.size(); ++i) {
    const Corner& p = polygon[i];
    const Corner& q = polygon[(i + 1) % polygon.size()];
    const Rational sp = side(p);
    const Rational sq = side(q);
    if (sp >= 0) result.push_back(p);
    if ((sp > 0 && sq < 0) || (sp < 0 && sq > 0)) {
      const Rational t = sp / (sp - sq);
      result.push_back(
          {p.x + t * (q.x - p.x), p.y + t * (q.y - p.y), p.difference + t * (q.difference - p.difference)});
    }
  }
  return result;
}

// The part of a convex polygon within a triangle that turns counter-clockwise.
inline Polygon within(Polygon polygon, const Polygon& triangle) {
  for (std::size_t i = 0; i < 3; ++i) {
    polygon = clipped(polygon, [&](const Corner& p) { return turn(triangle[i], triangle[(i + 1) % 3], p); });
  }
  return polygon;
}

inline Polygon counterClockwise(Polygon triangle) {
  if (turn(triangle[0], triangle[1], triangle[2]) < 0) std::swap(triangle[1], triangle[2]);
  return triangle;
}

inline void measure(const Polygon& p, Rational& area, Rational& content) {
  for (std::size_t i = 2; i < p.size(); ++i) {
    const Rational a = turn(p[0], p[i - 1], p[i]) / 2;
    area += a;
    content += a * (p[0].difference + p[i - 1].difference + p[i].difference) / 3;
  }
}

// Adds a piece `sign` times.
inline void addPiece(const Polygon& piece, int sign, FillCut& sums) {
  const Polygon above = clipped(piece, [](const Corner& p) { return p.difference; });
  const Polygon below = clipped(piece, [](const Corner& p) { return Rational(-p.difference); });
  Rational wholeArea = 0;
  Rational whole = 0;
  Rational aboveArea = 0;
  Rational cut = 0;
  Rational belowArea = 0;
  Rational fill = 0;
  measure(piece, wholeArea, whole);
  measure(above, aboveArea, cut);
  measure(below, belowArea, fill);
  sums.coverage += sign * wholeArea;
  if (cut != 0) sums.cutArea += sign * aboveArea;
  sums.cutVolume += sign * cut;
  if (fill != 0) sums.fillArea += sign * belowArea;
  sums.fillVolume -= sign * fill;
}

// A simple polygon is the sum of the triangles from one corner over its sides, each with the sign of its turn.
inline void addWithin(const Polygon& piece, const std::vector<TPoint>& boundary, FillCut& sums) {
  const auto corner = [&boundary](std::size_t i) {
    const TPoint& p = boundary[i % boundary.size()];
    return Corner{Rational(p.getX()), Rational(p.getY()), 0};
  };
  Rational whole = 0;
  for (std::size_t i = 0; i < boundary.size(); ++i) whole += turn(corner(0), corner(i), corner(i + 1));
  for (std::size_t i = 1; i + 1 < boundary.size(); ++i) {
    const Polygon fan{corner(0), corner(i), corner(i + 1)};
    const int sign = turn(fan[0], fan[1], fan[2]).sign();
    if (sign == 0) continue;
    const Polygon part = within(piece, counterClockwise(fan));
    if (part.size() >= 3) addPiece(part, whole > 0 ? sign : -sign, sums);
  }
}

inline FillCut fillCut(const std::vector<std::array<TPoint*, 3>>& measured,
                       const std::vector<std::array<TPoint*, 3>>& reference, const std::vector<TPoint>& boundary = {}) {
  const auto polygonOf = [](const std::array<TPoint*, 3>& t) {
    Polygon result;
    for (const TPoint* p : t) result.push_back({Rational(p->getX()), Rational(p->getY()), 0});
    return counterClockwise(result);
  };
  FillCut sums;
  for (const auto& t : measured) {
    for (const auto& u : reference) {
      if (doubleArea(*t[0], *t[1], *t[2]) == 0 || doubleArea(*u[0], *u[1], *u[2]) == 0) continue;
      Polygon piece = within(polygonOf(t), polygonOf(u));
      if (piece.size() < 3) continue;
      for (Corner& p : piece) {
        const auto heightOn = [&p](const std::array<TPoint*, 3>& f) {
          // z is linear: its rise along both axes from the plane's normal
          const Rational ux = Rational(f[1]->getX()) - Rational(f[0]->getX());
          const Rational uy = Rational(f[1]->getY()) - Rational(f[0]->getY());
          const Rational uz = Rational(f[1]->getZ()) - Rational(f[0]->getZ());
          const Rational vx = Rational(f[2]->getX()) - Rational(f[0]->getX());
          const Rational vy = Rational(f[2]->getY()) - Rational(f[0]->getY());
          const Rational vz = Rational(f[2]->getZ()) - Rational(f[0]->getZ());
          const Rational nz = ux * vy - uy * vx;
          const Rational gx = (uz * vy - uy * vz) / nz;
          const Rational gy = (ux * vz - uz * vx) / nz;
          return Rational(Rational(f[0]->getZ()) + gx * (p.x - Rational(f[0]->getX())) +
                          gy * (p.y - Rational(f[0]->getY())));
        };
        p.difference = heightOn(t) - heightOn(u);
      }
      if (boundary.empty()) {
        addPiece(piece, 1, sums);
      } else {
        addWithin(piece, boundary, sums);
      }
    }
  }
  return sums;
}

}  // namespace exact
