// Whether two networks, within a boundary if there is one, have an area in common: in rational numbers, by clipping
// every triangle by every other and by the trapezoids of the boundary. What the library's answer is compared with.
#pragma once

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <vector>

#include "RationalOverlay.h"

namespace exact {

using PlanTriangle = std::array<std::array<double, 2>, 3>;
using PlanPolygon = std::vector<std::array<double, 2>>;

// What was surveyed in thousandths is taken for that, also where it was moved to an origin and back.
inline Rational surveyed(double v) {
  const double thousandths = std::nearbyint(v * 1000);
  if (std::fabs(thousandths) > 1e15 || std::fabs(v - thousandths / 1000) > 1e-15 * std::max(1.0, std::fabs(v))) {
    return Rational(v);
  }
  return Rational(static_cast<std::int64_t>(thousandths)) / 1000;
}

inline Polygon surveyed(const PlanPolygon& polygon) {
  Polygon result;
  for (const auto& p : polygon) result.push_back({surveyed(p[0]), surveyed(p[1]), 0});
  return result;
}

inline bool hasArea(const Polygon& p) {
  Rational area = 0;
  Rational content = 0;
  measure(p, area, content);
  return area != 0;
}

struct BoundarySide {
  Corner low;
  Corner high;
  Rational xAt(const Rational& y) const { return low.x + (y - low.y) / (high.y - low.y) * (high.x - low.x); }
};

// Even-odd, in slabs between the heights at which sides end or cross.
inline std::vector<Polygon> trapezoidsOf(const Polygon& boundary) {
  std::vector<BoundarySide> sides;
  std::vector<Rational> heights;
  for (std::size_t i = 0; i < boundary.size(); ++i) {
    const Corner& a = boundary[i];
    const Corner& b = boundary[(i + 1) % boundary.size()];
    heights.push_back(a.y);
    if (a.y != b.y) sides.push_back(a.y < b.y ? BoundarySide{a, b} : BoundarySide{b, a});
  }
  for (const BoundarySide& s : sides) {
    for (const BoundarySide& t : sides) {
      const Rational low = std::max(s.low.y, t.low.y);
      const Rational high = std::min(s.high.y, t.high.y);
      if (low >= high) continue;
      const Rational atLow = s.xAt(low) - t.xAt(low);
      const Rational atHigh = s.xAt(high) - t.xAt(high);
      if (atLow < 0 && atHigh > 0) heights.push_back(low + (high - low) * atLow / (atLow - atHigh));
    }
  }
  std::sort(heights.begin(), heights.end());
  heights.erase(std::unique(heights.begin(), heights.end()), heights.end());
  std::vector<Polygon> result;
  for (std::size_t i = 1; i < heights.size(); ++i) {
    const Rational low = heights[i - 1];
    const Rational high = heights[i];
    const Rational middle = (low + high) / 2;
    std::vector<BoundarySide> here;
    for (const BoundarySide& s : sides) {
      if (s.low.y <= low && s.high.y >= high) here.push_back(s);
    }
    std::sort(here.begin(), here.end(),
              [&](const BoundarySide& s, const BoundarySide& t) { return s.xAt(middle) < t.xAt(middle); });
    for (std::size_t k = 1; k < here.size(); k += 2) {
      const BoundarySide& left = here[k - 1];
      const BoundarySide& right = here[k];
      result.push_back(
          {{left.xAt(low), low, 0}, {right.xAt(low), low, 0}, {right.xAt(high), high, 0}, {left.xAt(high), high, 0}});
    }
  }
  return result;
}

// What a trapezoid leaves of a convex polygon.
inline Polygon withinTrapezoid(Polygon polygon, const Polygon& trapezoid) {
  for (std::size_t i = 0; i < trapezoid.size(); ++i) {
    const Corner& start = trapezoid[i];
    const Corner& end = trapezoid[(i + 1) % trapezoid.size()];
    if (start.x == end.x && start.y == end.y) continue;
    polygon = clipped(polygon, [&](const Corner& p) { return turn(start, end, p); });
  }
  return polygon;
}

inline bool mayMeet(const PlanTriangle& t, const PlanTriangle& u) {
  constexpr double kMargin = 1e-3;
  for (std::size_t axis = 0; axis < 2; ++axis) {
    const auto [lowT, highT] = std::minmax({t[0][axis], t[1][axis], t[2][axis]});
    const auto [lowU, highU] = std::minmax({u[0][axis], u[1][axis], u[2][axis]});
    if (lowT > highU + kMargin || lowU > highT + kMargin) return false;
  }
  return true;
}

// Without a boundary when that has no corners.
inline bool haveCommonArea(const std::vector<PlanTriangle>& first, const std::vector<PlanTriangle>& second,
                           const PlanPolygon& boundary) {
  const std::vector<Polygon> trapezoids = trapezoidsOf(surveyed(boundary));
  const auto polygonOf = [](const PlanTriangle& t) { return surveyed(PlanPolygon(t.begin(), t.end())); };
  for (const PlanTriangle& t : first) {
    const Polygon one = polygonOf(t);
    if (turn(one[0], one[1], one[2]) == 0) continue;
    for (const PlanTriangle& u : second) {
      if (!mayMeet(t, u)) continue;
      const Polygon other = polygonOf(u);
      if (turn(other[0], other[1], other[2]) == 0) continue;
      const Polygon common = within(counterClockwise(one), counterClockwise(other));
      if (!hasArea(common)) continue;
      if (boundary.empty()) return true;
      const bool isWithin = std::any_of(trapezoids.begin(), trapezoids.end(), [&](const Polygon& trapezoid) {
        return hasArea(withinTrapezoid(common, trapezoid));
      });
      if (isWithin) return true;
    }
  }
  return false;
}

}  // namespace exact
