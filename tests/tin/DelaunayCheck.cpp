// The checks behind DelaunayCheck.h.
#include "DelaunayCheck.h"

#include <algorithm>
#include <map>
#include <sstream>

#include <boost/multiprecision/cpp_int.hpp>

namespace support {
namespace {

using Big = boost::multiprecision::int256_t;

template <class Whole>
bool isInside(const Millimetres& a, const Millimetres& b, const Millimetres& c, const Millimetres& d) {
  const Whole ax = a.x - d.x;
  const Whole ay = a.y - d.y;
  const Whole bx = b.x - d.x;
  const Whole by = b.y - d.y;
  const Whole cx = c.x - d.x;
  const Whole cy = c.y - d.y;
  const Whole determinant = (ax * ax + ay * ay) * (bx * cy - cx * by) + (bx * bx + by * by) * (cx * ay - ax * cy) +
                            (cx * cx + cy * cy) * (ax * by - bx * ay);
  return determinant > 0;
}

// Up to this distance the determinant's terms stay below 2^(4 * 24 + 4).
bool isClose(const Millimetres& p, const Millimetres& q) {
  constexpr std::int64_t kClose = std::int64_t{1} << 24;
  return std::max(std::abs(p.x - q.x), std::abs(p.y - q.y)) < kClose;
}

class Checker {
 public:
  Checker(const std::vector<Millimetres>& positions, const Tables& tables) : positions_(positions), tables_(tables) {}

  std::string run(CircleCheck check) {
    const bool sound = checkNumbers() && checkVertices() && checkCounts() && checkSlots() && checkTriangles() &&
                       checkHull() && checkArea() && checkNeighbours();
    if (sound && check == CircleCheck::EveryPointAndEach) checkEveryCircle();
    return text_;
  }

 private:
  template <class... Parts>
  bool fail(const Parts&... parts) {
    std::ostringstream out;
    (out << ... << parts);
    text_ = out.str();
    return false;
  }

  int edgeCount() const { return static_cast<int>(tables_.edges.size()); }
  int triangleCount() const { return static_cast<int>(tables_.triangles.size()); }
  const EdgeRow& edge(int number) const { return tables_.edges[static_cast<std::size_t>(number - 1)]; }
  const std::array<int, 3>& triangle(int number) const {
    return tables_.triangles[static_cast<std::size_t>(number - 1)];
  }
  const Millimetres& at(int point) const { return positions_[static_cast<std::size_t>(point - 1)]; }

  bool lists(int number, int edgeNumber) const {
    const auto& three = triangle(number);
    return std::count(three.begin(), three.end(), edgeNumber) == 1;
  }

  bool checkNumbers() {
    const int points = static_cast<int>(positions_.size());
    for (int k = 1; k <= edgeCount(); ++k) {
      const EdgeRow& e = edge(k);
      if (e.start < 1 || e.start > points || e.end < 1 || e.end > points) return fail("edge ", k, " lacks a point");
      if (e.left < 1 || e.left > triangleCount()) return fail("edge ", k, " has nothing on its left");
      if (e.right < 0 || e.right > triangleCount()) return fail("edge ", k, " names no triangle on its right");
    }
    for (int t = 1; t <= triangleCount(); ++t) {
      for (const int e : triangle(t)) {
        if (e < 1 || e > edgeCount()) return fail("triangle ", t, " names edge ", e);
      }
    }
    for (const int e : tables_.hull) {
      if (e < 1 || e > edgeCount()) return fail("the hull names edge ", e);
    }
    return true;
  }

  bool checkVertices() {
    std::map<Millimetres, int> first;
    for (std::size_t i = 0; i < positions_.size(); ++i) first.emplace(positions_[i], static_cast<int>(i) + 1);
    vertexCount_ = static_cast<int>(first.size());
    std::vector<bool> used(positions_.size() + 1, false);
    for (const EdgeRow& e : tables_.edges)
      used[static_cast<std::size_t>(e.start)] = used[static_cast<std::size_t>(e.end)] = true;
    for (std::size_t i = 1; i < used.size(); ++i) {
      const bool isFirst = first.at(positions_[i - 1]) == static_cast<int>(i);
      if (used[i] != isFirst) return fail("point ", i, isFirst ? " is no vertex" : " is a vertex beside its repeat");
    }
    return true;
  }

  bool checkCounts() {
    const int n = vertexCount_;
    const int h = static_cast<int>(tables_.hull.size());
    if (triangleCount() == 2 * n - 2 - h && edgeCount() == 3 * n - 3 - h) return true;
    return fail("n = ", n, ", h = ", h, ", but ", triangleCount(), " triangles and ", edgeCount(), " edges");
  }

  bool checkSlots() {
    for (int k = 1; k <= edgeCount(); ++k) {
      const EdgeRow& e = edge(k);
      if (e.left == e.right) return fail("edge ", k, " has one triangle on both sides");
      if (!lists(e.left, k) || (e.right != 0 && !lists(e.right, k))) return fail("a triangle does not list edge ", k);
    }
    for (int t = 1; t <= triangleCount(); ++t) {
      for (const int e : triangle(t)) {
        if (edge(e).left != t && edge(e).right != t) return fail("edge ", e, " does not name triangle ", t);
      }
    }
    return true;
  }

  struct Side {
    int from;
    int to;
  };

  Side sideOf(int edgeNumber, int t) const {
    const EdgeRow& e = edge(edgeNumber);
    return e.left == t ? Side{e.start, e.end} : Side{e.end, e.start};
  }

  bool checkTriangles() {
    corners_.assign(static_cast<std::size_t>(triangleCount()) + 1, {});
    for (int t = 1; t <= triangleCount(); ++t) {
      const Side a = sideOf(triangle(t)[0], t);
      Side b = sideOf(triangle(t)[1], t);
      Side c = sideOf(triangle(t)[2], t);
      if (a.to != b.from) std::swap(b, c);
      if (a.to != b.from || b.to != c.from || c.to != a.from) return fail("triangle ", t, " is open");
      if (cross(at(a.from), at(b.from), at(c.from)) <= 0) return fail("triangle ", t, " is not counter-clockwise");
      corners_[static_cast<std::size_t>(t)] = {a.from, b.from, c.from};
    }
    return true;
  }

  bool checkHull() {
    const std::size_t h = tables_.hull.size();
    for (std::size_t i = 0; i < h; ++i) {
      const EdgeRow& e = edge(tables_.hull[i]);
      const EdgeRow& next = edge(tables_.hull[(i + 1) % h]);
      if (e.right != 0) return fail("hull entry ", i + 1, " has a triangle on its right");
      if (e.end != next.start) return fail("the hull breaks off after entry ", i + 1);
      if (cross(at(e.start), at(e.end), at(next.end)) < 0) return fail("the hull turns right after entry ", i + 1);
    }
    const auto open =
        std::count_if(tables_.edges.begin(), tables_.edges.end(), [](const auto& e) { return e.right == 0; });
    if (static_cast<std::size_t>(open) != h) return fail(open, " edges have nothing on their right, the hull has ", h);
    const auto lower = [](const Millimetres& p, const Millimetres& q) { return p.y != q.y ? p.y < q.y : p.x < q.x; };
    const Millimetres lowest = *std::min_element(positions_.begin(), positions_.end(), lower);
    if (at(edge(tables_.hull[0]).start) != lowest) return fail("the hull does not start at the lowest point");
    return true;
  }

  bool checkArea() {
    Wide sum = 0;
    for (int t = 1; t <= triangleCount(); ++t) {
      const auto& c = corners_[static_cast<std::size_t>(t)];
      sum += cross(at(c[0]), at(c[1]), at(c[2]));
    }
    if (sum != doubleHullArea(positions_)) return fail("the triangles do not fill the convex hull");
    return true;
  }

  bool checkNeighbours() {
    for (int k = 1; k <= edgeCount(); ++k) {
      const EdgeRow& e = edge(k);
      if (e.right == 0) continue;
      const auto& left = corners_[static_cast<std::size_t>(e.left)];
      for (const int apex : corners_[static_cast<std::size_t>(e.right)]) {
        if (apex == e.start || apex == e.end) continue;
        if (circleContains(at(left[0]), at(left[1]), at(left[2]), at(apex)))
          return fail("edge ", k, " is not Delaunay");
      }
    }
    return true;
  }

  bool checkEveryCircle() {
    for (int t = 1; t <= triangleCount(); ++t) {
      const auto& c = corners_[static_cast<std::size_t>(t)];
      for (std::size_t i = 0; i < positions_.size(); ++i) {
        if (circleContains(at(c[0]), at(c[1]), at(c[2]), positions_[i])) {
          return fail("the circle of triangle ", t, " contains point ", i + 1);
        }
      }
    }
    return true;
  }

  const std::vector<Millimetres>& positions_;
  const Tables& tables_;
  int vertexCount_ = 0;
  std::vector<std::array<int, 3>> corners_;
  std::string text_;
};

}  // namespace

bool circleContains(const Millimetres& a, const Millimetres& b, const Millimetres& c, const Millimetres& d) {
  const bool close = isClose(a, d) && isClose(b, d) && isClose(c, d);
  return close ? isInside<Wide>(a, b, c, d) : isInside<Big>(a, b, c, d);
}

bool areCollinear(const std::vector<Millimetres>& positions) {
  const auto other = std::find_if(positions.begin(), positions.end(),
                                  [&positions](const Millimetres& p) { return p != positions.front(); });
  return std::all_of(positions.begin(), positions.end(), [&](const Millimetres& p) {
    return other == positions.end() || cross(positions.front(), *other, p) == 0;
  });
}

std::string brokenDelaunayPromise(const std::vector<Millimetres>& positions, const Tables& tables, CircleCheck check) {
  return Checker(positions, tables).run(check);
}

}  // namespace support
