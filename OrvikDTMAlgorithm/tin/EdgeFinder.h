// The edges of a mesh, found again by the two places that they join, in either direction. Private.
#pragma once

#include <algorithm>
#include <cstddef>
#include <vector>

#include <OrvikDTMAlgorithm/tin/EdgeTable.h>
#include <OrvikDTMAlgorithm/tin/Mesh.h>
#include <OrvikDTMAlgorithm/tin/Prefetch.h>

inline namespace OrvikDTM {
namespace detail {

// Every edge hangs in a chain at the lower of its places, the newest first. Faces mostly come with their neighbours, so
// what a chain leads through was used a moment ago and is near. A place that more edges leave than a short chain holds,
// as the hub of a fan does, keeps the rest of them in a hash table, so that no input makes the search long.
class EdgeFinder {
 public:
  EdgeFinder(std::size_t places, std::size_t expectedEdges) : newest_(places, 0) { links_.reserve(expectedEdges + 1); }

  // The two say which memory numberOf() will read: first where a chain begins, then its first link.
  void prefetchChain(const PlacePair& places) const { prefetch(&newest_[places.low]); }
  void prefetchLink(const PlacePair& places) const { prefetch(links_.data() + newest_[places.low]); }

  // The number of the edge between two places; `next`, under which it is found from now on, when it is new.
  Number numberOf(const PlacePair& places, Number next) {
    int length = 0;
    for (Number edge = newest_[places.low]; edge != 0; edge = links_[edge].older) {
      if (links_[edge].high == places.high) return edge;
      ++length;
    }
    if (length >= kLongestChain) return rest_.numberOf(places, next);
    links_.resize(std::size_t{next} + 1);
    links_[next] = {places.high, newest_[places.low]};
    newest_[places.low] = next;
    return next;
  }

 private:
  // An edge in a chain, at its number.
  struct Link {
    Number high = 0;
    Number older = 0;
  };

  static constexpr int kLongestChain = 16;

  std::vector<Number> newest_;
  std::vector<Link> links_;
  EdgeTable rest_;
};

}  // namespace detail
}  // namespace OrvikDTM
