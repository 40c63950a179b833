#include <algorithm>
#include <cmath>
#include <limits>
#include <optional>

#include <OrvikDTMAlgorithm/tin/BoxTree.h>
#include <OrvikDTMAlgorithm/tin/CommonArea.h>
#include <OrvikDTMAlgorithm/tin/ConvexPiece.h>
#include <OrvikDTMAlgorithm/tin/DecimalGrid.h>
#include <OrvikDTMAlgorithm/tin/Orientation.h>
#include <boost/multiprecision/cpp_int.hpp>

inline namespace OrvikDTM {
namespace detail {

namespace {

using Rational = boost::multiprecision::cpp_rational;

struct ExactPosition {
  Rational x;
  Rational y;
};

ExactPosition exactly(const Position& p) { return {Rational(p.x), Rational(p.y)}; }

Rational turnOf(const ExactPosition& a, const ExactPosition& b, const ExactPosition& c) {
  return (b.x - a.x) * (c.y - a.y) - (b.y - a.y) * (c.x - a.x);
}

ExactPosition middleOf(const std::vector<ExactPosition>& corners) {
  ExactPosition sum{0, 0};
  for (const ExactPosition& p : corners) {
    sum.x += p.x;
    sum.y += p.y;
  }
  const Rational count(corners.size());
  return {sum.x / count, sum.y / count};
}

struct Side {
  Position a;
  Position b;
};

Box boxOf(const PlanTriangle& t) {
  const auto [minX, maxX] = std::minmax({t[0].x, t[1].x, t[2].x});
  const auto [minY, maxY] = std::minmax({t[0].y, t[1].y, t[2].y});
  return {minX, minY, maxX, maxY};
}

Box boxOf(const Side& side) {
  return {std::min(side.a.x, side.b.x), std::min(side.a.y, side.b.y), std::max(side.a.x, side.b.x),
          std::max(side.a.y, side.b.y)};
}

// Counter-clockwise.
template <typename Corners>
bool isBeyondASide(const PlanTriangle& t, const Corners& other) {
  for (std::size_t i = 0; i < t.size(); ++i) {
    const Position& start = t[i];
    const Position& end = t[(i + 1) % t.size()];
    const bool isBeyond = std::all_of(std::begin(other), std::end(other),
                                      [&](const Position& p) { return orientation(start, end, p) <= 0; });
    if (isBeyond) return true;
  }
  return false;
}

// Convex figures whose insides do not meet are apart along a side of one of them.
bool overlap(const PlanTriangle& t, const PlanTriangle& u) { return !isBeyondASide(t, u) && !isBeyondASide(u, t); }

bool passesThrough(const Side& side, const PlanTriangle& t) {
  int left = 0;
  int right = 0;
  for (const Position& p : t) {
    const int turn = orientation(side.a, side.b, p);
    left += turn > 0 ? 1 : 0;
    right += turn < 0 ? 1 : 0;
  }
  return left > 0 && right > 0 && !isBeyondASide(t, std::array<Position, 2>{side.a, side.b});
}

bool isStrictlyIn(const PlanTriangle& t, const Position& p) {
  return orientation(t[0], t[1], p) > 0 && orientation(t[1], t[2], p) > 0 && orientation(t[2], t[0], p) > 0;
}

// What two triangles that overlap have in common, a convex polygon, counter-clockwise.
std::vector<ExactPosition> commonPolygon(const PlanTriangle& t, const PlanTriangle& u) {
  std::vector<ExactPosition> polygon;
  for (const Position& p : t) polygon.push_back(exactly(p));
  for (std::size_t i = 0; i < u.size(); ++i) {
    const ExactPosition start = exactly(u[i]);
    const ExactPosition end = exactly(u[(i + 1) % u.size()]);
    const std::vector<ExactPosition> before = std::move(polygon);
    polygon = {};
    for (std::size_t k = 0; k < before.size(); ++k) {
      const ExactPosition& p = before[k];
      const ExactPosition& q = before[(k + 1) % before.size()];
      const Rational ofP = turnOf(start, end, p);
      const Rational ofQ = turnOf(start, end, q);
      if (ofP >= 0) polygon.push_back(p);
      if (ofP.sign() * ofQ.sign() >= 0) continue;
      const Rational share = ofP / (ofP - ofQ);
      polygon.push_back({p.x + share * (q.x - p.x), p.y + share * (q.y - p.y)});
    }
  }
  return polygon;
}

// The part of a boundary's side inside a polygon, from one share of the side's length to another.
struct PartOfSide {
  Side side;
  Rational from;
  Rational to;
};

// Clips the side by the polygon. False where it does not pass through the inside.
bool clip(PartOfSide& part, const std::vector<ExactPosition>& polygon) {
  const ExactPosition a = exactly(part.side.a);
  const ExactPosition b = exactly(part.side.b);
  part.from = 0;
  part.to = 1;
  for (std::size_t i = 0; i < polygon.size(); ++i) {
    const ExactPosition& start = polygon[i];
    const ExactPosition& end = polygon[(i + 1) % polygon.size()];
    const Rational ofA = turnOf(start, end, a);
    const Rational ofB = turnOf(start, end, b);
    if (ofA <= 0 && ofB <= 0) return false;
    if (ofA.sign() * ofB.sign() >= 0) continue;
    const Rational share = ofA / (ofA - ofB);
    if (ofA < 0) {
      part.from = std::max(part.from, share);
    } else {
      part.to = std::min(part.to, share);
    }
  }
  return part.from < part.to;
}

bool isOnLineOf(const Side& line, const Side& other) {
  return orientation(line.a, line.b, other.a) == 0 && orientation(line.a, line.b, other.b) == 0;
}

// Whether some stretch of the first part's line is covered by an odd number of the parts: the boundary's inside lies on
// one side of it then.
bool isOddSomewhere(const PartOfSide& part, const std::vector<PartOfSide>& all) {
  const bool alongX = part.side.a.x != part.side.b.x;
  std::vector<Rational> ends;
  for (const PartOfSide& other : all) {
    if (!isOnLineOf(part.side, other.side)) continue;
    const Rational a(alongX ? other.side.a.x : other.side.a.y);
    const Rational b(alongX ? other.side.b.x : other.side.b.y);
    ends.push_back(a + other.from * (b - a));
    ends.push_back(a + other.to * (b - a));
  }
  // An even number of parts covers every stretch when each place ends an even number of them.
  std::sort(ends.begin(), ends.end());
  for (std::size_t i = 0; i < ends.size(); i += 2) {
    if (ends[i] != ends[i + 1]) return true;
  }
  return false;
}

// The sides of a boundary, looked up by their boxes.
class Boundary {
 public:
  explicit Boundary(const std::vector<Position>& corners) {
    std::vector<NumberedBox> boxes;
    for (std::size_t i = 0; i < corners.size(); ++i) {
      const Side side{corners[i], corners[i + 1 == corners.size() ? 0 : i + 1]};
      if (samePosition(side.a, side.b)) continue;
      boxes.push_back({boxOf(side), static_cast<Number>(sides_.size())});
      sides_.push_back(side);
      top_ = std::max({top_, side.a.y, side.b.y});
    }
    tree_ = BoxTree(boxes);
  }

  enum class Place { Outside, Inside, Across };

  // Across: some side passes through the triangle. Otherwise it lies inside or outside as a whole.
  Place placeOf(const PlanTriangle& t) const {
    bool isAcross = false;
    visit(boxOf(t), [&](const Side& side) { isAcross = isAcross || passesThrough(side, t); });
    if (isAcross) return Place::Across;
    const Position middle{(t[0].x + t[1].x + t[2].x) / 3, (t[0].y + t[1].y + t[2].y) / 3};
    const bool isInside = isStrictlyIn(t, middle)
                              ? contains(middle)
                              : contains(middleOf({exactly(t[0]), exactly(t[1]), exactly(t[2])}), boxOf(t));
    return isInside ? Place::Inside : Place::Outside;
  }

  // Whether any of what two overlapping triangles have in common lies inside.
  bool overlapsBoth(const PlanTriangle& t, const PlanTriangle& u) const {
    const std::vector<ExactPosition> polygon = commonPolygon(t, u);
    const Box box = commonOf(boxOf(t), boxOf(u));
    std::vector<PartOfSide> parts;
    visit(box, [&](const Side& side) {
      PartOfSide part{side, 0, 0};
      if (passesThrough(side, t) && passesThrough(side, u) && clip(part, polygon)) parts.push_back(part);
    });
    const bool isOdd =
        std::any_of(parts.begin(), parts.end(), [&](const PartOfSide& part) { return isOddSomewhere(part, parts); });
    return isOdd || contains(middleOf(polygon), box);
  }

  // The same for one triangle that a side passes through.
  bool overlaps(const PlanTriangle& t) const { return overlapsBoth(t, t); }

 private:
  static Box commonOf(const Box& a, const Box& b) {
    return {std::max(a.minX, b.minX), std::max(a.minY, b.minY), std::min(a.maxX, b.maxX), std::min(a.maxY, b.maxY)};
  }

  template <typename Visit>
  void visit(const Box& box, Visit visitSide) const {
    tree_.visit(box, [&](Number number) {
      if (meet(boxOf(sides_[number]), box)) visitSide(sides_[number]);
    });
  }

  // Even-odd, by the sides above. A place on sides that run to and fro counts as one beside them.
  bool contains(const Position& p) const {
    bool isInside = false;
    visit({p.x, p.y, p.x, top_}, [&](const Side& side) {
      if ((side.a.x > p.x) == (side.b.x > p.x)) return;
      const int turn = orientation(side.a, side.b, p);
      isInside ^= side.a.x < side.b.x ? turn < 0 : turn > 0;
    });
    return isInside;
  }

  // The same for a place in a box.
  bool contains(const ExactPosition& p, const Box& box) const {
    bool isInside = false;
    visit({box.minX, box.minY, box.maxX, top_}, [&](const Side& side) {
      if ((Rational(side.a.x) > p.x) == (Rational(side.b.x) > p.x)) return;
      const Rational turn = turnOf(exactly(side.a), exactly(side.b), p);
      isInside ^= side.a.x < side.b.x ? turn < 0 : turn > 0;
    });
    return isInside;
  }

  std::vector<Side> sides_;
  BoxTree tree_;
  double top_ = -std::numeric_limits<double>::infinity();
};

std::vector<Position> positionsOf(const std::vector<PlanTriangle>& triangles) {
  std::vector<Position> result;
  result.reserve(3 * triangles.size());
  for (const PlanTriangle& t : triangles) result.insert(result.end(), t.begin(), t.end());
  return result;
}

bool areFinite(const std::vector<Position>& positions) {
  return std::all_of(positions.begin(), positions.end(),
                     [](const Position& p) { return std::isfinite(p.x) && std::isfinite(p.y); });
}

// Counter-clockwise, without those that are flat.
std::vector<PlanTriangle> trianglesOf(const std::vector<Position>& positions) {
  std::vector<PlanTriangle> result;
  for (std::size_t i = 0; i + 2 < positions.size(); i += 3) {
    const int turn = orientation(positions[i], positions[i + 1], positions[i + 2]);
    if (turn > 0) result.push_back({positions[i], positions[i + 1], positions[i + 2]});
    if (turn < 0) result.push_back({positions[i], positions[i + 2], positions[i + 1]});
  }
  return result;
}

using Place = Boundary::Place;

// Calls visit(triangle, place) for the triangles that the boundary leaves anything of, until that answers true.
template <typename Visit>
bool anyWithin(const std::vector<PlanTriangle>& triangles, const Boundary* boundary, Visit visit) {
  return std::any_of(triangles.begin(), triangles.end(), [&](const PlanTriangle& t) {
    const Place place = boundary == nullptr ? Place::Inside : boundary->placeOf(t);
    return place != Place::Outside && visit(t, place);
  });
}

bool haveCommonAreaOfTwo(const std::vector<PlanTriangle>& first, const std::vector<PlanTriangle>& second,
                         const Boundary* boundary) {
  std::vector<NumberedBox> boxes;
  for (const PlanTriangle& t : second) boxes.push_back({boxOf(t), static_cast<Number>(boxes.size())});
  const BoxTree tree(boxes);
  const auto overlapsAny = [&](const PlanTriangle& t) {
    bool isFound = false;
    tree.visit(boxOf(t), [&](Number number) { isFound = isFound || overlap(t, second[number]); });
    return isFound;
  };
  const auto overlapsAnyInside = [&](const PlanTriangle& t) {
    bool isFound = false;
    tree.visit(boxOf(t), [&](Number number) {
      isFound = isFound || (overlap(t, second[number]) && boundary->overlapsBoth(t, second[number]));
    });
    return isFound;
  };
  return anyWithin(first, boundary, [&](const PlanTriangle& t, Place place) {
    return place == Place::Inside ? overlapsAny(t) : overlapsAnyInside(t);
  });
}

// The convex hull by monotone chains, counter-clockwise, without corners on its sides.
std::vector<Position> hullOf(std::vector<Position> positions) {
  std::sort(positions.begin(), positions.end(),
            [](const Position& p, const Position& q) { return p.x != q.x ? p.x < q.x : p.y < q.y; });
  std::vector<Position> hull;
  const auto addChain = [&hull](auto first, auto last) {
    const std::size_t begin = hull.size();
    for (; first != last; ++first) {
      while (hull.size() >= begin + 2 && orientation(hull[hull.size() - 2], hull.back(), *first) <= 0) hull.pop_back();
      hull.push_back(*first);
    }
    if (hull.size() > begin + 1) hull.pop_back();  // it begins the other chain
  };
  addChain(positions.begin(), positions.end());
  addChain(positions.rbegin(), positions.rend());
  return hull;
}

// Whether a side of one of the hulls has all of the other beyond it or on it. Not looked for in hulls of too many
// corners: what follows finds out as well, but slowly where triangles are slivers.
bool areApart(const std::vector<Position>& hull, const std::vector<Position>& other) {
  constexpr std::size_t kMostPairs = 10'000'000;
  if (hull.size() * other.size() > kMostPairs) return false;
  const auto isBeyondOne = [](const std::vector<Position>& one, const std::vector<Position>& beyond) {
    for (std::size_t i = 0; i < one.size(); ++i) {
      const Position& start = one[i];
      const Position& end = one[i + 1 == one.size() ? 0 : i + 1];
      const bool isBeyond =
          std::all_of(beyond.begin(), beyond.end(), [&](const Position& p) { return orientation(start, end, p) <= 0; });
      if (isBeyond) return true;
    }
    return false;
  };
  return isBeyondOne(hull, other) || isBeyondOne(other, hull);
}

bool areAnyApart(const std::vector<const std::vector<Position>*>& sets) {
  std::vector<std::vector<Position>> hulls;
  for (const std::vector<Position>* set : sets) hulls.push_back(hullOf(*set));
  for (std::size_t i = 0; i < hulls.size(); ++i) {
    for (std::size_t k = 0; k < i; ++k) {
      if (areApart(hulls[i], hulls[k])) return true;
    }
  }
  return false;
}

// How far a coordinate up to `extent` may lie from where it was surveyed, more than amply.
double uncertaintyOf(double extent) {
  constexpr double kUnits = 0x1p-46;
  return kUnits * extent;
}

// From the line through a and b.
bool isFartherThan(double distance, const Position& a, const Position& b, const Position& p) {
  const double cross = (b.x - a.x) * (p.y - a.y) - (b.y - a.y) * (p.x - a.x);
  return std::fabs(cross) > distance * (std::fabs(b.x - a.x) + std::fabs(b.y - a.y));
}

double extentOf(const PlanTriangle& t) {
  double extent = 0.0;
  for (const Position& p : t) extent = std::max({extent, std::fabs(p.x), std::fabs(p.y)});
  return extent;
}

bool isWellInside(const Position& p, const PlanTriangle& t, double uncertainty) {
  const int turn = orientation(t[0], t[1], t[2]);
  if (turn == 0) return false;
  for (std::size_t i = 0; i < t.size(); ++i) {
    const Position& start = t[i];
    const Position& end = t[(i + 1) % t.size()];
    if (orientation(start, end, p) != turn || !isFartherThan(uncertainty, start, end, p)) return false;
  }
  return true;
}

bool isWellInside(const Position& p, const std::vector<Position>& boundary, double uncertainty) {
  bool isInside = false;
  for (std::size_t i = 0; i < boundary.size(); ++i) {
    const Position& a = boundary[i];
    const Position& b = boundary[i + 1 == boundary.size() ? 0 : i + 1];
    const Box box = boxOf(Side{a, b});
    if (box.maxY + uncertainty < p.y || box.maxX + uncertainty < p.x || p.x < box.minX - uncertainty) continue;
    const bool isNearBox = p.y >= box.minY - uncertainty;
    if (isNearBox && !isFartherThan(uncertainty, a, b, p)) return false;
    if ((a.x > p.x) == (b.x > p.x)) continue;
    const int turn = orientation(a, b, p);
    isInside ^= a.x < b.x ? turn < 0 : turn > 0;
  }
  return isInside;
}

}  // namespace

bool haveCommonArea(Overlapping parts) {
  std::vector<Position> first = positionsOf(parts.first);
  std::vector<Position> second = positionsOf(parts.second);
  for (const std::vector<Position>* set : {&first, &second, &parts.boundary}) {
    if (!areFinite(*set)) return true;
  }
  placeOnGrid({&first, &second, &parts.boundary});
  std::vector<const std::vector<Position>*> sets = {&first};
  if (parts.hasSecond) sets.push_back(&second);
  if (!parts.boundary.empty()) sets.push_back(&parts.boundary);
  if (areAnyApart(sets)) return false;
  const std::vector<PlanTriangle> triangles = trianglesOf(first);
  std::optional<Boundary> boundary;
  if (!parts.boundary.empty()) boundary.emplace(parts.boundary);
  const Boundary* const limit = boundary ? &*boundary : nullptr;
  if (parts.hasSecond) return haveCommonAreaOfTwo(triangles, trianglesOf(second), limit);
  return anyWithin(triangles, limit,
                   [&](const PlanTriangle& t, Place place) { return place == Place::Inside || limit->overlaps(t); });
}

bool isSurelyCommon(const Position& p, const PlanTriangle& first, const PlanTriangle& second,
                    const std::vector<Position>& boundary) {
  const double uncertainty = uncertaintyOf(std::max(extentOf(first), extentOf(second)));
  return isWellInside(p, first, uncertainty) && isWellInside(p, second, uncertainty) &&
         (boundary.empty() || isWellInside(p, boundary, uncertainty));
}

std::vector<Position> cornersOf(const std::vector<TPoint*>& boundary) {
  std::vector<Position> result;
  for (const TPoint* p : boundary) {
    if (p != nullptr) result.push_back(positionOf(*p));
  }
  return result;
}

}  // namespace detail
}  // namespace OrvikDTM
