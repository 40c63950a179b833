// Surfaces that the tests of pictures share.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <random>
#include <vector>

#include <OrvikDTMAlgorithm/OrvikDTMAlgorithm.h>
#include <OrvikDTMAlgorithm/tin/Surface.h>
#include <OrvikDTMAlgorithm/tin/TPoint.h>

#include "pictures/PlanMesh.h"

namespace meshes {

// A TIN with the points that it is made of.
struct Terrain {
  std::vector<std::unique_ptr<TPoint>> points;
  std::unique_ptr<CEType> tin;

  void add(double x, double y, double z) { points.push_back(std::make_unique<TPoint>(x, y, z)); }
  void build() {
    std::vector<TPoint*> pointers;
    for (const auto& p : points) pointers.push_back(p.get());
    tin.reset(Surface::optimizeTIN(pointers));
  }
};

// `count` points to the millimetre in a square of `side` units at (x, y), and its corners.
inline Terrain scattered(std::mt19937& random, int count, double x, double y, double side,
                         const std::function<double(double, double)>& height) {
  Terrain terrain;
  std::uniform_int_distribution<int> millimetres(0, static_cast<int>(side * 1000.0));
  const auto add = [&](double dx, double dy) { terrain.add(x + dx, y + dy, height(x + dx, y + dy)); };
  for (const double dx : {0.0, side}) {
    for (const double dy : {0.0, side}) add(dx, dy);
  }
  for (int i = 0; i < count; ++i) {
    const double dx = millimetres(random) / 1000.0;
    add(dx, millimetres(random) / 1000.0);
  }
  terrain.build();
  return terrain;
}

// A grid of columns x rows unit squares, each cut along one diagonal or the other.
inline pictures::PlanMesh grid(std::mt19937& random, std::uint32_t columns, std::uint32_t rows,
                               const std::function<double(std::uint32_t, std::uint32_t)>& height) {
  pictures::PlanMesh mesh;
  for (std::uint32_t j = 0; j <= rows; ++j) {
    for (std::uint32_t i = 0; i <= columns; ++i) {
      mesh.points.push_back({static_cast<double>(i), static_cast<double>(j), height(i, j)});
    }
  }
  std::bernoulli_distribution coin;
  for (std::uint32_t j = 0; j < rows; ++j) {
    for (std::uint32_t i = 0; i < columns; ++i) {
      const std::uint32_t a = j * (columns + 1) + i;
      const std::uint32_t d = a + columns + 1;
      if (coin(random)) {
        mesh.triangles.push_back({a, a + 1, d + 1});
        mesh.triangles.push_back({a, d + 1, d});
      } else {
        mesh.triangles.push_back({a, a + 1, d});
        mesh.triangles.push_back({a + 1, d + 1, d});
      }
    }
  }
  return mesh;
}

}  // namespace meshes
