#include "BoxTree.h"

#include <algorithm>
#include <numeric>

namespace pictures {

namespace {
constexpr std::uint32_t kLeaf = 8;
}

BoxTree::BoxTree(const PlanMesh& mesh) : order_(mesh.triangles.size()) {
  boxes_.reserve(mesh.triangles.size());
  for (const auto& t : mesh.triangles) {
    Box box = Box::none();
    for (const std::uint32_t corner : t) box.add(mesh.points[corner].x, mesh.points[corner].y);
    boxes_.push_back(box);
  }
  std::iota(order_.begin(), order_.end(), 0U);
  if (!order_.empty()) build(0, static_cast<std::uint32_t>(order_.size()));
}

std::uint32_t BoxTree::build(std::uint32_t begin, std::uint32_t end) {
  Box box = Box::none();
  for (std::uint32_t i = begin; i < end; ++i) box.add(boxes_[order_[i]]);
  const auto number = static_cast<std::uint32_t>(nodes_.size());
  nodes_.push_back({box, begin, end, 0, 0});
  if (end - begin <= kLeaf) return number;

  const bool byX = box.width() > box.height();
  const auto centre = [&](std::uint32_t t) {
    return byX ? boxes_[t].minX + boxes_[t].maxX : boxes_[t].minY + boxes_[t].maxY;
  };
  const std::uint32_t middle = begin + (end - begin) / 2;
  std::nth_element(order_.begin() + begin, order_.begin() + middle, order_.begin() + end,
                   [&](std::uint32_t a, std::uint32_t b) { return centre(a) < centre(b); });
  const std::uint32_t left = build(begin, middle);
  const std::uint32_t right = build(middle, end);
  nodes_[number].left = left;
  nodes_[number].right = right;
  return number;
}

void BoxTree::find(const Box& box, std::vector<std::uint32_t>& found) const {
  if (empty()) return;
  std::vector<std::uint32_t> waiting{0};
  while (!waiting.empty()) {
    const Node& node = nodes_[waiting.back()];
    waiting.pop_back();
    if (!node.box.meets(box)) continue;
    if (node.left != 0) {
      waiting.push_back(node.left);
      waiting.push_back(node.right);
      continue;
    }
    for (std::uint32_t i = node.begin; i < node.end; ++i) {
      if (boxes_[order_[i]].meets(box)) found.push_back(order_[i]);
    }
  }
}

}  // namespace pictures
