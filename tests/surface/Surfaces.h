// Surfaces for the tests: made from short lists of positions, and released when they go.
#pragma once

#include <initializer_list>
#include <string>
#include <vector>

#include <OrvikDTMAlgorithm/surface/DTMSurface.h>
#include <OrvikDTMAlgorithm/surface/SurfacePoint.h>

struct Position {
  double e;
  double n;
  double z;
};

inline SurfacePoint* newPoint(const std::string& name, const Position& at) {
  auto* point = new SurfacePoint;
  point->setSurfacePointName(name.c_str());
  point->setE(at.e);
  point->setN(at.n);
  point->setZ(at.z);
  return point;
}

// A surface named "Site" that releases its points and its TIN.
class OwnedSurface : public DTMSurface {
 public:
  OwnedSurface() { setSurfaceName("Site"); }
  explicit OwnedSurface(const std::vector<Position>& positions) : OwnedSurface() {
    std::vector<SurfacePoint*> points;
    for (const Position& at : positions) {
      std::string name = std::to_string(points.size() + 1);
      name.insert(name.begin(), 'P');
      points.push_back(newPoint(name, at));
    }
    for (SurfacePoint* point : points) point->setSurfaceName("Site");
    setSurfacePoints(points);
  }
  ~OwnedSurface() { release(); }
};

// A square of 10 x 10 on a plane that rises 1 in 10 to the east: z = 5 + e / 10, the south-west corner at e = 100, n =
// 200.
inline const std::vector<Position>& risingSquare() {
  static const std::vector<Position> square = {{100, 200, 15}, {110, 200, 16}, {110, 210, 16}, {100, 210, 15}};
  return square;
}

// `count` points on a gently curved ground, no two alike and no three in line.
inline std::vector<Position> scattered(int count) {
  std::vector<Position> positions;
  for (int i = 0; i < count; ++i) {
    const double e = 1000.0 + 7.0 * i + (i % 3);
    const double n = 500.0 + (i * i * 13 % 97);
    positions.push_back({e, n, 20.0 + 0.01 * e - 0.02 * n});
  }
  return positions;
}

inline std::vector<std::string> namesOf(const DTMSurface& surface) {
  std::vector<std::string> names;
  for (const SurfacePoint* point : surface.getSurfacePoints()) names.emplace_back(point->getSurfacePointName());
  return names;
}
