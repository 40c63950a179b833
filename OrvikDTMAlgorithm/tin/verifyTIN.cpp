#include <algorithm>
#include <cmath>
#include <utility>

#include <OrvikDTMAlgorithm/tin/CEType.h>
#include <OrvikDTMAlgorithm/tin/ConvexList.h>
#include <OrvikDTMAlgorithm/tin/DecimalGrid.h>
#include <OrvikDTMAlgorithm/tin/EList.h>
#include <OrvikDTMAlgorithm/tin/MeshCheck.h>
#include <OrvikDTMAlgorithm/tin/PositionSet.h>
#include <OrvikDTMAlgorithm/tin/TConvex.h>
#include <OrvikDTMAlgorithm/tin/TEdge.h>
#include <OrvikDTMAlgorithm/tin/TList.h>
#include <OrvikDTMAlgorithm/tin/Triangle.h>
#include <OrvikDTMAlgorithm/tin/verifyTIN.h>

inline namespace OrvikDTM {

namespace {

using detail::Mesh;
using detail::MeshEdge;
using detail::MillimetrePosition;
using detail::Number;
using detail::Position;
using detail::PositionSet;

// What names nothing: an edge without points stands in for it, so that numbers stay what they are.
constexpr Number kNoPoint = PositionSet::kNone;

Number numberWithin(int number, int count) { return number >= 1 && number <= count ? static_cast<Number>(number) : 0; }

// A published TIN in flat form, its points told apart by position. A list position that holds nothing stays, as an edge
// without points or a triangle without edges.
class FlatTIN {
 public:
  explicit FlatTIN(const CEType& tin) : positions_(0) {
    readEdges(tin.getEList(), tin.getTList());
    readTriangles(tin.getTList());
    readHull(tin.getCList());
  }

  const Mesh& mesh() const { return mesh_; }
  const PositionSet& positions() const { return positions_; }
  bool isWhole(Number edge) const { return edge != 0 && mesh_.edges[edge].start != kNoPoint; }

 private:
  void readEdges(EList* edges, TList* triangles) {
    const int count = edges == nullptr ? 0 : edges->getListLen();
    const int triangleCount = triangles == nullptr ? 0 : triangles->getListLen();
    for (int number = 1; number <= count; ++number) {
      const TEdge* e = edges->findByNum(edges, number);
      if (e == nullptr || e->getStartPoint() == nullptr || e->getEndPoint() == nullptr) {
        mesh_.addEdge(kNoPoint, kNoPoint);
        continue;
      }
      MeshEdge& edge = mesh_.edges[mesh_.addEdge(indexOf(*e->getStartPoint()), indexOf(*e->getEndPoint()))];
      edge.left = numberWithin(e->getLeftT(), triangleCount);
      edge.right = numberWithin(e->getRightT(), triangleCount);
    }
  }

  void readTriangles(TList* triangles) {
    const int count = triangles == nullptr ? 0 : triangles->getListLen();
    for (int number = 1; number <= count; ++number) {
      const Triangle* t = triangles->findByNum(triangles, number);
      const auto edge = [&](int i) {
        return t == nullptr ? 0 : numberWithin(t->getEno()[i], static_cast<int>(mesh_.edgeCount()));
      };
      mesh_.addTriangle(edge(0), edge(1), edge(2));
    }
  }

  void readHull(ConvexList* hull) {
    const int count = hull == nullptr ? 0 : hull->getListLen();
    for (int number = 1; number <= count; ++number) {
      const TConvex* entry = hull->findByNum(hull, number);
      mesh_.hull.push_back(entry == nullptr ? 0
                                            : numberWithin(entry->getEdgeNo(), static_cast<int>(mesh_.edgeCount())));
    }
  }

  Number indexOf(const TPoint& p) { return positions_.insert(detail::positionOf(p)); }

  Mesh mesh_;
  PositionSet positions_;
};

TINCheck faultAt(TINFault fault, Number number) { return {fault, static_cast<int>(number), 0.0}; }

TINCheck checkEdgesExist(const FlatTIN& tin) {
  for (Number triangle = 1; triangle <= tin.mesh().triangleCount(); ++triangle) {
    for (const Number edge : tin.mesh().triangles[triangle].edge) {
      if (!tin.isWhole(edge)) return faultAt(TINFault::MissingEdge, triangle);
    }
  }
  return {};
}

TINCheck checkSlots(const FlatTIN& tin) {
  const Mesh& mesh = tin.mesh();
  if (const Number edge = detail::wrongSlot(mesh); edge != 0) return faultAt(TINFault::WrongSlot, edge);
  for (Number edge = 1; edge <= mesh.edgeCount(); ++edge) {
    const bool isUsed = mesh.edges[edge].left != 0 || mesh.edges[edge].right != 0;
    if (!isUsed && tin.isWhole(edge)) return faultAt(TINFault::UnusedEdge, edge);
  }
  return {};
}

TINCheck checkHull(const FlatTIN& tin) {
  const Mesh& mesh = tin.mesh();
  std::vector<int> entries(mesh.edges.size(), 0);
  for (const Number edge : mesh.hull) ++entries[edge];
  if (entries[0] != 0) return faultAt(TINFault::WrongHull, 0);  // an entry that names no edge
  for (Number edge = 1; edge <= mesh.edgeCount(); ++edge) {
    const int expected = tin.isWhole(edge) && mesh.edges[edge].right == 0 ? 1 : 0;
    const bool isTurned = mesh.edges[edge].left == 0 && mesh.edges[edge].right != 0;
    if (entries[edge] != expected || isTurned) return faultAt(TINFault::WrongHull, edge);
  }
  return {};
}

bool isUsable(const TPoint* p) { return p != nullptr && !std::isnan(p->getX()) && !std::isnan(p->getY()); }

TINCheck checkPoints(const FlatTIN& tin, const std::vector<TPoint*>& points) {
  for (std::size_t i = 0; i < points.size(); ++i) {
    if (!isUsable(points[i])) continue;
    const Position p = detail::positionOf(*points[i]);
    if (tin.positions().find(p) == PositionSet::kNone)
      return faultAt(TINFault::MissingPoint, static_cast<Number>(i + 1));
  }
  return {};
}

TINCheck checkGeometry(const FlatTIN& tin) {
  const std::vector<Position>& positions = tin.positions().positions();
  std::vector<MillimetrePosition> millimetres = detail::wholeMillimetres(positions);
  if (millimetres.size() == positions.size()) {
    return detail::checkGeometry(tin.mesh(), detail::MillimetrePlane(std::move(millimetres)));
  }
  return detail::checkGeometry(tin.mesh(), detail::DoublePlane(positions));
}

// Whether no three of the points span a triangle.
bool areCollinear(const std::vector<TPoint*>& points) {
  const TPoint* first = nullptr;
  const TPoint* second = nullptr;
  for (const TPoint* p : points) {
    if (!isUsable(p)) continue;
    if (first == nullptr) {
      first = p;
    } else if (second == nullptr) {
      if (!first->equals(p)) second = p;
    } else if (detail::orientation(detail::positionOf(*first), detail::positionOf(*second), detail::positionOf(*p)) !=
               0) {
      return false;
    }
  }
  return true;
}

TINCheck verify(const CEType& tin, const std::vector<TPoint*>& points) {
  const FlatTIN flat(tin);
  TINCheck check = checkEdgesExist(flat);
  if (check.valid()) check = checkSlots(flat);
  if (!check.valid()) return check;
  const TINCheck geometry = checkGeometry(flat);
  if (geometry.fault == TINFault::OpenTriangle || geometry.fault == TINFault::NotCounterClockwise) return geometry;
  if (check = checkHull(flat); !check.valid()) return check;
  if (check = checkPoints(flat, points); !check.valid()) return check;
  return geometry;
}

}  // namespace

TINCheck verifyTIN(const CEType& tin) { return verify(tin, {}); }

TINCheck verifyTIN(const CEType& tin, const std::vector<TPoint*>& points) {
  const bool isEmpty = tin.getTList() == nullptr || tin.getTList()->getListLen() == 0;
  if (isEmpty && areCollinear(points)) return verify(tin, {});
  return verify(tin, points);
}

std::string toText(const TINCheck& check) {
  const std::string number = std::to_string(check.number);
  switch (check.fault) {
    case TINFault::None:
      return "valid";
    case TINFault::MissingEdge:
      return "triangle " + number + " names an edge that does not exist";
    case TINFault::WrongSlot:
      return "edge " + number + " and its triangles do not name each other";
    case TINFault::OpenTriangle:
      return "the edges of triangle " + number + " do not close";
    case TINFault::NotCounterClockwise:
      return "triangle " + number + " is not counter-clockwise";
    case TINFault::WrongHull:
      return check.number == 0 ? "the hull names an edge that does not exist"
                               : "the hull list is wrong about edge " + number;
    case TINFault::MissingPoint:
      return "point " + number + " is not a vertex";
    case TINFault::AreaGap:
      return "the triangles do not add up to the convex hull's area";
    case TINFault::UnusedEdge:
      return "edge " + number + " has no triangle";
    case TINFault::Overlap:
      return "triangle " + number + " overlaps another one";
  }
  return "unknown fault";
}

}  // namespace OrvikDTM
