#include "Polygon.h"

#include <algorithm>
#include <cmath>
#include <numeric>

#include <boost/multiprecision/cpp_int.hpp>

namespace {

using Rational = boost::multiprecision::cpp_rational;

int signOf(double v) { return (v > 0.0) - (v < 0.0); }

int exactSide(const PlanPoint& a, const PlanPoint& b, const PlanPoint& p) {
  const Rational left = (Rational(b.x) - Rational(a.x)) * (Rational(p.y) - Rational(a.y));
  const Rational right = (Rational(b.y) - Rational(a.y)) * (Rational(p.x) - Rational(a.x));
  return left.compare(right);
}

// 1 when p lies to the left of a -> b, -1 to the right, 0 on the line. Each product carries three roundings, so a
// difference above this share of their sizes has the right sign.
int side(const PlanPoint& a, const PlanPoint& b, const PlanPoint& p) {
  constexpr double kSafe = 4e-16 * 4;
  const double left = (b.x - a.x) * (p.y - a.y);
  const double right = (b.y - a.y) * (p.x - a.x);
  const double difference = left - right;
  if (std::fabs(difference) > kSafe * (std::fabs(left) + std::fabs(right))) return signOf(difference);
  return exactSide(a, b, p);
}

struct Side {
  PlanPoint a;
  PlanPoint b;

  double minX() const { return std::min(a.x, b.x); }
  double maxX() const { return std::max(a.x, b.x); }
  double minY() const { return std::min(a.y, b.y); }
  double maxY() const { return std::max(a.y, b.y); }
};

Side sideOf(const Polygon& polygon, std::size_t i) { return {polygon[i], polygon[(i + 1) % polygon.size()]}; }

bool boxesMeet(const Side& s, const Side& t) {
  return s.minX() <= t.maxX() && t.minX() <= s.maxX() && s.minY() <= t.maxY() && t.minY() <= s.maxY();
}

bool meet(const Side& s, const Side& t) {
  if (!boxesMeet(s, t)) return false;
  return side(s.a, s.b, t.a) * side(s.a, s.b, t.b) <= 0 && side(t.a, t.b, s.a) * side(t.a, t.b, s.b) <= 0;
}

// Whether the side after `s`, which begins where it ends, runs back over it.
bool runsBack(const Side& s, const Side& next) {
  if (side(s.a, s.b, next.b) != 0) return false;
  return (next.b.x - next.a.x) * (s.b.x - s.a.x) + (next.b.y - next.a.y) * (s.b.y - s.a.y) < 0.0;
}

bool collide(const Polygon& polygon, std::size_t i, std::size_t j) {
  const Side s = sideOf(polygon, i);
  const Side t = sideOf(polygon, j);
  if (j == (i + 1) % polygon.size()) return runsBack(s, t);
  if (i == (j + 1) % polygon.size()) return runsBack(t, s);
  return meet(s, t);
}

// The sides from west to east: only those that begin before another ends can meet it.
std::vector<std::size_t> fromWestToEast(const Polygon& polygon) {
  std::vector<std::size_t> order(polygon.size());
  std::iota(order.begin(), order.end(), std::size_t{0});
  std::sort(order.begin(), order.end(),
            [&](std::size_t i, std::size_t j) { return sideOf(polygon, i).minX() < sideOf(polygon, j).minX(); });
  return order;
}

bool isEarlier(const Crossing& c, const std::optional<Crossing>& than) {
  return !than || c.first < than->first || (c.first == than->first && c.second < than->second);
}

}  // namespace

Polygon opened(Polygon polygon) {
  while (polygon.size() > 1 && polygon.back() == polygon.front()) polygon.pop_back();
  return polygon;
}

bool isOnOneLine(const Polygon& polygon) {
  const auto start = polygon.begin();
  const auto end = std::find_if(start, polygon.end(), [&](const PlanPoint& p) { return p != *start; });
  return std::all_of(end, polygon.end(), [&](const PlanPoint& p) { return side(*start, *end, p) == 0; });
}

double signedArea(const Polygon& polygon) {
  double doubled = 0.0;
  for (std::size_t i = 0; i < polygon.size(); ++i) {
    const Side s = sideOf(polygon, i);
    const PlanPoint& origin = polygon.front();  // near by: projected coordinates would cost digits
    doubled += (s.a.x - origin.x) * (s.b.y - origin.y) - (s.b.x - origin.x) * (s.a.y - origin.y);
  }
  return doubled / 2.0;
}

double perimeter(const Polygon& polygon) {
  double length = 0.0;
  for (std::size_t i = 0; i < polygon.size(); ++i) {
    const Side s = sideOf(polygon, i);
    length += std::hypot(s.b.x - s.a.x, s.b.y - s.a.y);
  }
  return length;
}

std::optional<Crossing> findCrossing(const Polygon& polygon) {
  const std::vector<std::size_t> order = fromWestToEast(polygon);
  std::optional<Crossing> found;
  for (std::size_t at = 0; at < order.size(); ++at) {
    const double end = sideOf(polygon, order[at]).maxX();
    for (std::size_t next = at + 1; next < order.size() && sideOf(polygon, order[next]).minX() <= end; ++next) {
      const Crossing pair{std::min(order[at], order[next]), std::max(order[at], order[next])};
      if (isEarlier(pair, found) && collide(polygon, pair.first, pair.second)) found = pair;
    }
  }
  return found;
}
