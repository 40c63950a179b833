// A TIN as flat arrays, for what visits many triangles: location, heights, comparisons. It is a copy: it holds what the
// lists and points said when it was made and needs them no more. Private.
#pragma once

#include <cstdint>
#include <memory>
#include <vector>

#include <OrvikDTMAlgorithm/tin/AreaTest.h>
#include <OrvikDTMAlgorithm/tin/BoxTree.h>
#include <OrvikDTMAlgorithm/tin/HullCells.h>
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

  // Calls visit(tri) for a superset of the triangles with finite corners whose boxes meet [minX, maxX] x [minY, maxY],
  // each once, in no particular order. The first call builds an index.
  template <typename Visit>
  void visitBoxes(double minX, double minY, double maxX, double maxY, Visit visit) const {
    index().boxes.visit({minX, minY, maxX, maxY}, [&visit](Number tri) { visit(static_cast<int>(tri)); });
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

  // Where a walk stands: in a triangle that holds the point, in one that it cannot leave, or on its way.
  struct Walk {
    enum class State { kOnTheWay, kFound, kStuck };
    int tri = 0;
    int movesLeft = 0;
    State state = State::kOnTheWay;
    bool hasLeftFlat = false;
    // The triangle that the walk was in before its latest power of two moves: to come back there is to go in a circle.
    int mark = 0;
    int movesToNextMark = 1;
    int movesSinceMark = 0;
  };

  // What holds a point.
  struct Holders {
    int first = 0;
    int count = 0;
  };

  // The triangles found by their boxes.
  struct Index {
    BoxTree boxes;     // of all triangles, with a little of what the area test reaches beyond,
    BoxTree farBoxes;  // and of those whose area test reaches farther
    AreaReach reach;
  };

  // A triangle near any place.
  struct Starts {
    CellGrid grid;
    std::vector<Number> triangles;
  };

  bool exists(int tri) const { return tri >= 1 && tri <= triangleCount(); }
  const Record& record(int tri) const { return records_[static_cast<std::size_t>(tri - 1)]; }
  static OddEdge oddEdgeOf(const CEType& tin, int tri, int which);
  void addTriangle(const CEType& tin, int tri);
  bool isCovering(const CEType& tin, const std::shared_ptr<const HullRing>& ring) const;
  OddEdge edgeOf(int tri, int which) const;
  bool isFlat(int tri) const { return record(tri).hasCorners && record(tri).turn == 0; }

  Walk walkFrom(int tri) const {
    Walk walk;
    walk.tri = tri;
    walk.movesLeft = triangleCount() + 1;
    return walk;
  }
  void goOn(Walk& walk, const Position& p, int moves) const;
  static void watchForCircle(Walk& walk);
  int nextOnWalk(int tri, const Position& p, bool& isHeld) const;
  int nextOnWalkFromOdd(int tri, const Position& p) const;
  int beyondFlat(int tri, const Position& p) const;
  bool holdsStrictly(int tri, const Position& p) const;
  int fromStart(const Position& p) const;

  // The place of a triangle in the order of a scan.
  struct ScanOrder;
  Holders holdersOf(const Position& p, const ScanOrder& order) const;
  Holders holdersOf(const Position& p) const;
  int firstAccepting(const Position& p, const ScanOrder& order) const;

  const Index& index() const;
  const Starts& starts() const;

  std::vector<Record> records_;
  std::vector<OddTriangle> odd_;
  std::shared_ptr<const HullRing> hull_;
  HullCells hullCells_;
  int edgeCount_ = 0;

  // Whether every point, but for those on edges, lies in as many triangles as the ring goes round it.
  bool covers_ = false;

  // Made when they are first needed.
  mutable std::unique_ptr<const Index> index_;
  mutable std::unique_ptr<const Starts> starts_;
};

}  // namespace detail
}  // namespace OrvikDTM
