// A piece of a triangle while two surfaces are compared: three corners on the walked surface, handled by value.
// Private.
#pragma once

#include <cmath>

#include <OrvikDTMAlgorithm/FloatingPoint.h>

inline namespace OrvikDTM {
namespace detail {

// A corner of a piece. What is known of its place holds whenever and from wherever it is looked for.
struct Spot {
  double x;
  double y;
  double z;
  int onlyIn = 0;         // the triangle of the queried network that it lies strictly inside, if it lies in no other; 0
                          // where that is not known,
  double height = 0.0;    // and the queried surface's height there
  bool isBeyond = false;  // outside the boundary
};

struct Piece {
  Spot corner[3];
};

// Of its place nothing is known yet.
inline Spot middle(const Spot& a, const Spot& b) { return {(a.x + b.x) / 2, (a.y + b.y) / 2, (a.z + b.z) / 2}; }

// The plan area by cross product.
inline double planAreaByCross(const Piece& piece) {
  const Spot& a = piece.corner[0];
  const Spot& b = piece.corner[1];
  const Spot& c = piece.corner[2];
  return std::fabs((b.x - a.x) * (c.y - b.y) - (b.y - a.y) * (c.x - b.x)) / 2;
}

// Calls take(piece) for the four pieces between the corners and the middles of the sides, which middleOf(p, q) makes,
// in the order in which they queue up.
template <typename MiddleOf, typename Take>
void splitInFour(const Piece& piece, MiddleOf middleOf, Take take) {
  const Spot& p1 = piece.corner[0];
  const Spot& p2 = piece.corner[1];
  const Spot& p3 = piece.corner[2];
  const Spot m12 = middleOf(p1, p2);
  const Spot m13 = middleOf(p1, p3);
  const Spot m23 = middleOf(p2, p3);
  take(Piece{{p1, m12, m13}});
  take(Piece{{m12, p2, m23}});
  take(Piece{{m13, m23, p3}});
  take(Piece{{m12, m23, m13}});
}

}  // namespace detail
}  // namespace OrvikDTM
