// Triangles in a tree of boxes: which of them may meet a given box, and a walk over all of them from the whole to the
// parts.
#pragma once

#include <cstdint>
#include <vector>

#include "PlanMesh.h"

namespace pictures {

class BoxTree {
 public:
  struct Node {
    Box box;
    std::uint32_t begin;  // of its triangles, in order()
    std::uint32_t end;
    std::uint32_t left;  // numbers of its two halves; 0 for a leaf
    std::uint32_t right;
  };

  explicit BoxTree(const PlanMesh& mesh);

  bool empty() const { return nodes_.empty(); }
  const Node& root() const { return nodes_.front(); }
  const Node& node(std::uint32_t number) const { return nodes_[number]; }
  const std::vector<std::uint32_t>& order() const { return order_; }
  const Box& boxOf(std::uint32_t triangle) const { return boxes_[triangle]; }

  // Appends the triangles whose boxes meet `box`.
  void find(const Box& box, std::vector<std::uint32_t>& found) const;

 private:
  std::uint32_t build(std::uint32_t begin, std::uint32_t end);

  std::vector<Box> boxes_;
  std::vector<std::uint32_t> order_;
  std::vector<Node> nodes_;
};

}  // namespace pictures
