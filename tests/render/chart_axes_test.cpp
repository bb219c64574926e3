#include "render/chart_axes.h"

#include <gtest/gtest.h>

#include <limits>

namespace lumowatt {

namespace {

/// Returns the lowest and the highest percentage of the axis for samples from `low` to `high`.
std::pair<std::int64_t, std::int64_t> ends(std::int64_t low, std::int64_t high) {
  const PercentAxis axis = percentAxis({{0.0, low}, {30.0, high}});
  EXPECT_EQ(axis.highest() - axis.lowest, 5 * axis.step);
  return {axis.lowest, axis.highest()};
}

using Ends = std::pair<std::int64_t, std::int64_t>;

/// Returns the length and the step of the axis for a history of this length. All are in minutes.
std::pair<double, double> period(double minutes) {
  const TimeAxis axis = timeAxis({{100.0, 50}, {100.0 + minutes * 60.0, 50}});
  EXPECT_EQ(axis.end, 100.0 + minutes * 60.0);
  return {(axis.end - axis.start) / 60.0, axis.step / 60.0};
}

using Period = std::pair<double, double>;

}  // namespace

TEST(PercentAxis, SpansAtLeastTenPointsAndCentersAFlatHistory) {
  EXPECT_EQ(ends(77, 77), (Ends{72, 82}));
  EXPECT_EQ(ends(76, 76), (Ends{70, 80}));
  EXPECT_EQ(ends(64, 72), (Ends{62, 72}));
}

TEST(PercentAxis, GrowsWithTheRangeOfTheHistory) {
  EXPECT_EQ(ends(60, 70), (Ends{60, 70}));
  EXPECT_EQ(ends(59, 70), (Ends{50, 75}));
  EXPECT_EQ(ends(41, 74), (Ends{30, 80}));
  EXPECT_EQ(ends(20, 71), (Ends{0, 100}));
}

TEST(PercentAxis, StaysWithinZeroToOneHundred) {
  EXPECT_EQ(ends(0, 0), (Ends{0, 10}));
  EXPECT_EQ(ends(3, 3), (Ends{0, 10}));
  EXPECT_EQ(ends(100, 100), (Ends{90, 100}));
  EXPECT_EQ(ends(0, 100), (Ends{0, 100}));
  EXPECT_EQ(ends(1, 99), (Ends{0, 100}));
}

TEST(PercentAxis, ClampsPercentagesOutsideZeroToOneHundred) {
  using Limits = std::numeric_limits<std::int64_t>;
  EXPECT_EQ(ends(Limits::min(), -1), (Ends{0, 10}));
  EXPECT_EQ(ends(101, Limits::max()), (Ends{90, 100}));
  EXPECT_EQ(ends(Limits::min(), Limits::max()), (Ends{0, 100}));
}

TEST(PercentAxis, SpansEveryPossibleMinimumAndMaximum) {
  for (std::int64_t low = 0; low <= 100; ++low) {
    for (std::int64_t high = low; high <= 100; ++high) {
      const auto [bottom, top] = ends(low, high);
      EXPECT_TRUE(0 <= bottom && bottom <= low && high <= top && top <= 100) << low << " " << high;
    }
  }
}

TEST(TimeAxis, HasTheShortestLengthThatFitsTheHistory) {
  EXPECT_EQ(period(0.0), (Period{5.0, 1.0}));
  EXPECT_EQ(period(5.0), (Period{5.0, 1.0}));
  EXPECT_EQ(period(5.5), (Period{10.0, 2.0}));
  EXPECT_EQ(period(10.5), (Period{30.0, 5.0}));
  EXPECT_EQ(period(30.5), (Period{60.0, 10.0}));
  EXPECT_EQ(period(60.0), (Period{60.0, 10.0}));
}

TEST(TimeAxis, HasTheNextLengthWhenTheHistoryIsSlightlyTooLong) {
  EXPECT_EQ(period(300.00001 / 60.0), (Period{10.0, 2.0}));
  EXPECT_EQ(period(303.0 / 60.0), (Period{10.0, 2.0}));
  EXPECT_EQ(period(600.00001 / 60.0), (Period{30.0, 5.0}));
  EXPECT_EQ(period(1800.0001 / 60.0), (Period{60.0, 10.0}));
}

TEST(TimeAxis, RemainsExactAfterYearsOfUptime) {
  const TimeAxis axis = timeAxis({{99'999'901.0, 50}, {100'000'001.0, 50}});
  EXPECT_EQ(axis.start, 99'999'701.0);
  EXPECT_EQ(axis.end, 100'000'001.0);
  EXPECT_EQ(axis.step, 60.0);
}

TEST(TimeAxis, IsNeverLongerThanAnHour) { EXPECT_EQ(period(61.0), (Period{60.0, 10.0})); }

}  // namespace lumowatt
