#include <array>
#include <cfloat>
#include <cmath>

#include <OrvikDTMAlgorithm/report/NumberText.h>
#include <OrvikDTMAlgorithm/tin/CommonArea.h>
#include <OrvikDTMAlgorithm/tin/PieceQueue.h>
#include <OrvikDTMAlgorithm/tin/SurfaceComparison.h>
#include <OrvikDTMAlgorithm/tin/Triangle3.h>
#include <OrvikDTMAlgorithm/tin/TrianglePlane.h>

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

// Replaces missing heights by the mean of the others; false where all are missing.
bool fillInMissing(double (&heights)[kCornersOfPiece]) {
  double sum = 0.0;
  int missing = 0;
  for (const double height : heights) {
    if (isNoValue(height)) {
      ++missing;
    } else {
      sum += height;
    }
  }
  if (missing == 0) return true;
  if (missing == kCornersOfPiece) return false;
  const double mean = sum / (kCornersOfPiece - missing);
  for (double& height : heights) {
    if (isNoValue(height)) height = mean;
  }
  return true;
}

// One run of the comparison. `Draw` is given the parts of every piece that is measured.
template <typename Draw>
class Run {
 public:
  Run(const SurfaceComparison::Task& task, Draw draw)
      : queried_(*task.queried),
        boundary_(task.boundary ? &*task.boundary : nullptr),
        task_(task),
        draw_(draw),
        knowsPlaces_(queried_.coversOnce()) {}

  FillAndCut all() {
    FillAndCut sums;
    for (int tri = 1; tri <= task_.walked->triangleCount(); ++tri) {
      const FlatTIN::Corners* corners = task_.walked->corners(tri);
      if (corners == nullptr) continue;
      walkedCorners_ = corners;
      const Piece whole = pieceOf(*corners);
      if (!task_.splitAtOnce) {
        sums.add(compare(whole));
        continue;
      }
      splitInFour(whole, middle, [&](const Piece& quarter) {
        splitInFour(quarter, middle, [&](const Piece& piece) { sums.add(compare(piece)); });
      });
    }
    return sums;
  }

  int lastFound() const { return last_; }

  // Whether what was measured, if anything, is known to be more than a contact.
  bool isBeyondDoubt() const { return !hasMeasured_ || isCommon_; }

 private:
  static Piece pieceOf(const FlatTIN::Corners& c) {
    Piece piece{};
    for (int i = 0; i < kCornersOfPiece; ++i) piece.corner[i] = {c.p[i].x, c.p[i].y, c.z[i]};
    return piece;
  }

  FillAndCut compare(Piece whole) {
    FillAndCut sums;
    hint_ = 0;
    bool isFound = false;
    for (Spot& corner : whole.corner) {
      const int found = locateFromHint(corner);
      isFound = isFound || found != 0;
      notePlace(corner, found);
      noteBoundary(corner);
    }
    if (!isFound) return sums;

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

  // The boundary's part of what is known of a corner's place.
  void noteBoundary(Spot& p) const { p.isBeyond = boundary_ != nullptr && !boundary_->contains({p.x, p.y}); }

  // Stores that a corner lies in this triangle; false when it does not, or lies on its boundary.
  bool notePlace(Spot& p, int tri) {
    if (!knowsPlaces_ || tri == 0 || !queried_.holdsStrictly(tri, {p.x, p.y})) return false;
    p.onlyIn = tri;
    p.height = newHeightIn(tri, p);
    return true;
  }

  // A middle lies in the same triangle as an end, or a short walk from there. It is a corner of three pieces, and of
  // theirs.
  Spot middleInPlace(const Spot& a, const Spot& b) {
    Spot m = middle(a, b);
    noteBoundary(m);
    const int start = a.onlyIn != 0 ? a.onlyIn : b.onlyIn;
    if (start == 0) return m;
    if (notePlace(m, start) || (b.onlyIn != start && notePlace(m, b.onlyIn))) return m;
    int none = 0;
    notePlace(m, queried_.locate(m.x, m.y, start, none));
    return m;
  }

  int locate(const Spot& p) {
    if (p.onlyIn != 0) return last_ = p.onlyIn;
    return queried_.locate(p.x, p.y, last_);
  }

  // Goes on from where the corner before was found, even if that lies outside the boundary. A walk finds a corner where
  // it starts; elsewhere it may fail to.
  int locateFromHint(const Spot& p) {
    if (hint_ == 0) return hint_ = locate(p);
    if (hint_ != p.onlyIn) hint_ = queried_.locate(p.x, p.y, hint_, last_);
    return hint_;
  }

  // A corner beyond the boundary counts as outside.
  template <typename Locate>
  Places placesOf(const Piece& piece, Locate locateCorner) {
    Places places;
    for (int i = 0; i < kCornersOfPiece; ++i) {
      places.tri[i] = locateCorner(piece.corner[i]);
      if (piece.corner[i].isBeyond) places.tri[i] = 0;
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
        splitInFour(
            piece, [this](const Spot& a, const Spot& b) { return middleInPlace(a, b); },
            [&queue](const Piece& quarter) { queue.offer(quarter); });
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

  // Pieces that follow each other lie in few triangles, whose planes are worth keeping.
  double heightIn(int tri, const Spot& p) {
    if (tri != 0 && tri == p.onlyIn) return p.height;
    return newHeightIn(tri, p);
  }

  double newHeightIn(int tri, const Spot& p) {
    const FlatTIN::Corners* corners = queried_.corners(tri);
    if (corners == nullptr) return DBL_MAX;
    KnownPlane& known = planes_[static_cast<std::size_t>(tri) % kPlanesKept];
    if (known.tri != tri) known = {tri, TrianglePlane(*corners)};
    return known.plane.height(p.x, p.y);
  }

  void measureIn(int tri, const Piece& piece, FillAndCut& sums) {
    double heights[kCornersOfPiece];
    for (int i = 0; i < kCornersOfPiece; ++i) heights[i] = heightIn(tri, piece.corner[i]);
    if (!isCommon_) lookForCommonArea(piece, tri);
    measure(piece, heights, sums);
  }

  // Nearly every piece that lies in one triangle shows at once that the networks overlap.
  void lookForCommonArea(const Piece& piece, int tri) {
    constexpr int kMostLooks = 64;
    if (looks_ == kMostLooks) return;
    ++looks_;
    const Spot(&c)[kCornersOfPiece] = piece.corner;
    const Position middle{(c[0].x + c[1].x + c[2].x) / 3, (c[0].y + c[1].y + c[2].y) / 3};
    const FlatTIN::Corners* corners = queried_.corners(tri);
    isCommon_ = corners != nullptr && isSurelyCommon(middle, std::to_array(walkedCorners_->p),
                                                     std::to_array(corners->p), task_.boundaryCorners);
  }

  // Where a corner has no height, the mean of the others' stands in for it.
  void measureAsItIs(const Piece& piece, FillAndCut& sums) {
    const Places places = placesOf(piece, [this](const Spot& p) { return locate(p); });
    double heights[kCornersOfPiece];
    for (int i = 0; i < kCornersOfPiece; ++i) heights[i] = heightIn(places.tri[i], piece.corner[i]);
    if (!fillInMissing(heights)) return;
    measure(piece, heights, sums);
  }

  void measure(const Piece& piece, const double (&heights)[3], FillAndCut& sums) {
    hasMeasured_ = true;
    measurePiece(piece, heights, task_.referenceIsWalked ? kFill : kCut, sums, draw_);
  }

  const FlatTIN& queried_;
  const PolygonIndex* boundary_;
  const SurfaceComparison::Task& task_;
  Draw draw_;
  bool knowsPlaces_;
  int last_ = task_.lastFound;
  int hint_ = 0;
  const FlatTIN::Corners* walkedCorners_ = nullptr;
  bool hasMeasured_ = false;
  bool isCommon_ = false;
  int looks_ = 0;
  PieceQueue queues_[2];
  std::vector<Piece> rest_;

  struct KnownPlane {
    int tri = 0;
    TrianglePlane plane;
  };
  static constexpr std::size_t kPlanesKept = 64;
  KnownPlane planes_[kPlanesKept];
};

TPoint pointAt(const Spot& p) { return {p.x, p.y, p.z}; }

std::vector<PlanTriangle> planOf(const FlatTIN& tin) {
  std::vector<PlanTriangle> triangles;
  for (int tri = 1; tri <= tin.triangleCount(); ++tri) {
    if (const FlatTIN::Corners* corners = tin.corners(tri)) triangles.push_back(std::to_array(corners->p));
  }
  return triangles;
}

}  // namespace

SurfaceComparison::Outcome SurfaceComparison::measure() const {
  Run run(task_, [](const Spot&, const Spot&, const Spot&, int) {});
  const FillAndCut sums = run.all();
  const bool isOverlap = run.isBeyondDoubt() ||
                         haveCommonArea({planOf(*task_.walked), planOf(*task_.queried), true, task_.boundaryCorners});
  return {isOverlap ? std::optional<FillAndCut>(sums) : std::nullopt, run.lastFound()};
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
