// The exact construction: the Delaunay triangulation of whole-millimetre positions, without tolerances. Private.
#pragma once

#include <vector>

#include <OrvikDTMAlgorithm/tin/ExactPlane.h>
#include <OrvikDTMAlgorithm/tin/Mesh.h>
#include <OrvikDTMAlgorithm/tin/Prefetch.h>

inline namespace OrvikDTM {
namespace detail {

// A directed edge: where it starts, and the next and previous edges around that point, counter-clockwise. The same edge
// the other way has the number with the lowest bit flipped.
struct HalfEdge {
  Number origin;
  Number next;
  Number previous;
};

inline Number reversed(Number edge) { return edge ^ 1u; }

// What half-edges describe, numbered by the conventions of every TIN while it is read: first triangle(1), triangle(2)
// and so on, each once, then edges. So a million points need no second copy of it.
class ExactMesh {
 public:
  ExactMesh() = default;

  // From half-edges without gaps in their numbers, and the hull edge that leaves the lowest, then leftmost point
  // counter-clockwise.
  ExactMesh(std::vector<HalfEdge> halves, Number firstHullEdge);

  Number edgeCount() const { return static_cast<Number>(halves_.size() / 2); }
  Number triangleCount() const { return static_cast<Number>((halves_.size() - hull_.size()) / 3); }

  // Edge numbers, counter-clockwise from the lowest, then leftmost point.
  const std::vector<Number>& hull() const { return hull_; }

  // A triangle, whose second edge goes on from the end of the first, so that all who walk along its edges find the
  // corners without a choice; `number` is one more than that of the one asked for before.
  MeshTriangle triangle(Number number) {
    while (triangleOf_[nextToNumber_] != kUnknown) goOn();
    const Number first = nextToNumber_;
    const Number third = before(first);
    const Number second = before(third);
    triangleOf_[first] = triangleOf_[second] = triangleOf_[third] = number;
    if (forward(first) == first) return {{numberOf(first), numberOf(second), numberOf(third)}};
    return {{numberOf(first), numberOf(third), numberOf(second)}};
  }

  // An edge, directed counter-clockwise on the hull, after all triangles have been asked for.
  MeshEdge edge(Number number) const {
    const Number along = forward(2 * (number - 1));
    const Number back = reversed(along);
    return {halves_[along].origin, halves_[back].origin, triangleOf_[along], triangleOf_[back]};
  }

 private:
  static constexpr Number kUnknown = 0xFFFFFFFFu;
  static constexpr Number kOutside = 0;

  static Number numberOf(Number e) { return e / 2 + 1; }

  // The edges around a triangle lie near each other, but not so near that they need not be asked for.
  void goOn() {
    ++nextToNumber_;
    const std::size_t ahead = std::size_t{nextToNumber_} + kPrefetchAhead;
    if (ahead < halves_.size()) prefetch(&halves_[halves_[ahead].next]);
  }

  // The one of e and its reverse that runs as the edge is published.
  Number forward(Number e) const {
    const Number even = e & ~1u;
    return triangleOf_[even] == kOutside ? reversed(even) : even;
  }

  // The edge before e around the triangle on the left of e.
  Number before(Number e) const { return reversed(halves_[e].next); }

  std::vector<HalfEdge> halves_;
  std::vector<Number> triangleOf_;  // to the left of each half-edge
  std::vector<Number> hull_;
  Number nextToNumber_ = 0;
};

struct ExactTriangulation {
  ExactMesh mesh;

  // For each point index of the mesh, the index of its position in the input.
  std::vector<Number> inputIndex;
};

// Triangulates positions that differ from each other by less than 2^55 in each coordinate. One vertex for each
// different position, the first of equal ones; no circle through a triangle's corners has a vertex inside. Without
// triangles when the positions are collinear.
ExactTriangulation triangulateExactly(const std::vector<MillimetrePosition>& positions);

}  // namespace detail
}  // namespace OrvikDTM
