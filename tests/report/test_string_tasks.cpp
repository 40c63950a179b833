// Splitting, trimming, padding, code pages and the time as text.
#include <OrvikDTMAlgorithm/report/U.h>
#include <gtest/gtest.h>

namespace {

using Pieces = std::vector<std::string>;

TEST(StringTasks, EndsWith) {
  EXPECT_TRUE(U::endsWith("site.DAT", ".dat"));
  EXPECT_TRUE(U::endsWith("site.dat", ".DaT"));
  EXPECT_TRUE(U::endsWith(".dat", ".dat"));
  EXPECT_TRUE(U::endsWith("any", ""));
  EXPECT_FALSE(U::endsWith("dat", ".dat"));
  EXPECT_FALSE(U::endsWith("site.dat ", ".dat"));
  EXPECT_FALSE(U::endsWith("site.txt", ".dat"));
  EXPECT_FALSE(U::endsWith("x[", "{"));  // one bit apart, like a capital and a small letter
}

TEST(StringTasks, Split) {
  EXPECT_EQ((Pieces{"1", "2", "3"}), U::split("1,2,3", ","));
  EXPECT_EQ((Pieces{"1", "2", "3", ""}), U::split("1,2,3,", ","));
  EXPECT_EQ((Pieces{"a", "", "b"}), U::split("a,,b", ","));
  EXPECT_EQ((Pieces{"a", "b", ""}), U::split("a,b,", ","));
  EXPECT_EQ((Pieces{""}), U::split("", ","));
  EXPECT_EQ((Pieces{"", ""}), U::split(",", ","));
  EXPECT_EQ((Pieces{"a", "b,c"}), U::split("a::b,c", "::"));
  EXPECT_EQ((Pieces{"a,b"}), U::split("a,b", ""));
}

// The separator appended behind the last piece can meet a part of one at its end.
TEST(StringTasks, SplitAtTheEnd) {
  EXPECT_EQ((Pieces{"a", ":"}), U::split("a:::", "::"));
  EXPECT_EQ((Pieces{"a", "", ""}), U::split("a::::", "::"));
}

TEST(StringTasks, Trim) {
  EXPECT_EQ("ab", U::trim("  ab  "));
  EXPECT_EQ("\tab", U::trim("\tab"));
  EXPECT_EQ("a b", U::trim("a b"));
  EXPECT_EQ("ab\n", U::trim(" ab\n"));
  EXPECT_EQ("", U::trim(""));
  EXPECT_EQ("   ", U::trim("   "));
}

TEST(StringTasks, Replace) {
  EXPECT_EQ("a-b-c", U::replace("a,b,c", ",", "-"));
  EXPECT_EQ("xx", U::replace("aaaa", "aa", "x"));
  EXPECT_EQ("abab", U::replace("aa", "a", "ab"));
  EXPECT_EQ("bc", U::replace("abc", "a", ""));
  EXPECT_EQ("abc", U::replace("abc", "", "-"));
  EXPECT_EQ("", U::replace("", "a", "b"));
}

TEST(StringTasks, Padding) {
  EXPECT_EQ("ab   ", U::appentStr4Length("ab", 5));
  EXPECT_EQ("abcde", U::appentStr4Length("abcde", 5));
  EXPECT_EQ("abcdef", U::appentStr4Length("abcdef", 5));
  EXPECT_EQ("ab", U::appentStr4Length("ab", -1));
  EXPECT_EQ("   ", U::appentStr4Length("", 3));
}

TEST(StringTasks, CodePageOfTheCLocaleIsLeftAlone) {
  const std::string text = "ab \xE4\xBD\x93";
  EXPECT_EQ(text, U::ansiToUTF8(text));
  EXPECT_EQ(text, U::utf8ToANSI(text));
  EXPECT_EQ("", U::ansiToUTF8(""));
  EXPECT_EQ("", U::utf8ToANSI(""));
}

// The text with every digit replaced by "0".
std::string digitsMasked(std::string text) {
  for (char& c : text) c = c >= '0' && c <= '9' ? '0' : c;
  return text;
}

TEST(StringTasks, TheTime) {
  const std::string now = U::currentTimeMillis();
  EXPECT_EQ(
      "0000/00/00 00:00:00.000 \xD0\xC7\xC6\xDA"
      "0\n",
      digitsMasked(now));
  const char weekday = now[now.size() - 2];
  EXPECT_GE(weekday, '0');
  EXPECT_LE(weekday, '6');
}

TEST(StringTasks, PrintlnPrintsNothing) {
  testing::internal::CaptureStdout();
  U::println("text");
  EXPECT_EQ("", testing::internal::GetCapturedStdout());
}

}  // namespace
