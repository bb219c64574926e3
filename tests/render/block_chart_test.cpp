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

TEST(BlockChart, ShowsAPlaceholderWhenSamplesSpanNoTime) {
  EXPECT_EQ(blockChart({}), "Collecting history…");
  EXPECT_EQ(blockChart({{5, 50}}), "Collecting history…");
  EXPECT_EQ(blockChart({{5, 50}, {5, 60}}), "Collecting history…");
  EXPECT_EQ(blockChart({{60, 50}, {0, 60}}), "Collecting history…");
}

TEST(BlockChart, DrawsAFlatHistoryAtTheBottom) {
  EXPECT_EQ(blockChart({{0, 77}, {3600, 77}}), repeated("▁", 30) + " 77%");
}

TEST(BlockChart, DrawsARisingChargeInEightLevels) {
  // The percentages rise from 0 to 29 in 30 columns. Column i therefore shows i %, which is level
  // round(7 i / 29).
  EXPECT_EQ(blockChart({{0, 0}, {2900, 29}}), "▁▁▁▂▂▂▂▃▃▃▃▄▄▄▄▅▅▅▅▆▆▆▆▇▇▇▇███ 0–29%");
}

TEST(BlockChart, DrawsAFallingChargeInEightLevels) {
  EXPECT_EQ(blockChart({{0, 80}, {2900, 20}}), "███▇▇▇▇▆▆▆▆▅▅▅▅▄▄▄▄▃▃▃▃▂▂▂▂▁▁▁ 20–80%");
}

TEST(BlockChart, DrawsAnAlmostFlatHistoryLow) {
  // The vertical scale spans 4 percentage points, so that 51 % is at a quarter of the height, which
  // is level 1.75. Halfway in time, the charge is at level 0.875.
  const std::string chart = blockChart({{0, 50}, {2900, 51}});
  EXPECT_EQ(chart, repeated("▁", 9) + repeated("▂", 16) + repeated("▃", 5) + " 50–51%");
}

TEST(BlockChart, DrawsAStepAtItsTime) {
  EXPECT_EQ(blockChart({{0, 10}, {1449, 10}, {1451, 90}, {2900, 90}}),
            repeated("▁", 15) + repeated("█", 15) + " 10–90%");
}

TEST(BlockChart, UsesTheLastOfTwoSamplesWithTheSameTime) {
  EXPECT_EQ(blockChart({{0, 10}, {1400, 10}, {1400, 90}, {2900, 90}}),
            repeated("▁", 14) + repeated("█", 16) + " 10–90%");
  EXPECT_EQ(blockChart({{0, 90}, {0, 10}, {2900, 10}, {2900, 90}}), repeated("▁", 29) + "█ 10–90%");
}

TEST(BlockChart, EndsExactlyAtTheLastSample) {
  // As a double, 31 / 29 is rounded down: 29 times the rounded value is less than 31.
  EXPECT_EQ(blockChart({{0, 10}, {std::nextafter(31.0, 0.0), 10}, {31, 90}}),
            repeated("▁", 29) + "█ 10–90%");
}

TEST(BlockChart, RoundsHalfwayHeightsUpToTheNextLevel) {
  // The columns are 100 seconds apart. Up to the second sample, each column is half a level above
  // the previous one, so that every second column is halfway between two levels.
  EXPECT_EQ(blockChart({{1000, 0}, {2000, 10}, {3900, 14}}),
            "▁▂▂▃▃▄▄▅▅▆▆▆▆▆▆▇▇▇▇▇▇▇▇▇▇█████ 0–14%");
  EXPECT_EQ(blockChart({{0, 0}, {1400, 10}, {2900, 10}}), "▁▂▂▃▃▄▄▅▅▆▆▇▇█████████████████ 0–10%");
  // If the second sample is slightly later, these columns are just below the halfway points and are
  // rounded down.
  EXPECT_EQ(blockChart({{0, 0}, {1400.0000001, 10}, {2900, 10}}),
            "▁▁▂▂▃▃▄▄▅▅▆▆▇▇████████████████ 0–10%");
}

TEST(BlockChart, RemainsExactAfterYearsOfUptime) {
  const double start = 100'000'001.0;  // seconds, about three years
  EXPECT_EQ(blockChart({{start, 10}, {start + 1399, 10}, {start + 1400, 90}, {start + 2900, 90}}),
            repeated("▁", 14) + repeated("█", 16) + " 10–90%");
}

TEST(BlockChart, DrawsPercentagesTooLargeForADoubleAtTheBottom) {
  const std::int64_t most = std::numeric_limits<std::int64_t>::max();
  EXPECT_EQ(blockChart({{0, most}, {2900, most}}), repeated("▁", 30) + " 9223372036854775807%");
}

TEST(BlockChart, AcceptsPercentagesOutsideZeroToOneHundred) {
  EXPECT_EQ(blockChart({{0, -5}, {1449, -5}, {1451, 250}, {2900, 250}}),
            repeated("▁", 15) + repeated("█", 15) + " -5–250%");
}

}  // namespace lumowatt
