#include <cfloat>
#include <cmath>

#include <OrvikDTMAlgorithm/report/U.h>
#include <OrvikDTMAlgorithm/tin/PieceQueue.h>
#include <OrvikDTMAlgorithm/tin/SurfaceComparison.h>
#include <OrvikDTMAlgorithm/tin/Triangle3.h>

inline namespace OrvikDTM {
namespace detail {

namespace {

// A phase ends when exactly so many pieces wait.
constexpr std::size_t kPiecesOfAPhase = 100;

// Pieces are no longer split below this share of the plan area that the phase began with, nor below these plan areas,
// in squared coordinate units, in the first and in the second phase.
constexpr double kSmallestShare = 100;
constexpr double kSmallestInFirst = 0.01;
constexpr double kSmallestInSecond = 0.001;

constexpr int kCornersOfPiece = 3;

bool goesOn(const PieceQueue& queue, double smallest) {
  if (queue.empty() || queue.size() == kPiecesOfAPhase || queue.size() == PieceQueue::kCapacity) return false;
  const double area = planAreaByCross(queue.front());
  return area >= smallest && std::isfinite(area);  // what has no plan area to speak of is not worth splitting
}

// The triangles in which the corners of a piece lie, 0 for none.
struct Places {
  int tri[kCornersOfPiece];

  int missing() const { return (tri[0] == 0) + (tri[1] == 0) + (tri[2] == 0); }
};

// One run of the comparison. `Draw` is given the parts of every piece that is measured.
template <typename Draw>
class Run {
 public:
  Run(const SurfaceComparison::Task& task, Draw draw)
      : queried_(*task.queried), boundary_(task.boundary ? &*task.boundary : nullptr), task_(task), draw_(draw) {}

  FillAndCut all() {
    FillAndCut sums;
    for (int tri = 1; tri <= task_.walked->triangleCount(); ++tri) {
      const FlatTIN::Corners* corners = task_.walked->corners(tri);
      if (corners == nullptr) continue;
      const Piece whole = pieceOf(*corners);
      if (task_.splitAtOnce) {
        splitInSixteen(whole, [&](const Piece& piece) { sums.add(compare(piece)); });
      } else {
        sums.add(compare(whole));
      }
    }
    return sums;
  }

  int lastFound() const { return last_; }

 private:
  FillAndCut compare(const Piece& whole) {
    FillAndCut sums;
    hint_ = 0;
    int found = 0;
    for (const Spot& corner : whole.corner) found += locateFromHint(corner) != 0 ? 1 : 0;
    if (found == 0) return sums;

    PieceQueue& first = queues_[0];
    PieceQueue& second = queues_[1];
    first.offer(whole);
    workOff(first, std::max(planAreaByCross(whole) / kSmallestShare, kSmallestInFirst), sums,
            [this](const Spot& p) { return locateFromHint(p); });
    rest_.clear();
    while (!first.empty()) {
      second.offer(first.takeFirst());
      workOff(second, std::max(planAreaByCross(second.front()) / kSmallestShare, kSmallestInSecond), sums,
              [this](const Spot& p) { return locate(p); });
      while (!second.empty()) rest_.push_back(second.takeFirst());
    }
    for (const Piece& piece : rest_) measureAsItIs(piece, sums);
    return sums;
  }

  int locate(const Spot& p) { return queried_.locate(p.x, p.y, last_); }

  // Goes on from where the corner before was found, even if that lies outside the boundary.
  int locateFromHint(const Spot& p) { return hint_ = queried_.locate(p.x, p.y, hint_, last_); }

  // A corner beyond the boundary counts as outside.
  template <typename Locate>
  Places placesOf(const Piece& piece, Locate locateCorner) {
    Places places;
    for (int i = 0; i < kCornersOfPiece; ++i) {
      places.tri[i] = locateCorner(piece.corner[i]);
      if (boundary_ != nullptr && !boundary_->contains({piece.corner[i].x, piece.corner[i].y})) places.tri[i] = 0;
    }
    return places;
  }

  // Measures the pieces that lie in one triangle, splits the others and drops those outside.
  template <typename Locate>
  void workOff(PieceQueue& queue, double smallest, FillAndCut& sums, Locate locateCorner) {
    while (goesOn(queue, smallest)) {
      const Piece piece = queue.takeFirst();
      const Places places = placesOf(piece, locateCorner);
      const int missing = places.missing();
      if (missing == kCornersOfPiece) continue;
      const int common = missing == 0 ? commonTriangle(piece, places) : 0;
      if (common != 0) {
        measureIn(common, piece, sums);
      } else {
        splitInFour(piece, [&queue](const Piece& quarter) { queue.offer(quarter); });
      }
    }
  }

  // The triangle that all three corners lie in, the third if need be by the area test; 0 when there is none.
  int commonTriangle(const Piece& piece, const Places& places) const {
    for (int i = 0; i < kCornersOfPiece; ++i) {
      const int tri = places.tri[i];
      if (tri != places.tri[(i + 1) % kCornersOfPiece]) continue;
      const int third = (i + 2) % kCornersOfPiece;
      if (places.tri[third] == tri) return tri;
      const Spot& p = piece.corner[third];
      return queried_.acceptsByArea(tri, p.x, p.y) ? tri : 0;
    }
    return 0;
  }

  void measureIn(int tri, const Piece& piece, FillAndCut& sums) {
    double heights[kCornersOfPiece];
    for (int i = 0; i < kCornersOfPiece; ++i) {
      heights[i] = queried_.height(tri, piece.corner[i].x, piece.corner[i].y);
    }
    measure(piece, heights, sums);
  }

  // Where a corner has no height, the mean of the others' stands in for it.
  void measureAsItIs(const Piece& piece, FillAndCut& sums) {
    const Places places = placesOf(piece, [this](const Spot& p) { return locate(p); });
    double heights[kCornersOfPiece];
    double sum = 0.0;
    int missing = 0;
    for (int i = 0; i < kCornersOfPiece; ++i) {
      heights[i] = queried_.height(places.tri[i], piece.corner[i].x, piece.corner[i].y);
      if (U::isInf(heights[i]) != 0) {
        ++missing;
      } else {
        sum += heights[i];
      }
    }
    if (missing == kCornersOfPiece) return;
    const double mean = sum / (kCornersOfPiece - missing);
    for (double& height : heights) {
      if (U::isInf(height) != 0) height = mean;
    }
    measure(piece, heights, sums);
  }

  void measure(const Piece& piece, const double (&heights)[3], FillAndCut& sums) {
    measurePiece(piece, heights, task_.referenceIsWalked ? kFill : kCut, sums, draw_);
  }

  const FlatTIN& queried_;
  const PolygonIndex* boundary_;
  const SurfaceComparison::Task& task_;
  Draw draw_;
  int last_ = task_.lastFound;
  int hint_ = 0;
  PieceQueue queues_[2];
  std::vector<Piece> rest_;
};

TPoint pointAt(const Spot& p) { return {p.x, p.y, p.z}; }

}  // namespace

FillAndCut SurfaceComparison::measure(int& lastFound) const {
  Run run(task_, [](const Spot&, const Spot&, const Spot&, int) {});
  const FillAndCut sums = run.all();
  lastFound = run.lastFound();
  return sums;
}

void SurfaceComparison::appendPieces(std::vector<std::shared_ptr<Triangle3>>& list) const {
  Run run(task_, [&list](const Spot& a, const Spot& b, const Spot& c, int status) {
    const TPoint p1 = pointAt(a);
    const TPoint p2 = pointAt(b);
    const TPoint p3 = pointAt(c);
    list.push_back(std::make_shared<Triangle3>(&p1, &p2, &p3, status));
  });
  run.all();
}

}  // namespace detail
}  // namespace OrvikDTM
