// Surfaces for the tests of threads.
#pragma once

#include <cmath>
#include <memory>
#include <vector>

#include <OrvikDTMAlgorithm/OrvikDTMAlgorithm.h>

#include "Inputs.h"

namespace sites {

using inputs::Positions;

// Points of a network as its owner has them.
struct Points {
  explicit Points(const Positions& positions) {
    owned.reserve(positions.size());
    for (const inputs::Position& p : positions) owned.emplace_back(p[0], p[1], p[2]);
    for (TPoint& p : owned) pointers.push_back(&p);
  }

  std::vector<TPoint> owned;
  std::vector<TPoint*> pointers;
};

// A site of about 300 units, which the sweep triangulates.
inline Positions scattered(int seed, int size) {
  return inputs::randomMillimetres(static_cast<std::uint64_t>(seed), size, 300, 0, 0);
}

// A grid that is turned against the axes, at projected coordinates: the sweep often goes wrong there, and the exact
// construction takes over.
inline Positions turnedGrid(int seed, int side) {
  inputs::Random random(static_cast<std::uint64_t>(seed));
  const double angle = 0.2 + 0.05 * seed;
  Positions positions;
  for (int row = 0; row < side; ++row) {
    for (int column = 0; column < side; ++column) {
      const double x = column * std::cos(angle) - row * std::sin(angle);
      const double y = column * std::sin(angle) + row * std::cos(angle);
      positions.push_back({500000 + 3 * x, 4000000 + 3 * y, 20 * random.unit()});
    }
  }
  return positions;
}

// The points as a survey of a surface, whose TIN is still to be built.
inline void fill(DTMSurface& surface, const Positions& positions) {
  for (const inputs::Position& p : positions) {
    auto point = std::make_unique<SurfacePoint>();
    point->setE(p[0]);
    point->setN(p[1]);
    point->setZ(p[2]);
    surface.addSurfacePoint(point.release(), static_cast<unsigned long long>(surface.getPointsNumber()));
  }
}

// A surface with all that it owns.
struct Released {
  void operator()(DTMSurface* surface) const {
    surface->release();
    delete surface;
  }
};
using SurfacePtr = std::unique_ptr<DTMSurface, Released>;

inline SurfacePtr surfaceOf(const Positions& positions) {
  SurfacePtr surface(new DTMSurface);
  fill(*surface, positions);
  return surface;
}

}  // namespace sites
