// Signs, heights and volumes of triangles with coordinates in doubles, without any rounding: what the tests of location
// and volumes compare with.
#pragma once

#include <array>

#include <OrvikDTMAlgorithm/tin/TPoint.h>
#include <boost/multiprecision/cpp_int.hpp>

namespace exact {

using Rational = boost::multiprecision::cpp_rational;

inline Rational doubleArea(const TPoint& a, const TPoint& b, const TPoint& c) {
  const Rational ax(a.getX());
  const Rational ay(a.getY());
  return (Rational(b.getX()) - ax) * (Rational(c.getY()) - ay) - (Rational(b.getY()) - ay) * (Rational(c.getX()) - ax);
}

inline int side(const TPoint& a, const TPoint& b, const TPoint& p) { return doubleArea(a, b, p).sign(); }

enum class Place { Outside, OnBoundary, Inside };

// Where p lies in relation to the triangle, whichever way its corners run; everything is outside a flat one.
inline Place placeIn(const std::array<TPoint*, 3>& t, const TPoint& p) {
  const int turn = side(*t[0], *t[1], *t[2]);
  if (turn == 0) return Place::Outside;
  bool boundary = false;
  for (std::size_t i = 0; i < 3; ++i) {
    const int s = side(*t[i], *t[(i + 1) % 3], p) * turn;
    if (s < 0) return Place::Outside;
    boundary = boundary || s == 0;
  }
  return boundary ? Place::OnBoundary : Place::Inside;
}

inline Rational height(const std::array<TPoint*, 3>& t, const TPoint& p) {
  const Rational whole = doubleArea(*t[0], *t[1], *t[2]);
  Rational sum = 0;
  for (std::size_t i = 0; i < 3; ++i) {
    sum += doubleArea(*t[(i + 1) % 3], *t[(i + 2) % 3], p) * Rational(t[i]->getZ());
  }
  return sum / whole;
}

// The volume between the triangle and the level, positive above it.
inline Rational volumeAbove(const std::array<TPoint*, 3>& t, double level) {
  Rational area = doubleArea(*t[0], *t[1], *t[2]) / 2;
  if (area < 0) area = -area;
  return area * (Rational(t[0]->getZ()) + Rational(t[1]->getZ()) + Rational(t[2]->getZ()) - 3 * Rational(level)) / 3;
}

}  // namespace exact
