// Sides in the plane, found by an easting: which of them reach over it, in order from south to north. A tree over the
// eastings of their ends holds each side in the few nodes that it spans, so thousands of long sides beside each other
// cost a query no more than a few comparisons, whichever way they run. Private.
#pragma once

#include <algorithm>
#include <cstddef>
#include <span>
#include <vector>

#include <OrvikDTMAlgorithm/tin/Mesh.h>
#include <OrvikDTMAlgorithm/tin/Orientation.h>

inline namespace OrvikDTM {
namespace detail {

// A side from a to b, whichever way round; the number is the caller's.
struct NumberedSide {
  Position a;
  Position b;
  Number number;

  const Position& west() const { return a.x < b.x ? a : b; }
  const Position& east() const { return a.x < b.x ? b : a; }
};

class SideTree {
 public:
  SideTree() = default;

  // Sides that run north-south are left out. All coordinates must be finite.
  explicit SideTree(const std::vector<NumberedSide>& sides);

  // Sides of which each lies above the one before it, or touches it, wherever both are.
  class Chain {
   public:
    Chain(const std::vector<NumberedSide>& sides, std::span<const Number> places) : sides_(sides), places_(places) {}

    std::size_t size() const { return places_.size(); }
    const NumberedSide& operator[](std::size_t i) const { return sides_[places_[i]]; }

    // How many sides lie below p: the next one passes through p or above it. All of them reach over p's easting.
    std::size_t countBelow(const Position& p) const {
      const auto isBelow = [this, &p](Number place) {
        const NumberedSide& side = sides_[place];
        return orientation(side.west(), side.east(), p) > 0;
      };
      return static_cast<std::size_t>(std::partition_point(places_.begin(), places_.end(), isBelow) - places_.begin());
    }

   private:
    const std::vector<NumberedSide>& sides_;
    std::span<const Number> places_;
  };

  // Calls visit(chain) for chains that together hold each side once that reaches over x, its western end counted in
  // and its eastern end not.
  template <typename Visit>
  void visitChains(double x, Visit visit) const {
    if (eastings_.empty() || !(x >= eastings_.front() && x < eastings_.back())) return;
    const auto next = std::upper_bound(eastings_.begin(), eastings_.end(), x);
    const auto interval = static_cast<std::size_t>(next - eastings_.begin()) - 1;
    for (std::size_t node = leaves_ + interval; node > 0; node /= 2) {
      for (Number i = chainsBegin_[node]; i < chainsBegin_[node + 1]; ++i) {
        const Number begin = placesBegin_[i];
        visit(Chain(sides_, std::span(places_).subspan(begin, placesBegin_[i + 1] - begin)));
      }
    }
  }

 private:
  using Places = std::vector<Number>;

  template <typename Visit>
  void forEachNodeOf(const NumberedSide& side, Visit visit) const;
  double middleOf(std::size_t node) const;
  void makeChains(std::size_t node, std::span<Number> places);

  std::vector<NumberedSide> sides_;
  std::vector<double> eastings_;     // of the sides' ends, upwards; interval i lies between those at i and i + 1
  std::size_t leaves_ = 0;           // a power of two; node 1 is the root, node leaves_ + i the leaf of interval i
  std::vector<Number> chainsBegin_;  // of every node
  std::vector<Number> placesBegin_;  // of every chain
  Places places_;                    // the places of the chains' sides among all sides
};

}  // namespace detail
}  // namespace OrvikDTM
