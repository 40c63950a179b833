#include <algorithm>
#include <cmath>
#include <numeric>

#include <OrvikDTMAlgorithm/tin/Direction.h>
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
  Number rank;  // its place from the lowest point, which settles what else is equal
  Number point;
};

bool rayBefore(const Ray& a, const Ray& b) {
  if (before(a.angle, b.angle)) return true;
  if (before(b.angle, a.angle)) return false;
  if (before(b.length2, a.length2)) return true;
  if (before(a.length2, b.length2)) return false;
  return a.rank < b.rank;
}

std::vector<Ray> raysFromLowest(const std::vector<Position>& points, const std::vector<Number>& order) {
  const Position origin = points[order[0]];
  std::vector<Ray> rays;
  rays.reserve(order.size() - 1);
  for (Number rank = 1; rank < order.size(); ++rank) {
    const Position& p = points[order[rank]];
    const double dx = p.x - origin.x;
    const double dy = p.y - origin.y;
    rays.push_back({angleByX(origin.x, origin.y, p.x, p.y), dx * dx + dy * dy, rank, order[rank]});
  }
  return rays;
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
  std::vector<Ray> rays = raysFromLowest(points, order);
  std::sort(rays.begin(), rays.end(), rayBefore);
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
