#include <algorithm>
#include <bit>
#include <cmath>
#include <unordered_set>

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

bool usable(const TPoint* p) { return p != nullptr && !std::isnan(p->getX()) && !std::isnan(p->getY()); }

// A key that orders as the number does; 0 and -0 have the same.
std::uint64_t sortKey(double v) {
  constexpr std::uint64_t kSign = std::uint64_t{1} << 63;
  const auto bits = std::bit_cast<std::uint64_t>(v + 0.0);
  return (bits & kSign) != 0 ? ~bits : bits | kSign;
}

// A point and where it was surveyed: points lie anywhere in memory, so they are read once.
struct SurveyedPoint {
  Position position;
  TPoint* point;
};

// The points, all of them usable, by y, then x; points at the same place keep their order.
std::vector<SurveyedPoint> fromLowest(const std::vector<TPoint*>& points) {
  std::vector<KeyedNumber> byY = largeVector<KeyedNumber>(points.size());
  for (Number i = 0; i < byY.size(); ++i) byY[i] = {sortKey(points[i]->getY()), i};
  radixSort(byY);

  std::vector<SurveyedPoint> sorted;
  reserveLarge(sorted, points.size());
  for (std::size_t i = 0; i < byY.size(); ++i) {
    if (i + 2 * kPrefetchAhead < byY.size()) prefetch(&points[byY[i + 2 * kPrefetchAhead].number]);
    if (i + kPrefetchAhead < byY.size()) prefetchWhole(points[byY[i + kPrefetchAhead].number]);
    TPoint* point = points[byY[i].number];
    sorted.push_back({positionOf(*point), point});
  }
  const auto byX = [](const SurveyedPoint& a, const SurveyedPoint& b) { return a.position.x < b.position.x; };
  for (auto first = sorted.begin(); first != sorted.end();) {
    auto last = first + 1;
    while (last != sorted.end() && last->position.y == first->position.y) ++last;
    sortStably(first, last, byX);
    first = last;
  }
  return sorted;
}

// Leaves out a point that is given again: it would meet its own position. Both stand among those at one place.
void dropSecondMeetings(std::vector<SurveyedPoint>& sorted) {
  std::unordered_set<const TPoint*> met;
  auto kept = sorted.begin();
  for (auto first = sorted.begin(); first != sorted.end();) {
    auto last = first + 1;
    while (last != sorted.end() && samePosition(last->position, first->position)) ++last;
    if (last - first == 1) {
      *kept++ = *first;
    } else {
      met.clear();
      for (; first != last; ++first) {
        if (met.insert(first->point).second) *kept++ = *first;
      }
    }
    first = last;
  }
  sorted.erase(kept, sorted.end());
}

// Asked of the coordinates before rounding, which turns what is too large for it into 0.
bool fitMillimetres(const std::vector<SurveyedPoint>& points) {
  return std::all_of(points.begin(), points.end(), [](const SurveyedPoint& p) {
    return std::fabs(p.position.x) <= kLargestInMillimetres && std::fabs(p.position.y) <= kLargestInMillimetres;
  });
}

}  // namespace

NormalisedPoints normalise(std::vector<TPoint*>& points, bool compareUnshifted) {
  NormalisedPoints result;
  const auto firstUnusable = std::stable_partition(points.begin(), points.end(), usable);
  std::vector<SurveyedPoint> sorted = fromLowest({points.begin(), firstUnusable});
  if (sorted.empty()) return result;
  std::transform(sorted.begin(), sorted.end(), points.begin(), [](const SurveyedPoint& p) { return p.point; });
  dropSecondMeetings(sorted);

  result.origin = sorted.front().position;
  const bool countable = fitMillimetres(sorted);
  std::vector<Position>& positions = result.positions;
  reserveLarge(positions, sorted.size());
  for (const SurveyedPoint& p : sorted) {
    result.origin.x = std::min(result.origin.x, p.position.x);
    positions.push_back(
        {roundThroughText(kDecimalsOfPosition, p.position.x), roundThroughText(kDecimalsOfPosition, p.position.y)});
  }

  const std::vector<bool> isRepeat = findRepeats(positions, result.origin, compareUnshifted);
  reserveLarge(result.points, sorted.size());
  if (countable) reserveLarge(result.millimetres, sorted.size());
  for (std::size_t i = 0; i < sorted.size(); ++i) {
    const Position p = positions[i];
    if (!isRepeat.empty() && isRepeat[i]) {
      result.repeats.push_back({sorted[i].point, p});
      continue;
    }
    positions[result.points.size()] = {p.x - result.origin.x, p.y - result.origin.y};
    result.points.push_back(sorted[i].point);
    if (countable) result.millimetres.push_back(inMillimetres(p));
  }
  positions.resize(result.points.size());
  return result;
}

}  // namespace detail
}  // namespace OrvikDTM
