// The flip stage's short cuts: the filter must never contradict the two flip tests, and the stage as a whole must leave
// the mesh that the plain rule leaves.
#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <iterator>
#include <limits>
#include <ostream>
#include <string>
#include <utility>
#include <vector>

#include <OrvikDTMAlgorithm/tin/FlipFilter.h>
#include <OrvikDTMAlgorithm/tin/Flips.h>
#include <OrvikDTMAlgorithm/tin/FlipsByPosition.h>
#include <OrvikDTMAlgorithm/tin/Sweep.h>
#include <gtest/gtest.h>

#include "Inputs.h"

namespace {

using detail::FlipFilter;
using detail::Mesh;
using detail::MeshEdge;
using detail::Number;
using detail::Position;
using inputs::Random;

// ---- the filter, quadrilateral by quadrilateral: the common edge b -> c, a to its left, d to its right

using Quadrilateral = std::array<Position, 4>;

struct Answers {
  int keep = 0;
  int flip = 0;
  int unsure = 0;
  int wrong = 0;
};

void judge(const FlipFilter& filter, const Quadrilateral& q, Answers& answers) {
  const auto& [a, b, c, d] = q;
  const FlipFilter::Verdict verdict = filter.judge(a, b, c, d);
  if (verdict == FlipFilter::kUnsure) {
    ++answers.unsure;
    return;
  }
  ++(verdict == FlipFilter::kFlip ? answers.flip : answers.keep);
  const bool byTests = detail::isConvex(d, b, c, a) && detail::isNeedTrans(d, b, c, a);
  if (byTests != (verdict == FlipFilter::kFlip)) ++answers.wrong;
}

// The answers for many quadrilaterals, judged by themselves and in all four ways of naming the corners.
Answers answersFor(Quadrilateral (*make)(Random&), std::uint64_t seed, int count) {
  Random random(seed);
  Answers answers;
  for (int i = 0; i < count; ++i) {
    const Quadrilateral q = make(random);
    const FlipFilter filter({q.begin(), q.end()});
    EXPECT_TRUE(filter.inReach());
    judge(filter, q, answers);
    judge(filter, {q[3], q[2], q[1], q[0]}, answers);
    judge(filter, {q[1], q[3], q[0], q[2]}, answers);
    judge(filter, {q[0], q[2], q[1], q[3]}, answers);
  }
  return answers;
}

double signedUnit(Random& random) { return 2 * random.unit() - 1; }

// From `low` to `high`, every power of ten as likely as any other.
double scale(Random& random, double low, double high) { return low * std::pow(high / low, random.unit()); }

Position nearby(Random& random, const Position& centre, double distance) {
  return {centre.x + distance * signedUnit(random), centre.y + distance * signedUnit(random)};
}

Position anywhere(Random& random) { return nearby(random, {0.0, 0.0}, scale(random, 0.001, 100000.0)); }

Position onCircle(const Position& centre, double radius, double angle) {
  return {centre.x + radius * std::cos(angle), centre.y + radius * std::sin(angle)};
}

// b and c as given, a and d exchanged if need be so that a lies to the left.
Quadrilateral turned(const Position& a, const Position& b, const Position& c, const Position& d) {
  const double side = (c.x - b.x) * (a.y - b.y) - (c.y - b.y) * (a.x - b.x);
  return side > 0 ? Quadrilateral{a, b, c, d} : Quadrilateral{d, b, c, a};
}

Quadrilateral general(Random& random) {
  const Position centre = anywhere(random);
  const double size = scale(random, 0.001, 100000.0 / 2);
  return turned(nearby(random, centre, size), nearby(random, centre, size), nearby(random, centre, size),
                nearby(random, centre, size));
}

// Whole millimetres on a square of a few hundred of them, at most 100 km away.
Quadrilateral lattice(Random& random) {
  const std::int64_t x0 = random.between(0, 100000000);
  const std::int64_t y0 = random.between(0, 100000000);
  const std::int64_t side = random.between(2, 300);
  const auto corner = [&] {
    return Position{static_cast<double>(x0 + random.between(0, side)) / 1000,
                    static_cast<double>(y0 + random.between(0, side)) / 1000};
  };
  return turned(corner(), corner(), corner(), corner());
}

// Lattice points of one circle of 2.5 cm to 2.5 km, on it but for the rounding of their coordinates.
Quadrilateral latticeCocircular(Random& random) {
  static constexpr std::array<std::array<int, 2>, 12> kOnRadius25 = {{{25, 0},
                                                                      {24, 7},
                                                                      {20, 15},
                                                                      {15, 20},
                                                                      {7, 24},
                                                                      {0, 25},
                                                                      {-7, 24},
                                                                      {-15, 20},
                                                                      {-24, -7},
                                                                      {-20, -15},
                                                                      {0, -25},
                                                                      {7, -24}}};
  const double unit = scale(random, 0.001, 100.0);
  const Position centre = {static_cast<double>(random.between(0, 1000)) * unit,
                           static_cast<double>(random.between(0, 1000)) * unit};
  const auto corner = [&] {
    const auto& p = kOnRadius25[static_cast<std::size_t>(random.between(0, 11))];
    return Position{centre.x + p[0] * unit, centre.y + p[1] * unit};
  };
  return turned(corner(), corner(), corner(), corner());
}

// d off the circle of a, b, c by about what the tolerance or the rounding is.
Quadrilateral nearlyCocircular(Random& random) {
  constexpr double kTurn = 6.283185307179586;
  const Position centre = anywhere(random);
  const double radius = scale(random, 0.01, 50000.0);
  const double square = radius * radius + signedUnit(random) * scale(random, 1e-10, 1e-2);
  return turned(onCircle(centre, radius, kTurn * random.unit()), onCircle(centre, radius, kTurn * random.unit()),
                onCircle(centre, radius, kTurn * random.unit()),
                onCircle(centre, std::sqrt(std::fabs(square)), kTurn * random.unit()));
}

// As before with three corners close together: a short edge, skinny triangles, a circle that they hardly determine.
Quadrilateral skinny(Random& random) {
  const Position centre = anywhere(random);
  const double radius = scale(random, 0.1, 50000.0);
  const double arc = scale(random, 1e-6, 1.0);
  const double square = radius * radius + signedUnit(random) * scale(random, 1e-10, 1e2);
  return turned(onCircle(centre, radius, 1 + arc * random.unit()), onCircle(centre, radius, 1 + arc * random.unit()),
                onCircle(centre, radius, 1 + arc * random.unit()),
                onCircle(centre, std::sqrt(std::fabs(square)), 4 * random.unit()));
}

// A corner so near the line through two others that their area is about the line's tolerance.
Quadrilateral nearlyCollinear(Random& random) {
  const Position b = anywhere(random);
  const double size = scale(random, 0.01, 50000.0);
  const Position d = nearby(random, b, size);
  const Position c = nearby(random, b, size);
  const double along = 3 * signedUnit(random);
  const double aside = (0.9 + 0.2 * random.unit()) * detail::kLineTolerance / std::hypot(d.x - b.x, d.y - b.y);
  const double length = std::hypot(d.x - b.x, d.y - b.y);
  const Position direction = {(d.x - b.x) / length, (d.y - b.y) / length};
  const Position a = {b.x + along * (d.x - b.x) - aside * direction.y, b.y + along * (d.y - b.y) + aside * direction.x};
  return turned(a, b, c, d);
}

// Both triangles flat but for an area that the side test just sees, on circles so large that their centres are noise.
Quadrilateral sliver(Random& random) {
  const Position b = anywhere(random);
  const Position c = nearby(random, b, scale(random, 1.0, 50000.0));
  const Position way = {c.x - b.x, c.y - b.y};
  const double square = way.x * way.x + way.y * way.y;
  const auto beside = [&](double sign) {
    const double along = random.unit();
    const double aside = sign * scale(random, 1e-4, 1e3) / square;
    return Position{b.x + along * way.x - aside * way.y, b.y + along * way.y + aside * way.x};
  };
  return {beside(1.0), b, c, beside(-1.0)};
}

Quadrilateral repeated(Random& random) {
  Quadrilateral q = general(random);
  q[static_cast<std::size_t>(random.between(0, 3))] = q[static_cast<std::size_t>(random.between(0, 3))];
  return q;
}

struct QuadrilateralKind {
  const char* name;
  Quadrilateral (*make)(Random&);
  bool decides;  // the filter has to be sure of many
};

void PrintTo(const QuadrilateralKind& kind, std::ostream* out) { *out << kind.name; }

class FlipFilterOn : public testing::TestWithParam<QuadrilateralKind> {};

TEST_P(FlipFilterOn, NeverContradictsTheFlipTests) {
  constexpr int kCount = 500000;
  const Answers answers = answersFor(GetParam().make, 11, kCount);
  EXPECT_EQ(answers.wrong, 0);
  EXPECT_EQ(answers.keep + answers.flip + answers.unsure, 4 * kCount);
  if (!GetParam().decides) return;
  EXPECT_GT(answers.keep, kCount / 100);
  EXPECT_GT(answers.flip, kCount / 100);
}

INSTANTIATE_TEST_SUITE_P(Quadrilaterals, FlipFilterOn,
                         testing::Values(QuadrilateralKind{"General", general, true},
                                         QuadrilateralKind{"Lattice", lattice, false},
                                         QuadrilateralKind{"LatticeCocircular", latticeCocircular, false},
                                         QuadrilateralKind{"NearlyCocircular", nearlyCocircular, true},
                                         QuadrilateralKind{"Skinny", skinny, true},
                                         QuadrilateralKind{"NearlyCollinear", nearlyCollinear, false},
                                         QuadrilateralKind{"Sliver", sliver, true},
                                         QuadrilateralKind{"Repeated", repeated, false}),
                         [](const auto& kind) { return std::string(kind.param.name); });

TEST(FlipFilter, IsSureOfNearlyEveryOrdinaryQuadrilateral) {
  Random random(3);
  const FlipFilter filter({{0.0, 0.0}, {1000.0, 1000.0}});
  Answers answers;
  for (int i = 0; i < 100000; ++i) {
    const Position centre = {500 + 490 * signedUnit(random), 500 + 490 * signedUnit(random)};
    const Position b = nearby(random, centre, 10);
    const Position c = nearby(random, centre, 10);
    const Position middle = {(b.x + c.x) / 2, (b.y + c.y) / 2};
    const double reach = random.unit() + 0.1;
    const Position a = {middle.x - reach * (c.y - b.y), middle.y + reach * (c.x - b.x)};
    const Position d = {middle.x + random.unit() * (c.y - b.y), middle.y - random.unit() * (c.x - b.x)};
    judge(filter, {a, b, c, d}, answers);
  }
  EXPECT_EQ(answers.wrong, 0);
  EXPECT_LT(answers.unsure, 1000);
  EXPECT_GT(answers.flip, 10000);
  EXPECT_GT(answers.keep, 10000);
}

TEST(FlipFilter, ReachesNoFartherThanItsProof) {
  constexpr double kInfinity = std::numeric_limits<double>::infinity();
  constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
  EXPECT_TRUE(FlipFilter({{-FlipFilter::kReach, FlipFilter::kReach}}).inReach());
  for (const double far : {std::nextafter(FlipFilter::kReach, kInfinity), -1e9, 1e200, kInfinity, -kInfinity, kNaN}) {
    EXPECT_FALSE(FlipFilter({{0.0, 0.0}, {far, 0.0}, {1.0, 1.0}}).inReach()) << far;
    EXPECT_FALSE(FlipFilter({{0.0, 0.0}, {0.0, far}, {1.0, 1.0}}).inReach()) << far;
  }
}

// ---- the stage as a whole

// The plain rule: every edge that is taken from the queue is tested, ends are told apart by position.
class PlainFlips {
 public:
  explicit PlainFlips(Mesh& mesh) : mesh_(mesh) {}

  int run() {
    for (Number edge = 1; edge <= mesh_.edgeCount(); ++edge) {
      std::vector<Number> queue{edge};
      for (std::size_t front = 0; front < queue.size(); ++front) visit(queue[front], queue);
    }
    return flips_;
  }

 private:
  struct Outer {
    Number edge;
    bool outward;
  };

  bool isAt(Number point, Number other) const { return detail::samePosition(mesh_.points[point], mesh_.points[other]); }

  // The other edges of a triangle: the one at the common edge's start, then the one at its end.
  std::array<Outer, 2> outerEdges(Number triangle, Number common) const {
    std::vector<Number> others;
    for (const Number e : mesh_.triangles[triangle].edge) {
      if (e != common) others.push_back(e);
    }
    const Number b = mesh_.edges[common].start;
    const Number c = mesh_.edges[common].end;
    const MeshEdge& first = mesh_.edges[others[0]];
    if (!isAt(first.start, b) && !isAt(first.end, b)) std::swap(others[0], others[1]);
    return {{{others[0], isAt(mesh_.edges[others[0]].start, b)}, {others[1], isAt(mesh_.edges[others[1]].start, c)}}};
  }

  Number farEnd(const Outer& outer) const {
    return outer.outward ? mesh_.edges[outer.edge].end : mesh_.edges[outer.edge].start;
  }

  void name(const Outer& outer, bool leftWhenOutward, Number triangle) {
    MeshEdge& e = mesh_.edges[outer.edge];
    (outer.outward == leftWhenOutward ? e.left : e.right) = triangle;
  }

  void visit(Number edge, std::vector<Number>& queue) {
    constexpr std::size_t kQueueLimit = 200000;
    MeshEdge& f = mesh_.edges[edge];
    if (f.left == 0 || f.right == 0) return;
    const auto [leftB, leftC] = outerEdges(f.left, edge);
    const auto [rightB, rightC] = outerEdges(f.right, edge);
    const Number a = farEnd(leftB);
    const Number d = farEnd(rightB);
    const std::vector<Position>& p = mesh_.points;
    if (!detail::isConvex(p[d], p[f.start], p[f.end], p[a])) return;
    if (!detail::isNeedTrans(p[d], p[f.start], p[f.end], p[a])) return;
    ++flips_;
    f.start = a;
    f.end = d;
    mesh_.triangles[f.left] = {{rightC.edge, leftC.edge, edge}};
    mesh_.triangles[f.right] = {{leftB.edge, rightB.edge, edge}};
    name(leftC, true, f.left);
    name(rightB, true, f.right);
    name(leftB, false, f.right);
    name(rightC, false, f.left);
    for (const Outer& outer : {rightB, rightC, leftC, leftB}) {
      if (queue.size() < kQueueLimit) queue.push_back(outer.edge);
    }
  }

  Mesh& mesh_;
  int flips_ = 0;
};

// What the sweep makes of the positions as they are, valid or not; without edges when it makes nothing.
Mesh swept(const inputs::Positions& positions) {
  std::vector<Position> points;
  for (const inputs::Position& p : positions) points.push_back({p[0], p[1]});
  Mesh mesh;
  for (const Number i : detail::sweepOrder(points)) mesh.points.push_back(points[i]);
  if (mesh.points.empty()) return mesh;
  const Number fanEnd = detail::startFan(mesh);
  if (fanEnd != 0) detail::sweep(mesh, fanEnd, nullptr);
  return mesh;
}

bool sameMesh(const Mesh& m, const Mesh& n) {
  const auto sameEdge = [](const MeshEdge& e, const MeshEdge& f) {
    return e.start == f.start && e.end == f.end && e.left == f.left && e.right == f.right;
  };
  const auto sameTriangle = [](const detail::MeshTriangle& s, const detail::MeshTriangle& t) {
    return std::equal(std::begin(s.edge), std::end(s.edge), std::begin(t.edge));
  };
  return std::equal(m.edges.begin(), m.edges.end(), n.edges.begin(), n.edges.end(), sameEdge) &&
         std::equal(m.triangles.begin(), m.triangles.end(), n.triangles.begin(), n.triangles.end(), sameTriangle) &&
         m.hull == n.hull;
}

// How many flips the plain rule makes; both ways of the library must leave the mesh that it leaves.
int expectPlainFlips(const inputs::Positions& positions, const std::string& name) {
  Mesh plain = swept(positions);
  Mesh fast = plain;
  Mesh byPosition = plain;
  const int flips = PlainFlips(plain).run();
  detail::flipToDelaunay(fast, nullptr);
  detail::flipByPosition(byPosition, nullptr);
  EXPECT_TRUE(sameMesh(fast, plain)) << name;
  EXPECT_TRUE(sameMesh(byPosition, plain)) << name;
  return flips;
}

TEST(Flips, LeaveTheMeshOfThePlainRule) {
  int flips = 0;
  for (const std::vector<inputs::Kind>& kinds : {inputs::surveyKinds(), inputs::wildKinds()}) {
    for (const inputs::Kind& kind : kinds) {
      for (std::uint64_t seed = 1; seed <= 12; ++seed) {
        for (const int size : {5, 12, 60, 250}) {
          const inputs::Input input = inputs::make(kind, seed, size);
          flips += expectPlainFlips(input.points, input.name);
        }
      }
    }
  }
  EXPECT_GT(flips, 10000);
}

TEST(Flips, LeaveTheMeshOfThePlainRuleAtEveryDistance) {
  for (std::uint64_t seed = 1; seed <= 40; ++seed) {
    for (const double away : {0.0, 1000.0, 150000.0, 250000.0, 5e6, 1e9}) {
      const inputs::Positions positions = inputs::randomMillimetres(seed, 150, 40, away, away);
      expectPlainFlips(positions, std::to_string(seed) + " at " + std::to_string(away));
    }
  }
}

TEST(Flips, LeaveTheMeshOfThePlainRuleWherePositionsAreShared) {
  for (std::uint64_t seed = 1; seed <= 40; ++seed) {
    for (const double away : {0.0, 150000.0, 1e6, 1e8}) {
      inputs::Positions positions = inputs::randomMillimetres(seed, 120, 2000, away, away);
      for (std::size_t i = 0; i < 30; ++i) positions.push_back(positions[4 * i]);
      expectPlainFlips(positions, std::to_string(seed) + " at " + std::to_string(away));
    }
  }
}

TEST(Flips, TakeAMeshWhoseSidesDoNotFitTogether) {
  Mesh mesh = swept(inputs::randomMillimetres(4, 60, 100, 0.0, 0.0));
  for (Number edge = 3; edge <= mesh.edgeCount(); edge += 7) std::swap(mesh.edges[edge].left, mesh.edges[edge].right);
  Mesh plain = mesh;
  PlainFlips(plain).run();
  detail::flipToDelaunay(mesh, nullptr);
  EXPECT_TRUE(sameMesh(mesh, plain));
}

}  // namespace
