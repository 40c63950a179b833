// Memory that runs out in the construction, in a TIN's queries and in its lists.
#include <algorithm>
#include <array>
#include <cfloat>
#include <sstream>

#include "memory/EveryAllocation.h"
#include "memory/SurfaceCase.h"

namespace memory {
namespace {

// Leaves the lists to the TIN that they are shared with.
void takeListsFrom(CEType& tin) {
  tin.setCList(nullptr);
  tin.setEList(nullptr);
  tin.setTList(nullptr);
}

// Points that a caller owns, the stages of the construction over them, a TIN with queries, and a list by itself.
struct TinCase {
  TinCase() {
    for (SurfacePoint* point : newGround(9, 2.0)) {
      own.push_back(std::make_unique<TPoint>(point->getE() + 1000.0, point->getN() + 2000.0, point->getZ()));
      delete point;
    }
    for (const auto& point : own) points.push_back(point.get());
    std::vector<TPoint*> sorted = points;
    other.reset(Surface::optimizeTIN(sorted));
    for (int i = 1; i <= 3; ++i) list.add(&list, new TPoint(i, i, i));
  }
  ~TinCase() {
    forget();
    if (stage != nullptr) delete stage;
    if (pointList != nullptr) pointList->setListData({});  // the points are this case's
    delete pointList;
  }
  TinCase(const TinCase&) = delete;
  TinCase& operator=(const TinCase&) = delete;

  void forget() {
    tin.reset();
    if (laterStage != nullptr) takeListsFrom(*laterStage);  // they are those of the stage before
    delete laterStage;
    laterStage = nullptr;
    numbers = {};
    text = {};
    result.reset();
  }

  std::string describe() {
    std::ostringstream seen;
    seen.precision(17);
    for (const auto& point : own) seen << point->getX() << "," << point->getY() << "," << point->getZ() << ";";
    seen << points.size() << textOf(*other);
    if (pointList != nullptr) seen << pointList->getListLen();
    if (stage != nullptr) seen << textOf(*stage);
    if (laterStage != nullptr) seen << textOf(*laterStage);
    if (tin != nullptr) seen << textOf(*tin);
    if (result != nullptr) seen << textOf(*result);
    seen << "list " << list.getMaxlen() << ":";
    for (int i = 1; i <= list.getListLen(); ++i) seen << list.findByNum(&list, i)->getX() << " ";
    for (int i = 1; tight != nullptr && i <= tight->getListLen(); ++i) seen << tight->findByNum(tight.get(), i)->getX();
    for (int i = 1; run != nullptr && i <= run->getListLen(); ++i) seen << run->findByNum(run.get(), i)->getLength();
    for (const double v : numbers) seen << v << " ";
    seen << text;
    return seen.str();
  }

  std::vector<std::unique_ptr<TPoint>> own;
  std::vector<TPoint*> points;
  std::unique_ptr<CEType> other;  // a TIN to ask
  PList* pointList = nullptr;
  CEType* stage = nullptr;
  CEType* laterStage = nullptr;
  PList list;
  std::unique_ptr<PList> tight;
  std::unique_ptr<EList> run;
  std::unique_ptr<TPoint> spare = std::make_unique<TPoint>(9.0, 9.0, 9.0);

  std::unique_ptr<CEType> tin;
  std::vector<double> numbers;
  std::string text;
  std::unique_ptr<FillCutResult> result;
};

using On = TinCase;
using TinOperation = Operation<TinCase>;

class TinWithoutMemory : public testing::TestWithParam<TinOperation> {};

TEST_P(TinWithoutMemory, StaysAsItIs) { tryEveryAllocation(GetParam()); }

std::string nameOf(const testing::TestParamInfo<TinOperation>& info) { return info.param.name; }

// ---- construction

bool triangulate(On& on) {
  on.tin.reset(Surface::optimizeTIN(on.points));
  return on.tin != nullptr;
}

// The bay beside repeated positions away from the origin, which only the exact construction fills.
void repeatPositions(On& on) {
  on.own[1]->setX(on.own[0]->getX());
  on.own[1]->setY(on.own[0]->getY());
  on.own[3]->setX(on.own[2]->getX());
  on.own[3]->setY(on.own[2]->getY());
}

void lineUp(On& on) {
  for (std::size_t i = 0; i < on.own.size(); ++i) {
    on.own[i]->setX(100.0 + static_cast<double>(i));
    on.own[i]->setY(100.0 + static_cast<double>(i));
  }
}

bool orderPoints(On& on) {
  on.pointList = Surface::initPoins(on.points);
  return on.pointList != nullptr;
}

bool startFan(On& on) {
  on.stage = Surface::initCET(on.pointList);
  return on.stage != nullptr;
}

const TinOperation kConstruction[] = {
    {"Triangulate", triangulate},
    {"TriangulateRepeats", triangulate, repeatPositions},
    {"TriangulateLine", triangulate, lineUp},
    {"OrderPoints", orderPoints},
    {"StartFan", startFan, orderPoints},
    {"AddRemainingPoints",
     [](On& on) { return (on.laterStage = Surface::buildTIN(on.pointList, on.stage)) != nullptr; },
     [](On& on) {
       orderPoints(on);
       startFan(on);
     }},
    {"FromFaces",
     [](On& on) {
       on.tin.reset(CEType::initCETypeFromFaces(on.points, {{0, 1, 2}, {2, 1, 3}, {3, 4, 5}, {7, 7, 7}}));
       return true;
     }},
};

// ---- queries

template <typename Query>
TinOperation query(const char* name, Query ask) {
  return {name, [ask](On& on) {
            const double answer = ask(*on.other);
            return on.numbers = {answer}, true;
          }};
}

constexpr double kX = 1002.0;
constexpr double kY = 2002.0;

const TinOperation kQueries[] = {
    query("Locate", [](CEType& tin) { return tin.locateTri(kX, kY); }),
    query("LocateOutside", [](CEType& tin) { return tin.locateTri(0, 0); }),
    query("LocateFrom", [](CEType& tin) { return tin.locateTri(kX, kY, 2); }),
    query("LocateByScan", [](CEType& tin) { return tin.locateTri1(kX, kY); }),
    query("Height", [](CEType& tin) { return tin.getHeight(kX, kY); }),
    query("Area", [](CEType& tin) { return tin.getArea3D(); }),
    query("Measures", [](CEType& tin) { return tin.getMeasures().highest; }),
    query("Valid", [](CEType& tin) { return verifyTIN(tin).valid() ? 1.0 : 0.0; }),
    query("PointsInUse", [](CEType& tin) { return static_cast<double>(tin.getOriginalList().size()); }),
    query("Extent", [](CEType& tin) { return tin.getRangeXY()[3]; }),
    query("HeightRange",
          [](CEType& tin) {
            const std::unique_ptr<double[]> heights(tin.getMinMaxHeight());
            return heights[1];
          }),
    query("Neighbours",
          [](CEType& tin) {
            const std::unique_ptr<int[]> three(tin.getRelateT(2));
            return three[0] + 10 * three[1] + 100 * three[2];
          }),
    query("Grid", [](CEType& tin) { return tin.proxyTri(1000.0, 2000.0, 4, 4, 1.0)[2][2]; }),
    query("Copy",
          [](CEType& tin) {
            CEType copy(tin);
            copy.getRangeList().clear();
            const int triangles = copy.getTList()->getListLen();
            takeListsFrom(copy);
            return triangles;
          }),
    {"Assign",
     [](On& on) {
       CEType copy(nullptr, nullptr, nullptr);
       copy = *on.other;
       const auto corners = static_cast<double>(copy.getRangeList().size());
       copy.getRangeList().clear();
       takeListsFrom(copy);
       return on.numbers = {corners}, true;
     },
     [](On& on) {
       std::vector<RangePoint> vertices = boundary();
       on.other->setRangeList(pointersTo(vertices));
     }},
    {"ValidOverPoints",
     [](On& on) {
       const bool valid = verifyTIN(*on.other, on.points).valid();
       return on.numbers = {valid ? 1.0 : 0.0}, true;
     }},
    {"FaultText",
     [](On& on) {
       return on.text = toText({TINFault::OpenTriangle, 17, 0.0}), true;
     }},
    {"Sjw", [](On& on) { return on.text = on.other->getCASSsjw(), true; }},
    {"BytesAndBack",
     [](On& on) {
       std::vector<unsigned char> bytes = on.other->getBytes();
       on.tin.reset(CEType::tryParse(bytes.data()));
       return on.tin != nullptr;
     }},
    {"SetBoundary",
     [](On& on) {
       std::vector<RangePoint> vertices = boundary();
       on.other->setRangeList(pointersTo(vertices));
       return true;
     }},
    {"ExactAgainstLevel",
     [](On& on) {
       double coverage = -1.0;
       on.result.reset(on.other->getFillCutExact(20.5, &coverage));
       return on.numbers = {coverage}, true;
     }},
    {"ExactAgainstSurface",
     [](On& on) {
       double coverage = -1.0;
       on.result.reset(on.other->getFillCutExact(on.tin.get(), &coverage));
       return on.numbers = {coverage}, true;
     },
     triangulate},
};

// ---- lists

bool addSpare(On& on, PList& list, int position) {
  TPoint* point = on.spare.get();
  if ((position == 0 ? list.add(&list, point) : list.insert(&list, position, point)) == 0) return false;
  static_cast<void>(on.spare.release());
  return true;
}

// A list without room for another pointer.
void tighten(On& on) {
  on.tight = std::make_unique<PList>(on.list);
  on.list.setListData({});
}

// A list of elements side by side without room for pointers to them, which a change needs.
void makeRun(On& on) {
  on.run = std::make_unique<EList>(*on.other->getEList());
  on.other->getEList()->setListData({});
}

EList& edgesOf(On& on) { return *on.other->getEList(); }

const TinOperation kLists[] = {
    {"Make",
     [](On& on) {
       PList list;
       return on.numbers = {static_cast<double>(list.getMaxlen())}, true;
     }},
    {"Add", [](On& on) { return addSpare(on, *on.tight, 0); }, tighten},
    {"Insert", [](On& on) { return addSpare(on, *on.tight, 2); }, tighten},
    {"SetCapacity", [](On& on) { return on.list.setMaxlen(1000), true; }},
    {"Data", [](On& on) { return on.numbers = {static_cast<double>(on.list.getListData().size())}, true; }},
    {"SetData", [](On& on) { return on.list.setListData(on.list.getListData()), true; }},
    {"DeleteFromRun", [](On& on) { return on.run->deleteData(on.run.get(), 2) == 1; }, makeRun},
    {"SwitchInRun", [](On& on) { return on.run->switchPos(on.run.get(), 1, 3) != nullptr; }, makeRun},
    {"Dump", [](On& on) { return edgesOf(on).getAllNode(&edgesOf(on)), true; }},
    {"Assign",
     [](On& on) {
       PList copy;
       copy = on.list;
       const int length = copy.getListLen();
       copy.setListData({});
       return on.numbers = {static_cast<double>(length)}, true;
     }},
};

INSTANTIATE_TEST_SUITE_P(Construction, TinWithoutMemory, testing::ValuesIn(kConstruction), nameOf);
INSTANTIATE_TEST_SUITE_P(Queries, TinWithoutMemory, testing::ValuesIn(kQueries), nameOf);
INSTANTIATE_TEST_SUITE_P(Lists, TinWithoutMemory, testing::ValuesIn(kLists), nameOf);

// A TIN whose assignment fails would otherwise destroy what it shares with its source.
TEST(AssignedTinWithoutMemory, SharesNothing) {
  TinCase on;
  std::vector<RangePoint> vertices = boundary();
  on.other->setRangeList(pointersTo(vertices));
  CEType copy(nullptr, nullptr, nullptr);
  limit(0, Failure::kOnce);
  EXPECT_THROW(copy = *on.other, std::bad_alloc);
  EXPECT_TRUE(unlimit());
  EXPECT_EQ(nullptr, copy.getTList());
  EXPECT_TRUE(copy.getRangeList().empty());
}

// Numbers that are written through a pointer after a query has failed are seen by the next one.
TEST(EditedTinWithoutMemory, IsLookedAtAfterAFailure) {
  bool hasFailed = true;
  for (long allowed = 0; hasFailed; ++allowed) {
    TinCase on;
    const int found = on.other->locateTri(kX, kY);
    ASSERT_NE(0, found);
    int* edges = on.other->getTList()->findByNum(on.other->getTList(), found)->getEno();
    limit(allowed, Failure::kOnce);
    try {
      on.other->locateTri(kX, kY);
    } catch (const std::bad_alloc&) {
    }
    hasFailed = unlimit();
    std::fill(edges, edges + 3, 0);
    EXPECT_EQ(0, on.other->locateTri1(kX, kY)) << allowed;
    EXPECT_TRUE(hasFailed || allowed > 1);
  }
}

// A list that is assigned to keeps its capacity when there is no memory for the elements.
TEST(ListWithoutMemory, IsNotHalfAssigned) {
  PList source;
  source.setMaxlen(1000);
  std::vector<TPoint> points(500, TPoint(1.0, 2.0, 3.0));
  std::vector<void*> data;
  for (TPoint& point : points) data.push_back(&point);
  source.setListData(data);
  PList target;
  limit(0, Failure::kOnce);
  EXPECT_THROW(target = source, std::bad_alloc);
  EXPECT_TRUE(unlimit());
  EXPECT_EQ(100, target.getMaxlen());
  EXPECT_EQ(0, target.getListLen());
  source.setListData({});
}

}  // namespace
}  // namespace memory
