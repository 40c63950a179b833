#include <algorithm>
#include <cmath>
#include <limits>

#include <OrvikDTMAlgorithm/tin/PointInPolygon.h>
#include <OrvikDTMAlgorithm/tin/PolygonIndex.h>

inline namespace OrvikDTM {
namespace detail {

namespace {

constexpr std::size_t kMostSlabs = 4096;

// Sides that reach over many slabs, as those of a comb do, stand in each of them: fewer slabs are made where all sides
// would stand in more than this many on average.
constexpr std::size_t kMostCopies = 8;

// What EvenOddTest takes for the extent of a side; NaN where it finds no point in it.
double lowEnd(const Position& a, const Position& b) { return std::min(a.x, b.x); }
double highEnd(const Position& a, const Position& b) { return std::max(a.x, b.x); }

}  // namespace

PolygonIndex::PolygonIndex(const std::vector<TPoint*>& polygon) {
  std::vector<Position> vertices;
  for (const TPoint* p : polygon) {
    if (p != nullptr) vertices.push_back(positionOf(*p));
  }
  std::vector<Side> sides;
  double lowX = std::numeric_limits<double>::infinity();
  double highX = -lowX;
  for (std::size_t i = 0; i < vertices.size(); ++i) {
    const Side side{vertices[i == 0 ? vertices.size() - 1 : i - 1], vertices[i]};
    if (std::isnan(lowEnd(side.a, side.b))) continue;
    sides.push_back(side);
    lowX = std::min(lowX, lowEnd(side.a, side.b));
    highX = std::max(highX, highEnd(side.a, side.b));
  }
  if (sides.empty()) return;
  lowX_ = lowX;
  highX_ = highX;
  std::size_t slabs = std::min(sides.size(), kMostSlabs);
  while (!sortIntoSlabs(sides, slabs)) slabs /= 2;
}

bool PolygonIndex::sortIntoSlabs(const std::vector<Side>& sides, std::size_t slabs) {
  slabBegin_.assign(slabs + 1, 0);
  slabsPerUnit_ = static_cast<double>(slabs) / (highX_ - lowX_);
  if (!std::isfinite(slabsPerUnit_)) slabsPerUnit_ = 0.0;
  std::size_t copies = 0;
  for (const Side& side : sides) {
    copies += slabOf(highEnd(side.a, side.b)) - slabOf(lowEnd(side.a, side.b)) + 1;
  }
  if (slabs > 1 && copies > kMostCopies * sides.size()) return false;

  const auto forEachSlab = [this](const Side& side, auto visit) {
    const std::size_t last = slabOf(highEnd(side.a, side.b));
    for (std::size_t slab = slabOf(lowEnd(side.a, side.b)); slab <= last; ++slab) visit(slab);
  };
  for (const Side& side : sides) forEachSlab(side, [this](std::size_t slab) { ++slabBegin_[slab + 1]; });
  for (std::size_t slab = 0; slab < slabs; ++slab) slabBegin_[slab + 1] += slabBegin_[slab];
  std::vector<std::size_t> next(slabBegin_.begin(), slabBegin_.end() - 1);
  sides_.resize(copies);
  for (const Side& side : sides) forEachSlab(side, [&](std::size_t slab) { sides_[next[slab]++] = side; });
  return true;
}

// Rounding is monotonic, so a point between a side's ends in x falls into a slab between theirs.
std::size_t PolygonIndex::slabOf(double x) const {
  const double slab = (x - lowX_) * slabsPerUnit_;
  const std::size_t last = slabBegin_.size() - 2;
  return slab >= 0.0 ? static_cast<std::size_t>(std::min(slab, static_cast<double>(last))) : 0;
}

bool PolygonIndex::contains(const Position& p) const {
  if (!(p.x >= lowX_ && p.x <= highX_)) return false;
  EvenOddTest test(p);
  const std::size_t slab = slabOf(p.x);
  for (std::size_t i = slabBegin_[slab]; i < slabBegin_[slab + 1]; ++i) {
    if (isNearSide(p, sides_[i].a, sides_[i].b) || test.side(sides_[i].a, sides_[i].b)) return true;
  }
  return test.inside();
}

}  // namespace detail
}  // namespace OrvikDTM
