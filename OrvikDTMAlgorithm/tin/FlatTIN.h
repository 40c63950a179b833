// A TIN as flat arrays, for what visits many triangles: location, heights, comparisons. It is a copy: it holds what the
// lists and points said when it was made and needs them no more. Private.
#pragma once

#include <atomic>
#include <cstdint>
#include <memory>
#include <optional>
#include <vector>

#include <OrvikDTMAlgorithm/tin/AreaTest.h>
#include <OrvikDTMAlgorithm/tin/BoxTree.h>
#include <OrvikDTMAlgorithm/tin/EditLog.h>
#include <OrvikDTMAlgorithm/tin/HullCells.h>
#include <OrvikDTMAlgorithm/tin/HullRing.h>
#include <OrvikDTMAlgorithm/tin/MadeOnce.h>
#include <OrvikDTMAlgorithm/tin/Mesh.h>
#include <OrvikDTMAlgorithm/tin/MovedVertices.h>
#include <OrvikDTMAlgorithm/tin/Orientation.h>
#include <OrvikDTMAlgorithm/tin/SideTree.h>

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
  static std::shared_ptr<FlatTIN> of(const CEType& tin);

  int triangleCount() const { return static_cast<int>(slots_.size()); }

  // Null for a triangle that does not exist or whose first two edges cannot be measured.
  const Corners* corners(int tri) const { return exists(tri) ? cornersAt(slotOf(tri)) : nullptr; }

  // Of an existing triangle: 1 when the corners turn counter-clockwise, -1 clockwise, 0 when they are exactly collinear
  // or not all finite.
  int turn(int tri) const { return at(slotOf(tri)).turn; }

  // The triangle across edge `which` (0..2) of an existing triangle; 0 where none is.
  int neighbour(int tri, int which) const { return numberOf(edgeAt(slotOf(tri), which).next); }

  // The answers of CEType::locateTri and locateTri1, the same to the last triangle; `last` stands for the triangle
  // found last and is changed as theirs is.
  int locate(double x, double y, int& last) const;
  int locate(double x, double y, int start, int& last) const;
  int scan(double x, double y, int& last) const;

  // The height of the plane of triangle `tri`; DBL_MAX for 0 and for what does not exist.
  double height(int tri, double x, double y) const;

  // Whether the triangle contains (x, y) by exact signs, boundary included; a flat triangle holds nothing.
  bool holds(int tri, double x, double y) const { return exists(tri) && holdsAt(slotOf(tri), {x, y}); }

  // The same without the boundary.
  bool holdsStrictly(int tri, const Position& p) const { return exists(tri) && holdsStrictlyAt(slotOf(tri), p); }

  // Whether a point strictly inside a triangle is known to lie in no other one: then a location of it that does not
  // start from a given triangle names that triangle, wherever it starts.
  bool coversOnce() const;

  // Whether that is known of a network whose outline is convex.
  bool coversConvexOnce() const;

  // Whether the area test accepts (x, y) in the triangle.
  bool acceptsByArea(int tri, double x, double y) const { return exists(tri) && acceptsAt(slotOf(tri), {x, y}); }

  // Calls visit(tri) for a superset of the triangles with finite corners whose boxes meet [minX, maxX] x [minY, maxY],
  // each once, in no particular order. The first call builds an index.
  template <typename Visit>
  void visitBoxes(double minX, double minY, double maxX, double maxY, Visit visit) const {
    index().boxes.visit({minX, minY, maxX, maxY}, [&](Number slot) { visit(at(static_cast<int>(slot)).number); });
  }

  // How this differs from what a copy of that TIN would be now: not at all, in heights alone, or otherwise. Every
  // element is looked at.
  enum class Difference { kNone, kHeights, kOther };
  Difference differenceFrom(const CEType& tin) const;

  // Takes over the heights, which are the only difference.
  void takeHeights(const CEType& tin);

  // The memory of the elements and points that the TIN's lists name. It is looked up once after every copy or
  // comparison.
  struct Memory {
    AddressRange points;
    AddressRange edges;
    AddressRange triangles;
    AddressRange hullEntries;

    bool meets(const AddressRange& range) const {
      return range.meets(points) || range.meets(edges) || range.meets(triangles) || range.meets(hullEntries);
    }
  };
  const Memory& memoryOf(const CEType& tin) const;
  void forgetMemory() const { memory_.reset(); }

  // Whether the numbers that edges and triangles of the TIN hold are those of the first call, at which the copy must be
  // known to be one: all of them, or those of one triangle and its edges.
  bool hasNumbersOf(const CEType& tin) const;
  bool hasNumbersOf(const CEType& tin, int tri) const;

  // The vertex that a position of whole thousandths stands for: one that lies beside it by no more than moving to a
  // local origin and back rounds off. Null when there is none, or one is at the position itself. The first call looks
  // at every vertex.
  const Position* vertexBeside(const Position& p) const;

  // Whether a vertex of triangle `tri` is at the position exactly.
  bool hasVertexAt(int tri, const Position& p) const;

  // Whether it is known without a look at the triangles that (x, y) is in none.
  bool isOutside(double x, double y) const;

 private:
  // An edge of a triangle that joins two of its corners.
  struct Way {
    std::uint8_t from : 2;
    std::uint8_t to : 2;
    std::uint8_t leavesToTheLeft : 1;  // the walk leaves the triangle over it for what lies on the edge's left
  };

  // Records lie in the order of a curve through the plane, lest every move of a walk wait for memory. A record's place
  // in that order, counted from 1, is the triangle's slot; the private functions name triangles by their slots, 0 for
  // none. What a walk reads comes first.
  struct alignas(32) Record {
    int next[3]{};  // the slot across each edge, 0 for none; of an odd triangle the first is its place in odd_
    Way ways[3]{};
    std::int8_t turn : 2 = 0;
    std::uint8_t hasCorners : 1 = 0;
    std::uint8_t isPlain : 1 = 0;  // it has an area, and lies on the side of each edge that the edge says
    std::uint8_t isOdd : 1 = 0;    // its edges do not close over its corners, or one of them cannot be measured
    Corners corners{};
    int number = 0;
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
    int slot = 0;
    int movesLeft = 0;
    State state = State::kOnTheWay;
    bool hasLeftFlat = false;
    // The triangle that the walk was in before its latest power of two moves: to come back there is to go in a circle.
    int mark = 0;
    int movesToNextMark = 1;
    int movesSinceMark = 0;
  };

  // The slots of what holds a point.
  struct Holders {
    int first = 0;
    int count = 0;
  };

  // The triangles, by their slots, found by their boxes.
  struct Index {
    BoxTree boxes;     // of all triangles, with a little of what the area test reaches beyond,
    BoxTree farBoxes;  // and of those whose area test reaches farther
    AreaReach reach;
  };

  // A triangle's slot near any place.
  struct Starts {
    CellGrid grid;
    std::vector<Number> slots;
  };

  bool exists(int tri) const { return tri >= 1 && tri <= triangleCount(); }
  int slotOf(int tri) const { return static_cast<int>(slots_[static_cast<std::size_t>(tri - 1)]); }
  int numberOf(int slot) const { return slot == 0 ? 0 : at(slot).number; }
  const Record& at(int slot) const { return records_[static_cast<std::size_t>(slot - 1)]; }
  const Corners* cornersAt(int slot) const { return at(slot).hasCorners ? &at(slot).corners : nullptr; }
  bool isFlatAt(int slot) const { return at(slot).hasCorners && at(slot).turn == 0; }
  bool holdsAt(int slot, const Position& p) const;
  bool holdsStrictlyAt(int slot, const Position& p) const;
  bool acceptsAt(int slot, const Position& p) const;
  OddEdge edgeAt(int slot, int which) const;

  void chooseSlots(const CEType& tin);
  OddEdge oddEdgeOf(const CEType& tin, int tri, int which) const;
  Difference differenceAt(const CEType& tin, int slot) const;
  bool sameEdge(const OddEdge& a, const OddEdge& b) const;
  static bool isPlain(const Record& record);
  void addTriangle(const CEType& tin, int tri);
  bool isCovering(const CEType& tin, const std::shared_ptr<const HullRing>& ring) const;

  Walk walkFrom(int slot) const {
    Walk walk;
    walk.slot = slot;
    walk.movesLeft = triangleCount() + 1;
    return walk;
  }
  void goOn(Walk& walk, const Position& p, int moves) const;
  static void watchForCircle(Walk& walk);
  int nextOnWalk(int slot, const Position& p, bool& isHeld) const;
  void prefetchNeighbours(const Record& record) const;
  int nextOnWalkWithCare(int slot, const Position& p, bool& isHeld) const;
  int nextOnWalkFromOdd(int slot, const Position& p) const;
  int beyondFlat(int slot, const Position& p) const;
  bool isNear(int slot, const Position& p) const;
  int fromStart(const Position& p) const;
  void goOnInsteadOfIndex(Walk& walk, const Position& p) const;
  int fromSides(const Position& p) const;
  bool isCrowded() const;

  // The place of a triangle in the order of a scan.
  struct ScanOrder;
  Holders holdersOf(const Position& p, const ScanOrder& order) const;
  Holders holdersOf(const Position& p) const;
  int firstAccepting(const Position& p, const ScanOrder& order) const;

  const Index& index() const {
    return index_.get([this] { return newIndex(); });
  }
  const Starts& starts() const {
    return starts_.get([this] { return newStarts(); });
  }
  const SideTree& sides() const {
    return sides_.get([this] { return newSides(); });
  }
  std::unique_ptr<const Index> newIndex() const;
  std::unique_ptr<const Starts> newStarts() const;
  std::unique_ptr<const SideTree> newSides() const;

  std::vector<Number> slots_;
  std::vector<Record> records_;
  std::vector<OddTriangle> odd_;
  std::shared_ptr<const HullRing> hull_;
  HullCells hullCells_;
  int edgeCount_ = 0;
  std::vector<int> hullEdges_;  // the edge that each entry of the hull list names

  // Whether every point, but for those on edges, lies in as many triangles as the ring goes round it.
  bool covers_ = false;

  // Made when they are first needed, for queries of the TIN alone.
  mutable std::optional<Memory> memory_;

  // The vertices beside whole thousandths, by these.
  mutable std::unique_ptr<const MovedVertices> movedVertices_;

  // The edge numbers of all triangles, and the triangle numbers of all edges.
  struct Numbers {
    std::vector<int> edges;
    std::vector<int> triangles;
  };
  mutable std::unique_ptr<const Numbers> numbers_;

  // What follows changes although the copy does not: a TIN and the comparisons in which it took part may have one copy,
  // and go on different threads. No answer depends on the two counts, only the way to it.
  MadeOnce<Index> index_;
  MadeOnce<Starts> starts_;
  MadeOnce<SideTree> sides_;

  mutable std::atomic<int> movesInsteadOfIndex_ = 0;

  // How many triangles have been tested, beyond the few that a query is worth, because their boxes hold a point.
  mutable std::atomic<std::size_t> testedInVain_ = 0;
};

}  // namespace detail
}  // namespace OrvikDTM
