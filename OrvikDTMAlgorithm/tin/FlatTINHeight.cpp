// Heights on the plane of a triangle, and the vertices at which they are those surveyed.
#include <algorithm>
#include <cfloat>
#include <cmath>

#include <OrvikDTMAlgorithm/tin/ExactPlane.h>
#include <OrvikDTMAlgorithm/tin/FlatTIN.h>
#include <OrvikDTMAlgorithm/tin/TrianglePlane.h>

inline namespace OrvikDTM {
namespace detail {

double FlatTIN::height(int tri, double x, double y) const {
  const Corners* c = corners(tri);
  return c == nullptr ? DBL_MAX : TrianglePlane(*c).height(x, y);
}

const Position* FlatTIN::vertexBeside(const Position& p) const {
  if (movedVertices_ == nullptr) {
    double largest = 0.0;
    const auto forEachVertex = [this](auto visit) {
      for (const Record& r : records_) {
        if (!r.hasCorners) continue;
        for (const Position& corner : r.corners.p) {
          if (std::fabs(corner.x) <= kLargestInMillimetres && std::fabs(corner.y) <= kLargestInMillimetres) {
            visit(corner);
          }
        }
      }
    };
    forEachVertex([&largest](const Position& v) { largest = std::max({largest, std::fabs(v.x), std::fabs(v.y)}); });
    auto moved = std::make_unique<MovedVertices>(largest);
    forEachVertex([&moved](const Position& v) { moved->add(v); });
    forEachVertex([&moved](const Position& v) { moved->keepPlaceOf(v); });
    movedVertices_ = std::move(moved);
  }
  return movedVertices_->find(p);
}

bool FlatTIN::hasVertexAt(int tri, const Position& p) const {
  const Corners* c = corners(tri);
  return c != nullptr && std::any_of(std::begin(c->p), std::end(c->p),
                                     [&p](const Position& corner) { return samePosition(corner, p); });
}

}  // namespace detail
}  // namespace OrvikDTM
