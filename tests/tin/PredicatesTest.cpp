// The exact predicates and orders against slow ones in numbers of any length: random, nearly degenerate and huge cases.
#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <numeric>
#include <sstream>
#include <vector>

#include <OrvikDTMAlgorithm/tin/ExactPlane.h>
#include <OrvikDTMAlgorithm/tin/Orientation.h>
#include <OrvikDTMAlgorithm/tin/QuadrantOrder.h>
#include <OrvikDTMAlgorithm/tin/RadixSort.h>
#include <boost/multiprecision/cpp_int.hpp>
#include <gtest/gtest.h>

#include "Inputs.h"

namespace {

using boost::multiprecision::cpp_int;
using boost::multiprecision::cpp_rational;
using detail::MillimetrePosition;
using detail::Number;
using detail::Position;
using inputs::Random;

// ---- orientation of doubles

int slowOrientation(const Position& a, const Position& b, const Position& c) {
  const cpp_rational ax(a.x);
  const cpp_rational ay(a.y);
  const cpp_rational left = (cpp_rational(b.x) - ax) * (cpp_rational(c.y) - ay);
  return left.compare((cpp_rational(b.y) - ay) * (cpp_rational(c.x) - ax));
}

int signOf(int v) { return v > 0 ? 1 : v < 0 ? -1 : 0; }

void expectOrientation(const Position& a, const Position& b, const Position& c) {
  const int expected = signOf(slowOrientation(a, b, c));
  ASSERT_EQ(detail::orientation(a, b, c), expected)
      << std::hexfloat << a.x << "," << a.y << " " << b.x << "," << b.y << " " << c.x << "," << c.y;
  ASSERT_EQ(detail::exactOrientation(a, b, c), expected);
}

double disturbed(double v, Random& random) {
  constexpr double kInfinity = std::numeric_limits<double>::infinity();
  const auto which = random.between(-1, 1);
  return which == 0 ? v : std::nextafter(v, which > 0 ? kInfinity : -kInfinity);
}

// Doubles of all magnitudes that a survey has, and of all that a double has.
double anyDouble(Random& random, int largestExponent) {
  const int exponent = static_cast<int>(random.between(-largestExponent, largestExponent));
  return std::ldexp(random.unit() - 0.5, exponent);
}

TEST(Orientation, RandomTriples) {
  Random random(1);
  for (int i = 0; i < 60000; ++i) {
    const int exponent = i % 3 == 0 ? 1000 : i % 3 == 1 ? 40 : 4;
    const auto p = [&] { return Position{anyDouble(random, exponent), anyDouble(random, exponent)}; };
    ASSERT_NO_FATAL_FAILURE(expectOrientation(p(), p(), p()));
  }
}

TEST(Orientation, TriplesAHairOffALine) {
  Random random(2);
  for (int i = 0; i < 60000; ++i) {
    const double offset = i % 2 == 0 ? 0.0 : 38500000.0;
    const Position a{offset + random.unit() * 1000, offset / 10 + random.unit() * 1000};
    const Position d{random.unit() - 0.5, random.unit() - 0.5};
    const double s = random.unit() * 500;
    const double t = random.unit() * 500;
    const Position b{disturbed(a.x + s * d.x, random), disturbed(a.y + s * d.y, random)};
    const Position c{disturbed(a.x + t * d.x, random), disturbed(a.y + t * d.y, random)};
    ASSERT_NO_FATAL_FAILURE(expectOrientation(a, b, c));
  }
}

TEST(Orientation, TriplesExactlyOnALine) {
  Random random(3);
  for (int i = 0; i < 30000; ++i) {
    const double scale = std::ldexp(1.0, static_cast<int>(random.between(-500, 450)));
    const auto whole = [&] { return static_cast<double>(random.between(-1000000, 1000000)); };
    const Position d{whole(), whole()};
    const auto on = [&](double t) { return Position{t * d.x * scale, t * d.y * scale}; };
    const Position a = on(static_cast<double>(random.between(-1000, 1000)));
    const Position b = on(static_cast<double>(random.between(-1000, 1000)));
    const Position c = on(static_cast<double>(random.between(-1000, 1000)));
    ASSERT_EQ(detail::orientation(a, b, c), 0);
    ASSERT_NO_FATAL_FAILURE(expectOrientation(a, b, {disturbed(c.x, random), c.y}));
  }
}

TEST(Orientation, LimitsOfTheDoubles) {
  constexpr double kMax = std::numeric_limits<double>::max();
  constexpr double kDenormal = std::numeric_limits<double>::denorm_min();
  const double values[] = {0.0, -0.0, kMax, -kMax, kDenormal, -kDenormal, 1e-300, -1e-300, 1e300, 1.0, -3.0};
  Random random(4);
  const auto pick = [&] { return values[random.between(0, 10)]; };
  for (int i = 0; i < 4000; ++i) {
    const Position a{pick(), pick()};
    const Position b{pick(), pick()};
    const Position c{pick(), pick()};
    ASSERT_NO_FATAL_FAILURE(expectOrientation(a, b, c));
  }
}

TEST(Orientation, IsNoneWhereACoordinateIsNotFinite) {
  constexpr double kInfinity = std::numeric_limits<double>::infinity();
  constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
  for (const double v : {kInfinity, -kInfinity, kNaN}) {
    EXPECT_EQ(detail::orientation({v, 0}, {1, 0}, {0, 1}), 0);
    EXPECT_EQ(detail::orientation({0, v}, {1, 0}, {0, 1}), 0);
    EXPECT_EQ(detail::orientation({0, 0}, {v, 0}, {0, 1}), 0);
    EXPECT_EQ(detail::orientation({0, 0}, {1, v}, {0, 1}), 0);
    EXPECT_EQ(detail::orientation({0, 0}, {1, 0}, {v, 1}), 0);
    EXPECT_EQ(detail::orientation({0, 0}, {1, 0}, {0, v}), 0);
  }
}

// ---- the two planes of whole millimetres

bool slowTurnsLeft(const std::vector<MillimetrePosition>& p) {
  const cpp_int left = cpp_int(p[1].x - p[0].x) * (p[2].y - p[0].y);
  return left > cpp_int(p[1].y - p[0].y) * (p[2].x - p[0].x);
}

// The rise of each position in the perturbed test, in numbers: 1, N, N^2 and N^3 by x, then y, where N is far larger
// than any cofactor; the squares that are not perturbed count N^4. Equal positions rise alike.
std::array<cpp_int, 4> risesOf(const std::vector<MillimetrePosition>& p) {
  std::array<cpp_int, 4> rises;
  for (std::size_t i = 0; i < 4; ++i) {
    const auto before = [&](const MillimetrePosition& q) { return q.x != p[i].x ? q.x < p[i].x : q.y < p[i].y; };
    rises[i] = cpp_int(1) << static_cast<unsigned>(200 * std::count_if(p.begin(), p.end(), before));
  }
  return rises;
}

bool slowCircleContains(const std::vector<MillimetrePosition>& p) {
  cpp_int x[3];
  cpp_int y[3];
  cpp_int lift[3];
  for (std::size_t i = 0; i < 3; ++i) {
    x[i] = p[i].x - p[3].x;
    y[i] = p[i].y - p[3].y;
    lift[i] = x[i] * x[i] + y[i] * y[i];
  }
  const auto determinant = [&]() -> cpp_int {
    return lift[0] * (x[1] * y[2] - x[2] * y[1]) + lift[1] * (x[2] * y[0] - x[0] * y[2]) +
           lift[2] * (x[0] * y[1] - x[1] * y[0]);
  };
  if (const int sign = determinant().sign(); sign != 0) return sign > 0;
  const std::array<cpp_int, 4> rises = risesOf(p);
  for (std::size_t i = 0; i < 3; ++i) lift[i] = (lift[i] << 800) + rises[i] - rises[3];
  return determinant() > 0;
}

std::vector<Position> asDoubles(const std::vector<MillimetrePosition>& positions) {
  std::vector<Position> result;
  for (const auto& p : positions) result.push_back({static_cast<double>(p.x), static_cast<double>(p.y)});
  return result;
}

std::string textOf(const std::vector<MillimetrePosition>& positions) {
  std::ostringstream text;
  for (const auto& p : positions) text << "(" << p.x << "," << p.y << ")";
  return text.str();
}

// Both planes where both may be used, on four positions: every turn, and the circle if it is one.
void expectPredicates(const std::vector<MillimetrePosition>& positions) {
  std::vector<MillimetrePosition> four = positions;
  const bool left = slowTurnsLeft(four);
  const detail::FarPlane far(four);
  ASSERT_EQ(far.turnsLeft(0, 1, 2), left) << textOf(four);
  const bool near = std::all_of(four.begin(), four.end(), [](const MillimetrePosition& p) {
    return p.x < detail::NearPlane::kExtent && p.y < detail::NearPlane::kExtent;
  });
  if (near) {
    ASSERT_EQ(detail::NearPlane(asDoubles(four)).turnsLeft(0, 1, 2), left) << textOf(four);
  }
  if (!left) std::swap(four[1], four[2]);
  if (!left && !slowTurnsLeft(four)) return;  // collinear: no circle
  const bool inside = slowCircleContains(four);
  ASSERT_EQ(detail::FarPlane(four).circleContains(0, 1, 2, 3), inside) << textOf(four);
  if (near) {
    ASSERT_EQ(detail::NearPlane(asDoubles(four)).circleContains(0, 1, 2, 3), inside) << textOf(four);
  }
}

// The largest extent that positions in 64-bit millimetres can have, and powers of two around every change of road.
constexpr std::int64_t kLargestExtent = 18'400'000'000'000'000;
constexpr std::int64_t kExtents[] = {3,
                                     1000,
                                     1 << 13,
                                     1 << 14,
                                     1 << 17,
                                     1 << 26,
                                     1 << 27,
                                     (1 << 30) - 1,
                                     std::int64_t{1} << 30,
                                     std::int64_t{1} << 31,
                                     38'500'000'000,
                                     (std::int64_t{1} << 52) - 1,
                                     std::int64_t{1} << 53,
                                     kLargestExtent};

TEST(ExactPlane, RandomPositionsOfEveryExtent) {
  Random random(11);
  for (const std::int64_t extent : kExtents) {
    for (int i = 0; i < 40000; ++i) {
      const auto p = [&] { return MillimetrePosition{random.between(0, extent), random.between(0, extent)}; };
      ASSERT_NO_FATAL_FAILURE(expectPredicates({p(), p(), p(), p()}));
    }
  }
}

TEST(ExactPlane, PositionsAMillimetreOffALine) {
  Random random(12);
  for (const std::int64_t extent : kExtents) {
    for (int i = 0; i < 20000; ++i) {
      constexpr std::int64_t kSteps = 1000;
      const std::int64_t step = std::max<std::int64_t>(extent / kSteps, 1);
      const std::int64_t dx = random.between(0, step);
      const std::int64_t dy = random.between(0, step);
      const auto p = [&] {
        const std::int64_t t = random.between(0, std::min(kSteps, extent));
        const std::int64_t x = t * dx + random.between(-1, 1);
        const std::int64_t y = t * dy + random.between(-1, 1);
        return MillimetrePosition{std::clamp<std::int64_t>(x, 0, extent), std::clamp<std::int64_t>(y, 0, extent)};
      };
      ASSERT_NO_FATAL_FAILURE(expectPredicates({p(), p(), p(), p()}));
    }
  }
}

TEST(ExactPlane, PositionsAMillimetreOffACircle) {
  constexpr std::int64_t kRadius = 1105;
  const auto circle = inputs::latticeCircle(static_cast<int>(kRadius), 0.0, 0.0);
  Random random(13);
  for (const std::int64_t extent : kExtents) {
    const std::int64_t factor = extent / (2 * kRadius + 2);
    if (factor == 0) continue;
    for (int i = 0; i < 60000; ++i) {
      const std::int64_t size = i % 2 == 0 ? factor : random.between(1, factor);
      const std::int64_t room = extent - 2 * kRadius * size - 2;
      const std::int64_t cx = kRadius * size + 1 + random.between(0, room);
      const std::int64_t cy = kRadius * size + 1 + random.between(0, room);
      const auto p = [&](std::int64_t off) {
        const auto& q =
            circle[static_cast<std::size_t>(random.between(0, static_cast<std::int64_t>(circle.size()) - 1))];
        return MillimetrePosition{cx + static_cast<std::int64_t>(q[0]) * size + random.between(-off, off),
                                  cy + static_cast<std::int64_t>(q[1]) * size + random.between(-off, off)};
      };
      ASSERT_NO_FATAL_FAILURE(expectPredicates({p(0), p(0), p(0), p(i % 3 == 0 ? 0 : 1)}));
    }
  }
}

// Every way of naming the corners, and every corner as the fourth; from a square of one millimetre to the largest.
TEST(ExactPlane, OfFourOnACircleTheLastByXThenYIsOutside) {
  constexpr std::size_t kLast = 2;
  for (const std::int64_t r : {std::int64_t{1}, std::int64_t{100}, std::int64_t{1} << 29, std::int64_t{1} << 50}) {
    const std::vector<MillimetrePosition> square = {{0, 0}, {r, 0}, {r, r}, {0, r}};
    const detail::NearPlane near(asDoubles(square));
    const detail::FarPlane far(square);
    for (Number first = 0; first < 4; ++first) {
      const Number second = (first + 1) % 4;
      const Number third = (first + 2) % 4;
      const Number fourth = (first + 3) % 4;
      // The diagonal runs between the neighbours of the last corner, so its opposite is outside as well.
      const bool inside = fourth != kLast && fourth != (kLast + 2) % 4;
      EXPECT_EQ(near.circleContains(first, second, third, fourth), inside) << r << " " << fourth;
      EXPECT_EQ(far.circleContains(first, second, third, fourth), inside) << r << " " << fourth;
      for (const Number corner : {first, second, third}) {
        EXPECT_FALSE(near.circleContains(first, second, third, corner)) << r;
        EXPECT_FALSE(far.circleContains(first, second, third, corner)) << r;
      }
    }
  }
}

TEST(ExactPlane, AMillimetreDecidesBesideTheLargestCircle) {
  const std::int64_t r = std::int64_t{1} << 50;
  const std::vector<MillimetrePosition> square = {{0, 0}, {r, 0}, {r, r}, {0, r - 1}, {1, r}, {0, r + 1}};
  const detail::NearPlane near(asDoubles(square));
  const detail::FarPlane far(square);
  const bool expected[] = {true, true, false};
  for (Number i = 0; i < 3; ++i) {
    EXPECT_EQ(near.circleContains(0, 1, 2, 3 + i), expected[i]) << i;
    EXPECT_EQ(far.circleContains(0, 1, 2, 3 + i), expected[i]) << i;
  }
}

TEST(ExactPlane, MillimetresAndUnitsAreEachOthersNearest) {
  Random random(14);
  for (const std::int64_t extent : {1000LL, 1000000000LL, 38500000000LL, 8700000000000000LL}) {
    for (int i = 0; i < 200000; ++i) {
      const MillimetrePosition p{random.between(-extent, extent), random.between(-extent, extent)};
      ASSERT_EQ(detail::inMillimetres(detail::inUnits(p)), p);
    }
  }
  // Beyond 2^43 units doubles are farther apart than millimetres, and beyond 2^53 millimetres not each of those is a
  // double; every position still comes back.
  for (int i = 0; i < 200000; ++i) {
    const double sign = i % 2 == 0 ? 1 : -1;
    const Position p{9.2e12 * (2 * random.unit() - 1), sign * (9.2e12 - random.unit() * 4e11)};
    const Position rounded = detail::inUnits(detail::inMillimetres(p));
    ASSERT_EQ(rounded.y, p.y);
    const Position again = detail::inUnits(detail::inMillimetres(rounded));
    ASSERT_EQ(again.x, rounded.x);
    ASSERT_EQ(again.y, rounded.y);
  }
}

// ---- quadrant order

// The interleaved bits of both coordinates, y before x.
cpp_int interleaved(const MillimetrePosition& p) {
  cpp_int key = 0;
  for (unsigned bit = 63; bit-- > 0;) {
    key = key * 4 + 2 * ((p.y >> bit) & 1) + ((p.x >> bit) & 1);
  }
  return key;
}

std::vector<Number> slowQuadrantOrder(const std::vector<MillimetrePosition>& positions) {
  std::vector<cpp_int> keys;
  for (const auto& p : positions) keys.push_back(interleaved(p));
  std::vector<Number> order(positions.size());
  std::iota(order.begin(), order.end(), 0u);
  std::stable_sort(order.begin(), order.end(), [&keys](Number i, Number j) { return keys[i] < keys[j]; });
  return order;
}

// Splits a range of different positions until single ones are left; each split must separate strictly.
void expectSeparation(const detail::FarPlane& plane, Number first, Number last) {
  if (last - first < 2) return;
  const detail::QuadrantSplit split = detail::splitByQuadrant(plane, first, last);
  ASSERT_GT(split.middle, first);
  ASSERT_LT(split.middle, last);
  const auto coordinate = [&](Number i) { return split.byX ? plane.x(i) : plane.y(i); };
  std::uint64_t largest = 0;
  for (Number i = first; i < split.middle; ++i) largest = std::max(largest, coordinate(i));
  for (Number i = split.middle; i < last; ++i) ASSERT_GT(coordinate(i), largest);
  ASSERT_NO_FATAL_FAILURE(expectSeparation(plane, first, split.middle));
  ASSERT_NO_FATAL_FAILURE(expectSeparation(plane, split.middle, last));
}

void expectQuadrantOrder(const std::vector<MillimetrePosition>& positions) {
  const std::vector<Number> order = detail::quadrantOrder(positions, {0, 0});
  ASSERT_EQ(order, slowQuadrantOrder(positions));
  std::vector<MillimetrePosition> different;
  for (const Number i : order) {
    if (different.empty() || !(different.back() == positions[i])) different.push_back(positions[i]);
  }
  const auto count = static_cast<Number>(different.size());
  ASSERT_NO_FATAL_FAILURE(expectSeparation(detail::FarPlane(different), 0, count));
}

TEST(QuadrantOrder, IsThatOfTheInterleavedBitsAndSplitsStrictly) {
  Random random(21);
  constexpr std::int64_t kWidest32 = (std::int64_t{1} << 32) - 1;
  for (const std::int64_t extent : {std::int64_t{1}, std::int64_t{3}, std::int64_t{100}, std::int64_t{100000},
                                    kWidest32, kWidest32 + 1, kLargestExtent}) {
    for (const int count : {1, 2, 3, 50, 2500}) {
      for (int round = 0; round < 4; ++round) {
        std::vector<MillimetrePosition> positions;
        const std::int64_t height = round % 2 == 0 ? extent : std::max<std::int64_t>(extent / 1000, 1);
        for (int i = 0; i < count; ++i) positions.push_back({random.between(0, extent), random.between(0, height)});
        for (int i = 0; i < count / 3; ++i)
          positions.push_back(positions[static_cast<std::size_t>(random.between(0, count - 1))]);
        if (round == 3) {
          for (auto& p : positions) std::swap(p.x, p.y);
        }
        ASSERT_NO_FATAL_FAILURE(expectQuadrantOrder(positions));
      }
    }
  }
}

TEST(QuadrantOrder, BothRoadsAgreeWhereBothGo) {
  Random random(22);
  std::vector<MillimetrePosition> positions;
  for (int i = 0; i < 3000; ++i) positions.push_back({random.between(0, 4000), random.between(0, 4000)});
  std::vector<Number> narrow = detail::quadrantOrder(positions, {0, 0});
  // One position far away takes all of them along the wide road; it comes last.
  positions.push_back({std::int64_t{1} << 40, std::int64_t{1} << 40});
  narrow.push_back(3000);
  EXPECT_EQ(detail::quadrantOrder(positions, {0, 0}), narrow);
}

// ---- radix sort

using Items = std::vector<detail::KeyedNumber>;

void expectSorted(const Items& items) {
  Items expected = items;
  std::stable_sort(expected.begin(), expected.end(), [](const auto& a, const auto& b) { return a.key < b.key; });
  Items sorted = items;
  detail::radixSort(sorted);
  ASSERT_EQ(sorted.size(), expected.size());
  for (std::size_t i = 0; i < sorted.size(); ++i) {
    ASSERT_EQ(sorted[i].key, expected[i].key) << i;
    ASSERT_EQ(sorted[i].number, expected[i].number) << i;
  }
}

TEST(RadixSort, SortsStablyWhateverTheKeys) {
  Random random(31);
  const auto whole = [&random] { return (static_cast<std::uint64_t>(random.next()) << 32) | random.next(); };
  const std::vector<std::uint64_t> masks = {
      ~std::uint64_t{0},  0, 7, 0xFFF, 0x800, std::uint64_t{1} << 63, std::uint64_t{0xFFFFFFFF} << 32,
      0xF0000000F0000000u};
  for (const int count : {0, 1, 2, 1499, 1500, 1501, 20000}) {
    for (const std::uint64_t mask : masks) {
      Items items;
      for (int i = 0; i < count; ++i) items.push_back({whole() & mask, static_cast<Number>(i)});
      ASSERT_NO_FATAL_FAILURE(expectSorted(items));
      std::sort(items.begin(), items.end(), [](const auto& a, const auto& b) { return a.key < b.key; });
      ASSERT_NO_FATAL_FAILURE(expectSorted(items));
      std::reverse(items.begin(), items.end());
      ASSERT_NO_FATAL_FAILURE(expectSorted(items));
    }
  }
}

}  // namespace
