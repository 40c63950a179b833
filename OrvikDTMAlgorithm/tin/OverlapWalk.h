// Which triangles of a network overlap a given one, by a walk from one such to its neighbours. It looks at few others,
// also where boxes tell triangles apart badly, as in a fan of slivers. Private.
#pragma once

#include <memory>
#include <vector>

#include <OrvikDTMAlgorithm/tin/Facets.h>
#include <OrvikDTMAlgorithm/tin/FlatTIN.h>

inline namespace OrvikDTM {
namespace detail {

class OverlapWalk {
 public:
  explicit OverlapWalk(std::shared_ptr<const FlatTIN> tin);

  // Whether the network covers a convex place, and nothing twice. What a triangle overlaps there hangs together.
  bool isPossible() const { return isPossible_; }

  // Calls visit(number) once for every triangle that has an area in common with the facet, by exact signs. False, with
  // nothing visited, where the walk finds no triangle to begin with.
  template <typename Visit>
  bool visit(const Facet& facet, Visit visitNumber) {
    if (!findAll(facet)) return false;
    for (const int number : found_) visitNumber(number);
    return true;
  }

 private:
  bool findAll(const Facet& facet);
  int firstOverlapping(const Facet& facet);
  bool overlaps(const Facet& facet, int number) const;
  bool isNew(int number);

  std::shared_ptr<const FlatTIN> tin_;
  bool isPossible_;
  int lastLocated_ = 1;
  std::vector<int> found_;
  std::vector<unsigned> seenIn_;  // for every triangle, the latest walk that came to it
  unsigned walk_ = 0;
};

}  // namespace detail
}  // namespace OrvikDTM
