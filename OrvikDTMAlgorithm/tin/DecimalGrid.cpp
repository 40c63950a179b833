#include <algorithm>
#include <cmath>
#include <cstdint>

#include <OrvikDTMAlgorithm/tin/DecimalGrid.h>

inline namespace OrvikDTM {
namespace detail {

namespace {

constexpr double kMicrometresPerUnit = 1e6;

// How far, in grid steps, a coordinate up to `extent` may be off a whole number and still be taken for it: four units
// in the last place, which is what moving to a local origin and back leaves behind. 0 where that could be taken for any
// number.
double gridTolerance(double extent, double perUnit) {
  constexpr double kUnitInLastPlace = 0x1p-52;
  constexpr double kCoarsest = 0.25;
  const double noise = perUnit * 4 * kUnitInLastPlace * extent;
  return noise > kCoarsest ? 0.0 : noise;
}

bool isWholeMillimetres(const Position& p, const MillimetrePosition& whole, double tolerance) {
  if (samePosition(inUnits(whole), p)) return true;
  const double offX = std::fabs(p.x * kMillimetresPerUnit - static_cast<double>(whole.x));
  const double offY = std::fabs(p.y * kMillimetresPerUnit - static_cast<double>(whole.y));
  return offX < tolerance && offY < tolerance;
}

// NaN when a coordinate is.
double extentOf(const std::vector<Position>& positions) {
  double extent = 0.0;
  for (const Position& p : positions) {
    if (std::isnan(p.x) || std::isnan(p.y)) return p.x + p.y;
    extent = std::max({extent, std::fabs(p.x), std::fabs(p.y)});
  }
  return extent;
}

// A coordinate in whole micrometres, and how far it is off them.
struct Micrometres {
  explicit Micrometres(double v) {
    const double units = std::trunc(v);
    const double rest = (v - units) * kMicrometresPerUnit;
    const std::int64_t nearest = std::llround(rest);
    whole = static_cast<std::int64_t>(units) * static_cast<std::int64_t>(kMicrometresPerUnit) + nearest;
    off = std::fabs(rest - static_cast<double>(nearest));
  }
  std::int64_t whole;
  double off;
};

// In micrometres, likewise.
std::vector<MillimetrePosition> wholeMicrometres(const std::vector<Position>& positions) {
  const double tolerance = gridTolerance(extentOf(positions), kMicrometresPerUnit);
  std::vector<MillimetrePosition> result;
  if (!(tolerance > 0.0)) return result;
  result.reserve(positions.size());
  for (const Position& p : positions) {
    const Micrometres x(p.x);
    const Micrometres y(p.y);
    if (!(x.off < tolerance && y.off < tolerance)) return {};
    result.push_back({x.whole, y.whole});
  }
  return result;
}

using Whole = std::vector<MillimetrePosition>;

// Whether each set is on the grid. `wholes` become the sets in grid steps, those that are not on it empty.
template <typename InSteps>
bool areOnGrid(const std::vector<std::vector<Position>*>& sets, std::vector<Whole>& wholes, InSteps inSteps) {
  bool all = true;
  for (std::size_t i = 0; i < sets.size(); ++i) {
    wholes[i] = inSteps(*sets[i]);
    all = all && wholes[i].size() == sets[i]->size();
  }
  return all;
}

// Puts the sets, in steps relative to the first position, in place of the positions. False where a double does not hold
// such a number.
bool replaceByWholes(const std::vector<std::vector<Position>*>& sets, const std::vector<Whole>& wholes) {
  constexpr std::int64_t kLargest = std::int64_t{1} << 53;
  if (wholes.empty() || wholes.front().empty()) return true;
  const MillimetrePosition origin = wholes.front().front();
  const auto fits = [](std::int64_t v) { return v >= -kLargest && v <= kLargest; };
  for (const Whole& whole : wholes) {
    const bool allFit = std::all_of(whole.begin(), whole.end(), [&](const MillimetrePosition& p) {
      return fits(p.x - origin.x) && fits(p.y - origin.y);
    });
    if (!allFit) return false;
  }
  for (std::size_t i = 0; i < sets.size(); ++i) {
    for (std::size_t k = 0; k < wholes[i].size(); ++k) {
      (*sets[i])[k] = {static_cast<double>(wholes[i][k].x - origin.x), static_cast<double>(wholes[i][k].y - origin.y)};
    }
  }
  return true;
}

}  // namespace

std::vector<MillimetrePosition> wholeMillimetres(const std::vector<Position>& positions, double leastExtent) {
  const double extent = std::max(extentOf(positions), leastExtent);
  if (!(extent <= kLargestInMillimetres)) return {};
  const double tolerance = gridTolerance(extent, kMillimetresPerUnit);
  std::vector<MillimetrePosition> result;
  result.reserve(positions.size());
  for (const Position& p : positions) {
    result.push_back(inMillimetres(p));
    if (!isWholeMillimetres(p, result.back(), tolerance)) return {};
  }
  return result;
}

void placeOnGrid(const std::vector<std::vector<Position>*>& sets) {
  std::vector<Whole> millimetres(sets.size());
  const auto inMillimetres = [](const std::vector<Position>& positions) { return wholeMillimetres(positions, 0.0); };
  if (areOnGrid(sets, millimetres, inMillimetres) && replaceByWholes(sets, millimetres)) return;
  std::vector<Whole> micrometres(sets.size());
  if (areOnGrid(sets, micrometres, wholeMicrometres) && replaceByWholes(sets, micrometres)) return;
  for (std::size_t i = 0; i < sets.size(); ++i) {
    for (std::size_t k = 0; k < sets[i]->size(); ++k) {
      Position& p = (*sets[i])[k];
      if (k < millimetres[i].size()) {
        p = inUnits(millimetres[i][k]);
      } else if (k < micrometres[i].size()) {
        const MillimetrePosition& whole = micrometres[i][k];
        p = {static_cast<double>(whole.x) / kMicrometresPerUnit, static_cast<double>(whole.y) / kMicrometresPerUnit};
      }
    }
  }
}

}  // namespace detail
}  // namespace OrvikDTM
