#include <OrvikDTMAlgorithm/tin/BoxTree.h>
#include <OrvikDTMAlgorithm/tin/LargeArrays.h>

inline namespace OrvikDTM {
namespace detail {

namespace {

// A leaf holds at most this many boxes: testing them costs less than another level.
constexpr std::size_t kLargestLeaf = 8;

}  // namespace

BoxTree::BoxTree(const std::vector<Box>& boxes) {
  std::vector<Centre> centres;
  reserveLarge(centres, boxes.size());
  for (const Box& b : boxes) {
    centres.push_back({b.minX / 2 + b.maxX / 2, b.minY / 2 + b.maxY / 2, static_cast<Number>(centres.size())});
  }
  order_ = largeVector<Number>(boxes.size());
  while (boxes.size() >> depth_ > kLargestLeaf) ++depth_;
  halve(centres, 0, 0);
  if (boxes.empty()) return;

  nodes_ = largeVector<Box>(2 * leafCount() - 1);
  const std::size_t firstLeaf = leafCount() - 1;
  for (std::size_t i = 0; i < leafCount(); ++i) {
    const Run run = leaf(i);
    for (std::size_t place = run.first; place < run.last; ++place) {
      order_[place] = centres[place].box;
      nodes_[firstLeaf + i].add(boxes[order_[place]]);
    }
    std::sort(order_.begin() + static_cast<std::ptrdiff_t>(run.first),
              order_.begin() + static_cast<std::ptrdiff_t>(run.last));
  }
  for (std::size_t node = firstLeaf; node-- > 0;) {
    nodes_[node].add(nodes_[2 * node + 1]);
    nodes_[node].add(nodes_[2 * node + 2]);
  }
}

// Equal centres are told apart by number, so that the tree is the same with every standard library.
void BoxTree::halve(std::vector<Centre>& centres, unsigned level, std::size_t index) const {
  if (level == depth_) return;
  const auto at = [&centres](std::size_t place) { return centres.begin() + static_cast<std::ptrdiff_t>(place); };
  const auto first = at(start(level, index));
  const auto last = at(start(level, index + 1));
  const auto middle = at(start(level + 1, 2 * index + 1));
  Box extent;
  for (auto c = first; c != last; ++c) extent.add({c->x, c->y, c->x, c->y});
  if (extent.maxX - extent.minX >= extent.maxY - extent.minY) {
    std::nth_element(first, middle, last,
                     [](const Centre& a, const Centre& b) { return a.x != b.x ? a.x < b.x : a.box < b.box; });
  } else {
    std::nth_element(first, middle, last,
                     [](const Centre& a, const Centre& b) { return a.y != b.y ? a.y < b.y : a.box < b.box; });
  }
  halve(centres, level + 1, 2 * index);
  halve(centres, level + 1, 2 * index + 1);
}

}  // namespace detail
}  // namespace OrvikDTM
