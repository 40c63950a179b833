#include <algorithm>
#include <bit>
#include <cmath>
#include <cstdint>
#include <numeric>

#include <OrvikDTMAlgorithm/tin/Direction.h>
#include <OrvikDTMAlgorithm/tin/LargeArrays.h>
#include <OrvikDTMAlgorithm/tin/RadixSort.h>
#include <OrvikDTMAlgorithm/tin/Sweep.h>

inline namespace OrvikDTM {
namespace detail {

namespace {

// Less-than for doubles in which NaN is the largest value, so that any input can be sorted.
bool before(double a, double b) { return a < b || (std::isnan(b) && !std::isnan(a)); }

// The indexes of the points by y, then x, then index.
std::vector<Number> fromLowest(const std::vector<Position>& points) {
  std::vector<Number> order(points.size());
  std::iota(order.begin(), order.end(), Number{0});
  const auto lower = [&points](Number i, Number j) {
    const Position& p = points[i];
    const Position& q = points[j];
    if (before(p.y, q.y)) return true;
    if (before(q.y, p.y)) return false;
    if (before(p.x, q.x)) return true;
    if (before(q.x, p.x)) return false;
    return i < j;
  };
  // Rounding to millimetres seldom reorders what was sorted before it.
  if (!std::is_sorted(order.begin(), order.end(), lower)) std::sort(order.begin(), order.end(), lower);
  return order;
}

// A point as seen from the lowest one.
struct Ray {
  double angle;
  double length2;
  Number point;
};

// To the points from the second of `order` on; what else is equal is settled by their place there.
std::vector<Ray> raysFromLowest(const std::vector<Position>& points, const std::vector<Number>& order) {
  const Position origin = points[order[0]];
  std::vector<Ray> rays;
  reserveLarge(rays, order.size() - 1);
  for (std::size_t i = 1; i < order.size(); ++i) {
    const Position& p = points[order[i]];
    const double dx = p.x - origin.x;
    const double dy = p.y - origin.y;
    rays.push_back({angleByX(origin.x, origin.y, p.x, p.y), dx * dx + dy * dy, order[i]});
  }
  return rays;
}

// A key that orders as angles do, which are not negative; NaN comes last.
std::uint64_t angleKey(double angle) {
  return std::isnan(angle) ? ~std::uint64_t{0} : std::bit_cast<std::uint64_t>(angle + 0.0);
}

// The rays by angle, those of one angle by length, the longest first, what is equal as it was.
std::vector<Ray> sortedRays(const std::vector<Ray>& rays) {
  auto byAngle = largeVector<KeyedNumber>(rays.size());
  for (Number i = 0; i < byAngle.size(); ++i) byAngle[i] = {angleKey(rays[i].angle), i};
  radixSort(byAngle);
  std::vector<Ray> sorted;
  reserveLarge(sorted, rays.size());
  for (const KeyedNumber& item : byAngle) sorted.push_back(rays[item.number]);
  const auto isLonger = [](const Ray& a, const Ray& b) { return before(b.length2, a.length2); };
  for (std::size_t first = 0; first < sorted.size();) {
    std::size_t last = first + 1;
    while (last < sorted.size() && byAngle[last].key == byAngle[first].key) ++last;
    sortStably(sorted.begin() + static_cast<std::ptrdiff_t>(first), sorted.begin() + static_cast<std::ptrdiff_t>(last),
               isLonger);
    first = last;
  }
  return sorted;
}

// The lowest, then leftmost of points that come by y; rounding may have mixed those at the lowest y.
Number lowestOf(const std::vector<Position>& points) {
  Number lowest = 0;
  for (Number i = 1; i < points.size() && points[i].y == points[0].y; ++i) {
    if (points[i].x < points[lowest].x) lowest = i;
  }
  return lowest;
}

// The slope, as seen from `origin`, below which about one point in kShare lies; from a sample.
double slopeOfFirst(const std::vector<Position>& points, const Position& origin) {
  constexpr std::size_t kSamples = 4096;
  constexpr std::size_t kShare = 64;
  std::vector<double> slopes;
  const std::size_t stride = std::max<std::size_t>(points.size() / kSamples, 1);
  for (std::size_t i = stride / 2; i < points.size(); i += stride) {
    const double dx = points[i].x - origin.x;
    if (dx > 0) slopes.push_back((points[i].y - origin.y) / dx);
  }
  if (slopes.size() <= kShare) return 0.0;
  const auto share = slopes.begin() + static_cast<std::ptrdiff_t>(kSamples / kShare);
  if (share >= slopes.end()) return 0.0;
  std::nth_element(slopes.begin(), share, slopes.end());
  return *share;
}

}  // namespace

std::vector<Number> sweepOrder(const std::vector<Position>& points) {
  if (points.size() < 3) return {};
  const std::vector<Number> order = fromLowest(points);
  std::vector<Ray> rays = sortedRays(raysFromLowest(points, order));
  const auto firstGroupEnd =
      std::find_if(rays.begin(), rays.end(), [&rays](const Ray& ray) { return ray.angle != rays.front().angle; });
  if (firstGroupEnd == rays.end()) return {};
  std::reverse(rays.begin(), firstGroupEnd);

  std::vector<Number> result;
  result.reserve(points.size());
  result.push_back(order[0]);
  for (const Ray& ray : rays) result.push_back(ray.point);
  return result;
}

std::vector<Number> beginOfSweepOrder(const std::vector<Position>& points) {
  const Number lowest = lowestOf(points);
  const Position origin = points[lowest];
  const double slope = slopeOfFirst(points, origin);
  // Computed slopes and rounded angles err by far less than this margin, so whatever has a smaller angle than a point
  // that is taken is taken too.
  constexpr double kMargin = 1e-9;
  const double largestAngle = std::atan(slope) - kMargin;
  const auto isFirst = [&](const Position& p) {
    return p.y - origin.y <= slope * (p.x - origin.x) && angleByX(origin.x, origin.y, p.x, p.y) < largestAngle;
  };
  std::vector<Number> taken;
  std::vector<Position> positions;
  for (Number i = 0; i < points.size(); ++i) {
    if (i != lowest && !isFirst(points[i])) continue;
    taken.push_back(i);
    positions.push_back(points[i]);
  }
  std::vector<Number> order = sweepOrder(positions);
  for (Number& i : order) i = taken[i];
  return order;
}

}  // namespace detail
}  // namespace OrvikDTM
