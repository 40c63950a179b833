#include <algorithm>
#include <array>
#include <cmath>
#include <span>

#include <OrvikDTMAlgorithm/tin/CETypeElements.h>
#include <OrvikDTMAlgorithm/tin/LevelSplit.h>
#include <OrvikDTMAlgorithm/tin/LevelSums.h>
#include <OrvikDTMAlgorithm/tin/ListElements.h>
#include <OrvikDTMAlgorithm/tin/Prefetch.h>
#include <OrvikDTMAlgorithm/tin/TriangleAreas.h>

inline namespace OrvikDTM {
namespace detail {

namespace {

double prismVolume(double level, const TPoint& p1, const TPoint& p2, const TPoint& p3) {
  const double area =
      std::fabs((p2.getX() - p1.getX()) * (p3.getY() - p2.getY()) - (p2.getY() - p1.getY()) * (p3.getX() - p2.getX())) /
      2;
  return std::fabs(((p1.getZ() - level) + (p2.getZ() - level) + (p3.getZ() - level)) * area) / 3;
}

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

int joins(const TEdge& edge, const TPoint* p, const TPoint* q) {
  const TPoint* start = edge.getStartPoint();
  const TPoint* end = edge.getEndPoint();
  const auto both = [](bool one, bool other) { return static_cast<int>(one) & static_cast<int>(other); };
  return both(start == p, end == q) | both(start == q, end == p);
}

// Triangles on their way into the sums. So many are taken together because two things take long when they are taken one
// by one: edges and points lie anywhere in memory, so they are asked for before any is looked at; and an area is a
// square root of square roots, which the processor works out for several triangles at once when nothing waits for them.
class Block {
 public:
  static constexpr std::size_t kSize = 64;

  explicit Block(double level) : level_(level) {}

  // Takes at most kSize elements of a list of triangles.
  void measure(std::span<void* const> triangles, std::span<void* const> edges) {
    count_ = triangles.size();
    oddCount_ = 0;
    findEdges(triangles, edges);
    for (std::size_t i = 0; i < count_; ++i) measureSides(i);
    for (std::size_t i = 0; i < count_; ++i) areas_[i] = areasOf(sides_[0][i], sides_[1][i], sides_[2][i]);
  }

  void addVolumes(FillAndCut& sums) const {
    for (std::size_t i = 0; i < count_;) {
      const Place place = places_[i];
      if (place == Place::Cut || place == Place::Fill) {
        FillOrCut& side = place == Place::Cut ? sums.cut : sums.fill;
        FillOrCut sum = side;  // in registers while the place stays the same
        for (; i < count_ && places_[i] == place; ++i) sum.add(areas_[i].of[0], areas_[i].of[1], volumes_[i]);
        side = sum;
        continue;
      }
      if (place == Place::Both) {
        const Corners c = cornersOf(i);
        addSplit(level_, splitAt(level_, *c.p1, *c.p2, *c.p3), sums);
      }
      ++i;
    }
  }

  // Last of all: from here on the areas are those of the totals.
  void addTotals(LevelSums& sums) {
    for (std::size_t i = 0; i < oddCount_; ++i) areas_[odd_[i].place] = odd_[i].areas;
    for (std::size_t i = 0; i < count_; ++i) {
      sums.planArea += areas_[i].of[0];
      sums.spatialArea += areas_[i].of[1];
    }
  }

 private:
  struct Corners {
    const TPoint* p1;
    const TPoint* p2;
    const TPoint* p3;
  };

  // A triangle whose own areas are not those from the sides between its corners.
  struct Odd {
    std::size_t place;
    InPlanAndSpace areas;
  };

  // Leaves null what cannot be measured.
  void findEdges(std::span<void* const> triangles, std::span<void* const> edges) {
    unsigned indexes[kSize][3];
    const auto exists = [&edges](unsigned index) { return index < edges.size(); };
    for (std::size_t i = 0; i < count_; ++i) {
      const auto* triangle = static_cast<const Triangle*>(triangles[i]);
      for (int which = 0; which < 3; ++which) {
        const unsigned index = static_cast<unsigned>(triangle == nullptr ? 0 : triangle->getEno()[which]) - 1u;
        indexes[i][which] = index;
        prefetch(exists(index) ? &edges[index] : nullptr);
      }
    }
    for (std::size_t i = 0; i < count_; ++i) {
      for (int which = 0; which < 3; ++which) {
        const unsigned index = indexes[i][which];
        edges_[i][which] = exists(index) ? static_cast<const TEdge*>(edges[index]) : nullptr;
        prefetchWhole(edges_[i][which]);
      }
    }
    for (std::size_t i = 0; i < count_; ++i) {
      for (const TEdge*& edge : edges_[i]) edge = isWhole(edge) ? edge : nullptr;
      for (const TEdge* edge : {edges_[i][0], edges_[i][1]}) {  // these two have all three corners
        if (edge == nullptr) continue;
        prefetchWhole(edge->getStartPoint());
        prefetchWhole(edge->getEndPoint());
      }
    }
  }

  Corners cornersOf(std::size_t i) const {
    const TEdge& first = *edges_[i][0];
    return {first.getStartPoint(), first.getEndPoint(), &thirdCorner(first, *edges_[i][1])};
  }

  void measureSides(std::size_t i) {
    const TEdge* const* edges = edges_[i];
    if (edges[0] == nullptr || edges[1] == nullptr) {
      places_[i] = Place::None;
      odd_[oddCount_++] = {i, {{0.0, 0.0}}};
      return;
    }
    Corners c = cornersBySharing(*edges[0], *edges[1]);
    setSides(i, c);
    if (!haveLength(i)) {
      c = cornersOf(i);
      setSides(i, c);
    }
    volumes_[i] = prismVolume(level_, *c.p1, *c.p2, *c.p3);
    places_[i] = placeOf(level_, c.p1->getZ(), c.p2->getZ(), c.p3->getZ());
    // The totals take the sides in the order of the edges, which decides the last bit, and nothing without a third
    // edge.
    const TEdge* third = edges[2];
    if (third == nullptr) {
      odd_[oddCount_++] = {i, {{0.0, 0.0}}};
    } else if (!goRound(*edges[1], *third, c)) {
      odd_[oddCount_++] = {i, areasOf(lengthsOf(*edges[0]), lengthsOf(*edges[1]), lengthsOf(*third))};
    }
  }

  void setSides(std::size_t i, const Corners& c) {
    sides_[0][i] = lengthsOf(*c.p1, *c.p2);
    sides_[1][i] = lengthsOf(*c.p2, *c.p3);
    sides_[2][i] = lengthsOf(*c.p3, *c.p1);
  }

  bool haveLength(std::size_t i) const {
    return (static_cast<int>(sides_[0][i].of[0] > 0) & static_cast<int>(sides_[1][i].of[0] > 0) &
            static_cast<int>(sides_[2][i].of[0] > 0)) != 0;
  }

  // The corners that cornersOf() finds by their positions, where edges that meet share one point and all sides have a
  // length in plan: then no corner is at another's position, nor NaN, so that to be the same point is to be there.
  static Corners cornersBySharing(const TEdge& first, const TEdge& second) {
    const TPoint* p1 = first.getStartPoint();
    const TPoint* p2 = first.getEndPoint();
    const TPoint* ends[2] = {second.getStartPoint(), second.getEndPoint()};
    const int startIsShared = static_cast<int>(ends[0] == p1) | static_cast<int>(ends[0] == p2);
    const int endIsShared = static_cast<int>(ends[1] == p1) | static_cast<int>(ends[1] == p2);
    if (startIsShared == endIsShared) return {p1, p2, &thirdCorner(first, second)};
    return {p1, p2, ends[startIsShared]};
  }

  // Whether the second and the third edge join the corners in their order. Edges run this way or that as it happens, so
  // nothing here is branched upon.
  static bool goRound(const TEdge& second, const TEdge& third, const Corners& c) {
    return (joins(second, c.p2, c.p3) & joins(third, c.p3, c.p1)) != 0;
  }

  double level_;
  std::size_t count_ = 0;
  const TEdge* edges_[kSize][3];
  InPlanAndSpace sides_[3][kSize] = {};
  InPlanAndSpace areas_[kSize];
  double volumes_[kSize];
  Place places_[kSize];
  std::size_t oddCount_ = 0;
  Odd odd_[kSize];
};

}  // namespace

LevelSums sumAgainstLevel(const TList* triangles, const EList* edges, double level) {
  const std::span<void* const> all = ListElements::elementsOf(triangles);
  const std::span<void* const> allEdges = ListElements::elementsOf(edges);
  LevelSums sums;
  Block block(level);
  for (std::size_t begin = 0; begin < all.size(); begin += Block::kSize) {
    block.measure(all.subspan(begin, std::min(Block::kSize, all.size() - begin)), allEdges);
    block.addVolumes(sums.volumes);
    block.addTotals(sums);
  }
  return sums;
}

}  // namespace detail
}  // namespace OrvikDTM
