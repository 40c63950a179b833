// The measure of one piece against three heights of the other surface: areas and volumes of what is filled and what is
// cut, and how it is drawn. Inline: a comparison measures millions of pieces. Private.
#pragma once

#include <algorithm>
#include <cmath>

#include <OrvikDTMAlgorithm/FloatingPoint.h>
#include <OrvikDTMAlgorithm/tin/FillAndCut.h>
#include <OrvikDTMAlgorithm/tin/Piece.h>
#include <OrvikDTMAlgorithm/tin/TriangleAreas.h>

inline namespace OrvikDTM {
namespace detail {

// Surfaces closer to each other than this, in coordinate units of height, coincide.
inline constexpr double kCoincidence = 1e-7;

struct PieceAreas {
  double plan;
  double spatial;
};

inline PieceAreas areasOf(const Spot& a, const Spot& b, const Spot& c) {
  const auto squares = [](const Spot& p, const Spot& q) {
    const double dx = q.x - p.x;
    const double dy = q.y - p.y;
    return dx * dx + dy * dy;
  };
  const auto lifted = [](double plan, const Spot& p, const Spot& q) {
    const double dz = q.z - p.z;
    return std::sqrt(plan + dz * dz);
  };
  const double ab = squares(a, b);
  const double bc = squares(b, c);
  const double ca = squares(c, a);
  return {planArea(std::sqrt(ab), std::sqrt(bc), std::sqrt(ca)),
          spatialArea(lifted(ab, a, b), lifted(bc, b, c), lifted(ca, c, a))};
}

// The volume between the piece and the heights when it lies wholly on one side of them: the prism under the upper
// surface less that under the lower one, both above the lowest point of the lower one.
inline double prismBetween(const Piece& piece, const double (&h)[3], bool pieceIsUpper, double planArea) {
  const double z[3] = {piece.corner[0].z, piece.corner[1].z, piece.corner[2].z};
  const double(&upper)[3] = pieceIsUpper ? z : h;
  const double(&lower)[3] = pieceIsUpper ? h : z;
  const double base = std::min({lower[0], lower[1], lower[2]});
  const double above = planArea * ((upper[0] - base) + (upper[1] - base) + (upper[2] - base)) / 3;
  const double below = planArea * ((lower[0] - base) + (lower[1] - base) + (lower[2] - base)) / 3;
  return above - below;
}

// Measures the piece against the heights of the other surface at its corners. `upperStatus` is what the piece is where
// it is the upper one. Every part goes to draw(p1, p2, p3, status).
template <typename Draw>
void measureWhole(const Piece& piece, const double (&h)[3], bool isUpper, int upperStatus, FillAndCut& sums,
                  Draw draw) {
  const Spot(&p)[3] = piece.corner;
  const PieceAreas areas = areasOf(p[0], p[1], p[2]);
  const int status = isUpper ? upperStatus : -upperStatus;
  draw(p[0], p[1], p[2], status);
  sums.on(status).add(areas.plan, areas.spatial, prismBetween(piece, h, isUpper, areas.plan));
}

// Where the other surface crosses a piece: the lone corner on one side of it, the others on the other. The crossing
// points are set off from a and b by the lone corner's share of the height; volumes do not depend on them, and results
// have been drawn so for years.
template <typename Draw>
void measureCrossed(const Piece& piece, const double (&d)[3], int upperStatus, FillAndCut& sums, Draw draw) {
  int a = 0;
  int b = 1;
  int lone = 2;
  if (d[1] * d[0] < 0) {
    b = 2;
    lone = 1;
    if (d[2] * d[0] < 0) {
      a = 1;
      lone = 0;
    }
  }
  const double dA = std::fabs(d[a]);
  const double dB = std::fabs(d[b]);
  const double dL = std::fabs(d[lone]);
  const Spot& pA = piece.corner[a];
  const Spot& pB = piece.corner[b];
  const Spot& pL = piece.corner[lone];
  const auto towardsLone = [&pL, dL](const Spot& from, double above) {
    const double whole = above + dL;
    return Spot{from.x + (pL.x - from.x) * dL / whole, from.y + (pL.y - from.y) * dL / whole,
                from.z + (pL.z - from.z) * dL / whole};
  };
  const Spot onA = towardsLone(pA, dA);
  const Spot onB = towardsLone(pB, dB);
  const PieceAreas whole = areasOf(piece.corner[0], piece.corner[1], piece.corner[2]);
  const PieceAreas loneAreas = areasOf(pL, onA, onB);
  const double product = (dA + dL) * (dB + dL);
  const double cube = dL * dL * dL;
  const int loneStatus = d[lone] > 0 ? upperStatus : -upperStatus;
  draw(pL, onA, onB, loneStatus);
  draw(pA, onA, onB, -loneStatus);
  draw(pA, pB, onB, -loneStatus);
  sums.on(loneStatus).add(loneAreas.plan, loneAreas.spatial, whole.plan * cube / (3 * (dA + dL) * (dB + dL)));
  sums.on(-loneStatus)
      .add(whole.plan - loneAreas.plan, whole.spatial - loneAreas.spatial,
           (cube / product - dL + dA + dB) * whole.plan / 3);
}

template <typename Draw>
void measurePiece(const Piece& piece, const double (&h)[3], int upperStatus, FillAndCut& sums, Draw draw) {
  double d[3];
  bool anyAbove = false;
  bool anyBelow = false;
  bool allNumbers = true;
  for (int i = 0; i < 3; ++i) {
    const double above = piece.corner[i].z - h[i];
    anyAbove = anyAbove || above > kCoincidence;
    anyBelow = anyBelow || above < -kCoincidence;
    allNumbers = allNumbers && !std::isnan(above);
    d[i] = std::fabs(above) <= kCoincidence ? 0.0 : above;
  }
  // A height that is not a number goes the crossed way, where it makes the sums NaN.
  if ((anyAbove && anyBelow) || !allNumbers) {
    measureCrossed(piece, d, upperStatus, sums, draw);
  } else if (anyAbove || anyBelow) {
    measureWhole(piece, h, anyAbove, upperStatus, sums, draw);
  }
}

}  // namespace detail
}  // namespace OrvikDTM
