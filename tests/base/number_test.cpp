#include "base/number.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>
#include <limits>
#include <random>

#include "support/locale.h"

namespace lumowatt {

namespace {

constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr double greatest = std::numeric_limits<double>::max();
constexpr double smallest = std::numeric_limits<double>::denorm_min();

}  // namespace

TEST(Fixed, PrintsExactlyTheRequestedNumberOfDecimals) {
  EXPECT_EQ(fixed(12.345, 1), "12.3");
  EXPECT_EQ(fixed(12.0, 3), "12.000");
  EXPECT_EQ(fixed(97.6, 0), "98");
  EXPECT_EQ(fixed(-0.95, 2), "-0.95");
}

TEST(Fixed, PreservesTheSignOfNumbersThatRoundToZero) {
  EXPECT_EQ(fixed(-0.0001, 3), "-0.000");
  EXPECT_EQ(fixed(-0.0, 3), "-0.000");
}

TEST(Fixed, FormatsTheLargestNumbersCompletely) {
  EXPECT_EQ(fixed(-greatest, 9).size(), 1U + 309U + 1U + 9U);
  EXPECT_EQ(fixed(infinity, 1), "inf");
}

TEST(Fixed, FormatsLikePrintf) {
  std::mt19937_64 random(1);
  std::uniform_real_distribution<double> value(-1e5, 1e5);
  for (int i = 0; i < 10000; ++i) {
    const double number = value(random);
    for (int decimals = 0; decimals <= 3; ++decimals) {
      char expected[64];
      std::snprintf(expected, sizeof expected, "%.*f", decimals, number);
      ASSERT_EQ(fixed(number, decimals), expected);
    }
  }
  EXPECT_EQ(fixed(0.5, 0), "0") << "ties round to the even digit";
  EXPECT_EQ(fixed(1.5, 0), "2");
  EXPECT_EQ(fixed(0.25, 1), "0.2");
}

TEST(FixedWithSign, AlwaysPrintsAnAsciiSign) {
  EXPECT_EQ(fixedWithSign(1.5, 3), "+1.500");
  EXPECT_EQ(fixedWithSign(-1.234, 3), "-1.234");
  EXPECT_EQ(fixedWithSign(0.0, 3), "+0.000");
  EXPECT_EQ(fixedWithSign(-0.0004, 3), "-0.000");
}

TEST(Shortest, AlwaysPrintsAFractionalPart) {
  EXPECT_EQ(shortest(31.5), "31.5");
  EXPECT_EQ(shortest(30.0), "30.0");
  EXPECT_EQ(shortest(30.94), "30.94");
  EXPECT_EQ(shortest(-1.5), "-1.5");
  EXPECT_EQ(shortest(0.0), "0.0");
}

TEST(Shortest, PrintsNoExponentAndParsesToTheSameValue) {
  for (const double value : {0.1, 1.0 / 3.0, 1e22, 92233720368547758.07, greatest, smallest}) {
    const std::string text = shortest(value);
    EXPECT_EQ(std::strtod(text.c_str(), nullptr), value) << text;
    EXPECT_EQ(text.find('e'), std::string::npos) << text;
    EXPECT_NE(text.find('.'), std::string::npos) << text;
  }
}

TEST(Shortest, FormatsTheNumbersWithTheMostDecimalsCompletely) {
  EXPECT_EQ(shortest(-smallest), "-0." + std::string(323, '0') + "5");
  EXPECT_EQ(shortest(-std::numeric_limits<double>::min()),
            "-0." + std::string(307, '0') + "22250738585072014");
}

TEST(Shortest, PrintsNoFractionalPartForInfinity) { EXPECT_EQ(shortest(infinity), "inf"); }

TEST(Sign, IsTheUnicodeMinusSignOnlyBelowZero) {
  EXPECT_EQ(sign(-0.04), "\u2212");
  EXPECT_EQ(sign(0.0), "+");
  EXPECT_EQ(sign(-0.0), "+");
  EXPECT_EQ(sign(3.0), "+");
  EXPECT_EQ(sign(std::numeric_limits<double>::quiet_NaN()), "+");
}

TEST(Magnitude, OmitsTheSign) {
  EXPECT_EQ(magnitude(-7.06, 1), "7.1");
  EXPECT_EQ(magnitude(-0.0, 1), "0.0");
}

using NumbersInGermanLocale = InGermanLocale;

TEST_F(NumbersInGermanLocale, UseADecimalPoint) {
  EXPECT_EQ(fixed(1234.5, 2), "1234.50");
  EXPECT_EQ(fixedWithSign(1234.5, 2), "+1234.50");
  EXPECT_EQ(shortest(1234.5), "1234.5");
  EXPECT_EQ(magnitude(-1234.5, 1), "1234.5");
}

}  // namespace lumowatt
