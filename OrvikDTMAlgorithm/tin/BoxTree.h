// Which of many boxes meet a box? A tree of boxes in flat arrays, built at once. Its memory is bounded by the number of
// boxes, however uneven they are in size and place. Private.
#pragma once

#include <array>
#include <cstddef>
#include <vector>

#include <OrvikDTMAlgorithm/tin/Mesh.h>

inline namespace OrvikDTM {
namespace detail {

struct Box {
  double minX;
  double minY;
  double maxX;
  double maxY;
};

struct NumberedBox {
  Box box;
  Number number;
};

class BoxTree {
 public:
  BoxTree() = default;
  // No coordinate may be NaN.
  explicit BoxTree(const std::vector<NumberedBox>& boxes);

  // Calls visit(number) for every box that meets `query`, boundaries included, and for few others; each once, in no
  // particular order.
  template <typename Visit>
  void visit(const Box& query, Visit visitNumber) const {
    visitPlaces(query, [&](Number place) { visitNumber(numbers_[place]); });
  }

  // The boxes' numbers in the order of the tree, in which neighbours stand close together, and the same by places in
  // it: for callers who keep what the boxes enclose in that order.
  const std::vector<Number>& order() const { return numbers_; }
  template <typename Visit>
  void visitPlaces(const Box& query, Visit visitPlace) const;

 private:
  static constexpr std::size_t kChildren = 8;

  // Boxes in single precision, relative to the origin. Rounding keeps order, so what meets still meets.
  struct SmallBox {
    float minX;
    float minY;
    float maxX;
    float maxY;
  };

  // The boxes of the children; missing ones meet nothing.
  struct Node {
    std::array<float, kChildren> minX;
    std::array<float, kChildren> minY;
    std::array<float, kChildren> maxX;
    std::array<float, kChildren> maxY;
  };

  struct Place {
    unsigned level;
    Number node;
  };

  SmallBox smallOf(const Box& box) const;
  static SmallBox boundsOf(const Node& node);
  static std::vector<Node> nodesOver(const std::vector<SmallBox>& boxes);

  static unsigned meeting(const Node& node, const SmallBox& query) {
    unsigned result = 0;
    for (unsigned i = 0; i < kChildren; ++i) {
      const unsigned meets =
          static_cast<unsigned>(node.minX[i] <= query.maxX) & static_cast<unsigned>(node.maxX[i] >= query.minX) &
          static_cast<unsigned>(node.minY[i] <= query.maxY) & static_cast<unsigned>(node.maxY[i] >= query.minY);
      result |= meets << i;
    }
    return result;
  }

  double originX_ = 0.0;
  double originY_ = 0.0;
  std::vector<Number> numbers_;            // in the order of the leaves
  std::vector<std::vector<Node>> levels_;  // level 0 holds the boxes themselves, each other the bounds of the one below
};

template <typename Visit>
void BoxTree::visitPlaces(const Box& query, Visit visitPlace) const {
  if (levels_.empty()) return;
  const SmallBox small = smallOf(query);
  constexpr std::size_t kMostLevels = 11;  // 8^11 is more than there are numbers
  std::array<Place, kMostLevels * kChildren> open;
  std::size_t count = 0;
  open[count++] = {static_cast<unsigned>(levels_.size() - 1), 0};
  while (count > 0) {
    const Place place = open[--count];
    const unsigned mask = meeting(levels_[place.level][place.node], small);
    for (unsigned i = 0; i < kChildren; ++i) {
      if ((mask >> i & 1u) == 0) continue;
      const Number child = place.node * static_cast<Number>(kChildren) + i;
      if (place.level == 0) {
        visitPlace(child);
      } else {
        open[count++] = {place.level - 1, child};
      }
    }
  }
}

}  // namespace detail
}  // namespace OrvikDTM
