#include <cmath>

#include <OrvikDTMAlgorithm/tin/BoundaryParts.h>
#include <OrvikDTMAlgorithm/tin/Facets.h>
#include <OrvikDTMAlgorithm/tin/Orientation.h>

inline namespace OrvikDTM {
namespace detail {

namespace {

std::vector<Position> measurableCorners(const std::vector<TPoint*>& polygon) {
  std::vector<Position> result;
  for (const TPoint* p : polygon) {
    if (p != nullptr && isMeasurable(p->getX()) && isMeasurable(p->getY())) result.push_back(positionOf(*p));
  }
  return result;
}

std::vector<BoundarySide> sidesOf(const std::vector<Position>& corners) {
  std::vector<BoundarySide> result;
  for (std::size_t i = 0; i < corners.size(); ++i) {
    const Position& a = corners[i];
    const Position& b = corners[i + 1 == corners.size() ? 0 : i + 1];
    if (samePosition(a, b)) continue;
    const bool isUpward = a.y != b.y ? a.y < b.y : a.x < b.x;
    result.push_back(isUpward ? BoundarySide{a, b} : BoundarySide{b, a});
  }
  return result;
}

Box boxOf(const BoundarySide& side) {
  return {std::min(side.start.x, side.end.x), side.start.y, std::max(side.start.x, side.end.x), side.end.y};
}

// Whether the box has a corner on either side of the line through a side, or one on it.
bool straddles(const BoundarySide& side, const Box& box) {
  const int first = orientation(side.start, side.end, {box.minX, box.minY});
  if (first == 0) return true;
  for (const Position& corner :
       {Position{box.maxX, box.minY}, Position{box.maxX, box.maxY}, Position{box.minX, box.maxY}}) {
    if (orientation(side.start, side.end, corner) != first) return true;
  }
  return false;
}

}  // namespace

BoundaryParts::BoundaryParts(const std::vector<TPoint*>& polygon) : sides_(sidesOf(measurableCorners(polygon))) {
  parts_ = partsOf(sides_);
  std::vector<NumberedBox> boxes;
  for (const BoundarySide& side : sides_) boxes.push_back({detail::boxOf(side), static_cast<Number>(boxes.size())});
  sideTree_ = BoxTree(boxes);
  boxes.clear();
  for (const BoundaryPart& part : parts_) boxes.push_back({boxOf(part), static_cast<Number>(boxes.size())});
  partTree_ = BoxTree(boxes);
}

// A box that no side touches lies inside or outside as its centre does, and no rounding changes that.
BoundaryParts::Place BoundaryParts::placeOf(const Box& box) const {
  bool isTouched = false;
  sideTree_.visit(box, [&](Number number) {
    const BoundarySide& side = sides_[number];
    isTouched = isTouched || (meet(detail::boxOf(side), box) && straddles(side, box));
  });
  if (isTouched) return Place::Across;
  const Position centre{box.minX / 2 + box.maxX / 2, box.minY / 2 + box.maxY / 2};
  bool isInside = false;
  visitParts({centre.x, centre.y, centre.x, centre.y},
             [&](const BoundaryPart& part) { isInside = isInside || holds(part, centre); });
  return isInside ? Place::Inside : Place::Outside;
}

void BoundaryParts::clip(const BoundaryPart& part, ConvexPiece& piece, const Position& origin) const {
  const auto relative = [&origin](const Position& p) { return Position{p.x - origin.x, p.y - origin.y}; };
  const double low = part.low - origin.y;
  const double high = part.high - origin.y;
  piece.clip([low](const PieceCorner& p) { return p.y - low; });
  piece.clip([high](const PieceCorner& p) { return high - p.y; });
  piece.clipRightOf(relative(sides_[part.left].start), relative(sides_[part.left].end));
  piece.clipLeftOf(relative(sides_[part.right].start), relative(sides_[part.right].end));
}

bool BoundaryParts::holds(const BoundaryPart& part, const Position& p) const {
  return part.low <= p.y && p.y <= part.high && orientation(sides_[part.left].start, sides_[part.left].end, p) <= 0 &&
         orientation(sides_[part.right].start, sides_[part.right].end, p) >= 0;
}

// Somewhat wider than the part, as its corners are rounded: a part that is not found would be lost.
Box BoundaryParts::boxOf(const BoundaryPart& part) const {
  constexpr double kMargin = 0x1p-48;
  const BoundarySide& left = sides_[part.left];
  const BoundarySide& right = sides_[part.right];
  const double west = std::min(left.xAt(part.low), left.xAt(part.high));
  const double east = std::max(right.xAt(part.low), right.xAt(part.high));
  const double margin = kMargin * (std::fabs(west) + std::fabs(east) + std::fabs(left.end.x - left.start.x) +
                                   std::fabs(right.end.x - right.start.x));
  return {west - margin, part.low, east + margin, part.high};
}

}  // namespace detail
}  // namespace OrvikDTM
