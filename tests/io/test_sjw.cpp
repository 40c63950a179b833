// ".sjw" triangle files: the text of a TIN, the TIN of a text, and the surface that a file makes.
#include <algorithm>
#include <cmath>
#include <limits>
#include <locale>
#include <random>
#include <sstream>
#include <utility>

#include <OrvikDTMAlgorithm/report/U.h>
#include <OrvikDTMAlgorithm/surface/SurfacePoint.h>
#include <OrvikDTMAlgorithm/tin/ConvexList.h>
#include <OrvikDTMAlgorithm/tin/Surface.h>
#include <gtest/gtest.h>

#include "io/ScratchFolder.h"
#include "io/Triangles.h"
#include "surface/Surfaces.h"

namespace {

using triangles::Corners;

constexpr double kInf = std::numeric_limits<double>::infinity();

const std::string kOneTriangle = "0\n0\n1\n10\n0\n2\n0\n10\n3\n";
const std::vector<Corners> kOneTriangleRead = {{{{0, 0, 1}, {0, 10, 3}, {10, 0, 2}}}};

// ---- an independent reader and writer

std::string slowText(const std::vector<Corners>& list) {
  std::ostringstream out;
  out.imbue(std::locale::classic());
  out << std::fixed;
  out.precision(6);
  for (const Corners& corners : list) {
    for (const auto& corner : corners) {
      for (const double v : corner) out << v << '\n';
    }
  }
  return out.str() + "nil";
}

std::vector<Corners> slowRead(const std::string& text) {
  std::istringstream in(text);
  std::vector<Corners> list;
  std::string line;
  for (int count = 0; std::getline(in, line) && !line.empty() && line != "nil"; ++count) {
    if (count % 9 == 0) list.emplace_back();
    list.back()[static_cast<std::size_t>(count % 9 / 3)][static_cast<std::size_t>(count % 3)] =
        std::strtod(line.c_str(), nullptr);
  }
  for (Corners& corners : list) corners = triangles::sorted(corners);
  std::sort(list.begin(), list.end());
  return list;
}

// ---- networks by hand

struct Ends {
  int start;
  int end;
};

// A TIN of one triangle over the given edges, which name points from 0.
class OneTriangle {
 public:
  OneTriangle(const std::vector<TPoint>& points, const std::vector<Ends>& ends, std::array<int, 3> numbers)
      : points_(points), tin_(new ConvexList, new EList, new TList) {
    for (const Ends& e : ends) {
      tin_.getEList()->add(tin_.getEList(), new TEdge(&points_[static_cast<std::size_t>(e.start)],
                                                      &points_[static_cast<std::size_t>(e.end)]));
    }
    tin_.getTList()->add(tin_.getTList(), new Triangle(numbers.data()));
  }
  std::string text() const { return tin_.getCASSsjw(); }

 private:
  std::vector<TPoint> points_;
  CEType tin_;
};

std::vector<TPoint> plainPoints() { return {{0, 0, 1}, {10, 0, 2}, {0, 10, 3}}; }

std::string cornersText(const std::vector<TPoint>& corners) {
  return slowText(
      {{triangles::cornerOf(corners[0]), triangles::cornerOf(corners[1]), triangles::cornerOf(corners[2])}});
}

TEST(SJWText, NoTrianglesAreTheEndWordAlone) {
  EXPECT_EQ("nil", CEType(nullptr, nullptr, nullptr).getCASSsjw());
  EXPECT_EQ("nil", CEType(new ConvexList, new EList, new TList).getCASSsjw());
}

TEST(SJWText, ATriangleByteForByte) {
  EXPECT_EQ(
      "0.000000\n0.000000\n1.000000\n"
      "10.000000\n0.000000\n2.000000\n"
      "0.000000\n10.000000\n3.000000\n"
      "nil",
      OneTriangle(plainPoints(), {{0, 1}, {1, 2}, {2, 0}}, {1, 2, 3}).text());
}

TEST(SJWText, TheThirdCornerIsTheEndOfTheSecondEdgeThatIsNeitherOther) {
  const auto points = plainPoints();
  const std::string expected = cornersText({points[0], points[1], points[2]});
  for (const Ends second : {Ends{0, 2}, Ends{2, 0}, Ends{1, 2}, Ends{2, 1}}) {
    EXPECT_EQ(expected, OneTriangle(points, {{0, 1}, second, {2, 0}}, {1, 2, 3}).text())
        << second.start << " " << second.end;
  }
}

TEST(SJWText, CornersAreComparedInPlan) {
  const std::vector<TPoint> points = {{0, 0, 1}, {10, 0, 2}, {0, 10, 3}, {0, 0, 99}};
  EXPECT_EQ(cornersText({points[0], points[1], points[2]}),
            OneTriangle(points, {{0, 1}, {3, 2}, {2, 1}}, {1, 2, 3}).text());
}

TEST(SJWText, ASecondEdgeOverTheFirst) {
  const auto points = plainPoints();
  EXPECT_EQ(cornersText({points[0], points[1], points[1]}),
            OneTriangle(points, {{0, 1}, {1, 0}, {2, 0}}, {1, 2, 3}).text());
  EXPECT_EQ(cornersText({points[0], points[1], points[1]}),
            OneTriangle(points, {{0, 1}, {0, 1}, {2, 0}}, {1, 2, 3}).text());
}

TEST(SJWText, EdgesThatDoNotExist) {
  const std::vector<Ends> edges = {{0, 1}, {1, 2}, {2, 0}};
  for (const int number : {0, -1, 4, std::numeric_limits<int>::max(), std::numeric_limits<int>::min()}) {
    EXPECT_EQ("nil", OneTriangle(plainPoints(), edges, {number, 2, 3}).text()) << number;
    EXPECT_EQ("nil", OneTriangle(plainPoints(), edges, {1, number, 3}).text()) << number;
    EXPECT_NE("nil", OneTriangle(plainPoints(), edges, {1, 2, number}).text()) << "the third is not used: " << number;
  }
}

TEST(SJWText, NumbersThatAreNone) {
  const std::vector<TPoint> points = {{std::nan(""), kInf, -kInf}, {-0.0, 1e300, -1e-9}, {1, 2, 3}};
  const std::string expected = "NaN\n\xA1\xDE\n-\xA1\xDE\n0.000000\n";
  EXPECT_EQ(expected, OneTriangle(points, {{0, 1}, {1, 2}, {2, 0}}, {1, 2, 3}).text().substr(0, expected.size()));
}

// Corners that come again and again, near and far apart, among them some whose texts are long.
TEST(SJWText, CornersThatComeAgain) {
  std::mt19937 random(61);
  std::vector<TPoint> points;
  for (int i = 0; i < 6000; ++i) {
    constexpr double kHeights[] = {0.0, -0.0, 1e300, -1e-9, 38512345.678, -kInf};
    points.emplace_back(i, 0.001 * static_cast<double>(random() % 1'000'000), kHeights[random() % std::size(kHeights)]);
  }
  CEType tin(new ConvexList, new EList, new TList);
  constexpr int kTriangles = 20'000;
  tin.getEList()->setMaxlen(2 * kTriangles);
  tin.getTList()->setMaxlen(kTriangles);
  std::string expected;
  for (int tri = 0; tri < kTriangles; ++tri) {
    const std::size_t within = tri % 2 == 0 ? 50 : points.size() - 2;
    const std::size_t a = random() % within;
    TPoint* corners[] = {&points[a], &points[a + 1], &points[a + 2]};
    std::shuffle(std::begin(corners), std::end(corners), random);
    tin.getEList()->add(tin.getEList(), new TEdge(corners[0], corners[1]));
    tin.getEList()->add(tin.getEList(), new TEdge(corners[1], corners[2]));
    const int numbers[] = {2 * tri + 1, 2 * tri + 2, 0};
    tin.getTList()->add(tin.getTList(), new Triangle(numbers));
    for (const TPoint* p : corners) {
      for (const double v : {p->getX(), p->getY(), p->getZ()}) expected += U::toString(v) + '\n';
    }
  }
  EXPECT_TRUE(expected + "nil" == tin.getCASSsjw());
}

class CommaDecimals {
 public:
  CommaDecimals() : before_(std::locale::global(std::locale(std::locale::classic(), new Comma))) {}
  ~CommaDecimals() { std::locale::global(before_); }
  CommaDecimals(const CommaDecimals&) = delete;
  CommaDecimals& operator=(const CommaDecimals&) = delete;

 private:
  struct Comma : std::numpunct<char> {
    char do_decimal_point() const override { return ','; }
    char do_thousands_sep() const override { return '.'; }
    std::string do_grouping() const override { return "\3"; }
  };
  std::locale before_;
};

// ---- reading

class SJWFile : public testing::Test {
 protected:
  std::unique_ptr<CEType> modelOf(const std::string& contents) const {
    return std::unique_ptr<CEType>(CEType::initCETypeFromSJW(folder_.write("t.sjw", contents).c_str()));
  }

  std::vector<Corners> trianglesOf(const std::string& contents) const {
    const std::unique_ptr<CEType> model = modelOf(contents);
    return model == nullptr ? std::vector<Corners>{} : triangles::of(*model);
  }

  ScratchFolder folder_;
};

TEST_F(SJWFile, WhereReadingEnds) {
  const std::string nine = kOneTriangle;
  const std::string withoutLastBreak = nine.substr(0, nine.size() - 1);
  const std::string second = "10\n0\n2\n10\n10\n4\n0\n10\n3\n";
  const std::string eight = nine.substr(0, nine.size() - 2);
  const std::string mark = "\xEF\xBB\xBF";
  const std::string moved = std::string("5").append(nine, 1);
  const auto one = kOneTriangleRead;
  const auto two = slowRead(nine + second);
  ASSERT_EQ(2u, two.size());
  const struct {
    std::string contents;
    std::vector<Corners> expected;
  } rows[] = {
      {"", {}},
      {"nil", {}},
      {"nil\n", {}},
      {"\n", {}},
      {nine, one},
      {withoutLastBreak, one},
      {nine + "nil", one},
      {nine + "nil\n", one},
      {nine + "1\n2\n3\nnil", one},
      {nine + "1\n2\n3\n", one},
      {nine + "1\n2\n3", one},
      {nine + "1\n2\n3\n4\n5\n6\n7\n8\n", one},
      {nine + "1\n2\n3\n4\n5\n6\n7\n8\nnil", one},
      {nine + second, two},
      {nine + second + "nil", two},
      {nine + "\n" + second + "nil", one},
      {"\n" + nine, {}},
      {"0\n0\n\n1\n10\n0\n2\n0\n10\n3\n", {}},
      {nine + "nil\n" + second, one},
      {nine + "10\n0\nnil\n10\n10\n4\n0\n10\n3\n", one},
      {eight + "nil\r", {}},
      {eight + "nil \r", slowRead(eight + "0\n")},
      {mark + moved, slowRead(moved)},
      {mark + nine + "nil", one},
      {mark + "nil\n" + nine, {}},
  };
  for (const auto& row : rows) EXPECT_EQ(row.expected, trianglesOf(row.contents)) << "'" << row.contents << "'";
}

TEST_F(SJWFile, CarriageReturnsBeforeLineFeeds) {
  std::string windows;
  for (const char c : kOneTriangle) windows += c == '\n' ? std::string("\r\n") : std::string(1, c);
  EXPECT_EQ(kOneTriangleRead, trianglesOf(windows));
  EXPECT_EQ(kOneTriangleRead, trianglesOf(windows + "nil\r\n1\r\n"));
  EXPECT_EQ(kOneTriangleRead, trianglesOf(windows + "\r\n" + windows));
  EXPECT_EQ(kOneTriangleRead, trianglesOf(windows.substr(0, windows.size() - 1)));
}

TEST_F(SJWFile, LinesAreReadAsNumbersWhateverTheyHold) {
  const std::vector<Corners> expected = {{{{0, 0, -1.5}, {0, 10, 3}, {10, 0, 2}}}};
  const std::string rows[] = {
      "nil \nx\n-1.5\n10\n\t0\n 2 m\n0\n1e1\n3,9\n",
      "nilly\n nil\n-15e-1\n+10\n-0\n2.\n.0\n0xA\n3\n",
      std::string(1, '\0') + "\nNIL\n-1.5\n10\n0\n2\n0\n10\n3",
  };
  for (const std::string& contents : rows) {
    const auto read = trianglesOf(contents);
    ASSERT_EQ(1u, read.size()) << contents;
    EXPECT_EQ(expected, read) << contents;
  }
}

TEST_F(SJWFile, NumbersReadAsTheCLibraryReads) {
  const std::string rows[] = {
      "12.345678",        "38512345.123457",      "-0.000001", "123456789012345678.9", "1e-5", "7 8",
      "99999999999999.9", "0.1234567890123456789"};
  for (const std::string& z : rows) {
    const auto read = trianglesOf("0\n0\n" + z + "\n10\n0\n2\n0\n10\n3\n");
    ASSERT_EQ(1u, read.size());
    EXPECT_EQ(std::strtod(z.c_str(), nullptr), read[0][0][2]) << z;
  }
}

TEST_F(SJWFile, FilesThatCannotBeRead) {
  EXPECT_EQ(nullptr, CEType::initCETypeFromSJW(nullptr));
  EXPECT_EQ(nullptr, CEType::initCETypeFromSJW(folder_.pathOf("none.sjw").c_str()));
  EXPECT_EQ(nullptr, CEType::initCETypeFromSJW(folder_.pathOf(".").c_str()));
}

TEST_F(SJWFile, TheCornersOfATriangleThatBreaksOffAreNoPoints) {
  for (const std::string rest : {"77\n78\n79\nnil", "77\n78\n79\n80\n81\n82\n83\n84\n", "77\n78\n79"}) {
    OwnedSurface surface;
    ASSERT_TRUE(surface.tryParseSJW(folder_.write("t.sjw", kOneTriangle + rest).c_str()));
    EXPECT_EQ(3u, surface.getCEType()->getOriginalList().size());
    EXPECT_EQ(3, surface.getPointsNumber());
    EXPECT_EQ(10.0, surface.getRangeMaxX());
    EXPECT_EQ(3.0, surface.getMaxElev());
  }
}

TEST_F(SJWFile, CornersMeetInPlan) {
  // The second triangle gives its two corners on the common edge other heights: the first triangle's count.
  const auto model = modelOf(kOneTriangle + "10\n0\n77\n10\n10\n4\n0\n10\n78\nnil");
  ASSERT_NE(nullptr, model);
  EXPECT_EQ(5, model->getEList()->getListLen());
  EXPECT_EQ(4, model->getCList()->getListLen());
  EXPECT_EQ(6u, model->getOriginalList().size()) << "its other two edges keep its own corners";
}

TEST_F(SJWFile, TrianglesWithoutExtent) {
  const std::string point = "5\n5\n1\n5\n5\n1\n5\n5\n1\n";
  const auto model = modelOf(point);
  ASSERT_NE(nullptr, model) << "the file has a triangle, although none can be kept";
  EXPECT_EQ(0, model->getTList()->getListLen());
  EXPECT_EQ(kOneTriangleRead, trianglesOf(point + kOneTriangle));
}

TEST_F(SJWFile, ClockwiseTrianglesAreTurned) {
  const auto model = modelOf("0\n0\n1\n0\n10\n3\n10\n0\n2\n");
  ASSERT_NE(nullptr, model);
  EXPECT_EQ(kOneTriangleRead, triangles::of(*model));
  EXPECT_EQ(1, model->locateTri(1, 1));
}

TEST_F(SJWFile, NegativeZeroAndNaNAreNotMerged) {
  const auto model = modelOf("0\n0\n0\n10\n0\n2\n0\n10\n3\n-0\n0\n-0\n-10\n0\n5\n0\n-10\n6\n");
  ASSERT_NE(nullptr, model);
  EXPECT_EQ(2, model->getTList()->getListLen());
  EXPECT_EQ(5u, model->getOriginalList().size());
  const auto nan = modelOf("nan\n0\n0\n10\n0\n2\n0\n10\n3\nnan\n0\n0\n10\n0\n2\n0\n10\n3\n");
  ASSERT_NE(nullptr, nan);
}

// ---- there and back

TEST_F(SJWFile, WrittenReadAndWrittenAgain) {
  for (const int count : {3, 4, 17, 200}) {
    OwnedSurface surface(scattered(count));
    const std::string text = surface.getCEType()->getCASSsjw();
    const std::vector<Corners> listed = slowRead(text);
    EXPECT_EQ(static_cast<std::size_t>(surface.getTrianglesNumber()), listed.size());
    const auto model = modelOf(text);
    ASSERT_NE(nullptr, model);
    EXPECT_EQ(listed, triangles::of(*model));
    EXPECT_EQ(surface.getCEType()->getEList()->getListLen(), model->getEList()->getListLen());
    EXPECT_EQ(surface.getCEType()->getCList()->getListLen(), model->getCList()->getListLen());
    const std::string again = model->getCASSsjw();
    EXPECT_EQ(listed, slowRead(again));
    EXPECT_EQ(again, modelOf(again)->getCASSsjw()) << "from the second time on the text is the same";
  }
}

// The same number in another form, as other programs might write it.
std::string inAnotherForm(const std::string& line, std::mt19937& random) {
  switch (random() % 4) {
    case 0:
      return line.substr(0, line.find_last_not_of('0') + 1);
    case 1:
      return " " + line;
    case 2:
      return line + " m\r";
    default:
      return line;
  }
}

TEST_F(SJWFile, CornersComeAgainInAnyOrderAndForm) {
  std::mt19937 random(62);
  OwnedSurface surface(scattered(4000));
  std::istringstream text(surface.getCEType()->getCASSsjw());
  std::vector<std::string> listed;
  for (std::string line, triangle; std::getline(text, line) && line != "nil";) {
    triangle += inAnotherForm(line, random) + '\n';
    if (std::count(triangle.begin(), triangle.end(), '\n') == 9) listed.push_back(std::exchange(triangle, {}));
  }
  ASSERT_EQ(static_cast<std::size_t>(surface.getTrianglesNumber()), listed.size());
  // Some triangles stay where they were, near their neighbours, others go anywhere.
  std::shuffle(listed.begin() + static_cast<std::ptrdiff_t>(listed.size() / 2), listed.end(), random);
  std::string contents;
  for (const std::string& triangle : listed) contents += triangle;
  contents.pop_back();  // the last line ends with the file
  EXPECT_TRUE(slowRead(contents) == trianglesOf(contents));
}

TEST_F(SJWFile, TheTextHoldsTheModelsTriangles) {
  OwnedSurface surface(scattered(60));
  EXPECT_EQ(slowRead(slowText(triangles::of(*surface.getCEType()))), slowRead(surface.getCEType()->getCASSsjw()));
}

TEST_F(SJWFile, TheProcessLocaleChangesNothing) {
  OwnedSurface surface(scattered(20));
  const std::string text = surface.getCEType()->getCASSsjw();
  const auto read = trianglesOf(text);
  const CommaDecimals guard;
  EXPECT_EQ(text, surface.getCEType()->getCASSsjw());
  EXPECT_EQ(read, trianglesOf(text));
}

TEST_F(SJWFile, AnyBytesAreRead) {
  std::mt19937 random(51);
  const std::string pieces[] = {"1",
                                "2.5",
                                "-3",
                                "\n",
                                "\n",
                                "\n",
                                "\n",
                                "nil",
                                "\r\n",
                                "\r",
                                "nan",
                                "inf",
                                " ",
                                "1e9",
                                "\xFF",
                                "1e400",
                                std::string(1, '\0')};
  for (int i = 0; i < 300; ++i) {
    std::string contents;
    for (std::size_t length = random() % 80; length > 0; --length) contents += pieces[random() % std::size(pieces)];
    const auto model = modelOf(contents);
    if (model == nullptr) continue;
    model->getMeasures();
    model->getHeight(1, 2);
    EXPECT_FALSE(model->getCASSsjw().empty());
  }
}

// ---- surfaces

TEST_F(SJWFile, ASurfaceIsWritten) {
  OwnedSurface surface(risingSquare());
  const std::string path = folder_.pathOf("out.sjw");
  EXPECT_TRUE(surface.exportFileSJW(path.c_str()));
  EXPECT_EQ(surface.getCEType()->getCASSsjw(), folder_.read("out.sjw"));
  EXPECT_EQ(2u, slowRead(folder_.read("out.sjw")).size());

  OwnedSurface triangle({{0, 0, 1}, {10, 0, 2}, {0, 10, 3}});
  EXPECT_TRUE(triangle.exportFileSJW(path.c_str())) << "over the existing file";
  EXPECT_EQ(triangle.getCEType()->getCASSsjw(), folder_.read("out.sjw"));
}

TEST_F(SJWFile, ASurfaceThatIsNotWritten) {
  OwnedSurface empty;
  EXPECT_FALSE(empty.exportFileSJW(folder_.pathOf("empty.sjw").c_str()));
  EXPECT_FALSE(std::filesystem::exists(folder_.pathOf("empty.sjw")));
  OwnedSurface surface(risingSquare());
  EXPECT_FALSE(surface.exportFileSJW(folder_.pathOf("none/out.sjw").c_str()));
  EXPECT_FALSE(surface.exportFileSJW(nullptr));
}

TEST_F(SJWFile, ASurfaceIsRead) {
  const std::string square = kOneTriangle + "10\n0\n2\n10\n10\n4\n0\n10\n3\nnil";
  OwnedSurface surface(scattered(5));
  const std::vector<SurfacePoint*> before = surface.getSurfacePoints();
  ASSERT_TRUE(surface.tryParseSJW(folder_.write("site.north.sjw", square).c_str()));
  EXPECT_STREQ("site.north", surface.getSurfaceName());
  EXPECT_EQ(2, surface.getTrianglesNumber());
  EXPECT_DOUBLE_EQ(100.0, surface.getTwoDArea());
  EXPECT_DOUBLE_EQ(surface.getCEType()->getArea3D(), surface.getThreeDArea());
  EXPECT_EQ(1.0, surface.getMinElev());
  EXPECT_EQ(4.0, surface.getMaxElev());
  EXPECT_DOUBLE_EQ(40.0, surface.getPerimeterTwoD());
  EXPECT_DOUBLE_EQ(surface.getCEType()->getTotalLength3D(), surface.getPerimeterThreeD());

  const std::vector<TPoint*> points = surface.getCEType()->getOriginalList();
  ASSERT_EQ(4u, points.size());
  ASSERT_EQ(4, surface.getPointsNumber());
  for (std::size_t i = 0; i < points.size(); ++i) {
    const SurfacePoint& record = *surface.getSurfacePoints()[i];
    EXPECT_STREQ("site.north", record.getSurfaceName());
    EXPECT_EQ(std::to_string(i), record.getSurfacePointName());
    EXPECT_EQ(points[i]->getY(), record.getN());
    EXPECT_EQ(points[i]->getX(), record.getE());
    EXPECT_EQ(points[i]->getZ(), record.getZ());
  }
  for (const SurfacePoint* old : before) delete old;  // they are not the surface's any more, and not released
}

TEST_F(SJWFile, TheExtentOfASurfaceThatIsRead) {
  OwnedSurface surface;
  ASSERT_TRUE(surface.tryParseSJW(folder_.write("a.sjw", "100\n7\n1\n130\n8\n2\n110\n9\n3\n").c_str()));
  EXPECT_EQ(100.0, surface.getRangeMinX());
  EXPECT_EQ(130.0, surface.getRangeMaxX());
  EXPECT_EQ(7.0, surface.getRangeMinY());
  EXPECT_EQ(9.0, surface.getRangeMaxY());
}

TEST_F(SJWFile, AFileWithoutTrianglesLeavesTheSurfaceAlone) {
  OwnedSurface surface(risingSquare());
  const CEType* model = surface.getCEType();
  const auto records = surface.getSurfacePoints();
  for (const char* contents : {"nil", "", "1\n2\n3\n"}) {
    EXPECT_FALSE(surface.tryParseSJW(folder_.write("none.sjw", contents).c_str()));
  }
  EXPECT_FALSE(surface.tryParseSJW(folder_.pathOf("absent.sjw").c_str()));
  EXPECT_FALSE(surface.tryParseSJW(nullptr));
  EXPECT_EQ(model, surface.getCEType());
  EXPECT_EQ(records, surface.getSurfacePoints());
  EXPECT_STREQ("Site", surface.getSurfaceName());
  EXPECT_EQ(2, surface.getTrianglesNumber());
}

TEST_F(SJWFile, ATINWithoutPointsLeavesThePointList) {
  OwnedSurface surface(risingSquare());
  const auto records = surface.getSurfacePoints();
  ASSERT_TRUE(surface.tryParseSJW(folder_.write("flat.sjw", "5\n5\n1\n5\n5\n1\n5\n5\n1\n").c_str()));
  EXPECT_EQ(records, surface.getSurfacePoints());
  EXPECT_STREQ("flat", surface.getSurfaceName());
  EXPECT_EQ(0, surface.getTrianglesNumber());
  EXPECT_EQ(0.0, surface.getTwoDArea());
  EXPECT_FALSE(surface.isNeedInit());
}

TEST_F(SJWFile, APromisedTINIsReplaced) {
  OwnedSurface surface(risingSquare());
  std::vector<SurfacePoint*> before = surface.getSurfacePoints();
  before.push_back(newPoint("P9", {500, 500, 9}));
  surface.addSurfacePoint(before.back(), 0);
  ASSERT_TRUE(surface.tryParseSJW(folder_.write("t.sjw", kOneTriangle).c_str()));
  EXPECT_EQ(1, surface.getTrianglesNumber());
  EXPECT_EQ(kOneTriangleRead, triangles::of(*surface.getCEType()));
  EXPECT_EQ(3, surface.getPointsNumber());
  for (const SurfacePoint* old : before) delete old;
}

TEST_F(SJWFile, APromiseOutlivesAFileWithoutTriangles) {
  OwnedSurface surface(risingSquare());
  surface.addSurfacePoint(newPoint("P9", {500, 500, 9}), 0);
  EXPECT_FALSE(surface.tryParseSJW(folder_.write("none.sjw", "nil").c_str()));
  EXPECT_EQ(500.0, surface.getRangeMaxX());
}

TEST_F(SJWFile, ACallersArrayIsForgotten) {
  std::vector<SurfacePoint> array(4);
  OwnedSurface surface;
  surface.updateDTMSurface(4, array.data());
  ASSERT_TRUE(surface.tryParseSJW(folder_.write("t.sjw", kOneTriangle).c_str()));
  EXPECT_EQ(3, surface.getPointsNumber());  // and the records of the array are not released with the surface
}

TEST_F(SJWFile, AnEditAfterwardsStartsFromTheFilesPoints) {
  OwnedSurface surface;
  ASSERT_TRUE(surface.tryParseSJW(folder_.write("t.sjw", kOneTriangle).c_str()));
  surface.addSurfacePoint(newPoint("extra", {10, 10, 4}), 3);
  EXPECT_EQ(2, surface.getTrianglesNumber());
  EXPECT_STREQ("t", surface.getSurfacePoints()[3]->getSurfaceName());
}

TEST(SJWNames, ComeFromThePath) {
  const struct {
    const char* file;
    const char* expected;
  } rows[] = {
      {"plain.sjw", "plain"},
      {"site.north.sjw", "site.north"},
      {"noextension", "noextension"},
      {".sjw", ".sjw"},
      {"a..", "a."},
      {"north\\site.one.sjw", "site.one"},
      {"a name of more than twenty-three bytes.sjw", "a name of more than twe"},
      {"\xBF\xB1\xC7\xF8.sjw", "\xBF\xB1\xC7\xF8"},
  };
  const ScratchFolder folder;
  for (const auto& row : rows) {
    OwnedSurface surface;
    ASSERT_TRUE(surface.tryParseSJW(folder.write(row.file, kOneTriangle).c_str())) << row.file;
    EXPECT_STREQ(row.expected, surface.getSurfaceName());
    EXPECT_STREQ(row.expected, surface.getSurfacePoints()[0]->getSurfaceName());
  }
}

}  // namespace
