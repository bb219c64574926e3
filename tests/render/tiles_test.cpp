#include "render/tiles.h"

#include <gtest/gtest.h>

#include <limits>

#include "render/title_extras.h"

namespace lumowatt {

namespace {

using Tiles = std::vector<Tile>;

/// Returns a reading with this power into the battery, or out of it if negative.
Reading readingWith(double watts, std::optional<std::int64_t> minutes = 135) {
  Reading reading;
  reading.percent = 64;
  reading.batteryWatts = watts;
  reading.minutes = minutes;
  return reading;
}

/// Returns the lower row of the only tile, which shows the power.
std::string powerOf(double watts) {
  return tiles(readingWith(watts), powerExtra, false).at(0).at(1).text;
}

/// Returns the lower row of the only tile, which shows the time.
std::string timeOf(std::int64_t minutes) {
  return tiles(readingWith(-8.34, minutes), timeExtra, false).at(0).at(1).text;
}

/// Returns a row with a percentage, followed by an arrow or a dot.
TileRow rowWithMark(const char* percent, const char* mark,
                    std::optional<SystemColor> color = std::nullopt) {
  return {.text = percent, .mark = TileMark{mark, color}};
}

}  // namespace

TEST(Tiles, ShowsTheArrowBelowThePercentage) {
  EXPECT_EQ(tiles(readingWith(-8.34), noExtras, false), (Tiles{{{"64%"}, {"▼"}}}));
  EXPECT_EQ(tiles(readingWith(8.34), noExtras, false), (Tiles{{{"64%"}, {"▲"}}}));
  EXPECT_EQ(tiles(readingWith(0.3), noExtras, false), (Tiles{{{"64%"}, {"•"}}}));
}

TEST(Tiles, ShowsThePowerBelowThePercentage) {
  EXPECT_EQ(tiles(readingWith(-8.34), powerExtra, false), (Tiles{{{"64%"}, {"−8.3"}}}));
}

TEST(Tiles, ShowsTheTimeBelowThePercentageAndTheArrow) {
  EXPECT_EQ(tiles(readingWith(-8.34), timeExtra, false),
            (Tiles{{rowWithMark("64", "▼"), {"2:15"}}}));
  EXPECT_EQ(tiles(readingWith(8.34), timeExtra, false),
            (Tiles{{rowWithMark("64", "▲"), {"2:15"}}}));
  EXPECT_EQ(tiles(readingWith(0.3), timeExtra, false), (Tiles{{rowWithMark("64", "•"), {"2:15"}}}));
}

TEST(Tiles, ShowsBothExtrasInASecondTile) {
  EXPECT_EQ(tiles(readingWith(-8.34), allExtras, false),
            (Tiles{{{"64%"}, {"▼"}}, {{"−8.3"}, {"2:15"}}}));
}

TEST(Tiles, OmitsTheTimeWithoutAnEstimate) {
  const Reading reading = readingWith(-8.34, std::nullopt);
  EXPECT_EQ(tiles(reading, timeExtra, false), (Tiles{{{"64%"}, {"▼"}}}));
  EXPECT_EQ(tiles(reading, allExtras, false), (Tiles{{{"64%"}, {"▼"}}, {{"−8.3"}}}));
}

TEST(Tiles, ContainsEquallyManyTilesWithAndWithoutAnEstimate) {
  for (const TitleExtras extras : {noExtras, powerExtra, timeExtra, allExtras}) {
    EXPECT_EQ(tiles(readingWith(-8.34), extras, false).size(),
              tiles(readingWith(-8.34, std::nullopt), extras, false).size());
  }
}

TEST(Tiles, ShowsAFullBatteryAtOneHundredPercent) {
  Reading reading = readingWith(0.0);
  reading.percent = 100;
  reading.external = true;
  reading.full = true;
  EXPECT_EQ(tiles(reading, noExtras, true), (Tiles{{{"100%"}, {"•"}}}));
  EXPECT_EQ(tiles(reading, powerExtra, true), (Tiles{{{"100%"}, {"+0.0"}}}));
}

TEST(Tiles, ShowsAnyPercentage) {
  for (const std::int64_t percent : {-5, 0, 7, 250}) {
    Reading reading = readingWith(-8.34);
    reading.percent = percent;
    EXPECT_EQ(tiles(reading, powerExtra, false).at(0).at(0).text, std::to_string(percent) + "%");
  }
}

TEST(Tiles, ShowsTheSignOfPowersThatRoundToZero) {
  EXPECT_EQ(powerOf(-0.04), "−0.0");
  EXPECT_EQ(powerOf(0.04), "+0.0");
  EXPECT_EQ(powerOf(12.34), "+12.3");
}

TEST(Tiles, OmitsTheDecimalOfPowersWithThreeDigits) {
  EXPECT_EQ(powerOf(-99.94), "−99.9");
  EXPECT_EQ(powerOf(-99.96), "−100");
  EXPECT_EQ(powerOf(123.4), "+123");
  EXPECT_EQ(powerOf(-1234.5), "−1234");
}

TEST(Tiles, ShowsTheArrowWithTimesOfAnyLength) {
  EXPECT_EQ(tiles(readingWith(-8.34, 645), timeExtra, false),
            (Tiles{{rowWithMark("64", "▼"), {"10:45"}}}));
  EXPECT_EQ(timeOf(599), "9:59");
  EXPECT_EQ(timeOf(600), "10:00");
  EXPECT_EQ(timeOf(5), "0:05");
  EXPECT_EQ(timeOf(6005), "100:05");
}

TEST(Tiles, FormatsANegativeTimeLikeTheTitle) { EXPECT_EQ(timeOf(-75), "-1:-15"); }

TEST(Tiles, ColorsTheTrendGreenWhileCharging) {
  constexpr auto green = SystemColor::green;
  const Reading reading = readingWith(12.0);
  EXPECT_EQ(tiles(reading, noExtras, true), (Tiles{{{"64%"}, {"▲", green}}}));
  EXPECT_EQ(tiles(reading, powerExtra, true), (Tiles{{{"64%"}, {"+12.0", green}}}));
  EXPECT_EQ(tiles(reading, timeExtra, true), (Tiles{{rowWithMark("64", "▲", green), {"2:15"}}}));
  EXPECT_EQ(tiles(reading, allExtras, true),
            (Tiles{{{"64%"}, {"▲", green}}, {{"+12.0", green}, {"2:15"}}}));
}

TEST(Tiles, ColorsTheTrendOrangeWhenDrainingMoreThanFifteenWatts) {
  EXPECT_EQ(tiles(readingWith(-15.01), powerExtra, true),
            (Tiles{{{"64%"}, {"−15.0", SystemColor::orange}}}));
  EXPECT_EQ(tiles(readingWith(-15.01), timeExtra, true),
            (Tiles{{rowWithMark("64", "▼", SystemColor::orange), {"2:15"}}}));
  EXPECT_EQ(tiles(readingWith(-15.0), powerExtra, true), (Tiles{{{"64%"}, {"−15.0"}}}));
}

TEST(Tiles, ContainsNoColorsWhenColorsAreOff) {
  for (const TitleExtras extras : {noExtras, powerExtra, timeExtra, allExtras}) {
    for (const double watts : {12.0, -20.0, 0.0}) {
      for (const Tile& tile : tiles(readingWith(watts), extras, false)) {
        for (const TileRow& row : tile) {
          EXPECT_FALSE(row.color) << row.text;
          EXPECT_FALSE(row.mark && row.mark->color) << row.text;
        }
      }
    }
  }
}

}  // namespace lumowatt
