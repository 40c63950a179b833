// Whether the lists still say what they said when the copy was taken.
#include <algorithm>
#include <bit>
#include <cstdint>

#include <OrvikDTMAlgorithm/tin/CETypeElements.h>
#include <OrvikDTMAlgorithm/tin/ConvexList.h>
#include <OrvikDTMAlgorithm/tin/FlatTIN.h>
#include <OrvikDTMAlgorithm/tin/LargeArrays.h>
#include <OrvikDTMAlgorithm/tin/ListElements.h>
#include <OrvikDTMAlgorithm/tin/TConvex.h>

inline namespace OrvikDTM {
namespace detail {

namespace {

constexpr int kEdgesOfTriangle = 3;
constexpr int kSidesOfEdge = 2;

int lengthOf(const SLType* list) { return list == nullptr ? 0 : list->getListLen(); }

// Also of what is no number.
bool sameBits(double a, double b) { return std::bit_cast<std::uint64_t>(a) == std::bit_cast<std::uint64_t>(b); }

bool sameBits(const Position& a, const Position& b) { return sameBits(a.x, b.x) && sameBits(a.y, b.y); }

class RangeOfAll {
 public:
  template <typename Element>
  void add(const Element* element) {
    if (element == nullptr) return;
    const auto begin = reinterpret_cast<std::uintptr_t>(element);
    range_ = {std::min(range_.begin, begin), std::max(range_.end, begin + sizeof(Element))};
  }
  AddressRange range() const { return range_; }

 private:
  AddressRange range_{~std::uintptr_t{0}, 0};
};

template <typename Element>
AddressRange rangeOf(const SLType* list) {
  return ListElements::read<Element>(list, [](const auto& elements) {
    RangeOfAll range;
    for (std::size_t i = 0; i < elements.size(); ++i) range.add(elements[i]);
    return range.range();
  });
}

AddressRange rangeOfPoints(const SLType* edges) {
  return ListElements::read<TEdge>(edges, [](const auto& elements) {
    RangeOfAll range;
    for (std::size_t i = 0; i < elements.size(); ++i) {
      if (elements[i] == nullptr) continue;
      range.add<TPoint>(elements[i]->getStartPoint());
      range.add<TPoint>(elements[i]->getEndPoint());
    }
    return range.range();
  });
}

// Calls visit(i, number) for the numbers that the elements of a list hold, `count` each, until one says false; whether
// none does. An element that is missing holds zeros.
template <typename Element, typename NumbersOf, typename Visit>
bool visitNumbers(const SLType* list, int count, NumbersOf numbersOf, Visit visit) {
  return ListElements::read<Element>(list, [&](const auto& elements) {
    std::size_t place = 0;
    for (std::size_t i = 0; i < elements.size(); ++i) {
      const int* numbers = elements[i] == nullptr ? nullptr : numbersOf(*elements[i]);
      for (int k = 0; k < count; ++k, ++place) {
        if (!visit(place, numbers == nullptr ? 0 : numbers[k])) return false;
      }
    }
    return true;
  });
}

template <typename Visit>
bool visitEdgeNumbers(const SLType* triangles, Visit visit) {
  return visitNumbers<Triangle>(
      triangles, kEdgesOfTriangle, [](const Triangle& triangle) { return triangle.getEno(); }, visit);
}

template <typename Visit>
bool visitTriangleNumbers(const SLType* edges, Visit visit) {
  return visitNumbers<TEdge>(
      edges, kSidesOfEdge, [](const TEdge& edge) { return edge.getTriNo(); }, visit);
}

}  // namespace

bool FlatTIN::sameEdge(const OddEdge& a, const OddEdge& b) const {
  return a.isWhole == b.isWhole && a.leavesToTheLeft == b.leavesToTheLeft && a.next == b.next &&
         sameBits(a.start, b.start) && sameBits(a.end, b.end);
}

FlatTIN::Difference FlatTIN::differenceAt(const CEType& tin, int slot) const {
  const Record& r = at(slot);
  CEType::Corners points{};
  const bool hasCorners = tin.cornersOf(r.number, points);
  if (hasCorners != (r.hasCorners != 0)) return Difference::kOther;
  bool sameHeights = true;
  if (hasCorners) {
    const TPoint* corner[] = {points.p1, points.p2, points.p3};
    for (int i = 0; i < kEdgesOfTriangle; ++i) {
      if (!sameBits(positionOf(*corner[i]), r.corners.p[i])) return Difference::kOther;
      sameHeights &= sameBits(corner[i]->getZ(), r.corners.z[i]);
    }
  }
  for (int which = 0; which < kEdgesOfTriangle; ++which) {
    if (!sameEdge(oddEdgeOf(tin, r.number, which), edgeAt(slot, which))) return Difference::kOther;
  }
  return sameHeights ? Difference::kNone : Difference::kHeights;
}

// The hull's ring is not looked at: one that is settled stays, and what is known of covering depends, beyond the
// triangles, on the hull's entries.
FlatTIN::Difference FlatTIN::differenceFrom(const CEType& tin) const {
  if (triangleCount() != lengthOf(tin.triangleList_) || edgeCount_ != lengthOf(tin.edgeList_)) {
    return Difference::kOther;
  }
  const int hullCount = lengthOf(tin.hullList_);
  if (hullEdges_.size() != static_cast<std::size_t>(hullCount)) return Difference::kOther;
  for (int number = 1; number <= hullCount; ++number) {
    const TConvex* entry = tin.hullList_->findByNum(tin.hullList_, number);
    if (hullEdges_[static_cast<std::size_t>(number - 1)] != (entry == nullptr ? 0 : entry->getEdgeNo())) {
      return Difference::kOther;
    }
  }
  Difference all = Difference::kNone;
  for (int slot = 1; slot <= triangleCount(); ++slot) {
    all = std::max(all, differenceAt(tin, slot));
    if (all == Difference::kOther) break;
  }
  return all;
}

void FlatTIN::takeHeights(const CEType& tin) {
  for (Record& r : records_) {
    CEType::Corners points{};
    if (!tin.cornersOf(r.number, points)) continue;
    r.corners.z[0] = points.p1->getZ();
    r.corners.z[1] = points.p2->getZ();
    r.corners.z[2] = points.p3->getZ();
  }
}

const FlatTIN::Memory& FlatTIN::memoryOf(const CEType& tin) const {
  if (!memory_) {
    memory_ = {rangeOfPoints(tin.edgeList_), rangeOf<TEdge>(tin.edgeList_), rangeOf<Triangle>(tin.triangleList_),
               rangeOf<TConvex>(tin.hullList_)};
  }
  return *memory_;
}

bool FlatTIN::hasNumbersOf(const CEType& tin) const {
  if (numbers_ == nullptr) {
    auto numbers = std::make_unique<Numbers>();
    const auto append = [](std::vector<int>& to) {
      return [&to](std::size_t /*place*/, int number) {
        to.push_back(number);
        return true;
      };
    };
    reserveLarge(numbers->edges, kEdgesOfTriangle * records_.size());
    reserveLarge(numbers->triangles, kSidesOfEdge * static_cast<std::size_t>(edgeCount_));
    visitEdgeNumbers(tin.triangleList_, append(numbers->edges));
    visitTriangleNumbers(tin.edgeList_, append(numbers->triangles));
    numbers_ = std::move(numbers);
    return true;
  }
  const auto isAsIn = [](const std::vector<int>& known) {
    return [&known](std::size_t place, int number) { return place < known.size() && known[place] == number; };
  };
  return visitEdgeNumbers(tin.triangleList_, isAsIn(numbers_->edges)) &&
         visitTriangleNumbers(tin.edgeList_, isAsIn(numbers_->triangles));
}

bool FlatTIN::hasNumbersOf(const CEType& tin, int tri) const {
  const Triangle* triangle = tin.triangleList_->findByNum(tin.triangleList_, tri);
  if (triangle == nullptr || numbers_ == nullptr || !exists(tri)) return false;
  const int* edges = triangle->getEno();
  const int* known = &numbers_->edges[static_cast<std::size_t>(tri - 1) * kEdgesOfTriangle];
  if (!std::equal(edges, edges + kEdgesOfTriangle, known)) return false;
  for (int which = 0; which < kEdgesOfTriangle; ++which) {
    const TEdge* edge = tin.edgeOf(tri, which);
    if (edge == nullptr) continue;
    const int* sides = edge->getTriNo();
    if (!std::equal(sides, sides + kSidesOfEdge,
                    &numbers_->triangles[static_cast<std::size_t>(edges[which] - 1) * kSidesOfEdge])) {
      return false;
    }
  }
  return true;
}

bool FlatTIN::isOutside(double x, double y) const { return covers_ && !hullCells_.placeOf(*hull_, {x, y}).isWithin(); }

}  // namespace detail
}  // namespace OrvikDTM
