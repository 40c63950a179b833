#include <algorithm>
#include <cmath>
#include <cstdint>
#include <limits>

#include <OrvikDTMAlgorithm/tin/BoxTree.h>
#include <OrvikDTMAlgorithm/tin/LargeArrays.h>
#include <OrvikDTMAlgorithm/tin/RadixSort.h>

inline namespace OrvikDTM {
namespace detail {

namespace {

constexpr double kLargest = std::numeric_limits<double>::max();

double withinDoubles(double v) { return std::clamp(v, -kLargest, kLargest); }

// Halves before adding, lest the sum overflow.
double middleOf(double low, double high) { return withinDoubles(low) / 2 + withinDoubles(high) / 2; }

// The bits of v with a 0 before each.
std::uint64_t spread(std::uint64_t v) {
  v = (v | v << 16) & 0x0000FFFF0000FFFFu;
  v = (v | v << 8) & 0x00FF00FF00FF00FFu;
  v = (v | v << 4) & 0x0F0F0F0F0F0F0F0Fu;
  v = (v | v << 2) & 0x3333333333333333u;
  return (v | v << 1) & 0x5555555555555555u;
}

// Orders boxes of like size along a space-filling curve. A large box among small ones would make its node large.
class Curve {
 public:
  explicit Curve(const std::vector<NumberedBox>& boxes) {
    double maxX = -kLargest;
    double maxY = -kLargest;
    for (const NumberedBox& item : boxes) {
      const double x = middleOf(item.box.minX, item.box.maxX);
      const double y = middleOf(item.box.minY, item.box.maxY);
      minX_ = std::min(minX_, x);
      minY_ = std::min(minY_, y);
      maxX = std::max(maxX, x);
      maxY = std::max(maxY, y);
    }
    extent_ = std::max({maxX / 2 - minX_ / 2, maxY / 2 - minY_ / 2, std::numeric_limits<double>::min()});
  }

  double originX() const { return minX_; }
  double originY() const { return minY_; }

  std::uint64_t keyOf(const Box& box) const {
    const std::uint64_t x = stepOf(middleOf(box.minX, box.maxX), minX_);
    const std::uint64_t y = stepOf(middleOf(box.minY, box.maxY), minY_);
    return sizeClass(box) << kPlaceBits | spread(x) << 1 | spread(y);
  }

 private:
  static constexpr unsigned kStepBits = 29;
  static constexpr unsigned kPlaceBits = 2 * kStepBits;
  static constexpr int kSizeClasses = 64;

  std::uint64_t stepOf(double v, double origin) const {
    const double part = (v / 2 - origin / 2) / extent_;  // in [0, 1]
    constexpr double kLastStep = (1u << kStepBits) - 1;
    return static_cast<std::uint64_t>(std::clamp(part, 0.0, 1.0) * kLastStep);
  }

  // The larger the box the higher, in classes that differ by a factor of 16.
  std::uint64_t sizeClass(const Box& box) const {
    constexpr int kBitsOfFactor = 4;
    const double size = std::max(box.maxX / 2 - box.minX / 2, box.maxY / 2 - box.minY / 2) / extent_;
    if (!(size < 1.0)) return kSizeClasses - 1;
    if (size <= 0.0) return 0;
    return static_cast<std::uint64_t>(
        std::clamp(kSizeClasses - 1 + std::ilogb(size) / kBitsOfFactor, 0, kSizeClasses - 1));
  }

  double minX_ = kLargest;
  double minY_ = kLargest;
  double extent_ = 1.0;
};

// Rounds to the nearest, so it keeps order.
float singleOf(double v) {
  constexpr double kLargestSingle = std::numeric_limits<float>::max();
  return static_cast<float>(std::clamp(v, -kLargestSingle, kLargestSingle));
}

}  // namespace

BoxTree::BoxTree(const std::vector<NumberedBox>& boxes) {
  if (boxes.empty()) return;
  const Curve curve(boxes);
  originX_ = curve.originX();
  originY_ = curve.originY();
  std::vector<KeyedNumber> order;
  reserveLarge(order, boxes.size());
  for (std::size_t i = 0; i < boxes.size(); ++i) {
    order.push_back({curve.keyOf(boxes[i].box), static_cast<Number>(i)});
  }
  radixSort(order);
  std::vector<SmallBox> small;
  reserveLarge(small, boxes.size());
  reserveLarge(numbers_, boxes.size());
  for (const KeyedNumber& item : order) {
    small.push_back(smallOf(boxes[item.number].box));
    numbers_.push_back(boxes[item.number].number);
  }
  for (;;) {
    levels_.push_back(nodesOver(small));
    if (levels_.back().size() == 1) return;
    small.clear();
    for (const Node& node : levels_.back()) small.push_back(boundsOf(node));
  }
}

BoxTree::SmallBox BoxTree::smallOf(const Box& box) const {
  return {singleOf(box.minX - originX_), singleOf(box.minY - originY_), singleOf(box.maxX - originX_),
          singleOf(box.maxY - originY_)};
}

BoxTree::SmallBox BoxTree::boundsOf(const Node& node) {
  return {*std::min_element(node.minX.begin(), node.minX.end()), *std::min_element(node.minY.begin(), node.minY.end()),
          *std::max_element(node.maxX.begin(), node.maxX.end()), *std::max_element(node.maxY.begin(), node.maxY.end())};
}

std::vector<BoxTree::Node> BoxTree::nodesOver(const std::vector<SmallBox>& boxes) {
  constexpr float kInfinity = std::numeric_limits<float>::infinity();
  Node none;
  none.minX.fill(kInfinity);
  none.minY.fill(kInfinity);
  none.maxX.fill(-kInfinity);
  none.maxY.fill(-kInfinity);
  std::vector<Node> nodes = largeVector((boxes.size() + kChildren - 1) / kChildren, none);
  for (std::size_t i = 0; i < boxes.size(); ++i) {
    Node& node = nodes[i / kChildren];
    const std::size_t child = i % kChildren;
    node.minX[child] = boxes[i].minX;
    node.minY[child] = boxes[i].minY;
    node.maxX[child] = boxes[i].maxX;
    node.maxY[child] = boxes[i].maxY;
  }
  return nodes;
}

}  // namespace detail
}  // namespace OrvikDTM
