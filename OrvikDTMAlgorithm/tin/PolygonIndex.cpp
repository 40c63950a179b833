#include <algorithm>
#include <cmath>
#include <limits>

#include <OrvikDTMAlgorithm/tin/Facets.h>
#include <OrvikDTMAlgorithm/tin/PointInPolygon.h>
#include <OrvikDTMAlgorithm/tin/PolygonIndex.h>

inline namespace OrvikDTM {
namespace detail {

namespace {

constexpr std::size_t kMostSlabs = 4096;

// Sides that reach over many slabs, as those of a comb do, stand in each of them: fewer slabs are made where all sides
// would stand in more than this many on average.
constexpr std::size_t kMostCopies = 8;

// To look at so many sides takes about as long as to ask the tree.
constexpr std::size_t kMostInSlab = 48;

// By how much of the coordinates the computed distance of a point from a side may be off, more than amply.
constexpr double kRoundingOfDistance = 128 * 0x1p-53;

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
  bool isAnyCrowded = false;
  for (std::size_t slab = 0; slab + 1 < slabBegin_.size(); ++slab) isAnyCrowded = isAnyCrowded || isCrowded(slab);
  if (isAnyCrowded && std::all_of(sides.begin(), sides.end(), canStandInTree)) growTree(sides);
}

bool PolygonIndex::isCrowded(std::size_t slab) const { return slabBegin_[slab + 1] - slabBegin_[slab] > kMostInSlab; }

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
  const std::size_t slab = slabOf(p.x);
  if (hasTree_ && isCrowded(slab) && isMeasurable(p.y)) return containsByTree(p);
  EvenOddTest test(p);
  for (std::size_t i = slabBegin_[slab]; i < slabBegin_[slab + 1]; ++i) {
    if (isNearSide(p, sides_[i].a, sides_[i].b) || test.side(sides_[i].a, sides_[i].b)) return true;
  }
  return test.inside();
}

// ---- the tree

// A side so narrow that its height cannot be computed as closely as reach_ asks for is left to the slabs.
bool PolygonIndex::canStandInTree(const Side& side) {
  constexpr double kNarrowest = 1e-150;
  const double width = std::fabs(side.b.x - side.a.x);
  return isMeasurable(side.a.x) && isMeasurable(side.a.y) && isMeasurable(side.b.x) && isMeasurable(side.b.y) &&
         (width == 0.0 || width >= kNarrowest);
}

// The y of a side is computed as that of p or not, as isNearSide() does, with an error of less than 16 u Y where
// neither exceeds Y, u = 2^-53: 5 u of the difference in y, which is up to 2 Y, and the last sum. A cross product
// divided by the side's width is off by no more. So a side that is beyond the tolerance and several such errors is not
// near p, nor are those beyond it.
void PolygonIndex::growTree(const std::vector<Side>& sides) {
  double largest = 0.0;
  std::vector<NumberedSide> numbered;
  for (const Side& side : sides) {
    largest = std::max({largest, std::fabs(side.a.y), std::fabs(side.b.y)});
    numbered.push_back({side.a, side.b, static_cast<Number>(numbered.size())});
  }
  reach_ = kOnSide + kRoundingOfDistance * largest;
  tree_ = SideTree(numbered);
  addUprights(sides);
  hasTree_ = true;
}

void PolygonIndex::addUprights(const std::vector<Side>& sides) {
  std::vector<Upright> all;
  for (const Side& side : sides) {
    all.push_back({side.a.x, side.a.y, side.a.y});
    if (side.a.x == side.b.x) all.push_back({side.a.x, std::min(side.a.y, side.b.y), std::max(side.a.y, side.b.y)});
  }
  std::sort(all.begin(), all.end(),
            [](const Upright& a, const Upright& b) { return a.x != b.x ? a.x < b.x : a.low < b.low; });
  for (const Upright& next : all) {
    if (uprights_.empty() || uprights_.back().x != next.x || uprights_.back().high < next.low) {
      uprights_.push_back(next);
    } else {
      uprights_.back().high = std::max(uprights_.back().high, next.high);
    }
  }
}

bool PolygonIndex::isOnUpright(const Position& p) const {
  const auto isBefore = [](const Upright& upright, const Position& q) {
    return upright.x != q.x ? upright.x < q.x : upright.high < q.y;
  };
  const auto found = std::lower_bound(uprights_.begin(), uprights_.end(), p, isBefore);
  return found != uprights_.end() && found->x == p.x && found->low <= p.y;
}

// Goes up and down from the point until a side is out of reach.
bool PolygonIndex::isNearChain(const SideTree::Chain& chain, std::size_t countBelow, const Position& p) const {
  const double reach = reach_ + kRoundingOfDistance * std::fabs(p.y);
  const auto isWithinReach = [&](std::size_t i) {
    const NumberedSide& side = chain[i];
    return std::fabs(crossProduct(side.a, side.b, p).value) <= reach * std::fabs(side.b.x - side.a.x);
  };
  for (std::size_t i = countBelow; i < chain.size() && isWithinReach(i); ++i) {
    if (isNearSide(p, chain[i].a, chain[i].b)) return true;
  }
  for (std::size_t i = countBelow; i > 0 && isWithinReach(i - 1); --i) {
    if (isNearSide(p, chain[i - 1].a, chain[i - 1].b)) return true;
  }
  return false;
}

// The same questions as EvenOddTest's: is p on a side, and how many lie above it? A side counts from its western end to
// before its eastern one, as a chain does; what meets p at its eastern end has a corner there.
bool PolygonIndex::containsByTree(const Position& p) const {
  if (isOnUpright(p)) return true;
  bool isInside = false;
  bool isOnSide = false;
  tree_.visitChains(p.x, [&](const SideTree::Chain& chain) {
    if (isOnSide) return;
    const std::size_t below = chain.countBelow(p);
    const bool meetsNext = below < chain.size() && orientation(chain[below].west(), chain[below].east(), p) == 0;
    isOnSide = meetsNext || isNearChain(chain, below, p);
    isInside ^= (chain.size() - below) % 2 == 1;
  });
  return isOnSide || isInside;
}

}  // namespace detail
}  // namespace OrvikDTM
