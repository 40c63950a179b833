#include "Clip.h"

#include <utility>

namespace pictures {

namespace {

bool comesBefore(const DifferencePoint& a, const DifferencePoint& b) { return a.x != b.x ? a.x < b.x : a.y < b.y; }

// The point between p and q where a value that is `atP` and `atQ` there, of opposite signs, is 0.
DifferencePoint between(const DifferencePoint& p, double atP, const DifferencePoint& q, double atQ) {
  if (comesBefore(q, p)) return between(q, atQ, p, atP);
  const double t = atP / (atP - atQ);
  return {p.x + (q.x - p.x) * t, p.y + (q.y - p.y) * t, p.z + (q.z - p.z) * t, p.above + (q.above - p.above) * t};
}

// Leaves the part where `value`, linear in the plan, is not below 0. `settle` puts a new corner exactly on the line.
template <typename Value, typename Settle>
void clip(Loop& loop, Loop& scratch, Value value, Settle settle) {
  scratch.clear();
  for (std::size_t i = 0; i < loop.size(); ++i) {
    const DifferencePoint& p = loop[i];
    const DifferencePoint& q = loop[i + 1 < loop.size() ? i + 1 : 0];
    const double atP = value(p);
    const double atQ = value(q);
    if (atP >= 0.0) scratch.push_back(p);
    if ((atP < 0.0 && atQ > 0.0) || (atP > 0.0 && atQ < 0.0)) {
      scratch.push_back(between(p, atP, q, atQ));
      settle(scratch.back());
    }
  }
  if (scratch.size() < 3) scratch.clear();
  std::swap(loop, scratch);
}

void leave(DifferencePoint&) {}

}  // namespace

void clipToTriangle(Loop& loop, const Point& a, const Point& b, const Point& c, Loop& scratch) {
  const auto leftOf = [&](const Point& from, const Point& to) {
    clip(
        loop, scratch,
        [&](const DifferencePoint& p) {
          return cross(from, to, {p.x, p.y, 0.0});
        },
        leave);
  };
  leftOf(a, b);
  leftOf(b, c);
  leftOf(c, a);
}

void clipToBox(Loop& loop, const Box& box, Loop& scratch) {
  clip(
      loop, scratch, [&](const DifferencePoint& p) { return p.x - box.minX; },
      [&](DifferencePoint& p) { p.x = box.minX; });
  clip(
      loop, scratch, [&](const DifferencePoint& p) { return box.maxX - p.x; },
      [&](DifferencePoint& p) { p.x = box.maxX; });
  clip(
      loop, scratch, [&](const DifferencePoint& p) { return p.y - box.minY; },
      [&](DifferencePoint& p) { p.y = box.minY; });
  clip(
      loop, scratch, [&](const DifferencePoint& p) { return box.maxY - p.y; },
      [&](DifferencePoint& p) { p.y = box.maxY; });
}

void clipAbove(Loop& loop, double limit, Loop& scratch) {
  clip(
      loop, scratch, [&](const DifferencePoint& p) { return p.above - limit; },
      [&](DifferencePoint& p) { p.above = limit; });
}

void clipBelow(Loop& loop, double limit, Loop& scratch) {
  clip(
      loop, scratch, [&](const DifferencePoint& p) { return limit - p.above; },
      [&](DifferencePoint& p) { p.above = limit; });
}

double doubleArea(const Loop& loop) {
  double sum = 0.0;
  for (std::size_t i = 0; i < loop.size(); ++i) {
    const DifferencePoint& p = loop[i];
    const DifferencePoint& q = loop[i + 1 < loop.size() ? i + 1 : 0];
    sum += (p.x - loop[0].x) * (q.y - loop[0].y) - (q.x - loop[0].x) * (p.y - loop[0].y);
  }
  return sum;
}

}  // namespace pictures
