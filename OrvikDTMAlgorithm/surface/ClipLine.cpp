// Cutting a line to a view: the line is intersected with the lines of the rectangle's four sides in a fixed order.
#include <algorithm>
#include <array>
#include <cmath>
#include <utility>

#include <OrvikDTMAlgorithm/surface/ClipLine.h>

inline namespace OrvikDTM {
namespace detail {
namespace {

// Below this determinant of their coefficients two lines count as parallel. The coefficients have no unit: each line's
// are scaled so that the larger of its two differences, by sign, becomes 1.
constexpr double kParallel = 1e-9;

// How far beyond the view a cut may lie, in coordinate units: it is computed, the view's bounds are not. Cuts nearer to
// each other than that are one: a line through a corner meets two sides there.
constexpr double kBeyondView = 1e-9;

struct Position {
  double x;
  double y;
};

// a * x + b * y + c = 0
struct Coefficients {
  double a;
  double b;
  double c;
};

Coefficients coefficientsOf(const LineInPlan& line) {
  if (line.startX == line.endX) return {1.0, 0.0, -line.endX};
  if (line.startY == line.endY) return {0.0, 1.0, -line.endY};
  const double dx = line.endX - line.startX;
  const double dy = line.endY - line.startY;
  const double m = std::max(dx, dy);
  return {m / dx, -m / dy, line.startY * m / dy - line.startX * m / dx};
}

// Cramer's rule. False for parallel lines.
bool intersect(const Coefficients& first, const Coefficients& second, Position& at) {
  const double determinant = first.a * second.b - second.a * first.b;
  if (std::fabs(determinant) < kParallel) return false;
  at.x = (first.b * second.c - second.b * first.c) / determinant;
  at.y = (second.a * first.c - first.a * second.c) / determinant;
  return true;
}

bool isInView(const ViewRectangle& view, double x, double y) {
  return view.minX <= x && x <= view.maxX && view.minY <= y && y <= view.maxY;
}

bool isNearView(const ViewRectangle& view, const Position& p) {
  return p.x - view.maxX < kBeyondView && view.minX - p.x < kBeyondView && p.y - view.maxY < kBeyondView &&
         view.minY - p.y < kBeyondView;
}

bool isInBoxOf(const LineInPlan& line, const Position& p) {
  return std::min(line.startX, line.endX) <= p.x && p.x <= std::max(line.startX, line.endX) &&
         std::min(line.startY, line.endY) <= p.y && p.y <= std::max(line.startY, line.endY);
}

bool isSameCut(const Position& p, const Position& q) {
  return std::fabs(p.x - q.x) < kBeyondView && std::fabs(p.y - q.y) < kBeyondView;
}

double distance(const Position& p, double x, double y) {
  const double dx = x - p.x;
  const double dy = y - p.y;
  return std::sqrt(dx * dx + dy * dy);
}

// Bottom, top, right, left: the order decides which cuts are found first.
std::array<LineInPlan, 4> sidesOf(const ViewRectangle& v) {
  return {{{v.minX, v.minY, v.maxX, v.minY},
           {v.minX, v.maxY, v.maxX, v.maxY},
           {v.maxX, v.minY, v.maxX, v.maxY},
           {v.minX, v.minY, v.minX, v.maxY}}};
}

// The first cuts, in the order of the sides, at most as many as asked for.
class Cuts {
 public:
  Cuts(const ViewRectangle& view, const LineInPlan& line, int atMost) {
    const Coefficients own = coefficientsOf(line);
    for (const LineInPlan& side : sidesOf(view)) {
      Position at{};
      if (!intersect(own, coefficientsOf(side), at) || !isInBoxOf(line, at) || !isNearView(view, at)) continue;
      if (count_ > 0 && isSameCut(found_[0], at)) continue;
      found_[static_cast<std::size_t>(count_++)] = at;
      if (count_ == atMost) return;
    }
  }

  int count() const { return count_; }
  const Position& operator[](std::size_t i) const { return found_[i]; }

 private:
  std::array<Position, 2> found_{};
  int count_ = 0;
};

void moveStart(LineInPlan& line, const Position& to) {
  line.startX = to.x;
  line.startY = to.y;
}

void moveEnd(LineInPlan& line, const Position& to) {
  line.endX = to.x;
  line.endY = to.y;
}

bool clipBothEnds(const ViewRectangle& view, LineInPlan& line) {
  constexpr int kBothEnds = 2;
  const Position given{line.startX, line.startY};
  const Cuts cuts(view, line, kBothEnds);
  if (cuts.count() > 0) moveStart(line, cuts[0]);
  if (cuts.count() > 1) moveEnd(line, cuts[1]);
  if (distance(given, line.startX, line.startY) > distance(given, line.endX, line.endY)) {
    std::swap(line.startX, line.endX);
    std::swap(line.startY, line.endY);
  }
  return cuts.count() > 0;
}

}  // namespace

bool clipLine(const ViewRectangle& view, LineInPlan& line) {
  const bool startsInside = isInView(view, line.startX, line.startY);
  const bool endsInside = isInView(view, line.endX, line.endY);
  if (startsInside && endsInside) return true;
  if (!startsInside && !endsInside) return clipBothEnds(view, line);
  const Cuts cuts(view, line, 1);
  if (cuts.count() > 0) startsInside ? moveEnd(line, cuts[0]) : moveStart(line, cuts[0]);
  return true;
}

}  // namespace detail
}  // namespace OrvikDTM
