// Comparing, rounding and printing numbers.
#include <array>
#include <clocale>
#include <locale>

#include <OrvikDTMAlgorithm/report/NumberText.h>
#include <OrvikDTMAlgorithm/report/U.h>
#include <OrvikDTMAlgorithm/surface/SurfacePoint.h>
#include <gtest/gtest.h>

#include "report/SlowText.h"

namespace {

constexpr double kInf = std::numeric_limits<double>::infinity();
const double kNaN = std::nan("");
const std::string kInfinitySign = "\xA1\xDE";

TEST(Numbers, IsEqual) {
  EXPECT_TRUE(U::isEqual(1.0, 1.000000001));
  EXPECT_FALSE(U::isEqual(1.0, 1.0000001));
  EXPECT_TRUE(U::isEqual(0.0, 1e-8));
  EXPECT_TRUE(U::isEqual(1e-8, 0.0));
  EXPECT_FALSE(U::isEqual(0.0, 1.0000001e-8));
  EXPECT_FALSE(U::isEqual(kNaN, kNaN));
}

TEST(Numbers, IsNaNAndIsInf) {
  const struct {
    double v;
    int isNaN;
    int isInf;
  } rows[] = {
      {kNaN, 1, 0},     {kInf, 0, 1}, {-kInf, 0, 1}, {DBL_MAX, 0, 1},
      {-DBL_MAX, 0, 1}, {0.0, 0, 0},  {1e308, 0, 0}, {slow::neighbour(DBL_MAX, -1), 0, 0},
  };
  for (const auto& row : rows) {
    EXPECT_EQ(row.isNaN, U::isNaN(row.v)) << row.v;
    EXPECT_EQ(row.isInf, U::isInf(row.v)) << row.v;
  }
}

TEST(Numbers, Round) {
  const double rows[][2] = {{-2.5, -3.0}, {2.5, 3.0},  {0.0, 0.0},    {-0.3, 0.0},    {0.5, 1.0},
                            {-0.5, -1.0}, {2.49, 2.0}, {-2.49, -2.0}, {1e300, 1e300}, {0.49999999999999994, 1.0}};
  for (const auto& [v, expected] : rows) EXPECT_EQ(expected, U::round(v)) << v;
  EXPECT_EQ(kInf, U::round(kInf));
  EXPECT_TRUE(std::isnan(U::round(kNaN)));
}

TEST(Numbers, RoundToAgreesWithRound) {
  std::mt19937_64 random(21);
  for (int i = 0; i < 200'000; ++i) {
    const double v = i % 3 == 0 ? slow::anyDouble(random) : slow::nearTie(random, 0, 1e6);
    ASSERT_TRUE(U::round(v) == detail::roundHalfAway(v) || std::isnan(v)) << std::hexfloat << v;
  }
}

TEST(Numbers, ToString) {
  const struct {
    double v;
    std::string expected;
  } rows[] = {
      {100.1234, "100.123400"},
      {0.0, "0.000000"},
      {-0.0, "0.000000"},
      {-0.0000004, "0.000000"},
      {-0.0000006, "-0.000001"},
      {-12.5, "-12.500000"},
      {1e22, "10000000000000000000000.000000"},
      {kNaN, "NaN"},
      {kInf, kInfinitySign},
      {-kInf, "-" + kInfinitySign},
      {DBL_MAX, kInfinitySign},
      {-DBL_MAX, "-" + kInfinitySign},
  };
  for (const auto& row : rows) {
    EXPECT_EQ(row.expected, U::toString(row.v)) << row.v;
    EXPECT_EQ(row.expected, U::l2kNonLocalized(row.v)) << row.v;
  }
}

std::string written(double v) {
  std::array<char, detail::kLongestText> text;
  return std::string(text.data(), detail::writeText(v, text.data()));
}

TEST(Numbers, WriteTextIsToString) {
  for (const double v : slow::specialNumbers()) {
    EXPECT_EQ(slow::toString(v), written(v)) << v;
    EXPECT_EQ(slow::toString(-v), written(-v)) << v;
  }
  for (const double v : {0.5e-6, 1.5e-6, 0.9999995, 0.99999949999999994, 9.9999995, 999999.9999995, 0.015625, 1.0000005,
                         4503599627370495.5, 9007199254740991.0, 9007199254740992.0, 9007199254740994.0}) {
    for (const int steps : {-1, 0, 1}) {
      EXPECT_EQ(slow::toString(slow::neighbour(v, steps)), written(slow::neighbour(v, steps))) << v << " " << steps;
    }
  }
}

TEST(Numbers, WriteTextOnRandomNumbers) {
  std::mt19937_64 random(22);
  for (int i = 0; i < 400'000; ++i) {
    const double v = i % 4 == 0   ? slow::anyDouble(random)
                     : i % 4 == 1 ? slow::sized(random, -30, 60)
                                  : slow::nearTie(random, 6, 1e9);
    ASSERT_EQ(slow::toString(v), written(v)) << std::hexfloat << v;
  }
}

TEST(Numbers, ToStringWithDigits) {
  const struct {
    int digits;
    double v;
    std::string expected;
  } rows[] = {
      {2, 1.23456, "1.230000"},     {2, 1.235, "1.240000"},          {2, -1.235, "-1.240000"},
      {4, 100.00004, "100.000000"}, {4, 100.00005, "100.000100"},    {0, 2.5, "3.000000"},
      {0, -2.5, "-3.000000"},       {4, -0.00001, "0.000000"},       {4, kNaN, "NaN"},
      {4, kInf, kInfinitySign},     {4, -kInf, "-" + kInfinitySign}, {4, DBL_MAX, kInfinitySign},
      {-2, 1250.0, "1300.000000"},  {-2, 1234.0, "1200.000000"},
  };
  for (const auto& row : rows) EXPECT_EQ(row.expected, U::toString(row.digits, row.v)) << row.digits << " " << row.v;
}

TEST(Numbers, RoundUp) {
  const struct {
    int digits;
    double v;
    std::string expected;
  } rows[] = {
      {1, 1.22, "1.3"}, {1, 1.205, "1.2"},   {1, 1.2, "1.2"},   {0, 1.2, "2"},
      {0, 1.05, "1"},   {2, -0.002, "0.00"}, {1, -0.06, "0.0"}, {3, 12.3451, "12.346"},
      {1, kNaN, "NaN"}, {1, kInf, "inf"},    {-3, 1.2, "401"},
  };
  for (const auto& row : rows) EXPECT_EQ(row.expected, U::roundUp(row.digits, row.v)) << row.digits << " " << row.v;
}

TEST(Numbers, RoundUpOfTheLargestDoubles) {
  for (const double v : {DBL_MAX, -DBL_MAX}) EXPECT_EQ(slow::roundUp(10, v), U::roundUp(10, v));
}

TEST(Numbers, RoundHalfUp) {
  const struct {
    int digits;
    double v;
    std::string expected;
  } rows[] = {
      {1, 0.25, "0.3"},
      {1, -0.25, "-0.3"},
      {1, 0.15, "0.1"},
      {0, 2.5, "3"},
      {0, 0.5, "1"},
      {0, -2.5, "-3"},
      {2, 9.995, "9.99"},
      {2, 9.996, "10.00"},
      {1, 99.95, "100.0"},
      {0, 9.5, "10"},
      {1, -0.04, "0.0"},
      {3, 1.0, "1.000"},
      {22, 0.5, "0.5" + std::string(21, '0')},
      {-1, 7.5, "8"},
      {20, 0.125, "0.125" + std::string(17, '0')},
      {2, kNaN, "NaN"},
      {2, kInf, kInfinitySign},
      {2, -DBL_MAX, "-" + kInfinitySign},
  };
  for (const auto& row : rows) EXPECT_EQ(row.expected, U::roundHalfUp(row.digits, row.v)) << row.digits << " " << row.v;
}

TEST(Numbers, IntToString) {
  EXPECT_EQ("0", U::intToString(0));
  EXPECT_EQ("-17", U::intToString(-17));
  EXPECT_EQ("-2147483648", U::intToString(std::numeric_limits<int>::min()));
}

// A locale whose decimal point is a comma and which groups thousands.
class CommaPoint : public std::numpunct<char> {
 protected:
  char do_decimal_point() const override { return ','; }
  char do_thousands_sep() const override { return '.'; }
  std::string do_grouping() const override { return "\3"; }
};

// Makes the process locale one with a decimal comma: the C++ one always, that of C where the system has one.
class CommaLocale {
 public:
  CommaLocale() : cppBefore_(std::locale::global(std::locale(std::locale::classic(), new CommaPoint))) {
    for (const char* name : {"de_DE.UTF-8", "fr_FR.UTF-8", "es_ES.UTF-8", "ru_RU.UTF-8", "pt_BR.UTF-8", "de_DE"}) {
      if (std::setlocale(LC_ALL, name) != nullptr) break;
    }
  }
  ~CommaLocale() {
    std::locale::global(cppBefore_);
    std::setlocale(LC_ALL, "C");
  }

 private:
  std::locale cppBefore_;
};

TEST(Numbers, TheProcessLocaleChangesNothing) {
  const CommaLocale comma;
  ASSERT_EQ(',', std::use_facet<std::numpunct<char>>(std::locale()).decimal_point());
  EXPECT_EQ("1234567.250000", U::toString(1234567.25));
  EXPECT_EQ("1234567.300000", U::toString(1, 1234567.25));
  EXPECT_EQ("1.3", U::roundUp(1, 1.22));
  EXPECT_EQ("1234567.3", U::roundHalfUp(1, 1234567.25));
  EXPECT_EQ("1234567.250000", U::l2kNonLocalized(1234567.25));
  EXPECT_EQ("1234567", U::intToString(1234567));
  EXPECT_EQ(1234.5, detail::readNumber("1234.5"));
  EXPECT_EQ(1234.0, detail::readNumber("1234,5"));
  EXPECT_EQ(1.5, detail::readNumber("0x1.8"));
  EXPECT_EQ(1234.6, detail::roundThroughText(1, 1234.55));
  EXPECT_EQ("1234.5", detail::generalText(1234.5));
}

}  // namespace
