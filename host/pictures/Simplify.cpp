#include "Simplify.h"

#include <algorithm>
#include <cmath>

namespace pictures {

namespace {

double distance(const RasterPoint& a, const RasterPoint& b) {
  return std::hypot(static_cast<double>(a.x) - b.x, static_cast<double>(a.y) - b.y);
}

// From p to the straight line between a and b, ends included.
double distanceToSegment(const RasterPoint& p, const RasterPoint& a, const RasterPoint& b) {
  const double dx = static_cast<double>(b.x) - a.x;
  const double dy = static_cast<double>(b.y) - a.y;
  const double square = dx * dx + dy * dy;
  if (square == 0.0) return distance(p, a);
  const double px = static_cast<double>(p.x) - a.x;
  const double py = static_cast<double>(p.y) - a.y;
  const double t = std::clamp((px * dx + py * dy) / square, 0.0, 1.0);
  return std::hypot(px - t * dx, py - t * dy);
}

// Marks what has to stay between two points that stay. The stretches wait in a list of their own: a call for each would
// go as deep as the line is long.
void mark(const std::vector<RasterPoint>& line, std::size_t begin, std::size_t end, double tolerance,
          std::vector<bool>& stays) {
  std::vector<std::pair<std::size_t, std::size_t>> waiting{{begin, end}};
  while (!waiting.empty()) {
    const auto [first, last] = waiting.back();
    waiting.pop_back();
    double farthest = tolerance;
    std::size_t at = first;
    for (std::size_t i = first + 1; i < last; ++i) {
      const double d = distanceToSegment(line[i], line[first], line[last]);
      if (d > farthest) {
        farthest = d;
        at = i;
      }
    }
    if (at == first) continue;
    stays[at] = true;
    waiting.emplace_back(first, at);
    waiting.emplace_back(at, last);
  }
}

std::vector<RasterPoint> marked(const std::vector<RasterPoint>& line, const std::vector<bool>& stays) {
  std::vector<RasterPoint> kept;
  for (std::size_t i = 0; i < line.size(); ++i) {
    if (stays[i] && (kept.empty() || !(kept.back() == line[i]))) kept.push_back(line[i]);
  }
  return kept;
}

bool isSpeck(const std::vector<RasterPoint>& loop, double tolerance) {
  const auto [left, right] = std::minmax_element(loop.begin(), loop.end(),
                                                 [](const RasterPoint& a, const RasterPoint& b) { return a.x < b.x; });
  const auto [top, bottom] = std::minmax_element(loop.begin(), loop.end(),
                                                 [](const RasterPoint& a, const RasterPoint& b) { return a.y < b.y; });
  return right->x - left->x <= tolerance && bottom->y - top->y <= tolerance;
}

}  // namespace

std::vector<RasterPoint> simplified(const std::vector<RasterPoint>& line, double tolerance) {
  if (line.size() < 2) return line;
  std::vector<bool> stays(line.size(), false);
  stays.front() = stays.back() = true;
  mark(line, 0, line.size() - 1, tolerance, stays);
  return marked(line, stays);
}

std::vector<RasterPoint> simplifiedLoop(const std::vector<RasterPoint>& loop, double tolerance) {
  constexpr std::size_t kFewest = 3;
  if (loop.size() < kFewest || isSpeck(loop, tolerance)) return {};
  std::vector<RasterPoint> closed = loop;
  closed.push_back(loop.front());
  std::size_t farthest = 0;
  for (std::size_t i = 0; i < loop.size(); ++i) {
    if (distance(loop[i], loop[0]) > distance(loop[farthest], loop[0])) farthest = i;
  }
  std::vector<bool> stays(closed.size(), false);
  stays.front() = stays.back() = stays[farthest] = true;
  mark(closed, 0, farthest, tolerance, stays);
  mark(closed, farthest, closed.size() - 1, tolerance, stays);
  std::vector<RasterPoint> kept = marked(closed, stays);
  if (kept.size() > 1 && kept.front() == kept.back()) kept.pop_back();
  return kept.size() < kFewest ? std::vector<RasterPoint>() : kept;
}

}  // namespace pictures
