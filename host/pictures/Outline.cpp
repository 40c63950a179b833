#include "Outline.h"

#include <algorithm>
#include <cstdlib>

namespace pictures {

namespace {

constexpr unsigned kHalf = 32;

struct Arrow {
  Place from;
  Place to;
};

// Arrows sorted by where they begin; as many begin at every place as end there, so whoever follows them comes back.
std::vector<std::vector<RasterPoint>> followed(const std::vector<Arrow>& arrows) {
  std::vector<bool> used(arrows.size(), false);
  const auto next = [&](Place from) {
    auto arrow = std::lower_bound(arrows.begin(), arrows.end(), from,
                                  [](const Arrow& a, Place wanted) { return a.from < wanted; });
    while (arrow != arrows.end() && arrow->from == from && used[static_cast<std::size_t>(arrow - arrows.begin())]) {
      ++arrow;
    }
    return static_cast<std::size_t>(arrow - arrows.begin());
  };
  std::vector<std::vector<RasterPoint>> loops;
  for (std::size_t i = 0; i < arrows.size(); ++i) {
    if (used[i]) continue;
    std::vector<RasterPoint> loop;
    std::size_t at = i;
    do {
      used[at] = true;
      loop.push_back(pointOf(arrows[at].from));
      const Place to = arrows[at].to;
      if (to == arrows[i].from) break;
      at = next(to);
    } while (at < arrows.size() && !used[at]);
    loops.push_back(std::move(loop));
  }
  return loops;
}

}  // namespace

Place placeOf(const RasterPoint& p) {
  return static_cast<Place>(static_cast<std::uint32_t>(p.x)) << kHalf | static_cast<std::uint32_t>(p.y);
}

RasterPoint pointOf(Place place) {
  return {static_cast<std::int32_t>(static_cast<std::uint32_t>(place >> kHalf)),
          static_cast<std::int32_t>(static_cast<std::uint32_t>(place))};
}

void Outline::add(const std::vector<RasterPoint>& face) {
  for (std::size_t i = 0; i < face.size(); ++i) {
    const Place from = placeOf(face[i]);
    const Place to = placeOf(face[i + 1 < face.size() ? i + 1 : 0]);
    if (from < to) sides_.push_back({from, to, 1});
    if (to < from) sides_.push_back({to, from, -1});
  }
}

bool Outline::comesBefore(const Side& a, const Side& b) { return a.low != b.low ? a.low < b.low : a.high < b.high; }

void Outline::settle() {
  std::sort(sides_.begin(), sides_.end(), comesBefore);
  std::size_t kept = 0;
  for (std::size_t i = 0; i < sides_.size();) {
    Side sum = sides_[i];
    for (++i; i < sides_.size() && sides_[i].low == sum.low && sides_[i].high == sum.high; ++i)
      sum.net += sides_[i].net;
    if (sum.net != 0) sides_[kept++] = sum;
  }
  sides_.resize(kept);
}

std::vector<std::vector<RasterPoint>> Outline::loops() const {
  std::vector<Arrow> arrows;
  for (const Side& side : sides_) {
    const Arrow arrow = side.net > 0 ? Arrow{side.low, side.high} : Arrow{side.high, side.low};
    for (int i = 0; i < std::abs(side.net); ++i) arrows.push_back(arrow);
  }
  std::stable_sort(arrows.begin(), arrows.end(), [](const Arrow& a, const Arrow& b) { return a.from < b.from; });
  return followed(arrows);
}

void Outline::addShared(const Outline& other, std::vector<Segment>& shared) const {
  auto theirs = other.sides_.begin();
  for (const Side& side : sides_) {
    while (theirs != other.sides_.end() && comesBefore(*theirs, side)) ++theirs;
    if (theirs == other.sides_.end()) return;
    const bool isSame = !comesBefore(side, *theirs);
    if (isSame && (side.net > 0) != (theirs->net > 0)) shared.push_back({side.low, side.high});
  }
}

}  // namespace pictures
