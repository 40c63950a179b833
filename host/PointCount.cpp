#include "PointCount.h"

#include <bit>
#include <cstdint>
#include <unordered_map>
#include <unordered_set>

namespace {

struct Position {
  std::uint64_t x;
  std::uint64_t y;
  bool operator==(const Position&) const = default;
};

struct PositionHash {
  std::size_t operator()(const Position& p) const {
    constexpr std::uint64_t kOdd = 0x9E3779B97F4A7C15ULL;
    const std::uint64_t mixed = (p.x * kOdd) ^ (p.y + kOdd + (p.x << 6U));
    return static_cast<std::size_t>((mixed ^ (mixed >> 29U)) * kOdd);
  }
};

using Vertices = std::unordered_map<Position, std::uint32_t, PositionHash>;

Position exactly(double x, double y) { return {std::bit_cast<std::uint64_t>(x), std::bit_cast<std::uint64_t>(y)}; }

Position asVertex(double x, double y) {
  const orvik::PlanPosition p = orvik::vertexPosition(x, y);
  return exactly(p.x, p.y);
}

// The vertices by their positions: as they are stored, and as a construction rounds them. An imported TIN has vertices
// closer together than that, and its points are at them exactly.
struct Positions {
  Vertices exact;
  Vertices rounded;

  explicit Positions(const CEType& tin) {
    std::uint32_t number = 0;
    for (const TPoint* p : tin.getOriginalList()) {
      exact.emplace(exactly(p->getX(), p->getY()), number);
      rounded.emplace(asVertex(p->getX(), p->getY()), number);
      ++number;
    }
  }

  // The number of the vertex at a point; none gives its rounded place in `missing`.
  const std::uint32_t* vertexAt(const SurfacePoint& p) const {
    const auto same = exact.find(exactly(p.getE(), p.getN()));
    if (same != exact.end()) return &same->second;
    const auto near = rounded.find(asVertex(p.getE(), p.getN()));
    return near == rounded.end() ? nullptr : &near->second;
  }
};

}  // namespace

PointCount countPoints(DTMSurface& surface) {
  const Positions positions(*surface.getCEType());
  std::unordered_set<std::uint32_t> taken;
  PointCount count;
  for (const SurfacePoint* point : surface.getSurfacePoints()) {
    const std::uint32_t* const vertex = positions.vertexAt(*point);
    if (vertex == nullptr) {
      ++count.missing;
    } else if (!taken.insert(*vertex).second) {
      ++count.repeated;
    }
  }
  return count;
}

PointCount countPointsOfBuilt(DTMSurface& surface) {
  const CEType& tin = *surface.getCEType();
  const long long vertices = 1LL + tin.getEList()->getListLen() - tin.getTList()->getListLen();
  return {surface.getPointsNumber() - vertices, 0};
}
