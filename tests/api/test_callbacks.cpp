// What the callbacks of a host may do: throw, and edit what they are being shown.
#include <stdexcept>

#include "api/FlatTest.h"

namespace {

class FlatCallbacks : public FlatTest {
 protected:
  void SetUp() override {
    FlatTest::SetUp();
    newDTMSurfaceLib();
    addSquare("Site", 15, 16);
    registerAll();
  }

  static void throwAfter(int calls) {
    handed.onEach = [calls, made = 0]() mutable {
      if (++made > calls) throw std::runtime_error("the host's own");
    };
  }
};

using Names = std::vector<std::string>;

// Whatever happened, the surface is whole and in its place.
void expectSound() {
  ASSERT_NE(nullptr, getSurface(0));
  double z = 0.0;
  EXPECT_EQ(1, checkSurfacePoint(0, 205, 105, &z));
  EXPECT_EQ(15.5, z);
}

TEST_F(FlatCallbacks, AnExceptionEndsAPreview) {
  throwAfter(2);
  EXPECT_EQ(0, previewDTMSurface(0, 99, 111, 199, 211));
  EXPECT_EQ(2u, handed.lines.size());
  expectSound();
}

TEST_F(FlatCallbacks, AnExceptionEndsAListOfPoints) {
  throwAfter(2);
  EXPECT_EQ(0, getSurfacePoints(0));
  EXPECT_EQ((Names{"SW", "SE", "NE"}), handed.points);
  expectSound();
  EXPECT_EQ(4, getSurface(0)->getPointsNumber());
}

TEST_F(FlatCallbacks, AnExceptionThatIsNoneOfTheStandardLibrarys) {
  handed.onEach = [] { throw 7; };
  EXPECT_EQ(0, getSurfacePoints(0));
  EXPECT_EQ(0, previewDTMSurface(0, 99, 111, 199, 211));
  expectSound();
}

// The surface has its points; of the copies, those that were handed out are the host's and the others are gone.
TEST_F(FlatCallbacks, AnExceptionEndsTheReadingOfAPointFile) {
  fill("p.csv", "A,,101,201,15.1\nB,,102,202,15.2\nC,,103,203,15.3\n");
  throwAfter(1);
  EXPECT_EQ(0, loadSurfacePointsFile(0, path("p.csv").c_str()));
  EXPECT_EQ((Names{"A", "B"}), handed.points);
  EXPECT_EQ(7, getSurface(0)->getPointsNumber());
  expectSound();
  for (SurfacePoint* copy : handed.pointRecords) freeSurfacePoint(copy);
}

TEST_F(FlatCallbacks, AnExceptionEndsTheReadingOfABoundary) {
  fill("b.waa", "1\n1\nA,1,2,3\nB,4,5,6\n");
  throwAfter(0);
  bool first = false, second = false;
  EXPECT_EQ(0, loadRangePointFile(path("b.waa").c_str(), &first, &second));
  EXPECT_EQ(2u, detail::flatState().rangePoints.size());
  EXPECT_EQ(1, deleteRangePoint(1));
}

TEST_F(FlatCallbacks, AnExceptionEndsTheReadingOfAFolder) {
  for (const char* name : {"a.ttin", "b.ttin"}) ASSERT_EQ(1, saveSurface(0, path(name).c_str()));
  throwAfter(0);
  getSurfaceByPath(folder_.c_str(), ".ttin");
  EXPECT_EQ(1u, handed.surfaces.size());
  EXPECT_EQ(handed.surfaces[0], getSurface(1));
  EXPECT_EQ(nullptr, getSurface(2));
  expectSound();
}

TEST_F(FlatCallbacks, PointsDeletedMeanwhileAreLeftOut) {
  handed.onEach = [calls = 0]() mutable {
    if (++calls == 1) deleteSurfacePoint(0, 0);
  };
  EXPECT_EQ(1, getSurfacePoints(0));
  EXPECT_EQ((Names{"SW", "SE", "NE", "NW"}), handed.points);

  handed.points.clear();
  handed.onEach = [calls = 0]() mutable {
    SurfacePoint* removed = getSurface(0)->getSurfacePoints()[1];
    if (++calls != 1) return;
    EXPECT_EQ(1, deleteSurfacePoint(0, 1));
    freeSurfacePoint(removed);
  };
  EXPECT_EQ(1, getSurfacePoints(0));
  EXPECT_EQ((Names{"SE", "NW"}), handed.points);
}

TEST_F(FlatCallbacks, PointsAddedMeanwhileAreNotHandedOut) {
  handed.onEach = [] { EXPECT_EQ(1, addSurfacePoint(0, "more", 205, 105, 15.5)); };
  EXPECT_EQ(1, getSurfacePoints(0));
  EXPECT_EQ(4u, handed.points.size());
  EXPECT_EQ(8, getSurface(0)->getPointsNumber());
}

// A new record may get the address of the one that it replaces: it is none of those that there were.
TEST_F(FlatCallbacks, PointsReplacedMeanwhile) {
  handed.onEach = [] { EXPECT_EQ(1, updateSurfacePoint(0, 3, "new", 210, 100, 15)); };
  EXPECT_EQ(1, getSurfacePoints(0));
  EXPECT_EQ((Names{"SW", "SE", "NE"}), handed.points);

  handed = {};
  handed.onEach = [] {
    for (int i = 0; i < 8; ++i) EXPECT_EQ(1, updateSurfacePoint(0, 1, "newer", 200, 110, 16));
  };
  EXPECT_EQ(1, getSurfacePoints(0));
  EXPECT_EQ((Names{"SW", "NE", "new"}), handed.points);
  expectSound();
}

TEST_F(FlatCallbacks, PointsMovedMeanwhileAreHandedOutOnce) {
  handed.onEach = [calls = 0]() mutable {
    if (++calls == 1) {
      EXPECT_EQ(1, deleteSurfacePoint(0, 0));
      EXPECT_EQ(1, addSurfacePoint(0, "SW", 200, 100, 15));
    }
  };
  EXPECT_EQ(1, getSurfacePoints(0));
  EXPECT_EQ((Names{"SW", "SE", "NE", "NW"}), handed.points);
}

// The inner call hands out what the outer one's callback has made; the outer one goes on with its own.
TEST_F(FlatCallbacks, ListsOfPointsWithinLists) {
  handed.onEach = [calls = 0]() mutable {
    if (++calls != 2) return;
    for (unsigned int i = 0; i < 3; ++i) EXPECT_EQ(1, updateSurfacePoint(0, i, "new", 200 + 3 * i, 100 + i, 15));
    EXPECT_EQ(1, getSurfacePoints(0));
  };
  EXPECT_EQ(1, getSurfacePoints(0));
  EXPECT_EQ((Names{"SW", "SE", "new", "new", "new", "NW", "NW"}), handed.points);
}

// Within an inner hand-over records are released that the outer one has still to come to.
TEST_F(FlatCallbacks, PointsReplacedInAListWithinAList) {
  handed.onEach = [calls = 0]() mutable {
    if (++calls == 1) getSurfacePoints(0);
    if (calls == 2) {
      for (int i = 0; i < 8; ++i) EXPECT_EQ(1, updateSurfacePoint(0, 2, "new", 210, 110, 16));
    }
  };
  EXPECT_EQ(1, getSurfacePoints(0));
  EXPECT_EQ((Names{"SW", "SW", "SE", "NW", "SE", "NW"}), handed.points);
}

// Surface::MAXPOINTS is overwritten by every construction.
TEST_F(FlatCallbacks, EditsMeanwhileBuildNothing) {
  constexpr int kMark = -1;
  int builds = 0;
  handed.onEach = [&] {
    builds += Surface::MAXPOINTS == kMark ? 0 : 1;
    Surface::MAXPOINTS = kMark;
    EXPECT_EQ(1, addSurfacePoint(0, "more", 205, 105, 15.5));
  };
  Surface::MAXPOINTS = kMark;
  EXPECT_EQ(1, getSurfacePoints(0));
  EXPECT_EQ((Names{"SW", "SE", "NE", "NW"}), handed.points);
  EXPECT_EQ(1, builds) << "that of the surface's own points, before the first is handed out";
  EXPECT_EQ(kMark, Surface::MAXPOINTS) << "nothing has been built since the last edit";
  expectSound();
  EXPECT_NE(kMark, Surface::MAXPOINTS);
}

TEST_F(FlatCallbacks, TheSurfaceIsReleasedMeanwhile) {
  handed.onEach = [] { EXPECT_EQ(1, releaseDTMSurface(0)); };
  EXPECT_EQ(1, getSurfacePoints(0));
  EXPECT_EQ(Names{"SW"}, handed.points);

  handed = {};
  addSquare("Site", 15, 16);
  handed.onEach = [] { releaseDTMSurface(0); };
  EXPECT_EQ(1, previewDTMSurface(0, 99, 111, 199, 211));
  EXPECT_EQ(9u, handed.lines.size());
}

TEST_F(FlatCallbacks, AnotherSurfaceIsReleasedMeanwhile) {
  addSquare("Second", 1, 2);
  handed.onEach = [calls = 0]() mutable {
    if (++calls == 1) releaseDTMSurface(0);
  };
  EXPECT_EQ(1, getSurfacePoints(1));
  EXPECT_EQ(4u, handed.points.size());
}

TEST_F(FlatCallbacks, AnotherLibraryIsChosenMeanwhile) {
  handed.onEach = [] { newDTMSurfaceLib(); };
  EXPECT_EQ(1, getSurfacePoints(0));
  EXPECT_EQ(4u, handed.points.size());
  EXPECT_EQ(nullptr, getSurface(0));
}

TEST_F(FlatCallbacks, TheSurfaceIsReleasedWhileItsFileIsHandedOut) {
  fill("p.csv", "A,,101,201,15.1\nB,,102,202,15.2\n");
  handed.onEach = [] { releaseDTMSurface(0); };
  EXPECT_EQ(1, loadSurfacePointsFile(0, path("p.csv").c_str()));
  EXPECT_EQ((Names{"A", "B"}), handed.points);
  for (SurfacePoint* copy : handed.pointRecords) freeSurfacePoint(copy);
}

Names boundaryNow() {
  Names names;
  for (const RangePoint* vertex : detail::flatState().rangePoints) names.emplace_back(vertex->name);
  return names;
}

// As with points: a vertex made at the address of a deleted one is another.
TEST_F(FlatCallbacks, VerticesEditedMeanwhile) {
  fill("b.waa", "1\n1\nA,1,2,3\nB,4,5,6\nC,7,8,9\nD,1,8,9\n");
  const auto load = [&] {
    handed.vertices.clear();
    return loadRangePointFile(path("b.waa").c_str(), nullptr, nullptr);
  };
  handed.onEach = [] {
    EXPECT_EQ(1, deleteRangePoint(1));
    EXPECT_EQ(1, addRangePoint("new", 1, 2, 3));
  };
  EXPECT_EQ(1, load());
  EXPECT_EQ((Names{"A", "C", "D"}), handed.vertices) << "B is deleted before its turn, C and D in theirs";
  EXPECT_EQ((Names{"A", "new", "new", "new"}), boundaryNow());

  handed.onEach = [] {
    for (int i = 0; i < 8; ++i) EXPECT_EQ(1, updateRangePoint(2, "newer", 1, 2, 3));
  };
  EXPECT_EQ(1, load());
  EXPECT_EQ((Names{"A", "B", "D"}), handed.vertices);
  EXPECT_EQ((Names{"A", "B", "newer", "D"}), boundaryNow());
}

TEST_F(FlatCallbacks, BoundariesReadWithinTheReadingOfABoundary) {
  fill("b.waa", "1\n1\nA,1,2,3\nB,4,5,6\nC,7,8,9\n");
  fill("inner.waa", "1\n1\nX,1,2,3\nY,4,5,6\nZ,7,8,9\n");
  handed.onEach = [&] { loadRangePointFile(path("absent.waa").c_str(), nullptr, nullptr); };
  EXPECT_EQ(1, loadRangePointFile(path("b.waa").c_str(), nullptr, nullptr));
  EXPECT_EQ(Names{"A"}, handed.vertices);
  EXPECT_TRUE(boundaryNow().empty());

  handed.vertices.clear();
  handed.onEach = [&, calls = 0]() mutable {
    if (++calls != 1) return;
    EXPECT_EQ(1, loadRangePointFile(path("inner.waa").c_str(), nullptr, nullptr));
  };
  EXPECT_EQ(1, loadRangePointFile(path("b.waa").c_str(), nullptr, nullptr));
  EXPECT_EQ((Names{"A", "X", "Y", "Z"}), handed.vertices);
  EXPECT_EQ((Names{"X", "Y", "Z"}), boundaryNow());

  handed.vertices.clear();
  handed.onEach = [&, calls = 0]() mutable {
    if (++calls != 1) return;
    EXPECT_EQ(0, loadRangePointFile(path("inner.txt").c_str(), nullptr, nullptr));
  };
  EXPECT_EQ(1, loadRangePointFile(path("b.waa").c_str(), nullptr, nullptr));
  EXPECT_EQ((Names{"A", "B", "C"}), handed.vertices) << "another extension leaves the boundary as it was";
}

TEST_F(FlatCallbacks, SurfacesOfAFolderDeletedMeanwhile) {
  for (const char* name : {"a.ttin", "b.ttin"}) ASSERT_EQ(1, saveSurface(0, path(name).c_str()));
  handed.onEach = [] { releaseDTMSurface(0); };
  getSurfaceByPath(folder_.c_str(), ".ttin");
  EXPECT_EQ(2u, handed.surfaces.size());
  EXPECT_NE(nullptr, getSurface(0));
  EXPECT_EQ(nullptr, getSurface(1));
}

}  // namespace
