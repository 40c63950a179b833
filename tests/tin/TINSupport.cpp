// The helpers behind TINSupport.h.
#include "TINSupport.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <map>
#include <set>
#include <sstream>

#include <OrvikDTMAlgorithm/tin/ConvexList.h>
#include <OrvikDTMAlgorithm/tin/EList.h>
#include <OrvikDTMAlgorithm/tin/PList.h>
#include <OrvikDTMAlgorithm/tin/Surface.h>
#include <OrvikDTMAlgorithm/tin/TConvex.h>
#include <OrvikDTMAlgorithm/tin/TEdge.h>
#include <OrvikDTMAlgorithm/tin/TList.h>
#include <OrvikDTMAlgorithm/tin/Triangle.h>
#include <boost/multiprecision/cpp_int.hpp>

namespace support {
namespace {

using Big = boost::multiprecision::int256_t;

constexpr double kSquareMillimetresPerUnit = 1e6;
constexpr double kConvexityTolerance = 0.0002;  // squared units
constexpr double kCircleTolerance = 1e-7;       // squared units
constexpr Wide kLargestDoubleGap = 2000;        // twice 0.001 square units, in square millimetres

TEdge* edgeAt(const CEType& tin, int number) {
  EList* edges = tin.getEList();
  return edges == nullptr ? nullptr : edges->findByNum(edges, number);
}

Triangle* triangleAt(const CEType& tin, int number) {
  TList* triangles = tin.getTList();
  return triangles == nullptr ? nullptr : triangles->findByNum(triangles, number);
}

struct Directed {
  TPoint* from;
  TPoint* to;
};

std::optional<Directed> directedEdge(const CEType& tin, int edge, int triangle) {
  const TEdge* e = edgeAt(tin, edge);
  if (e == nullptr) return std::nullopt;
  if (e->getLeftT() == triangle) return Directed{e->getStartPoint(), e->getEndPoint()};
  if (e->getRightT() == triangle) return Directed{e->getEndPoint(), e->getStartPoint()};
  return std::nullopt;
}

// How far a decision made in doubles can be off for a quadrilateral of this extent.
struct Noise {
  double unit;    // what the shift of the origin leaves behind in a coordinate
  double extent;  // largest local coordinate
};

double crossNoise(const Noise& noise) {
  const double epsilon = std::numeric_limits<double>::epsilon();
  return 8.0 * (epsilon * noise.extent * noise.extent + noise.unit * noise.extent);
}

double powerNoise(const Noise& noise, double side, double doubleArea) {
  const double epsilon = std::numeric_limits<double>::epsilon();
  const double radius = side * side * side / (2.0 * doubleArea);
  const double centre = 8.0 * epsilon * noise.extent * noise.extent * side / doubleArea;
  const double shift = 16.0 * noise.unit * side * side * side / doubleArea;
  const double squares = 8.0 * epsilon * (radius + side + noise.extent) * (radius + side + noise.extent);
  return 4.0 * centre * side + shift + squares;
}

double units(Wide squareMillimetres) { return static_cast<double>(squareMillimetres) / kSquareMillimetresPerUnit; }

// Positive when d lies inside the circle of the counter-clockwise a, b, c.
Big inCircle(const Millimetres& a, const Millimetres& b, const Millimetres& c, const Millimetres& d) {
  const Big ax = a.x - d.x;
  const Big ay = a.y - d.y;
  const Big bx = b.x - d.x;
  const Big by = b.y - d.y;
  const Big cx = c.x - d.x;
  const Big cy = c.y - d.y;
  return (ax * ax + ay * ay) * (bx * cy - cx * by) - (bx * bx + by * by) * (ax * cy - cx * ay) +
         (cx * cx + cy * cy) * (ax * by - bx * ay);
}

TPoint* cornerOff(const std::array<TPoint*, 3>& corners, const TPoint* b, const TPoint* c) {
  for (TPoint* p : corners) {
    if (p != b && p != c) return p;
  }
  return nullptr;
}

// The flip of b-c to a-d is out of reach of the convexity test.
bool convexityBlocks(const Millimetres& a, const Millimetres& b, const Millimetres& c, const Millimetres& d,
                     const Noise& noise) {
  const double limit = kConvexityTolerance + crossNoise(noise);
  const double left = units(cross(a, d, b));
  const double right = units(cross(a, d, c));
  const double near = units(cross(b, c, a));
  const double far = units(cross(b, c, d));
  const auto clears = [limit](double one, double other) {
    return (one > limit && other < -limit) || (one < -limit && other > limit);
  };
  return !clears(left, right) || !clears(near, far);
}

double longestSide(const std::array<Millimetres, 4>& p) {
  double longest = 0.0;
  for (const Millimetres& one : p) {
    for (const Millimetres& other : p) {
      longest =
          std::max(longest, std::hypot(static_cast<double>(one.x - other.x), static_cast<double>(one.y - other.y)));
    }
  }
  return longest / 1000.0;
}

// Both circumcircle tests see the other corner inside by no more than their tolerance.
bool circleToleranceBlocks(const Millimetres& a, const Millimetres& b, const Millimetres& c, const Millimetres& d,
                           const Big& determinant, const Noise& noise) {
  const double inside = static_cast<double>(determinant) / (kSquareMillimetresPerUnit * kSquareMillimetresPerUnit);
  const double side = longestSide({a, b, c, d});
  for (const Wide area : {cross(b, c, a), cross(c, b, d)}) {
    const double doubleArea = units(area);
    if (inside / doubleArea > kCircleTolerance + powerNoise(noise, side, doubleArea)) return false;
  }
  return true;
}

std::string edgeText(const TEdge& e) {
  std::ostringstream text;
  text.precision(17);
  text << "(" << e.getStartPoint()->getX() << "," << e.getStartPoint()->getY() << ")-(" << e.getEndPoint()->getX()
       << "," << e.getEndPoint()->getY() << ")";
  return text.str();
}

std::string delaunayFaultAt(const CEType& tin, int number, const Noise& noise) {
  const TEdge* e = edgeAt(tin, number);
  if (e->getLeftT() == 0 || e->getRightT() == 0) return "";
  const auto left = cornersOf(tin, e->getLeftT());
  const auto right = cornersOf(tin, e->getRightT());
  if (!left || !right) return "edge " + std::to_string(number) + " lies in a triangle that does not close";
  const TPoint* apex = cornerOff(*left, e->getStartPoint(), e->getEndPoint());
  const TPoint* below = cornerOff(*right, e->getStartPoint(), e->getEndPoint());
  if (apex == nullptr || below == nullptr) return "";
  const Millimetres a = millimetresOf(*apex);
  const Millimetres b = millimetresOf(*e->getStartPoint());
  const Millimetres c = millimetresOf(*e->getEndPoint());
  const Millimetres d = millimetresOf(*below);
  if (cross(b, c, a) <= 0 || cross(c, b, d) <= 0) return "";  // a repeat: a triangle without area
  const Big determinant = inCircle(b, c, a, d);
  if (determinant <= 0) return "";
  if (convexityBlocks(a, b, c, d, noise) || circleToleranceBlocks(a, b, c, d, determinant, noise)) return "";
  return "edge " + std::to_string(number) + " " + edgeText(*e) + " is not locally Delaunay";
}

std::set<TPoint*> verticesOf(const CEType& tin) {
  std::set<TPoint*> vertices;
  for (int k = 1; k <= edgeCount(tin); ++k) {
    vertices.insert(edgeAt(tin, k)->getStartPoint());
    vertices.insert(edgeAt(tin, k)->getEndPoint());
  }
  return vertices;
}

Noise noiseOf(const std::set<TPoint*>& vertices) {
  double largest = 0.0;
  double lowX = std::numeric_limits<double>::max();
  double lowY = lowX;
  double highX = -lowX;
  double highY = -lowX;
  for (const TPoint* p : vertices) {
    largest = std::max({largest, std::fabs(p->getX()), std::fabs(p->getY())});
    lowX = std::min(lowX, p->getX());
    lowY = std::min(lowY, p->getY());
    highX = std::max(highX, p->getX());
    highY = std::max(highY, p->getY());
  }
  return {largest * std::numeric_limits<double>::epsilon(), std::max(highX - lowX, highY - lowY)};
}

std::string countFault(const CEType& tin, const std::set<TPoint*>& vertices) {
  std::set<Millimetres> positions;
  for (const TPoint* p : vertices) positions.insert(millimetresOf(*p));
  if (positions.size() != vertices.size()) return "";  // repeats that did no harm
  const int n = static_cast<int>(vertices.size());
  const int h = hullCount(tin);
  std::ostringstream text;
  if (triangleCount(tin) != 2 * n - 2 - h || edgeCount(tin) != 3 * n - 3 - h) {
    text << "n = " << n << ", h = " << h << ", but " << triangleCount(tin) << " triangles and " << edgeCount(tin)
         << " edges";
  }
  return text.str();
}

std::string areaFault(const CEType& tin) {
  Wide triangles = 0;
  for (int t = 1; t <= triangleCount(tin); ++t) {
    const auto corners = cornersOf(tin, t);
    if (!corners) return "triangle " + std::to_string(t) + " does not close";
    triangles += cross(millimetresOf(*(*corners)[0]), millimetresOf(*(*corners)[1]), millimetresOf(*(*corners)[2]));
  }
  Wide hull = 0;
  ConvexList* entries = tin.getCList();
  const Millimetres base = millimetresOf(*edgeAt(tin, 1)->getStartPoint());
  for (int k = 1; k <= hullCount(tin); ++k) {
    const TEdge* e = edgeAt(tin, entries->findByNum(entries, k)->getEdgeNo());
    hull += cross(base, millimetresOf(*e->getStartPoint()), millimetresOf(*e->getEndPoint()));
  }
  return hull == triangles ? "" : "the triangles' areas do not add up to the hull polygon's";
}

}  // namespace

OwnedPoints::OwnedPoints(const inputs::Positions& positions) {
  for (const inputs::Position& p : positions) add(p[0], p[1], p[2]);
}

TPoint* OwnedPoints::add(double x, double y, double z) {
  points_.push_back(std::make_unique<TPoint>(x, y, z));
  return points_.back().get();
}

std::vector<TPoint*> OwnedPoints::pointers() const {
  std::vector<TPoint*> result;
  for (const auto& p : points_) result.push_back(p.get());
  return result;
}

std::unique_ptr<CEType> makeTIN(const OwnedPoints& points, const Tables& tables) {
  auto* hull = new ConvexList;
  auto* edges = new EList;
  auto* triangles = new TList;
  const auto at = [&](int number) { return number == 0 ? nullptr : points[static_cast<std::size_t>(number - 1)]; };
  const int capacity = static_cast<int>(std::max({tables.edges.size(), tables.triangles.size(), tables.hull.size()}));
  hull->setMaxlen(capacity);
  edges->setMaxlen(capacity);
  triangles->setMaxlen(capacity);
  for (const EdgeRow& row : tables.edges) {
    auto* edge = new TEdge(at(row.start), at(row.end));
    edge->setLeftT(row.left);
    edge->setRightT(row.right);
    edges->add(edges, edge);
  }
  for (const auto& row : tables.triangles) triangles->add(triangles, new Triangle(row.data()));
  for (const int edge : tables.hull) hull->add(hull, new TConvex(edge));
  return std::make_unique<CEType>(hull, edges, triangles);
}

Tables tablesOf(const CEType& tin, const std::vector<TPoint*>& points) {
  std::map<const TPoint*, int> numbers;
  for (const TPoint* p : points) numbers.emplace(p, static_cast<int>(numbers.size()) + 1);
  const auto numberOf = [&](const TPoint* p) {
    const auto found = numbers.find(p);
    return found == numbers.end() ? 0 : found->second;
  };
  Tables tables;
  for (int k = 1; k <= edgeCount(tin); ++k) {
    const TEdge* e = edgeAt(tin, k);
    tables.edges.push_back({numberOf(e->getStartPoint()), numberOf(e->getEndPoint()), e->getLeftT(), e->getRightT()});
  }
  for (int k = 1; k <= triangleCount(tin); ++k) {
    const int* three = triangleAt(tin, k)->getEno();
    tables.triangles.push_back({three[0], three[1], three[2]});
  }
  ConvexList* hull = tin.getCList();
  for (int k = 1; k <= hullCount(tin); ++k) tables.hull.push_back(hull->findByNum(hull, k)->getEdgeNo());
  return tables;
}

std::unique_ptr<CEType> triangulate(const OwnedPoints& points) {
  std::vector<TPoint*> given = points.pointers();
  return std::unique_ptr<CEType>(Surface::optimizeTIN(given));
}

std::unique_ptr<CEType> sweep(const OwnedPoints& points) {
  std::vector<TPoint*> given = points.pointers();
  const std::unique_ptr<PList> list(Surface::initPoins(given));
  if (list == nullptr) return nullptr;
  const std::unique_ptr<CEType> fan(Surface::initCET(list.get()));
  std::unique_ptr<CEType> tin(Surface::buildTIN(list.get(), fan.get()));
  if (fan != nullptr) {
    fan->setCList(nullptr);
    fan->setEList(nullptr);
    fan->setTList(nullptr);
  }
  list->setListData({});  // the points stay the fixture's
  return tin;
}

int triangleCount(const CEType& tin) { return tin.getTList() == nullptr ? 0 : tin.getTList()->getListLen(); }
int edgeCount(const CEType& tin) { return tin.getEList() == nullptr ? 0 : tin.getEList()->getListLen(); }
int hullCount(const CEType& tin) { return tin.getCList() == nullptr ? 0 : tin.getCList()->getListLen(); }

std::optional<std::array<TPoint*, 3>> cornersOf(const CEType& tin, int triangle) {
  const Triangle* t = triangleAt(tin, triangle);
  if (t == nullptr) return std::nullopt;
  std::array<Directed, 3> sides{};
  for (std::size_t i = 0; i < 3; ++i) {
    const auto side = directedEdge(tin, t->getEno()[i], triangle);
    if (!side) return std::nullopt;
    sides[i] = *side;
  }
  const bool inOrder = sides[0].to == sides[1].from && sides[1].to == sides[2].from && sides[2].to == sides[0].from;
  const bool turned = sides[0].to == sides[2].from && sides[2].to == sides[1].from && sides[1].to == sides[0].from;
  if (!inOrder && !turned) return std::nullopt;
  return std::array<TPoint*, 3>{sides[0].from, sides[0].to, inOrder ? sides[1].to : sides[2].to};
}

Millimetres millimetresOf(const TPoint& p) {
  // The whole units apart, so that nothing is rounded before the last step.
  const auto wholeMillimetres = [](double v) {
    const double whole = std::trunc(v);
    return static_cast<std::int64_t>(whole) * 1000 + std::llround((v - whole) * 1000.0);
  };
  return {wholeMillimetres(p.getX()), wholeMillimetres(p.getY())};
}

Wide cross(const Millimetres& a, const Millimetres& b, const Millimetres& c) {
  return static_cast<Wide>(b.x - a.x) * (c.y - a.y) - static_cast<Wide>(b.y - a.y) * (c.x - a.x);
}

Wide doubleHullArea(std::vector<Millimetres> points) {
  std::sort(points.begin(), points.end());
  points.erase(std::unique(points.begin(), points.end()), points.end());
  if (points.size() < 3) return 0;
  std::vector<Millimetres> chain;
  for (int pass = 0; pass < 2; ++pass) {
    const std::size_t base = chain.size();
    for (const Millimetres& p : points) {
      while (chain.size() >= base + 2 && cross(chain[chain.size() - 2], chain.back(), p) <= 0) chain.pop_back();
      chain.push_back(p);
    }
    chain.pop_back();
    std::reverse(points.begin(), points.end());
  }
  Wide area = 0;
  for (std::size_t i = 1; i + 1 < chain.size(); ++i) area += cross(chain[0], chain[i], chain[i + 1]);
  return area;
}

std::string faultOf(const CEType& tin, const std::vector<TPoint*>& accepted) {
  Wide sum = 0;
  std::set<Millimetres> vertices;
  for (int t = 1; t <= triangleCount(tin); ++t) {
    const auto corners = cornersOf(tin, t);
    if (!corners) return "triangle " + std::to_string(t) + " is open";
    const std::array<Millimetres, 3> p = {millimetresOf(*(*corners)[0]), millimetresOf(*(*corners)[1]),
                                          millimetresOf(*(*corners)[2])};
    const Wide area = cross(p[0], p[1], p[2]);
    const bool repeat = p[0] == p[1] || p[1] == p[2] || p[2] == p[0];
    if (area < 0 || (area == 0 && !repeat)) return "triangle " + std::to_string(t) + " is not counter-clockwise";
    sum += area;
    vertices.insert(p.begin(), p.end());
  }
  std::vector<Millimetres> positions;
  for (const TPoint* p : accepted) {
    positions.push_back(millimetresOf(*p));
    if (!vertices.contains(positions.back())) return "a position is missing";
  }
  const Wide gap = doubleHullArea(positions) - sum;
  return gap > kLargestDoubleGap || gap < -kLargestDoubleGap ? "the areas do not add up" : "";
}

std::string brokenInvariantOf(const CEType& tin, bool queueOverflowed) {
  if (triangleCount(tin) == 0) return "";
  const std::set<TPoint*> vertices = verticesOf(tin);
  std::string fault = countFault(tin, vertices);
  if (fault.empty()) fault = areaFault(tin);
  const Noise noise = noiseOf(vertices);
  for (int k = 1; k <= edgeCount(tin) && fault.empty() && !queueOverflowed; ++k) fault = delaunayFaultAt(tin, k, noise);
  return fault;
}

}  // namespace support
