#include <algorithm>
#include <limits>

#include <OrvikDTMAlgorithm/tin/QuietPairs.h>

inline namespace OrvikDTM {
namespace detail {

namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();

// How many sides there are to the west, modulo two, in each of some bands.
class Parities {
 public:
  Parities(Number first, Number end) : first_(first), end_(end), changesAt_(end - first) {}

  void add(const BandedSide& side) {
    if (side.first <= first_) {
      isOddAtFirst_ = !isOddAtFirst_;
    } else {
      toggle(side.first);
    }
    if (side.end < end_) toggle(side.end);
  }

  void addThroughout() { isOddAtFirst_ = !isOddAtFirst_; }

  bool areAllEven() const { return !isOddAtFirst_ && changes_ == 0; }

 private:
  void toggle(Number band) {
    const Number at = band - first_;
    changesAt_[at] = !changesAt_[at];
    changes_ += changesAt_[at] ? 1 : -1;
  }

  Number first_;
  Number end_;
  std::vector<bool> changesAt_;  // whether the band's parity is not that of the one before
  int changes_ = 0;
  bool isOddAtFirst_ = false;
};

}  // namespace

std::vector<QuietPair> QuietPairs::takeFrom(std::vector<BandedSide>& atHand, Number first, Number end) {
  first_ = first;
  end_ = end;
  gather(atHand);
  if (spanning_.size() < 2) return {};
  findClear(atHand);
  if (clear_.size() < 2) return {};
  partial_.clear();
  for (const BandedSide& side : atHand) {
    if (side.first > first_ || side.end < end_) placePartial(side);
  }
  std::vector<bool> isTaken(atHand.size());
  std::vector<QuietPair> result = pairUp(isTaken);
  std::size_t kept = 0;
  for (std::size_t i = 0; i < atHand.size(); ++i) {
    if (!isTaken[i]) atHand[kept++] = atHand[i];
  }
  atHand.resize(kept);
  return result;
}

void QuietPairs::gather(const std::vector<BandedSide>& atHand) {
  spanning_.clear();
  for (Number i = 0; i < atHand.size(); ++i) {
    const BandedSide& side = atHand[i];
    if (side.first > first_ || side.end < end_) continue;
    const BoundarySide& s = sides_[side.side];
    spanning_.push_back({s.xAt(levels_[first_]), s.xAt(levels_[end_]), s.slack(), i});
  }
  std::sort(spanning_.begin(), spanning_.end(),
            [](const Spanning& a, const Spanning& b) { return a.low != b.low ? a.low < b.low : a.place < b.place; });
}

// The spanning sides that are apart from all of them before and all behind, at both ends.
void QuietPairs::findClear(const std::vector<BandedSide>& atHand) {
  std::vector<bool> isClear(spanning_.size());
  double low = -kInfinity;
  double high = -kInfinity;
  for (std::size_t i = 0; i < spanning_.size(); ++i) {
    const Spanning& s = spanning_[i];
    isClear[i] = low < s.low - s.slack && high < s.high - s.slack;
    low = std::max(low, s.low + s.slack);
    high = std::max(high, s.high + s.slack);
  }
  low = kInfinity;
  high = kInfinity;
  for (std::size_t i = spanning_.size(); i-- > 0;) {
    const Spanning& s = spanning_[i];
    isClear[i] = isClear[i] && s.low + s.slack < low && s.high + s.slack < high;
    low = std::min(low, s.low - s.slack);
    high = std::min(high, s.high - s.slack);
  }
  clear_.clear();
  for (Number i = 0; i < spanning_.size(); ++i) {
    const Spanning& s = spanning_[i];
    if (isClear[i]) clear_.push_back({atHand[s.place], s.slack, i, s.place, false});
  }
}

// Finds the gap between clear sides that a side lies in. Clear sides that it is not certainly beside it disturbs. What
// is certain of one clear side holds for those beyond it too, as they are apart from each other.
void QuietPairs::placePartial(const BandedSide& side) {
  const BoundarySide& s = sides_[side.side];
  const double slack = s.slack();
  auto firstNotWest = clear_.end();
  auto firstEast = clear_.begin();
  for (const double y : {levels_[std::max(first_, side.first)], levels_[std::min(end_, side.end)]}) {
    const double x = s.xAt(y);
    const auto xOf = [this, y](const Clear& c) { return sides_[c.side.side].xAt(y); };
    const auto notWest = std::partition_point(clear_.begin(), clear_.end(),
                                              [&](const Clear& c) { return xOf(c) + c.slack < x - slack; });
    const auto east =
        std::partition_point(notWest, clear_.end(), [&](const Clear& c) { return !(x + slack < xOf(c) - c.slack); });
    firstNotWest = std::min(firstNotWest, notWest);
    firstEast = std::max(firstEast, east);
  }
  for (auto c = firstNotWest; c < firstEast; ++c) c->isDisturbed = true;
  partial_.push_back({static_cast<Number>(firstEast - clear_.begin()), side});
}

std::vector<QuietPair> QuietPairs::pairUp(std::vector<bool>& isTaken) {
  std::sort(partial_.begin(), partial_.end(), [](const Partial& a, const Partial& b) { return a.notEast < b.notEast; });
  std::vector<QuietPair> result;
  Parities west(first_, end_);
  Number counted = 0;  // of the spanning sides
  auto partial = partial_.begin();
  for (std::size_t i = 0; i + 1 < clear_.size(); ++i) {
    for (; counted < clear_[i].rank; ++counted) west.addThroughout();
    for (; partial != partial_.end() && partial->notEast <= i; ++partial) west.add(partial->side);
    const bool areNeighbours = clear_[i + 1].rank == clear_[i].rank + 1 &&
                               (partial == partial_.end() || partial->notEast > i + 1) && !clear_[i].isDisturbed &&
                               !clear_[i + 1].isDisturbed;
    if (!areNeighbours || !west.areAllEven()) continue;
    result.push_back({clear_[i].side.side, clear_[i + 1].side.side});
    isTaken[clear_[i].place] = isTaken[clear_[i + 1].place] = true;
    ++i;
  }
  return result;
}

}  // namespace detail
}  // namespace OrvikDTM
