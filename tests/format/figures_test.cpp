#include "format/figures.h"

#include <gtest/gtest.h>

#include <limits>

#include "support/locale.h"

namespace lumowatt {

namespace {

Reading powered(bool external, bool charging, bool full, const std::string& adapterName = "") {
  Reading reading;
  reading.external = external;
  reading.charging = charging;
  reading.full = full;
  reading.adapterName = adapterName;
  return reading;
}

Reading onBatteryAt(std::int64_t percent) {
  Reading reading;
  reading.percent = percent;
  return reading;
}

constexpr bool yes = true;
constexpr bool no = false;
const std::string brick = "30W USB-C Power Adapter";

}  // namespace

TEST(Duration, IsCalculatingWithoutAnEstimate) { EXPECT_EQ(duration(std::nullopt), "calculating"); }

TEST(Duration, PrintsOnlyMinutesBelowOneHour) {
  EXPECT_EQ(duration(45), "45 min");
  EXPECT_EQ(duration(59), "59 min");
  EXPECT_EQ(duration(0), "0 min");
  EXPECT_EQ(duration(-5), "-5 min");
}

TEST(Duration, PrintsHoursAndUnpaddedMinutesFromOneHour) {
  EXPECT_EQ(duration(60), "1 h 0 min");
  EXPECT_EQ(duration(61), "1 h 1 min");
  EXPECT_EQ(duration(125), "2 h 5 min");
  EXPECT_EQ(duration(1439), "23 h 59 min");
  EXPECT_EQ(duration(std::numeric_limits<std::int64_t>::max()), "153722867280912930 h 7 min");
}

TEST(Watts, PrintsTheSignBeforeTheMagnitudeIfSigned) {
  EXPECT_EQ(watts(12.34, true), "+12.3 W");
  EXPECT_EQ(watts(-7.06, true), "−7.1 W");
  EXPECT_EQ(watts(-3.26, true), "\u22123.3 W") << "U+2212, not a hyphen";
}

TEST(Watts, PrintsOnlyTheMagnitudeIfUnsigned) {
  EXPECT_EQ(watts(-7.06, false), "7.1 W");
  EXPECT_EQ(watts(-3.26, false), "3.3 W");
  EXPECT_EQ(watts(12.34, false), "12.3 W");
}

TEST(Watts, PrintsAPlusSignForZeroAndNegativeZero) {
  EXPECT_EQ(watts(0.0, true), "+0.0 W");
  EXPECT_EQ(watts(-0.0, true), "+0.0 W");
}

TEST(Watts, PreservesTheSignOfANegativeValueThatRoundsToZero) {
  EXPECT_EQ(watts(-0.04, true), "−0.0 W");
}

using WattsInGermanLocale = InGermanLocale;

TEST_F(WattsInGermanLocale, PrintsADecimalPoint) { EXPECT_EQ(watts(-1234.56, true), "−1234.6 W"); }

TEST(StatusLine, ReportsFullOnPowerEvenWhileCharging) {
  EXPECT_EQ(statusLine(powered(yes, no, yes)), "Fully charged, on power");
  EXPECT_EQ(statusLine(powered(yes, yes, yes, brick)), "Fully charged, on power");
}

TEST(StatusLine, ReportsChargingOnTheNamedAdapter) {
  EXPECT_EQ(statusLine(powered(yes, yes, no, brick)), "Charging on 30W USB-C Power Adapter");
  EXPECT_EQ(statusLine(powered(yes, yes, no)), "Charging");
}

TEST(StatusLine, OmitsTheAdapterOnBattery) {
  EXPECT_EQ(statusLine(powered(no, no, no)), "On battery");
  EXPECT_EQ(statusLine(powered(no, no, no, brick)), "On battery");
}

TEST(StatusLine, IgnoresFullWithoutExternalPower) {
  EXPECT_EQ(statusLine(powered(no, no, yes)), "On battery");
  EXPECT_EQ(statusLine(powered(no, yes, yes, brick)), "Charging on 30W USB-C Power Adapter");
}

TEST(StatusLine, ReportsTheAdapterInParenthesesWhenNotCharging) {
  EXPECT_EQ(statusLine(powered(yes, no, no, brick)),
            "On power, not charging (30W USB-C Power Adapter)");
  EXPECT_EQ(statusLine(powered(yes, no, no)), "On power, not charging");
}

TEST(Arrow, PointsInTheDirectionOfTheTrend) {
  EXPECT_EQ(arrow(Trend::up), "\u25B2");
  EXPECT_EQ(arrow(Trend::down), "\u25BC");
  EXPECT_EQ(arrow(Trend::steady), "\u2022");
}

TEST(Accent, IsGreenWhileCharging) {
  Reading reading = powered(no, yes, no);
  reading.percent = 5;
  EXPECT_EQ(accent(reading), systemGreen);
  EXPECT_EQ(accent(powered(yes, yes, yes)), systemGreen);
}

TEST(Accent, IsGreenWhenFullOnPower) { EXPECT_EQ(accent(powered(yes, no, yes)), systemGreen); }

TEST(Accent, IsEmptyOnPowerWhenNotChargingEvenAt5Percent) {
  Reading reading = powered(yes, no, no);
  reading.percent = 5;
  EXPECT_EQ(accent(reading), std::nullopt);
}

TEST(Accent, IsRedOnBatteryUpTo10Percent) {
  EXPECT_EQ(accent(onBatteryAt(10)), systemRed);
  EXPECT_EQ(accent(onBatteryAt(0)), systemRed);
  EXPECT_EQ(accent(onBatteryAt(-1)), systemRed);
}

TEST(Accent, IsOrangeOnBatteryFrom11To20Percent) {
  EXPECT_EQ(accent(onBatteryAt(11)), systemOrange);
  EXPECT_EQ(accent(onBatteryAt(20)), systemOrange);
}

TEST(Accent, IsEmptyOnBatteryFrom21Percent) {
  EXPECT_EQ(accent(onBatteryAt(21)), std::nullopt);
  EXPECT_EQ(accent(onBatteryAt(100)), std::nullopt);
}

TEST(Accent, IgnoresFullWithoutExternalPower) {
  Reading reading = powered(no, no, yes);
  reading.percent = 15;
  EXPECT_EQ(accent(reading), systemOrange);
}

TEST(Clock, PrintsMinutesWithTwoDigits) {
  EXPECT_EQ(clock(95), "1:35");
  EXPECT_EQ(clock(5), "0:05");
  EXPECT_EQ(clock(0), "0:00");
  EXPECT_EQ(clock(614), "10:14");
}

TEST(Clock, PadsOnlyMinutesBelow10) {
  EXPECT_EQ(clock(69), "1:09");
  EXPECT_EQ(clock(70), "1:10");
  EXPECT_EQ(clock(71), "1:11");
}

TEST(Clock, StartsANewHourEvery60Minutes) {
  EXPECT_EQ(clock(59), "0:59");
  EXPECT_EQ(clock(60), "1:00");
  EXPECT_EQ(clock(6000), "100:00");
}

TEST(Clock, PrintsNegativeTimesWithTwoMinusSignsAndWithoutPadding) {
  EXPECT_EQ(clock(-75), "-1:-15");
  EXPECT_EQ(clock(-61), "-1:-1");
}

TEST(TrendAccent, IsGreenWhileChargingAndOrangeBeyond15WattsDischarge) {
  const auto accentOf = [](double watts) {
    Reading reading;
    reading.batteryWatts = watts;
    return trendAccent(reading);
  };
  EXPECT_EQ(accentOf(0.31), SystemColor::green);
  EXPECT_EQ(accentOf(0.3), std::nullopt);
  EXPECT_EQ(accentOf(-15.0), std::nullopt);
  EXPECT_EQ(accentOf(-15.01), SystemColor::orange);
  EXPECT_EQ(accentOf(std::numeric_limits<double>::quiet_NaN()), std::nullopt);
}

TEST(TrendAccent, IsEmptyAtAnyPowerIfFullOnExternalPower) {
  Reading reading = powered(yes, no, yes);
  reading.batteryWatts = -25.0;
  EXPECT_EQ(trendAccent(reading), std::nullopt);
  reading.batteryWatts = 25.0;
  EXPECT_EQ(trendAccent(reading), std::nullopt);
}

}  // namespace lumowatt
