#include "telemetry/reading.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <unordered_set>

namespace lumowatt {

namespace {

constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();

Reading withPower(double batteryWatts, bool external = false, bool full = false) {
  Reading reading;
  reading.batteryWatts = batteryWatts;
  reading.external = external;
  reading.full = full;
  return reading;
}

Reading withCurrent(double batteryAmps, std::int64_t rawMax) {
  Reading reading;
  reading.batteryAmps = batteryAmps;
  reading.rawMax = rawMax;
  return reading;
}

}  // namespace

TEST(Reading, HasUnknownValuesAndASteadyTrendByDefault) {
  const Reading reading;
  EXPECT_EQ(trend(reading), Trend::steady);
  EXPECT_EQ(percentPerHour(reading), std::nullopt);
  EXPECT_EQ(reading.percent, 0);
  EXPECT_EQ(reading.rawCurrent, 0);
  EXPECT_EQ(reading.rawMax, 0);
  EXPECT_EQ(reading.design, 0);
  EXPECT_EQ(reading.nominal, 0);
  EXPECT_EQ(reading.cycles, 0);
  EXPECT_EQ(reading.batteryVolts, 0.0);
  EXPECT_EQ(reading.batteryAmps, 0.0);
  EXPECT_FALSE(reading.external);
  EXPECT_FALSE(reading.charging);
  EXPECT_FALSE(reading.full);
  EXPECT_EQ(reading.minutes, std::nullopt);
  EXPECT_EQ(reading.adapterName, "");
  EXPECT_EQ(reading.adapterWatts, 0);
  EXPECT_EQ(reading.wallVolts, 0.0);
  EXPECT_EQ(reading.wallAmps, 0.0);
  EXPECT_EQ(reading.wallWatts, 0.0);
  EXPECT_EQ(reading.systemWatts, 0.0);
  EXPECT_EQ(reading.batteryWatts, 0.0);
  EXPECT_EQ(reading.temperatureC, std::nullopt);
}

TEST(Reading, SupportsAggregateInitializationInFieldOrder) {
  const Reading reading{1,    2,  3,          4,  5,    6,    7.5,  8.5,  true, false,
                        true, 12, "thirteen", 14, 15.5, 16.5, 17.5, 18.5, 19.5, 20.5};
  EXPECT_EQ(reading.percent, 1);
  EXPECT_EQ(reading.rawCurrent, 2);
  EXPECT_EQ(reading.rawMax, 3);
  EXPECT_EQ(reading.design, 4);
  EXPECT_EQ(reading.nominal, 5);
  EXPECT_EQ(reading.cycles, 6);
  EXPECT_EQ(reading.batteryVolts, 7.5);
  EXPECT_EQ(reading.batteryAmps, 8.5);
  EXPECT_TRUE(reading.external);
  EXPECT_FALSE(reading.charging);
  EXPECT_TRUE(reading.full);
  EXPECT_EQ(reading.minutes, 12);
  EXPECT_EQ(reading.adapterName, "thirteen");
  EXPECT_EQ(reading.adapterWatts, 14);
  EXPECT_EQ(reading.wallVolts, 15.5);
  EXPECT_EQ(reading.wallAmps, 16.5);
  EXPECT_EQ(reading.wallWatts, 17.5);
  EXPECT_EQ(reading.systemWatts, 18.5);
  EXPECT_EQ(reading.batteryWatts, 19.5);
  EXPECT_EQ(reading.temperatureC, 20.5);
}

TEST(Sample, SupportsAggregateInitializationInFieldOrder) {
  const Sample sample{12.5, 87};
  EXPECT_EQ(sample.time, 12.5);
  EXPECT_EQ(sample.percent, 87);
}

TEST(Sample, HasTimeZeroAndZeroPercentByDefault) {
  const Sample sample;
  EXPECT_EQ(sample.time, 0.0);
  EXPECT_EQ(sample.percent, 0);
}

TEST(Trend, HasTheNameOfItsEnumerator) {
  EXPECT_EQ(name(Trend::up), "up");
  EXPECT_EQ(name(Trend::down), "down");
  EXPECT_EQ(name(Trend::steady), "steady");
}

TEST(Trend, IsHashable) {
  const std::unordered_set<Trend> seen{Trend::up, Trend::down, Trend::up};
  EXPECT_EQ(seen.size(), 2U);
}

TEST(TrendOfReading, IsSteadyAtAnyPowerIfFullOnExternalPower) {
  EXPECT_EQ(trend(withPower(25.0, true, true)), Trend::steady);
  EXPECT_EQ(trend(withPower(-25.0, true, true)), Trend::steady);
  Reading charging = withPower(25.0, true, true);
  charging.charging = true;
  EXPECT_EQ(trend(charging), Trend::steady);
}

TEST(TrendOfReading, FollowsThePowerIfOnlyFullOrOnlyOnExternalPower) {
  EXPECT_EQ(trend(withPower(25.0, true, false)), Trend::up);
  EXPECT_EQ(trend(withPower(-25.0, false, true)), Trend::down);
}

TEST(TrendOfReading, IsSteadyUpToAndIncludingTheLimitsOfTheDeadBand) {
  EXPECT_EQ(trend(withPower(0.3)), Trend::steady);
  EXPECT_EQ(trend(withPower(-0.3)), Trend::steady);
  EXPECT_EQ(trend(withPower(0.31)), Trend::up);
  EXPECT_EQ(trend(withPower(-0.31)), Trend::down);
  EXPECT_EQ(trend(withPower(std::nextafter(0.3, 1.0))), Trend::up);
  EXPECT_EQ(trend(withPower(std::nextafter(-0.3, -1.0))), Trend::down);
}

TEST(TrendOfReading, IsSteadyIfThePowerIsNotANumber) {
  EXPECT_EQ(trend(withPower(notANumber)), Trend::steady);
}

TEST(PercentPerHour, IsEmptyWithoutAPositiveFullChargeCapacity) {
  EXPECT_EQ(percentPerHour(withCurrent(5.0, 0)), std::nullopt);
  EXPECT_EQ(percentPerHour(withCurrent(5.0, -4000)), std::nullopt);
}

TEST(PercentPerHour, AcceptsAFullChargeCapacityOf1MilliampereHour) {
  EXPECT_EQ(percentPerHour(withCurrent(5.0, 1)), 500000.0);
}

TEST(PercentPerHour, IsEmptyForACurrentOfAtMost10Milliamperes) {
  EXPECT_EQ(percentPerHour(withCurrent(0.01, 1000)), std::nullopt);
  EXPECT_EQ(percentPerHour(withCurrent(-0.01, 1000)), std::nullopt);
  EXPECT_EQ(percentPerHour(withCurrent(0.0, 1000)), std::nullopt);
}

TEST(PercentPerHour, IsComputedForACurrentJustAbove10Milliamperes) {
  EXPECT_NEAR(percentPerHour(withCurrent(std::nextafter(0.01, 1.0), 1000)).value(), 1.0, 1e-12);
  EXPECT_NEAR(percentPerHour(withCurrent(std::nextafter(-0.01, -1.0), 1000)).value(), -1.0, 1e-12);
}

TEST(PercentPerHour, IsEmptyIfTheCurrentIsNotANumber) {
  EXPECT_EQ(percentPerHour(withCurrent(notANumber, 1000)), std::nullopt);
}

TEST(PercentPerHour, Is1Point1For11MilliamperesAndOneAmpereHour) {
  EXPECT_NEAR(percentPerHour(withCurrent(0.011, 1000)).value(), 1.1, 1e-12);
}

TEST(PercentPerHour, ConvertsToMilliamperesBeforeItDivides) {
  // The exact rates are 61.25 and 31.875. Other orders of the operations return these values.
  EXPECT_EQ(percentPerHour(withCurrent(3.528, 5760)), 61.25000000000001);
  EXPECT_EQ(percentPerHour(withCurrent(1.734, 5440)), 31.874999999999996);
}

TEST(PercentPerHour, HasTheSignOfTheCurrent) {
  EXPECT_NEAR(percentPerHour(withCurrent(-0.95, 3849)).value(), -24.68, 0.005);
}

TEST(PercentPerHour, DependsOnlyOnCurrentAndFullChargeCapacity) {
  Reading reading = withCurrent(2.0, 4000);
  reading.design = 5000;
  reading.nominal = 4500;
  reading.external = reading.charging = reading.full = true;
  EXPECT_DOUBLE_EQ(percentPerHour(reading).value(), 50.0);
}

}  // namespace lumowatt
