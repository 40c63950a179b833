#include <algorithm>

#include <OrvikDTMAlgorithm/tin/ExactPlane.h>
#include <boost/multiprecision/cpp_int.hpp>

inline namespace OrvikDTM {
namespace detail {

namespace {

// Whether the fourth position, at the origin, lies inside the circle through the three, in numbers wide enough for the
// in-circle determinant.
template <typename Whole>
bool containsOrigin(const MillimetrePosition& a, const MillimetrePosition& b, const MillimetrePosition& c) {
  const auto product = [](std::int64_t p, std::int64_t q) { return Whole(p) * Whole(q); };
  const auto square = [&product](const MillimetrePosition& p) { return Whole(product(p.x, p.x) + product(p.y, p.y)); };
  const auto cross = [&product](const MillimetrePosition& p, const MillimetrePosition& q) {
    return Whole(product(p.x, q.y) - product(q.x, p.y));
  };
  const Whole bc = cross(b, c);
  const Whole ca = cross(c, a);
  const Whole ab = cross(a, b);
  const Whole det = square(a) * bc + square(b) * ca + square(c) * ab;
  return det != 0 ? det > 0 : raisedCircleContains<MillimetrePosition, const Whole&>(a, b, c, bc, ca, ab);
}

// With coordinates below 2^30 squares and crosses stay below 2^61, their products below 2^122, the sum below 2^124.
constexpr std::int64_t kFits128Bits = std::int64_t{1} << 30;

bool fits128Bits(const MillimetrePosition& p) {
  return std::max(p.x < 0 ? -p.x : p.x, p.y < 0 ? -p.y : p.y) < kFits128Bits;
}

bool contains(const MillimetrePosition& a, const MillimetrePosition& b, const MillimetrePosition& c) {
  if (fits128Bits(a) && fits128Bits(b) && fits128Bits(c)) return containsOrigin<Int128>(a, b, c);
  return containsOrigin<boost::multiprecision::int256_t>(a, b, c);
}

}  // namespace

bool NearPlane::circleContainsExactly(const Position& a, const Position& b, const Position& c) {
  const auto whole = [](const Position& p) {
    return MillimetrePosition{static_cast<std::int64_t>(p.x), static_cast<std::int64_t>(p.y)};
  };
  return contains(whole(a), whole(b), whole(c));
}

bool FarPlane::circleContains(Number a, Number b, Number c, Number d) const {
  const MillimetrePosition& p = positions_[d];
  const auto relative = [this, &p](Number i) {
    return MillimetrePosition{positions_[i].x - p.x, positions_[i].y - p.y};
  };
  return contains(relative(a), relative(b), relative(c));
}

}  // namespace detail
}  // namespace OrvikDTM
