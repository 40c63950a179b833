#include <algorithm>
#include <numeric>

#include <OrvikDTMAlgorithm/tin/LargeArrays.h>
#include <OrvikDTMAlgorithm/tin/QuadrantOrder.h>
#include <OrvikDTMAlgorithm/tin/RadixSort.h>

inline namespace OrvikDTM {
namespace detail {

namespace {

// The bits of v, with a zero bit before each.
std::uint64_t spreadBits(std::uint64_t v) {
  v = (v | (v << 16)) & 0x0000FFFF0000FFFFu;
  v = (v | (v << 8)) & 0x00FF00FF00FF00FFu;
  v = (v | (v << 4)) & 0x0F0F0F0F0F0F0F0Fu;
  v = (v | (v << 2)) & 0x3333333333333333u;
  return (v | (v << 1)) & 0x5555555555555555u;
}

// Whether the highest set bit of a is lower than that of b.
bool hasLowerTopBit(std::uint64_t a, std::uint64_t b) { return a < b && a < (a ^ b); }

bool before(const MillimetrePosition& a, const MillimetrePosition& b) {
  const auto dx = static_cast<std::uint64_t>(a.x ^ b.x);
  const auto dy = static_cast<std::uint64_t>(a.y ^ b.y);
  return hasLowerTopBit(dy, dx) ? a.x < b.x : a.y < b.y;
}

bool fitsInterleaved(const std::vector<MillimetrePosition>& positions, const MillimetrePosition& corner) {
  std::int64_t all = 0;
  for (const MillimetrePosition& p : positions) all |= (p.x - corner.x) | (p.y - corner.y);
  return all < (std::int64_t{1} << 32);
}

}  // namespace

std::vector<Number> quadrantOrder(const std::vector<MillimetrePosition>& positions, const MillimetrePosition& corner) {
  const auto fromCorner = [&](Number i) -> MillimetrePosition {
    return {positions[i].x - corner.x, positions[i].y - corner.y};
  };
  std::vector<Number> order = largeVector<Number>(positions.size());
  if (!fitsInterleaved(positions, corner)) {
    std::iota(order.begin(), order.end(), Number{0});
    std::stable_sort(order.begin(), order.end(),
                     [&](Number i, Number j) { return before(fromCorner(i), fromCorner(j)); });
    return order;
  }
  std::vector<KeyedNumber> keys = largeVector<KeyedNumber>(positions.size());
  for (Number i = 0; i < keys.size(); ++i) {
    const MillimetrePosition p = fromCorner(i);
    keys[i] = {spreadBits(static_cast<std::uint64_t>(p.x)) | (spreadBits(static_cast<std::uint64_t>(p.y)) << 1), i};
  }
  radixSort(keys);
  std::transform(keys.begin(), keys.end(), order.begin(), [](const KeyedNumber& k) { return k.number; });
  return order;
}

}  // namespace detail
}  // namespace OrvikDTM
