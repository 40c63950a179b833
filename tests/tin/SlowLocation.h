// Location and heights the slow way, straight from the lists of a network: every triangle is looked at, every walk is
// walked to its end, every division is carried out. What the library names and answers is held against it.
#pragma once

#include <vector>

#include <OrvikDTMAlgorithm/tin/CEType.h>
#include <OrvikDTMAlgorithm/tin/TPoint.h>

namespace slow {

class Location {
 public:
  explicit Location(const CEType& tin) : tin_(tin) {}

  int locateTri(double x, double y);
  int locateTri(double x, double y, int start);
  int locateTri1(double x, double y);
  double getHeight(double x, double y);
  int lastFound() const { return last_; }

  bool holds(int tri, const TPoint& p) const;
  bool acceptsByArea(int tri, const TPoint& p) const;

 private:
  struct Edge {
    const TPoint* start;
    const TPoint* end;
    int left;
    int right;
  };
  struct WalkEnd {
    int found;
    int last;
  };

  int triangleCount() const;
  bool edgeOf(int tri, int which, Edge& edge) const;
  bool cornersOf(int tri, const TPoint* (&corners)[3]) const;
  bool isFlat(int tri) const;
  bool isInHull(const TPoint& p);
  void chainHull();
  int nextOnWalk(int tri, const TPoint& p) const;
  int beyondFlat(int tri, const TPoint& p) const;
  WalkEnd walk(int start, const TPoint& p) const;

  const CEType& tin_;
  int last_ = 1;
  bool hullIsInvalid_ = false;
  std::vector<TPoint> hull_;
};

}  // namespace slow
