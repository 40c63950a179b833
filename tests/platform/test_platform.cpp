// The services of the operating system: code pages, paths, files, local time.
#include <algorithm>
#include <cstdlib>
#include <ctime>
#include <filesystem>
#include <fstream>
#include <random>
#include <sstream>

#include <OrvikDTMAlgorithm/platform/Platform.h>
#include <gtest/gtest.h>

namespace {

namespace fs = std::filesystem;

class InFolder : public testing::Test {
 protected:
  void SetUp() override {
    folder_ = fs::temp_directory_path() / ("orvikdtm-platform-" + std::to_string(std::random_device()()));
    fs::create_directories(folder_ / "sub");
  }
  void TearDown() override { fs::remove_all(folder_); }

  std::string path(const std::string& name) const { return (folder_ / name).string(); }

  static void fill(const std::string& path, const std::string& contents) {
    std::ofstream(path, std::ios::binary) << contents;
  }

  static std::string contentsOf(const std::string& path) {
    std::ostringstream text;
    text << std::ifstream(path, std::ios::binary).rdbuf();
    return text.str();
  }

  fs::path folder_;
};

TEST_F(InFolder, ReadsAWholeFile) {
  const std::string large(3'000'000, 'x');
  for (const std::string& contents : {std::string("a\r\nb\0c\n", 7), std::string("one"), large, std::string("\n")}) {
    fill(path("file"), contents);
    std::string read = "before";
    ASSERT_TRUE(detail::readWholeFile(path("file").c_str(), read));
    EXPECT_EQ(contents, read);
  }
}

TEST_F(InFolder, ReadsAnEmptyFile) {
  fill(path("empty"), "");
  std::string read = "before";
  ASSERT_TRUE(detail::readWholeFile(path("empty").c_str(), read));
  EXPECT_EQ("", read);
}

TEST_F(InFolder, CannotReadWhatIsNoFile) {
  std::string read;
  EXPECT_FALSE(detail::readWholeFile(path("absent").c_str(), read));
  EXPECT_FALSE(detail::readWholeFile(path("sub").c_str(), read));
  EXPECT_FALSE(detail::readWholeFile("", read));
  EXPECT_FALSE(detail::readWholeFile(nullptr, read));
}

TEST_F(InFolder, BlanksBelongToAPath) {
  fill(path(" a "), "blank");
  fill(path("a"), "plain");
  std::string read;
  ASSERT_TRUE(detail::readWholeFile(path(" a ").c_str(), read));
  EXPECT_EQ("blank", read);
}

TEST_F(InFolder, WritesAndTruncates) {
  ASSERT_TRUE(detail::writeTextFile(path("out").c_str(), "a long text\n"));
  ASSERT_TRUE(detail::writeTextFile(path("out").c_str(), "short"));
  EXPECT_EQ("short", contentsOf(path("out")));
  EXPECT_FALSE(detail::writeTextFile(path("absent/out").c_str(), "x"));
  EXPECT_FALSE(detail::writeTextFile(path("sub").c_str(), "x"));
  EXPECT_FALSE(detail::writeTextFile(nullptr, "x"));
#if defined(__linux__)
  EXPECT_FALSE(detail::writeTextFile("/dev/full", "x"));
  EXPECT_FALSE(detail::writeTextFile("/dev/full", std::string(100000, 'x')));
#endif
}

#if !defined(_WIN32)

TEST_F(InFolder, BackslashSeparatesWhereThePathDoesNotExistAsItStands) {
  fill(path("sub/file"), "behind a slash");
  std::string read;
  ASSERT_TRUE(detail::readWholeFile((folder_.string() + "\\sub\\file").c_str(), read));
  EXPECT_EQ("behind a slash", read);
  EXPECT_EQ(path("sub/file"), detail::existingPath(path("sub\\file").c_str()));

  fill(path("sub\\file"), "a name with a backslash");
  ASSERT_TRUE(detail::readWholeFile(path("sub\\file").c_str(), read));
  EXPECT_EQ("a name with a backslash", read);
  EXPECT_EQ(path("sub\\file"), detail::existingPath(path("sub\\file").c_str()));
}

TEST_F(InFolder, BackslashSeparatesInThePathOfANewFile) {
  ASSERT_TRUE(detail::writeTextFile((folder_.string() + "\\sub\\new").c_str(), "x"));
  EXPECT_EQ("x", contentsOf(path("sub/new")));
}

const std::string kStationGbk = "\xB5\xE3 A";  // "point A"
const std::string kStationUtf8 = "\xE7\x82\xB9 A";

TEST(CodePage, ConvertsBothWays) {
  EXPECT_EQ(kStationUtf8, detail::convertText(kStationGbk, "GBK", "UTF-8"));
  EXPECT_EQ(kStationGbk, detail::convertText(kStationUtf8, "UTF-8", "GBK"));
  EXPECT_EQ("", detail::convertText("", "GBK", "UTF-8"));
}

TEST(CodePage, LongTexts) {
  std::string gbk;
  std::string utf8;
  for (int i = 0; i < 5000; ++i) {
    gbk += kStationGbk;
    utf8 += kStationUtf8;
  }
  EXPECT_EQ(utf8, detail::convertText(gbk, "GBK", "UTF-8"));
  EXPECT_EQ(gbk, detail::convertText(utf8, "UTF-8", "GBK"));
}

TEST(CodePage, AFailedConversionGivesNothing) {
  EXPECT_EQ("", detail::convertText("ok \xFF\xFF", "GBK", "UTF-8"));
  EXPECT_EQ("", detail::convertText("cut \xB5", "GBK", "UTF-8"));
  EXPECT_EQ("", detail::convertText("\xE7\x82", "UTF-8", "GBK"));
  EXPECT_EQ("", detail::convertText("text", "no such code set", "UTF-8"));
}

TEST(CodePage, Utf8AndAsciiAreLeftAlone) {
  for (const char* name : {"UTF-8", "ANSI_X3.4-1968", "US-ASCII"}) EXPECT_TRUE(detail::isUtf8Already(name)) << name;
  for (const char* name : {"GBK", "GB18030", "ISO-8859-1"}) EXPECT_FALSE(detail::isUtf8Already(name)) << name;
  EXPECT_EQ("\xFF\xFE", detail::codePageToUtf8("\xFF\xFE"));  // the tests run in the C locale
  EXPECT_EQ("\xFF\xFE", detail::utf8ToCodePage("\xFF\xFE"));
}

#endif

TEST(GivingBackPages, LeavesWhatLiesAround) {
  constexpr std::size_t kLargePage = std::size_t{2} << 20;
  constexpr std::size_t kAround = 1000;
  for (const std::size_t bytes : {std::size_t{0}, std::size_t{1}, kLargePage - 1, kLargePage, 5 * kLargePage + 17}) {
    std::vector<unsigned char> memory(bytes + 2 * kAround, 7);
    unsigned char* begin = memory.data() + kAround;
    auto* reached = static_cast<unsigned char*>(detail::giveBackLargePages(begin, bytes));
    ASSERT_LE(begin, reached);
    ASSERT_GE(begin + bytes, reached);
    for (unsigned char* at = memory.data(); at < begin; ++at) ASSERT_EQ(7, *at);
    for (unsigned char* at = reached; at < begin + bytes + kAround; ++at) ASSERT_EQ(7, *at);
    std::fill(begin, begin + bytes, static_cast<unsigned char>(9));  // it is still the caller's
    EXPECT_EQ(bytes, static_cast<std::size_t>(std::count(memory.begin(), memory.end(), 9)));
  }
}

TEST(LocalTime, IsTheTimeOfTheClock) {
  const std::time_t before = std::time(nullptr);
  const detail::LocalTime now = detail::localTime();
  const std::time_t after = std::time(nullptr);

  std::tm t{};
  t.tm_year = now.year - 1900;
  t.tm_mon = now.month - 1;
  t.tm_mday = now.day;
  t.tm_hour = now.hour;
  t.tm_min = now.minute;
  t.tm_sec = now.second;
  t.tm_isdst = -1;
  const std::time_t told = std::mktime(&t);
  EXPECT_LE(before, told);
  EXPECT_GE(after, told);
  EXPECT_EQ(t.tm_wday, now.dayOfWeek);
  EXPECT_GE(now.millisecond, 0);
  EXPECT_LT(now.millisecond, 1000);
}

}  // namespace
