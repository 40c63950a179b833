// How far a surface lies above another one, or above a level, piece by piece: the two TINs are overlaid, cut along the
// boundary, and on every common piece the difference is linear. So the zero line and the limits between depths are
// those of the surfaces themselves, whatever method measured the volumes.
#pragma once

#include <cstddef>
#include <vector>

#include "Clip.h"
#include "PlanMesh.h"

namespace pictures {

// Pieces behind each other in one array: piece i is points[begins[i]] up to points[begins[i + 1]].
struct Pieces {
  std::vector<DifferencePoint> points;
  std::vector<std::size_t> begins{0};

  std::size_t count() const { return begins.size() - 1; }
  Loop piece(std::size_t i) const;
  void add(const Loop& loop);
};

// What a surface is compared with: the TIN `surface`, or the level when that is null. Both meshes have one origin.
struct Reference {
  const PlanMesh* surface = nullptr;
  double level = 0.0;
};

// The pieces of `ground` within `boundary` (fewer than three corners: no boundary) where the reference exists too.
// Every difference within kSameHeight of zero is zero. A boundary that crosses itself counts even-odd, once its loops
// are drawn even-odd.
Pieces differencePieces(const PlanMesh& ground, const Reference& reference, const std::vector<Point>& boundary);

// Within this, in units of height, two surfaces coincide; exact volumes take them so as well.
inline constexpr double kSameHeight = 1e-7;

}  // namespace pictures
