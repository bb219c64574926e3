#include "render/block_chart.h"

#include <gtest/gtest.h>

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

TEST(BlockChart, NumbersThatAreNoPercentageHaveTheirPlaceToo) {
  EXPECT_EQ(blockChart({{0, -5}, {1449, -5}, {1451, 250}, {2900, 250}}),
            repeated("▁", 15) + repeated("█", 15) + " -5–250%");
}

}  // namespace lumowatt
