#include "render/tiles.h"

#include <gtest/gtest.h>

#include <limits>

#include "render/title_extras.h"

namespace lumowatt {

namespace {

using Tiles = std::vector<Tile>;

Reading flowing(double watts, std::optional<std::int64_t> minutes = 135) {
  Reading reading;
  reading.percent = 64;
  reading.batteryWatts = watts;
  reading.minutes = minutes;
  return reading;
}

/// The lower row of the one tile, which tells the power.
std::string powerOf(double watts) { return tiles(flowing(watts), power, false).at(0).at(1).text; }

/// The lower row of the one tile, which tells the time.
std::string timeOf(std::int64_t minutes) {
  return tiles(flowing(-8.34, minutes), time, false).at(0).at(1).text;
}

TileRow marked(const char* percent, const char* mark,
               std::optional<SystemColor> color = std::nullopt) {
  return {.text = percent, .mark = TileMark{mark, color}};
}

}  // namespace

TEST(Tiles, OfThePercentageHaveAnArrowBelow) {
  EXPECT_EQ(tiles(flowing(-8.34), nothing, false), (Tiles{{{"64%"}, {"▼"}}}));
  EXPECT_EQ(tiles(flowing(8.34), nothing, false), (Tiles{{{"64%"}, {"▲"}}}));
  EXPECT_EQ(tiles(flowing(0.3), nothing, false), (Tiles{{{"64%"}, {"•"}}}));
}

TEST(Tiles, OfPercentageAndPowerHaveThePowerBelow) {
  EXPECT_EQ(tiles(flowing(-8.34), power, false), (Tiles{{{"64%"}, {"−8.3"}}}));
}

TEST(Tiles, OfPercentageAndTimeHaveTheTimeBelowAndTheArrowBesideThePercentage) {
  EXPECT_EQ(tiles(flowing(-8.34), time, false), (Tiles{{marked("64", "▼"), {"2:15"}}}));
  EXPECT_EQ(tiles(flowing(8.34), time, false), (Tiles{{marked("64", "▲"), {"2:15"}}}));
  EXPECT_EQ(tiles(flowing(0.3), time, false), (Tiles{{marked("64", "•"), {"2:15"}}}));
}

TEST(Tiles, OfEverythingAreTwo) {
  EXPECT_EQ(tiles(flowing(-8.34), all, false), (Tiles{{{"64%"}, {"▼"}}, {{"−8.3"}, {"2:15"}}}));
}

TEST(Tiles, WithoutAnEstimateHaveNoTime) {
  const Reading reading = flowing(-8.34, std::nullopt);
  EXPECT_EQ(tiles(reading, time, false), (Tiles{{{"64%"}, {"▼"}}}));
  EXPECT_EQ(tiles(reading, all, false), (Tiles{{{"64%"}, {"▼"}}, {{"−8.3"}}}));
}

TEST(Tiles, AreAsManyWithAndWithoutAnEstimate) {
  for (const TitleExtras extras : {nothing, power, time, all}) {
    EXPECT_EQ(tiles(flowing(-8.34), extras, false).size(),
              tiles(flowing(-8.34, std::nullopt), extras, false).size());
  }
}

TEST(Tiles, AFullBatteryIsAtOneHundredPercent) {
  Reading reading = flowing(0.0);
  reading.percent = 100;
  reading.external = true;
  reading.full = true;
  EXPECT_EQ(tiles(reading, nothing, true), (Tiles{{{"100%"}, {"•"}}}));
  EXPECT_EQ(tiles(reading, power, true), (Tiles{{{"100%"}, {"+0.0"}}}));
}

TEST(Tiles, AnyPercentageIsShown) {
  for (const std::int64_t percent : {-5, 0, 7, 250}) {
    Reading reading = flowing(-8.34);
    reading.percent = percent;
    EXPECT_EQ(tiles(reading, power, false).at(0).at(0).text, std::to_string(percent) + "%");
  }
}

TEST(Tiles, ThePowersSignFollowsTheValueAndNotItsDigits) {
  EXPECT_EQ(powerOf(-0.04), "−0.0");
  EXPECT_EQ(powerOf(0.04), "+0.0");
  EXPECT_EQ(powerOf(12.34), "+12.3");
}

TEST(Tiles, PowersOfThreeDigitsHaveNoDecimal) {
  EXPECT_EQ(powerOf(-99.94), "−99.9");
  EXPECT_EQ(powerOf(-99.96), "−100");
  EXPECT_EQ(powerOf(123.4), "+123");
  EXPECT_EQ(powerOf(-1234.5), "−1234");
}

TEST(Tiles, TimesOfAnyLengthLeaveTheArrowItsPlace) {
  EXPECT_EQ(tiles(flowing(-8.34, 645), time, false), (Tiles{{marked("64", "▼"), {"10:45"}}}));
  EXPECT_EQ(timeOf(599), "9:59");
  EXPECT_EQ(timeOf(600), "10:00");
  EXPECT_EQ(timeOf(5), "0:05");
  EXPECT_EQ(timeOf(6005), "100:05");
}

TEST(Tiles, ANegativeTimeIsAsInTheTitle) { EXPECT_EQ(timeOf(-75), "-1:-15"); }

TEST(Tiles, WhatTellsTheTrendIsGreenWhileCharging) {
  constexpr auto green = SystemColor::green;
  const Reading reading = flowing(12.0);
  EXPECT_EQ(tiles(reading, nothing, true), (Tiles{{{"64%"}, {"▲", green}}}));
  EXPECT_EQ(tiles(reading, power, true), (Tiles{{{"64%"}, {"+12.0", green}}}));
  EXPECT_EQ(tiles(reading, time, true), (Tiles{{marked("64", "▲", green), {"2:15"}}}));
  EXPECT_EQ(tiles(reading, all, true),
            (Tiles{{{"64%"}, {"▲", green}}, {{"+12.0", green}, {"2:15"}}}));
}

TEST(Tiles, WhatTellsTheTrendIsOrangeBeyondFifteenWattsOutOfTheBattery) {
  EXPECT_EQ(tiles(flowing(-15.01), power, true),
            (Tiles{{{"64%"}, {"−15.0", SystemColor::orange}}}));
  EXPECT_EQ(tiles(flowing(-15.01), time, true),
            (Tiles{{marked("64", "▼", SystemColor::orange), {"2:15"}}}));
  EXPECT_EQ(tiles(flowing(-15.0), power, true), (Tiles{{{"64%"}, {"−15.0"}}}));
}

TEST(Tiles, WithoutColorsAreTemplates) {
  for (const TitleExtras extras : {nothing, power, time, all}) {
    for (const double watts : {12.0, -20.0, 0.0}) {
      for (const Tile& tile : tiles(flowing(watts), extras, false)) {
        for (const TileRow& row : tile) {
          EXPECT_FALSE(row.color) << row.text;
          EXPECT_FALSE(row.mark && row.mark->color) << row.text;
        }
      }
    }
  }
}

}  // namespace lumowatt
