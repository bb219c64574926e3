#include "telemetry/sample_reading.h"

#include <gtest/gtest.h>

namespace lumowatt {

namespace {

void expectCommonValues(const Reading& reading) {
  EXPECT_EQ(reading.rawMax, 3849);
  EXPECT_EQ(reading.design, 4629);
  EXPECT_EQ(reading.nominal, 3976);
  EXPECT_EQ(reading.cycles, 312);
  EXPECT_EQ(reading.batteryVolts, 11.6);
  EXPECT_FALSE(reading.charging);
  EXPECT_EQ(reading.adapterName, "30W USB-C Power Adapter");
  EXPECT_EQ(reading.adapterWatts, 30);
  EXPECT_EQ(reading.temperatureC, std::nullopt);
}

void expectOnBattery(const Reading& reading) {
  EXPECT_FALSE(reading.external);
  EXPECT_FALSE(reading.full);
  EXPECT_EQ(reading.wallVolts, 0.0);
  EXPECT_EQ(reading.wallAmps, 0.0);
  EXPECT_EQ(reading.wallWatts, 0.0);
  EXPECT_EQ(trend(reading), Trend::down);
}

}  // namespace

TEST(SampleReading, ReturnsTheValuesOfDraining) {
  const Reading reading = sampleReading("draining").value();
  expectCommonValues(reading);
  expectOnBattery(reading);
  EXPECT_EQ(reading.percent, 64);
  EXPECT_EQ(reading.rawCurrent, 2463);
  EXPECT_EQ(reading.batteryAmps, -0.95);
  EXPECT_EQ(reading.minutes, 228);
  EXPECT_EQ(reading.systemWatts, 11.0);
  EXPECT_EQ(reading.batteryWatts, -11.0);
  EXPECT_NEAR(percentPerHour(reading).value(), -24.68, 0.005);
}

TEST(SampleReading, ReturnsTheValuesOfLow) {
  const Reading reading = sampleReading("low").value();
  expectCommonValues(reading);
  expectOnBattery(reading);
  EXPECT_EQ(reading.percent, 16);
  EXPECT_EQ(reading.rawCurrent, 616);
  EXPECT_EQ(reading.batteryAmps, -0.62);
  EXPECT_EQ(reading.minutes, 96);
  EXPECT_EQ(reading.systemWatts, 7.2);
  EXPECT_EQ(reading.batteryWatts, -7.2);
  EXPECT_NEAR(percentPerHour(reading).value(), -16.11, 0.005);
}

TEST(SampleReading, ReturnsTheValuesOfFull) {
  const Reading reading = sampleReading("full").value();
  expectCommonValues(reading);
  EXPECT_EQ(reading.percent, 100);
  EXPECT_EQ(reading.rawCurrent, 3849);
  EXPECT_EQ(reading.batteryAmps, 0.0);
  EXPECT_TRUE(reading.external);
  EXPECT_TRUE(reading.full);
  EXPECT_EQ(reading.minutes, std::nullopt);
  EXPECT_EQ(reading.wallVolts, 20.1);
  EXPECT_EQ(reading.wallAmps, 0.3);
  EXPECT_EQ(reading.wallWatts, 6.0);
  EXPECT_EQ(reading.systemWatts, 6.0);
  EXPECT_EQ(reading.batteryWatts, 0.0);
  EXPECT_EQ(trend(reading), Trend::steady);
  EXPECT_EQ(percentPerHour(reading), std::nullopt);
}

TEST(SampleReading, ReturnsNothingForNamesWithUpperCaseLetters) {
  EXPECT_FALSE(sampleReading("Draining"));
  EXPECT_FALSE(sampleReading("LOW"));
}

TEST(SampleReading, ReturnsNothingForNamesWithLeadingOrTrailingSpaces) {
  EXPECT_FALSE(sampleReading(" low"));
  EXPECT_FALSE(sampleReading("low "));
}

TEST(SampleReading, ReturnsNothingForEmptyIncompleteAndUnknownNames) {
  EXPECT_FALSE(sampleReading(""));
  EXPECT_FALSE(sampleReading("drain"));
  EXPECT_FALSE(sampleReading("fuller"));
}

}  // namespace lumowatt
