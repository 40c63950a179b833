#include "PointChanges.h"

#include <algorithm>
#include <map>
#include <string>
#include <unordered_map>

namespace {

constexpr double kTenthsOfMillimetres = 10000.0;

struct Position {
  double x;
  double y;
  bool operator==(const Position&) const = default;
};

struct PositionHash {
  std::size_t operator()(const Position& p) const {
    constexpr std::size_t kOdd = 0x9E3779B97F4A7C15ULL;
    return std::hash<double>()(p.x) * kOdd ^ std::hash<double>()(p.y);
  }
};

// As a surface's coordinates are rounded on their way into its TIN.
double rounded(double v) { return U::round(v * kTenthsOfMillimetres) + 0.0; }

Position positionOf(const SurfacePoint& p) { return {rounded(p.getE()), rounded(p.getN())}; }

// The points of the second surface that have no partner yet.
class Unmatched {
 public:
  explicit Unmatched(const std::vector<SurfacePoint*>& points) : points_(points), taken_(points.size(), false) {
    for (std::size_t i = points.size(); i-- > 0;) byPosition_[positionOf(*points[i])].push_back(i);
  }

  // Takes a point at the position of `p`, one of the same height and name sooner than another.
  const SurfacePoint* takeSamePlace(const SurfacePoint& p) {
    const auto found = byPosition_.find(positionOf(p));
    if (found == byPosition_.end() || found->second.empty()) return nullptr;
    std::vector<std::size_t>& there = found->second;
    auto best = std::find_if(there.rbegin(), there.rend(), [&](std::size_t i) { return isSame(p, *points_[i]); });
    if (best == there.rend()) best = there.rbegin();
    const std::size_t index = *best;
    there.erase(std::next(best).base());
    return take(index);
  }

  std::vector<const SurfacePoint*> left() const {
    std::vector<const SurfacePoint*> list;
    for (std::size_t i = 0; i < points_.size(); ++i) {
      if (!taken_[i]) list.push_back(points_[i]);
    }
    return list;
  }

 private:
  static bool isSame(const SurfacePoint& a, const SurfacePoint& b) { return rounded(a.getZ()) == rounded(b.getZ()); }

  const SurfacePoint* take(std::size_t index) {
    taken_[index] = true;
    return points_[index];
  }

  const std::vector<SurfacePoint*>& points_;
  std::vector<bool> taken_;
  std::unordered_map<Position, std::vector<std::size_t>, PositionHash> byPosition_;  // last first
};

// Points by their names, those whose name is not theirs alone left out.
std::map<std::string, const SurfacePoint*> byName(const std::vector<const SurfacePoint*>& points) {
  std::map<std::string, const SurfacePoint*> named;
  for (const SurfacePoint* p : points) {
    const auto [entry, isNew] = named.emplace(p->getSurfacePointName(), p);
    if (!isNew) entry->second = nullptr;
  }
  std::erase_if(named, [](const auto& entry) { return entry.second == nullptr || entry.first.empty(); });
  return named;
}

void addSamePlace(const SurfacePoint& before, const SurfacePoint& after, PointChanges& result) {
  const double rise = rounded(after.getZ()) - rounded(before.getZ());
  if (rise == 0.0) {
    ++result.unchanged;
  } else {
    result.changes.push_back({rise > 0.0 ? Change::kRaised : Change::kLowered, &before, &after});
  }
}

// What is left on both sides: moved where a name is on both, else removed or added.
void addOthers(const std::vector<const SurfacePoint*>& before, const std::vector<const SurfacePoint*>& after,
               PointChanges& result) {
  const auto namedBefore = byName(before);
  auto namedAfter = byName(after);
  const auto partnerOf = [&](const SurfacePoint* p) -> const SurfacePoint* {
    const auto own = namedBefore.find(p->getSurfacePointName());
    const auto other = namedAfter.find(p->getSurfacePointName());
    return own == namedBefore.end() || other == namedAfter.end() ? nullptr : other->second;
  };
  std::map<const SurfacePoint*, bool> moved;
  for (const SurfacePoint* p : before) {
    const SurfacePoint* const partner = partnerOf(p);
    if (partner != nullptr) moved[partner] = true;
    result.changes.push_back({partner == nullptr ? Change::kRemoved : Change::kMoved, p, partner});
  }
  for (const SurfacePoint* p : after) {
    if (moved.count(p) == 0) result.changes.push_back({Change::kAdded, nullptr, p});
  }
}

}  // namespace

std::size_t PointChanges::count(Change change) const {
  return static_cast<std::size_t>(
      std::count_if(changes.begin(), changes.end(), [change](const PointChange& one) { return one.change == change; }));
}

PointChanges compare(const DTMSurface& before, const DTMSurface& after) {
  Unmatched unmatched(after.getSurfacePoints());
  PointChanges result;
  std::vector<const SurfacePoint*> left;
  for (const SurfacePoint* p : before.getSurfacePoints()) {
    if (const SurfacePoint* const partner = unmatched.takeSamePlace(*p)) {
      addSamePlace(*p, *partner, result);
    } else {
      left.push_back(p);
    }
  }
  addOthers(left, unmatched.left(), result);
  return result;
}
