// Flat functions on libraries, surfaces and points.
#include <climits>
#include <limits>

#include "api/FlatTest.h"

namespace {

constexpr double kInf = std::numeric_limits<double>::infinity();

using FlatSurfaces = FlatTest;

// What an index that names nothing gets, and what everything gets while there is no library.
void expectNothing(unsigned int index) {
  SCOPED_TRACE(index);
  double z = 77.0;
  EXPECT_EQ(0, deleteDTMSurface(index));
  EXPECT_EQ(0, releaseDTMSurface(index));
  EXPECT_EQ(nullptr, getSurface(index));
  EXPECT_EQ(0, saveSurface(index, "absent/x.ttin"));
  EXPECT_EQ(0, exportFileSJW(index, "absent/x.sjw"));
  EXPECT_EQ(0, previewDTMSurface(index, -kInf, kInf, -kInf, kInf));
  EXPECT_EQ(0, addSurfacePoint(index, "P", 1, 2, 3));
  EXPECT_EQ(0, updateSurfacePoint(index, 0, "P", 1, 2, 3));
  EXPECT_EQ(0, deleteSurfacePoint(index, 0));
  EXPECT_EQ(0, getSurfacePoints(index));
  EXPECT_EQ(0, loadSurfacePointsFile(index, "absent/x.csv"));
  EXPECT_EQ(0, checkSurfacePoint(index, 205, 105, &z));
  EXPECT_EQ(77.0, z);
}

TEST_F(FlatSurfaces, WithoutALibraryEverythingFails) {
  registerAll();
  fill("p.csv", "A,,1,2,3\n");
  expectNothing(0);
  EXPECT_EQ(0, setCurrentDTMSurfaceLib(0));
  EXPECT_EQ(nullptr, addDTMSurface("S"));
  EXPECT_EQ(nullptr, loadDTMSurface(path("x.ttin").c_str(), 0));
  EXPECT_EQ(0, loadSurfacePointsFile(0, path("p.csv").c_str()));
  getSurfaceByPath(path("").c_str(), ".ttin");
  EXPECT_TRUE(handed.points.empty() && handed.lines.empty() && handed.surfaces.empty() && handed.vertices.empty());
}

TEST_F(FlatSurfaces, ABadIndexChangesNothing) {
  newDTMSurfaceLib();
  expectNothing(0);
  addSquare("S", 5, 5);
  for (const unsigned int index : {1u, static_cast<unsigned int>(INT_MIN), UINT_MAX}) expectNothing(index);
  registerAll();
  EXPECT_EQ(1, getSurfacePoints(0));
  EXPECT_EQ(4u, handed.points.size());
}

TEST_F(FlatSurfaces, TheNewestLibraryIsCurrentUntilAnotherIsChosen) {
  DTMSurfaceLib* first = newDTMSurfaceLib();
  EXPECT_EQ(0, setCurrentDTMSurfaceLib(1));
  DTMSurface* inFirst = addDTMSurface("in the first");
  DTMSurfaceLib* second = newDTMSurfaceLib();
  EXPECT_NE(first, second);
  EXPECT_EQ(nullptr, getSurface(0));
  EXPECT_EQ(1, setCurrentDTMSurfaceLib(0));
  EXPECT_EQ(inFirst, getSurface(0));
  EXPECT_EQ(first->getSurface(0), inFirst);
  for (const unsigned int bad : {2u, UINT_MAX}) EXPECT_EQ(0, setCurrentDTMSurfaceLib(bad));
  EXPECT_EQ(inFirst, getSurface(0));
}

TEST_F(FlatSurfaces, NamesAreCut) {
  newDTMSurfaceLib();
  EXPECT_STREQ("12345678901234567890123", addDTMSurface("123456789012345678901234567890")->getSurfaceName());
  EXPECT_STREQ("", addDTMSurface(nullptr)->getSurfaceName());
}

TEST_F(FlatSurfaces, PointsCarryTheSurfacesName) {
  newDTMSurfaceLib();
  addDTMSurface("Site");
  registerAll();
  EXPECT_EQ(1, addSurfacePoint(0, "a point with a name of more than 23 bytes", 200, 100, 15));
  EXPECT_EQ(1, addSurfacePoint(0, nullptr, 201, 101, 16));
  ASSERT_EQ(1, getSurfacePoints(0));
  EXPECT_EQ((std::vector<std::string>{"a point with a name of ", ""}), handed.points);
  const SurfacePoint& point = *handed.pointRecords[0];
  EXPECT_STREQ("Site", point.getSurfaceName());
  EXPECT_EQ(200.0, point.getN());
  EXPECT_EQ(100.0, point.getE());
  EXPECT_EQ(15.0, point.getZ());
  EXPECT_EQ(getSurface(0)->getSurfacePoints(), handed.pointRecords);
}

TEST_F(FlatSurfaces, PointsAreReplacedAndRemoved) {
  newDTMSurfaceLib();
  addSquare("S", 5, 5);
  EXPECT_EQ(1, updateSurfacePoint(0, 3, "higher", 210, 100, 9));
  EXPECT_EQ(0, updateSurfacePoint(0, 4, "P", 1, 2, 3));
  EXPECT_EQ(0, updateSurfacePoint(0, UINT_MAX, "P", 1, 2, 3));
  EXPECT_EQ(9.0, getSurface(0)->getMaxElev());
  EXPECT_EQ(1, deleteSurfacePoint(0, 0));
  EXPECT_EQ(0, deleteSurfacePoint(0, 3));
  EXPECT_EQ(0, deleteSurfacePoint(0, UINT_MAX));
  registerAll();
  getSurfacePoints(0);
  EXPECT_EQ((std::vector<std::string>{"SE", "NE", "higher"}), handed.points);
}

TEST_F(FlatSurfaces, AnEmptySurfaceHandsOutNothing) {
  newDTMSurfaceLib();
  addDTMSurface("empty");
  registerAll();
  EXPECT_EQ(0, getSurfacePoints(0));
  EXPECT_EQ(0, previewDTMSurface(0, -kInf, kInf, -kInf, kInf));
  EXPECT_TRUE(handed.points.empty() && handed.lines.empty());
}

TEST_F(FlatSurfaces, Heights) {
  newDTMSurfaceLib();
  addSquare("S", 15, 16);
  double z = 77.0;
  EXPECT_EQ(1, checkSurfacePoint(0, 205, 105, &z));
  EXPECT_EQ(15.5, z);
  EXPECT_EQ(0, checkSurfacePoint(0, 205, 111, &z));
  EXPECT_EQ(15.5, z);
  EXPECT_EQ(1, checkSurfacePoint(0, 205, 105, nullptr));
}

TEST_F(FlatSurfaces, PreviewHandsOutTheLinesInOrder) {
  newDTMSurfaceLib();
  addSquare("S", 15, 16);
  std::vector<DrawLine*> lines;
  getSurface(0)->drawSurface(101, 109, 190, 205, lines);
  registerAll();
  EXPECT_EQ(1, previewDTMSurface(0, 101, 109, 190, 205));
  ASSERT_EQ(lines.size(), handed.lines.size());
  for (std::size_t i = 0; i < lines.size(); ++i) {
    EXPECT_EQ(lines[i]->startX, handed.lines[i].startX);
    EXPECT_EQ(lines[i]->startY, handed.lines[i].startY);
    EXPECT_EQ(lines[i]->endX, handed.lines[i].endX);
    EXPECT_EQ(lines[i]->endY, handed.lines[i].endY);
    EXPECT_EQ(lines[i]->flag, handed.lines[i].flag);
    delete lines[i];
  }
  EXPECT_EQ(1, previewDTMSurface(0, 500, 600, 500, 600));
  EXPECT_EQ(lines.size(), handed.lines.size());
}

// The host that never registers a callback gets the same results; that the lines are freed is the leak checker's to
// say.
TEST_F(FlatSurfaces, WithoutCallbacksTheResultsAreTheSame) {
  newDTMSurfaceLib();
  addSquare("S", 15, 16);
  fill("p.csv", "A,,120,205,40\nshort,,1,2\n");
  for (const bool registered : {false, true}) {
    if (registered) registerAll();
    EXPECT_EQ(1, previewDTMSurface(0, 99, 111, 199, 211));
    EXPECT_EQ(1, getSurfacePoints(0));
    EXPECT_EQ(1, loadSurfacePointsFile(0, path("p.csv").c_str()));
    EXPECT_EQ(registered ? 6 : 5, getSurface(0)->getPointsNumber());
  }
  EXPECT_EQ(1, setCallBack(nullptr, nullptr, nullptr, nullptr));
  const std::size_t before = handed.points.size();
  EXPECT_EQ(1, getSurfacePoints(0));
  EXPECT_EQ(before, handed.points.size());
  for (SurfacePoint* point : handed.pointRecords) {
    if (std::string(point->getSurfacePointName()) != "A") continue;
    const std::vector<SurfacePoint*>& own = getSurface(0)->getSurfacePoints();
    if (std::find(own.begin(), own.end(), point) == own.end()) freeSurfacePoint(point);
  }
}

TEST_F(FlatSurfaces, PointsOfAFileAreTheReceiversCopies) {
  newDTMSurfaceLib();
  addDTMSurface("Site");
  fill("p.csv", "A,,100,200,40\nB,,110,200,41\nC,,110,210,42\n");
  registerAll();
  ASSERT_EQ(1, loadSurfacePointsFile(0, path("p.csv").c_str()));
  EXPECT_EQ((std::vector<std::string>{"A", "B", "C"}), handed.points);
  EXPECT_EQ(42.0, getSurface(0)->getMaxElev());
  const std::vector<SurfacePoint*> copies = handed.pointRecords;
  for (std::size_t i = 0; i < copies.size(); ++i) {
    const SurfacePoint* own = getSurface(0)->getSurfacePoints()[i];
    EXPECT_NE(own, copies[i]);
    EXPECT_TRUE(own->isSame(copies[i]));
    EXPECT_STREQ("Site", copies[i]->getSurfaceName());
  }
  EXPECT_EQ(1, releaseDTMSurface(0));
  EXPECT_EQ(41.0, copies[1]->getZ());
  for (SurfacePoint* copy : copies) freeSurfacePoint(copy);
  freeSurfacePoint(nullptr);
}

TEST_F(FlatSurfaces, PointFilesThatGiveNothing) {
  newDTMSurfaceLib();
  addDTMSurface("S");
  fill("p.txt", "A,,100,200,40\n");
  fill("empty.csv", "\nfour,fields,1,2\n");
  registerAll();
  for (const char* name : {"p.txt", "empty.csv", "absent.csv"}) {
    EXPECT_EQ(0, loadSurfacePointsFile(0, path(name).c_str())) << name;
  }
  EXPECT_EQ(0, loadSurfacePointsFile(0, nullptr));
  EXPECT_TRUE(handed.points.empty());
}

TEST_F(FlatSurfaces, ASurfaceGoesThroughItsFile) {
  newDTMSurfaceLib();
  addSquare("Site", 15, 16);
  ASSERT_EQ(1, saveSurface(0, path("s.ttin").c_str()));
  DTMSurface* loaded = loadDTMSurface(path("s.ttin").c_str(), 0);
  ASSERT_NE(nullptr, loaded);
  EXPECT_EQ(loaded, getSurface(1));
  double z = 0.0;
  EXPECT_EQ(1, checkSurfacePoint(1, 205, 105, &z));
  EXPECT_EQ(15.5, z);
  for (const int kind : {-1, 1, 2, 3}) EXPECT_EQ(nullptr, loadDTMSurface(path("s.ttin").c_str(), kind));
  EXPECT_EQ(nullptr, loadDTMSurface(nullptr, 0));
  EXPECT_EQ(nullptr, getSurface(2));
}

TEST_F(FlatSurfaces, TrianglesGoThroughASjwFile) {
  newDTMSurfaceLib();
  addSquare("Site", 15, 16);
  ASSERT_EQ(1, exportFileSJW(0, path("s.sjw").c_str()));
  ASSERT_NE(nullptr, loadDTMSurface(path("s.sjw").c_str(), 1));
  double z = 0.0;
  EXPECT_EQ(1, checkSurfacePoint(1, 205, 105, &z));
  EXPECT_NEAR(15.5, z, 1e-6);
}

TEST_F(FlatSurfaces, AFolderIsLoadedByType) {
  newDTMSurfaceLib();
  addSquare("Site", 15, 16);
  for (const char* name : {"a.ttin", "b.TTIN"}) ASSERT_EQ(1, saveSurface(0, path(name).c_str()));
  ASSERT_EQ(1, exportFileSJW(0, path("c.sjw").c_str()));
  fill("damaged.ttin", "DTM");
  registerAll();

  getSurfaceByPath(folder_.c_str(), ".TTIN");
  EXPECT_EQ(2u, handed.surfaces.size());
  EXPECT_EQ(handed.surfaces[1], getSurface(2));
  getSurfaceByPath(folder_.c_str(), ".Sjw");
  EXPECT_EQ(3u, handed.surfaces.size());
  for (const char* type : {".xml", ".txt", "", "ttin"}) getSurfaceByPath(folder_.c_str(), type);
  getSurfaceByPath(path("absent").c_str(), ".ttin");
  getSurfaceByPath(nullptr, ".ttin");
  getSurfaceByPath(folder_.c_str(), nullptr);
  EXPECT_EQ(3u, handed.surfaces.size());

  setCallBack(nullptr, nullptr, nullptr, nullptr);
  getSurfaceByPath(folder_.c_str(), ".ttin");
  EXPECT_NE(nullptr, getSurface(5));
  EXPECT_EQ(nullptr, getSurface(6));
}

// One bad file among good ones, of the kind whose reader reports by an exception.
TEST_F(FlatSurfaces, ALandXmlFileThatDoesNotFitIsPassedOver) {
  newDTMSurfaceLib();
  const std::string points =
      "<LandXML><Surfaces><Surface name=\"S\"><Definition><Pnts><P id=\"1\">0 0 1</P><P id=\"2\">0 10 2</P>"
      "<P id=\"3\">10 0 3</P></Pnts>";
  const std::string tail = "</Definition></Surface></Surfaces></LandXML>";
  fill("a.xml", points + tail);  // points, but no faces
  fill("b.xml", points + "<Faces><F>1 2 3</F></Faces>" + tail);
  registerAll();
  getSurfaceByPath(folder_.c_str(), ".xml");
  EXPECT_EQ(1u, handed.surfaces.size());
  EXPECT_EQ(nullptr, loadDTMSurface(path("a.xml").c_str(), 2));
  EXPECT_EQ(nullptr, getFillCut(path("a.xml").c_str(), 1.0, false));
  EXPECT_EQ(nullptr, getSurface(1));
}

TEST_F(FlatSurfaces, DeletingAFile) {
  EXPECT_EQ(1, deleteSurface(path("absent.ttin").c_str()));
  fill("s.ttin", "x");
  EXPECT_EQ(1, deleteSurface(path("s.ttin").c_str()));
  EXPECT_FALSE(std::filesystem::exists(path("s.ttin")));
  std::filesystem::create_directories(folder_ / "full" / "inside");
  EXPECT_EQ(0, deleteSurface(path("full").c_str()));
  deleteSurface(nullptr);
}

TEST_F(FlatSurfaces, DeletingASurfaceLeavesItsPoints) {
  newDTMSurfaceLib();
  addDTMSurface("S");
  addSurfacePoint(0, "P", 1, 2, 3);
  SurfacePoint* point = getSurface(0)->getSurfacePoints()[0];
  EXPECT_EQ(1, deleteDTMSurface(0));
  EXPECT_EQ(3.0, point->getZ());
  freeSurfacePoint(point);
}

TEST_F(FlatSurfaces, TheVersionIsThreeNumbers) {
  int numbers[3] = {-1, -1, -1};
  char dots[2] = {};
  std::istringstream(libraryVersion()) >> numbers[0] >> dots[0] >> numbers[1] >> dots[1] >> numbers[2];
  EXPECT_TRUE(dots[0] == '.' && dots[1] == '.' && numbers[0] >= 0 && numbers[1] >= 0 && numbers[2] >= 0);
}

TEST_F(FlatSurfaces, ASurveyedPositionKeepsItsHeightThroughAFile) {
  newDTMSurfaceLib();
  addDTMSurface("s");
  const double rows[][3] = {{0, 2.1, 1}, {0, 7.7, 2}, {9, 7.7, 3}, {9, 2.1, 4}};
  for (const auto& row : rows) addSurfacePoint(0, "p", row[0], row[1], row[2]);
  ASSERT_EQ(1, saveSurface(0, path("s.ttin").c_str()));
  ASSERT_NE(nullptr, loadDTMSurface(path("s.ttin").c_str(), 0));
  for (const unsigned surface : {0u, 1u}) {
    for (const auto& row : rows) {
      double z = 0;
      EXPECT_EQ(1, checkSurfacePoint(surface, row[0], row[1], &z)) << surface << " " << row[1];
      EXPECT_EQ(row[2], z) << surface;
    }
  }
}

}  // namespace
