#include <utility>

#include <OrvikDTMAlgorithm/tin/FlipFilter.h>
#include <OrvikDTMAlgorithm/tin/FlipQueue.h>
#include <OrvikDTMAlgorithm/tin/FlipTests.h>
#include <OrvikDTMAlgorithm/tin/FlipWatch.h>
#include <OrvikDTMAlgorithm/tin/Flips.h>
#include <OrvikDTMAlgorithm/tin/FlipsByPosition.h>
#include <OrvikDTMAlgorithm/tin/LargeArrays.h>

inline namespace OrvikDTM {
namespace detail {

namespace {

// An edge is two half-edges, 2 n along it and 2 n + 1 against it, so that a flip finds all that it changes without a
// search. Each has its triangle on its left.
Number edgeOf(Number half) { return half / 2; }
Number twin(Number half) { return half ^ 1; }

// One side of an edge: the triangle there, 0 for none, its corner off the edge, and the half-edges that follow and
// precede this one around it. The size of a quarter of a cache line, and never across two.
struct alignas(16) Half {
  Number triangle;
  Number apex;
  Number next;
  Number previous;
};

// The points that the two half-edges of an edge start from. It is settled once the tests have said no: they say no
// again until one of its two triangles has changed.
struct Ends {
  Number origin[2];
  bool settled;
};

// One that looks at its flips is a class of its own: the other is not to pay for it.
template <bool kLooks>
class Flipper {
 public:
  Flipper(Mesh& mesh, const FlipFilter& filter, FlipWatch* watch)
      : mesh_(mesh),
        points_(mesh.points.data()),
        filter_(filter),
        watch_(watch),
        ends_(largeVector<Ends>(mesh.edges.size())),
        halves_(largeVector<Half>(2 * mesh.edges.size())) {
    for (Number edge = 1; edge <= mesh.edgeCount(); ++edge) {
      ends_[edge] = {{mesh.edges[edge].start, mesh.edges[edge].end}, false};
    }
    for (Number triangle = 1; triangle <= mesh.triangleCount(); ++triangle) addTriangle(triangle);
  }

  // Whether the sides of the mesh's edges fit together: going round each triangle with it on the left leads back.
  bool closes() const { return closes_; }

  // False when the watch breaks it off.
  bool run() {
    for (Number edge = 1; edge <= mesh_.edgeCount(); ++edge) {
      queue_.offer(edge);
      while (!queue_.empty()) visit(queue_.take());
      if (queue_.isFull() && !allowsFullQueue()) return false;
      queue_.reset();
    }
    for (Number edge = 1; edge <= mesh_.edgeCount(); ++edge) {
      const Number* origin = ends_[edge].origin;
      mesh_.edges[edge] = {origin[0], origin[1], halves_[2 * edge].triangle, halves_[2 * edge + 1].triangle};
    }
    return true;
  }

 private:
  // Rare: out of the way of the loop.
  [[gnu::noinline, gnu::cold]] bool allowsFullQueue() const { return watch_ == nullptr || watch_->allowsFullQueue(); }

  Number originOf(Number half) const { return ends_[edgeOf(half)].origin[half & 1]; }
  bool follows(Number second, Number first) const { return originOf(second) == originOf(twin(first)); }

  Number halfBeside(Number edge, Number triangle) const {
    return mesh_.edges[edge].left == triangle ? 2 * edge : 2 * edge + 1;
  }

  void addTriangle(Number triangle) {
    const Number* edge = mesh_.triangles[triangle].edge;
    const Number first = halfBeside(edge[0], triangle);
    Number second = halfBeside(edge[1], triangle);
    Number third = halfBeside(edge[2], triangle);
    if (!follows(second, first)) std::swap(second, third);
    closes_ = closes_ && follows(second, first) && follows(third, second) && follows(first, third);
    halves_[first] = {triangle, originOf(third), second, third};
    halves_[second] = {triangle, originOf(first), third, first};
    halves_[third] = {triangle, originOf(second), first, second};
  }

  void visit(Number edge) {
    Ends& ends = ends_[edge];
    if (ends.settled) return;
    ends.settled = true;
    const Half& left = halves_[2 * edge];
    const Half& right = halves_[2 * edge + 1];
    if (left.triangle == 0 || right.triangle == 0) return;
    if (isToFlip(points_[left.apex], points_[ends.origin[0]], points_[ends.origin[1]], points_[right.apex])) flip(edge);
  }

  bool isToFlip(const Position& a, const Position& b, const Position& c, const Position& d) const {
    const FlipFilter::Verdict verdict = filter_.judge(a, b, c, d);
    if (verdict == FlipFilter::kUnsure) return isConvex(d, b, c, a) && isNeedTrans(d, b, c, a);
    return verdict == FlipFilter::kFlip;
  }

  // Turns the edge from b -> c into a -> d. The triangles keep their sides: the left one becomes (a, d, c), the right
  // one (a, b, d).
  void flip(Number edge) {
    const Number along = 2 * edge;
    const Number against = twin(along);
    const Half left = halves_[along];
    const Half right = halves_[against];
    const Number b = originOf(along);
    const Number c = originOf(against);
    const Number a = left.apex;
    const Number d = right.apex;
    if constexpr (kLooks) watch_->note(a, b, c, d);
    const Number ca = left.next;
    const Number ab = left.previous;
    const Number bd = right.next;
    const Number dc = right.previous;
    mesh_.triangles[left.triangle] = {{edgeOf(dc), edgeOf(ca), edge}};
    mesh_.triangles[right.triangle] = {{edgeOf(ab), edgeOf(bd), edge}};
    ends_[edge] = {{a, d}, false};
    halves_[along] = {left.triangle, c, dc, ca};
    halves_[against] = {right.triangle, b, ab, bd};
    change(bd, {right.triangle, a, against, ab});
    change(dc, {left.triangle, a, ca, along});
    change(ca, {left.triangle, d, along, dc});
    change(ab, {right.triangle, d, bd, against});
  }

  void change(Number half, const Half& value) {
    halves_[half] = value;
    ends_[edgeOf(half)].settled = false;
    queue_.offer(edgeOf(half));
  }

  Mesh& mesh_;
  const Position* points_;
  FlipFilter filter_;
  FlipWatch* watch_;
  FlipQueue queue_;
  std::vector<Ends> ends_;
  std::vector<Half> halves_;
  bool closes_ = true;
};

template <bool kLooks>
bool flip(Mesh& mesh, const FlipFilter& filter, FlipWatch* watch) {
  Flipper<kLooks> flipper(mesh, filter, watch);
  if (!flipper.closes()) return flipByPosition(mesh, watch);
  return flipper.run() && (watch == nullptr || watch->allowsEnd());
}

}  // namespace

bool flipToDelaunay(Mesh& mesh, FlipWatch* watch) {
  const FlipFilter filter(mesh.points);
  if (!filter.inReach()) return flipByPosition(mesh, watch);
  const bool looks = watch != nullptr && watch->needsLook();
  return looks ? flip<true>(mesh, filter, watch) : flip<false>(mesh, filter, watch);
}

}  // namespace detail
}  // namespace OrvikDTM
