// The volume reports, byte for byte.
#include <algorithm>
#include <cfloat>
#include <cmath>
#include <filesystem>
#include <fstream>
#include <limits>
#include <random>
#include <sstream>

#include <OrvikDTMAlgorithm/io/DTMFileOperation.h>
#include <OrvikDTMAlgorithm/report/VolumeReport.h>
#include <OrvikDTMAlgorithm/surface/DTMSurface.h>
#include <OrvikDTMAlgorithm/surface/FillCutResult.h>
#include <gtest/gtest.h>

namespace {

namespace fs = std::filesystem;

constexpr int kHtml = 0;
constexpr int kText = 1;
constexpr const char* kLetters = "A,B,C,D,E,F,G,H,I,J,K,L";

class VolumeReport : public testing::Test {
 protected:
  void SetUp() override {
    folder_ = fs::temp_directory_path() / ("orvikdtm-report-" + std::to_string(std::random_device()()));
    fs::create_directories(folder_);
    surface_.setSurfaceName("Quarry");
    surface_.setTwoDArea(10000.0);
    surface_.setThreeDArea(10034.56785);
    surface_.setPerimeterTwoD(400.0);
    surface_.setPerimeterThreeD(401.5);
    result_.setCutVolume(12.34567);
    result_.setFillVolume(1234567.891);
    result_.setCutTwoDArea(100.25);
    result_.setCutThreeDArea(101.0);
    result_.setFillTwoDArea(200.5);
    result_.setFillThreeDArea(0.00004);
  }
  void TearDown() override { fs::remove_all(folder_); }

  std::string path() const { return (folder_ / "report.out").string(); }

  std::string written() const {
    std::ostringstream text;
    text << std::ifstream(path(), std::ios::binary).rdbuf();
    return text.str();
  }

  std::string report(int form, double elevation, const char* labels = kLetters) {
    EXPECT_TRUE(files_.exportVolumeReport(&result_, &surface_, form, elevation, labels, path().c_str()));
    return written();
  }

  std::string report(int form, const char* refName, const char* labels = kLetters) {
    EXPECT_TRUE(files_.exportVolumeReport(&result_, &surface_, form, refName, labels, path().c_str()));
    return written();
  }

  static std::string line(const std::string& text, int number) {
    std::istringstream lines(text);
    std::string found;
    for (int i = 0; i < number; ++i) std::getline(lines, found);
    return found;
  }

  fs::path folder_;
  DTMSurface surface_;
  FillCutResult result_;
  DTMFileOperation files_;
};

constexpr const char* kWholeText =
    "\t\tA\n"
    "\n"
    "B                   Quarry              \n"
    "C                   12.5000             \n"
    "\n"
    "D                   \n"
    "E                   12.3457             \n"
    "F                   1234567.8910        \n"
    "\n"
    "B:                  \n"
    "G                   10000.0000          \n"
    "H                   10034.5679          \n"
    "I                   400.0000            \n"
    "J                   401.5000            \n"
    "\n"
    "K                   \n"
    "G                   100.2500            \n"
    "H                   101.0000            \n"
    "\n"
    "L                   \n"
    "G                   200.5000            \n"
    "H                   0.0000              \n";

TEST_F(VolumeReport, TextAgainstALevel) { EXPECT_EQ(kWholeText, report(kText, 12.5)); }

TEST_F(VolumeReport, TextAgainstASurface) {
  std::string expected = kWholeText;
  expected.replace(expected.find("12.5000 "), 8, "Design 2");
  EXPECT_EQ(expected, report(kText, "Design 2"));
}

TEST_F(VolumeReport, AnExistingFileIsReplaced) {
  std::ofstream(path()) << std::string(5000, 'x');
  EXPECT_EQ(kWholeText, report(kText, 12.5));
}

TEST_F(VolumeReport, TheCutVolumeHasExactlyFourDecimals) {
  EXPECT_EQ("E                   12.3457             ", line(report(kText, 0.0), 7));
}

TEST_F(VolumeReport, TheReferenceNameIsNotTakenForANumber) {
  EXPECT_EQ("C                   12.34567            ", line(report(kText, "12.34567"), 4));
}

TEST_F(VolumeReport, LongCellsRunTogether) {
  const std::string label = "a label of twenty-five by";
  surface_.setSurfaceName("exactly twenty bytes");
  const std::string text = report(kText, 0.0, ("A," + label + ",C").c_str());
  EXPECT_EQ(label + "exactly twenty bytes", line(text, 3));
  EXPECT_EQ(label + ":", line(text, 10));
}

// The colon belongs to the heading: it takes one of the blanks, and has none before it.
TEST_F(VolumeReport, TheSurfaceHeadingIsTheNameLabelWithAColon) {
  EXPECT_EQ("nineteen characters:", line(report(kText, 0.0, "A,nineteen characters"), 10));
  EXPECT_EQ("Surface:            ", line(report(kText, 0.0, "A,Surface"), 10));
}

TEST_F(VolumeReport, AbsentLabelsAreEmpty) {
  const std::string blankCell(20, ' ');
  const std::string text = report(kText, 0.0, "");
  EXPECT_EQ("\t\t", line(text, 1));
  EXPECT_EQ(blankCell + "Quarry              ", line(text, 3));
  EXPECT_EQ(blankCell, line(text, 20));
  EXPECT_EQ(22, std::count(text.begin(), text.end(), '\n'));
}

TEST_F(VolumeReport, LabelsOfTheTextStayInTheirBytes) {
  EXPECT_EQ("\t\t\xB1\xA8", line(report(kText, 0.0, "\xB1\xA8,B"), 1));
}

constexpr const char* kWholePage =
    "<html><head>"
    "<meta http-equiv=\"Content-Type\" content=\"text/html; charset=utf8\" />"
    "<meta name = \"format-detection\" content = \"telephone=no, email=no, address=no\">"
    "<title>A</title>"
    "<style type=\"text/css\"><!--.STYLE4 {color: #FF0000}.STYLE5 {color: #225AD9}--></style>"
    "</head><body><h3 align=\"center\" class=\"STYLE5\">A</h3>"
    "<table border=1 width=100% cellpadding=2 rules=cols><tr>"
    "<th width=\"30%\" align=\"left\">B</th><td width=\"70%\" align=\"left\">Quarry</td></tr>"
    "<th width=\"30%\" align=\"left\">C</th><td width=\"70%\" align=\"left\">12.5000</td></tr></table>"
    "<br /><br />"
    "<p>D</p><table border=1 width=100% cellpadding=2 rules=cols><tr>"
    "<th width=\"30%\" align=\"left\">E</th><td width=\"70%\" align=\"left\">12.3457</td></tr>"
    "<th width=\"30%\" align=\"left\">F</th><td width=\"70%\" align=\"left\">1234567.8910</td></tr></table>"
    "<p>B:</p><table border=1 width=100% cellpadding=2 rules=cols><tr>"
    "<th width=\"30%\" align=\"left\">G</th><td width=\"70%\" align=\"left\">10000.0000</td></tr>"
    "<th width=\"30%\" align=\"left\">H</th><td width=\"70%\" align=\"left\">10034.5679</td></tr>"
    "<th width=\"30%\" align=\"left\">I</th><td width=\"70%\" align=\"left\">400.0000</td></tr>"
    "<th width=\"30%\" align=\"left\">J</th><td width=\"70%\" align=\"left\">401.5000</td></tr></table>"
    "<p>K</p><table border=1 width=100% cellpadding=2 rules=cols><tr>"
    "<th width=\"30%\" align=\"left\">G</th><td width=\"70%\" align=\"left\">100.2500</td></tr>"
    "<th width=\"30%\" align=\"left\">H</th><td width=\"70%\" align=\"left\">101.0000</td></tr></table>"
    "<p>L</p><table border=1 width=100% cellpadding=2 rules=cols><tr>"
    "<th width=\"30%\" align=\"left\">G</th><td width=\"70%\" align=\"left\">200.5000</td></tr>"
    "<th width=\"30%\" align=\"left\">H</th><td width=\"70%\" align=\"left\">0.0000</td></tr></table>"
    "</body></html>";

TEST_F(VolumeReport, PageAgainstALevel) { EXPECT_EQ(kWholePage, report(kHtml, 12.5)); }

TEST_F(VolumeReport, PageAgainstASurface) {
  std::string expected = kWholePage;
  expected.replace(expected.find("12.5000"), 7, "Design 2");
  EXPECT_EQ(expected, report(kHtml, "Design 2"));
}

// The text is in the library's GBK, the page in its own UTF-8: an infinite level, measure and volume in every place.
TEST_F(VolumeReport, InfinitiesAreInTheEncodingOfTheirReport) {
  constexpr double kInf = std::numeric_limits<double>::infinity();
  result_.setCutVolume(kInf);
  result_.setFillVolume(-kInf);
  result_.setFillThreeDArea(DBL_MAX);
  surface_.setThreeDArea(-DBL_MAX);
  surface_.setPerimeterThreeD(kInf);
  const std::string page = report(kHtml, -kInf);
  for (const char* row : {"C</th><td width=\"70%\" align=\"left\">-\xE2\x88\x9E</td>",
                          "E</th><td width=\"70%\" align=\"left\">\xE2\x88\x9E</td>",
                          "F</th><td width=\"70%\" align=\"left\">-\xE2\x88\x9E</td>",
                          "H</th><td width=\"70%\" align=\"left\">-\xE2\x88\x9E</td>",
                          "J</th><td width=\"70%\" align=\"left\">\xE2\x88\x9E</td>",
                          "H</th><td width=\"70%\" align=\"left\">\xE2\x88\x9E</td>"}) {
    EXPECT_NE(std::string::npos, page.find(row)) << row;
  }
  EXPECT_EQ(std::string::npos, page.find("\xA1\xDE"));
  EXPECT_EQ("C                   -\xA1\xDE                 ", line(report(kText, -kInf), 4));
}

TEST_F(VolumeReport, ThePageIsOneLine) {
  const std::string page = report(kHtml, 0.0);
  EXPECT_EQ(std::string::npos, page.find_first_of("\r\n"));
  EXPECT_EQ(0u, page.find("<html><head>"));
  EXPECT_EQ(page.size() - 14, page.rfind("</body></html>"));
}

TEST_F(VolumeReport, AbsentLabelsOfThePageAreEmpty) {
  std::string expected = kWholePage;
  for (const char* label : {">C<", ">D<", ">E<", ">F<", ">G<", ">H<", ">I<", ">J<", ">K<", ">L<"}) {
    for (std::size_t at; (at = expected.find(label)) != std::string::npos;) expected.replace(at, 3, "><");
  }
  EXPECT_EQ(expected, report(kHtml, 12.5, "A,B"));
  EXPECT_EQ(14u, std::string(kWholePage).size() - expected.size());  // cells and headings
}

TEST_F(VolumeReport, LabelsBeyondTheTwelfthAreNotUsed) {
  EXPECT_EQ(kWholePage, report(kHtml, 12.5, "A,B,C,D,E,F,G,H,I,J,K,L,M,N"));
  EXPECT_EQ(kWholeText, report(kText, 12.5, "A,B,C,D,E,F,G,H,I,J,K,L,M,N"));
}

TEST_F(VolumeReport, TheFormsByThemselves) {
  const std::string file = path();
  ASSERT_TRUE(files_.exportVolumeHtmlReport(&result_, &surface_, 12.5, kLetters, file.c_str()));
  EXPECT_EQ(kWholePage, written());
  ASSERT_TRUE(files_.exportVolumeTxtReport(&result_, &surface_, 12.5, kLetters, file.c_str()));
  EXPECT_EQ(kWholeText, written());
  ASSERT_TRUE(files_.exportVolumeHtmlReport(&result_, &surface_, "R", kLetters, file.c_str()));
  EXPECT_EQ(report(kHtml, "R"), written());
  ASSERT_TRUE(files_.exportVolumeTxtReport(&result_, &surface_, "R", kLetters, file.c_str()));
  EXPECT_EQ("C                   R                   ", line(written(), 4));
}

TEST_F(VolumeReport, AnUnknownFormWritesNothing) {
  for (const int form : {-1, 2, 100}) {
    EXPECT_FALSE(files_.exportVolumeReport(&result_, &surface_, form, 0.0, kLetters, path().c_str()));
    EXPECT_FALSE(files_.exportVolumeReport(&result_, &surface_, form, "R", kLetters, path().c_str()));
    EXPECT_FALSE(fs::exists(path()));
  }
}

TEST_F(VolumeReport, AFileThatCannotBeOpened) {
  const std::string absent = (folder_ / "absent" / "report").string();
  for (const int form : {kHtml, kText}) {
    EXPECT_FALSE(files_.exportVolumeReport(&result_, &surface_, form, 0.0, kLetters, absent.c_str()));
    EXPECT_FALSE(files_.exportVolumeReport(&result_, &surface_, form, "R", kLetters, folder_.c_str()));
  }
}

TEST_F(VolumeReport, NothingIsWrittenForNullArguments) {
  const std::string file = path();
  const char* noText = nullptr;
  for (const int form : {kHtml, kText}) {
    EXPECT_FALSE(files_.exportVolumeReport(nullptr, &surface_, form, 0.0, kLetters, file.c_str()));
    EXPECT_FALSE(files_.exportVolumeReport(&result_, nullptr, form, 0.0, kLetters, file.c_str()));
    EXPECT_FALSE(files_.exportVolumeReport(&result_, &surface_, form, 0.0, nullptr, file.c_str()));
    EXPECT_FALSE(files_.exportVolumeReport(&result_, &surface_, form, 0.0, kLetters, nullptr));
    EXPECT_FALSE(files_.exportVolumeReport(&result_, &surface_, form, noText, kLetters, file.c_str()));
    EXPECT_FALSE(fs::exists(file));
  }
}

TEST(ReportValue, RoundsToFourDecimals) {
  constexpr double kInf = std::numeric_limits<double>::infinity();
  const struct {
    double v;
    const char* expected;
  } rows[] = {
      {12.34567, "12.3457"},
      {0.00005, "0.0001"},
      {-0.00005, "-0.0001"},
      {-0.00004, "0.0000"},
      {-0.0, "0.0000"},
      {2.5, "2.5000"},
      {38500000.12345, "38500000.1235"},  // its double lies above the half
      {1e20, "100000000000000000000.0000"},
      {std::nan(""), "NaN"},
      {kInf, "\xA1\xDE"},
      {-kInf, "-\xA1\xDE"},
      {DBL_MAX, "\xA1\xDE"},
  };
  for (const auto& row : rows) EXPECT_EQ(row.expected, detail::reportValue(row.v)) << row.v;
}

}  // namespace
