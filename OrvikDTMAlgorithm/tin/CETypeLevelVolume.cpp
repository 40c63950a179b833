// Fill and cut against a design level.
#include <algorithm>
#include <array>
#include <cmath>
#include <memory>

#include <OrvikDTMAlgorithm/tin/CETypeElements.h>
#include <OrvikDTMAlgorithm/tin/FillAndCut.h>
#include <OrvikDTMAlgorithm/tin/Prefetch.h>
#include <OrvikDTMAlgorithm/tin/Triangle3.h>
#include <OrvikDTMAlgorithm/tin/TriangleAreas.h>

inline namespace OrvikDTM {

namespace {

using detail::FillAndCut;
using detail::kCut;
using detail::kFill;

// A triangle that the level passes through: the lone corner on one side, the other two on the other, and where the
// level crosses the two sides between them.
struct Split {
  const TPoint* lone;
  const TPoint* a;
  const TPoint* b;
  TPoint onA;  // on a - lone
  TPoint onB;  // on b - lone
  int loneStatus;
};

// The point at the level between `corner` and `lone`, whose heights above the level are given.
TPoint crossing(const TPoint& corner, double above, const TPoint& lone, double loneAbove, double level) {
  const double whole = std::fabs(above) + std::fabs(loneAbove);
  return {corner.getX() + (lone.getX() - corner.getX()) * std::fabs(above) / whole,
          corner.getY() + (lone.getY() - corner.getY()) * std::fabs(above) / whole, level};
}

// The lone corner is told by strict products, so a corner exactly in the level is never the lone one.
Split splitAt(double level, const TPoint& p1, const TPoint& p2, const TPoint& p3) {
  const double d1 = p1.getZ() - level;
  const double d2 = p2.getZ() - level;
  const double d3 = p3.getZ() - level;
  const TPoint* a = &p1;
  const TPoint* b = &p2;
  const TPoint* lone = &p3;
  if (d2 * d1 < 0) {
    b = &p3;
    lone = &p2;
    if (d3 * d1 < 0) {
      a = &p2;
      lone = &p1;
    }
  }
  const double dA = a->getZ() - level;
  const double dB = b->getZ() - level;
  const double dL = lone->getZ() - level;
  return {lone, a, b, crossing(*a, dA, *lone, dL, level), crossing(*b, dB, *lone, dL, level), dL <= 0 ? kFill : kCut};
}

double prismVolume(double level, const TPoint& p1, const TPoint& p2, const TPoint& p3) {
  const double area =
      std::fabs((p2.getX() - p1.getX()) * (p3.getY() - p2.getY()) - (p2.getY() - p1.getY()) * (p3.getX() - p2.getX())) /
      2;
  return std::fabs(((p1.getZ() - level) + (p2.getZ() - level) + (p3.getZ() - level)) * area) / 3;
}

// In plan and along the surface, side by side: the same operations on both.
struct Lengths {
  double of[2];
};

Lengths lengthsOf(const TPoint& p, const TPoint& q) {
  const double dx = q.getX() - p.getX();
  const double dy = q.getY() - p.getY();
  const double dz = q.getZ() - p.getZ();
  const double plan = dx * dx + dy * dy;
  const double squares[2] = {plan, plan + dz * dz};
  Lengths lengths;
  for (int i = 0; i < 2; ++i) lengths.of[i] = std::sqrt(squares[i]);
  return lengths;
}

struct Areas {
  double plan;
  double spatial;
};

Areas areasOf(const Lengths& a, const Lengths& b, const Lengths& c) {
  double products[2];
  for (int i = 0; i < 2; ++i) products[i] = detail::heronProduct(a.of[i], b.of[i], c.of[i]);
  products[0] = std::fabs(products[0]);
  double areas[2];
  for (int i = 0; i < 2; ++i) areas[i] = std::sqrt(products[i]);
  return {areas[0], areas[1]};
}

struct Sides {
  const Lengths& a;
  const Lengths& b;
  const Lengths& c;
};

// Of two triangles in plan, side by side likewise.
std::array<double, 2> planAreasOf(const Sides& first, const Sides& second) {
  const std::array<double, 2> products = {detail::heronProduct(first.a.of[0], first.b.of[0], first.c.of[0]),
                                          detail::heronProduct(second.a.of[0], second.b.of[0], second.c.of[0])};
  std::array<double, 2> areas;
  for (std::size_t i = 0; i < areas.size(); ++i) areas[i] = std::sqrt(std::fabs(products[i]));
  return areas;
}

Areas areasOfEdges(const TEdge& a, const TEdge& b, const TEdge& c) {
  const auto lengths = [](const TEdge& e) { return lengthsOf(*e.getStartPoint(), *e.getEndPoint()); };
  return areasOf(lengths(a), lengths(b), lengths(c));
}

bool joins(const TEdge& edge, const TPoint* p, const TPoint* q) {
  return (edge.getStartPoint() == p && edge.getEndPoint() == q) ||
         (edge.getStartPoint() == q && edge.getEndPoint() == p);
}

void addSplit(double level, const Split& s, FillAndCut& sums) {
  const double dA = std::fabs(s.a->getZ() - level);
  const double dB = std::fabs(s.b->getZ() - level);
  const double dL = std::fabs(s.lone->getZ() - level);
  // Five triangles share eight sides; a length is the same from either end, to the last bit.
  const Lengths loneA = lengthsOf(*s.lone, s.onA);
  const Lengths loneB = lengthsOf(*s.lone, s.onB);
  const Lengths across = lengthsOf(s.onA, s.onB);
  const Lengths ab = lengthsOf(*s.a, *s.b);
  const Lengths aOnA = lengthsOf(*s.a, s.onA);
  const Lengths aOnB = lengthsOf(*s.a, s.onB);
  const Lengths bOnA = lengthsOf(*s.b, s.onA);
  const Lengths bOnB = lengthsOf(*s.b, s.onB);
  const Areas lone = areasOf(loneA, across, loneB);
  const Areas atB = areasOf(bOnA, across, bOnB);
  const Areas atA = areasOf(ab, bOnA, aOnA);
  const auto [towardsB, towardsA] = planAreasOf({ab, bOnB, aOnB}, {aOnA, across, aOnB});
  sums.on(s.loneStatus).add(lone.plan, lone.spatial, lone.plan * dL / 3);
  sums.on(-s.loneStatus)
      .add(atB.plan + atA.plan, atA.spatial + atB.spatial, towardsB * (dA + dB) / 3 + towardsA * dA / 3);
}

// Where a triangle lies against the level. One in the level itself is fill, without volume.
enum class Place { Cut, Fill, Both };

inline Place placeOf(double level, const TPoint& p1, const TPoint& p2, const TPoint& p3) {
  const double lowest = std::min(std::min(p1.getZ(), p2.getZ()), p3.getZ());
  const double highest = std::max(std::max(p1.getZ(), p2.getZ()), p3.getZ());
  if (highest > level && lowest >= level) return Place::Cut;
  if (highest <= level) return Place::Fill;
  return Place::Both;
}

// How many triangles are looked ahead at.
constexpr int kTrianglesOfBlock = 64;

// The edges of a triangle; null for those that cannot be measured.
struct TriangleEdges {
  const TEdge* edge[3];
};

// Adds one triangle to the volumes and to the network's own areas.
void measureTriangle(const TriangleEdges& edges, double level, FillAndCut& sums, TINMeasures& totals) {
  const TEdge* first = edges.edge[0];
  const TEdge* second = edges.edge[1];
  const TEdge* third = edges.edge[2];
  if (first == nullptr || second == nullptr) return;
  const TPoint& p1 = *first->getStartPoint();
  const TPoint& p2 = *first->getEndPoint();
  const TPoint& p3 = detail::thirdCorner(*first, *second);
  const Lengths side12 = lengthsOf(p1, p2);
  const Lengths side23 = lengthsOf(p2, p3);
  const Lengths side31 = lengthsOf(p3, p1);
  const Areas areas = areasOf(side12, side23, side31);
  const Place place = placeOf(level, p1, p2, p3);
  if (place == Place::Both) {
    addSplit(level, splitAt(level, p1, p2, p3), sums);
  } else {
    detail::FillOrCut& side = place == Place::Cut ? sums.cut : sums.fill;
    side.add(areas.plan, areas.spatial, prismVolume(level, p1, p2, p3));
  }

  // The totals take the sides in the order of the edges, which decides the last bit.
  if (third == nullptr) return;
  Areas own = areas;
  if (joins(*second, &p1, &p3) && joins(*third, &p2, &p3)) {
    own = areasOf(side12, side31, side23);
  } else if (!joins(*second, &p2, &p3) || !joins(*third, &p3, &p1)) {
    own = areasOfEdges(*first, *second, *third);
  }
  totals.area2D += own.plan;
  totals.area3D += own.spatial;
}

}  // namespace

// The volume, and in the same pass the totals: both want the lengths of all sides, and getting at them is what takes
// time. Edges and points lie anywhere in memory, so they are asked for block by block before they are looked at.
FillCutResult* CEType::getFillCut(double elevation) {
  triangle3List_.clear();
  triangle3Source_ = {};
  if (hasBoundary()) return getFillCutWithinBoundary(elevation);

  TINMeasures totals;
  FillAndCut sums;
  TriangleEdges block[kTrianglesOfBlock];
  const int count = edgeList_ == nullptr ? 0 : triangleCount();
  for (int begin = 1; begin <= count; begin += kTrianglesOfBlock) {
    const int size = std::min(kTrianglesOfBlock, count - begin + 1);
    for (int i = 0; i < size; ++i) {
      const Triangle* triangle = triangleList_->findByNum(triangleList_, begin + i);
      for (int which = 0; which < 3; ++which) {
        block[i].edge[which] =
            triangle == nullptr ? nullptr : edgeList_->findByNum(edgeList_, triangle->getEno()[which]);
        detail::prefetch(block[i].edge[which]);
      }
    }
    for (int i = 0; i < size; ++i) {
      for (const TEdge*& edge : block[i].edge) {
        if (!detail::isWhole(edge)) {
          edge = nullptr;
          continue;
        }
        detail::prefetch(edge->getStartPoint());
        detail::prefetch(edge->getEndPoint());
      }
    }
    for (int i = 0; i < size; ++i) measureTriangle(block[i], elevation, sums, totals);
  }
  totals.length2D = getTotalLength2D();
  totals.length3D = getTotalLength3D();
  triangle3Source_.level = elevation;
  return detail::newResult(sums, totals);
}

void CEType::appendLevelPieces(double level) const {
  const auto append = [this](const TPoint& p, const TPoint& q, const TPoint& r, int status) {
    triangle3List_.push_back(std::make_shared<Triangle3>(&p, &q, &r, status));
  };
  Corners c;
  for (int tri = 1; tri <= triangleCount(); ++tri) {
    if (!cornersOf(tri, c)) continue;
    const Place place = placeOf(level, *c.p1, *c.p2, *c.p3);
    if (place != Place::Both) {
      append(*c.p1, *c.p2, *c.p3, place == Place::Cut ? kCut : kFill);
      continue;
    }
    const Split s = splitAt(level, *c.p1, *c.p2, *c.p3);
    append(*s.lone, s.onA, s.onB, s.loneStatus);
    append(*s.a, s.onA, s.onB, -s.loneStatus);
    append(*s.a, *s.b, s.onB, -s.loneStatus);
  }
}

}  // namespace OrvikDTM
