#include <algorithm>
#include <bit>
#include <cmath>

#include <OrvikDTMAlgorithm/report/NumberText.h>
#include <OrvikDTMAlgorithm/tin/LargeArrays.h>
#include <OrvikDTMAlgorithm/tin/Normalise.h>
#include <OrvikDTMAlgorithm/tin/Prefetch.h>
#include <OrvikDTMAlgorithm/tin/RadixSort.h>
#include <OrvikDTMAlgorithm/tin/Repeats.h>
#include <OrvikDTMAlgorithm/tin/TPoint.h>

inline namespace OrvikDTM {
namespace detail {

namespace {

constexpr int kDecimals = 3;

bool usable(const TPoint* p) { return p != nullptr && !std::isnan(p->getX()) && !std::isnan(p->getY()); }

// A key that orders as the number does; 0 and -0 have the same.
std::uint64_t sortKey(double v) {
  constexpr std::uint64_t kSign = std::uint64_t{1} << 63;
  const auto bits = std::bit_cast<std::uint64_t>(v + 0.0);
  return (bits & kSign) != 0 ? ~bits : bits | kSign;
}

// The points, all of them usable, by y, then x; points at the same place keep their order.
std::vector<TPoint*> fromLowest(const std::vector<TPoint*>& points) {
  std::vector<KeyedNumber> byY = largeVector<KeyedNumber>(points.size());
  for (Number i = 0; i < byY.size(); ++i) byY[i] = {sortKey(points[i]->getY()), i};
  radixSort(byY);

  std::vector<TPoint*> sorted = largeVector<TPoint*>(points.size());
  std::vector<KeyedNumber> row;
  for (std::size_t first = 0; first < byY.size();) {
    std::size_t last = first + 1;
    while (last < byY.size() && byY[last].key == byY[first].key) ++last;
    if (last - first == 1) {
      sorted[first] = points[byY[first].number];
      first = last;
      continue;
    }
    row.clear();
    for (std::size_t i = first; i < last; ++i) {
      row.push_back({sortKey(points[byY[i].number]->getX()), byY[i].number});
    }
    radixSort(row);
    for (const KeyedNumber& item : row) sorted[first++] = points[item.number];
  }
  return sorted;
}

bool fitsMillimetres(const std::vector<Position>& rounded) {
  return std::all_of(rounded.begin(), rounded.end(), [](const Position& p) {
    return std::fabs(p.x) <= kLargestInMillimetres && std::fabs(p.y) <= kLargestInMillimetres;
  });
}

}  // namespace

NormalisedPoints normalise(std::vector<TPoint*>& points, bool compareUnshifted) {
  NormalisedPoints result;
  const auto firstUnusable = std::stable_partition(points.begin(), points.end(), usable);
  std::vector<TPoint*> sorted = fromLowest({points.begin(), firstUnusable});
  std::copy(sorted.begin(), sorted.end(), points.begin());
  if (sorted.empty()) return result;

  result.origin = positionOf(*sorted.front());
  std::vector<Position> rounded;
  reserveLarge(rounded, sorted.size());
  for (std::size_t i = 0; i < sorted.size(); ++i) {
    if (i + kPrefetchAhead < sorted.size()) prefetch(sorted[i + kPrefetchAhead]);
    const Position p = positionOf(*sorted[i]);
    result.origin.x = std::min(result.origin.x, p.x);
    rounded.push_back({roundThroughText(kDecimals, p.x), roundThroughText(kDecimals, p.y)});
  }

  const std::vector<bool> isRepeat = findRepeats(rounded, result.origin, compareUnshifted);
  const bool countable = fitsMillimetres(rounded);
  reserveLarge(result.points, sorted.size());
  reserveLarge(result.positions, sorted.size());
  if (countable) reserveLarge(result.millimetres, sorted.size());
  for (std::size_t i = 0; i < sorted.size(); ++i) {
    const Position& p = rounded[i];
    if (!isRepeat.empty() && isRepeat[i]) {
      result.repeats.push_back({sorted[i], p});
      continue;
    }
    result.points.push_back(sorted[i]);
    result.positions.push_back({p.x - result.origin.x, p.y - result.origin.y});
    if (countable) result.millimetres.push_back(inMillimetres(p));
  }
  return result;
}

}  // namespace detail
}  // namespace OrvikDTM
