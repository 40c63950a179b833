#include <algorithm>
#include <cmath>

#include <OrvikDTMAlgorithm/tin/SideOfLine.h>
#include <OrvikDTMAlgorithm/tin/Sweep.h>
#include <OrvikDTMAlgorithm/tin/SweepWatch.h>

inline namespace OrvikDTM {
namespace detail {

namespace {

Side sideOf(const Mesh& mesh, Number edge, Number point) {
  const MeshEdge& e = mesh.edges[edge];
  const Position& s = mesh.points[e.start];
  const Position& t = mesh.points[e.end];
  const Position& p = mesh.points[point];
  return sideOfLine(s.x, s.y, t.x, t.y, p.x, p.y);
}

// The hull entries from the second on, as far as the first point lies on their lines without a gap.
//
// The walk for visible edges cannot stop at such an entry unless the new point lies on its line, and never deletes it
// otherwise, so a survey that begins with a long straight run (a grid's first row) would have it walked again for every
// point. This keeps, for every prefix of the run, bounds that tell of most points that they lie on none of its lines.
class LeadingRun {
 public:
  explicit LeadingRun(const Mesh& mesh) : mesh_(mesh) {}

  // The number of the last entry of the run; 1 when it is empty.
  std::size_t last() const { return bounds_.size() + 1; }

  // Forgets the entries after number `hullLength`, and takes in those that have come to continue the run; the closing
  // edge belongs to no run.
  void follow(std::size_t hullLength) {
    bounds_.resize(std::min(bounds_.size(), hullLength > 1 ? hullLength - 1 : 0));
    while (last() + 1 < mesh_.hull.size() && sideOf(mesh_, entry(last() + 1), kLowest) == kOnLine)
      append(entry(last() + 1));
  }

  // True when `point` certainly lies on the line of none of the entries 2..number.
  //
  // Let d be an entry's direction, q the way from the lowest point to `point`, both in the frame of the run (along,
  // across). The exact cross product of the side test is d x q plus that of the lowest point, and d x q >= smallest
  // along * q.across - largest |across| * |q.along|. Both crosses are computed with some noise.
  bool misses(std::size_t number, Number point) const {
    const Position& origin = mesh_.points[kLowest];
    const Position& p = mesh_.points[point];
    const Position q = inFrame({p.x - origin.x, p.y - origin.y});
    const Bounds& b = bounds_[number - 2];
    const double extent = std::max({b.extent, std::fabs(p.x), std::fabs(p.y)});
    const double noise = kNoisePerSquaredExtent * extent * extent;
    return q.y > 0 && b.smallestAlong > 0 &&
           b.smallestAlong * q.y - b.largestAcross * std::fabs(q.x) > kLineTolerance + b.largestMiss + noise;
  }

 private:
  static constexpr Number kLowest = 0;

  // Twice 32 * 2^-53, the bound on the rounding of one expanded cross product of coordinates up to 1, and as much again
  // for the turn into the run's frame: about 1.4e-14.
  static constexpr double kNoisePerSquaredExtent = 2e-14;

  struct Bounds {
    double smallestAlong;
    double largestAcross;
    double largestMiss;  // of the lowest point's cross products, which lie within the tolerance
    double extent;       // of the run's coordinates
  };

  Number entry(std::size_t number) const { return mesh_.hull[number - 1]; }

  Position inFrame(const Position& d) const {
    return {d.x * direction_.x + d.y * direction_.y, d.y * direction_.x - d.x * direction_.y};
  }

  void append(Number edge) {
    const Position& s = mesh_.points[mesh_.edges[edge].start];
    const Position& t = mesh_.points[mesh_.edges[edge].end];
    if (bounds_.empty()) setDirection({t.x - mesh_.points[kLowest].x, t.y - mesh_.points[kLowest].y});
    const Position d = inFrame({t.x - s.x, t.y - s.y});
    const Position& origin = mesh_.points[kLowest];
    Bounds b{d.x, std::fabs(d.y), std::fabs(expandedCross(s.x, s.y, t.x, t.y, origin.x, origin.y)), 0.0};
    for (const Position& p : {s, t, origin}) b.extent = std::max({b.extent, std::fabs(p.x), std::fabs(p.y)});
    if (!bounds_.empty()) {
      b.smallestAlong = std::min(b.smallestAlong, bounds_.back().smallestAlong);
      b.largestAcross = std::max(b.largestAcross, bounds_.back().largestAcross);
      b.largestMiss = std::max(b.largestMiss, bounds_.back().largestMiss);
      b.extent = std::max(b.extent, bounds_.back().extent);
    }
    bounds_.push_back(b);
  }

  void setDirection(const Position& d) {
    const double length = std::sqrt(d.x * d.x + d.y * d.y);
    direction_ = {d.x / length, d.y / length};
  }

  const Mesh& mesh_;
  Position direction_{1.0, 0.0};
  std::vector<Bounds> bounds_;  // of the entries 2.., each with all before it
};

// One run of the sweep over a mesh.
class Sweeper {
 public:
  explicit Sweeper(Mesh& mesh) : mesh_(mesh), run_(mesh) { run_.follow(mesh.hull.size()); }

  void add(Number point) {
    if (sideOf(mesh_, mesh_.hull.back(), point) == kOnLine) {
      splitLastTriangle(point);
    } else if (const std::size_t stop = lastHiddenEntry(point); stop >= 1) {
      const Number from = mesh_.edges[mesh_.hull[stop - 1]].end;
      join(from, point, stop);
    } else if (const std::size_t first = firstEntryOffRun(); first != 0) {
      const Number from = mesh_.edges[mesh_.hull[first - 1]].start;
      join(from, point, first - 1);
    }
  }

 private:
  static constexpr Number kLowest = 0;

  // The point lies on the closing edge, between the lowest point and the previous one: it takes the far end of that
  // edge, and what was the last triangle becomes two.
  void splitLastTriangle(Number point) {
    const Number closing = mesh_.hull.back();
    mesh_.edges[closing].end = point;
    const Number previous = mesh_.edges[closing].start;
    const Number last = mesh_.triangleCount();
    const Number far = mesh_.triangles[last].edge[2];
    const MeshEdge& second = mesh_.edges[mesh_.triangles[last].edge[1]];
    const bool startsAtPrevious = samePosition(mesh_.points[second.start], mesh_.points[previous]);
    const Number apex = startsAtPrevious ? second.end : second.start;

    const Number inner = mesh_.addEdge(point, apex);
    mesh_.triangles[last].edge[2] = inner;
    mesh_.edges[inner].left = last;
    const Number newClosing = mesh_.addEdge(point, kLowest);
    mesh_.hull.push_back(newClosing);
    const Number added = mesh_.addTriangle(newClosing, inner, far);
    mesh_.edges[newClosing].left = added;
    mesh_.edges[inner].right = added;
    // Edge 1 is the run's first edge, with the TIN on its left; any other far edge was a closing edge once.
    (far == 1 ? mesh_.edges[far].left : mesh_.edges[far].right) = added;
    run_.follow(mesh_.hull.size());
  }

  // Walks back from the entry before the closing edge over the entries that the point sees, and returns the number of
  // the one that it does not; 0 when it sees them all.
  std::size_t lastHiddenEntry(Number point) const {
    std::size_t number = mesh_.hull.size() - 1;
    for (; number >= 1; --number) {
      if (number >= 2 && number <= run_.last() && run_.misses(number, point)) number = 1;
      const Number edge = mesh_.hull[number - 1];
      const Side side = sideOf(mesh_, edge, point);
      if (side == kOnLine || side == sideOf(mesh_, edge, kLowest)) break;
    }
    return number;
  }

  // The first entry from the second on whose line misses the lowest point; 0 when there is none.
  std::size_t firstEntryOffRun() const {
    const std::size_t number = run_.last() + 1;
    if (number > mesh_.hull.size() || sideOf(mesh_, mesh_.hull[number - 1], kLowest) == kOnLine) return 0;
    return number;
  }

  // Joins the point to all hull edges after entry `kept`, the first of which starts at `from`, and closes the hull
  // through it.
  void join(Number from, Number point, std::size_t kept) {
    const Number first = mesh_.addEdge(from, point);
    Number diagonal = first;
    for (std::size_t i = kept; i < mesh_.hull.size(); ++i) {
      const Number visible = mesh_.hull[i];
      const Number next = mesh_.addEdge(point, mesh_.edges[visible].end);
      const Number added = mesh_.addTriangle(next, diagonal, visible);
      mesh_.edges[next].left = added;
      (diagonal == first ? mesh_.edges[diagonal].left : mesh_.edges[diagonal].right) = added;
      mesh_.edges[visible].right = added;
      diagonal = next;
    }
    mesh_.hull.resize(kept);
    mesh_.hull.push_back(first);
    mesh_.hull.push_back(diagonal);
    run_.follow(kept);
  }

  Mesh& mesh_;
  LeadingRun run_;
};

}  // namespace

Number startFan(Mesh& mesh) {
  const auto n = static_cast<Number>(mesh.points.size());
  if (n < 3) return 0;
  const Position& a = mesh.points[0];
  const Position& b = mesh.points[1];
  Number apex = 2;
  while (apex < n && sideOfLine(a.x, a.y, b.x, b.y, mesh.points[apex].x, mesh.points[apex].y) == kOnLine) ++apex;
  if (apex == n) return 0;

  for (Number i = 0; i < apex; ++i) mesh.hull.push_back(mesh.addEdge(i, i + 1));
  for (Number i = apex - 1; i-- > 0;) {
    const Number previous = mesh.edgeCount();
    const Number diagonal = mesh.addEdge(apex, i);
    const Number chain = i + 1;
    const Number added = mesh.addTriangle(diagonal, previous, chain);
    mesh.edges[diagonal].left = added;
    (mesh.edges[previous].left == 0 ? mesh.edges[previous].left : mesh.edges[previous].right) = added;
    mesh.edges[chain].left = added;
  }
  mesh.hull.push_back(mesh.edgeCount());
  return apex + 1;
}

bool sweep(Mesh& mesh, Number fanEnd, SweepWatch* watch) {
  if (watch != nullptr) return beginSweep(mesh, fanEnd, *watch) && watch->allowsEnd();
  Sweeper sweeper(mesh);
  for (auto point = fanEnd; point < mesh.points.size(); ++point) sweeper.add(point);
  return true;
}

bool beginSweep(Mesh& mesh, Number fanEnd, SweepWatch& watch) {
  Sweeper sweeper(mesh);
  for (auto point = fanEnd; point < mesh.points.size(); ++point) {
    sweeper.add(point);
    if (!watch.allowsNext()) return false;
  }
  return true;
}

}  // namespace detail
}  // namespace OrvikDTM
