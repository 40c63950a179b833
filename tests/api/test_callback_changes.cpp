// Callbacks that register others, or none, while records are being handed out: each record goes to the callback that is
// registered when its turn comes.
#include <stdexcept>

#include "api/FlatTest.h"

namespace {

// How many records the second set of callbacks has received.
struct Second {
  int lines = 0;
  int points = 0;
  int surfaces = 0;
  int vertices = 0;
};

Second second;

class CallbackChanges : public FlatTest {
 protected:
  void SetUp() override {
    FlatTest::SetUp();
    second = {};
    newDTMSurfaceLib();
    addSquare("Site", 15, 16);
    fill("points.csv", "A,,101,201,15.1\nB,,102,202,15.2\nC,,103,203,15.3\n");
    fill("boundary.waa", "1\n0\nA,201,101,0\nB,201,109,0\nC,209,109,0\nD,209,101,0\n");
    std::filesystem::create_directories(folder_ / "saved");
    for (const char* name : {"a.ttin", "b.ttin", "c.ttin"}) saveSurface(0, path(std::string("saved/") + name).c_str());
    registerAll();
  }

  static void registerSecond() {
    setCallBack([](DrawLine*) { ++second.lines; },
                [](SurfacePoint* point) {
                  ++second.points;
                  if (!isListed(point)) freeSurfacePoint(point);
                },
                [](DTMSurface*) { ++second.surfaces; }, [](RangePoint*) { ++second.vertices; });
  }

  static void registerNone() { setCallBack(nullptr, nullptr, nullptr, nullptr); }

  // Runs `change` once, in the given call of the first callbacks.
  template <typename Change>
  static void changeAtCall(int call, Change change) {
    handed.onEach = [change, call, made = 0]() mutable {
      if (++made == call) change();
    };
  }

  // Whether a record is the surface's own; others are copies, which are the host's.
  static bool isListed(const SurfacePoint* point) {
    const DTMSurface* surface = getSurface(0);
    if (surface == nullptr) return false;
    for (const SurfacePoint* own : surface->getSurfacePoints()) {
      if (own == point) return true;
    }
    return false;
  }

  static int preview() { return previewDTMSurface(0, 99, 111, 199, 211); }
  int readPoints() const { return loadSurfacePointsFile(0, path("points.csv").c_str()); }
  int readBoundary() const { return loadRangePointFile(path("boundary.waa").c_str(), nullptr, nullptr); }
  void readFolder() const { getSurfaceByPath(path("saved").c_str(), ".ttin"); }

  static void freeCopies() {
    for (SurfacePoint* copy : handed.pointRecords) freeSurfacePoint(copy);
    handed.pointRecords.clear();
  }
};

using Names = std::vector<std::string>;

// ---- to others

TEST_F(CallbackChanges, TheRestOfAListOfPointsGoesToTheNewCallback) {
  changeAtCall(1, registerSecond);
  EXPECT_EQ(1, getSurfacePoints(0));
  EXPECT_EQ(Names{"SW"}, handed.points);
  EXPECT_EQ(3, second.points);
}

TEST_F(CallbackChanges, TheRestOfAPointFileGoesToTheNewCallback) {
  changeAtCall(2, registerSecond);
  EXPECT_EQ(1, readPoints());
  EXPECT_EQ((Names{"A", "B"}), handed.points);
  EXPECT_EQ(1, second.points);
  freeCopies();
}

TEST_F(CallbackChanges, TheRestOfAPreviewGoesToTheNewCallback) {
  changeAtCall(4, registerSecond);
  EXPECT_EQ(1, preview());
  EXPECT_EQ(4u, handed.lines.size());
  EXPECT_EQ(5, second.lines);
}

TEST_F(CallbackChanges, TheRestOfABoundaryGoesToTheNewCallback) {
  changeAtCall(3, registerSecond);
  EXPECT_EQ(1, readBoundary());
  EXPECT_EQ((Names{"A", "B", "C"}), handed.vertices);
  EXPECT_EQ(1, second.vertices);
}

TEST_F(CallbackChanges, TheRestOfAFolderGoesToTheNewCallback) {
  changeAtCall(1, registerSecond);
  readFolder();
  EXPECT_EQ(1u, handed.surfaces.size());
  EXPECT_EQ(2, second.surfaces);
}

// ---- to none

TEST_F(CallbackChanges, WithoutACallbackTheRestIsNotHandedOut) {
  changeAtCall(1, registerNone);
  EXPECT_EQ(1, getSurfacePoints(0));
  EXPECT_EQ(Names{"SW"}, handed.points);
  EXPECT_EQ(1, getSurfacePoints(0));
  EXPECT_EQ(Names{"SW"}, handed.points);

  registerAll();
  changeAtCall(2, registerNone);
  EXPECT_EQ(1, preview());
  EXPECT_EQ(2u, handed.lines.size());

  registerAll();
  changeAtCall(3, registerNone);
  EXPECT_EQ(1, readBoundary());
  EXPECT_EQ((Names{"A", "B", "C"}), handed.vertices);
  EXPECT_EQ(4u, detail::flatState().rangePoints.size());

  registerAll();
  changeAtCall(2, registerNone);
  readFolder();
  EXPECT_EQ(2u, handed.surfaces.size());
  EXPECT_NE(nullptr, getSurface(3)) << "all three are loaded all the same";
}

// What is left of the copies is freed: a leak would be reported where memory is watched.
TEST_F(CallbackChanges, WithoutACallbackTheRestOfAPointFileIsFreed) {
  for (int call = 1; call <= 3; ++call) {
    registerAll();
    handed.points.clear();
    changeAtCall(call, registerNone);
    EXPECT_EQ(1, readPoints());
    EXPECT_EQ(static_cast<std::size_t>(call), handed.points.size());
    EXPECT_EQ(4 + 3 * call, getSurface(0)->getPointsNumber());
    freeCopies();
  }
}

// Only the receiver of what is being handed out counts.
TEST_F(CallbackChanges, TheOtherReceiversMayGo) {
  changeAtCall(1, [] {
    setCallBack(
        nullptr, [](SurfacePoint*) { ++second.points; }, nullptr, nullptr);
  });
  EXPECT_EQ(1, getSurfacePoints(0));
  EXPECT_EQ(3, second.points);
  EXPECT_EQ(1, preview());
  EXPECT_TRUE(handed.lines.empty());
}

// ---- together with what else a callback may do

TEST_F(CallbackChanges, AnInnerListChangesTheReceiverOfTheOuterOne) {
  handed.onEach = [calls = 0]() mutable {
    ++calls;
    if (calls == 1) {
      EXPECT_EQ(1, getSurfacePoints(0));
    }
    if (calls == 3) registerSecond();
  };
  EXPECT_EQ(1, getSurfacePoints(0));
  EXPECT_EQ((Names{"SW", "SW", "SE"}), handed.points);
  EXPECT_EQ(2 + 3, second.points) << "the rest of the inner list, then that of the outer one";
}

TEST_F(CallbackChanges, AnInnerPointFileStopsTheOuterOne) {
  handed.onEach = [&, calls = 0]() mutable {
    ++calls;
    if (calls == 2) {
      EXPECT_EQ(1, readPoints());
    }
    if (calls == 4) registerNone();
  };
  EXPECT_EQ(1, readPoints());
  EXPECT_EQ((Names{"A", "B", "A", "B"}), handed.points);
  EXPECT_EQ(10, getSurface(0)->getPointsNumber());
  freeCopies();
}

TEST_F(CallbackChanges, TheReceiverChangesAndTheSurfaceGoes) {
  changeAtCall(1, [] {
    registerSecond();
    EXPECT_EQ(1, releaseDTMSurface(0));
  });
  EXPECT_EQ(1, getSurfacePoints(0));
  EXPECT_EQ(0, second.points);

  addSquare("Site", 15, 16);
  registerAll();
  changeAtCall(1, [] {
    registerSecond();
    EXPECT_EQ(1, releaseDTMSurface(0));
    newDTMSurfaceLib();
  });
  EXPECT_EQ(1, readPoints());
  EXPECT_EQ(2, second.points);
  freeSurfacePoint(handed.pointRecords.back());
}

TEST_F(CallbackChanges, TheReceiverChangesAndThePointsToo) {
  changeAtCall(1, [] {
    registerSecond();
    EXPECT_EQ(1, addSurfacePoint(0, "more", 205, 105, 15.5));
    EXPECT_EQ(1, deleteSurfacePoint(0, 0));
  });
  EXPECT_EQ(1, getSurfacePoints(0));
  EXPECT_EQ(3, second.points);
  EXPECT_EQ(4, getSurface(0)->getPointsNumber());
}

TEST_F(CallbackChanges, TheReceiverChangesAndTheBoundaryToo) {
  changeAtCall(2, [] {
    registerSecond();
    EXPECT_EQ(1, deleteRangePoint(2));
    EXPECT_EQ(1, addRangePoint("new", 1, 2, 3));
  });
  EXPECT_EQ(1, readBoundary());
  EXPECT_EQ((Names{"A", "B"}), handed.vertices);
  EXPECT_EQ(1, second.vertices) << "D alone";
}

TEST_F(CallbackChanges, TheNewReceiverThrows) {
  changeAtCall(1, [] {
    const SurfacePointCallback freesAndThrows = [](SurfacePoint* copy) {
      freeSurfacePoint(copy);
      throw std::runtime_error("the host's own");
    };
    setCallBack(nullptr, freesAndThrows, nullptr, nullptr);
  });
  EXPECT_EQ(0, readPoints());
  EXPECT_EQ(Names{"A"}, handed.points);
  EXPECT_EQ(7, getSurface(0)->getPointsNumber());
  freeCopies();

  registerAll();
  changeAtCall(1, [] { setCallBack([](DrawLine*) { throw 7; }, nullptr, nullptr, nullptr); });
  EXPECT_EQ(0, preview());
  EXPECT_EQ(1u, handed.lines.size());
}

}  // namespace
