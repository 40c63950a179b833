#include "SlowLocation.h"

#include <algorithm>
#include <cfloat>
#include <cmath>
#include <set>

#include <OrvikDTMAlgorithm/tin/ConvexList.h>
#include <OrvikDTMAlgorithm/tin/EList.h>
#include <OrvikDTMAlgorithm/tin/TConvex.h>
#include <OrvikDTMAlgorithm/tin/TEdge.h>
#include <OrvikDTMAlgorithm/tin/TList.h>
#include <OrvikDTMAlgorithm/tin/Triangle.h>

#include "ExactPlane.h"

namespace slow {

namespace {

bool isFinite(const TPoint& p) { return std::isfinite(p.getX()) && std::isfinite(p.getY()); }

int turnOf(const TPoint& a, const TPoint& b, const TPoint& c) {
  if (!isFinite(a) || !isFinite(b) || !isFinite(c)) return 0;
  // Whole numbers of thousandths or the like need no rational arithmetic: the products are exact in 64 bits.
  const double ux = b.getX() - a.getX();
  const double uy = b.getY() - a.getY();
  const double vx = c.getX() - a.getX();
  const double vy = c.getY() - a.getY();
  const double det = ux * vy - uy * vx;
  const double size = (std::fabs(ux) + std::fabs(uy)) * (std::fabs(vx) + std::fabs(vy));
  if (std::fabs(det) > 1e-14 * size && size > 1e-200 && size < 1e200) return det > 0 ? 1 : -1;
  return exact::side(a, b, c);
}

double areaOf(const TPoint& a, const TPoint& b, const TPoint& c) {
  return std::fabs((b.getX() - a.getX()) * (c.getY() - a.getY()) - (b.getY() - a.getY()) * (c.getX() - a.getX())) / 2;
}

// -1 left, 1 right, 0 within the tolerance.
int sideOf(const TPoint& s, const TPoint& e, const TPoint& p) {
  if ((s.getX() == p.getX() && e.getX() == p.getX()) || (s.getY() == p.getY() && e.getY() == p.getY())) return 0;
  const double cross = (e.getX() - s.getX()) * (p.getY() - s.getY()) - (e.getY() - s.getY()) * (p.getX() - s.getX());
  if (std::fabs(cross) <= 0.0002) return 0;
  return cross < 0 ? 1 : -1;
}

int across(int tri, int left, int right, int side) {
  if (left != tri) return side == -1 ? left : 0;
  return side == 1 ? right : 0;
}

bool eliminate(double (&m)[3][4]) {
  for (int column = 0; column < 3; ++column) {
    int pivot = column;
    while (pivot < 3 && m[pivot][column] == 0.0) ++pivot;
    if (pivot == 3) return false;
    if (pivot != column) std::swap(m[pivot], m[column]);
    for (int row = 0; row < 3; ++row) {
      if (row == column) continue;
      const double factor = m[row][column] / m[column][column];
      for (int k = column; k < 4; ++k) m[row][k] -= factor * m[column][k];
    }
  }
  return true;
}

}  // namespace

int Location::triangleCount() const { return tin_.getTList() == nullptr ? 0 : tin_.getTList()->getListLen(); }

bool Location::edgeOf(int tri, int which, Edge& edge) const {
  if (tin_.getTList() == nullptr || tin_.getEList() == nullptr) return false;
  const Triangle* triangle = tin_.getTList()->findByNum(tin_.getTList(), tri);
  if (triangle == nullptr) return false;
  const TEdge* e = tin_.getEList()->findByNum(tin_.getEList(), triangle->getEno()[which]);
  if (e == nullptr || e->getStartPoint() == nullptr || e->getEndPoint() == nullptr) return false;
  edge = {e->getStartPoint(), e->getEndPoint(), e->getLeftT(), e->getRightT()};
  return true;
}

bool Location::cornersOf(int tri, const TPoint* (&corners)[3]) const {
  Edge first{};
  Edge second{};
  if (!edgeOf(tri, 0, first) || !edgeOf(tri, 1, second)) return false;
  corners[0] = first.start;
  corners[1] = first.end;
  corners[2] = first.start->equals(second.start) || first.end->equals(second.start) ? second.end : second.start;
  return true;
}

bool Location::isFlat(int tri) const {
  const TPoint* c[3];
  return cornersOf(tri, c) && turnOf(*c[0], *c[1], *c[2]) == 0;
}

bool Location::holds(int tri, const TPoint& p) const {
  const TPoint* c[3];
  if (!isFinite(p) || !cornersOf(tri, c)) return false;
  const int turn = turnOf(*c[0], *c[1], *c[2]);
  return turn != 0 && turnOf(*c[0], *c[1], p) * turn >= 0 && turnOf(*c[1], *c[2], p) * turn >= 0 &&
         turnOf(*c[2], *c[0], p) * turn >= 0;
}

bool Location::acceptsByArea(int tri, const TPoint& p) const {
  const TPoint* c[3];
  if (!cornersOf(tri, c) || isFlat(tri)) return false;
  const TPoint& a = *c[0];
  const TPoint& third = *c[2];
  const TPoint& b = *c[1];
  const double parts = areaOf(p, a, b) + areaOf(p, b, third) + areaOf(p, third, a);
  return std::fabs(areaOf(a, third, b) - parts) < 0.0001;
}

int Location::nextOnWalk(int tri, const TPoint& p) const {
  const auto leadsOn = [this](int next) { return next >= 1 && next <= triangleCount(); };
  for (const bool tolerant : {true, false}) {
    for (int which = 0; which < 3; ++which) {
      Edge e{};
      if (!edgeOf(tri, which, e)) continue;
      const int side = tolerant ? sideOf(*e.start, *e.end, p) : -turnOf(*e.start, *e.end, p);
      const int next = across(tri, e.left, e.right, side);
      if (leadsOn(next)) return next;
    }
  }
  return 0;
}

int Location::beyondFlat(int tri, const TPoint& p) const {
  std::vector<int> flat{tri};
  std::set<int> seen{tri};
  int firstFound = 0;
  for (std::size_t i = 0; i < flat.size(); ++i) {
    for (int which = 0; which < 3; ++which) {
      Edge e{};
      if (!edgeOf(flat[i], which, e)) continue;
      const int next = e.left != flat[i] ? e.left : e.right;
      if (next < 1 || next > triangleCount() || !seen.insert(next).second) continue;
      if (isFlat(next)) {
        flat.push_back(next);
        continue;
      }
      if (holds(next, p)) return next;
      if (firstFound == 0) firstFound = next;
    }
  }
  return firstFound;
}

Location::WalkEnd Location::walk(int start, const TPoint& p) const {
  int tri = start;
  bool hasLeftFlat = false;
  for (int moves = 0; moves <= triangleCount(); ++moves) {
    if (holds(tri, p)) return {tri, tri};
    int next = nextOnWalk(tri, p);
    if (next == 0 && !hasLeftFlat && isFlat(tri)) {
      next = beyondFlat(tri, p);
      hasLeftFlat = true;
    }
    if (next == 0) return {0, tri};
    tri = next;
  }
  return {0, tri};
}

void Location::chainHull() {
  ConvexList* list = tin_.getCList();
  if (list == nullptr || list->getListLen() < 3) return;
  std::vector<const TEdge*> sides;
  std::size_t withLength = 0;
  hullIsInvalid_ = true;
  for (int k = 1; k <= list->getListLen(); ++k) {
    const TConvex* node = list->findByNum(list, k);
    const TEdge* e = node == nullptr || tin_.getEList() == nullptr
                         ? nullptr
                         : tin_.getEList()->findByNum(tin_.getEList(), node->getEdgeNo());
    if (e == nullptr || e->getStartPoint() == nullptr || e->getEndPoint() == nullptr) return;
    if (*e->getStartPoint() == *e->getEndPoint()) continue;
    sides.push_back(e);
    if (!e->getStartPoint()->equals(e->getEndPoint())) ++withLength;
  }
  if (sides.empty()) return;
  hull_ = {*sides[0]->getStartPoint(), *sides[0]->getEndPoint()};
  std::size_t walked = hull_[0].equals(&hull_[1]) ? 0 : 1;
  for (;;) {
    const auto side = std::find_if(sides.begin(), sides.end(),
                                   [this](const TEdge* e) { return *e->getStartPoint() == hull_.back(); });
    if (side == sides.end()) return;
    const TPoint next = *(*side)->getEndPoint();
    if (!next.equals(&hull_.back())) ++walked;
    if (walked > 1 && next.equals(&hull_.front())) break;
    if (std::find(hull_.begin(), hull_.end(), next) != hull_.end()) return;
    hull_.push_back(next);
  }
  hullIsInvalid_ = walked != withLength;
}

bool Location::isInHull(const TPoint& p) {
  if (hull_.empty() && !hullIsInvalid_) chainHull();
  if (hullIsInvalid_) return true;
  if (hull_.size() < 3) return false;
  bool inside = false;
  for (std::size_t i = 0; i < hull_.size(); ++i) {
    const TPoint& a = hull_[i == 0 ? hull_.size() - 1 : i - 1];
    const TPoint& b = hull_[i];
    const bool inBox = std::min(a.getX(), b.getX()) <= p.getX() && p.getX() <= std::max(a.getX(), b.getX()) &&
                       std::min(a.getY(), b.getY()) <= p.getY() && p.getY() <= std::max(a.getY(), b.getY());
    const int turn = turnOf(a, b, p);
    if (inBox && turn == 0) return true;
    if ((a.getX() > p.getX()) == (b.getX() > p.getX()) || p.getY() > std::max(a.getY(), b.getY())) continue;
    const bool isAbove = p.getY() < std::min(a.getY(), b.getY());
    inside ^= isAbove || (a.getX() < b.getX() ? turn < 0 : turn > 0);
  }
  return inside;
}

int Location::locateTri(double x, double y) {
  const TPoint p(x, y, 0);
  if (triangleCount() == 0 || !isInHull(p)) return 0;
  if (hullIsInvalid_) return locateTri1(x, y);
  const WalkEnd end = walk(last_ >= 1 && last_ <= triangleCount() ? last_ : 1, p);
  if (end.found == 0) return locateTri1(x, y);
  return last_ = end.found;
}

int Location::locateTri(double x, double y, int start) {
  if (start == 0) return locateTri(x, y);
  if (start < 0 || start > triangleCount()) return 0;
  const TPoint p(x, y, 0);
  const WalkEnd end = walk(start, p);
  if (end.found != 0) return end.found;
  return acceptsByArea(end.last, p) ? end.last : 0;
}

int Location::locateTri1(double x, double y) {
  const TPoint p(x, y, 0);
  std::vector<int> order{last_};
  const int first = std::max(last_ - 10, 1);
  for (int tri = first; tri <= triangleCount(); ++tri) order.push_back(tri);
  for (int tri = 1; tri < first; ++tri) order.push_back(tri);
  for (const bool exactly : {true, false}) {
    for (const int tri : order) {
      if (exactly ? holds(tri, p) : acceptsByArea(tri, p)) return last_ = tri;
    }
  }
  return 0;
}

double Location::getHeight(double x, double y) {
  const int tri = locateTri(x, y);
  const TPoint* c[3];
  if (tri == 0 || !cornersOf(tri, c)) return DBL_MAX;
  for (const TPoint* corner : c) {
    if (corner->getX() == x && corner->getY() == y) return corner->getZ();
  }
  double m[3][4];
  for (int row = 0; row < 3; ++row) {
    m[row][0] = c[row]->getX() - c[0]->getX();
    m[row][1] = c[row]->getY() - c[0]->getY();
    m[row][2] = 1.0;
    m[row][3] = c[row]->getZ();
  }
  if (!eliminate(m)) return 0.0;
  return m[0][3] / m[0][0] * (x - c[0]->getX()) + m[1][3] / m[1][1] * (y - c[0]->getY()) + m[2][3] / m[2][2];
}

}  // namespace slow
