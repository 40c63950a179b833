#include <algorithm>
#include <cmath>

#include <OrvikDTMAlgorithm/tin/Orientation.h>
#include <OrvikDTMAlgorithm/tin/PointInPolygon.h>
#include <OrvikDTMAlgorithm/tin/Surface.h>

inline namespace OrvikDTM {

namespace detail {

bool isNearSide(const Position& p, const Position& a, const Position& b) {
  if (!(std::min(a.x, b.x) < p.x && p.x < std::max(a.x, b.x)) || a.y == b.y || std::max(a.y, b.y) < p.y) return false;
  return std::fabs(p.y - ((b.y - a.y) * (p.x - a.x) / (b.x - a.x) + a.y)) < kOnSide;
}

bool EvenOddTest::side(const Position& a, const Position& b) {
  const Position& p = point_;
  const bool withinX = std::min(a.x, b.x) <= p.x && p.x <= std::max(a.x, b.x);
  if (!withinX || p.y > std::max(a.y, b.y)) return false;
  const bool crossesX = (a.x > p.x) != (b.x > p.x);
  if (p.y < std::min(a.y, b.y)) {
    inside_ ^= crossesX;
    return false;
  }
  const int turn = orientation(a, b, p);
  if (turn == 0) return true;
  const bool below = (a.x < b.x) ? turn < 0 : turn > 0;
  inside_ ^= crossesX && below;
  return false;
}

}  // namespace detail

bool Surface::isPtInPolygon(const TPoint* p, const std::vector<TPoint*>& polygon) {
  const auto last = std::find_if(polygon.rbegin(), polygon.rend(), [](const TPoint* v) { return v != nullptr; });
  if (p == nullptr || last == polygon.rend()) return false;
  const detail::Position point = detail::positionOf(*p);
  detail::EvenOddTest test(point);
  detail::Position previous = detail::positionOf(**last);
  for (const TPoint* vertex : polygon) {
    if (vertex == nullptr) continue;
    const detail::Position next = detail::positionOf(*vertex);
    if (detail::isNearSide(point, previous, next) || test.side(previous, next)) return true;
    previous = next;
  }
  return test.inside();
}

}  // namespace OrvikDTM
