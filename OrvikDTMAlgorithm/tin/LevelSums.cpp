#include <algorithm>
#include <array>
#include <cmath>

#include <OrvikDTMAlgorithm/tin/CETypeElements.h>
#include <OrvikDTMAlgorithm/tin/LevelSplit.h>
#include <OrvikDTMAlgorithm/tin/LevelSums.h>
#include <OrvikDTMAlgorithm/tin/ListElements.h>
#include <OrvikDTMAlgorithm/tin/Prefetch.h>
#include <OrvikDTMAlgorithm/tin/TriangleAreas.h>
#include <OrvikDTMAlgorithm/tin/TriangleFigures.h>

inline namespace OrvikDTM {
namespace detail {

namespace {

struct Sides {
  const InPlanAndSpace& a;
  const InPlanAndSpace& b;
  const InPlanAndSpace& c;
};

// Of two triangles in plan, side by side likewise.
std::array<double, 2> planAreasOf(const Sides& first, const Sides& second) {
  const std::array<double, 2> products = {heronProduct(first.a.of[0], first.b.of[0], first.c.of[0]),
                                          heronProduct(second.a.of[0], second.b.of[0], second.c.of[0])};
  std::array<double, 2> areas;
  for (std::size_t i = 0; i < areas.size(); ++i) areas[i] = std::sqrt(std::fabs(products[i]));
  return areas;
}

void addSplit(double level, const Split& s, FillAndCut& sums) {
  const double dA = std::fabs(s.a->getZ() - level);
  const double dB = std::fabs(s.b->getZ() - level);
  const double dL = std::fabs(s.lone->getZ() - level);
  // Five triangles share eight sides; a length is the same from either end, to the last bit.
  const InPlanAndSpace loneA = lengthsOf(*s.lone, s.onA);
  const InPlanAndSpace loneB = lengthsOf(*s.lone, s.onB);
  const InPlanAndSpace across = lengthsOf(s.onA, s.onB);
  const InPlanAndSpace ab = lengthsOf(*s.a, *s.b);
  const InPlanAndSpace aOnA = lengthsOf(*s.a, s.onA);
  const InPlanAndSpace aOnB = lengthsOf(*s.a, s.onB);
  const InPlanAndSpace bOnA = lengthsOf(*s.b, s.onA);
  const InPlanAndSpace bOnB = lengthsOf(*s.b, s.onB);
  const InPlanAndSpace lone = areasOf(loneA, across, loneB);
  const InPlanAndSpace atB = areasOf(bOnA, across, bOnB);
  const InPlanAndSpace atA = areasOf(ab, bOnA, aOnA);
  const auto [towardsB, towardsA] = planAreasOf({ab, bOnB, aOnB}, {aOnA, across, aOnB});
  sums.on(s.loneStatus).add(lone.of[0], lone.of[1], lone.of[0] * dL / 3);
  sums.on(-s.loneStatus)
      .add(atB.of[0] + atA.of[0], atA.of[1] + atB.of[1], towardsB * (dA + dB) / 3 + towardsA * dA / 3);
}

// Whether an edge runs between these two, this way or that: as it happens, so nothing is branched upon.
int joins(const TEdge& edge, const TPoint* p, const TPoint* q) {
  const TPoint* start = edge.getStartPoint();
  const TPoint* end = edge.getEndPoint();
  const auto both = [](bool one, bool other) { return static_cast<int>(one) & static_cast<int>(other); };
  return both(start == p, end == q) | both(start == q, end == p);
}

// Triangles on their way into the sums. So many are taken together because two things take long when they are taken one
// by one: edges and points lie anywhere in memory, so they are asked for before any is looked at; and the figures of
// several triangles are worked out at once.
class Block {
 public:
  static constexpr std::size_t kSize = TriangleFigures::kSize;

  explicit Block(double level) : level_(level) {}

  // Takes the triangles from index `begin` on, kSize of them at most.
  template <typename Triangles, typename Edges>
  void take(const Triangles& triangles, std::size_t begin, const Edges& edges) {
    taken_ = std::min(kSize, triangles.size() - begin);
    unsigned indexes[kSize][3];
    for (std::size_t i = 0; i < taken_; ++i) {
      const Triangle* triangle = triangles[begin + i];
      for (int which = 0; which < 3; ++which) {
        const unsigned index = static_cast<unsigned>(triangle == nullptr ? 0 : triangle->getEno()[which]) - 1u;
        indexes[i][which] = index;
        if (index < edges.size()) edges.prefetchEntry(index);
      }
    }
    for (std::size_t i = 0; i < taken_; ++i) {
      for (int which = 0; which < 3; ++which) {
        const unsigned index = indexes[i][which];
        edges_[i][which] = index < edges.size() ? edges[index] : nullptr;
        prefetchWhole(edges_[i][which]);
      }
    }
  }

  void addTo(LevelSums& sums) {
    measure();
    addVolumes(sums.volumes);
    addTotals(sums);
  }

 private:
  // A triangle whose own areas are not those from the sides between its corners.
  struct Odd {
    std::size_t place;
    InPlanAndSpace areas;
  };

  void measure() {
    findCorners();
    for (std::size_t i = 0; i < unsettledCount_; ++i) settle(unsettled_[i]);
    for (std::size_t i = 0; i < count_; ++i) takeCoordinates(i);
    figures_.workOut(level_, 0, count_);
    for (std::size_t i = 0; i < count_; ++i) {
      if (!(figures_.sides[i] > 0)) settleByPositions(i);
    }
  }

  // The corners of the triangles that can be measured, which are counted from here on, by the points that their edges
  // share. What these do not tell is settled apart.
  void findCorners() {
    count_ = 0;
    unsettledCount_ = 0;
    oddCount_ = 0;
    for (std::size_t i = 0; i < taken_; ++i) {
      const auto [first, second, third] = edges_[i];
      if (!isWhole(first) || !isWhole(second)) continue;
      const TPoint* p1 = first->getStartPoint();
      const TPoint* p2 = first->getEndPoint();
      const TPoint* ends[2] = {second->getStartPoint(), second->getEndPoint()};
      const auto near = static_cast<std::size_t>(ends[1] == p2);  // where the second goes on from the first
      const TPoint* p3 = ends[1 - near];
      row_[count_] = i;
      corners_[0][count_] = p1;
      corners_[1][count_] = p2;
      corners_[2][count_] = p3;
      for (const TPoint* p : {p1, p2, p3}) prefetchWhole(p);
      if (!isWhole(third) || (static_cast<int>(ends[near] == p2) & joins(*third, p3, p1)) == 0) {
        unsettled_[unsettledCount_++] = count_;
        prefetchWhole(ends[near]);
      }
      ++count_;
    }
  }

  // The third corner by the positions, and whether the edges go round the corners in their order. The totals take the
  // sides in the order of the edges, which decides the last bit, and nothing without a third edge.
  void settle(std::size_t i) {
    const auto [first, second, third] = edges_[row_[i]];
    corners_[2][i] = &thirdCorner(*first, *second);
    if (!isWhole(third)) {
      odd_[oddCount_++] = {i, {{0.0, 0.0}}};
    } else if ((joins(*second, corners_[1][i], corners_[2][i]) & joins(*third, corners_[2][i], corners_[0][i])) == 0) {
      odd_[oddCount_++] = {i, areasOf(lengthsOf(*first), lengthsOf(*second), lengthsOf(*third))};
    }
  }

  // Where a corner is at another's position, or at none, shared points do not tell what positions do.
  void settleByPositions(std::size_t i) {
    const TPoint* byPoints = corners_[2][i];
    if (byPoints == &thirdCorner(*edges_[row_[i]][0], *edges_[row_[i]][1])) return;
    settle(i);
    takeCoordinates(i);
    figures_.workOut(level_, i, i + 1);
  }

  void takeCoordinates(std::size_t i) {
    for (int corner = 0; corner < 3; ++corner) {
      const TPoint& p = *corners_[corner][i];
      figures_.x[corner][i] = p.getX();
      figures_.y[corner][i] = p.getY();
      figures_.z[corner][i] = p.getZ();
    }
  }

  Place placeAt(std::size_t i) const { return placeOf(level_, figures_.lowest[i], figures_.highest[i]); }

  void addVolumes(FillAndCut& sums) const {
    for (std::size_t i = 0; i < count_;) {
      const Place place = placeAt(i);
      if (place == Place::Both) {
        addSplit(level_, splitAt(level_, *corners_[0][i], *corners_[1][i], *corners_[2][i]), sums);
        ++i;
        continue;
      }
      FillOrCut& side = place == Place::Cut ? sums.cut : sums.fill;
      FillOrCut sum = side;  // in registers while the place stays the same
      for (; i < count_ && placeAt(i) == place; ++i) {
        sum.add(figures_.planArea[i], figures_.spatialArea[i], figures_.volume[i]);
      }
      side = sum;
    }
  }

  // Last of all: from here on the areas are those of the totals.
  void addTotals(LevelSums& sums) {
    for (std::size_t i = 0; i < oddCount_; ++i) {
      figures_.planArea[odd_[i].place] = odd_[i].areas.of[0];
      figures_.spatialArea[odd_[i].place] = odd_[i].areas.of[1];
    }
    for (std::size_t i = 0; i < count_; ++i) {
      sums.planArea += figures_.planArea[i];
      sums.spatialArea += figures_.spatialArea[i];
    }
  }

  double level_;

  // The triangles taken: their edges, null where they do not exist.
  std::size_t taken_ = 0;
  const TEdge* edges_[kSize][3];

  // Those of them that are measured: where their edges are, and their corners.
  std::size_t count_ = 0;
  std::size_t row_[kSize];
  const TPoint* corners_[3][kSize];
  TriangleFigures figures_;

  std::size_t unsettledCount_ = 0;
  std::size_t unsettled_[kSize];
  std::size_t oddCount_ = 0;
  Odd odd_[kSize];
};

template <typename Triangles, typename Edges>
LevelSums sumOf(const Triangles& all, const Edges& edges, double level) {
  LevelSums sums;
  Block block(level);
  for (std::size_t begin = 0; begin < all.size(); begin += Block::kSize) {
    block.take(all, begin, edges);
    block.addTo(sums);
  }
  return sums;
}

}  // namespace

LevelSums sumAgainstLevel(const TList* triangles, const EList* edges, double level) {
  return ListElements::read<Triangle>(triangles, [&](const auto& all) {
    return ListElements::read<TEdge>(edges, [&](const auto& allEdges) { return sumOf(all, allEdges, level); });
  });
}

}  // namespace detail
}  // namespace OrvikDTM
