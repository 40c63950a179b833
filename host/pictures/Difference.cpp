#include "Difference.h"

#include <algorithm>
#include <cmath>

#include "BoxTree.h"

namespace pictures {

namespace {

constexpr std::size_t kFewestCorners = 3;

Box boxOf(const Loop& loop) {
  Box box = Box::none();
  for (const DifferencePoint& p : loop) box.add(p.x, p.y);
  return box;
}

// The height of the plane through a triangle; at a corner, the corner's.
double heightIn(const PlanMesh& mesh, const std::array<std::uint32_t, 3>& t, double x, double y) {
  const Point& a = mesh.corner(t, 0);
  const Point& b = mesh.corner(t, 1);
  const Point& c = mesh.corner(t, 2);
  for (const Point* corner : {&a, &b, &c}) {
    if (corner->x == x && corner->y == y) return corner->z;
  }
  const Point p{x, y, 0.0};
  const double whole = cross(a, b, c);
  return a.z + (b.z - a.z) * (cross(c, a, p) / whole) + (c.z - a.z) * (cross(a, b, p) / whole);
}

// Walks the ground's triangles from the whole to the parts. The boundary comes along, cut to each part's box: where
// nothing is left of it, nothing of the part lies within; where it is the whole box, all does.
class Overlay {
 public:
  Overlay(const PlanMesh& ground, const Reference& reference)
      : ground_(ground),
        groundTree_(ground),
        reference_(reference),
        referenceTree_(reference.surface == nullptr ? PlanMesh() : *reference.surface) {}

  Pieces run(const std::vector<Point>& boundary) {
    if (groundTree_.empty()) return std::move(pieces_);
    if (boundary.size() < kFewestCorners) {
      for (std::uint32_t t = 0; t < ground_.triangles.size(); ++t) addTriangle(t);
      return std::move(pieces_);
    }
    Loop loop;
    for (const Point& p : boundary) loop.push_back({p.x, p.y, 0.0, 0.0});
    if (doubleArea(loop) < 0.0) std::reverse(loop.begin(), loop.end());
    descend(groundTree_.root(), loop);
    return std::move(pieces_);
  }

 private:
  static bool isWhole(const Loop& loop, const Box& box) {
    if (loop.size() != 4 || doubleArea(loop) != 2.0 * box.width() * box.height()) return false;
    return std::all_of(loop.begin(), loop.end(), [&](const DifferencePoint& p) {
      return (p.x == box.minX || p.x == box.maxX) && (p.y == box.minY || p.y == box.maxY);
    });
  }

  void descend(const BoxTree::Node& node, Loop boundary) {
    clipToBox(boundary, node.box, scratch_);
    if (boundary.empty()) return;
    const bool whole = isWhole(boundary, node.box);
    if (!whole && node.left != 0) {
      descend(groundTree_.node(node.left), boundary);
      descend(groundTree_.node(node.right), boundary);
      return;
    }
    for (std::uint32_t i = node.begin; i < node.end; ++i) {
      const std::uint32_t t = groundTree_.order()[i];
      if (whole) {
        addTriangle(t);
      } else {
        addWithin(t, boundary);
      }
    }
  }

  void addTriangle(std::uint32_t t) {
    Loop loop;
    for (int i = 0; i < 3; ++i) {
      const Point& p = ground_.corner(ground_.triangles[t], i);
      loop.push_back({p.x, p.y, p.z, 0.0});
    }
    compare(loop);
  }

  void addWithin(std::uint32_t t, Loop loop) {
    const auto& triangle = ground_.triangles[t];
    clipToTriangle(loop, ground_.corner(triangle, 0), ground_.corner(triangle, 1), ground_.corner(triangle, 2),
                   scratch_);
    for (DifferencePoint& p : loop) p.z = heightIn(ground_, triangle, p.x, p.y);
    compare(loop);
  }

  void compare(const Loop& loop) {
    if (reference_.surface == nullptr) return add(loop, [this](double, double) { return reference_.level; });
    found_.clear();
    referenceTree_.find(boxOf(loop), found_);
    for (const std::uint32_t t : found_) {
      const auto& triangle = reference_.surface->triangles[t];
      Loop common = loop;
      clipToTriangle(common, reference_.surface->corner(triangle, 0), reference_.surface->corner(triangle, 1),
                     reference_.surface->corner(triangle, 2), scratch_);
      add(common, [&](double x, double y) { return heightIn(*reference_.surface, triangle, x, y); });
    }
  }

  template <typename Height>
  void add(Loop loop, Height height) {
    if (loop.size() < kFewestCorners || doubleArea(loop) == 0.0) return;
    for (DifferencePoint& p : loop) {
      p.above = p.z - height(p.x, p.y);
      if (std::fabs(p.above) <= kSameHeight) p.above = 0.0;
    }
    pieces_.add(loop);
  }

  const PlanMesh& ground_;
  BoxTree groundTree_;
  Reference reference_;
  BoxTree referenceTree_;
  std::vector<std::uint32_t> found_;
  Loop scratch_;
  Pieces pieces_;
};

}  // namespace

Loop Pieces::piece(std::size_t i) const {
  const auto first = points.begin();
  return {first + static_cast<std::ptrdiff_t>(begins[i]), first + static_cast<std::ptrdiff_t>(begins[i + 1])};
}

void Pieces::add(const Loop& loop) {
  points.insert(points.end(), loop.begin(), loop.end());
  begins.push_back(points.size());
}

Pieces differencePieces(const PlanMesh& ground, const Reference& reference, const std::vector<Point>& boundary) {
  return Overlay(ground, reference).run(boundary);
}

}  // namespace pictures
