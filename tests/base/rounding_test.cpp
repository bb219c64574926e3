#include "base/rounding.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace lumowatt {

TEST(RoundedHalfAwayFromZero, RoundsToTheNearestInteger) {
  EXPECT_EQ(roundedHalfAwayFromZero(0.0), 0);
  EXPECT_EQ(roundedHalfAwayFromZero(66.67), 67);
  EXPECT_EQ(roundedHalfAwayFromZero(66.33), 66);
  EXPECT_EQ(roundedHalfAwayFromZero(-66.67), -67);
}

TEST(RoundedHalfAwayFromZero, RoundsHalvesAwayFromZero) {
  EXPECT_EQ(roundedHalfAwayFromZero(12.5), 13);
  EXPECT_EQ(roundedHalfAwayFromZero(13.5), 14);
  EXPECT_EQ(roundedHalfAwayFromZero(-12.5), -13);
}

TEST(RoundedHalfAwayFromZero, RoundsTheDoubleJustBelowAHalfToZero) {
  EXPECT_EQ(roundedHalfAwayFromZero(std::nextafter(0.5, 0.0)), 0);
  EXPECT_EQ(roundedHalfAwayFromZero(std::nextafter(-0.5, 0.0)), 0);
}

TEST(RoundedHalfAwayFromZero, IsExactForLargeDoubles) {
  EXPECT_EQ(roundedHalfAwayFromZero(9007199254740993.0), 9007199254740992);
  EXPECT_EQ(roundedHalfAwayFromZero(-9223372036854775808.0),
            std::numeric_limits<std::int64_t>::min());
}

TEST(RoundedHalfAwayFromZero, ReturnsNothingIfTheResultOverflows64Bits) {
  EXPECT_EQ(roundedHalfAwayFromZero(9223372036854775808.0), std::nullopt);
  EXPECT_EQ(roundedHalfAwayFromZero(-9223372036854777856.0), std::nullopt);
  EXPECT_EQ(roundedHalfAwayFromZero(std::numeric_limits<double>::infinity()), std::nullopt);
  EXPECT_EQ(roundedHalfAwayFromZero(std::numeric_limits<double>::quiet_NaN()), std::nullopt);
}

}  // namespace lumowatt
