#include "Contours.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "Chains.h"

namespace pictures {

namespace {

constexpr long long kIndexEvery = 5;

// Levels are meant as decimal numbers: three times 0.1 is 0.3, where a vertex may lie, and not the double above it.
double levelOf(const ContourLevels& levels, long long k) {
  constexpr double kPartsOfAUnit = 1e9;
  constexpr double kWholeNumbers = 9e15;  // doubles below it still hold every whole number
  const double level = levels.base + static_cast<double>(k) * levels.interval;
  const double parts = level * kPartsOfAUnit;
  return std::fabs(parts) < kWholeNumbers ? std::round(parts) / kPartsOfAUnit : level;
}

struct Heights {
  double lowest = std::numeric_limits<double>::infinity();
  double highest = -std::numeric_limits<double>::infinity();
};

Heights heightsOf(const PlanMesh& mesh) {
  Heights heights;
  for (const Point& p : mesh.points) {
    heights.lowest = std::min(heights.lowest, p.z);
    heights.highest = std::max(heights.highest, p.z);
  }
  return heights;
}

// A place on an edge by the numbers of its ends, smaller first; a vertex is the place on the edge to itself.
constexpr unsigned kNumberBits = 32;

Place onEdge(std::uint32_t a, std::uint32_t b) {
  return static_cast<Place>(std::min(a, b)) << kNumberBits | std::max(a, b);
}

// Both triangles beside an edge compute its crossing from the same end, so they agree to the last bit.
Point pointAt(const PlanMesh& mesh, Place place, double level) {
  const Point& a = mesh.points[place >> kNumberBits];
  const Point& b = mesh.points[static_cast<std::uint32_t>(place)];
  if (a.z == b.z) return {a.x, a.y, level};
  const double t = std::clamp((level - a.z) / (b.z - a.z), 0.0, 1.0);
  return {a.x + (b.x - a.x) * t, a.y + (b.y - a.y) * t, level};
}

// The places where the sides of a triangle meet the level: two of them are a segment of the contour, one is a corner
// that touches, three are a triangle in the level itself.
void addSegment(const PlanMesh& mesh, const std::array<std::uint32_t, 3>& t, double level,
                std::vector<Segment>& segments) {
  std::array<Place, 3> met{};
  std::size_t count = 0;
  for (std::size_t i = 0; i < 3; ++i) {
    const double z = mesh.points[t[i]].z;
    const double next = mesh.points[t[(i + 1) % 3]].z;
    if (z == level) met[count++] = onEdge(t[i], t[i]);
    if ((z < level && level < next) || (next < level && level < z)) met[count++] = onEdge(t[i], t[(i + 1) % 3]);
  }
  if (count == 2) segments.push_back({std::min(met[0], met[1]), std::max(met[0], met[1])});
}

// An edge in the level is met by the triangles on both of its sides, and drawn once.
void removeRepeats(std::vector<Segment>& segments) {
  std::sort(segments.begin(), segments.end(),
            [](const Segment& a, const Segment& b) { return a.from != b.from ? a.from < b.from : a.to < b.to; });
  segments.erase(std::unique(segments.begin(), segments.end(),
                             [](const Segment& a, const Segment& b) { return a.from == b.from && a.to == b.to; }),
                 segments.end());
}

ContourLine lineThrough(const PlanMesh& mesh, const std::vector<Place>& places, double level) {
  ContourLine line;
  line.closed = places.front() == places.back();
  line.points.reserve(places.size());
  for (const Place place : places) line.points.push_back(pointAt(mesh, place, level));
  return line;
}

}  // namespace

double countLevels(const PlanMesh& mesh, const ContourLevels& levels) {
  const Heights heights = heightsOf(mesh);
  return std::floor((heights.highest - levels.base) / levels.interval) -
         std::ceil((heights.lowest - levels.base) / levels.interval) + 1.0;
}

std::vector<Contour> contours(const PlanMesh& mesh, const ContourLevels& levels) {
  const Heights heights = heightsOf(mesh);
  // One more at both ends: the product below may round to the other side of the outermost height.
  const auto first = static_cast<long long>(std::ceil((heights.lowest - levels.base) / levels.interval)) - 1;
  const auto last = static_cast<long long>(std::floor((heights.highest - levels.base) / levels.interval)) + 1;
  std::vector<Contour> all;
  std::vector<double> values;
  for (long long k = first; k <= last; ++k) {
    values.push_back(levelOf(levels, k));
    all.push_back({values.back(), k % kIndexEvery == 0, {}});
  }

  std::vector<std::vector<Segment>> segments(values.size());
  for (const auto& t : mesh.triangles) {
    const auto [low, high] = std::minmax({mesh.corner(t, 0).z, mesh.corner(t, 1).z, mesh.corner(t, 2).z});
    auto level = std::lower_bound(values.begin(), values.end(), low);
    for (; level != values.end() && *level <= high; ++level) {
      addSegment(mesh, t, *level, segments[static_cast<std::size_t>(level - values.begin())]);
    }
  }
  for (std::size_t i = 0; i < all.size(); ++i) {
    removeRepeats(segments[i]);
    for (const auto& places : chained(segments[i])) all[i].lines.push_back(lineThrough(mesh, places, all[i].level));
  }
  all.erase(std::remove_if(all.begin(), all.end(), [](const Contour& c) { return c.lines.empty(); }), all.end());
  return all;
}

double roundStep(double least) {
  const double power = std::pow(10.0, std::floor(std::log10(least)));
  for (const double factor : {1.0, 2.0, 5.0}) {
    if (factor * power >= least) return factor * power;
  }
  return 10.0 * power;
}

}  // namespace pictures
