#include <algorithm>
#include <cmath>

#include <OrvikDTMAlgorithm/report/NumberText.h>
#include <OrvikDTMAlgorithm/tin/Normalise.h>
#include <OrvikDTMAlgorithm/tin/PositionSet.h>
#include <OrvikDTMAlgorithm/tin/TPoint.h>

inline namespace OrvikDTM {
namespace detail {

namespace {

constexpr int kDecimals = 3;

bool usable(const TPoint* p) { return p != nullptr && !std::isnan(p->getX()) && !std::isnan(p->getY()); }

struct SortKey {
  double y;
  double x;
  Number rank;
  TPoint* point;
};

// Sorts the first `count` points by y, then x; points at the same place keep their order.
void sortFromLowest(std::vector<TPoint*>& points, std::size_t count) {
  std::vector<SortKey> keys;
  keys.reserve(count);
  for (std::size_t i = 0; i < count; ++i) {
    keys.push_back({points[i]->getY(), points[i]->getX(), static_cast<Number>(i), points[i]});
  }
  std::sort(keys.begin(), keys.end(), [](const SortKey& a, const SortKey& b) {
    if (a.y != b.y) return a.y < b.y;
    if (a.x != b.x) return a.x < b.x;
    return a.rank < b.rank;
  });
  for (std::size_t i = 0; i < count; ++i) points[i] = keys[i].point;
}

struct Interval {
  double low;
  double high;
  bool meets(const Interval& other) const { return !(high < other.low || other.high < low); }
};

// The smallest and largest of one coordinate over the rounded points.
template <double Position::*Coordinate>
Interval extentOf(const std::vector<Position>& positions) {
  Interval extent{positions.front().*Coordinate, positions.front().*Coordinate};
  for (const Position& p : positions) {
    extent.low = std::min(extent.low, p.*Coordinate);
    extent.high = std::max(extent.high, p.*Coordinate);
  }
  return extent;
}

// Whether a rounded coordinate can equal a shifted one at all. Subtraction rounds monotonically, so the shifted
// extremes are the extremes shifted.
template <double Position::*Coordinate>
bool canCoincide(const std::vector<Position>& rounded, double origin) {
  const Interval own = extentOf<Coordinate>(rounded);
  return own.meets({own.low - origin, own.high - origin});
}

bool fitsMillimetres(const std::vector<Position>& rounded) {
  return std::all_of(rounded.begin(), rounded.end(), [](const Position& p) {
    return std::fabs(p.x) <= kLargestInMillimetres && std::fabs(p.y) <= kLargestInMillimetres;
  });
}

}  // namespace

NormalisedPoints normalise(std::vector<TPoint*>& points, bool compareUnshifted) {
  const auto firstUnusable = std::stable_partition(points.begin(), points.end(), usable);
  const auto count = static_cast<std::size_t>(firstUnusable - points.begin());
  NormalisedPoints result;
  if (count == 0) return result;

  sortFromLowest(points, count);
  result.origin = {points[0]->getX(), points[0]->getY()};
  std::vector<Position> rounded;
  rounded.reserve(count);
  for (std::size_t i = 0; i < count; ++i) {
    TPoint& p = *points[i];
    result.origin.x = std::min(result.origin.x, p.getX());
    rounded.push_back({roundThroughText(kDecimals, p.getX()), roundThroughText(kDecimals, p.getY())});
    p.setX(rounded.back().x);
    p.setY(rounded.back().y);
  }

  const bool repeatsPossible = compareUnshifted || (canCoincide<&Position::x>(rounded, result.origin.x) &&
                                                    canCoincide<&Position::y>(rounded, result.origin.y));
  const bool countable = fitsMillimetres(rounded);
  PositionSet accepted(repeatsPossible ? count : 0);
  result.points.reserve(count);
  result.positions.reserve(count);
  for (std::size_t i = 0; i < count; ++i) {
    if (repeatsPossible && accepted.find(rounded[i]) != PositionSet::kNone) continue;
    const Position shifted{rounded[i].x - result.origin.x, rounded[i].y - result.origin.y};
    if (repeatsPossible) accepted.insert(compareUnshifted ? rounded[i] : shifted);
    points[i]->setX(shifted.x);
    points[i]->setY(shifted.y);
    result.points.push_back(points[i]);
    result.positions.push_back(shifted);
    if (countable) result.millimetres.push_back(inMillimetres(rounded[i]));
  }
  return result;
}

}  // namespace detail
}  // namespace OrvikDTM
