// What a FlatTIN looks triangles up by: their boxes, a triangle near any place, and their sides.
#include <algorithm>
#include <cmath>

#include <OrvikDTMAlgorithm/tin/FlatTIN.h>
#include <OrvikDTMAlgorithm/tin/LargeArrays.h>

inline namespace OrvikDTM {
namespace detail {

namespace {

constexpr int kEdgesOfTriangle = 3;

// Triangles whose area test reaches farther than this part of their extent are kept apart, lest the search for those
// that hold a point meet them everywhere.
constexpr double kPartBeyond = 1.0 / 16;

Box boxOf(const FlatTIN::Corners& c) {
  return {std::min({c.p[0].x, c.p[1].x, c.p[2].x}), std::min({c.p[0].y, c.p[1].y, c.p[2].y}),
          std::max({c.p[0].x, c.p[1].x, c.p[2].x}), std::max({c.p[0].y, c.p[1].y, c.p[2].y})};
}

bool isFinite(const FlatTIN::Corners& c) {
  return std::all_of(std::begin(c.p), std::end(c.p),
                     [](const Position& p) { return std::isfinite(p.x) && std::isfinite(p.y); });
}

Box unionOf(const Box& a, const Box& b) {
  return {std::min(a.minX, b.minX), std::min(a.minY, b.minY), std::max(a.maxX, b.maxX), std::max(a.maxY, b.maxY)};
}

Box boundsOf(const std::vector<NumberedBox>& boxes) {
  Box bounds = boxes.empty() ? Box{0, 0, 0, 0} : boxes[0].box;
  for (const NumberedBox& item : boxes) bounds = unionOf(bounds, item.box);
  return bounds;
}

// Cells without a triangle get that of the one before them in their row, or else of the one behind, or else of the row
// before theirs.
void fillGaps(const CellGrid& grid, std::vector<Number>& slots) {
  const std::size_t columns = grid.columns();
  for (std::size_t row = 0; row < grid.rows(); ++row) {
    Number* cells = slots.data() + row * columns;
    const Number* first = std::find_if(cells, cells + columns, [](Number slot) { return slot != 0; });
    Number latest = first != cells + columns ? *first : row > 0 ? cells[0 - static_cast<std::ptrdiff_t>(columns)] : 1;
    for (std::size_t column = 0; column < columns; ++column) {
      cells[column] = latest = cells[column] != 0 ? cells[column] : latest;
    }
  }
}

}  // namespace

std::unique_ptr<const FlatTIN::Index> FlatTIN::newIndex() const {
  std::vector<NumberedBox> boxes;
  std::vector<NumberedBox> farBoxes;
  reserveLarge(boxes, records_.size());
  for (int slot = 1; slot <= triangleCount(); ++slot) {
    const Corners* c = cornersAt(slot);
    if (c != nullptr && isFinite(*c)) boxes.push_back({boxOf(*c), static_cast<Number>(slot)});
  }
  const AreaReach reach(boundsOf(boxes));
  for (NumberedBox& item : boxes) {
    const auto slot = static_cast<int>(item.number);
    const Corners& c = *cornersAt(slot);
    if (at(slot).turn == 0) continue;  // the area test accepts nothing there
    const double parts = reach.partsBeyond(item.box, areaOf(c.p[0], c.p[2], c.p[1]));
    const Box widened = AreaReach::widened(item.box, parts);
    if (parts <= kPartBeyond) {
      item.box = widened;
    } else {
      farBoxes.push_back({widened, item.number});
    }
  }
  return std::make_unique<const Index>(Index{BoxTree(boxes), BoxTree(farBoxes), reach});
}

std::unique_ptr<const FlatTIN::Starts> FlatTIN::newStarts() const {
  auto made = std::make_unique<Starts>();
  Box bounds{0, 0, 0, 0};
  for (int slot = 1; slot <= triangleCount(); ++slot) {
    const Box box = boxOf(at(slot).corners);
    bounds = slot == 1 ? box : unionOf(bounds, box);
  }
  made->grid = CellGrid(bounds, triangleCount());
  made->slots = largeVector<Number>(made->grid.size());
  for (int slot = 1; slot <= triangleCount(); ++slot) {
    const Position* p = at(slot).corners.p;
    const Position middle{(p[0].x + p[1].x + p[2].x) / 3, (p[0].y + p[1].y + p[2].y) / 3};
    if (made->grid.covers(middle)) made->slots[made->grid.cellOf(middle)] = static_cast<Number>(slot);
  }
  fillGaps(made->grid, made->slots);
  return made;
}

// Every side once; its number tells a triangle that has it, and which of its edges it is.
std::unique_ptr<const SideTree> FlatTIN::newSides() const {
  std::vector<NumberedSide> sides;
  for (int slot = 1; slot <= triangleCount(); ++slot) {
    for (int which = 0; which < kEdgesOfTriangle; ++which) {
      const OddEdge edge = edgeAt(slot, which);
      if (edge.next == 0 || slot < edge.next) {
        sides.push_back({edge.start, edge.end, static_cast<Number>(slot * kEdgesOfTriangle + which)});
      }
    }
  }
  return std::make_unique<const SideTree>(sides);
}

// Of a network that covers each place as often as its ring goes round it: the slot of a triangle that holds p, 0 when
// none is found. A point in a triangle has a side of it next above, which no other side comes before.
int FlatTIN::fromSides(const Position& p) const {
  int found = 0;
  sides().visitChains(p.x, [&](const SideTree::Chain& chain) {
    const std::size_t above = found == 0 ? chain.countBelow(p) : chain.size();
    if (above == chain.size()) return;
    const auto number = static_cast<int>(chain[above].number);
    const int slot = number / kEdgesOfTriangle;
    const int next = edgeAt(slot, number % kEdgesOfTriangle).next;
    for (const int candidate : {slot, next}) {
      if (candidate != 0 && holdsAt(candidate, p)) found = candidate;
    }
  });
  return found;
}

// Whether boxes tell triangles apart so badly, as they do the slivers of a fan, that to sort the sides has paid.
bool FlatTIN::isCrowded() const {
  constexpr std::size_t kTestsPerTriangle = 8;
  return testedInVain_.load(std::memory_order_relaxed) > kTestsPerTriangle * records_.size();
}

}  // namespace detail
}  // namespace OrvikDTM
