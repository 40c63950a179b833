// Cutting a polygon into trapezoids. The sweep goes from one northing of a corner to the next; in between the sides at
// hand are in order from west to east, save where some cross, and there the band is cut once more for those alone.
// Rounding may misplace a crossing, but every northing has its even number of sides whatever the order, so that
// nothing worse comes of it than a sliver of that width.
#include <algorithm>
#include <limits>
#include <span>
#include <utility>

#include <OrvikDTMAlgorithm/tin/BoundaryParts.h>

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
    std::vector<Number> byStart;
    std::vector<double> levels;
    for (Number i = 0; i < sides_.size(); ++i) {
      if (sides_[i].start.y == sides_[i].end.y) continue;  // bounds no part
      byStart.push_back(i);
      levels.push_back(sides_[i].start.y);
      levels.push_back(sides_[i].end.y);
    }
    std::sort(levels.begin(), levels.end());
    levels.erase(std::unique(levels.begin(), levels.end()), levels.end());
    std::stable_sort(byStart.begin(), byStart.end(),
                     [this](Number a, Number b) { return sides_[a].start.y < sides_[b].start.y; });
    std::vector<Number> atHand;
    auto next = byStart.begin();
    for (std::size_t i = 0; i + 1 < levels.size(); ++i) {
      while (next != byStart.end() && sides_[*next].start.y <= levels[i]) atHand.push_back(*next++);
      std::erase_if(atHand, [&](Number side) { return sides_[side].end.y <= levels[i]; });
      cutBand(atHand, levels[i], levels[i + 1], kMostHalvings);
    }
    return std::move(parts_);
  }

 private:
  static constexpr Number kNone = ~Number{0};
  using Group = std::span<const Run>;

  void cutBand(const std::vector<Number>& atHand, double low, double high, int halvings) {
    std::vector<Run> runs;
    for (const Number side : atHand) runs.push_back({sides_[side].xAt(low), sides_[side].xAt(high), side});
    std::sort(runs.begin(), runs.end(), [](const Run& a, const Run& b) {
      if (a.xLow != b.xLow) return a.xLow < b.xLow;
      return a.xHigh != b.xHigh ? a.xHigh < b.xHigh : a.side < b.side;
    });
    std::vector<double> leastBeyond(runs.size() + 1, std::numeric_limits<double>::infinity());
    for (std::size_t i = runs.size(); i-- > 0;) leastBeyond[i] = std::min(runs[i].xHigh, leastBeyond[i + 1]);

    // A group: the fewest sides, an even number of them, that none outside the group crosses.
    std::size_t first = 0;
    double most = -std::numeric_limits<double>::infinity();
    for (std::size_t last = 1; last <= runs.size(); ++last) {
      most = std::max(most, runs[last - 1].xHigh);
      if ((last - first) % 2 != 0 || most > leastBeyond[last]) continue;
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

  // The northings at which sides of the group cross; once there are too many of them, not all.
  static std::vector<double> crossingsOf(Group group, double low, double high) {
    std::vector<double> northings;
    std::vector<Run> byHigh;
    for (const Run& run : group) {
      byHigh.push_back(run);
      for (std::size_t i = byHigh.size() - 1; i > 0 && byHigh[i - 1].xHigh > byHigh[i].xHigh; --i) {
        if (northings.size() > kManyCrossings) return northings;
        const double apartLow = byHigh[i].xLow - byHigh[i - 1].xLow;
        const double apartHigh = byHigh[i - 1].xHigh - byHigh[i].xHigh;
        const double northing = low + (high - low) * (apartLow / (apartLow + apartHigh));
        if (low < northing && northing < high) northings.push_back(northing);
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
  }

  std::vector<BoundarySide> sides_;
  std::vector<BoundaryPart> parts_;
  std::vector<Number> latestPart_;  // of every side, the latest part to the right of it
};

}  // namespace

std::vector<BoundaryPart> partsOf(const std::vector<BoundarySide>& sides) { return BoundarySweep(sides).run(); }

}  // namespace detail
}  // namespace OrvikDTM
