#include <algorithm>

#include <OrvikDTMAlgorithm/tin/PositionSet.h>
#include <OrvikDTMAlgorithm/tin/Repeats.h>

inline namespace OrvikDTM {
namespace detail {

namespace {

// Repeats of positions as they are. Equal ones have one y, so they stand in one row.
std::vector<bool> repeatsInRows(const std::vector<Position>& rounded) {
  std::vector<bool> isRepeat(rounded.size(), false);
  std::vector<std::size_t> row;
  for (std::size_t first = 0; first < rounded.size();) {
    row.clear();
    std::size_t last = first;
    for (; last < rounded.size() && rounded[last].y == rounded[first].y; ++last) row.push_back(last);
    const auto byX = [&rounded](std::size_t i, std::size_t j) { return rounded[i].x < rounded[j].x; };
    if (!std::is_sorted(row.begin(), row.end(), byX)) std::stable_sort(row.begin(), row.end(), byX);
    for (std::size_t k = 1; k < row.size(); ++k) isRepeat[row[k]] = rounded[row[k]].x == rounded[row[k - 1]].x;
    first = last;
  }
  return isRepeat;
}

// Whether any position can equal an earlier one less the origin. Subtraction rounds monotonically: in y the earlier
// ones reach as high as this one less the origin, so with a smallest y above 0 they stay below it; in x the ranges must
// meet.
bool canMeetShifted(const std::vector<Position>& rounded, const Position& origin) {
  const auto [low, high] = std::minmax_element(rounded.begin(), rounded.end(),
                                               [](const Position& a, const Position& b) { return a.x < b.x; });
  if (high->x - origin.x < low->x || low->x - origin.x > high->x) return false;
  return std::any_of(rounded.begin(), rounded.end(), [&origin](const Position& p) { return p.y - origin.y >= p.y; });
}

std::vector<bool> repeatsOfShifted(const std::vector<Position>& rounded, const Position& origin) {
  std::vector<bool> isRepeat(rounded.size(), false);
  PositionSet accepted(rounded.size());
  for (std::size_t i = 0; i < rounded.size(); ++i) {
    const Position& p = rounded[i];
    isRepeat[i] = accepted.find(p) != PositionSet::kNone;
    if (!isRepeat[i]) accepted.insert({p.x - origin.x, p.y - origin.y});
  }
  return isRepeat;
}

}  // namespace

std::vector<bool> findRepeats(const std::vector<Position>& rounded, const Position& origin, bool compareUnshifted) {
  constexpr Position kNoShift{0.0, 0.0};
  const Position shift = compareUnshifted ? kNoShift : origin;
  // Infinities, which come first or last, round to 0.
  const bool comesByY =
      std::is_sorted(rounded.begin(), rounded.end(), [](const Position& a, const Position& b) { return a.y < b.y; });
  if (!comesByY) return repeatsOfShifted(rounded, shift);
  if (samePosition(shift, kNoShift)) return repeatsInRows(rounded);
  if (!canMeetShifted(rounded, shift)) return {};
  return repeatsOfShifted(rounded, shift);
}

}  // namespace detail
}  // namespace OrvikDTM
