#include "render/title.h"

#include <gtest/gtest.h>

#include "render/title_extras.h"

namespace lumowatt {

namespace {

Reading draining() {
  Reading reading;
  reading.percent = 64;
  reading.batteryWatts = -8.34;
  reading.minutes = 135;
  return reading;
}

Reading readingOf(double watts) {
  Reading reading;
  reading.batteryWatts = watts;
  return reading;
}

std::string arrowOf(const Reading& reading) {
  return titleText(reading, noExtras, true).at(1).text;
}

std::optional<Color> colorOf(const Reading& reading, bool colored) {
  return titleText(reading, noExtras, colored).at(1).color;
}

/// Returns the text of the third run, or "none" without a third run.
std::string extrasOf(const Reading& reading, TitleExtras extras) {
  const AttributedString text = titleText(reading, extras, false);
  return text.size() < 3 ? "none" : text[2].text;
}

}  // namespace

TEST(Title, HasRunsForPercentageArrowAndExtras) {
  const AttributedString expected{
      {" 64%", monospacedDigitFont(12.0)},
      {" ▼", systemFont(8.0), Color(SystemColor::label), 1.5},
      {" −8.3 W · 2:15", monospacedDigitFont(12.0)},
  };
  EXPECT_EQ(titleText(draining(), allExtras, false), expected);
}

TEST(Title, HasTwoRunsWithoutExtras) {
  Reading charging;
  charging.percent = 64;
  charging.batteryWatts = 12.0;
  const AttributedString expected{
      {" 64%", monospacedDigitFont(12.0)},
      {" ▲", systemFont(8.0), systemGreen, 1.5},
  };
  EXPECT_EQ(titleText(charging, noExtras, true), expected);
}

TEST(Title, ShowsTheArrowOfTheTrend) {
  EXPECT_EQ(arrowOf(readingOf(-0.3)), " •");
  EXPECT_EQ(arrowOf(readingOf(-0.31)), " ▼");
  EXPECT_EQ(arrowOf(readingOf(0.3)), " •");
  EXPECT_EQ(arrowOf(readingOf(0.31)), " ▲");
}

TEST(Title, ShowsASteadyTrendWhenFullOnPower) {
  Reading reading = readingOf(5.0);
  reading.external = true;
  reading.full = true;
  EXPECT_EQ(arrowOf(reading), " •");
  EXPECT_EQ(colorOf(reading, true), secondaryLabel);
}

TEST(Title, ColorsTheArrowByTheTrend) {
  EXPECT_EQ(colorOf(readingOf(12.0), true), systemGreen);
  EXPECT_EQ(colorOf(readingOf(0.0), true), secondaryLabel);
  EXPECT_EQ(colorOf(readingOf(-5.0), true), secondaryLabel);
}

TEST(Title, ColorsTheArrowOrangeWhenDrainingMoreThanFifteenWatts) {
  EXPECT_EQ(colorOf(readingOf(-15.0), true), secondaryLabel);
  EXPECT_EQ(colorOf(readingOf(-15.01), true), systemOrange);
}

TEST(Title, ShowsTheArrowInTheTextColorWhenColorsAreOff) {
  for (const double watts : {12.0, 0.0, -5.0, -20.0}) {
    EXPECT_EQ(colorOf(readingOf(watts), false), Color(SystemColor::label)) << watts;
  }
}

TEST(Title, ShowsTheRequestedExtras) {
  EXPECT_EQ(extrasOf(draining(), noExtras), "none");
  EXPECT_EQ(extrasOf(draining(), powerExtra), " −8.3 W");
  EXPECT_EQ(extrasOf(draining(), timeExtra), " 2:15");
  EXPECT_EQ(extrasOf(draining(), allExtras), " −8.3 W · 2:15");
}

TEST(Title, OmitsAnUnknownTime) {
  Reading reading = draining();
  reading.minutes.reset();
  EXPECT_EQ(extrasOf(reading, timeExtra), "none");
  EXPECT_EQ(extrasOf(reading, allExtras), " −8.3 W");
}

TEST(Title, FormatsTheTimeAsHoursAndMinutes) {
  const auto clock = [](std::int64_t minutes) {
    Reading reading;
    reading.minutes = minutes;
    return extrasOf(reading, timeExtra);
  };
  EXPECT_EQ(clock(0), " 0:00");
  EXPECT_EQ(clock(5), " 0:05");
  EXPECT_EQ(clock(59), " 0:59");
  EXPECT_EQ(clock(60), " 1:00");
  EXPECT_EQ(clock(95), " 1:35");
  EXPECT_EQ(clock(6000), " 100:00");
}

TEST(Title, FormatsNegativeTimesByTruncatingDivision) {
  Reading reading;
  reading.minutes = -75;
  EXPECT_EQ(extrasOf(reading, timeExtra), " -1:-15");
  reading.minutes = -5;
  EXPECT_EQ(extrasOf(reading, timeExtra), " 0:-5");
  reading.minutes = -60;
  EXPECT_EQ(extrasOf(reading, timeExtra), " -1:00");
}

TEST(Title, ShowsTheSignOfPowersThatRoundToZero) {
  EXPECT_EQ(extrasOf(readingOf(0.04), powerExtra), " +0.0 W");
  EXPECT_EQ(extrasOf(readingOf(-0.04), powerExtra), " −0.0 W");
  EXPECT_EQ(extrasOf(readingOf(0.0), powerExtra), " +0.0 W");
}

}  // namespace lumowatt
