// The triangles of a TIN as planes over plan triangles, found by their boxes: what an overlay of two networks works on.
// A copy; it needs the TIN no more once made. Private.
#pragma once

#include <cmath>
#include <vector>

#include <OrvikDTMAlgorithm/FloatingPoint.h>
#include <OrvikDTMAlgorithm/tin/BoxTree.h>
#include <OrvikDTMAlgorithm/tin/ConvexPiece.h>
#include <OrvikDTMAlgorithm/tin/Mesh.h>

inline namespace OrvikDTM {

class CEType;

namespace detail {

// Beyond this, in coordinate units, areas and volumes might not be numbers any more; nothing is measured out there.
inline constexpr double kLargestMeasured = 1e75;

// Whether a coordinate can be measured with; NaN cannot.
inline bool isMeasurable(double v) { return std::fabs(v) <= kLargestMeasured; }

// One triangle. Its corners stand in the order of their coordinates, whichever way the network lists them: so equal
// triangles have equal planes to the last bit, and triangles that share a side see it from the same end.
struct Facet {
  Position p[3];
  double z[3];
  double slopeX;  // rise per unit along x and y
  double slopeY;
  double lowest;  // among the corners, above corner 0
  double highest;
  double spread;  // area along the surface per plan area
  int turn;       // 1 when the corners turn counter-clockwise, -1 clockwise

  // False for a triangle that does not exist, is flat, or has a coordinate that cannot be measured with.
  static bool make(const CEType& tin, int tri, Facet& facet);

  Box box() const;

  // The height at a place relative to `origin`, above corner 0. What rounding makes of the plane of a sliver stays
  // between the heights of its corners.
  double rise(double x, double y, const Position& origin) const {
    const double height = slopeX * (x + (origin.x - p[0].x)) + slopeY * (y + (origin.y - p[0].y));
    return height < lowest ? lowest : height > highest ? highest : height;
  }

  // The triangle as a piece relative to `origin`, counter-clockwise, with its differences to a level.
  ConvexPiece piece(const Position& origin, double level) const;

  // Leaves the part of a piece that lies in the triangle.
  void clip(ConvexPiece& piece, const Position& origin) const;

 private:
  void setPlane();
};

class Facets {
 public:
  // Without the triangles of which no facet can be made.
  explicit Facets(const CEType& tin);

  // Neighbours in plan stand close together.
  const std::vector<Facet>& all() const { return facets_; }

  // The triangle of every facet.
  const std::vector<Number>& numbers() const { return tree_.order(); }

  // Calls visit(facet) for every facet whose box meets `box`, and for few others.
  template <typename Visit>
  void visit(const Box& box, Visit visitFacet) const {
    tree_.visitPlaces(box, [&](Number place) { visitFacet(facets_[place]); });
  }

 private:
  std::vector<Facet> facets_;
  BoxTree tree_;
};

}  // namespace detail
}  // namespace OrvikDTM
