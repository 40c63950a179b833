// The comparisons behind CheckedTIN.h.
#include "CheckedTIN.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstdint>
#include <map>
#include <memory>
#include <set>
#include <sstream>

#include <OrvikDTMAlgorithm/tin/CEType.h>
#include <OrvikDTMAlgorithm/tin/ConvexList.h>
#include <OrvikDTMAlgorithm/tin/EList.h>
#include <OrvikDTMAlgorithm/tin/PList.h>
#include <OrvikDTMAlgorithm/tin/Surface.h>
#include <OrvikDTMAlgorithm/tin/TConvex.h>
#include <OrvikDTMAlgorithm/tin/TEdge.h>
#include <OrvikDTMAlgorithm/tin/TList.h>
#include <OrvikDTMAlgorithm/tin/TPoint.h>
#include <OrvikDTMAlgorithm/tin/Triangle.h>
#include <OrvikDTMAlgorithm/tin/verifyTIN.h>

#include "DelaunayCheck.h"
#include "TINSupport.h"

namespace support {
namespace {

// Numbers that no run writes, so that a run that should have written them is noticed.
constexpr int kUnwritten = -12345;
constexpr int kMaxPointsAtStart = 100000;

// The same double; which NaN one is says nothing.
bool sameBits(double a, double b) {
  return (std::isnan(a) && std::isnan(b)) || std::bit_cast<std::uint64_t>(a) == std::bit_cast<std::uint64_t>(b);
}

bool hasNaN(const inputs::Position& p) { return std::isnan(p[0]) || std::isnan(p[1]); }

class Difference {
 public:
  explicit operator bool() const { return !text_.empty(); }
  const std::string& text() const { return text_; }

  template <class... Parts>
  void note(const Parts&... parts) {
    if (!text_.empty()) return;
    std::ostringstream out;
    out.precision(17);
    (out << ... << parts);
    text_ = out.str();
  }

  template <class Value>
  void expectEqual(const std::string& what, const Value& library, const Value& reference) {
    if (library != reference) note(what, ": library ", library, ", reference ", reference);
  }

 private:
  std::string text_;
};

// Sets the process-wide numbers to values that cannot come from a run, and puts usable ones back.
class WatchedState {
 public:
  WatchedState() { Surface::MAXPOINTS = Surface::FLAG = kUnwritten; }
  WatchedState(const WatchedState&) = delete;
  WatchedState& operator=(const WatchedState&) = delete;
  ~WatchedState() {
    Surface::MAXPOINTS = kMaxPointsAtStart;
    Surface::FLAG = 0;
    Surface::COMPAREUNSHIFTED = 0;
  }
};

// Where each point object of either side stands in the input, from 1.
struct Numbering {
  std::map<const TPoint*, int> library;
  std::map<const literal::Point*, int> reference;

  Numbering(const std::vector<TPoint*>& ours, const literal::Network& net) {
    for (const TPoint* p : ours) library.emplace(p, static_cast<int>(library.size()) + 1);
    for (const literal::Point& p : net.points) reference.emplace(&p, static_cast<int>(reference.size()) + 1);
  }
  int of(const TPoint* p) const { return library.contains(p) ? library.at(p) : 0; }
  int of(const literal::Point* p) const { return reference.contains(p) ? reference.at(p) : 0; }
};

void compareEdges(const CEType& tin, const literal::Network& net, const Numbering& numbering, Difference& difference) {
  EList* edges = tin.getEList();
  difference.expectEqual("number of edges", edges->getListLen(), net.edges.length());
  for (int k = 1; k <= net.edges.length() && !difference; ++k) {
    const TEdge* e = edges->findByNum(edges, k);
    const literal::Edge& r = net.edges[k];
    const std::string name = "edge " + std::to_string(k);
    difference.expectEqual(name + " start point", numbering.of(e->getStartPoint()), numbering.of(r.start));
    difference.expectEqual(name + " end point", numbering.of(e->getEndPoint()), numbering.of(r.end));
    difference.expectEqual(name + " left", e->getLeftT(), r.left);
    difference.expectEqual(name + " right", e->getRightT(), r.right);
  }
}

void compareTriangles(const CEType& tin, const literal::Network& net, Difference& difference) {
  TList* triangles = tin.getTList();
  difference.expectEqual("number of triangles", triangles->getListLen(), net.triangles.length());
  for (int k = 1; k <= net.triangles.length() && !difference; ++k) {
    const int* ours = triangles->findByNum(triangles, k)->getEno();
    for (int i = 0; i < 3; ++i) {
      difference.expectEqual("triangle " + std::to_string(k) + " edge " + std::to_string(i + 1), ours[i],
                             net.triangles[k].edges[i]);
    }
  }
}

void compareHull(const CEType& tin, const literal::Network& net, Difference& difference) {
  ConvexList* hull = tin.getCList();
  difference.expectEqual("number of hull entries", hull->getListLen(), net.hull.length());
  for (int k = 1; k <= net.hull.length() && !difference; ++k) {
    difference.expectEqual("hull entry " + std::to_string(k), hull->findByNum(hull, k)->getEdgeNo(), net.hull[k]);
  }
}

void compareLists(const CEType& tin, const literal::Network& net, const Numbering& numbering, Difference& difference) {
  if (tin.getCList() == nullptr || tin.getEList() == nullptr || tin.getTList() == nullptr) {
    difference.note("a list of the library's network is null");
    return;
  }
  compareEdges(tin, net, numbering, difference);
  compareTriangles(tin, net, difference);
  compareHull(tin, net, difference);
}

// Coordinates of every input point; what holds a NaN takes no part and is not promised.
void comparePoints(const OwnedPoints& points, const literal::Network& net, const inputs::Positions& positions,
                   Difference& difference) {
  for (std::size_t i = 0; i < positions.size() && !difference; ++i) {
    if (hasNaN(positions[i])) continue;
    const TPoint& p = *points[i];
    const literal::Point& r = net.points[i];
    if (!sameBits(p.getX(), r.x) || !sameBits(p.getY(), r.y)) {
      difference.note("point ", i + 1, ": library (", p.getX(), ",", p.getY(), "), reference (", r.x, ",", r.y, ")");
    }
    if (!sameBits(p.getZ(), positions[i][2])) difference.note("point ", i + 1, ": its height has changed");
  }
}

void compareOrder(const std::vector<TPoint*>& given, const literal::Network& net, const Numbering& numbering,
                  Difference& difference) {
  difference.expectEqual("length of the vector afterwards", given.size(), net.order.size());
  for (std::size_t i = 0; i < given.size() && !difference; ++i) {
    if (std::isnan(net.order[i]->x) || std::isnan(net.order[i]->y)) break;  // those come last, in no promised order
    difference.expectEqual("vector position " + std::to_string(i + 1), numbering.of(given[i]),
                           numbering.of(net.order[i]));
  }
}

void compareState(const literal::Network& net, Difference& difference) {
  if (!net.accepted.empty()) {
    difference.expectEqual("MAXPOINTS", Surface::MAXPOINTS, net.maxPoints.value_or(kUnwritten));
  }
  difference.expectEqual("FLAG", Surface::FLAG, net.flag.value_or(kUnwritten));
}

void compareSweepOrder(PList* list, const literal::Network& net, const Numbering& numbering, Difference& difference) {
  difference.expectEqual("length of the point list", list->getListLen(), static_cast<int>(net.sweep.size()));
  for (int k = 1; k <= list->getListLen() && !difference; ++k) {
    difference.expectEqual("sweep point " + std::to_string(k), numbering.of(list->findByNum(list, k)),
                           numbering.of(net.sweep[static_cast<std::size_t>(k - 1)]));
  }
}

void compareVerdict(const CEType& tin, const std::vector<TPoint*>& points, Difference& difference) {
  const std::string fault = faultOf(tin, points);
  const TINCheck check = verifyTIN(tin, points);
  if (check.valid() != fault.empty()) {
    difference.note("verifyTIN says '", toText(check), "', the exact check '", fault, "'");
  }
}

std::array<int, 4> g_inputsByRoad{};
int g_inputsLeftByTheFlips = 0;

// The accepted points of a swept network on whole millimetres, and what exact signs say about its triangles.
class SweptPositions {
 public:
  // Full queues after which the flips count as going round in circles.
  static constexpr int kMostFullQueues = 20;

  SweptPositions(const literal::Network& net, const inputs::Positions& positions) : net_(net) {
    std::map<const literal::Point*, std::size_t> index;
    for (const literal::Point& p : net.points) index.emplace(&p, index.size());
    for (const inputs::Position& p : positions) beyond_ = beyond_ || (!hasNaN(p) && isBeyondMillimetres(p));
    if (beyond_) return;
    for (const literal::Point* p : net.accepted) {
      const std::size_t i = index.at(p);
      inputIndex_.push_back(i);
      accepted_.push_back(millimetresOf(roundedPoint(positions[i])));
      at_.emplace(p, accepted_.back());
    }
  }

  // Where the accepted points lie, in the order of the sort, and their indexes in the input.
  const std::vector<Millimetres>& accepted() const { return accepted_; }
  const std::vector<std::size_t>& inputIndex() const { return inputIndex_; }

  // Of the network as it stands: after the sweep or after the flips.
  Road road() const {
    if (beyond_) return Road::TooLarge;
    if (net_.edges.length() != 0 && net_.fullQueues < kMostFullQueues && isValid()) return Road::AsSwept;
    return areCollinear(accepted_) ? Road::Empty : Road::Exact;
  }

  static TPoint roundedPoint(const inputs::Position& p) {
    return TPoint(literal::roundedToMillimetres(p[0]), literal::roundedToMillimetres(p[1]), p[2]);
  }

 private:
  static bool isBeyondMillimetres(const inputs::Position& p) {
    constexpr double kLargestInMillimetres = 9.2e12;
    return !(std::fabs(p[0]) <= kLargestInMillimetres && std::fabs(p[1]) <= kLargestInMillimetres);
  }

  struct Side {
    Millimetres from;
    Millimetres to;
  };

  bool sidesOf(int triangle, std::array<Side, 3>& sides) const {
    for (std::size_t i = 0; i < sides.size(); ++i) {
      const literal::Edge& e = net_.edges[net_.triangles[triangle].edges[i]];
      if (e.left != triangle && e.right != triangle) return false;
      const bool forward = e.left == triangle;
      sides[i] = {at_.at(forward ? e.start : e.end), at_.at(forward ? e.end : e.start)};
    }
    return true;
  }

  static bool chain(const Side& a, const Side& b, const Side& c) {
    return a.to == b.from && b.to == c.from && c.to == a.from;
  }

  // Closed and counter-clockwise, or flat with two corners at one position; adds twice the area.
  bool isSound(int triangle, Wide& sum, std::set<Millimetres>& vertices) const {
    std::array<Side, 3> s{};
    if (!sidesOf(triangle, s)) return false;
    if (!chain(s[0], s[1], s[2])) std::swap(s[1], s[2]);
    if (!chain(s[0], s[1], s[2])) return false;
    const Wide area = cross(s[0].from, s[1].from, s[2].from);
    sum += area;
    for (const Side& side : s) vertices.insert(side.from);
    const bool repeat = std::any_of(s.begin(), s.end(), [](const Side& side) { return side.from == side.to; });
    return area > 0 || (area == 0 && repeat);
  }

  bool isValid() const {
    constexpr Wide kLargestDoubleGap = 2000;  // twice 0.001 square units, in square millimetres
    Wide gap = doubleHullArea(accepted_);
    Wide sum = 0;
    std::set<Millimetres> vertices;
    for (int t = 1; t <= net_.triangles.length(); ++t) {
      if (!isSound(t, sum, vertices)) return false;
    }
    for (const Millimetres& p : accepted_) {
      if (!vertices.contains(p)) return false;
    }
    gap -= sum;
    return gap <= kLargestDoubleGap && gap >= -kLargestDoubleGap;
  }

  const literal::Network& net_;
  bool beyond_ = false;
  std::vector<Millimetres> accepted_;
  std::vector<std::size_t> inputIndex_;
  std::map<const literal::Point*, Millimetres> at_;
};

// What the exact road leaves in the points: rounded coordinates in vertices, coordinates relative to the smallest x and
// y in repeats of these, and whatever they were rounded to in points that were not accepted at all.
void compareExactPoints(const OwnedPoints& points, const std::set<const TPoint*>& vertices, const literal::Network& net,
                        const inputs::Positions& positions, Difference& difference) {
  for (std::size_t i = 0; i < positions.size() && !difference; ++i) {
    if (hasNaN(positions[i])) continue;
    const TPoint rounded = SweptPositions::roundedPoint(positions[i]);
    const TPoint& p = *points[i];
    const bool isVertex = vertices.contains(&p);
    const double x = isVertex ? rounded.getX() : net.points[i].x;
    const double y = isVertex ? rounded.getY() : net.points[i].y;
    if (!sameBits(p.getX(), x) || !sameBits(p.getY(), y)) {
      difference.note("point ", i + 1, ": library (", p.getX(), ",", p.getY(), "), expected (", x, ",", y, ")");
    }
    if (!sameBits(p.getZ(), positions[i][2])) difference.note("point ", i + 1, ": its height has changed");
  }
}

void checkExactRoad(const CEType& tin, const OwnedPoints& points, const SweptPositions& swept,
                    const literal::Network& net, const inputs::Positions& positions, Difference& difference) {
  std::vector<TPoint*> accepted;
  for (const std::size_t i : swept.inputIndex()) accepted.push_back(points[i]);
  const Tables tables = tablesOf(tin, accepted);
  const std::string broken = brokenDelaunayPromise(swept.accepted(), tables);
  if (!broken.empty()) difference.note("exact road: ", broken);

  std::vector<TPoint*> vertices;
  for (const EdgeRow& e : tables.edges) {
    for (const int number : {e.start, e.end}) {
      if (number != 0) vertices.push_back(accepted[static_cast<std::size_t>(number - 1)]);
    }
  }
  compareExactPoints(points, {vertices.begin(), vertices.end()}, net, positions, difference);
  const TINCheck check = verifyTIN(tin, vertices);
  if (!check.valid()) difference.note("verifyTIN says '", toText(check), "' of the exact road's result");
}

void detachLists(CEType& tin) {
  tin.setCList(nullptr);
  tin.setEList(nullptr);
  tin.setTList(nullptr);
}

// A list that gives its points back instead of releasing them.
struct BorrowingList {
  void operator()(PList* list) const {
    list->setListData({});
    delete list;
  }
};

// Finishes the network where the sweep allows it, and says which road the whole construction takes.
Road finishedRoad(literal::Network& net, const SweptPositions& swept) {
  const Road road = swept.road();
  if (net.edges.length() == 0 || road == Road::Exact || road == Road::Empty) return road;
  if (road == Road::TooLarge) {
    literal::flip(net);
  } else {
    literal::flip(net, SweptPositions::kMostFullQueues);
    if (swept.road() != road) {
      ++g_inputsLeftByTheFlips;
      return swept.road();
    }
  }
  literal::moveBack(net);
  return road;
}

}  // namespace

std::string checkedTIN(const inputs::Positions& positions, literal::Repeats repeats) {
  literal::Network net = literal::construct(positions, literal::Stop::AfterSweep, repeats);
  const OwnedPoints points(positions);
  std::vector<TPoint*> given = points.pointers();
  const Numbering numbering(given, net);
  Difference difference;

  const WatchedState watched;
  Surface::COMPAREUNSHIFTED = repeats == literal::Repeats::AgainstUnshifted ? 1 : 0;
  const std::unique_ptr<CEType> tin(Surface::optimizeTIN(given));
  if (net.null || tin == nullptr) return net.null == (tin == nullptr) ? "" : "one of the two gives no network at all";
  compareState(net, difference);
  compareOrder(given, net, numbering, difference);

  const SweptPositions swept(net, positions);
  const Road road = finishedRoad(net, swept);
  ++g_inputsByRoad[static_cast<std::size_t>(road)];
  if (road == Road::Exact) {
    checkExactRoad(*tin, points, swept, net, positions, difference);
  } else if (road == Road::Empty) {
    difference.expectEqual("number of edges of collinear points", edgeCount(*tin), 0);
  } else {
    compareLists(*tin, net, numbering, difference);
    comparePoints(points, net, positions, difference);
  }
  if (!difference && road == Road::AsSwept) difference.note(brokenInvariantOf(*tin, net.queueOverflowed));
  return difference.text();
}

int inputsThatTook(Road road) { return g_inputsByRoad[static_cast<std::size_t>(road)]; }
int inputsLeftByTheFlips() { return g_inputsLeftByTheFlips; }

Road roadOf(const inputs::Positions& positions, literal::Repeats repeats) {
  literal::Network net = literal::construct(positions, literal::Stop::AfterSweep, repeats);
  return finishedRoad(net, SweptPositions(net, positions));
}

std::string checkedStages(const inputs::Positions& positions) {
  const literal::Network net = literal::sweepOnly(positions);
  const OwnedPoints points(positions);
  std::vector<TPoint*> given = points.pointers();
  const Numbering numbering(given, net);
  Difference difference;

  const WatchedState watched;
  const std::unique_ptr<PList, BorrowingList> list(Surface::initPoins(given));
  if (!given.empty()) difference.note("initPoins leaves points in the vector");
  difference.expectEqual("initPoins gives null", list == nullptr, net.sweep.empty());
  difference.expectEqual("MAXPOINTS", Surface::MAXPOINTS, net.maxPoints.value_or(kUnwritten));
  if (difference || list == nullptr) return difference.text();
  compareSweepOrder(list.get(), net, numbering, difference);

  const std::unique_ptr<CEType> fan(Surface::initCET(list.get()));
  difference.expectEqual("initCET gives null", fan == nullptr, net.null);
  difference.expectEqual("FLAG", Surface::FLAG, net.flag.value_or(kUnwritten));
  if (difference || fan == nullptr) return difference.text();
  difference.expectEqual("triangles of the fan", triangleCount(*fan), *net.flag - 2);

  const std::unique_ptr<CEType> tin(Surface::buildTIN(list.get(), fan.get()));
  if (tin == nullptr) return "buildTIN gives null";
  if (tin->getEList() != fan->getEList()) difference.note("buildTIN does not build on the lists that it was given");
  detachLists(*fan);
  compareLists(*tin, net, numbering, difference);
  comparePoints(points, net, positions, difference);
  if (!difference) compareVerdict(*tin, points.pointers(), difference);
  return difference.text();
}

inputs::Positions sweptPositions(const inputs::Positions& positions) {
  const literal::Network net = literal::construct(positions, literal::Stop::AfterSweep);
  inputs::Positions result;
  for (const literal::Point* p : net.accepted) result.push_back({p->x, p->y, p->z});
  return result;
}

inputs::Positions minimised(inputs::Positions positions, std::string (*check)(const inputs::Positions&)) {
  for (bool smaller = true; smaller;) {
    smaller = false;
    for (std::size_t i = 0; i < positions.size();) {
      inputs::Positions fewer = positions;
      fewer.erase(fewer.begin() + static_cast<std::ptrdiff_t>(i));
      if (check(fewer).empty()) {
        ++i;
        continue;
      }
      positions = fewer;
      smaller = true;
    }
  }
  return positions;
}

std::string tableOf(const inputs::Positions& positions) {
  constexpr std::size_t kLongestTable = 40;
  std::ostringstream out;
  out.precision(17);
  for (std::size_t i = 0; i < positions.size() && i < kLongestTable; ++i) {
    out << "{" << positions[i][0] << ", " << positions[i][1] << ", " << positions[i][2] << "},\n";
  }
  if (positions.size() > kLongestTable) out << "... " << positions.size() << " points\n";
  return out.str();
}

}  // namespace support
