// A closed polygon asked about many points: Surface::isPtInPolygon with its sides sorted into slabs, so that only sides
// near a point are looked at. Where slabs would be crowded, as those of a comb are, a tree of the sides answers
// instead. It is a copy of the polygon's plan positions. Private.
#pragma once

#include <cstddef>
#include <vector>

#include <OrvikDTMAlgorithm/tin/Mesh.h>
#include <OrvikDTMAlgorithm/tin/SideTree.h>

inline namespace OrvikDTM {
namespace detail {

class PolygonIndex {
 public:
  // Null entries are passed over. An empty polygon contains nothing.
  explicit PolygonIndex(const std::vector<TPoint*>& polygon);

  // What isPtInPolygon says. A side that does not reach over the point's x changes neither the count of crossings nor
  // whether the point lies on a side, and the order of sides does not matter, so the slab's sides give the same answer.
  bool contains(const Position& p) const;

 private:
  struct Side {
    Position a;
    Position b;
  };

  // What lies on the polygon at one x: a corner, or a side along the y axis.
  struct Upright {
    double x;
    double low;
    double high;
  };

  // False, with nothing sorted, where the sides would stand in too many slabs.
  bool sortIntoSlabs(const std::vector<Side>& sides, std::size_t slabs);
  bool isCrowded(std::size_t slab) const;
  std::size_t slabOf(double x) const;

  static bool canStandInTree(const Side& side);
  void growTree(const std::vector<Side>& sides);
  void addUprights(const std::vector<Side>& sides);
  bool isOnUpright(const Position& p) const;
  bool isNearChain(const SideTree::Chain& chain, std::size_t countBelow, const Position& p) const;
  bool containsByTree(const Position& p) const;

  std::vector<Side> sides_;  // slab after slab; a side stands in every slab that it reaches into
  std::vector<std::size_t> slabBegin_;
  double lowX_ = 0.0;
  double highX_ = -1.0;
  double slabsPerUnit_ = 0.0;

  bool hasTree_ = false;
  SideTree tree_;
  std::vector<Upright> uprights_;  // in the order of x, then of y; none overlap
  double reach_ = 0.0;             // sides farther than this above or below a point are not near it
};

}  // namespace detail
}  // namespace OrvikDTM
