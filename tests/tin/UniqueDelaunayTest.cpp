// The exact construction has one result for a set of positions: it does not depend on their order, on where they lie,
// or on positions far away, also where many lie on one circle.
#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <set>
#include <vector>

#include <OrvikDTMAlgorithm/tin/Delaunay.h>
#include <boost/multiprecision/cpp_int.hpp>
#include <gtest/gtest.h>

#include "Inputs.h"

namespace {

using detail::MillimetrePosition;
using inputs::Random;
using Positions = std::vector<MillimetrePosition>;
using Place = std::pair<std::int64_t, std::int64_t>;
using Corners = std::array<Place, 3>;  // the first by x, then y, in front, counter-clockwise
using Triangles = std::set<Corners>;
using Wide = boost::multiprecision::int512_t;

Place placeOf(const MillimetrePosition& p) { return {p.x, p.y}; }

std::int64_t cross(const Place& a, const Place& b, const Place& c) {
  return (b.first - a.first) * (c.second - a.second) - (b.second - a.second) * (c.first - a.first);
}

Triangles trianglesOf(const Positions& positions) {
  detail::ExactTriangulation exact = detail::triangulateExactly(positions);
  std::vector<std::array<detail::Number, 3>> edges;
  for (detail::Number t = 1; t <= exact.mesh.triangleCount(); ++t) {
    const detail::MeshTriangle triangle = exact.mesh.triangle(t);
    edges.push_back({triangle.edge[0], triangle.edge[1], triangle.edge[2]});
  }
  Triangles result;
  for (detail::Number t = 1; t <= exact.mesh.triangleCount(); ++t) {
    Corners corners;
    for (std::size_t i = 0; i < 3; ++i) {
      const detail::MeshEdge e = exact.mesh.edge(edges[t - 1][i]);
      corners[i] = placeOf(positions[exact.inputIndex[e.left == t ? e.start : e.end]]);
    }
    std::rotate(corners.begin(), std::min_element(corners.begin(), corners.end()), corners.end());
    if (cross(corners[0], corners[1], corners[2]) < 0) std::swap(corners[1], corners[2]);
    EXPECT_TRUE(result.insert(corners).second);
  }
  return result;
}

Wide squareOf(const Place& p) { return Wide(p.first) * p.first + Wide(p.second) * p.second; }

// The in-circle determinant of positions lifted to `lift`.
Wide inCircle(const Corners& t, const Place& d, const std::array<Wide, 4>& lift) {
  const auto minor = [&](const Place& p, const Place& q) {
    return Wide(Wide(p.first - d.first) * (q.second - d.second) - Wide(p.second - d.second) * (q.first - d.first));
  };
  return (lift[0] - lift[3]) * minor(t[1], t[2]) + (lift[1] - lift[3]) * minor(t[2], t[0]) +
         (lift[2] - lift[3]) * minor(t[0], t[1]);
}

// Whether d is inside the circle when the position of rank r by x, then y is raised by N^r, N beyond any minor, and the
// squares count more than all of that.
bool isInside(const Corners& t, const Place& d) {
  const std::array<Place, 4> four = {t[0], t[1], t[2], d};
  std::array<Wide, 4> lift;
  std::transform(four.begin(), four.end(), lift.begin(), squareOf);
  if (const int sign = inCircle(t, d, lift).sign(); sign != 0) return sign > 0;
  for (std::size_t i = 0; i < 4; ++i) {
    const auto rank = std::count_if(four.begin(), four.end(), [&](const Place& q) { return q < four[i]; });
    lift[i] = Wide(1) << static_cast<unsigned>(100 * rank);
  }
  return inCircle(t, d, lift) > 0;
}

// Every triangle of three positions whose circle holds no other.
Triangles slowTriangles(const Positions& positions) {
  std::set<Place> places;
  for (const MillimetrePosition& p : positions) places.insert(placeOf(p));
  const std::vector<Place> p(places.begin(), places.end());
  Triangles result;
  for (std::size_t i = 0; i < p.size(); ++i) {
    for (std::size_t j = i + 1; j < p.size(); ++j) {
      for (std::size_t k = j + 1; k < p.size(); ++k) {
        const std::int64_t turn = cross(p[i], p[j], p[k]);
        if (turn == 0) continue;
        const Corners t = turn > 0 ? Corners{p[i], p[j], p[k]} : Corners{p[i], p[k], p[j]};
        const bool empty = std::none_of(
            p.begin(), p.end(), [&t](const Place& d) { return d != t[0] && d != t[1] && d != t[2] && isInside(t, d); });
        if (empty) result.insert(t);
      }
    }
  }
  return result;
}

void shuffle(Positions& positions, Random& random) {
  for (std::size_t i = positions.size(); i > 1; --i) {
    std::swap(positions[i - 1],
              positions[static_cast<std::size_t>(random.between(0, static_cast<std::int64_t>(i) - 1))]);
  }
}

Positions moved(const Positions& positions, std::int64_t x, std::int64_t y) {
  Positions result;
  for (const MillimetrePosition& p : positions) result.push_back({p.x + x, p.y + y});
  return result;
}

// A lattice with basis vectors (a, b) and (-b, a).
Positions lattice(int columns, int rows, std::int64_t a, std::int64_t b) {
  Positions result;
  for (std::int64_t i = 0; i < columns; ++i) {
    for (std::int64_t j = 0; j < rows; ++j) result.push_back({i * a - j * b, i * b + j * a});
  }
  return result;
}

Positions onCircle(int radius) {
  Positions result;
  for (const inputs::Position& p : inputs::latticeCircle(radius, 0, 0)) {
    result.push_back({static_cast<std::int64_t>(p[0]), static_cast<std::int64_t>(p[1])});
  }
  return result;
}

Positions anywhere(Random& random, int count, std::int64_t side) {
  Positions result;
  for (int i = 0; i < count; ++i) result.push_back({random.between(0, side), random.between(0, side)});
  return result;
}

std::vector<Positions> fieldsOfCircles() {
  Random random(5);
  std::vector<Positions> fields = {
      lattice(30, 20, 1, 0),     lattice(17, 23, 1000, 0), lattice(20, 20, 3, 4), lattice(21, 19, -12, 5),
      lattice(16, 16, 800, 600), onCircle(1105),           onCircle(65)};
  for (const std::int64_t side : {7, 20, 60}) fields.push_back(anywhere(random, 600, side));
  Positions rings = onCircle(65);
  for (const int radius : {5, 25, 325}) {
    for (const MillimetrePosition& p : onCircle(radius)) rings.push_back(p);
  }
  fields.push_back(rings);
  return fields;
}

TEST(UniqueDelaunay, IsTheOneOfThePerturbedPositions) {
  Random random(3);
  for (int round = 0; round < 150; ++round) {
    const Positions positions = anywhere(random, static_cast<int>(random.between(3, 18)), random.between(2, 6));
    EXPECT_EQ(trianglesOf(positions), slowTriangles(positions));
  }
  for (const auto& [a, b] : {std::pair{1, 0}, {3, 4}, {-2, 1}}) {
    for (int columns = 2; columns <= 5; ++columns) {
      const Positions positions = lattice(columns, 4, a, b);
      EXPECT_EQ(trianglesOf(positions), slowTriangles(positions)) << columns << " " << a << " " << b;
    }
  }
  EXPECT_EQ(trianglesOf(onCircle(65)), slowTriangles(onCircle(65)));
}

TEST(UniqueDelaunay, DoesNotDependOnTheOrder) {
  Random random(9);
  for (const Positions& field : fieldsOfCircles()) {
    const Triangles expected = trianglesOf(field);
    Positions shuffled = field;
    for (int round = 0; round < 5; ++round) {
      shuffle(shuffled, random);
      EXPECT_EQ(trianglesOf(shuffled), expected);
    }
  }
}

TEST(UniqueDelaunay, DoesNotDependOnThePlace) {
  for (const Positions& field : fieldsOfCircles()) {
    const Triangles expected = trianglesOf(field);
    for (const auto& [x, y] : {Place{1, 0}, {-77, 1013}, {38500000123, 3400000007}, {-9000000000000000, 1}}) {
      Triangles back;
      for (Corners t : trianglesOf(moved(field, x, y))) {
        for (Place& p : t) p = {p.first - x, p.second - y};
        back.insert(t);
      }
      EXPECT_EQ(back, expected) << x << " " << y;
    }
  }
}

TEST(UniqueDelaunay, DoesNotDependOnPositionsFarAway) {
  for (const Positions& field : fieldsOfCircles()) {
    const Triangles alone = trianglesOf(field);
    for (const auto& far : {MillimetrePosition{-4000003, 17}, {31, 9000001}, {5000000000000, -3000000000000}}) {
      Positions with = field;
      with.push_back(far);
      // The far one changes triangles whose circles reach beyond the field, and no other.
      const Triangles together = trianglesOf(with);
      for (const Corners& t : alone) {
        EXPECT_TRUE(isInside(t, placeOf(far)) || together.contains(t));
      }
    }
  }
}

// The box around a triangle's circle, a millimetre wider for rounding.
struct CircleBox {
  double left;
  double bottom;
  double right;
  double top;
};

CircleBox circleBoxOf(const Corners& t) {
  const auto bx = static_cast<double>(t[1].first - t[0].first);
  const auto by = static_cast<double>(t[1].second - t[0].second);
  const auto cx = static_cast<double>(t[2].first - t[0].first);
  const auto cy = static_cast<double>(t[2].second - t[0].second);
  const double k = 2 * (bx * cy - by * cx);
  const double x = (cy * (bx * bx + by * by) - by * (cx * cx + cy * cy)) / k;
  const double y = (bx * (cx * cx + cy * cy) - cx * (bx * bx + by * by)) / k;
  const double radius = std::sqrt(x * x + y * y) + 1;
  const auto ox = static_cast<double>(t[0].first) + x;
  const auto oy = static_cast<double>(t[0].second) + y;
  return {ox - radius, oy - radius, ox + radius, oy + radius};
}

TEST(UniqueDelaunay, APartHasTheTrianglesWhoseCirclesItKnows) {
  Random random(11);
  int allKnown = 0;
  for (const Positions& field : fieldsOfCircles()) {
    const Triangles whole = trianglesOf(field);
    const auto [lowX, highX] =
        std::minmax_element(field.begin(), field.end(), [](const auto& p, const auto& q) { return p.x < q.x; });
    const auto [lowY, highY] =
        std::minmax_element(field.begin(), field.end(), [](const auto& p, const auto& q) { return p.y < q.y; });
    int known = 0;
    for (int round = 0; round < 12; ++round) {
      std::int64_t x[2] = {random.between(lowX->x, highX->x), random.between(lowX->x, highX->x)};
      std::int64_t y[2] = {random.between(lowY->y, highY->y), random.between(lowY->y, highY->y)};
      std::sort(x, x + 2);
      std::sort(y, y + 2);
      Positions part;
      for (const MillimetrePosition& p : field) {
        if (p.x >= x[0] && p.x <= x[1] && p.y >= y[0] && p.y <= y[1]) part.push_back(p);
      }
      if (part.empty()) continue;
      const auto isKnown = [&x, &y](const Corners& t) {
        const CircleBox box = circleBoxOf(t);
        return box.left >= static_cast<double>(x[0]) && box.right <= static_cast<double>(x[1]) &&
               box.bottom >= static_cast<double>(y[0]) && box.top <= static_cast<double>(y[1]);
      };
      const Triangles ofPart = trianglesOf(part);
      for (const Corners& t : whole) {
        if (!isKnown(t)) continue;
        ++known;
        EXPECT_TRUE(ofPart.contains(t));
      }
      for (const Corners& t : ofPart) {
        EXPECT_TRUE(!isKnown(t) || whole.contains(t));
      }
    }
    allKnown += known;
  }
  EXPECT_GT(allKnown, 5000);
}

}  // namespace
