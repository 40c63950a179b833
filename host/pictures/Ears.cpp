#include "Ears.h"

#include <numeric>

namespace pictures {

namespace {

double turn(const DifferencePoint& a, const DifferencePoint& b, const DifferencePoint& c) {
  return (b.x - a.x) * (c.y - a.y) - (b.y - a.y) * (c.x - a.x);
}

// Whether the corner can go: it does not turn right, and no other corner lies within the triangle that it cuts off.
bool isEar(const Loop& loop, const std::vector<std::size_t>& left, std::size_t at) {
  const std::size_t count = left.size();
  const DifferencePoint& a = loop[left[(at + count - 1) % count]];
  const DifferencePoint& b = loop[left[at]];
  const DifferencePoint& c = loop[left[(at + 1) % count]];
  if (turn(a, b, c) < 0.0) return false;
  for (const std::size_t other : left) {
    const DifferencePoint& p = loop[other];
    if (turn(a, b, p) > 0.0 && turn(b, c, p) > 0.0 && turn(c, a, p) > 0.0) return false;
  }
  return true;
}

}  // namespace

std::vector<std::array<std::size_t, 3>> ears(const Loop& loop) {
  std::vector<std::array<std::size_t, 3>> triangles;
  std::vector<std::size_t> left(loop.size());
  std::iota(left.begin(), left.end(), std::size_t{0});
  std::size_t at = 0;
  std::size_t refused = 0;
  while (left.size() > 2) {
    at %= left.size();
    // When rounding leaves no ear at all, any corner goes, so that it ends.
    if (!isEar(loop, left, at) && refused < left.size()) {
      ++refused;
      ++at;
      continue;
    }
    const std::size_t count = left.size();
    triangles.push_back({left[(at + count - 1) % count], left[at], left[(at + 1) % count]});
    left.erase(left.begin() + static_cast<std::ptrdiff_t>(at));
    refused = 0;
  }
  return triangles;
}

}  // namespace pictures
