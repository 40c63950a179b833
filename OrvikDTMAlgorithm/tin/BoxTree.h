// Which of many boxes meet a given one? A balanced tree over the boxes' centres: halved along the wider side at every
// level, it stays shallow however the boxes are spread, with an outlier a thousand kilometres off too. Private.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <vector>

#include <OrvikDTMAlgorithm/tin/Mesh.h>

inline namespace OrvikDTM {
namespace detail {

// A closed rectangle; as made, one that holds nothing.
struct Box {
  double minX = std::numeric_limits<double>::infinity();
  double minY = std::numeric_limits<double>::infinity();
  double maxX = -std::numeric_limits<double>::infinity();
  double maxY = -std::numeric_limits<double>::infinity();

  void add(const Box& other) {
    minX = std::min(minX, other.minX);
    minY = std::min(minY, other.minY);
    maxX = std::max(maxX, other.maxX);
    maxY = std::max(maxY, other.maxY);
  }

  bool meets(const Box& other) const {
    return minX <= other.maxX && other.minX <= maxX && minY <= other.maxY && other.minY <= maxY;
  }
};

class BoxTree {
 public:
  // A run of places in order().
  struct Run {
    std::size_t first;
    std::size_t last;  // one past the end
  };

  BoxTree() = default;

  // Of boxes with finite sides.
  explicit BoxTree(const std::vector<Box>& boxes);

  // The boxes' indexes in the tree's order: neighbours in plan stand close together.
  const std::vector<Number>& order() const { return order_; }

  std::size_t leafCount() const { return order_.empty() ? 0 : std::size_t{1} << depth_; }
  Run leaf(std::size_t index) const { return {start(depth_, index), start(depth_, index + 1)}; }
  const Box& boxOfLeaf(std::size_t index) const { return nodes_[leafCount() - 1 + index]; }

  // Calls visit(run) for every leaf whose box meets `box`.
  template <typename Visit>
  void visitLeaves(const Box& box, Visit visit) const {
    if (order_.empty()) return;
    std::size_t waiting[kDeepest + 2];
    std::size_t count = 0;
    waiting[count++] = 0;
    const std::size_t firstLeaf = leafCount() - 1;
    while (count > 0) {
      const std::size_t node = waiting[--count];
      if (!nodes_[node].meets(box)) continue;
      if (node >= firstLeaf) {
        visit(leaf(node - firstLeaf));
        continue;
      }
      waiting[count++] = 2 * node + 2;
      waiting[count++] = 2 * node + 1;
    }
  }

 private:
  static constexpr unsigned kDeepest = 32;

  struct Centre {
    double x;
    double y;
    Number box;
  };

  // Where the boxes of node `index` of a level begin.
  std::size_t start(unsigned level, std::size_t index) const {
    return static_cast<std::size_t>(std::uint64_t{order_.size()} * index >> level);
  }
  void halve(std::vector<Centre>& centres, unsigned level, std::size_t index) const;

  std::vector<Number> order_;
  std::vector<Box> nodes_;  // level by level; the children of node i are 2i + 1 and 2i + 2
  unsigned depth_ = 0;
};

}  // namespace detail
}  // namespace OrvikDTM
