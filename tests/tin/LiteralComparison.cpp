#include "LiteralComparison.h"

#include <algorithm>
#include <cfloat>
#include <cmath>
#include <deque>
#include <optional>
#include <utility>

#include <OrvikDTMAlgorithm/tin/EList.h>
#include <OrvikDTMAlgorithm/tin/Surface.h>
#include <OrvikDTMAlgorithm/tin/TEdge.h>
#include <OrvikDTMAlgorithm/tin/TList.h>
#include <OrvikDTMAlgorithm/tin/Triangle.h>

#include "RationalContact.h"

namespace literal {

namespace {

struct Tri {
  Corner p1;
  Corner p2;
  Corner p3;
};

Corner cornerOf(const TPoint* p) { return {p->getX(), p->getY(), p->getZ()}; }

// ---- areas

double length2D(const Corner& a, const Corner& b) {
  return std::sqrt((b[0] - a[0]) * (b[0] - a[0]) + (b[1] - a[1]) * (b[1] - a[1]));
}

double length3D(const Corner& a, const Corner& b) {
  return std::sqrt((b[0] - a[0]) * (b[0] - a[0]) + (b[1] - a[1]) * (b[1] - a[1]) + (b[2] - a[2]) * (b[2] - a[2]));
}

double product(double a, double b, double c) {
  const double s = (a + b + c) / 2;
  return s * (s - a) * (s - b) * (s - c);
}

double planArea(const Tri& t) {
  return std::sqrt(std::fabs(product(length2D(t.p1, t.p2), length2D(t.p2, t.p3), length2D(t.p3, t.p1))));
}

double slopeArea(const Tri& t) {
  return std::sqrt(product(length3D(t.p1, t.p2), length3D(t.p2, t.p3), length3D(t.p3, t.p1)));
}

double crossArea(const Tri& t) {
  const auto& [a, b, c] = t;
  return std::fabs((b[0] - a[0]) * (c[1] - b[1]) - (b[1] - a[1]) * (c[0] - b[0])) / 2;
}

// ---- pieces

Corner mid(const Corner& a, const Corner& b) { return {(a[0] + b[0]) / 2, (a[1] + b[1]) / 2, (a[2] + b[2]) / 2}; }

std::array<Tri, 4> four(const Tri& t) {
  const Corner m12 = mid(t.p1, t.p2);
  const Corner m13 = mid(t.p1, t.p3);
  const Corner m23 = mid(t.p2, t.p3);
  return {{{t.p1, m12, m13}, {m12, t.p2, m23}, {m13, m23, t.p3}, {m12, m23, m13}}};
}

class Queue {
 public:
  void add(const Tri& t) {
    if (items.size() < 50000) items.push_back(t);
  }
  Tri take() {
    const Tri first = items.front();
    items.pop_front();
    return first;
  }
  bool goesOn(double least) const {
    return items.size() != 100 && items.size() < 50000 && !items.empty() && crossArea(items.front()) >= least;
  }

  std::deque<Tri> items;
};

// ---- one network

std::optional<Tri> triangleOf(const CEType& tin, int number) {
  EList* edges = tin.getEList();
  TList* triangles = tin.getTList();
  const Triangle* t = triangles == nullptr ? nullptr : triangles->findByNum(triangles, number);
  if (t == nullptr || edges == nullptr) return std::nullopt;
  const TEdge* first = edges->findByNum(edges, t->getEno()[0]);
  const TEdge* second = edges->findByNum(edges, t->getEno()[1]);
  if (first == nullptr || second == nullptr) return std::nullopt;
  const bool known =
      second->getStartPoint()->equals(first->getStartPoint()) || second->getStartPoint()->equals(first->getEndPoint());
  return Tri{cornerOf(first->getStartPoint()), cornerOf(first->getEndPoint()),
             cornerOf(known ? second->getEndPoint() : second->getStartPoint())};
}

double heightIn(const CEType& tin, int number, const Corner& p) {
  const auto t = triangleOf(tin, number);
  if (!t) return DBL_MAX;
  for (const Corner& c : {t->p1, t->p2, t->p3}) {
    if (c[0] == p[0] && c[1] == p[1]) return c[2];
  }
  double m[3][4] = {{0, 0, 1, t->p1[2]},
                    {t->p2[0] - t->p1[0], t->p2[1] - t->p1[1], 1, t->p2[2]},
                    {t->p3[0] - t->p1[0], t->p3[1] - t->p1[1], 1, t->p3[2]}};
  for (int c = 0; c < 3; ++c) {
    for (int row = c + 1; row < 3 && m[c][c] == 0; ++row) {
      if (m[row][c] != 0) std::swap(m[row], m[c]);
    }
    if (m[c][c] == 0) return 0;
    for (int row = 0; row < 3; ++row) {
      if (row == c) continue;
      const double f = m[row][c] / m[c][c];
      for (int k = c; k < 4; ++k) m[row][k] -= f * m[c][k];
    }
  }
  return m[0][3] / m[0][0] * (p[0] - t->p1[0]) + m[1][3] / m[1][1] * (p[1] - t->p1[1]) + m[2][3] / m[2][2];
}

bool insideByArea(const CEType& tin, int number, const Corner& p) {
  const auto t = triangleOf(tin, number);
  if (!t) return false;
  const auto area = [](const Corner& a, const Corner& b, const Corner& c) {
    return std::fabs((b[0] - a[0]) * (c[1] - a[1]) - (b[1] - a[1]) * (c[0] - a[0])) / 2;
  };
  const double parts = area(p, t->p1, t->p2) + area(p, t->p2, t->p3) + area(p, t->p3, t->p1);
  return std::fabs(area(t->p1, t->p3, t->p2) - parts) < 0.0001;
}

int countOf(const CEType& tin) { return tin.getTList() == nullptr ? 0 : tin.getTList()->getListLen(); }

bool isMissing(double h) { return std::isinf(h) || std::fabs(h) == DBL_MAX; }

// ---- the comparison

class Comparer {
 public:
  Comparer(CEType& own, CEType& reference) : own_(own) {
    const double ownArea = own.getArea2D();
    const double referenceArea = reference.getArea2D();
    bool walkOwn = false;
    if (referenceArea > ownArea) {
      walkOwn = true;
    } else if (!(referenceArea < ownArea)) {
      walkOwn = countOf(reference) < countOf(own);
    }
    result_.referenceWalked = !walkOwn;
    walked_ = walkOwn ? &own : &reference;
    queried_ = walkOwn ? &reference : &own;
    clip_ = own.getRangeList().size() > 2;
  }

  Comparison run() {
    result_.sparse = probe() < 16;
    for (int t = 1; t <= countOf(*walked_); ++t) {
      const auto tri = triangleOf(*walked_, t);
      if (!tri) continue;
      if (result_.sparse) {
        for (const Tri& quarter : four(*tri)) {
          for (const Tri& sixteenth : four(quarter)) add(computeMethod(sixteenth));
        }
      } else {
        add(computeMethod(*tri));
      }
    }
    if (!result_.pieces.empty() && !exact::haveCommonArea(planOf(*walked_), planOf(*queried_), boundary())) {
      result_.numbers = {};
      result_.pieces.clear();
      result_.onlyTouches = true;
    }
    return result_;
  }

 private:
  static std::vector<exact::PlanTriangle> planOf(const CEType& tin) {
    std::vector<exact::PlanTriangle> result;
    for (int t = 1; t <= countOf(tin); ++t) {
      if (const auto tri = triangleOf(tin, t)) {
        result.push_back({{{tri->p1[0], tri->p1[1]}, {tri->p2[0], tri->p2[1]}, {tri->p3[0], tri->p3[1]}}});
      }
    }
    return result;
  }

  exact::PlanPolygon boundary() const {
    exact::PlanPolygon result;
    if (!clip_) return result;
    for (const TPoint* p : own_.getRangeList()) result.push_back({p->getX(), p->getY()});
    return result;
  }

  using Six = std::array<double, 6>;  // fill plan, fill slope, cut plan, cut slope, fill volume, cut volume

  void add(const Six& six) {
    for (std::size_t i = 0; i < six.size(); ++i) result_.numbers[i + 4] += six[i];
  }

  std::size_t probe() {
    std::vector<Corner> kept;
    EList* edges = walked_->getEList();
    for (int k = 1; edges != nullptr && k <= edges->getListLen(); ++k) {
      const TEdge* e = edges->findByNum(edges, k);
      for (const TPoint* p : {e->getStartPoint(), e->getEndPoint()}) {
        const Corner c = cornerOf(p);
        const double h = heightIn(*queried_, queried_->locateTri(c[0], c[1]), c);
        if (isMissing(h) || std::isnan(h)) continue;
        if (std::find(kept.begin(), kept.end(), c) == kept.end()) kept.push_back(c);
        if (kept.size() == 16) return 16;
      }
    }
    return kept.size();
  }

  int find(const Corner& p) { return queried_->locateTri(p[0], p[1]); }
  int findFrom(const Corner& p) { return hint_ = queried_->locateTri(p[0], p[1], hint_); }

  std::array<int, 3> numbersOf(const Tri& t, bool hinted) {
    std::array<int, 3> numbers{};
    std::size_t i = 0;
    for (const Corner& c : {t.p1, t.p2, t.p3}) {
      numbers[i] = hinted ? findFrom(c) : find(c);
      const TPoint p(c[0], c[1], 0);
      if (clip_ && !Surface::isPtInPolygon(&p, own_.getRangeList())) numbers[i] = 0;
      ++i;
    }
    ++result_.handled;
    return numbers;
  }

  Six computeMethod(const Tri& t) {
    sums_ = {};
    hint_ = 0;
    bool any = false;
    for (const Corner& c : {t.p1, t.p2, t.p3}) any = findFrom(c) != 0 || any;
    if (!any) return sums_;
    Queue first;
    first.add(t);
    loop(first, std::max(crossArea(t) / 100, 0.01), true);
    std::vector<Tri> left;
    for (const Tri& piece : first.items) {
      Queue second;
      second.add(piece);
      loop(second, std::max(crossArea(piece) / 100, 0.001), false);
      left.insert(left.end(), second.items.begin(), second.items.end());
    }
    for (const Tri& piece : left) last(piece);
    return sums_;
  }

  void loop(Queue& queue, double least, bool hinted) {
    while (queue.goesOn(least)) {
      const Tri t = queue.take();
      const auto n = numbersOf(t, hinted);
      const auto zeros = std::count(n.begin(), n.end(), 0);
      if (zeros == 3) continue;
      int in = 0;
      if (zeros == 0) {
        if (n[0] == n[1] && (n[1] == n[2] || insideByArea(*queried_, n[0], t.p3))) in = n[0];
        if (in == 0 && n[1] == n[2] && insideByArea(*queried_, n[1], t.p1)) in = n[1];
        if (in == 0 && n[0] == n[2] && insideByArea(*queried_, n[0], t.p2)) in = n[0];
      }
      if (in != 0) {
        measure(t, {heightIn(*queried_, in, t.p1), heightIn(*queried_, in, t.p2), heightIn(*queried_, in, t.p3)});
      } else {
        for (const Tri& quarter : four(t)) queue.add(quarter);
      }
    }
  }

  void last(const Tri& t) {
    const auto n = numbersOf(t, false);
    std::array<double, 3> h = {heightIn(*queried_, n[0], t.p1), heightIn(*queried_, n[1], t.p2),
                               heightIn(*queried_, n[2], t.p3)};
    double sum = 0;
    int finite = 0;
    for (const double v : h) {
      if (isMissing(v)) continue;
      sum += v;
      ++finite;
    }
    if (finite == 0) return;
    for (double& v : h) {
      if (isMissing(v)) v = sum / finite;
    }
    measure(t, h);
  }

  void draw(const Corner& a, const Corner& b, const Corner& c, int status) {
    result_.pieces.push_back({a, b, c, status});
  }

  // Everything by the sign of the own surface's height above the reference.
  void measure(const Tri& t, const std::array<double, 3>& h) {
    const std::array<Corner, 3> p = {t.p1, t.p2, t.p3};
    std::array<double, 3> d{};
    for (std::size_t i = 0; i < 3; ++i) d[i] = p[i][2] - h[i];
    const bool above = d[0] > 1e-7 || d[1] > 1e-7 || d[2] > 1e-7;
    const bool below = d[0] < -1e-7 || d[1] < -1e-7 || d[2] < -1e-7;
    const int whenAbove = result_.referenceWalked ? -1 : 1;
    if (above && below) {
      cross(t, d, whenAbove);
    } else if (above || below) {
      const int status = above ? whenAbove : -whenAbove;
      draw(t.p1, t.p2, t.p3, status);
      const std::array<double, 3> z = {p[0][2], p[1][2], p[2][2]};
      const auto& up = above ? z : h;
      const auto& low = above ? h : z;
      const double base = *std::min_element(low.begin(), low.end());
      const double s = planArea(t);
      const auto prism = [&](const std::array<double, 3>& v) {
        return s * ((v[0] - base) + (v[1] - base) + (v[2] - base)) / 3;
      };
      addTo(status, s, slopeArea(t), prism(up) - prism(low));
    }
  }

  void addTo(int status, double plan, double slope, double volume) {
    const std::size_t at = status == 1 ? 2 : 0;
    sums_[at] += plan;
    sums_[at + 1] += slope;
    sums_[status == 1 ? 5 : 4] += volume;
  }

  void cross(const Tri& t, std::array<double, 3> d, int whenAbove) {
    for (double& v : d) {
      if (std::fabs(v) <= 1e-7) v = 0;
    }
    Corner a = t.p1;
    Corner b = t.p2;
    Corner lone = t.p3;
    double dA = d[0];
    double dB = d[1];
    double dL = d[2];
    if (d[1] * d[0] < 0) {
      if (d[2] * d[0] < 0) {
        a = t.p2, b = t.p3, lone = t.p1;
        dA = d[1], dB = d[2], dL = d[0];
      } else {
        b = t.p3, lone = t.p2;
        dB = d[2], dL = d[1];
      }
    }
    const int status = dL > 0 ? whenAbove : -whenAbove;
    dA = std::fabs(dA);
    dB = std::fabs(dB);
    dL = std::fabs(dL);
    Corner i1{};
    Corner i2{};
    for (std::size_t k = 0; k < 3; ++k) {
      i1[k] = a[k] + (lone[k] - a[k]) * dL / (dA + dL);
      i2[k] = b[k] + (lone[k] - b[k]) * dL / (dB + dL);
    }
    draw(lone, i1, i2, status);
    draw(a, i1, i2, -status);
    draw(a, b, i2, -status);
    const double s = planArea(t);
    const double s3 = slopeArea(t);
    const Tri corner{lone, i1, i2};
    const double cube = dL * dL * dL;
    addTo(status, planArea(corner), slopeArea(corner), s * cube / (3 * (dA + dL) * (dB + dL)));
    addTo(-status, s - planArea(corner), s3 - slopeArea(corner),
          (cube / ((dA + dL) * (dB + dL)) - dL + dA + dB) * s / 3);
  }

  CEType& own_;
  CEType* walked_ = nullptr;
  CEType* queried_ = nullptr;
  bool clip_ = false;
  int hint_ = 0;
  Six sums_{};
  Comparison result_;
};

}  // namespace

Comparison compare(CEType& own, CEType& reference) { return Comparer(own, reference).run(); }

}  // namespace literal
