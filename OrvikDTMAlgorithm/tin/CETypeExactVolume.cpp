// Fill and cut without sampling. Against another network the triangles of both are overlaid, against a level each
// triangle is a piece by itself; what the boundary cuts through is clipped by its parts. Every piece is then measured
// as what lies between two planes.
#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <memory>
#include <optional>
#include <vector>

#include <OrvikDTMAlgorithm/surface/FillCutResult.h>
#include <OrvikDTMAlgorithm/tin/BoundaryParts.h>
#include <OrvikDTMAlgorithm/tin/CETypeElements.h>
#include <OrvikDTMAlgorithm/tin/CommonArea.h>
#include <OrvikDTMAlgorithm/tin/CompensatedSum.h>
#include <OrvikDTMAlgorithm/tin/ConvexPiece.h>
#include <OrvikDTMAlgorithm/tin/Facets.h>
#include <OrvikDTMAlgorithm/tin/FlatTIN.h>
#include <OrvikDTMAlgorithm/tin/OverlapWalk.h>
#include <OrvikDTMAlgorithm/tin/Prefetch.h>

inline namespace OrvikDTM {

namespace {

using detail::BoundaryPart;
using detail::BoundaryParts;
using detail::Box;
using detail::CompensatedSum;
using detail::ConvexPiece;
using detail::Facet;
using detail::Facets;
using detail::PieceCorner;
using detail::PieceMeasure;
using detail::PlanTriangle;
using detail::Position;
using Place = BoundaryParts::Place;

// Two surfaces that are nowhere further apart than this over a piece coincide there, in coordinate units. The height at
// a place on a slope is not known better than that: at an easting of 38 500 000 the place is a multiple of 7e-9.
constexpr double kCoincidence = 1e-7;

// A boundary needs three points to limit anything.
constexpr std::size_t kFewestBoundaryPoints = 3;

// What a piece is part of, in whole: fill, cut, or both, so that it has to be split; or neither. Against a level that
// is no number nobody can tell.
enum class Kind { Neither, Fill, Cut, Both, Unknown };

// What is found on one side.
struct Side {
  CompensatedSum planArea;
  CompensatedSum spatialArea;
  CompensatedSum volume;

  void add(const PieceMeasure& measure, double spread, double sign) {
    planArea.add(measure.area);
    spatialArea.add(measure.area * spread);
    volume.add(sign * measure.content);
  }

  void addUnknown() {
    constexpr double kUnknown = std::numeric_limits<double>::quiet_NaN();
    for (CompensatedSum* sum : {&planArea, &spatialArea, &volume}) sum->add(kUnknown);
  }
};

// Rounding may leave a sum over slivers alone on the wrong side of 0; what is no number stays so.
double nonNegative(const CompensatedSum& sum) { return sum.value() < 0 ? 0.0 : sum.value(); }

class Account {
 public:
  // Measures a piece, relative to `origin`, of a triangle whose area along the surface is `spread` times its plan area.
  void add(const ConvexPiece& piece, const Position& origin, Kind kind, double spread) {
    const PieceMeasure whole = piece.measure();
    coverage_.add(whole.area);
    if (!isCertain_) noteArea(piece, origin, whole.area);
    if (kind == Kind::Fill) fill_.add(whole, spread, -1.0);
    if (kind == Kind::Cut) cut_.add(whole, spread, 1.0);
    if (kind == Kind::Unknown) {
      fill_.addUnknown();
      cut_.addUnknown();
    }
    if (kind != Kind::Both) return;
    ConvexPiece above(piece);
    above.clip([](const PieceCorner& p) { return p.difference; });
    cut_.add(above.measure(), spread, 1.0);
    ConvexPiece below(piece);
    below.clip([](const PieceCorner& p) { return -p.difference; });
    fill_.add(below.measure(), spread, -1.0);
  }

  double coverage() const { return nonNegative(coverage_); }

  // Whether there are pieces, all of them so narrow that they may be no more than a contact.
  bool isDoubtful() const { return hasPieces_ && !isCertain_; }

  std::unique_ptr<FillCutResult> result(const TINMeasures& totals) const {
    auto record = std::make_unique<FillCutResult>();
    record->setFillTwoDArea(nonNegative(fill_.planArea));
    record->setFillThreeDArea(nonNegative(fill_.spatialArea));
    record->setFillVolume(nonNegative(fill_.volume));
    record->setCutTwoDArea(nonNegative(cut_.planArea));
    record->setCutThreeDArea(nonNegative(cut_.spatialArea));
    record->setCutVolume(nonNegative(cut_.volume));
    record->setTwoDArea(totals.area2D);
    record->setThreeDArea(totals.area3D);
    record->setPerimeterTwoD(totals.length2D);
    record->setPerimeterThreeD(totals.length3D);
    return record;
  }

 private:
  // A piece is certain where it is wider than the last digits of its coordinates can make it, more than amply.
  void noteArea(const ConvexPiece& piece, const Position& origin, double area) {
    constexpr double kUncertainty = 0x1p-44;
    hasPieces_ = true;
    const Box box = piece.box();
    const double length = (box.maxX - box.minX) + (box.maxY - box.minY);
    const double extent = std::fabs(origin.x) + std::fabs(origin.y) + length;
    isCertain_ = area > kUncertainty * extent * length;
  }

  Side fill_;
  Side cut_;
  CompensatedSum coverage_;
  bool hasPieces_ = false;
  bool isCertain_ = false;
};

struct Differences {
  double least;
  double most;
};

Differences differencesOf(const ConvexPiece& piece) {
  Differences d{piece[0].difference, piece[0].difference};
  for (std::size_t i = 1; i < piece.size(); ++i) {
    d.least = std::min(d.least, piece[i].difference);
    d.most = std::max(d.most, piece[i].difference);
  }
  return d;
}

// Against another surface: what coincides is neither.
Kind kindBetween(const Differences& d) {
  if (d.least >= -kCoincidence && d.most <= kCoincidence) return Kind::Neither;
  if (d.least >= 0) return Kind::Cut;
  return d.most <= 0 ? Kind::Fill : Kind::Both;
}

// Against a level, which is exact: what lies in the level is fill.
Kind kindAgainstLevel(const Differences& d) {
  if (std::isnan(d.least)) return Kind::Unknown;
  if (d.most <= 0) return Kind::Fill;
  return d.least >= 0 ? Kind::Cut : Kind::Both;
}

// The boundary, or none.
class Limit {
 public:
  explicit Limit(const std::vector<TPoint*>& polygon) {
    if (polygon.size() >= kFewestBoundaryPoints) parts_.emplace(polygon);
  }

  bool isThere() const { return parts_.has_value(); }

  Place placeOf(const Box& box) const { return parts_ ? parts_->placeOf(box) : Place::Inside; }

  // Adds what lies within the boundary of a piece relative to `origin`; `place` is that of a box around the piece.
  void add(const ConvexPiece& piece, const Position& origin, Place place, Kind kind, double spread,
           Account& account) const {
    Box box{};
    if (place == Place::Across) {
      const Box relative = piece.box();
      box = {relative.minX + origin.x, relative.minY + origin.y, relative.maxX + origin.x, relative.maxY + origin.y};
      place = placeOf(box);
    }
    if (place == Place::Outside) return;
    if (place == Place::Inside) return account.add(piece, origin, kind, spread);
    parts_->visitParts(box, [&](const BoundaryPart& part) {
      ConvexPiece within(piece);
      parts_->clip(part, within, origin);
      if (!within.isEmpty()) account.add(within, origin, kind, spread);
    });
  }

 private:
  std::optional<BoundaryParts> parts_;
};

double widthOf(const Facet& facet) { return facet.p[2].x - facet.p[0].x; }

// Whether a side of the first triangle has all of the second beyond it, or on it. Clipping would find that out too, but
// many neighbours in a tree are no more than that, and this is quicker.
bool isApart(const Facet& facet, const Facet& other) {
  bool isBeyond = false;
  for (int i = 0; i < 3; ++i) {
    const Position& start = facet.p[i];
    const Position& end = facet.p[i == 2 ? 0 : i + 1];
    const double dx = facet.turn * (end.x - start.x);
    const double dy = facet.turn * (end.y - start.y);
    const double a = dx * (other.p[0].y - start.y) - dy * (other.p[0].x - start.x);
    const double b = dx * (other.p[1].y - start.y) - dy * (other.p[1].x - start.x);
    const double c = dx * (other.p[2].y - start.y) - dy * (other.p[2].x - start.x);
    isBeyond |= std::max({a, b, c}) <= 0;
  }
  return isBeyond;
}

// The smaller triangle is clipped by the larger one, in coordinates relative to a corner of it. False where they are
// apart.
bool addPair(const Facet& facet, const Facet& other, Place place, const Limit& limit, Account& account) {
  const bool isSmaller = widthOf(facet) <= widthOf(other);
  const Facet& smaller = isSmaller ? facet : other;
  const Facet& larger = isSmaller ? other : facet;
  if (isApart(smaller, larger) || isApart(larger, smaller)) return false;
  const Position origin = smaller.p[0];
  ConvexPiece piece = smaller.piece(origin, 0.0);
  larger.clip(piece, origin);
  if (piece.isEmpty()) return true;
  const double apart = facet.z[0] - other.z[0];
  for (std::size_t i = 0; i < piece.size(); ++i) {
    PieceCorner& p = piece[i];
    p.difference = apart + (facet.rise(p.x, p.y, origin) - other.rise(p.x, p.y, origin));
  }
  limit.add(piece, origin, place, kindBetween(differencesOf(piece)), facet.spread, account);
  return true;
}

// The facets of a network by the numbers of its triangles, and the walk over them.
class Walkable {
 public:
  Walkable(const CEType& tin, const Facets& facets) : walk_(detail::FlatTIN::of(tin)) {
    facetOf_.resize(static_cast<std::size_t>(tin.getTList()->getListLen()) + 1);
    for (std::size_t i = 0; i < facets.numbers().size(); ++i) facetOf_[facets.numbers()[i]] = &facets.all()[i];
  }

  bool isPossible() const { return walk_.isPossible(); }

  // As OverlapWalk's, with facets.
  template <typename Visit>
  bool visit(const Facet& facet, Visit visitFacet) {
    return walk_.visit(facet, [&](int number) {
      const Facet* other = facetOf_[static_cast<std::size_t>(number)];
      if (other != nullptr) visitFacet(*other);
    });
  }

 private:
  detail::OverlapWalk walk_;
  std::vector<const Facet*> facetOf_;  // null for triangles that have none
};

// Takes the triangles of one network; those of the other are looked up by their boxes for a few neighbours at a time.
// Once most triangles that were found so have been apart, they are walked to if that is possible.
class Overlay {
 public:
  Overlay(const CEType& reference, const Facets& facets, const Limit& limit, Account& account)
      : tin_(reference), reference_(facets), limit_(limit), account_(account) {}

  // The facet must last until finish().
  void add(const Facet& facet) {
    const Box box = facet.box();
    const Place place = limit_.placeOf(box);
    if (place == Place::Outside) return;
    waiting_.push_back({&facet, box, place});
    if (waiting_.size() == kLookedUpTogether) finish();
  }

  // Measures what still waits.
  void finish() {
    if (walkable_ && walkable_->isPossible()) {
      for (const Waiting& w : waiting_) addByWalk(w);
    } else if (areClose()) {
      lookUp(boxOfAll());
      for (const Waiting& w : waiting_) addAll(w);
    } else {
      for (const Waiting& w : waiting_) addByBox(w);
    }
    waiting_.clear();
    if (!walkable_ && areBoxesInVain()) walkable_.emplace(tin_, reference_);
  }

 private:
  struct Waiting {
    const Facet* facet;
    Box box;
    Place place;
  };
  struct Found {
    Box box;
    const Facet* facet;
  };

  static constexpr std::size_t kLookedUpTogether = 8;

  static double areaOf(const Box& box) { return (box.maxX - box.minX) * (box.maxY - box.minY); }

  Box boxOfAll() const {
    Box all = waiting_.front().box;
    for (const Waiting& w : waiting_) {
      all = {std::min(all.minX, w.box.minX), std::min(all.minY, w.box.minY), std::max(all.maxX, w.box.maxX),
             std::max(all.maxY, w.box.maxY)};
    }
    return all;
  }

  // Whether one look into the box of all costs less than one for each.
  bool areClose() const {
    constexpr double kMostSpace = 6.0;
    if (waiting_.empty()) return false;
    double sum = 0.0;
    for (const Waiting& w : waiting_) sum += areaOf(w.box);
    return areaOf(boxOfAll()) <= kMostSpace * sum;
  }

  void lookUp(const Box& box) {
    found_.clear();
    reference_.visit(box, [this](const Facet& facet) { found_.push_back({facet.box(), &facet}); });
  }

  void addAll(const Waiting& w) {
    for (const Found& other : found_) {
      if (!detail::meet(w.box, other.box)) continue;
      ++tried_;
      if (addPair(*w.facet, *other.facet, w.place, limit_, account_)) ++met_;
    }
  }

  void addByBox(const Waiting& w) {
    lookUp(w.box);
    addAll(w);
  }

  void addByWalk(const Waiting& w) {
    const bool isWalked =
        walkable_->visit(*w.facet, [&](const Facet& other) { addPair(*w.facet, other, w.place, limit_, account_); });
    if (!isWalked) addByBox(w);
  }

  // Of ordinary triangles whose boxes meet every second or third pair does too, of equal grids that stand askew every
  // sixteenth, of slivers around a centre one in thousands.
  bool areBoxesInVain() const {
    constexpr std::size_t kFewestTried = 1u << 18;
    constexpr std::size_t kMostInVain = 32;
    return tried_ > kFewestTried + reference_.all().size() && met_ < tried_ / kMostInVain;
  }

  const CEType& tin_;
  const Facets& reference_;
  const Limit& limit_;
  Account& account_;
  std::vector<Waiting> waiting_;
  std::vector<Found> found_;
  std::size_t tried_ = 0;  // pairs whose boxes meet
  std::size_t met_ = 0;    // those of them that were not apart
  std::optional<Walkable> walkable_;
};

void addAgainstLevel(const Facet& facet, double level, const Limit& limit, Account& account) {
  const Place place = limit.placeOf(facet.box());
  if (place == Place::Outside) return;
  const Position origin = facet.p[0];
  const ConvexPiece piece = facet.piece(origin, level);
  limit.add(piece, origin, place, kindAgainstLevel(differencesOf(piece)), facet.spread, account);
}

std::vector<PlanTriangle> planOf(const Facets& facets) {
  std::vector<PlanTriangle> triangles;
  triangles.reserve(facets.all().size());
  for (const Facet& facet : facets.all()) triangles.push_back(std::to_array(facet.p));
  return triangles;
}

}  // namespace

FillCutResult* CEType::getFillCutExact(CEType* reference, double* coverage) {
  if (reference == nullptr) {
    if (coverage != nullptr) *coverage = 0.0;
    return nullptr;
  }
  Account account;
  const Limit limit(rangeList_);
  const Facets others(*reference);
  Overlay overlay(*reference, others, limit, account);
  const Facets own(*this);
  for (const Facet& facet : own.all()) overlay.add(facet);
  overlay.finish();
  if (account.isDoubtful()) {
    const std::vector<Position> boundary = limit.isThere() ? detail::cornersOf(rangeList_) : std::vector<Position>();
    if (!detail::haveCommonArea({planOf(own), planOf(others), true, boundary})) account = {};
  }
  std::unique_ptr<FillCutResult> result = account.result(getMeasures());
  if (coverage != nullptr) *coverage = account.coverage();
  return result.release();
}

FillCutResult* CEType::getFillCutExact(double elevation, double* coverage) {
  Account account;
  const Limit limit(rangeList_);
  Facet facet{};
  for (int tri = 1; tri <= triangleCount(); ++tri) {
    if (const TEdge* ahead = edgeOf(tri + detail::kPrefetchAhead, 1)) {
      detail::prefetchWhole(ahead->getStartPoint());
      detail::prefetchWhole(ahead->getEndPoint());
    }
    if (Facet::make(*this, tri, facet)) addAgainstLevel(facet, elevation, limit, account);
  }
  if (account.isDoubtful() && limit.isThere() &&
      !detail::haveCommonArea({planOf(Facets(*this)), {}, false, detail::cornersOf(rangeList_)})) {
    account = {};
  }
  std::unique_ptr<FillCutResult> result = account.result(getMeasures());
  if (coverage != nullptr) *coverage = account.coverage();
  return result.release();
}

}  // namespace OrvikDTM
