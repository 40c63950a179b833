// A TIN as flat arrays, for what visits many triangles: location, heights, comparisons. It is a copy: it holds what the
// lists and points said when it was made and needs them no more. Private.
#pragma once

#include <algorithm>
#include <cstdint>
#include <memory>
#include <vector>

#include <OrvikDTMAlgorithm/tin/HullRing.h>
#include <OrvikDTMAlgorithm/tin/Mesh.h>

inline namespace OrvikDTM {

class CEType;

namespace detail {

class FlatTIN {
 public:
  // The corners as every operation takes them: the ends of the first edge, then the end of the second edge that is
  // neither.
  struct Corners {
    Position p[3];
    double z[3];
  };

  // A copy of the TIN as its lists and points are now.
  static std::shared_ptr<const FlatTIN> of(const CEType& tin);

  int triangleCount() const { return static_cast<int>(records_.size()); }

  // Null for a triangle that does not exist or whose first two edges cannot be measured.
  const Corners* corners(int tri) const {
    return exists(tri) && record(tri).hasCorners ? &record(tri).corners : nullptr;
  }

  // 1 when the corners turn counter-clockwise, -1 clockwise, 0 when they are exactly collinear or not all finite.
  int turn(int tri) const { return record(tri).turn; }

  // The triangle across edge `which` (0..2) of an existing triangle; 0 where none is.
  int neighbour(int tri, int which) const;

  // The answers of CEType::locateTri and locateTri1, the same to the last triangle; `last` stands for the triangle
  // found last and is changed as theirs is.
  int locate(double x, double y, int& last) const;
  int locate(double x, double y, int start, int& last) const;
  int scan(double x, double y, int& last) const;

  // The height of the plane of triangle `tri`; DBL_MAX for 0 and for what does not exist.
  double height(int tri, double x, double y) const;

  // Whether the triangle contains (x, y) by exact signs, boundary included; a flat triangle holds nothing.
  bool holds(int tri, double x, double y) const;

  // Whether the area test accepts (x, y) in the triangle.
  bool acceptsByArea(int tri, double x, double y) const;

  // Calls visit(tri) for a superset of the triangles whose boxes meet [minX, maxX] x [minY, maxY], each once.
  template <typename Visit>
  void visitBoxes(double minX, double minY, double maxX, double maxY, Visit visit) const {
    for (int tri = 1; tri <= triangleCount(); ++tri) {
      const Corners* c = corners(tri);
      if (c == nullptr) continue;
      const auto [lowX, highX] = std::minmax({c->p[0].x, c->p[1].x, c->p[2].x});
      const auto [lowY, highY] = std::minmax({c->p[0].y, c->p[1].y, c->p[2].y});
      if (lowX <= maxX && highX >= minX && lowY <= maxY && highY >= minY) visit(tri);
    }
  }

  // Whether this is still a copy of that TIN, as far as the lengths of its lists and its hull tell.
  bool isCopyOf(const CEType& tin) const;

 private:
  // An edge of a triangle that joins two of its corners.
  struct Way {
    std::uint8_t from : 2;
    std::uint8_t to : 2;
    std::uint8_t leavesToTheLeft : 1;  // the walk leaves the triangle over it for what lies on the edge's left
  };

  struct Record {
    Corners corners{};
    int next[3]{};  // across each edge, 0 for none; of an odd triangle the first is its place in odd_
    Way ways[3]{};
    std::int8_t turn : 2 = 0;
    std::uint8_t hasCorners : 1 = 0;
    std::uint8_t isOdd : 1 = 0;  // its edges do not close over its corners, or one of them cannot be measured
  };

  // The edges of an odd triangle as they are.
  struct OddEdge {
    bool isWhole = false;
    bool leavesToTheLeft = false;
    int next = 0;
    Position start{};
    Position end{};
  };
  struct OddTriangle {
    OddEdge edges[3];
  };

  struct WalkEnd {
    int found;
    int last;
  };

  bool exists(int tri) const { return tri >= 1 && tri <= triangleCount(); }
  const Record& record(int tri) const { return records_[static_cast<std::size_t>(tri - 1)]; }
  static OddEdge oddEdgeOf(const CEType& tin, int tri, int which);
  void addTriangle(const CEType& tin, int tri);
  WalkEnd walk(int start, const Position& p) const;
  OddEdge edgeOf(int tri, int which) const;
  int nextOnWalk(int tri, const Position& p) const;
  int beyondFlat(int tri, const Position& p) const;
  bool isFlat(int tri) const { return record(tri).hasCorners && record(tri).turn == 0; }

  std::vector<Record> records_;
  std::vector<OddTriangle> odd_;
  std::shared_ptr<const HullRing> hull_;
  int edgeCount_ = 0;
};

}  // namespace detail
}  // namespace OrvikDTM
