#include "PointCount.h"

#include <bit>
#include <cmath>
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

// The construction rounds to millimetres, and moving to its local origin and back may change a last digit.
Position toMillimetre(double x, double y) {
  constexpr double kMillimetres = 1000.0;
  const auto whole = [](double v) { return static_cast<std::uint64_t>(std::llround(v * kMillimetres)); };
  return {whole(x), whole(y)};
}

// The vertices by their positions: as they are stored, and to the millimetre. An imported TIN has vertices closer
// together than that, and its points are at them exactly.
struct Positions {
  Vertices exact;
  Vertices rounded;

  explicit Positions(const CEType& tin) {
    std::uint32_t number = 0;
    for (const TPoint* p : tin.getOriginalList()) {
      exact.emplace(exactly(p->getX(), p->getY()), number);
      rounded.emplace(toMillimetre(p->getX(), p->getY()), number);
      ++number;
    }
  }

  // The number of the vertex at a point; none gives its rounded place in `missing`.
  const std::uint32_t* vertexAt(const SurfacePoint& p) const {
    const auto same = exact.find(exactly(p.getE(), p.getN()));
    if (same != exact.end()) return &same->second;
    const auto near = rounded.find(toMillimetre(p.getE(), p.getN()));
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
