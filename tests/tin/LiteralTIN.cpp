// The slow construction behind LiteralTIN.h. Nothing here is clever on purpose.
#include "LiteralTIN.h"

#include <algorithm>
#include <cfloat>
#include <cmath>
#include <cstdio>
#include <cstdlib>

namespace literal {
namespace {

constexpr double kLineTolerance = 0.0002;
constexpr double kCircleTolerance = 1e-7;
constexpr std::size_t kQueueCapacity = 200000;

bool samePlace(const Point& a, const Point& b) { return a.x == b.x && a.y == b.y; }

double squaredLength(const Edge& e) {
  const double dx = e.start->x - e.end->x;
  const double dy = e.start->y - e.end->y;
  return dx * dx + dy * dy;
}

double crossValue(const Edge& e, const Point& p) {
  const double x1 = e.start->x;
  const double y1 = e.start->y;
  const double x2 = e.end->x;
  const double y2 = e.end->y;
  return (y1 - y2) * p.x + (x2 - x1) * p.y + y2 * x1 - x2 * y1;
}

bool onAxisLine(const Edge& e, const Point& p) {
  return (e.start->x == p.x && e.end->x == p.x) || (e.start->y == p.y && e.end->y == p.y);
}

std::string fixedText(double v, int decimals) {
  std::vector<char> text(400);
  std::snprintf(text.data(), text.size(), "%.*f", decimals, v);
  std::string result = text.data();
  const bool isZero = result.find_first_of("123456789") == std::string::npos;
  if (isZero && result[0] == '-') result.erase(0, 1);
  return result;
}

bool byX(const Point* a, const Point* b) { return a->x < b->x; }

bool byYThenX(const Point* a, const Point* b) {
  if (a->y != b->y) return a->y < b->y;
  return a->x < b->x;
}

// Infinite coordinates have directions and lengths that are no numbers; they count as larger than any, so that there is
// an order at all.
bool isLess(double a, double b) { return std::isnan(b) ? !std::isnan(a) : a < b; }

bool sweepsBefore(const Edge& a, const Edge& b) {
  const double angleA = angleByX(a);
  const double angleB = angleByX(b);
  if (isLess(angleA, angleB)) return true;
  if (isLess(angleB, angleA)) return false;
  return isLess(squaredLength(b), squaredLength(a));
}

class Builder {
 public:
  explicit Builder(Network& network) : net_(network) {}

  bool fan() {
    const std::vector<Point*>& pts = net_.sweep;
    const int n = static_cast<int>(pts.size());
    if (n < 3) return false;
    const long capacity = *net_.maxPoints;
    net_.hull.setCapacity(capacity);
    net_.edges.setCapacity(9 * capacity);
    net_.triangles.setCapacity(3 * capacity);

    const Edge base{point(1), point(2)};
    int k = 3;
    while (k <= n && isPointInEdge(base, *point(k))) ++k;
    if (k > n) return false;
    net_.flag = k;

    for (int j = 1; j <= k - 1; ++j) net_.hull.add(addEdge(point(j), point(j + 1)));
    for (int m = k - 2; m >= 1; --m) {
      const int d = addEdge(point(k), point(m));
      const int t = addTriangle(d, d - 1, m);
      net_.edges[d].left = t;
      if (net_.edges[d - 1].left == 0) {
        net_.edges[d - 1].left = t;
      } else {
        net_.edges[d - 1].right = t;
      }
      net_.edges[m].left = t;
    }
    net_.hull.add(net_.edges.length());
    return true;
  }

  void addRemaining() {
    const int n = static_cast<int>(net_.sweep.size());
    for (int i = *net_.flag + 1; i <= n; ++i) addPoint(*point(i));
  }

 private:
  Point* point(int number) { return net_.sweep.at(static_cast<std::size_t>(number - 1)); }

  int addEdge(Point* start, Point* end) {
    net_.edges.add(Edge{start, end});
    return net_.edges.length();
  }

  int addTriangle(int a, int b, int c) {
    net_.triangles.add(Triangle{{a, b, c}});
    return net_.triangles.length();
  }

  Edge& hullEdge(int entry) { return net_.edges[net_.hull[entry]]; }

  void addPoint(Point& p) {
    const int h = net_.hull.length();
    if (isPointInEdge(hullEdge(h), p)) {
      addCollinear(p, net_.hull[h]);
      return;
    }
    int j = h - 1;
    for (; j >= 1; --j) {
      const Edge& e = hullEdge(j);
      if (isPointInEdge(e, p)) break;
      if (point2Line(e, *point(1)) == point2Line(e, p)) break;
    }
    if (j >= 1) {
      joinVisible(p, hullEdge(j).end, j + 1);
      return;
    }
    for (int first = 2; first <= h; ++first) {
      if (isPointInEdge(hullEdge(first), *point(1))) continue;
      joinVisible(p, hullEdge(first).start, first);
      return;
    }
  }

  // p lies between the last hull vertex and point 1: the closing edge ends there, and the last triangle is split.
  void addCollinear(Point& p, int closing) {
    Point* previous = net_.edges[closing].start;
    net_.edges[closing].end = &p;
    const int last = net_.triangles.length();
    const int third = net_.triangles[last].edges[2];
    const Edge second = net_.edges[net_.triangles[last].edges[1]];
    Point* opposite = samePlace(*second.start, *previous) ? second.end : second.start;

    const int inner = addEdge(&p, opposite);
    net_.triangles[last].edges[2] = inner;
    net_.edges[inner].left = last;
    const int outer = addEdge(&p, point(1));
    net_.hull.add(outer);
    const int t = addTriangle(outer, inner, third);
    net_.edges[outer].left = t;
    net_.edges[inner].right = t;
    if (third == 1) {
      net_.edges[third].left = t;
    } else {
      net_.edges[third].right = t;
    }
  }

  // Joins p to the hull entries from `first` on; the first new edge leaves `from`.
  void joinVisible(Point& p, Point* from, int first) {
    const int h = net_.hull.length();
    const int entering = addEdge(from, &p);
    for (int r = first; r <= h; ++r) {
      const int visible = net_.hull[r];
      const int d = addEdge(&p, net_.edges[visible].end);
      const int t = addTriangle(d, d - 1, visible);
      net_.edges[d].left = t;
      if (r == first) {
        net_.edges[d - 1].left = t;
      } else {
        net_.edges[d - 1].right = t;
      }
      net_.edges[visible].right = t;
    }
    const int closing = net_.edges.length();
    for (int r = h; r >= first; --r) net_.hull.removeNumber(r);
    net_.hull.add(entering);
    net_.hull.add(closing);
  }

  Network& net_;
};

class Flipper {
 public:
  Flipper(Network& network, int mostFullQueues) : net_(network), mostFullQueues_(mostFullQueues) {
    queue_.reserve(kQueueCapacity);
  }

  void run() {
    for (int k = 1; k <= net_.edges.length(); ++k) {
      queue_.clear();
      std::size_t front = 0;
      offer(k);
      while (front < queue_.size()) visit(queue_[front++]);
      if (queue_.size() == kQueueCapacity && ++net_.fullQueues == mostFullQueues_) return;
    }
  }

 private:
  struct OuterEdges {
    int ofB;
    int ofC;
    bool found;
  };

  void offer(int edge) {
    if (queue_.size() >= kQueueCapacity) {
      net_.queueOverflowed = true;
      return;
    }
    queue_.push_back(edge);
  }

  bool touches(int edge, const Point& p) const {
    return samePlace(*net_.edges[edge].start, p) || samePlace(*net_.edges[edge].end, p);
  }

  OuterEdges outerEdges(int triangle, int f, const Point& b) const {
    const int* e = net_.triangles[triangle].edges;
    int at = -1;
    for (int i = 0; i < 3 && at < 0; ++i) {
      if (e[i] == f) at = i;
    }
    if (at < 0) return {0, 0, false};
    const int one = e[(at + 1) % 3];
    const int other = e[(at + 2) % 3];
    if (touches(one, b)) return {one, other, true};
    return {other, one, true};
  }

  bool startsAt(int edge, const Point& p) const { return samePlace(*net_.edges[edge].start, p); }

  // Writes t on the side of the edge that is to the left when it is run through from `from`.
  void setLeftFrom(int edge, const Point& from, int t) {
    if (startsAt(edge, from)) {
      net_.edges[edge].left = t;
    } else {
      net_.edges[edge].right = t;
    }
  }

  void setRightFrom(int edge, const Point& from, int t) {
    if (startsAt(edge, from)) {
      net_.edges[edge].right = t;
    } else {
      net_.edges[edge].left = t;
    }
  }

  void visit(int f) {
    const Edge old = net_.edges[f];
    if (old.left == 0 || old.right == 0) return;
    Point& b = *old.start;
    Point& c = *old.end;
    const OuterEdges t1 = outerEdges(old.left, f, b);
    const OuterEdges t2 = outerEdges(old.right, f, b);
    if (!t1.found || !t2.found) return;
    Point* a = startsAt(t1.ofB, b) ? net_.edges[t1.ofB].end : net_.edges[t1.ofB].start;
    Point* d = startsAt(t2.ofB, b) ? net_.edges[t2.ofB].end : net_.edges[t2.ofB].start;
    if (!isConvex(*d, b, c, *a) || !isNeedTrans(*d, b, c, *a)) return;

    net_.edges[f].start = a;
    net_.edges[f].end = d;
    net_.triangles[old.left] = Triangle{{t2.ofC, t1.ofC, f}};
    net_.triangles[old.right] = Triangle{{t1.ofB, t2.ofB, f}};
    setLeftFrom(t1.ofC, c, old.left);
    setLeftFrom(t2.ofB, b, old.right);
    setRightFrom(t1.ofB, b, old.right);
    setRightFrom(t2.ofC, c, old.left);
    offer(t2.ofB);
    offer(t2.ofC);
    offer(t1.ofC);
    offer(t1.ofB);
  }

  Network& net_;
  int mostFullQueues_;
  std::vector<int> queue_;
};

std::vector<Point*> withoutNaN(const std::vector<Point*>& points) {
  std::vector<Point*> kept;
  for (Point* p : points) {
    if (!std::isnan(p->x) && !std::isnan(p->y)) kept.push_back(p);
  }
  return kept;
}

void sortAndFindOrigin(Network& net) {
  std::vector<Point*> usable = withoutNaN(net.order);
  std::vector<Point*> nans;
  for (Point* p : net.order) {
    if (std::isnan(p->x) || std::isnan(p->y)) nans.push_back(p);
  }
  if (!usable.empty()) {
    std::stable_sort(usable.begin(), usable.end(), byX);
    net.originX = usable.front()->x;
    std::stable_sort(usable.begin(), usable.end(), byYThenX);
    net.originY = usable.front()->y;
  }
  net.accepted = usable;
  net.order = usable;
  net.order.insert(net.order.end(), nans.begin(), nans.end());
}

void normalise(Network& net, Repeats repeats) {
  const std::vector<Point*> usable = net.accepted;
  net.accepted.clear();
  std::vector<Point> unshifted;
  for (Point* p : usable) {
    p->x = roundedToMillimetres(p->x);
    p->y = roundedToMillimetres(p->y);
    bool repeated = false;
    if (repeats == Repeats::AgainstShifted) {
      for (const Point* other : net.accepted) repeated = repeated || samePlace(*other, *p);
    } else {
      for (const Point& other : unshifted) repeated = repeated || samePlace(other, *p);
    }
    if (repeated) continue;
    unshifted.push_back(*p);
    p->x -= net.originX;
    p->y -= net.originY;
    net.accepted.push_back(p);
  }
}

bool sweep(Network& net) {
  net.maxPoints = static_cast<int>(net.accepted.size());
  net.sweep = sweepOrder(net.accepted);
  if (net.sweep.empty()) return false;
  Builder builder(net);
  if (!builder.fan()) return false;
  builder.addRemaining();
  return true;
}

void takePositions(Network& net, const std::vector<std::array<double, 3>>& positions) {
  for (const auto& p : positions) net.points.push_back(Point{p[0], p[1], p[2]});
  for (Point& p : net.points) net.order.push_back(&p);
}

Point circumcentre(const Point& a, const Point& b, const Point& c) {
  const double dx1 = b.x - a.x;
  const double dy1 = b.y - a.y;
  const double dx2 = c.x - a.x;
  const double dy2 = c.y - a.y;
  const double s1 = b.x * b.x + b.y * b.y - a.x * a.x - a.y * a.y;
  const double s2 = c.x * c.x + c.y * c.y - a.x * a.x - a.y * a.y;
  const double k = 2.0 * (dx1 * dy2 - dx2 * dy1);
  return {(s1 * dy2 - s2 * dy1) / k, (s2 * dx1 - s1 * dx2) / k, 0.0};
}

double squaredDistance(const Point& a, const Point& b) {
  const double dx = a.x - b.x;
  const double dy = a.y - b.y;
  return dx * dx + dy * dy;
}

}  // namespace

double roundedToMillimetres(double value) {
  if (std::isnan(value)) return value;
  double s = value * 1000.0;
  s = s > 0.0 ? std::floor(s + 0.5) : std::ceil(s - 0.5);
  s /= 1000.0;
  if (std::isnan(s)) return s;
  if (std::isinf(s) || std::fabs(s) == DBL_MAX) return 0.0;  // its text is a sign, not a number
  return std::strtod(fixedText(s, 6).c_str(), nullptr);
}

double angleByX(const Edge& e) {
  const double squared = squaredLength(e);
  if (!(squared > 0.0)) return 0.0;
  const double angle = std::acos((e.end->x - e.start->x) / std::sqrt(squared));
  if (std::isnan(angle)) return angle;
  return std::strtod(fixedText(angle + 4.0 / 100000000000.0, 10).c_str(), nullptr);
}

bool isPointInEdge(const Edge& e, const Point& p) {
  if (onAxisLine(e, p)) return true;
  return std::fabs(crossValue(e, p)) <= kLineTolerance;
}

int point2Line(const Edge& e, const Point& p) {
  if (onAxisLine(e, p)) return 0;
  const double c = crossValue(e, p);
  if (c > 0.0 && std::fabs(c) > kLineTolerance) return -1;
  if (std::fabs(c) <= kLineTolerance) return 0;
  if (c < 0.0 && std::fabs(c) > kLineTolerance) return 1;
  return -1;
}

int isSameLine(const Edge& e, const Edge& other) {
  if (samePlace(*e.start, *other.start) && samePlace(*e.end, *other.end)) return 1;
  if (samePlace(*e.start, *other.end) && samePlace(*e.end, *other.start)) return -1;
  return 0;
}

bool isConvex(const Point& a, const Point& b, const Point& c, const Point& d) {
  Point pa = a;
  Point pb = b;
  Point pc = c;
  Point pd = d;
  const Edge ad{&pa, &pd};
  const Edge bc{&pb, &pc};
  return point2Line(ad, b) * point2Line(ad, c) < 0 && point2Line(bc, a) * point2Line(bc, d) < 0;
}

bool isNeedTrans(const Point& a, const Point& b, const Point& c, const Point& d) {
  const Point o1 = circumcentre(a, b, c);
  const double r1 = squaredDistance(o1, a);
  const double q1 = squaredDistance(o1, d);
  if (r1 > q1 && std::fabs(q1 - r1) > kCircleTolerance) return true;
  const Point o2 = circumcentre(b, c, d);
  const double r2 = squaredDistance(o2, b);
  const double q2 = squaredDistance(o2, a);
  if (r2 > q2 && std::fabs(q2 - r2) > kCircleTolerance) return true;
  if (std::fabs(q1 - r1) < kCircleTolerance && std::fabs(q2 - r2) < kCircleTolerance) {
    const double bc = squaredDistance(b, c);
    const double ad = squaredDistance(a, d);
    return bc > ad && std::fabs(bc - ad) > kCircleTolerance;
  }
  return false;
}

std::vector<Point*> sweepOrder(const std::vector<Point*>& points) {
  std::vector<Point*> sorted = points;
  std::stable_sort(sorted.begin(), sorted.end(), byYThenX);
  std::vector<Edge> rays;
  for (std::size_t i = 1; i < sorted.size(); ++i) rays.push_back(Edge{sorted[0], sorted[i]});
  std::stable_sort(rays.begin(), rays.end(), sweepsBefore);

  std::size_t group = rays.empty() ? 0 : 1;
  while (group < rays.size() && angleByX(rays[group]) == angleByX(rays[0])) ++group;
  std::vector<Point*> order;
  std::size_t next = 0;
  if (group >= 2 && group < rays.size()) {
    std::reverse(rays.begin(), rays.begin() + static_cast<std::ptrdiff_t>(group));
    order.push_back(sorted[0]);
    for (std::size_t i = 0; i < group; ++i) order.push_back(rays[i].end);
    order.push_back(rays[group].end);
    next = group + 1;
  } else if (group == 1 && rays.size() >= 2) {
    order = {sorted[0], rays[0].end, rays[1].end};
    next = 2;
  } else {
    return {};
  }
  for (; next < rays.size(); ++next) order.push_back(rays[next].end);
  return order;
}

Network construct(const std::vector<std::array<double, 3>>& positions, Stop stop, Repeats repeats) {
  Network net;
  takePositions(net, positions);
  if (positions.empty()) {
    net.null = true;
    return net;
  }
  sortAndFindOrigin(net);
  normalise(net, repeats);
  if (sweep(net) && stop == Stop::AfterFlips) {
    flip(net);
    moveBack(net);
  }
  return net;
}

void flip(Network& net, int mostFullQueues) { Flipper(net, mostFullQueues).run(); }

void moveBack(Network& net) {
  std::vector<const Point*> done;
  const auto shift = [&](Point* p) {
    if (std::find(done.begin(), done.end(), p) != done.end()) return;
    done.push_back(p);
    p->x += net.originX;
    p->y += net.originY;
  };
  for (int k = 1; k <= net.edges.length(); ++k) {
    shift(net.edges[k].start);
    shift(net.edges[k].end);
  }
}

Network sweepOnly(const std::vector<std::array<double, 3>>& positions) {
  Network net;
  takePositions(net, positions);
  net.accepted = net.order;
  net.null = !sweep(net);
  return net;
}

}  // namespace literal
