// A piece of a triangle while two surfaces are compared: three corners on the walked surface, handled by value.
// Private.
#pragma once

#include <cmath>

#include <OrvikDTMAlgorithm/FloatingPoint.h>
#include <OrvikDTMAlgorithm/tin/FlatTIN.h>

inline namespace OrvikDTM {
namespace detail {

struct Spot {
  double x;
  double y;
  double z;
};

struct Piece {
  Spot corner[3];
};

inline Piece pieceOf(const FlatTIN::Corners& c) {
  return {{{c.p[0].x, c.p[0].y, c.z[0]}, {c.p[1].x, c.p[1].y, c.z[1]}, {c.p[2].x, c.p[2].y, c.z[2]}}};
}

inline Spot middle(const Spot& a, const Spot& b) { return {(a.x + b.x) / 2, (a.y + b.y) / 2, (a.z + b.z) / 2}; }

// The plan area by cross product.
inline double planAreaByCross(const Piece& piece) {
  const Spot& a = piece.corner[0];
  const Spot& b = piece.corner[1];
  const Spot& c = piece.corner[2];
  return std::fabs((b.x - a.x) * (c.y - b.y) - (b.y - a.y) * (c.x - b.x)) / 2;
}

// Calls take(piece) for the four pieces between the corners and the middles of the sides, in the order in which they
// queue up.
template <typename Take>
void splitInFour(const Piece& piece, Take take) {
  const Spot& p1 = piece.corner[0];
  const Spot& p2 = piece.corner[1];
  const Spot& p3 = piece.corner[2];
  const Spot m12 = middle(p1, p2);
  const Spot m13 = middle(p1, p3);
  const Spot m23 = middle(p2, p3);
  take(Piece{{p1, m12, m13}});
  take(Piece{{m12, p2, m23}});
  take(Piece{{m13, m23, p3}});
  take(Piece{{m12, m23, m13}});
}

// The same twice over: sixteen pieces.
template <typename Take>
void splitInSixteen(const Piece& piece, Take take) {
  splitInFour(piece, [&take](const Piece& quarter) { splitInFour(quarter, take); });
}

}  // namespace detail
}  // namespace OrvikDTM
