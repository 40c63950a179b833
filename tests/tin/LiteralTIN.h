// A slow construction of the same TIN, written independently of the library's: list by list, rounding through text,
// first matches found by looking at every element. It shares no code with the library, so that a fault would have to be
// made twice to go unnoticed.
#pragma once

#include <array>
#include <cstddef>
#include <deque>
#include <limits>
#include <optional>
#include <string>
#include <vector>

namespace literal {

struct Point {
  double x;
  double y;
  double z;
};

struct Edge {
  Point* start;
  Point* end;
  int left = 0;
  int right = 0;
};

struct Triangle {
  int edges[3];
};

// A list numbered from 1 that silently refuses what goes beyond its capacity.
template <class T>
class NumberedList {
 public:
  void setCapacity(long capacity) { capacity_ = capacity; }
  int length() const { return static_cast<int>(items_.size()); }
  void add(const T& item) {
    if (length() < capacity_) items_.push_back(item);
  }
  void removeNumber(int number) { items_.erase(items_.begin() + (number - 1)); }
  T& operator[](int number) { return items_.at(static_cast<std::size_t>(number - 1)); }
  const T& operator[](int number) const { return items_.at(static_cast<std::size_t>(number - 1)); }

 private:
  long capacity_ = 100;
  std::vector<T> items_;
};

// The network of one run. Edges, triangles and hull refer to `points`, which keep their addresses.
struct Network {
  std::deque<Point> points;      // one per input position, in input order
  std::vector<Point*> order;     // the input vector as the run leaves it: by y, then x, NaN at the end
  std::vector<Point*> accepted;  // what is left after repeats are dropped
  std::vector<Point*> sweep;     // in sweep order; empty when there is none
  NumberedList<int> hull;
  NumberedList<Edge> edges;
  NumberedList<Triangle> triangles;
  std::optional<int> maxPoints;  // what the run writes to the process-wide numbers, if it does
  std::optional<int> flag;
  double originX = 0.0;
  double originY = 0.0;
  bool null = false;             // there is no network at all
  bool queueOverflowed = false;  // an offer was dropped by a full queue
  int fullQueues = 0;            // how often the queue was full while one edge was followed up
};

enum class Stop { AfterSweep, AfterFlips };
enum class Repeats { AgainstShifted, AgainstUnshifted };

// The whole way from survey positions to the network; stopped after the sweep, coordinates are still shifted.
Network construct(const std::vector<std::array<double, 3>>& positions, Stop stop = Stop::AfterFlips,
                  Repeats repeats = Repeats::AgainstShifted);

// What is left to do for a network whose construction was stopped after the sweep: flips, which stop early once the
// queue has been full `mostFullQueues` times, and the way back from shifted coordinates.
void flip(Network& net, int mostFullQueues = std::numeric_limits<int>::max());
void moveBack(Network& net);

// The first three stages alone, on coordinates as they are; `null` says that the ordering or the fan gave nothing.
Network sweepOnly(const std::vector<std::array<double, 3>>& positions);

// The order of the sweep; empty when there is none.
std::vector<Point*> sweepOrder(const std::vector<Point*>& points);

double roundedToMillimetres(double value);
double angleByX(const Edge& edge);
bool isPointInEdge(const Edge& edge, const Point& p);
int point2Line(const Edge& edge, const Point& p);
int isSameLine(const Edge& edge, const Edge& other);
bool isConvex(const Point& a, const Point& b, const Point& c, const Point& d);
bool isNeedTrans(const Point& a, const Point& b, const Point& c, const Point& d);

}  // namespace literal
