// Where a position lies in the TIN, and what lies next to a triangle. The queries run on a flat copy of the lists.
#include <OrvikDTMAlgorithm/report/NumberText.h>
#include <OrvikDTMAlgorithm/tin/CETypeElements.h>
#include <OrvikDTMAlgorithm/tin/EditLog.h>
#include <OrvikDTMAlgorithm/tin/FlatTIN.h>

inline namespace OrvikDTM {

namespace {

constexpr int kEdgesOfTriangle = 3;

bool isHandedOut(const detail::FlatTIN::Memory& memory) {
  return detail::EditLog::isHandedOut(memory.triangles) || detail::EditLog::isHandedOut(memory.edges);
}

}  // namespace

// A copy is made, or looked at, only when some element of some TIN has been changed since the latest query.
const detail::FlatTIN& CEType::flat() const {
  if (flat_ == nullptr || quietState_ != detail::Edits::state()) bringCopyUpToDate();
  return *flat_;
}

void CEType::bringCopyUpToDate() const {
  if (flat_ != nullptr) lookForEdits();
  if (flat_ != nullptr && quietState_ == detail::EditLog::kNever && !flat_->hasNumbersOf(*this)) forgetCopy();
  if (flat_ == nullptr) {
    seenEdits_ = detail::EditLog::now();
    if (hullRing_ == nullptr) hullRing_ = detail::HullRing::of(hullList_, edgeList_);
    flat_ = detail::FlatTIN::of(*this);
  }
  try {
    watchNumbers();
  } catch (...) {
    forgetCopy();  // numbers that no memory was found for may change before they are looked at
    throw;
  }
}

// Changes of other TINs are told by where in memory they were made.
void CEType::lookForEdits() const {
  const detail::FlatTIN::Memory& memory = flat_->memoryOf(*this);
  bool isEdited = false;
  const auto visit = [&](const detail::AddressRange& range) {
    const auto holds = [&range](const void* list) {
      const auto address = reinterpret_cast<std::uintptr_t>(list);
      return range.begin <= address && address < range.end;
    };
    isEdited |= memory.meets(range) || holds(hullList_) || holds(edgeList_) || holds(triangleList_);
  };
  seenEdits_ = detail::EditLog::look(seenEdits_, visit);
  if (isEdited) takeEditsOver();
}

// A ring that no query has settled yet may have changed too. A copy that others share stays as it is.
void CEType::takeEditsOver() const {
  using Difference = detail::FlatTIN::Difference;
  const Difference difference = hullRingIsSettled_ ? flat_->differenceFrom(*this) : Difference::kOther;
  if (difference == Difference::kOther || (difference == Difference::kHeights && flat_.use_count() > 1)) {
    forgetCopy();
    return;
  }
  if (difference == Difference::kHeights) flat_->takeHeights(*this);
  flat_->forgetMemory();  // an element may have been replaced by one like it
}

// Through a pointer that was handed out, numbers change unseen. In a small network all of them are looked at before
// every query, in a large one those that an answer relies on. The handing out is a change that has just been looked
// for, so the copy is one of the numbers as they are when they are looked at first.
void CEType::watchNumbers() const {
  constexpr int kFewTriangles = 500;
  const bool isWatched = detail::EditLog::isAnythingHandedOut() && isHandedOut(flat_->memoryOf(*this));
  if (isWatched) flat_->hasNumbersOf(*this);
  const bool isSmall = flat_->triangleCount() <= kFewTriangles;
  numbersMayChange_ = isWatched && !isSmall;
  quietState_ = isWatched && isSmall ? detail::EditLog::kNever : seenEdits_;
}

bool CEType::copyStandsFor(int found, double x, double y) const {
  if (found != 0) return flat_->hasNumbersOf(*this, found);
  return flat_->isOutside(x, y) || flat_->hasNumbersOf(*this);
}

void CEType::forgetCopy() const {
  flat_.reset();
  if (!hullRingIsSettled_) hullRing_.reset();
}

template <typename Locate>
int CEType::locateOnCopy(double x, double y, Locate locate) {
  const int lastBefore = lastTriangleNo_;
  const int found = locate(flat());
  if (!numbersMayChange_ || copyStandsFor(found, x, y)) return found;
  forgetCopy();
  lastTriangleNo_ = lastBefore;
  return locate(flat());
}

int CEType::locateTri(double x, double y) {
  if (triangleCount() == 0) return 0;
  return locateOnCopy(x, y, [&](const detail::FlatTIN& tin) {
    hullRingIsSettled_ = hullRing_ != nullptr;
    return tin.locate(x, y, lastTriangleNo_);
  });
}

int CEType::locateTri(double x, double y, int start) {
  if (start == 0) return locateTri(x, y);
  return locateOnCopy(x, y, [&](const detail::FlatTIN& tin) { return tin.locate(x, y, start, lastTriangleNo_); });
}

int CEType::locateTri1(double x, double y) {
  return locateOnCopy(x, y, [&](const detail::FlatTIN& tin) { return tin.scan(x, y, lastTriangleNo_); });
}

// A vertex that has been put at the position itself since the construction stays where it is.
void CEType::toVertexPosition(double* x, double* y) const {
  const detail::Position surveyed{*x, *y};
  if (!movedBack_) {
    const detail::Position* vertex = flat().vertexBeside(surveyed);
    if (vertex == nullptr) return;
    *x = vertex->x;
    *y = vertex->y;
    return;
  }
  const auto moved = [](double v, double origin) {
    const double rounded = detail::roundThroughText(detail::kDecimalsOfPosition, v);
    return rounded == v ? (v - origin) + origin : v;
  };
  const detail::Position vertex{moved(*x, originX_), moved(*y, originY_)};
  if (samePosition(vertex, surveyed)) return;
  int last = lastTriangleNo_;
  const detail::FlatTIN& tin = flat();
  if (tin.hasVertexAt(tin.locate(*x, *y, last), surveyed)) return;
  *x = vertex.x;
  *y = vertex.y;
}

int* CEType::getRelateT(int tri) const {
  int* neighbours = new int[kEdgesOfTriangle]{0, 0, 0};
  for (int which = 0; which < kEdgesOfTriangle; ++which) {
    const TEdge* edge = edgeOf(tri, which);
    if (edge == nullptr) continue;
    const int other = edge->getLeftT() != tri ? edge->getLeftT() : edge->getRightT();
    if (other >= 1 && other <= triangleCount()) neighbours[which] = other;
  }
  return neighbours;
}

int CEType::getZero(int a, int b, int c) const { return (a == 0 ? 1 : 0) + (b == 0 ? 1 : 0) + (c == 0 ? 1 : 0); }

}  // namespace OrvikDTM
