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

std::string arrowOf(const Reading& reading) { return titleText(reading, nothing, true).at(1).text; }

std::optional<Color> colorOf(const Reading& reading, bool colored) {
  return titleText(reading, nothing, colored).at(1).color;
}

/// The third run; "none" when there is none.
std::string extrasOf(const Reading& reading, TitleExtras extras) {
  const AttributedString text = titleText(reading, extras, false);
  return text.size() < 3 ? "none" : text[2].text;
}

}  // namespace

TEST(Title, HasThreeRunsInTheirFonts) {
  const AttributedString expected{
      {" 64%", monospacedDigitFont(12.0)},
      {" ▼", systemFont(8.0), Color(SystemColor::label), 1.5},
      {" −8.3 W · 2:15", monospacedDigitFont(12.0)},
  };
  EXPECT_EQ(titleText(draining(), all, false), expected);
}

TEST(Title, WithoutExtrasHasTwoRuns) {
  Reading charging;
  charging.percent = 64;
  charging.batteryWatts = 12.0;
  const AttributedString expected{
      {" 64%", monospacedDigitFont(12.0)},
      {" ▲", systemFont(8.0), systemGreen, 1.5},
  };
  EXPECT_EQ(titleText(charging, nothing, true), expected);
}

TEST(Title, TheArrowFollowsTheTrend) {
  EXPECT_EQ(arrowOf(readingOf(-0.3)), " •");
  EXPECT_EQ(arrowOf(readingOf(-0.31)), " ▼");
  EXPECT_EQ(arrowOf(readingOf(0.3)), " •");
  EXPECT_EQ(arrowOf(readingOf(0.31)), " ▲");
}

TEST(Title, FullOnPowerIsSteadyWhateverFlows) {
  Reading reading = readingOf(5.0);
  reading.external = true;
  reading.full = true;
  EXPECT_EQ(arrowOf(reading), " •");
  EXPECT_EQ(colorOf(reading, true), secondaryLabel);
}

TEST(Title, TheArrowIsColoredByTheTrend) {
  EXPECT_EQ(colorOf(readingOf(12.0), true), systemGreen);
  EXPECT_EQ(colorOf(readingOf(0.0), true), secondaryLabel);
  EXPECT_EQ(colorOf(readingOf(-5.0), true), secondaryLabel);
}

TEST(Title, TheArrowTurnsOrangeBeyondFifteenWatts) {
  EXPECT_EQ(colorOf(readingOf(-15.0), true), secondaryLabel);
  EXPECT_EQ(colorOf(readingOf(-15.01), true), systemOrange);
}

TEST(Title, WithoutColorsTheArrowHasTheColorOfText) {
  for (const double watts : {12.0, 0.0, -5.0, -20.0}) {
    EXPECT_EQ(colorOf(readingOf(watts), false), Color(SystemColor::label)) << watts;
  }
}

TEST(Title, ShowsTheExtrasThatAreAskedFor) {
  EXPECT_EQ(extrasOf(draining(), nothing), "none");
  EXPECT_EQ(extrasOf(draining(), power), " −8.3 W");
  EXPECT_EQ(extrasOf(draining(), time), " 2:15");
  EXPECT_EQ(extrasOf(draining(), all), " −8.3 W · 2:15");
}

TEST(Title, LeavesOutATimeThatIsNotKnown) {
  Reading reading = draining();
  reading.minutes.reset();
  EXPECT_EQ(extrasOf(reading, time), "none");
  EXPECT_EQ(extrasOf(reading, all), " −8.3 W");
}

TEST(Title, WritesTheTimeAsOnAClock) {
  const auto clock = [](std::int64_t minutes) {
    Reading reading;
    reading.minutes = minutes;
    return extrasOf(reading, time);
  };
  EXPECT_EQ(clock(0), " 0:00");
  EXPECT_EQ(clock(5), " 0:05");
  EXPECT_EQ(clock(59), " 0:59");
  EXPECT_EQ(clock(60), " 1:00");
  EXPECT_EQ(clock(95), " 1:35");
  EXPECT_EQ(clock(6000), " 100:00");
}

TEST(Title, WritesNegativeMinutesAsTheyDivide) {
  Reading reading;
  reading.minutes = -75;
  EXPECT_EQ(extrasOf(reading, time), " -1:-15");
  reading.minutes = -5;
  EXPECT_EQ(extrasOf(reading, time), " 0:-5");
  reading.minutes = -60;
  EXPECT_EQ(extrasOf(reading, time), " -1:00");
}

TEST(Title, TheSignFollowsTheValueNotItsText) {
  EXPECT_EQ(extrasOf(readingOf(0.04), power), " +0.0 W");
  EXPECT_EQ(extrasOf(readingOf(-0.04), power), " −0.0 W");
  EXPECT_EQ(extrasOf(readingOf(0.0), power), " +0.0 W");
}

}  // namespace lumowatt
