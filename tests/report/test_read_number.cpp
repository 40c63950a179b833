// Reading numbers must agree with the C library's own reading in the C locale, to the last bit.
#include <OrvikDTMAlgorithm/report/NumberText.h>
#include <gtest/gtest.h>

#include "report/SlowText.h"

namespace {

void expectReadsAsC(const std::string& text) {
  EXPECT_PRED2(slow::sameBits, slow::read(text), detail::readNumber(text)) << "'" << text << "'";
}

struct Row {
  const char* text;
  double expected;
};

TEST(ReadNumber, WhatItAccepts) {
  constexpr double kInf = std::numeric_limits<double>::infinity();
  const Row rows[] = {
      {"500.1", 500.1},
      {"  \t\n\v\f\r12.5", 12.5},
      {"+7", 7.0},
      {"-7", -7.0},
      {".5", 0.5},
      {"5.", 5.0},
      {"1e3", 1000.0},
      {"1E+3", 1000.0},
      {"25e-1m", 2.5},
      {"12,5", 12.0},
      {"1.5.2", 1.5},
      {"1 2", 1.0},
      {"0x10", 16.0},
      {"-0X1.8P1", -3.0},
      {"0x.8", 0.5},
      {"0x", 0.0},
      {"inf", kInf},
      {"-Infinity", -kInf},
      {"INFectious", kInf},
      {"1e400", kInf},
      {"-1e400", -kInf},
      {"1e-400", 0.0},
      {"", 0.0},
      {"P1", 0.0},
      {"-", 0.0},
      {"+-5", 0.0},
      {"--5", 0.0},
      {".", 0.0},
      {"e5", 0.0},
      {"1e", 1.0},
      {"1e+", 1.0},
      {"5e-324", DBL_TRUE_MIN},
      {"\xA1\xDE", 0.0},
      {"-\xA1\xDE", 0.0},
      {"\xA0"
       "5",
       0.0},
      {"1d3", 1.0},
  };
  for (const Row& row : rows) {
    EXPECT_EQ(row.expected, detail::readNumber(row.text)) << row.text;
    expectReadsAsC(row.text);
  }
}

TEST(ReadNumber, NaNWords) {
  for (const char* text : {"nan", "NaN", "-nan", "nan(12)", "nano"}) {
    EXPECT_TRUE(std::isnan(detail::readNumber(text))) << text;
  }
}

TEST(ReadNumber, EndsWithTheView) {
  EXPECT_EQ(12.0, detail::readNumber(std::string_view("123").substr(0, 2)));
  EXPECT_EQ(0.0, detail::readNumber(std::string_view("\0"
                                                     "5",
                                                     2)));
}

TEST(ReadNumber, RangesAndRounding) {
  for (const char* text : {"1.7976931348623157e308",
                           "1.7976931348623158e308",
                           "1.7976931348623159e308",
                           "2.4703282292062327e-324",
                           "2.4703282292062328e-324",
                           "2.2250738585072011e-308",
                           "9007199254740993",
                           "9007199254740992.999999999999999",
                           "0x1p-1074",
                           "0x1p-1075",
                           "0x1.8p-1075",
                           "0x1p1024",
                           "0x1.fffffffffffff7p1023",
                           "0x1.fffffffffffff8p1023",
                           "0x1.00000000000008p0",
                           "0x1.00000000000018p0",
                           "0x1.000000000000080000001p0",
                           "0x0.00000000001p-1050",
                           "0x1p99999999999999999999",
                           "0x1p-99999999999999999999",
                           "1e99999999999999999999",
                           "1e-99999999999999999999",
                           "0e99999999999999999999",
                           "0x0p99999999999999999999",
                           "-0",
                           "-0.0",
                           "-1e-400",
                           "-0x1p-2000"}) {
    expectReadsAsC(text);
  }
  expectReadsAsC("1" + std::string(400, '0') + "e-400");
  expectReadsAsC("1" + std::string(400, '0') + "e-800");
  expectReadsAsC("0." + std::string(400, '0') + "1e300");
  expectReadsAsC("0." + std::string(400, '0') + "1e800");
  expectReadsAsC("0x1" + std::string(400, '0') + "p-1600");
  expectReadsAsC("0x1" + std::string(400, '0') + "p1");
  expectReadsAsC("0x0." + std::string(400, '0') + "1p-1");
  expectReadsAsC("0x0." + std::string(400, '0') + "1p1600");
}

TEST(ReadNumber, RandomNumbersInEveryNotation) {
  std::mt19937_64 random(11);
  for (int i = 0; i < 60'000; ++i) {
    const double v = i % 2 == 0 ? slow::anyDouble(random) : slow::sized(random, -30, 60);
    for (const char* format : {"%.17g", "%.6f", "%.3e", "%a", "%.40g", "%.2A"}) {
      char text[700];
      std::snprintf(text, sizeof text, format, v);
      ASSERT_PRED2(slow::sameBits, slow::read(text), detail::readNumber(text)) << text;
    }
  }
}

TEST(ReadNumber, RandomSoup) {
  const std::string alphabet = "0123456789.+-eExXpPaAfFnNiI \t0011..";
  std::mt19937_64 random(12);
  for (int i = 0; i < 300'000; ++i) {
    std::string text(1 + random() % 12, ' ');
    for (char& c : text) c = alphabet[random() % alphabet.size()];
    ASSERT_PRED2(slow::sameBits, slow::read(text), detail::readNumber(text)) << "'" << text << "'";
  }
}

// Numbers of the form that is read by arithmetic, and those just outside it.
TEST(ReadNumber, PlainDecimals) {
  std::mt19937_64 random(13);
  for (int i = 0; i < 300'000; ++i) {
    std::string text(1 + random() % 18, '0');
    for (char& c : text) c = static_cast<char>('0' + random() % 10);
    if (i % 4 != 0) text.insert(random() % (text.size() + 1), 1, '.');
    if (i % 3 == 0) text.insert(0, 1, '-');
    ASSERT_PRED2(slow::sameBits, slow::read(text), detail::readNumber(text)) << text;
  }
}

TEST(ReadInteger, AsTheCLibraryReads) {
  for (const char* text : {"0",
                           "12",
                           " \t\n12",
                           "+7",
                           "-7",
                           "+-7",
                           "-+7",
                           "--7",
                           "",
                           "-",
                           "+",
                           "P1",
                           "12x",
                           "1.9",
                           "1e3",
                           "0x10",
                           "007",
                           "2147483648",
                           "-2147483649",
                           "9223372036854775807",
                           "9223372036854775808",
                           "-9223372036854775808",
                           "-9223372036854775809",
                           "99999999999999999999999"}) {
    EXPECT_EQ(std::strtoll(text, nullptr, 10), detail::readInteger(text)) << "'" << text << "'";
  }
  EXPECT_EQ(12, detail::readInteger(std::string_view("123").substr(0, 2)));
}

TEST(ReadInteger, RandomSoup) {
  const std::string alphabet = "0123456789+- \tx.";
  std::mt19937_64 random(14);
  for (int i = 0; i < 100'000; ++i) {
    std::string text(random() % 24, ' ');
    for (char& c : text) c = alphabet[random() % alphabet.size()];
    ASSERT_EQ(std::strtoll(text.c_str(), nullptr, 10), detail::readInteger(text)) << "'" << text << "'";
  }
}

}  // namespace
