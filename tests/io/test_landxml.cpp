// LandXML files: which points and faces are read from which document, and the surface that they make.
#include <limits>
#include <random>
#include <stdexcept>
#include <tinyxml.h>

#include <OrvikDTMAlgorithm/surface/SurfacePoint.h>
#include <OrvikDTMAlgorithm/tin/ConvexList.h>
#include <OrvikDTMAlgorithm/tin/verifyTIN.h>
#include <gtest/gtest.h>

#include "io/ScratchFolder.h"
#include "io/Triangles.h"
#include "surface/Surfaces.h"

namespace {

using triangles::Corners;
using List = std::vector<Corners>;

// Northing, easting, elevation.
const std::string kPoints = "<P id=\"1\">0 0 1</P><P id=\"2\">0 10 2</P><P id=\"3\">10 0 3</P><P id=\"4\">10 10 4</P>";

// The same as x, y, z.
constexpr triangles::Corner kP1 = {0, 0, 1};
constexpr triangles::Corner kP2 = {10, 0, 2};
constexpr triangles::Corner kP3 = {0, 10, 3};
constexpr triangles::Corner kP4 = {10, 10, 4};

Corners face(const triangles::Corner& a, const triangles::Corner& b, const triangles::Corner& c) {
  return triangles::sorted({a, b, c});
}

List sortedList(List list) {
  std::sort(list.begin(), list.end());
  return list;
}

std::string definition(const std::string& points, const std::string& faces) {
  return "<Definition surfType=\"TIN\"><Pnts>" + points + "</Pnts><Faces>" + faces + "</Faces></Definition>";
}

std::string landXML(const std::string& inSurface) {
  return "<?xml version=\"1.0\"?>\n<LandXML><Surfaces><Surface name=\"EG\">" + inSurface +
         "</Surface></Surfaces></LandXML>\n";
}

class LandXML : public testing::Test {
 protected:
  std::string write(const std::string& contents) const { return folder_.write("t.xml", contents); }

  std::unique_ptr<CEType> modelOf(const std::string& contents) const {
    return std::unique_ptr<CEType>(CEType::initCETypeFromLandXml(write(contents).c_str()));
  }

  List trianglesOf(const std::string& contents) const {
    const std::unique_ptr<CEType> model = modelOf(contents);
    return model == nullptr ? List{} : triangles::of(*model);
  }

  List ofFaces(const std::string& faces) const { return trianglesOf(landXML(definition(kPoints, faces))); }
  List ofPoints(const std::string& points) const { return trianglesOf(landXML(definition(points, "<F>1 2 3</F>"))); }

  ScratchFolder folder_;
};

const List kOne = {face(kP1, kP2, kP3)};
const List kTwo = sortedList({face(kP1, kP2, kP3), face(kP2, kP4, kP3)});

TEST_F(LandXML, Faces) {
  const struct {
    std::string faces;
    List expected;
  } rows[] = {
      {"<F>1 2 3</F>", kOne},
      {"<F>1 2 3</F><F>2 4 3</F>", kTwo},
      {"<F>1 2 3</F><F i=\"1\">2 4 3</F>", kOne},
      {"<F>1 2 3</F><F i=\"0\">2 4 3</F>", kTwo},
      {"<F>1 2 3</F><F i=\"\">2 4 3</F>", kTwo},
      {"<F>1 2 3</F><F i=\"2\">2 4 3</F>", kTwo},
      {"<F>1 2 3</F><F i=\" 1x\">2 4 3</F>", kOne},
      {"<F>1 2 3</F><F n=\"5 6 7\" colour=\"1\" i2=\"1\">2 4 3</F>", kTwo},
      {"<F>1 2 3</F><F>2 4</F>", kOne},
      {"<F>1 2 3</F><F></F><F/>", kOne},
      {"<F>1 2 3 4</F>", kOne},
      {"<F>1  2 3</F>", kOne},
      {"<F>1\t2\r\n3</F>", kOne},
      {"<F>\n  1 2 3\n</F>", kOne},
      {"<F>1,2,3</F>", {}},
      {"<F><!-- first -->1 2 3</F>", {}},
      {"<F>1 2 3<!-- behind --></F>", kOne},
      {"<F><![CDATA[1 2 3]]></F>", kOne},
      {"<F><![CDATA[1  2 3]]></F><F>2 4 3</F>", {face(kP2, kP4, kP3)}},  // 1 "" 2: one corner twice, no triangle
      {"<F>&#49; 2 3</F>", kOne},
      {"<F>1 2 3</F><F>2 4 99</F>", sortedList({face(kP1, kP2, kP3), face(kP2, kP4, kP1)})},
      {"<F>x 2 3</F>", kOne},
      {"<F>1 3 2</F>", kOne},
      {"<F>1 3 2</F><F>2 4 3</F>", kTwo},
      {"<F>1 1 2</F><F>1 2 3</F>", kOne},
      {"<Group><F>1 2 3</F></Group><F>2 4 3</F>", kTwo},
      {"<F>1 2 3<F>2 4 3</F></F>", kOne},
      {"<f>1 2 3</f>", {}},
      {"", {}},
  };
  for (const auto& row : rows) EXPECT_EQ(row.expected, ofFaces(row.faces)) << row.faces;
}

TEST_F(LandXML, Points) {
  const struct {
    std::string points;
    List expected;
  } rows[] = {
      {"<P id=\"1\">100.0 200.0 5.0</P><P id=\"2\">100 210 6</P><P id=\"3\">110 200 7</P>",
       {face({200, 100, 5}, {210, 100, 6}, {200, 110, 7})}},
      {"<P id=\"1\">0 0 1 rest</P><P id=\"2\">0 10 2</P><P id=\"3\">10 0 3</P>", kOne},
      {"<P id=\"1\">0\t0\t1</P><P id=\"2\">0\n10\n2</P><P id=\"3\">10   0   3</P>", kOne},
      {"<P id=\"1\">0 0 1</P><P id=\"2\">0 10 2</P><P id=\"1\">77 77 7</P><P id=\"3\">10 0 3</P>", kOne},
      {"<P>0 0 1</P><P id=\"2\">0 10 2</P><P id=\"3\">10 0 3</P>", kOne},
      {"<P id=\"1\">5 5</P><P id=\"4\">0 0 1</P><P id=\"2\">0 10 2</P><P id=\"3\">10 0 3</P>", kOne},
      {"<P id=\"9\">0 0 1</P><P id=\"2\">0 10 2</P><P id=\"3\">10 0 3</P>", kOne},
      {"<P name=\"a\" id=\" 1\" code=\"7\">0 0 1</P><P id=\"2.0\">0 10 2</P><P id=\"+3\">10 0 3</P>", kOne},
      {"<P id=\"1\">0 0 x</P><P id=\"2\">0 10 2</P><P id=\"3\">10 0 3</P>", {face({0, 0, 0}, kP2, kP3)}},
      {"<P id=\"1\">0 0 1<P id=\"2\">5 5 5</P></P><P id=\"2\">0 10 2</P><P id=\"3\">10 0 3</P>", kOne},
      {"<Set><P id=\"1\">0 0 1</P></Set><P id=\"2\">0 10 2</P><P id=\"3\">10 0 3</P>", kOne},
      {"<P id=\"1\">0 0 1e0</P><P id=\"2\">-0 1e1 2.0</P><P id=\"3\">+10 .0 3.</P>", kOne},
  };
  for (const auto& row : rows) EXPECT_EQ(row.expected, ofPoints(row.points)) << row.points;
}

TEST_F(LandXML, Documents) {
  const std::string one = definition(kPoints, "<F>1 2 3</F>");
  const std::string other = definition(kPoints, "<F>1 2 3</F><F>2 4 3</F>");
  const struct {
    std::string what;
    std::string contents;
    List expected;
  } rows[] = {
      {"two surfaces", landXML(one + other), kOne},
      {"two surfaces, the other way round", landXML(other + one), kTwo},
      {"a definition within a definition", landXML("<Definition>" + one + "<Pnts/><Faces/></Definition>"), kOne},
      {"the root itself", one, kOne},
      {"a namespace", "<LandXML xmlns=\"urn:a\" xmlns:b=\"urn:b\" b:c=\"d\">" + one + "</LandXML>", kOne},
      {"a prefixed root", "<lx:LandXML xmlns:lx=\"urn:a\">" + one + "</lx:LandXML>", kOne},
      {"prefixed names are other names", "<lx:Definition>" + kPoints + "</lx:Definition>", {}},
      {"points in a wrapper",
       "<r><Definition><W><Pnts>" + kPoints + "</Pnts></W><Faces><F>1 2 3</F></Faces></Definition></r>", kOne},
      {"faces first", "<r><Definition><Faces><F>1 2 3</F></Faces><Pnts>" + kPoints + "</Pnts></Definition></r>", kOne},
      {"two point lists",
       "<r><Definition><Pnts>" + kPoints +
           "</Pnts><Pnts><P id='1'>5 5 5</P></Pnts><Faces><F>1 2 3</F></Faces></Definition></r>",
       kOne},
      {"a comment before the root", "<!-- x --><r>" + one + "</r>", kOne},
      {"a document type", "<?xml version='1.0'?><!DOCTYPE LandXML SYSTEM 'l.dtd'><r>" + one + "</r>", kOne},
      {"a byte order mark", "\xEF\xBB\xBF" + landXML(one), kOne},
      {"ISO-8859-1", "<?xml version=\"1.0\" encoding=\"ISO-8859-1\"?><r n='H\xF6he'><\xDC>\xDF</\xDC>" + one + "</r>",
       kOne},
      {"ISO-8859-1 that says it is UTF-8", "<?xml version=\"1.0\" encoding=\"UTF-8\"?><r n='H\xF6'>\xF6" + one + "</r>",
       kOne},
      {"GBK", "<?xml version=\"1.0\" encoding=\"GBK\"?><r n='\xD4\xAD'>" + one + "</r>", kOne},
      {"only the first root", "<a/><r>" + one + "</r>", {}},
      {"something behind the root", "<r>" + one + "</r> rest", kOne},
      {"zeros behind the root", "<r>" + one + "</r>" + std::string(20, '\0') + "<<", kOne},
      {"no definition", "<r><Pnts>" + kPoints + "</Pnts></r>", {}},
      {"another case", "<r><definition>" + kPoints + "</definition></r>", {}},
      {"not closed", "<r>" + one, {}},
      {"closed wrongly", "<r>" + one + "</s>", {}},
      {"no XML", "1,2,3,4", {}},
      {"nothing", "", {}},
      {"UTF-16", std::string("\xFF\xFE<\0r\0/\0>\0", 10), {}},
      {"an attribute twice", "<r a='1' a='2'>" + one + "</r>", {}},
  };
  for (const auto& row : rows) EXPECT_EQ(row.expected, trianglesOf(row.contents)) << row.what;
}

TEST_F(LandXML, LineBreaks) {
  std::string text = landXML("\n <Definition>\n  <Pnts>\n" + kPoints +
                             "\n  </Pnts>\n  <Faces>\n   <F>1 2\n3</F>\n  </Faces>\n </Definition>\n");
  EXPECT_EQ(kOne, trianglesOf(text));
  std::string windows;
  std::string oneLine;
  for (const char c : text) {
    windows += c == '\n' ? std::string("\r\n") : std::string(1, c);
    oneLine += c == '\n' ? ' ' : c;
  }
  EXPECT_EQ(kOne, trianglesOf(windows));
  EXPECT_EQ(kOne, trianglesOf(oneLine));
}

TEST_F(LandXML, TheHostsSwitchOfTheParserChangesNothingAndStays) {
  const std::string spread = landXML(definition(kPoints, "<F>\n 1\t 2\r\n  3 \n</F>\n<F> 2   4 3</F>"));
  for (const bool condense : {false, true}) {
    TiXmlBase::SetCondenseWhiteSpace(condense);
    EXPECT_EQ(kTwo, trianglesOf(spread)) << condense;
    EXPECT_EQ(condense, TiXmlBase::IsWhiteSpaceCondensed());
    EXPECT_EQ(List{}, trianglesOf("<a")) << condense;
    EXPECT_EQ(condense, TiXmlBase::IsWhiteSpaceCondensed());
  }
}

TEST_F(LandXML, Identifiers) {
  const struct {
    std::array<std::string, 3> ids;
    std::string what;
  } rows[] = {
      {{"0", "1", "2"}, "from zero"},
      {{"7", "1000000", "-4"}, "with gaps"},
      {{"2147483647", "2147483648", "4294967297"}, "beyond 32 bits"},
      {{"9223372036854775807", "5", "1"}, "the largest"},
  };
  for (const auto& row : rows) {
    const auto& [a, b, c] = row.ids;
    const std::string points = "<P id='" + c + "'>10 0 3</P><P id='" + a + "'>0 0 1</P><P id='" + b + "'>0 10 2</P>";
    EXPECT_EQ(kOne, trianglesOf(landXML(definition(points, "<F>" + a + " " + b + " " + c + "</F>")))) << row.what;
  }
}

TEST_F(LandXML, AnUnknownIdentifierIsTheFirstPointRead) {
  const std::string points = "<P id='8'>1 1</P><P id='5'>10 10 4</P><P id='2'>0 10 2</P><P id='3'>10 0 3</P>";
  EXPECT_EQ((List{face(kP4, kP2, kP3)}), trianglesOf(landXML(definition(points, "<F>8 2 3</F>"))))
      << "the point that was skipped is not the first";
  EXPECT_EQ((List{face(kP4, kP2, kP3)}), trianglesOf(landXML(definition(points, "<F>2 77 3</F>"))));
}

TEST_F(LandXML, RepeatedPointsMeetInPlan) {
  const std::string points = kPoints + "<P id=\"12\">0 10 22</P><P id=\"13\">10 0 33</P>";
  const auto model = modelOf(landXML(definition(points, "<F>1 2 3</F><F>12 4 13</F>")));
  ASSERT_NE(nullptr, model);
  EXPECT_EQ(5, model->getEList()->getListLen());
  EXPECT_EQ(4, model->getCList()->getListLen());
}

TEST_F(LandXML, MixedDirectionsGiveOneNetwork) {
  const auto model = modelOf(landXML(definition(kPoints, "<F>1 3 2</F><F>2 4 3</F><F>1 1 1</F><F>1 2 2</F>")));
  ASSERT_NE(nullptr, model);
  EXPECT_EQ(kTwo, triangles::of(*model));
  EXPECT_EQ(4u, model->getOriginalList().size());
  EXPECT_DOUBLE_EQ(100.0, model->getArea2D());
  EXPECT_DOUBLE_EQ(2.5, model->getHeight(5, 5));
}

TEST_F(LandXML, WhatIsMissingIsOutOfRange) {
  const std::string pnts = "<Pnts>" + kPoints + "</Pnts>";
  const std::string faces = "<Faces><F>1 2 3</F></Faces>";
  const std::string rows[] = {
      "<Definition/>",
      "<Definition>" + pnts + "</Definition>",
      "<Definition>" + faces + "</Definition>",
      "<Definition><Pnts/>" + faces + "</Definition>",
      "<Definition><Pnts><P id='1'>1 2</P></Pnts>" + faces + "</Definition>",
      "<Definition><pnts/>" + faces + "</Definition>",
  };
  OwnedSurface surface(risingSquare());
  const CEType* model = surface.getCEType();
  for (const std::string& row : rows) {
    const std::string path = write(landXML(row));
    EXPECT_THROW(CEType::initCETypeFromLandXml(path.c_str()), std::out_of_range) << row;
    EXPECT_THROW(surface.tryParseLandXML(path.c_str()), std::out_of_range) << row;
  }
  EXPECT_EQ(model, surface.getCEType());
  EXPECT_STREQ("Site", surface.getSurfaceName());
  EXPECT_EQ(4, surface.getPointsNumber());
  EXPECT_EQ(2, surface.getTrianglesNumber());
}

TEST_F(LandXML, NoPointAndNoFaceIsNoTriangle) {
  EXPECT_EQ(nullptr, modelOf(landXML("<Definition><Pnts/><Faces/></Definition>")));
  EXPECT_EQ(nullptr, modelOf(landXML("<Definition><Pnts/><Faces><F i='1'>1 2 3</F><F>1 2</F></Faces></Definition>")));
}

TEST_F(LandXML, FilesThatCannotBeRead) {
  EXPECT_EQ(nullptr, CEType::initCETypeFromLandXml(nullptr));
  EXPECT_EQ(nullptr, CEType::initCETypeFromLandXml(folder_.pathOf("none.xml").c_str()));
  EXPECT_EQ(nullptr, CEType::initCETypeFromLandXml(folder_.pathOf(".").c_str()));
}

std::string within(std::size_t elements, const std::string& innermost) {
  std::string text;
  for (std::size_t i = 0; i < elements; ++i) text += "<a>";
  text += innermost;
  for (std::size_t i = 0; i < elements; ++i) text += "</a>";
  return text;
}

TEST_F(LandXML, Depth) {
  const std::string threeDeep = definition(kPoints, "<F>1 2 3</F>");  // Definition, Pnts, P
  EXPECT_EQ(kOne, trianglesOf(within(253, threeDeep)));
  EXPECT_EQ(List{}, trianglesOf(within(254, threeDeep)));
  EXPECT_EQ(List{}, trianglesOf(within(200'000, threeDeep)));
  std::string unclosed;
  for (int i = 0; i < 500'000; ++i) unclosed += "<a>";
  EXPECT_EQ(List{}, trianglesOf(unclosed));
}

TEST_F(LandXML, TextsThatBreakOffAnywhere) {
  const std::string whole = landXML("<!-- c --><![CDATA[d]]><?p q?>" + definition(kPoints, "<F i='0'>&#49; 2 3</F>"));
  const std::size_t end = whole.rfind('>');
  for (std::size_t length = 0; length <= end; length += 7) {
    EXPECT_EQ(List{}, trianglesOf(whole.substr(0, length))) << length;
    EXPECT_EQ(List{}, trianglesOf(whole.substr(0, length) + "\xF0")) << length;
    EXPECT_EQ(List{}, trianglesOf(whole.substr(0, length) + '\0' + whole.substr(length))) << length;
  }
  EXPECT_EQ(kOne, trianglesOf(whole));
}

TEST_F(LandXML, AnyBytesAreRead) {
  std::mt19937 random(71);
  const std::string whole = landXML(definition(kPoints, "<F>1 2 3</F><F>2 4 3</F>"));
  for (int i = 0; i < 300; ++i) {
    std::string text = whole;
    for (std::size_t changes = 1 + random() % 4; changes > 0; --changes) {
      const std::size_t at = random() % text.size();
      if (random() % 3 == 0)
        text.erase(at, random() % 9);
      else
        text[at] = static_cast<char>(random());
    }
    try {
      const auto model = modelOf(text);
      if (model != nullptr) model->getHeight(5, 5);
    } catch (const std::out_of_range&) {
      continue;  // points or faces are gone
    }
  }
}

TEST_F(LandXML, ASurfaceIsRead) {
  OwnedSurface surface;
  const std::string points = "<P id='1'>100.0 200.0 5.0</P><P id='2'>100 230 6</P><P id='3'>120 200 7</P>";
  const std::string path = folder_.write("site.north.xml", landXML(definition(points, "<F>1 2 3</F>")));
  ASSERT_TRUE(surface.tryParseLandXML(path.c_str()));
  EXPECT_STREQ("site.north", surface.getSurfaceName());
  EXPECT_EQ(1, surface.getTrianglesNumber());
  EXPECT_DOUBLE_EQ(300.0, surface.getTwoDArea());
  EXPECT_EQ(5.0, surface.getMinElev());
  EXPECT_EQ(7.0, surface.getMaxElev());
  EXPECT_EQ(200.0, surface.getRangeMinX());
  EXPECT_EQ(230.0, surface.getRangeMaxX());
  EXPECT_EQ(100.0, surface.getRangeMinY());
  EXPECT_EQ(120.0, surface.getRangeMaxY());
  ASSERT_EQ(3, surface.getPointsNumber());
  const SurfacePoint& first = *surface.getSurfacePoints()[0];
  EXPECT_EQ(100.0, first.getN());
  EXPECT_EQ(200.0, first.getE());
  EXPECT_EQ(5.0, first.getZ());
  EXPECT_EQ((std::vector<std::string>{"0", "1", "2"}), namesOf(surface));
  double z = 0;
  EXPECT_EQ(1, surface.checkSurfacePoint(100, 230, &z));
  EXPECT_EQ(6.0, z);
}

TEST_F(LandXML, AFileWithoutTrianglesLeavesTheSurfaceAlone) {
  OwnedSurface surface(risingSquare());
  const CEType* model = surface.getCEType();
  EXPECT_FALSE(surface.tryParseLandXML(write("<r/>").c_str()));
  EXPECT_FALSE(surface.tryParseLandXML(folder_.pathOf("none.xml").c_str()));
  EXPECT_FALSE(surface.tryParseLandXML(nullptr));
  EXPECT_EQ(model, surface.getCEType());
  EXPECT_STREQ("Site", surface.getSurfaceName());
}

// A TIN of our own, written as LandXML and read back: the same triangles.
TEST_F(LandXML, ANetworkSurvivesTheFormat) {
  OwnedSurface surface(scattered(120));
  const List expected = triangles::of(*surface.getCEType());
  std::string points;
  std::string faces;
  char text[200];
  int next = 100;
  for (const Corners& corners : expected) {
    std::string names;
    for (const auto& [x, y, z] : corners) {  // every corner a point of its own, so that they have to find together
      std::snprintf(text, sizeof text, "<P id=\"%d\">%.17g %.17g %.17g</P>\n", next, y, x, z);
      points += text;
      names += std::to_string(next) + " ";
      next += 3;
    }
    faces += "<F>" + names + "</F>\n";
  }
  const auto model = modelOf(landXML(definition(points, faces)));
  ASSERT_NE(nullptr, model);
  EXPECT_EQ(expected, triangles::of(*model));
  EXPECT_EQ(surface.getCEType()->getEList()->getListLen(), model->getEList()->getListLen());
  EXPECT_EQ(surface.getCEType()->getCList()->getListLen(), model->getCList()->getListLen());
}

}  // namespace
