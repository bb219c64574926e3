#include "render/block_chart.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace lumowatt {

namespace {

std::string repeated(const std::string& text, int times) {
  std::string result;
  for (int i = 0; i < times; ++i) result += text;
  return result;
}

}  // namespace

TEST(BlockChart, WithoutAHistorySaysThatItIsBeingCollected) {
  EXPECT_EQ(blockChart({}), "Collecting history…");
  EXPECT_EQ(blockChart({{5, 50}}), "Collecting history…");
  EXPECT_EQ(blockChart({{5, 50}, {5, 60}}), "Collecting history…");
  EXPECT_EQ(blockChart({{60, 50}, {0, 60}}), "Collecting history…");
}

TEST(BlockChart, OfAFlatHistoryLiesAtTheBottom) {
  EXPECT_EQ(blockChart({{0, 77}, {3600, 77}}), repeated("▁", 30) + " 77%");
}

TEST(BlockChart, RisesInEightLevels) {
  // From 0 to 29 over 30 columns, column i is at i of 29: level round(7 i / 29).
  EXPECT_EQ(blockChart({{0, 0}, {2900, 29}}), "▁▁▁▂▂▂▂▃▃▃▃▄▄▄▄▅▅▅▅▆▆▆▆▇▇▇▇███ 0–29%");
}

TEST(BlockChart, FallsAsWell) {
  EXPECT_EQ(blockChart({{0, 80}, {2900, 20}}), "███▇▇▇▇▆▆▆▆▅▅▅▅▄▄▄▄▃▃▃▃▂▂▂▂▁▁▁ 20–80%");
}

TEST(BlockChart, OfAnAlmostFlatHistoryLiesLow) {
  // One point of four: a quarter of the height is level 1.75, the middle 0.875.
  const std::string chart = blockChart({{0, 50}, {2900, 51}});
  EXPECT_EQ(chart, repeated("▁", 9) + repeated("▂", 16) + repeated("▃", 5) + " 50–51%");
}

TEST(BlockChart, AStepStandsWhereItsTimeIs) {
  EXPECT_EQ(blockChart({{0, 10}, {1449, 10}, {1451, 90}, {2900, 90}}),
            repeated("▁", 15) + repeated("█", 15) + " 10–90%");
}

TEST(BlockChart, OfTwoSamplesAtATimeTheLastCounts) {
  EXPECT_EQ(blockChart({{0, 10}, {1400, 10}, {1400, 90}, {2900, 90}}),
            repeated("▁", 14) + repeated("█", 16) + " 10–90%");
  EXPECT_EQ(blockChart({{0, 90}, {0, 10}, {2900, 10}, {2900, 90}}), repeated("▁", 29) + "█ 10–90%");
}

TEST(BlockChart, EndsAtTheLastSampleExactly) {
  // A 29th of 31 is no number of a computer's: 29 times what stands for it are less than 31.
  EXPECT_EQ(blockChart({{0, 10}, {std::nextafter(31.0, 0.0), 10}, {31, 90}}),
            repeated("▁", 29) + "█ 10–90%");
}

TEST(BlockChart, RisesFromALevelToTheNextHalfWayBetweenThem) {
  // The columns are 100 seconds apart, and each is half a level above the one before it, until the
  // second sample: every second one is half way between two levels.
  EXPECT_EQ(blockChart({{1000, 0}, {2000, 10}, {3900, 14}}),
            "▁▂▂▃▃▄▄▅▅▆▆▆▆▆▆▇▇▇▇▇▇▇▇▇▇█████ 0–14%");
  EXPECT_EQ(blockChart({{0, 0}, {1400, 10}, {2900, 10}}), "▁▂▂▃▃▄▄▅▅▆▆▇▇█████████████████ 0–10%");
  // The same a trace later.
  EXPECT_EQ(blockChart({{0, 0}, {1400.0000001, 10}, {2900, 10}}),
            "▁▁▂▂▃▃▄▄▅▅▆▆▇▇████████████████ 0–10%");
}

TEST(BlockChart, AfterYearsOfRunningIsAsExactAsAtTheStart) {
  const double start = 100'000'001.0;  // three years
  EXPECT_EQ(blockChart({{start, 10}, {start + 1399, 10}, {start + 1400, 90}, {start + 2900, 90}}),
            repeated("▁", 14) + repeated("█", 16) + " 10–90%");
}

TEST(BlockChart, OfNumbersTooLargeToTellApartLiesAtTheBottom) {
  const std::int64_t most = std::numeric_limits<std::int64_t>::max();
  EXPECT_EQ(blockChart({{0, most}, {2900, most}}), repeated("▁", 30) + " 9223372036854775807%");
}

TEST(BlockChart, NumbersThatAreNoPercentageHaveTheirPlaceToo) {
  EXPECT_EQ(blockChart({{0, -5}, {1449, -5}, {1451, 250}, {2900, 250}}),
            repeated("▁", 15) + repeated("█", 15) + " -5–250%");
}

}  // namespace lumowatt
