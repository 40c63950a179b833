#include <cstddef>
#include <utility>

#include <OrvikDTMAlgorithm/tin/FlipQueue.h>
#include <OrvikDTMAlgorithm/tin/FlipTests.h>
#include <OrvikDTMAlgorithm/tin/FlipWatch.h>
#include <OrvikDTMAlgorithm/tin/FlipsByPosition.h>

inline namespace OrvikDTM {
namespace detail {

namespace {

// An outer edge of the two triangles, as it leaves one end of their common edge.
struct OuterEdge {
  Number number;
  bool outward;  // it starts at that end of the common edge
};

class PositionFlipper {
 public:
  PositionFlipper(Mesh& mesh, FlipWatch* watch)
      : mesh_(mesh),
        watch_(watch),
        looks_(watch != nullptr && watch->needsLook()),
        settled_(mesh.edges.size(), false) {}

  // False when the watch breaks it off.
  bool run() {
    for (Number edge = 1; edge <= mesh_.edgeCount(); ++edge) {
      queue_.offer(edge);
      while (!queue_.empty()) visit(queue_.take());
      if (queue_.isFull() && watch_ != nullptr && !watch_->allowsFullQueue()) return false;
      queue_.reset();
    }
    return true;
  }

 private:
  // What lies on one side of the common edge b-c: the edge to b, the edge to c, and the corner where they meet.
  struct Wing {
    OuterEdge bEdge;
    OuterEdge cEdge;
    Number corner;
  };

  // A test that has said no says no again until one of the edge's two triangles has changed.
  void visit(Number edge) {
    if (settled_[edge]) return;
    settled_[edge] = true;
    const MeshEdge& f = mesh_.edges[edge];
    if (f.left == 0 || f.right == 0) return;
    const Wing left = wing(f.left, edge);
    const Wing right = wing(f.right, edge);
    const Position& a = mesh_.points[left.corner];
    const Position& b = mesh_.points[f.start];
    const Position& c = mesh_.points[f.end];
    const Position& d = mesh_.points[right.corner];
    if (isConvex(d, b, c, a) && isNeedTrans(d, b, c, a)) flip(edge, left, right);
  }

  Wing wing(Number triangle, Number common) const {
    const Number* e = mesh_.triangles[triangle].edge;
    const std::size_t place = e[0] == common ? 0 : e[1] == common ? 1 : 2;
    Number first = e[place == 0 ? 1 : 0];
    Number second = e[place == 2 ? 1 : 2];
    const Number b = mesh_.edges[common].start;
    const Number c = mesh_.edges[common].end;
    if (!touches(first, b)) std::swap(first, second);
    const bool bOutward = startsAt(first, b);
    const MeshEdge& toB = mesh_.edges[first];
    return {{first, bOutward}, {second, startsAt(second, c)}, bOutward ? toB.end : toB.start};
  }

  bool startsAt(Number edge, Number point) const { return same(mesh_.edges[edge].start, point); }
  bool touches(Number edge, Number point) const { return startsAt(edge, point) || same(mesh_.edges[edge].end, point); }
  bool same(Number p, Number q) const { return p == q || samePosition(mesh_.points[p], mesh_.points[q]); }

  void flip(Number edge, const Wing& left, const Wing& right) {
    MeshEdge& f = mesh_.edges[edge];
    if (looks_) watch_->note(left.corner, f.start, f.end, right.corner);
    f.start = left.corner;
    f.end = right.corner;
    mesh_.triangles[f.left] = {{right.cEdge.number, left.cEdge.number, edge}};
    mesh_.triangles[f.right] = {{left.bEdge.number, right.bEdge.number, edge}};
    setSlot(left.cEdge.number, left.cEdge.outward, f.left);
    setSlot(right.bEdge.number, right.bEdge.outward, f.right);
    setSlot(left.bEdge.number, !left.bEdge.outward, f.right);
    setSlot(right.cEdge.number, !right.cEdge.outward, f.left);
    for (const Number outer : {right.bEdge.number, right.cEdge.number, left.cEdge.number, left.bEdge.number}) {
      settled_[outer] = false;
      queue_.offer(outer);
    }
    settled_[edge] = false;
  }

  void setSlot(Number edge, bool onLeft, Number triangle) {
    (onLeft ? mesh_.edges[edge].left : mesh_.edges[edge].right) = triangle;
  }

  Mesh& mesh_;
  FlipWatch* watch_;
  bool looks_;
  FlipQueue queue_;
  std::vector<bool> settled_;
};

}  // namespace

bool flipByPosition(Mesh& mesh, FlipWatch* watch) {
  return PositionFlipper(mesh, watch).run() && (watch == nullptr || watch->allowsEnd());
}

}  // namespace detail
}  // namespace OrvikDTM
