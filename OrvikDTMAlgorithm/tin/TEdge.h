// A directed edge of a TIN between two points, which knows the triangle on each of its sides. All plane tests of the
// construction are the tests of this class, so its tolerance is the numerical character of the whole triangulation.
//
// Guaranteed for all coordinates (the points, other edges and arrays given must not be null, nor may an edge that is
// measured or tested lack a point): no test fails or throws; the side tests use x and y only; point2Line() is 0 exactly
// where isPointInEdge() is true. NOT promised: that a point within the tolerance of a line is near it (the tolerance
// bounds an area, so it is wide for short edges), or anything about coordinates whose products overflow.
#pragma once

#include <OrvikDTMAlgorithm/Export.h>
#include <OrvikDTMAlgorithm/tin/Edits.h>

inline namespace OrvikDTM {

class TPoint;

class ORVIKDTM_API TEdge {
 public:
  // An edge from start to end with no triangle on either side. The points are not owned.
  TEdge(TPoint* start, TPoint* end) : TEdge(start, end, 0, 0) {}

  // An edge with these triangles to its left and right.
  TEdge(TPoint* start, TPoint* end, int left, int right) : triNo_{left, right}, startPoint_(start), endPoint_(end) {}

  TEdge(const TEdge&) = default;
  TEdge& operator=(const TEdge& other) noexcept {
    detail::Edits::noteInBlock(this);
    triNo_[0] = other.triNo_[0];
    triNo_[1] = other.triNo_[1];
    startPoint_ = other.startPoint_;
    endPoint_ = other.endPoint_;
    return *this;
  }

  TPoint* getStartPoint() const { return startPoint_; }
  TPoint* getEndPoint() const { return endPoint_; }
  void setStartPoint(TPoint* p) {
    detail::Edits::noteInBlock(this);
    startPoint_ = p;
  }
  void setEndPoint(TPoint* p) {
    detail::Edits::noteInBlock(this);
    endPoint_ = p;
  }

  // The number of the triangle to the left and to the right of start -> end; 0 means none. Hull edges run
  // counter-clockwise around the TIN, so their right number is 0.
  int getLeftT() const { return triNo_[0]; }
  int getRightT() const { return triNo_[1]; }
  void setLeftT(int t) {
    detail::Edits::noteInBlock(this);
    triNo_[0] = t;
  }
  void setRightT(int t) {
    detail::Edits::noteInBlock(this);
    triNo_[1] = t;
  }

  // Both numbers, left then right: the edge's own array, and a copy of two numbers into it. Through the first, which
  // may be written to for as long as the edge lives, every query has to look whether it has been: read a const TEdge.
  int* getTriNo() {
    detail::Edits::noteHandedOut(this);
    return triNo_;
  }
  const int* getTriNo() const { return triNo_; }
  void setTriNo(const int* two) {
    detail::Edits::noteInBlock(this);
    triNo_[0] = two[0];
    triNo_[1] = two[1];
  }

  // Plan length and spatial length, in coordinate units, and their squares.
  double getLength() const;
  double getLength2() const;
  double getLength3D() const;
  double getLength2_3D() const;

  // The angle between the edge and the positive x axis in [0, pi], rounded up to ten decimals: directions that differ
  // by less than about 1e-10 rad compare equal, and an edge that points down has the angle of its mirror image. 0 for
  // an edge without length.
  double getAngleByX() const;

  // True when p lies on the infinite line of the edge: exactly (a vertical or horizontal edge), or within
  // kLineTolerance.
  bool isPointInEdge(const TPoint* p) const;

  // The side of p as seen along start -> end: -1 left, 1 right, 0 within kLineTolerance (an area, in squared coordinate
  // units, so it is not a distance and does not scale with the edge). -1 when a coordinate is NaN.
  int point2Line(const TPoint* p) const;

  // True when p has exactly the plan position of one of the two end points.
  bool containPoint(const TPoint* p) const;

  // The smaller and the larger height of the two end points.
  double getMinZ() const;
  double getMaxZ() const;

  // 1 when other joins the same plan positions in the same direction, -1 in the opposite one, 0 otherwise. Exact.
  int isSameLine(const TEdge* other) const;

  // Elements of a published list may lie in a block of many; deleting one is right wherever it came from.
  static void operator delete(void* edge) noexcept;

  // Does nothing: a hook kept for hosts that call it.
  void show(TEdge* edge);

 private:
  int triNo_[2];
  TPoint* startPoint_;
  TPoint* endPoint_;
};

}  // namespace OrvikDTM
