// From the flat mesh to the published lists and back. Private.
#pragma once

#include <algorithm>
#include <cstdint>
#include <limits>
#include <vector>

#include <OrvikDTMAlgorithm/tin/Mesh.h>

inline namespace OrvikDTM {

class CEType;
class ConvexList;
class EList;
class PList;
class TList;
class TPoint;

namespace detail {

class ExactMesh;

// How many elements a TIN's lists accept.
struct Capacities {
  int hull;
  int edges;
  int triangles;
};

// For a construction from n points: more than a valid sweep fills.
inline Capacities capacitiesFor(int n) {
  const auto times = [n](std::int64_t factor) {
    return static_cast<int>(std::clamp<std::int64_t>(factor * n, 0, std::numeric_limits<int>::max()));
  };
  return {times(1), times(9), times(3)};
}

// Brings the three lists up to the mesh: elements that they hold already are overwritten, the others are appended.
// points[i] is the published point of the mesh's point i.
void publish(const Mesh& mesh, const std::vector<TPoint*>& points, ConvexList& hull, EList& edges, TList& triangles);

// A new TIN with lists of these capacities, filled from the mesh; an exact one is read up by this.
CEType* publishNew(const Mesh& mesh, const std::vector<TPoint*>& points, const Capacities& capacities);
CEType* publishNew(ExactMesh& mesh, const std::vector<TPoint*>& points, const Capacities& capacities);

// A new TIN with three empty lists.
CEType* emptyTIN();

// The points of a list, in order; null ones are left out.
std::vector<TPoint*> pointsOf(PList& list);

}  // namespace detail
}  // namespace OrvikDTM
