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

}  // namespace

std::vector<Number> sweepOrder(const std::vector<Position>& points) {
  if (points.size() < 3) return {};
  const std::vector<Number> order = fromLowest(points);
  std::vector<Ray> rays = raysFromLowest(points, order);
  std::sort(rays.begin(), rays.end(), rayBefore);

  const auto firstGroupEnd =
      std::find_if(rays.begin() + 1, rays.end(), [&rays](const Ray& ray) { return ray.angle != rays.front().angle; });
  if (firstGroupEnd == rays.end()) return {};
  std::reverse(rays.begin(), firstGroupEnd);

  std::vector<Number> result;
  result.reserve(points.size());
  result.push_back(order[0]);
  for (const Ray& ray : rays) result.push_back(ray.point);
  return result;
}

}  // namespace detail
}  // namespace OrvikDTM
