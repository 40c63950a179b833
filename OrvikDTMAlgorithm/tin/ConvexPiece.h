// A convex piece of ground between two surfaces: a polygon in plan with the surfaces' difference in height at every
// corner, which is linear in between. It is clipped by lines, split where the difference changes sign, and measured.
// Coordinates are relative to an origin nearby, which keeps all digits of large eastings for the piece. Private.
#pragma once

#include <algorithm>
#include <cstddef>

#include <OrvikDTMAlgorithm/FloatingPoint.h>
#include <OrvikDTMAlgorithm/tin/BoxTree.h>
#include <OrvikDTMAlgorithm/tin/Mesh.h>

inline namespace OrvikDTM {
namespace detail {

// Whether two boxes have a point in common.
inline bool meet(const Box& a, const Box& b) {
  return a.minX <= b.maxX && b.minX <= a.maxX && a.minY <= b.maxY && b.minY <= a.maxY;
}

struct PieceCorner {
  double x;
  double y;
  double difference;  // this surface's height less the other's
};

// Plan area, and the integral of the difference over it.
struct PieceMeasure {
  double area = 0.0;
  double content = 0.0;
};

class ConvexPiece {
 public:
  // Copies take over the corners in use and no more: there is room for far more than most pieces have.
  ConvexPiece() {}
  ConvexPiece(const ConvexPiece& source) { *this = source; }
  ConvexPiece& operator=(const ConvexPiece& source) {
    count_ = source.count_;
    for (std::size_t i = 0; i < count_; ++i) corners_[i] = source.corners_[i];
    return *this;
  }

  void clear() { count_ = 0; }
  void add(const PieceCorner& corner) { corners_[count_++] = corner; }
  bool isEmpty() const { return count_ < kFewestCorners; }
  std::size_t size() const { return count_; }
  PieceCorner& operator[](std::size_t i) { return corners_[i]; }
  const PieceCorner& operator[](std::size_t i) const { return corners_[i]; }

  // Leaves what lies where side(corner) >= 0; the side is linear over the plan. What is left of a piece that only
  // touches that half-plane is empty. Where two half-planes are exact opposites, their parts meet without gap or
  // overlap.
  template <typename Side>
  void clip(Side side) {
    double sides[kMostCorners];
    std::size_t beyond = 0;
    bool isWithin = false;
    for (std::size_t i = 0; i < count_; ++i) {
      sides[i] = side(corners_[i]);
      if (!(sides[i] >= 0)) ++beyond;
      isWithin = isWithin || sides[i] > 0;
    }
    if (!isWithin && beyond > 0) return clear();
    if (beyond > 0) cutOff(sides);
  }

  // Leaves what lies left of start -> end.
  void clipLeftOf(const Position& start, const Position& end) { clipBeside(start, end, 1.0); }
  void clipRightOf(const Position& start, const Position& end) { clipBeside(start, end, -1.0); }

  PieceMeasure measure() const {
    PieceMeasure result;
    for (std::size_t i = 2; i < count_; ++i) {
      const PieceCorner& a = corners_[0];
      const PieceCorner& b = corners_[i - 1];
      const PieceCorner& c = corners_[i];
      const double area = ((b.x - a.x) * (c.y - a.y) - (b.y - a.y) * (c.x - a.x)) / 2;
      result.area += area;
      result.content += area * (a.difference + b.difference + c.difference) / 3;
    }
    return result;
  }

  // Of a piece that is not empty.
  Box box() const {
    Box result{corners_[0].x, corners_[0].y, corners_[0].x, corners_[0].y};
    for (std::size_t i = 1; i < count_; ++i) {
      result.minX = std::min(result.minX, corners_[i].x);
      result.minY = std::min(result.minY, corners_[i].y);
      result.maxX = std::max(result.maxX, corners_[i].x);
      result.maxY = std::max(result.maxY, corners_[i].y);
    }
    return result;
  }

 private:
  static constexpr std::size_t kFewestCorners = 3;

  // A clipping makes at most half as many corners again, rounding errors included: an entry or exit takes a corner on
  // either side of the line. A triangle is clipped eight times at most: by three sides of another, four of a part of
  // the boundary, and where the difference changes sign: 3, 4, 6, 9, 13, 19, 28, 42, 63.
  static constexpr std::size_t kMostCorners = 64;

  void clipBeside(const Position& start, const Position& end, double sign) {
    const double dx = end.x - start.x;
    const double dy = end.y - start.y;
    clip([&](const PieceCorner& p) { return sign * (dx * (p.y - start.y) - dy * (p.x - start.x)); });
  }

  void cutOff(const double* sides) {
    const ConvexPiece before(*this);
    const std::size_t count = count_;
    clear();
    for (std::size_t i = 0; i < count; ++i) {
      const std::size_t next = i + 1 == count ? 0 : i + 1;
      if (sides[i] >= 0) add(before[i]);
      const bool isCrossing = (sides[i] > 0 && sides[next] < 0) || (sides[i] < 0 && sides[next] > 0);
      if (isCrossing) add(between(before[i], before[next], sides[i] / (sides[i] - sides[next])));
    }
    if (isEmpty()) clear();
  }

  static PieceCorner between(const PieceCorner& p, const PieceCorner& q, double part) {
    // Differences from an infinite level are equal and must not be subtracted.
    const double difference =
        p.difference == q.difference ? p.difference : p.difference + (q.difference - p.difference) * part;
    return {p.x + (q.x - p.x) * part, p.y + (q.y - p.y) * part, difference};
  }

  PieceCorner corners_[kMostCorners];
  std::size_t count_ = 0;
};

}  // namespace detail
}  // namespace OrvikDTM
