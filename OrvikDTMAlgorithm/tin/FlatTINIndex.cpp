// What a FlatTIN looks triangles up by: their boxes, and a triangle near any place.
#include <algorithm>
#include <cmath>

#include <OrvikDTMAlgorithm/tin/FlatTIN.h>
#include <OrvikDTMAlgorithm/tin/LargeArrays.h>

inline namespace OrvikDTM {
namespace detail {

namespace {

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

}  // namespace

const FlatTIN::Index& FlatTIN::index() const {
  if (index_ != nullptr) return *index_;
  std::vector<NumberedBox> boxes;
  std::vector<NumberedBox> farBoxes;
  reserveLarge(boxes, records_.size());
  for (int tri = 1; tri <= triangleCount(); ++tri) {
    const Corners* c = corners(tri);
    if (c != nullptr && isFinite(*c)) boxes.push_back({boxOf(*c), static_cast<Number>(tri)});
  }
  const AreaReach reach(boundsOf(boxes));
  for (NumberedBox& item : boxes) {
    const Corners& c = *corners(static_cast<int>(item.number));
    if (turn(static_cast<int>(item.number)) == 0) continue;  // the area test accepts nothing there
    const double parts = reach.partsBeyond(item.box, areaOf(c.p[0], c.p[2], c.p[1]));
    const Box widened = AreaReach::widened(item.box, parts);
    if (parts <= kPartBeyond) {
      item.box = widened;
    } else {
      farBoxes.push_back({widened, item.number});
    }
  }
  index_ = std::make_unique<Index>(Index{BoxTree(boxes), BoxTree(farBoxes), reach});
  return *index_;
}

const FlatTIN::Starts& FlatTIN::starts() const {
  if (starts_ != nullptr) return *starts_;
  auto made = std::make_unique<Starts>();
  Box bounds{0, 0, 0, 0};
  for (int tri = 1; tri <= triangleCount(); ++tri) {
    const Box box = boxOf(record(tri).corners);
    bounds = tri == 1 ? box : unionOf(bounds, box);
  }
  made->grid = CellGrid(bounds, triangleCount());
  made->triangles = largeVector<Number>(made->grid.size());
  for (int tri = 1; tri <= triangleCount(); ++tri) {
    const Position* p = record(tri).corners.p;
    const Position middle{(p[0].x + p[1].x + p[2].x) / 3, (p[0].y + p[1].y + p[2].y) / 3};
    if (made->grid.covers(middle)) made->triangles[made->grid.cellOf(middle)] = static_cast<Number>(tri);
  }
  Number latest = 1;
  for (Number& start : made->triangles) start = latest = start != 0 ? start : latest;
  starts_ = std::move(made);
  return *starts_;
}

}  // namespace detail
}  // namespace OrvikDTM
