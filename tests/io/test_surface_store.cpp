// The three kinds of files that a surface is loaded from: which paths are taken for which kind, and what a file
// without anything in it leaves.
#include <stdexcept>

#include "io/ScratchFolder.h"
#include "io/SurfaceFiles.h"

namespace {

constexpr int kSurfaceFile = 0;
constexpr int kTriangleFile = 1;
constexpr int kLandXML = 2;

const std::string kTriangle = "0\n0\n1\n10\n0\n2\n0\n10\n3\n";
const std::string kWithoutExtent = "5\n5\n1\n5\n5\n1\n5\n5\n1\nnil";
const std::string kPnts =
    "<Pnts><P id=\"1\">0 0 1</P><P id=\"2\">0 10 2</P><P id=\"3\">10 0 3</P><P id=\"4\">0 0 9</P></Pnts>";

std::string landXML(const std::string& inDefinition) {
  return "<LandXML><Surfaces><Surface><Definition>" + inDefinition + "</Definition></Surface></Surfaces></LandXML>";
}

class SurfaceStore : public testing::Test {
 protected:
  // The contents of a file of the given kind that holds one triangle.
  static std::string oneTriangle(int type) {
    if (type == kTriangleFile) return kTriangle + "nil";
    if (type == kLandXML) return landXML(kPnts + "<Faces><F>1 2 3</F></Faces>");
    OwnedSurface surface({{0, 0, 1}, {10, 0, 2}, {0, 10, 3}});
    const Block file = saved(surface);
    return std::string(file.begin(), file.end());
  }

  static bool loads(const std::string& path, int type) {
    OwnedSurface surface;
    const bool loaded = DTMFileOperation().loadSurface(path.c_str(), type, &surface);
    EXPECT_EQ(loaded ? 3 : 0, surface.getPointsNumber()) << path;
    EXPECT_EQ(loaded ? 1 : 0, surface.getTrianglesNumber()) << path;
    return loaded;
  }

  // Whether a surface with points of its own is loaded from a file of these contents, and then still has the points.
  static bool loadsWithoutPoints(const std::string& path, int type) {
    OwnedSurface surface(risingSquare());
    const std::vector<SurfacePoint*> before = surface.getSurfacePoints();
    const bool loaded = DTMFileOperation().loadSurface(path.c_str(), type, &surface);
    EXPECT_EQ(before, surface.getSurfacePoints()) << path;
    return loaded;
  }

  ScratchFolder folder_;
};

TEST_F(SurfaceStore, TheExtensionMustFitTheKindInAnyCase) {
  const struct {
    int type;
    std::vector<const char*> fitting;
    std::vector<const char*> others;
  } rows[] = {
      {kSurfaceFile, {"a.ttin", "A.TTIN", "a.TtIn", ".ttin"}, {"a.ttin ", "a.tin", "ttin", "a.ttin.bak", "a.sjw"}},
      {kTriangleFile, {"a.sjw", "A.SJW", "a.sJw", ".sjw"}, {"a.sjw ", "a.sj", "sjw", "a.sjw.bak", "a.xml"}},
      {kLandXML, {"a.xml", "A.XML", "a.xMl", ".xml"}, {"a.xml ", "a.xm", "xml", "a.xml.bak", "a.ttin"}},
  };
  for (const auto& row : rows) {
    for (const char* name : row.fitting)
      EXPECT_TRUE(loads(folder_.write(name, oneTriangle(row.type)), row.type)) << name;
    for (const char* name : row.others)
      EXPECT_FALSE(loads(folder_.write(name, oneTriangle(row.type)), row.type)) << name;
  }
}

TEST_F(SurfaceStore, AFileOfAnotherKindHoldsNothing) {
  const std::string path = folder_.write("a.ttin.sjw.xml", oneTriangle(kLandXML));
  for (const int type : {kSurfaceFile, kTriangleFile, 3, -1}) EXPECT_FALSE(loads(path, type)) << type;
  EXPECT_TRUE(loads(path, kLandXML));
  EXPECT_FALSE(loads(folder_.write("b.sjw", oneTriangle(kLandXML).substr(0, 8)), kTriangleFile));
  EXPECT_FALSE(loads(folder_.write("c.xml", oneTriangle(kTriangleFile)), kLandXML));
}

TEST_F(SurfaceStore, OnlyThePathOfASurfaceFileIsTrimmed) {
  EXPECT_TRUE(loads("  " + folder_.write("a.ttin", oneTriangle(kSurfaceFile)), kSurfaceFile));
  EXPECT_FALSE(loads("  " + folder_.write("a.sjw", oneTriangle(kTriangleFile)), kTriangleFile));
  EXPECT_FALSE(loads("  " + folder_.write("a.xml", oneTriangle(kLandXML)), kLandXML));
}

TEST_F(SurfaceStore, ListedFilesOfEveryKindAreLoaded) {
  const struct {
    int type;
    const char* extension;
  } rows[] = {{kSurfaceFile, ".ttin"}, {kTriangleFile, ".sjw"}, {kLandXML, ".xml"}};
  for (const auto& [type, extension] : rows) {
    folder_.write(std::string("a") + extension, oneTriangle(type));
    const auto listed = DTMFileOperation().getSurfaceByPath(folder_.pathOf("").c_str(), extension);
    ASSERT_EQ(1u, listed.size()) << extension;
    EXPECT_EQ(folder_.pathOf("") + "\\a" + extension, listed[0]);
    EXPECT_TRUE(loads(listed[0], type)) << extension;
  }
}

// A path with a backslash, as hosts join them, leads to files of points and boundaries too.
TEST_F(SurfaceStore, ABackslashSeparatesInEveryPath) {
  const std::string folder = folder_.pathOf("").substr(0, folder_.pathOf("").size() - 1) + "\\";
  folder_.write("p.csv", "P1,,0,0,1\nP2,,10,0,2\nP3,,0,10,3\n");
  folder_.write("r.waa", "1\n0\nB,1,2\n");
  OwnedSurface surface;
  std::vector<SurfacePoint*> points;
  surface.loadSurfacePointsFile((folder + "p.csv").c_str(), points);
  EXPECT_EQ(3u, points.size());

  DTMFileOperation files;
  std::vector<RangePoint*> range;
  bool first = false;
  bool second = true;
  EXPECT_TRUE(files.loadRangePointFile((folder + "r.waa").c_str(), &first, &second, range));
  EXPECT_EQ(1u, range.size());
  EXPECT_TRUE(files.saveRangePointFile((folder + "r.waa").c_str(), second, first, range));
  EXPECT_EQ("0\n1\nB,1,2,0\n", folder_.read("r.waa"));
  for (const RangePoint* vertex : range) delete vertex;

  folder_.write("t.sjw", "old");
  EXPECT_TRUE(surface.exportFileSJW((folder + "t.sjw").c_str()));
  EXPECT_EQ(surface.getCEType()->getCASSsjw(), folder_.read("t.sjw"));
}

TEST_F(SurfaceStore, AFileWithoutTrianglesGivesNoSurface) {
  for (const char* contents : {"nil", "nil\n", "", "\n", "1\n2\n3\nnil"}) {
    const std::string path = folder_.write("a.sjw", contents);
    EXPECT_FALSE(loads(path, kTriangleFile)) << contents;
    EXPECT_FALSE(loadsWithoutPoints(path, kTriangleFile)) << contents;
  }
  for (const std::string& contents : {std::string("<r/>"), landXML(kPnts + "<Faces/>"), std::string("nil")}) {
    const std::string path = folder_.write("a.xml", contents);
    EXPECT_FALSE(loads(path, kLandXML)) << contents;
    EXPECT_FALSE(loadsWithoutPoints(path, kLandXML)) << contents;
  }
}

// Triangles that have no extent make a TIN without points: a surface that had none has none, and that is a failure.
TEST_F(SurfaceStore, TrianglesWithoutExtentGiveNoPoints) {
  const std::string sjw = folder_.write("a.sjw", kWithoutExtent);
  const std::string xml = folder_.write("a.xml", landXML(kPnts + "<Faces><F>1 4 1</F></Faces>"));
  EXPECT_FALSE(loads(sjw, kTriangleFile));
  EXPECT_FALSE(loads(xml, kLandXML));
  EXPECT_TRUE(loadsWithoutPoints(sjw, kTriangleFile)) << "the surface holds points, its own";
  EXPECT_TRUE(loadsWithoutPoints(xml, kLandXML));
}

TEST_F(SurfaceStore, ADefinitionWithoutPointsOrFacesIsOutOfRange) {
  OwnedSurface surface(risingSquare());
  const Block before = surface.toBytes();
  DTMFileOperation files;
  for (const std::string& inDefinition : {std::string(), kPnts, std::string("<Faces><F>1 2 3</F></Faces>")}) {
    const std::string path = folder_.write("a.xml", landXML(inDefinition));
    EXPECT_THROW(files.loadSurface(path.c_str(), kLandXML, &surface), std::out_of_range) << inDefinition;
  }
  EXPECT_EQ(before, surface.toBytes());
}

// Whoever reads names takes them for UTF-8; whatever they are, nothing is lost where that is the system's code page.
TEST_F(SurfaceStore, NamesOfAnyBytesComeBack) {
  std::mt19937 random(21);
  const auto anyName = [&random] {
    std::string name(1 + random() % 23, '\0');
    for (char& c : name) c = static_cast<char>(1 + random() % 255);
    return name;
  };
  for (int i = 0; i < 50; ++i) {
    OwnedSurface surface(scattered(6));
    surface.setSurfaceName(anyName().c_str());
    for (SurfacePoint* point : surface.getSurfacePoints()) point->setSurfacePointName(anyName().c_str());
    const std::string path = folder_.pathOf("a.ttin");
    DTMFileOperation files;
    ASSERT_TRUE(files.saveSurfaces(path.c_str(), &surface));
    const std::string first = folder_.read("a.ttin");
    OwnedSurface read;
    ASSERT_TRUE(files.loadSurface(path.c_str(), kSurfaceFile, &read));
    ASSERT_STREQ(surface.getSurfaceName(), read.getSurfaceName());
    ASSERT_EQ(namesOf(surface), namesOf(read));
    ASSERT_TRUE(files.saveSurfaces(path.c_str(), &read));
    ASSERT_EQ(first, folder_.read("a.ttin"));
  }
}

}  // namespace
