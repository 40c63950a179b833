// Texts of a system whose code page is not UTF-8. The machines that run the tests seldom have such a locale, so the
// test program puts its own answer in place of the C library's to the question which code set the process locale has.
#if !defined(_WIN32)

#include <cstdint>
#include <filesystem>
#include <fstream>
#include <langinfo.h>
#include <random>
#include <sstream>

#include <OrvikDTMAlgorithm/api/orvikdtm.h>
#include <OrvikDTMAlgorithm/io/DTMFileOperation.h>
#include <OrvikDTMAlgorithm/report/U.h>
#include <OrvikDTMAlgorithm/surface/DTMSurface.h>
#include <OrvikDTMAlgorithm/surface/DTMSurfaceLib.h>
#include <OrvikDTMAlgorithm/surface/FillCutResult.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "surface/Surfaces.h"

namespace {

namespace fs = std::filesystem;

char asciiName[] = "ANSI_X3.4-1968";
char gbkName[] = "GBK";
char* codesetName = asciiName;

}  // namespace

extern "C" char* nl_langinfo(nl_item) noexcept { return codesetName; }

namespace {

class GbkSystem : public testing::Test {
 protected:
  void SetUp() override {
    codesetName = gbkName;
    folder_ = fs::temp_directory_path() / ("orvikdtm-code-page-" + std::to_string(std::random_device()()));
    fs::create_directories(folder_);
  }
  void TearDown() override {
    codesetName = asciiName;
    fs::remove_all(folder_);
  }

  std::string report(int form, const char* refName) const {
    const std::string path = (folder_ / "report").string();
    DTMSurface surface;
    surface.setSurfaceName("\xB5\xD8\xC3\xE6");
    const FillCutResult result;
    DTMFileOperation files;
    EXPECT_TRUE(files.exportVolumeReport(&result, &surface, form, refName, kLabelsGbk, path.c_str()));
    std::ostringstream text;
    text << std::ifstream(path, std::ios::binary).rdbuf();
    return text.str();
  }

  // "report" and "name"; the surface is called "ground".
  static constexpr const char* kLabelsGbk = "\xB1\xA8\xB1\xED,\xC3\xFB";
  fs::path folder_;
};

TEST_F(GbkSystem, TextsAreConverted) {
  EXPECT_EQ("\xE5\x9C\xB0 a", U::ansiToUTF8("\xB5\xD8 a"));
  EXPECT_EQ("\xB5\xD8 a", U::utf8ToANSI("\xE5\x9C\xB0 a"));
}

TEST_F(GbkSystem, AFailedConversionGivesNothing) {
  EXPECT_EQ("", U::ansiToUTF8("a\xFF"));
  EXPECT_EQ("", U::utf8ToANSI("a\xE5\x9C"));
  EXPECT_EQ("", U::ansiToUTF8(""));
}

TEST_F(GbkSystem, ThePageIsUtf8) {
  const std::string page = report(0, "R");
  EXPECT_NE(std::string::npos, page.find("<title>\xE6\x8A\xA5\xE8\xA1\xA8</title>"));
  EXPECT_NE(std::string::npos,
            page.find(">\xE5\x90\x8D</th><td width=\"70%\" align=\"left\">\xE5\x9C\xB0\xE9\x9D\xA2<"));
  EXPECT_NE(std::string::npos, page.find("<p>\xE5\x90\x8D:</p>"));
}

TEST_F(GbkSystem, TheTextKeepsItsBytes) {
  const std::string text = report(1, "R");
  EXPECT_EQ(0u, text.find("\t\t\xB1\xA8\xB1\xED\n"));
  EXPECT_NE(std::string::npos, text.find("\n\xC3\xFB                  \xB5\xD8\xC3\xE6                \n"));
}

// Twelve characters of two bytes, of which a record holds eleven and a half.
TEST_F(GbkSystem, ANameCutInsideItsLastCharacterKeepsTheOthersInThePage) {
  std::string name, inUtf8;
  for (int i = 0; i < 12; ++i) name += "\xB5\xD8";
  for (int i = 0; i < 11; ++i) inUtf8 += "\xE5\x9C\xB0";
  DTMSurface surface;
  surface.setSurfaceName(name.c_str());
  const FillCutResult result;
  const std::string path = (folder_ / "report").string();
  ASSERT_TRUE(DTMFileOperation().exportVolumeReport(&result, &surface, 0, 1.5, "A", path.c_str()));
  std::ostringstream page;
  page << std::ifstream(path, std::ios::binary).rdbuf();
  EXPECT_THAT(page.str(), testing::HasSubstr(">" + inUtf8 + "</td>"));
}

TEST_F(GbkSystem, TheReferenceNameIsUsedAsPassed) {
  EXPECT_NE(std::string::npos, report(0, "\xB5\xD8").find(">\xB5\xD8</td></tr></table>"));
}

// Two level squares, one called "ground" and the other "earth", measured against each other.
class GbkReports : public GbkSystem {
 protected:
  static constexpr const char* kGround = "\xB5\xD8\xC3\xE6";
  static constexpr const char* kEarth = "\xCD\xC1";

  void SetUp() override {
    GbkSystem::SetUp();
    add(kGround, 1.0);
    add(kEarth, 2.0);
  }
  void TearDown() override {
    surfaces_.release();
    GbkSystem::TearDown();
  }

  void add(const char* name, double z) {
    DTMSurface* surface = surfaces_.addDTMSurface(name);
    for (const double n : {0.0, 10.0}) {
      for (const double e : {0.0, 10.0}) surface->addSurfacePoint(newPoint("", {e, n, z}), SIZE_MAX);
    }
  }

  std::string path(const char* name) const { return (folder_ / name).string(); }

  std::string contentsOf(const char* name) const {
    std::ostringstream text;
    text << std::ifstream(path(name), std::ios::binary).rdbuf();
    return text.str();
  }

  void expectTheNames(const char* page, const char* text) const {
    EXPECT_THAT(contentsOf(page), testing::HasSubstr(">\xE5\x9C\x9F</td></tr></table>"));
    EXPECT_THAT(contentsOf(text), testing::HasSubstr("\n                    \xCD\xC1 "));
  }

  DTMSurfaceLib surfaces_;
};

TEST_F(GbkReports, OfALibraryConvertTheReferencesNameForThePage) {
  ASSERT_EQ(1, surfaces_.exportVolumeReport(0, 1u, 0, "A", path("page").c_str()));
  ASSERT_EQ(1, surfaces_.exportVolumeReport(0, 1u, 1, "A", path("text").c_str()));
  expectTheNames("page", "text");
}

TEST_F(GbkReports, OfFilesConvertTheReferencesNameForThePage) {
  const std::string ground = path("ground.ttin"), earth = path("earth.ttin");
  ASSERT_EQ(1, surfaces_.saveSurface(0, ground.c_str()));
  ASSERT_EQ(1, surfaces_.saveSurface(1, earth.c_str()));
  ASSERT_EQ(1, exportVolumeReport2(ground.c_str(), earth.c_str(), false, 0, "A", path("page").c_str()));
  ASSERT_EQ(1, exportVolumeReport2(ground.c_str(), earth.c_str(), false, 1, "A", path("text").c_str()));
  expectTheNames("page", "text");
}

}  // namespace

#endif
