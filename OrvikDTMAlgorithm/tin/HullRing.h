// The hull of a TIN as a closed polygon, and whether a point lies within it. Private.
#pragma once

#include <memory>
#include <vector>

#include <OrvikDTMAlgorithm/tin/Mesh.h>

inline namespace OrvikDTM {

class ConvexList;
class EList;

namespace detail {

class HullRing {
 public:
  // Chains the edges that the hull list names, each to the first that starts where it ends. Null where there are fewer
  // than three hull entries, which is no ring and no fault.
  static std::shared_ptr<const HullRing> of(const ConvexList* hull, const EList* edges);

  // Whether the chain does not close into one simple polygon of all hull edges, as around holes and on islands. Such a
  // hull limits nothing.
  bool isInvalid() const { return invalid_; }

  // Even-odd by exact signs, boundary included; true everywhere for an invalid hull.
  bool contains(const Position& p) const;

 private:
  bool invalid_ = true;
  std::vector<Position> vertices_;
};

}  // namespace detail
}  // namespace OrvikDTM
