// A boundary polygon as trapezoids, so that convex pieces can be clipped by it: concave, self-crossing and repeating
// itself, it counts even-odd. A sweep from south to north cuts it at the northing of every corner and crossing; a
// trapezoid goes on for as long as the same two sides bound it. Private.
#pragma once

#include <cmath>
#include <limits>
#include <vector>

#include <OrvikDTMAlgorithm/tin/BoxTree.h>
#include <OrvikDTMAlgorithm/tin/ConvexPiece.h>
#include <OrvikDTMAlgorithm/tin/Mesh.h>

inline namespace OrvikDTM {
namespace detail {

// A side of the polygon; start is its southern end (its western, if the side runs east-west).
struct BoundarySide {
  Position start;
  Position end;

  double xAt(double y) const { return start.x + (y - start.y) / (end.y - start.y) * (end.x - start.x); }

  // What xAt() computes is off by less than 6 u (|start.x| + |dx|), u = 2^-53. Sides that are apart by the sum of their
  // slacks at two northings are, exactly, apart by more than half of it there and so at each in between, where
  // computing them anew cannot change their order. Sums with slacks are rounded by less than the other half.
  double slack() const {
    constexpr double kSlack = 16 * 0x1p-53;
    return kSlack * (std::fabs(start.x) + std::fabs(end.x - start.x)) + std::numeric_limits<double>::min();
  }
};

// What lies between two sides, from one northing to another.
struct BoundaryPart {
  Number left;
  Number right;
  double low;
  double high;
};

class BoundaryParts {
 public:
  // Corners that are not finite, or too far off to measure with, are passed over.
  explicit BoundaryParts(const std::vector<TPoint*>& polygon);

  enum class Place { Outside, Inside, Across };
  Place placeOf(const Box& box) const;

  // Calls visit(part) for every part whose box meets `box`, and for few others.
  template <typename Visit>
  void visitParts(const Box& box, Visit visit) const {
    partTree_.visit(box, [&](Number number) {
      const BoundaryPart& part = parts_[number];
      if (part.low <= box.maxY && box.minY <= part.high) visit(part);
    });
  }

  // Leaves what lies in the part.
  void clip(const BoundaryPart& part, ConvexPiece& piece, const Position& origin) const;

 private:
  bool holds(const BoundaryPart& part, const Position& p) const;
  Box boxOf(const BoundaryPart& part) const;

  std::vector<BoundarySide> sides_;
  std::vector<BoundaryPart> parts_;
  BoxTree sideTree_;
  BoxTree partTree_;
};

// The parts of a polygon that is given by its sides. `work` becomes how many sides were looked at, counted once for
// each range of bands that they were looked at in.
std::vector<BoundaryPart> partsOf(const std::vector<BoundarySide>& sides, std::size_t* work = nullptr);

}  // namespace detail
}  // namespace OrvikDTM
