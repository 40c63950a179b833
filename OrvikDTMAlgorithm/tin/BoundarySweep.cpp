// Cutting a polygon into trapezoids. In a band between one northing of a corner and the next the sides at hand are in
// order from west to east, save where some cross, and there the band is cut once more for those alone. Bands are looked
// at by halves of halves of them all, and neighbours that stay so throughout one are not looked at any closer.
// Rounding may misplace a crossing, but every northing has its even number of sides whatever the order, so that
// nothing worse comes of it than a sliver of that width.
#include <algorithm>
#include <limits>
#include <numeric>
#include <span>
#include <utility>

#include <OrvikDTMAlgorithm/tin/BoundaryParts.h>
#include <OrvikDTMAlgorithm/tin/QuietPairs.h>

inline namespace OrvikDTM {
namespace detail {

namespace {

// In a band, a group of sides with more crossings than this is halved instead of being cut at each: what crosses many
// others at different northings is sorted out quicker in narrower bands.
constexpr std::size_t kManyCrossings = 64;

// How often a band is halved at most: crossings in one point are not sorted out by any halving.
constexpr int kMostHalvings = 40;

// A side in a band, and where it enters and leaves.
struct Run {
  double xLow;
  double xHigh;
  Number side;
};

// The place of a group of sides in the order of all: by bands, then from west to east.
struct Rank {
  Number band;
  Run westmost;
};

bool isWestOf(const Run& a, const Run& b) {
  if (a.xLow != b.xLow) return a.xLow < b.xLow;
  return a.xHigh != b.xHigh ? a.xHigh < b.xHigh : a.side < b.side;
}

class BoundarySweep {
 public:
  explicit BoundarySweep(const std::vector<BoundarySide>& sides) : latestPart_(sides.size(), kNone) {
    // Near the origin: at large eastings crossings would be rounded to the easting's last digit.
    if (sides.empty()) return;
    const Position origin = sides.front().start;
    for (const BoundarySide& s : sides) {
      sides_.push_back({{s.start.x - origin.x, s.start.y}, {s.end.x - origin.x, s.end.y}});
    }
  }

  std::vector<BoundaryPart> run() {
    std::vector<BandedSide> sides = intoBands();
    if (!sides.empty()) cutBands(std::move(sides), 0, static_cast<Number>(levels_.size() - 1));
    return inOrder();
  }

  std::size_t work() const { return work_; }

 private:
  static constexpr Number kNone = ~Number{0};
  using Group = std::span<const Run>;

  // The sides that bound parts, which those along a parallel do not, and the northings of their ends.
  std::vector<BandedSide> intoBands() {
    std::vector<BandedSide> result;
    for (Number i = 0; i < sides_.size(); ++i) {
      if (sides_[i].start.y == sides_[i].end.y) continue;
      result.push_back({i, 0, 0});
      levels_.push_back(sides_[i].start.y);
      levels_.push_back(sides_[i].end.y);
    }
    std::sort(levels_.begin(), levels_.end());
    levels_.erase(std::unique(levels_.begin(), levels_.end()), levels_.end());
    const auto bandFrom = [this](double y) {
      return static_cast<Number>(std::lower_bound(levels_.begin(), levels_.end(), y) - levels_.begin());
    };
    for (BandedSide& banded : result) {
      banded.first = bandFrom(sides_[banded.side].start.y);
      banded.end = bandFrom(sides_[banded.side].end.y);
    }
    return result;
  }

  // Cuts the bands [first, end); `atHand` are the sides that pass through some of them and have not been dealt with.
  void cutBands(std::vector<BandedSide> atHand, Number first, Number end) {
    if (atHand.empty()) return;
    work_ += atHand.size();
    if (end - first == 1) return cutSingleBand(atHand, first);
    for (const QuietPair& pair : QuietPairs(sides_, levels_).takeFrom(atHand, first, end)) {
      rank_ = {first, runOf(pair.west, levels_[first], levels_[first + 1])};
      addPart({pair.west, pair.east, levels_[first], levels_[end]});
    }
    const Number middle = first + (end - first) / 2;
    std::vector<BandedSide> south;
    std::vector<BandedSide> north;
    for (const BandedSide& side : atHand) {
      if (side.first < middle) south.push_back(side);
      if (side.end > middle) north.push_back(side);
    }
    atHand = {};
    cutBands(std::move(south), first, middle);
    cutBands(std::move(north), middle, end);
  }

  void cutSingleBand(const std::vector<BandedSide>& atHand, Number band) {
    std::vector<Number> sides;
    for (const BandedSide& side : atHand) sides.push_back(side.side);
    rank_.band = band;
    cutBand(sides, levels_[band], levels_[band + 1], kMostHalvings);
  }

  Run runOf(Number side, double low, double high) const {
    return {sides_[side].xAt(low), sides_[side].xAt(high), side};
  }

  void cutBand(const std::vector<Number>& atHand, double low, double high, int halvings) {
    std::vector<Run> runs;
    for (const Number side : atHand) runs.push_back(runOf(side, low, high));
    std::sort(runs.begin(), runs.end(), isWestOf);
    std::vector<double> leastBeyond(runs.size() + 1, std::numeric_limits<double>::infinity());
    for (std::size_t i = runs.size(); i-- > 0;) leastBeyond[i] = std::min(runs[i].xHigh, leastBeyond[i + 1]);

    // A group: the fewest sides, an even number of them, that none outside the group crosses.
    std::size_t first = 0;
    double most = -std::numeric_limits<double>::infinity();
    for (std::size_t last = 1; last <= runs.size(); ++last) {
      most = std::max(most, runs[last - 1].xHigh);
      if ((last - first) % 2 != 0 || most > leastBeyond[last]) continue;
      if (halvings == kMostHalvings) rank_.westmost = runs[first];
      cutGroup(Group(runs).subspan(first, last - first), low, high, halvings);
      first = last;
    }
  }

  void cutGroup(Group group, double low, double high, int halvings) {
    std::vector<double> northings = crossingsOf(group, low, high);
    if (northings.size() > kManyCrossings) {
      const double middle = low + (high - low) / 2;
      if (halvings > 0 && low < middle && middle < high) {
        std::vector<Number> sides;
        for (const Run& run : group) sides.push_back(run.side);
        cutBand(sides, low, middle, halvings - 1);
        cutBand(sides, middle, high, halvings - 1);
        return;
      }
      northings.clear();
    }
    std::sort(northings.begin(), northings.end());
    northings.push_back(high);
    double from = low;
    for (const double to : northings) {
      if (!(from < to)) continue;
      addParts(group, from, to);
      from = to;
    }
  }

  // The northings at which sides of the group cross; once there are too many of them, not all. Sides that are no
  // further apart than their slacks where they enter or leave may seem to cross in every part of the band, as those of
  // a polygon that goes to and fro along one line do: not to cut there costs a sliver of that width.
  std::vector<double> crossingsOf(Group group, double low, double high) const {
    std::vector<double> northings;
    std::vector<Run> byHigh;
    for (const Run& run : group) {
      byHigh.push_back(run);
      for (std::size_t i = byHigh.size() - 1; i > 0 && byHigh[i - 1].xHigh > byHigh[i].xHigh; --i) {
        if (northings.size() > kManyCrossings) return northings;
        const double apartLow = byHigh[i].xLow - byHigh[i - 1].xLow;
        const double apartHigh = byHigh[i - 1].xHigh - byHigh[i].xHigh;
        const double slack = sides_[byHigh[i].side].slack() + sides_[byHigh[i - 1].side].slack();
        const double northing = low + (high - low) * (apartLow / (apartLow + apartHigh));
        if (std::min(apartLow, apartHigh) > slack && low < northing && northing < high) northings.push_back(northing);
        std::swap(byHigh[i - 1], byHigh[i]);
      }
    }
    return northings;
  }

  // What the sides bound between two northings at which none of them cross: from the first to the second, from the
  // third to the fourth and so on.
  void addParts(Group group, double low, double high) {
    const double middle = low + (high - low) / 2;
    std::vector<std::pair<double, Number>> order;
    for (const Run& run : group) order.emplace_back(sides_[run.side].xAt(middle), run.side);
    std::sort(order.begin(), order.end());
    for (std::size_t i = 0; i + 1 < order.size(); i += 2) {
      addPart({order[i].second, order[i + 1].second, low, high});
    }
  }

  void addPart(const BoundaryPart& part) {
    Number& latest = latestPart_[part.left];
    if (latest != kNone && parts_[latest].right == part.right && parts_[latest].high == part.low) {
      parts_[latest].high = part.high;
      return;
    }
    latest = static_cast<Number>(parts_.size());
    parts_.push_back(part);
    ranks_.push_back(rank_);
  }

  // The parts band by band and from west to east, as if bands had been looked at one after the other.
  std::vector<BoundaryPart> inOrder() const {
    std::vector<Number> order(parts_.size());
    std::iota(order.begin(), order.end(), Number{0});
    std::stable_sort(order.begin(), order.end(), [this](Number a, Number b) {
      if (ranks_[a].band != ranks_[b].band) return ranks_[a].band < ranks_[b].band;
      return isWestOf(ranks_[a].westmost, ranks_[b].westmost);
    });
    std::vector<BoundaryPart> result;
    result.reserve(order.size());
    for (const Number part : order) result.push_back(parts_[part]);
    return result;
  }

  std::vector<BoundarySide> sides_;
  std::vector<double> levels_;  // of the sides' ends, upwards
  std::vector<BoundaryPart> parts_;
  std::vector<Rank> ranks_;         // of the parts' groups
  Rank rank_{};                     // of the group at hand
  std::vector<Number> latestPart_;  // of every side, the latest part to the right of it
  std::size_t work_ = 0;
};

}  // namespace

std::vector<BoundaryPart> partsOf(const std::vector<BoundarySide>& sides, std::size_t* work) {
  BoundarySweep sweep(sides);
  std::vector<BoundaryPart> parts = sweep.run();
  if (work != nullptr) *work = sweep.work();
  return parts;
}

}  // namespace detail
}  // namespace OrvikDTM
