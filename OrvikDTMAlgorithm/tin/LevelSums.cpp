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

bool joins(const TEdge& edge, const TPoint* p, const TPoint* q) {
  const TPoint* start = edge.getStartPoint();
  const TPoint* end = edge.getEndPoint();
  return (start == p && end == q) || (start == q && end == p);
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
    findEdges(triangles, edges);
    count_ = 0;
    oddCount_ = 0;
    for (std::size_t i = 0; i < triangles.size(); ++i) {
      if (edges_[i][0] != nullptr && edges_[i][1] != nullptr) measureSides(edges_[i]);
    }
    for (int i = 0; i < count_; ++i) areas_[i] = areasOf(sides_[0][i], sides_[1][i], sides_[2][i]);
  }

  void addVolumes(FillAndCut& sums) const {
    for (int i = 0; i < count_;) {
      if (places_[i] == Place::Both) {
        addSplit(level_, splitAt(level_, *corners_[0][i], *corners_[1][i], *corners_[2][i]), sums);
        ++i;
        continue;
      }
      const Place place = places_[i];
      FillOrCut& side = place == Place::Cut ? sums.cut : sums.fill;
      FillOrCut sum = side;  // in registers while the place stays the same
      for (; i < count_ && places_[i] == place; ++i) sum.add(areas_[i].of[0], areas_[i].of[1], volumes_[i]);
      side = sum;
    }
  }

  // Last of all: from here on the areas are those of the totals.
  void addTotals(LevelSums& sums) {
    for (int i = 0; i < oddCount_; ++i) areas_[odd_[i].place] = odd_[i].areas;
    for (int i = 0; i < count_; ++i) {
      sums.planArea += areas_[i].of[0];
      sums.spatialArea += areas_[i].of[1];
    }
  }

 private:
  // A triangle whose own areas are not those from the sides between its corners.
  struct Odd {
    int place;
    InPlanAndSpace areas;
  };

  // Leaves null what cannot be measured.
  void findEdges(std::span<void* const> triangles, std::span<void* const> edges) {
    void* const* slots[kSize][3];
    for (std::size_t i = 0; i < triangles.size(); ++i) {
      const auto* triangle = static_cast<const Triangle*>(triangles[i]);
      for (int which = 0; which < 3; ++which) {
        const int number = triangle == nullptr ? 0 : triangle->getEno()[which];
        const std::size_t index = static_cast<unsigned>(number) - 1u;
        slots[i][which] = index < edges.size() ? &edges[index] : nullptr;
        prefetch(slots[i][which]);
      }
    }
    for (std::size_t i = 0; i < triangles.size(); ++i) {
      for (int which = 0; which < 3; ++which) {
        edges_[i][which] = slots[i][which] == nullptr ? nullptr : static_cast<const TEdge*>(*slots[i][which]);
        prefetchWhole(edges_[i][which]);
      }
    }
    for (std::size_t i = 0; i < triangles.size(); ++i) {
      for (const TEdge*& edge : edges_[i]) edge = isWhole(edge) ? edge : nullptr;
      for (const TEdge* edge : {edges_[i][0], edges_[i][1]}) {  // these two have all three corners
        if (edge == nullptr) continue;
        prefetchWhole(edge->getStartPoint());
        prefetchWhole(edge->getEndPoint());
      }
    }
  }

  void measureSides(const TEdge* const edges[3]) {
    const TPoint& p1 = *edges[0]->getStartPoint();
    const TPoint& p2 = *edges[0]->getEndPoint();
    const TPoint& p3 = thirdCorner(*edges[0], *edges[1]);
    const int i = count_++;
    corners_[0][i] = &p1;
    corners_[1][i] = &p2;
    corners_[2][i] = &p3;
    sides_[0][i] = lengthsOf(p1, p2);
    sides_[1][i] = lengthsOf(p2, p3);
    sides_[2][i] = lengthsOf(p3, p1);
    volumes_[i] = prismVolume(level_, p1, p2, p3);
    places_[i] = placeOf(level_, p1.getZ(), p2.getZ(), p3.getZ());
    // The totals take the sides in the order of the edges, which decides the last bit, and nothing without a third
    // edge.
    const TEdge* third = edges[2];
    if (third == nullptr) {
      odd_[oddCount_++] = {i, {{0.0, 0.0}}};
    } else if (!joins(*edges[1], &p2, &p3) || !joins(*third, &p3, &p1)) {
      odd_[oddCount_++] = {i, areasOf(lengthsOf(*edges[0]), lengthsOf(*edges[1]), lengthsOf(*third))};
    }
  }

  double level_;
  const TEdge* edges_[kSize][3];
  int count_ = 0;
  const TPoint* corners_[3][kSize];
  InPlanAndSpace sides_[3][kSize];
  InPlanAndSpace areas_[kSize];
  double volumes_[kSize];
  Place places_[kSize];
  int oddCount_ = 0;
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
