#include <bit>
#include <cmath>
#include <utility>

#include <OrvikDTMAlgorithm/tin/SideTree.h>

inline namespace OrvikDTM {
namespace detail {

namespace {

// Sides of a polygon that does not cross itself make one chain in every node. Where sides cross, as many chains as this
// are tried for one that a side fits on; what fits on none stands alone.
constexpr std::size_t kMostChainsTried = 16;

// 0 where it cannot be computed: heights put sides in an order, and need not be right.
double heightAt(const NumberedSide& side, double x) {
  const double height = side.a.y + (side.b.y - side.a.y) * ((x - side.a.x) / (side.b.x - side.a.x));
  return std::isnan(height) ? 0.0 : height;
}

// Whether p lies below the side's line, or on it.
bool isNotAbove(const Position& p, const NumberedSide& side) { return orientation(side.west(), side.east(), p) <= 0; }
bool isNotBelow(const Position& p, const NumberedSide& side) { return orientation(side.west(), side.east(), p) >= 0; }

// Whether `lower` is nowhere above `upper`, where both are: it is not where the first of them ends, on either hand.
bool liesBelow(const NumberedSide& lower, const NumberedSide& upper) {
  const bool isBelowInWest =
      lower.west().x >= upper.west().x ? isNotAbove(lower.west(), upper) : isNotBelow(upper.west(), lower);
  if (!isBelowInWest) return false;
  return lower.east().x <= upper.east().x ? isNotAbove(lower.east(), upper) : isNotBelow(upper.east(), lower);
}

}  // namespace

SideTree::SideTree(const std::vector<NumberedSide>& sides) {
  for (const NumberedSide& side : sides) {
    if (side.a.x == side.b.x) continue;
    sides_.push_back(side);
    eastings_.push_back(side.a.x);
    eastings_.push_back(side.b.x);
  }
  if (sides_.empty()) return;
  std::sort(eastings_.begin(), eastings_.end());
  eastings_.erase(std::unique(eastings_.begin(), eastings_.end()), eastings_.end());
  leaves_ = std::bit_ceil(eastings_.size() - 1);

  std::vector<std::size_t> begin(2 * leaves_ + 1);
  for (const NumberedSide& side : sides_) forEachNodeOf(side, [&](std::size_t node) { ++begin[node + 1]; });
  for (std::size_t node = 0; node < 2 * leaves_; ++node) begin[node + 1] += begin[node];
  places_.resize(begin.back());
  std::vector<std::size_t> next = begin;
  for (Number i = 0; i < sides_.size(); ++i) {
    forEachNodeOf(sides_[i], [&](std::size_t node) { places_[next[node]++] = i; });
  }
  chainsBegin_.push_back(0);
  for (std::size_t node = 0; node < 2 * leaves_; ++node) {
    makeChains(node, std::span(places_).subspan(begin[node], begin[node + 1] - begin[node]));
    chainsBegin_.push_back(static_cast<Number>(placesBegin_.size()));
  }
  placesBegin_.push_back(static_cast<Number>(places_.size()));
}

// The fewest nodes whose intervals are together those that the side spans.
template <typename Visit>
void SideTree::forEachNodeOf(const NumberedSide& side, Visit visit) const {
  const auto placeOf = [this](double x) {
    return static_cast<std::size_t>(std::lower_bound(eastings_.begin(), eastings_.end(), x) - eastings_.begin());
  };
  std::size_t first = leaves_ + placeOf(side.west().x);
  std::size_t end = leaves_ + placeOf(side.east().x);
  for (; first < end; first /= 2, end /= 2) {
    if (first % 2 == 1) visit(first++);
    if (end % 2 == 1) visit(--end);
  }
}

// An easting amid the intervals of a node.
double SideTree::middleOf(std::size_t node) const {
  std::size_t first = node;
  std::size_t end = node + 1;
  for (; first < leaves_; first *= 2) end *= 2;
  return eastings_[first - leaves_] / 2 + eastings_[std::min(end - leaves_, eastings_.size() - 1)] / 2;
}

// Puts the places of a node's sides in the order of chains, each placed by its height in the middle: which chain it
// fits on is decided exactly, so that rounding costs no more than one chain too many.
void SideTree::makeChains(std::size_t node, std::span<Number> places) {
  if (places.empty()) return;
  const double middle = middleOf(node);
  std::vector<std::pair<double, Number>> order;
  for (const Number place : places) order.emplace_back(heightAt(sides_[place], middle), place);
  std::sort(order.begin(), order.end());

  std::vector<Places> chains;
  Places alone;
  for (const auto& [height, place] : order) {
    const NumberedSide& side = sides_[place];
    const auto fitting = std::find_if(chains.begin(), chains.end(), [this, &side](const Places& chain) {
      return liesBelow(sides_[chain.back()], side);
    });
    if (fitting != chains.end()) {
      fitting->push_back(place);
    } else if (chains.size() < kMostChainsTried) {
      chains.push_back({place});
    } else {
      alone.push_back(place);
    }
  }
  const auto begin = static_cast<Number>(places.data() - places_.data());
  auto out = places.begin();
  for (const Places& chain : chains) {
    placesBegin_.push_back(begin + static_cast<Number>(out - places.begin()));
    out = std::copy(chain.begin(), chain.end(), out);
  }
  for (const Number place : alone) {
    placesBegin_.push_back(begin + static_cast<Number>(out - places.begin()));
    *out++ = place;
  }
}

}  // namespace detail
}  // namespace OrvikDTM
