// The hull of a TIN as a closed polygon, and whether a point lies within it. Private.
#pragma once

#include <cstddef>
#include <memory>
#include <vector>

#include <OrvikDTMAlgorithm/tin/BoxTree.h>
#include <OrvikDTMAlgorithm/tin/Mesh.h>

inline namespace OrvikDTM {

class ConvexList;
class EList;

namespace detail {

class HullRing {
 public:
  // Where a point lies: how often the ring goes round it counter-clockwise, unless it lies on the ring itself.
  struct Place {
    bool onRing = false;
    int winding = 0;

    // Even-odd, boundary included.
    bool isWithin() const { return onRing || winding % 2 != 0; }
    bool operator==(const Place&) const = default;
  };

  // Chains the edges that the hull list names, each to the first that starts where it ends. Null where there are fewer
  // than three hull entries, which is no ring and no fault: nothing lies within.
  static std::shared_ptr<const HullRing> of(const ConvexList* hull, const EList* edges);

  // Whether the chain does not close into one simple polygon of all hull edges, as around holes and on islands. Such a
  // hull limits nothing.
  bool isInvalid() const { return invalid_; }

  // The corners in order, each once; empty for an invalid hull. They are numbers: no NaN stands among them.
  const std::vector<Position>& vertices() const { return vertices_; }

  // By exact signs; nowhere within an invalid hull.
  Place placeOf(const Position& p) const;

  // False only where no point of the ring lies in the box.
  bool mayTouch(const Box& box) const;

 private:
  // The sides form a binary tree of chains of neighbours: level 0 is made of chains of kSidesOfLeaf sides, and each
  // chain of a level above of two of the level below. Side i ends at vertex i.
  static constexpr std::size_t kSidesOfLeaf = 4;

  struct Chain {
    unsigned level;
    std::size_t index;
  };

  void makeTree();
  std::size_t firstSide(const Chain& chain) const { return (chain.index << chain.level) * kSidesOfLeaf; }
  std::size_t endOfSides(const Chain& chain) const;
  const Position& startOfSide(std::size_t side) const { return side == 0 ? vertices_.back() : vertices_[side - 1]; }

  bool invalid_ = true;
  std::vector<Position> vertices_;
  std::vector<std::vector<Box>> levels_;
};

}  // namespace detail
}  // namespace OrvikDTM
