// A process whose locale has a decimal comma, and perhaps a code page or letters of its own, reads and writes the same
// bytes as one in the C locale. The locales are real ones, which the tests' fixture makes and LOCPATH leads to.
#include <clocale>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <locale>
#include <memory>
#include <random>
#include <sstream>
#include <stdexcept>

#include <OrvikDTMAlgorithm/report/NumberText.h>
#include <OrvikDTMAlgorithm/report/U.h>
#include <gtest/gtest.h>

#include "io/ScratchFolder.h"
#include "io/SurfaceFiles.h"

namespace {

// For as long as this lives the C library has the locale of that name, and the streams of C++ have its decimal comma
// (by a facet of their own: looking a locale up by LOCPATH, as std::locale does, leaks in the C library). The C locale
// before and after.
class ProcessLocale {
 public:
  explicit ProcessLocale(const char* name) {
    std::locale::global(std::locale(std::locale::classic(), new Comma));
    EXPECT_STREQ(name, std::setlocale(LC_ALL, name)) << "ctest makes the locales that the tests need";
  }
  ~ProcessLocale() { std::locale::global(std::locale::classic()); }
  ProcessLocale(const ProcessLocale&) = delete;
  ProcessLocale& operator=(const ProcessLocale&) = delete;

 private:
  struct Comma : std::numpunct<char> {
    char do_decimal_point() const override { return ','; }
    char do_thousands_sep() const override { return '.'; }
    std::string do_grouping() const override { return "\3"; }
  };
};

class CommaLocale : public testing::TestWithParam<const char*> {
 protected:
  // The results of `work` in the C locale and in that of the test must be equal, and be something.
  static void expectSame(const std::function<std::string()>& work) {
    const std::string plain = work();
    ASSERT_FALSE(plain.empty());
    const ProcessLocale comma(GetParam());
    EXPECT_EQ(plain, work());
  }

  ScratchFolder folder_;
};

std::string textOf(const Block& block) { return std::string(block.begin(), block.end()); }

std::vector<Position> rollingGround() {
  std::vector<Position> positions = scattered(40);
  for (Position& at : positions) {
    at.e += 38'512'000.125;
    at.n += 3'414'000.5;
    at.z -= 17.25;
  }
  return positions;
}

// Without this the other tests would compare a locale with itself.
TEST_P(CommaLocale, IsInForce) {
  const ProcessLocale comma(GetParam());
  EXPECT_STREQ(",", std::localeconv()->decimal_point);
  char text[8];
  std::snprintf(text, sizeof text, "%.1f", 1.5);
  EXPECT_STREQ("1,5", text);
  EXPECT_EQ(1.5, std::strtod("1,5", nullptr));
  std::ostringstream stream;
  stream << 1234.5;
  EXPECT_EQ("1.234,5", stream.str());
}

TEST_P(CommaLocale, NumbersAsText) {
  expectSame([] {
    std::string text;
    for (const double v : {1234567.25, -0.5, 1e300, 1e-9, 38512345.6785, 0.1}) {
      for (const std::string& one : {U::toString(v), U::toString(1, v), U::roundUp(1, v), U::roundHalfUp(2, v),
                                     U::l2kNonLocalized(v), detail::generalText(v), detail::fixedText(v, 4)}) {
        text += one + '\n';
      }
    }
    return text + U::intToString(1234567);
  });
}

TEST_P(CommaLocale, TextAsNumbers) {
  expectSame([] {
    std::string text;
    for (const char* written :
         {"1234.5", "1234,5", "1.234,5", "0x1.8", "-1e-3", ",5", ".5", "\xA0 7", "inf", "1e400"}) {
      text += detail::generalText(detail::readNumber(written)) + '\n';
    }
    return text;
  });
}

TEST_P(CommaLocale, PointFiles) {
  const std::string path = folder_.write(
      "POINTS.CSV", "P1,,500.1,300.2,12.5\nP2,,510.25,300.75,13.0625\nP3,,505,309.5,1,5\r\nP4,,1.234,5,6\n");
  expectSame([&path] {
    OwnedSurface surface;
    std::vector<SurfacePoint*> points;
    surface.loadSurfacePointsFile(path.c_str(), points);
    EXPECT_EQ(4u, points.size());
    EXPECT_EQ(500.1, points[0]->getE());
    std::string text = surface.toString() + textOf(surface.toBytes());
    for (const SurfacePoint* point : points) text += point->toString() + '\n';
    return text;
  });
}

TEST_P(CommaLocale, RangeFiles) {
  const std::string path = folder_.write("range.WAA", "1\n0\nB1,100.25,200.5,0.125\nB2,1234567.891,2,5\nB3,1,2\n");
  expectSame([&] {
    DTMFileOperation files;
    std::vector<RangePoint*> range;
    bool first = false;
    bool second = true;
    EXPECT_TRUE(files.loadRangePointFile(path.c_str(), &first, &second, range));
    EXPECT_TRUE(first && !second);
    EXPECT_TRUE(files.saveRangePointFile(folder_.pathOf("saved.waa").c_str(), first, second, range));
    for (const RangePoint* vertex : range) delete vertex;
    return folder_.read("saved.waa");
  });
  EXPECT_EQ("1\n0\nB1,100.25,200.5,0.125\nB2,1.23457e+06,2,5\nB3,1,2,0\n", folder_.read("saved.waa"));
}

TEST_P(CommaLocale, TriangleFiles) {
  expectSame([this] {
    OwnedSurface surface(rollingGround());
    const std::string path = folder_.pathOf("ground.SJW");
    EXPECT_TRUE(surface.exportFileSJW(path.c_str()));
    OwnedSurface read;
    EXPECT_TRUE(DTMFileOperation().loadSurface(path.c_str(), 1, &read));
    return folder_.read("ground.SJW") + textOf(read.toBytes());
  });
}

TEST_P(CommaLocale, LandXML) {
  const std::string path = folder_.write(
      "ground.XML",
      "<?xml version=\"1.0\" encoding=\"ISO-8859-1\"?><LandXML d=\"H\xF6he\"><Surfaces><Surface name=\"EG\">"
      "<Definition><Pnts><P id=\"1\">0.5 0.25 1.125</P><P id=\"2\">0,5 10.5 2e-1</P><P id=\"3\">10.75 0 3</P>"
      "<P id=\"4\">11.5 12.5 4</P></Pnts><Faces><F>1 2 3</F><F>2 4 3</F></Faces></Definition></Surface></Surfaces>"
      "</LandXML>");
  expectSame([&path] {
    OwnedSurface read;
    EXPECT_TRUE(DTMFileOperation().loadSurface(path.c_str(), 2, &read));
    return textOf(read.toBytes());
  });
}

// Documents with bytes beyond ASCII wherever they may fall: what is a letter or a blank is not up to the locale.
TEST_P(CommaLocale, LandXMLWithAnyBytes) {
  const std::string whole =
      "<LandXML d=\"a\"><Definition b=\"1\"><Pnts><P id=\"1\">0 0 1</P><P id=\"2\">0 10.5 2</P>"
      "<P id=\"3\">10 0 3</P></Pnts><Faces><F>1 2 3</F></Faces></Definition></LandXML>";
  expectSame([&] {
    std::mt19937 random(23);
    std::string text;
    for (int i = 0; i < 400; ++i) {
      std::string contents = whole;
      for (std::size_t changes = 1 + random() % 2; changes > 0; --changes) {
        contents.insert(random() % contents.size(), 1, static_cast<char>(0x80 + random() % 0x80));
      }
      try {
        const std::unique_ptr<CEType> read(CEType::initCETypeFromLandXml(folder_.write("any.xml", contents).c_str()));
        text += read == nullptr ? "nothing" : textOf(read->getBytes());
      } catch (const std::out_of_range&) {
        text += "out of range";
      }
    }
    return text;
  });
}

TEST_P(CommaLocale, SurfaceFiles) {
  expectSame([this] {
    OwnedSurface surface(rollingGround());
    const std::string path = folder_.pathOf("GROUND.TTIN");
    EXPECT_TRUE(DTMFileOperation().saveSurfaces(path.c_str(), &surface));
    OwnedSurface read;
    EXPECT_TRUE(DTMFileOperation().loadSurface(path.c_str(), 0, &read));
    EXPECT_EQ(1u, DTMFileOperation().getSurfaceByPath(folder_.pathOf("").c_str(), ".ttin").size());
    return folder_.read("GROUND.TTIN") + textOf(read.toBytes()) + read.toString();
  });
}

TEST_P(CommaLocale, Reports) {
  constexpr const char* kLabels = "A,B,C,D,E,F,G,H,I,J,K,L";
  expectSame([this] {
    OwnedSurface surface(rollingGround());
    const std::unique_ptr<FillCutResult> result(surface.getFillCut(2.5));
    std::string text;
    for (const int form : {0, 1}) {
      DTMFileOperation files;
      const std::string path = folder_.pathOf("report");
      EXPECT_TRUE(files.exportVolumeReport(result.get(), &surface, form, 1234567.25, kLabels, path.c_str()));
      text += folder_.read("report");
      EXPECT_TRUE(files.exportVolumeReport(result.get(), &surface, form, "Design 1,5", kLabels, path.c_str()));
      text += folder_.read("report");
    }
    EXPECT_NE(std::string::npos, text.find("1234567.2500"));
    return text;
  });
}

INSTANTIATE_TEST_SUITE_P(, CommaLocale, testing::Values("de_DE.UTF-8", "de_DE.ISO-8859-1", "tr_TR.ISO-8859-9"),
                         [](const testing::TestParamInfo<const char*>& locale) {
                           std::string name = locale.param;
                           for (char& c : name) {
                             if (c == '.' || c == '-') c = '_';
                           }
                           return name;
                         });

// ---- code pages

// The 24 bytes of a name in a surface file.
std::string field(std::string name) {
  name.resize(24, '\0');
  return name;
}

TEST(CodePageOfALocale, NamesAreUtf8InSurfaceFiles) {
  const ProcessLocale latin1("de_DE.ISO-8859-1");
  OwnedSurface surface;
  surface.setSurfaceName("H\xF6he");
  surface.setSurfacePoints(
      {newPoint("\xDC"
                "1,5",
                {1.5, 2.5, 3.5})});
  const Block block = surface.toBytes();
  EXPECT_EQ(field("H\xC3\xB6he"), textOf(block).substr(0, 24));
  EXPECT_EQ(field("\xC3\x9C"
                  "1,5"),
            textOf(block).substr(80, 24));
  OwnedSurface read;
  ASSERT_TRUE(load(read, block));
  EXPECT_STREQ("H\xF6he", read.getSurfaceName());
  EXPECT_EQ(namesOf(surface), namesOf(read));
  EXPECT_EQ(block, read.toBytes());
}

TEST(CodePageOfALocale, PagesAreUtf8AndTextsAreNot) {
  const ScratchFolder folder;
  const ProcessLocale latin1("de_DE.ISO-8859-1");
  OwnedSurface surface(risingSquare());
  surface.setSurfaceName("H\xF6he");
  const std::unique_ptr<FillCutResult> result(surface.getFillCut(15.5));
  DTMFileOperation files;
  ASSERT_TRUE(files.exportVolumeReport(result.get(), &surface, 0, 15.5,
                                       "\xDC"
                                       "bersicht",
                                       folder.pathOf("r").c_str()));
  EXPECT_NE(std::string::npos, folder.read("r").find("H\xC3\xB6he"));
  EXPECT_NE(std::string::npos, folder.read("r").find("\xC3\x9C"
                                                     "bersicht"));
  ASSERT_TRUE(files.exportVolumeReport(result.get(), &surface, 1, 15.5,
                                       "\xDC"
                                       "bersicht",
                                       folder.pathOf("r").c_str()));
  EXPECT_NE(std::string::npos, folder.read("r").find("H\xF6he"));
  EXPECT_NE(std::string::npos, folder.read("r").find("\xDC"
                                                     "bersicht"));
}

// The second byte of some characters is a backslash's.
TEST(CodePageOfALocale, CharactersThatEndWithABackslashSeparateNothing) {
  const ScratchFolder folder;
  const ProcessLocale gbk("zh_CN.GBK");
  const std::string name = "\x95\x5C\x81\x5C";
  OwnedSurface surface(risingSquare());
  DTMFileOperation files;
  for (const std::string& joint : {std::string("/"), std::string("\\")}) {
    const std::string path = folder.pathOf("") + joint + name;
    ASSERT_TRUE(files.saveSurfaces((path + ".ttin").c_str(), &surface));
    ASSERT_TRUE(surface.exportFileSJW((path + ".sjw").c_str()));
    EXPECT_FALSE(folder.read(name + ".sjw").empty());
    EXPECT_EQ(std::vector<std::string>{folder.pathOf("") + "\\" + name + ".ttin"},
              files.getSurfaceByPath(folder.pathOf("").c_str(), ".ttin"));
    OwnedSurface read;
    EXPECT_TRUE(files.loadSurface((path + ".ttin").c_str(), 0, &read));
    OwnedSurface imported;
    EXPECT_TRUE(files.loadSurface((folder.pathOf("") + "\\" + name + ".sjw").c_str(), 1, &imported));
    EXPECT_EQ(name, imported.getSurfaceName());
    EXPECT_TRUE(files.deleteSurface((path + ".ttin").c_str()));
    EXPECT_TRUE(files.getSurfaceByPath(folder.pathOf("").c_str(), ".ttin").empty());
  }
}

TEST(CodePageOfALocale, ExtensionsMatchInAnyCaseWhateverTheLetters) {
  const ProcessLocale turkish("tr_TR.ISO-8859-9");  // where the capital of "i" is another letter
  EXPECT_TRUE(U::endsWith("A.TTIN", ".ttin"));
  EXPECT_FALSE(U::endsWith("A.TT\xDDN", ".ttin"));
}

}  // namespace
