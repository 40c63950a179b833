// Fill and cut between two surfaces: which network is walked, whether the two share enough points, and the level within
// a boundary, which is a second surface too.
#include <algorithm>
#include <cmath>
#include <memory>
#include <unordered_set>
#include <utility>

#include <OrvikDTMAlgorithm/report/NumberText.h>
#include <OrvikDTMAlgorithm/report/U.h>
#include <OrvikDTMAlgorithm/tin/CETypeElements.h>
#include <OrvikDTMAlgorithm/tin/CommonArea.h>
#include <OrvikDTMAlgorithm/tin/Construction.h>
#include <OrvikDTMAlgorithm/tin/FillAndCut.h>
#include <OrvikDTMAlgorithm/tin/FlatTIN.h>
#include <OrvikDTMAlgorithm/tin/PointHash.h>
#include <OrvikDTMAlgorithm/tin/SurfaceComparison.h>

inline namespace OrvikDTM {

namespace {

// A boundary needs three points to limit anything.
constexpr std::size_t kFewestBoundaryPoints = 3;

// Networks that share so many points overlap well enough for whole triangles to find each other.
constexpr std::size_t kEnoughCommonPoints = 16;

// The smaller surface is walked: its triangles are those that lie within the other's.
bool isReferenceWalked(double area, int triangles, double referenceArea, int referenceTriangles) {
  if (referenceArea > area) return false;
  if (referenceArea < area) return true;
  return referenceTriangles >= triangles;
}

// Whether every triangle of the one is that of the other, corner for corner. Such surfaces coincide, also where the
// middle of a side, rounded, falls beside the surface or far off on a steep sliver.
bool areSame(const detail::FlatTIN& one, const detail::FlatTIN& other) {
  if (one.triangleCount() != other.triangleCount()) return false;
  for (int tri = 1; tri <= one.triangleCount(); ++tri) {
    const detail::FlatTIN::Corners* a = one.corners(tri);
    const detail::FlatTIN::Corners* b = other.corners(tri);
    if (a == nullptr || b == nullptr) {
      if (a != b) return false;
      continue;
    }
    for (int i = 0; i < 3; ++i) {
      if (!detail::samePosition(a->p[i], b->p[i]) || a->z[i] != b->z[i]) return false;
    }
  }
  return true;
}

TPoint roundedToMillimetres(const TPoint& p) {
  return {detail::roundThroughText(detail::kDecimalsOfPosition, p.getX()),
          detail::roundThroughText(detail::kDecimalsOfPosition, p.getY()), 0.0};
}

// A network over copies of the points, which it keeps.
std::unique_ptr<CEType> triangulateCopies(const std::vector<TPoint>& points, int compareUnshifted,
                                          std::shared_ptr<std::vector<TPoint>>& copies) {
  copies = std::make_shared<std::vector<TPoint>>(points);
  std::vector<TPoint*> pointers;
  pointers.reserve(copies->size());
  for (TPoint& p : *copies) pointers.push_back(&p);
  std::unique_ptr<CEType> tin(detail::Construction::triangulate(pointers, compareUnshifted));
  if (tin != nullptr) tin->holdPoints(copies);
  return tin;
}

// Whether some position among the points is no vertex although the network has triangles.
bool lacksAPosition(const CEType& tin, const std::vector<TPoint>& points, const std::vector<TPoint>& copies) {
  const EList* edges = tin.getEList();
  std::unordered_set<const TPoint*> vertices;
  for (int number = 1; number <= edges->getListLen(); ++number) {
    const TEdge* edge = edges->findByNum(edges, number);
    vertices.insert({edge->getStartPoint(), edge->getEndPoint()});
  }
  std::unordered_set<TPoint, detail::PointHash> positions;
  for (std::size_t i = 0; i < points.size(); ++i) {
    if (vertices.contains(&copies[i])) positions.insert(roundedToMillimetres(points[i]));
  }
  return std::any_of(points.begin(), points.end(), [&positions](const TPoint& p) {
    const TPoint rounded = roundedToMillimetres(p);
    return rounded == rounded && !positions.contains(rounded);
  });
}

// The level as a surface over the boundary. Where a smallest coordinate is negative, the comparison of unshifted with
// shifted coordinates can take a corner for a repeat of another one; the boundary would lose that corner, so such a
// network is built again with the other comparison.
std::unique_ptr<CEType> surfaceOver(const std::vector<TPoint>& boundary) {
  std::shared_ptr<std::vector<TPoint>> copies;
  const int compareUnshifted = detail::hostsComparison();
  std::unique_ptr<CEType> tin = triangulateCopies(boundary, compareUnshifted, copies);
  if (tin == nullptr || compareUnshifted != 0 || !lacksAPosition(*tin, boundary, *copies)) return tin;
  return triangulateCopies(boundary, 1, copies);
}

}  // namespace

bool CEType::hasBoundary() const { return rangeList_.size() >= kFewestBoundaryPoints; }

std::shared_ptr<const detail::FlatTIN> CEType::newCopy() {
  forgetCopy();
  flat();
  return flat_;
}

// Whether fewer than sixteen of this network's points lie where the queried one has a height.
bool CEType::sharesFewPointsWith(const detail::FlatTIN& queried, int& lastFound) const {
  std::vector<TPoint> common;
  const int count = edgeList_ == nullptr ? 0 : edgeList_->getListLen();
  for (int number = 1; number <= count; ++number) {
    const TEdge* edge = edgeList_->findByNum(edgeList_, number);
    if (!detail::isWhole(edge)) continue;
    for (const TPoint* p : {edge->getStartPoint(), edge->getEndPoint()}) {
      const double height = queried.height(queried.locate(p->getX(), p->getY(), lastFound), p->getX(), p->getY());
      if (!std::isfinite(height) || U::isInf(height) != 0) continue;
      if (std::find(common.begin(), common.end(), *p) == common.end()) common.push_back(*p);
      if (common.size() == kEnoughCommonPoints) return false;
    }
  }
  return true;
}

FillCutResult* CEType::getFillCut(CEType* reference) {
  triangle3List_.clear();
  triangle3Source_ = {};
  if (reference == nullptr) return nullptr;
  const TINMeasures totals = getMeasures();
  const std::shared_ptr<const detail::FlatTIN> own = newCopy();
  const std::shared_ptr<const detail::FlatTIN> other = reference == this ? own : reference->newCopy();
  if (reference == this || areSame(*own, *other)) return detail::newResult({}, totals);

  const bool referenceIsWalked =
      isReferenceWalked(totals.area2D, own->triangleCount(), reference->getArea2D(), other->triangleCount());
  const CEType& walked = referenceIsWalked ? *reference : *this;
  CEType& queried = referenceIsWalked ? *this : *reference;
  detail::SurfaceComparison::Task task{
      referenceIsWalked ? other : own, referenceIsWalked ? own : other, std::nullopt, {}, referenceIsWalked, false,
      queried.lastTriangleNo_};
  if (hasBoundary()) {
    task.boundary.emplace(rangeList_);
    task.boundaryCorners = detail::cornersOf(rangeList_);
  }
  task.splitAtOnce = walked.sharesFewPointsWith(*task.queried, task.lastFound);
  auto comparison = std::make_shared<const detail::SurfaceComparison>(std::move(task));
  const detail::SurfaceComparison::Outcome outcome = comparison->measure();
  FillCutResult* result = detail::newResult(outcome.sums.value_or(detail::FillAndCut{}), totals);
  queried.hullRingIsSettled_ = queried.hullRing_ != nullptr;
  queried.lastTriangleNo_ = outcome.lastFound;
  if (outcome.sums) triangle3Source_.comparison = std::move(comparison);
  return result;
}

FillCutResult* CEType::getFillCutWithinBoundary(double elevation) {
  std::vector<TPoint> boundary;
  for (const TPoint* p : rangeList_) {
    if (p != nullptr) boundary.emplace_back(p->getX(), p->getY(), elevation);
  }
  const std::unique_ptr<CEType> level = surfaceOver(boundary);
  FillCutResult* result = level == nullptr ? detail::newResult({}, getMeasures()) : getFillCut(level.get());
  for (TPoint* p : rangeList_) {
    if (p != nullptr) p->setZ(elevation);
  }
  return result;
}

const std::vector<std::shared_ptr<Triangle3>>& CEType::getTriangle3List() {
  makeTriangle3List();
  return triangle3List_;
}

void CEType::makeTriangle3List() const {
  if (!triangle3Source_.level && triangle3Source_.comparison == nullptr) return;
  std::vector<std::shared_ptr<Triangle3>> pieces;
  if (triangle3Source_.level) appendLevelPieces(*triangle3Source_.level, pieces);
  if (triangle3Source_.comparison != nullptr) triangle3Source_.comparison->appendPieces(pieces);
  triangle3List_ = std::move(pieces);
  triangle3Source_ = {};
}

}  // namespace OrvikDTM
