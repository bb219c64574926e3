#include "format/details.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "support/locale.h"

namespace lumowatt {

namespace {

using Lines = std::vector<std::string>;

Reading onBattery() {
  Reading reading;
  reading.percent = 76;
  reading.rawCurrent = 3800;
  reading.rawMax = 5000;
  reading.design = 5100;
  reading.nominal = 5050;
  reading.cycles = 123;
  reading.batteryVolts = 12.34;
  reading.batteryAmps = -1.234;
  reading.batteryWatts = -15.23;
  reading.systemWatts = 15.2;
  reading.minutes = 200;
  reading.temperatureC = 30.46;
  return reading;
}

const Lines onBatteryLines = {
    "On battery",
    "Charge: 76% (3800 of 5000 mAh)",
    "Time to empty: 3 h 20 min",
    "Battery power: −15.2 W  (12.34 V, -1.234 A)",
    "Rate now: −24.7% per hour",
    "System use: 15.2 W",
    "Capacity vs design, raw: 98% (5000 of 5100 mAh)",
    "Nominal charge capacity: 5050 mAh (99%)",
    "Apple’s own health figure uses its own method and can differ.",
    "Cycle count: 123",
    "Temperature: 30.5 °C",
};

/// Returns whether any line starts with `start`.
bool has(const Lines& lines, const std::string& start) {
  return std::any_of(lines.begin(), lines.end(),
                     [&start](const std::string& line) { return line.starts_with(start); });
}

}  // namespace

TEST(Details, DescribeAReadingOnBattery) { EXPECT_EQ(details(onBattery()), onBatteryLines); }

using DetailsInGermanLocale = InGermanLocale;

TEST_F(DetailsInGermanLocale, UseADecimalPoint) { EXPECT_EQ(details(onBattery()), onBatteryLines); }

TEST(Details, ConsistOfSixLinesForADefaultReading) {
  const Lines expected = {
      "On battery",
      "Charge: 0% (0 of 0 mAh)",
      "Time to empty: calculating",
      "Battery power: +0.0 W  (0.00 V, +0.000 A)",
      "System use: 0.0 W",
      "Cycle count: 0",
  };
  EXPECT_EQ(details(Reading()), expected);
}

TEST(Details, ContainAdapterLinesAndNoTimeWhenFullOnPower) {
  Reading reading = onBattery();
  reading.external = true;
  reading.full = true;
  reading.wallWatts = 28.44;
  reading.wallVolts = 20.1;
  reading.wallAmps = 1.414;
  reading.adapterWatts = 30;
  const Lines expected = {
      "Fully charged, on power",
      "Charge: 76% (3800 of 5000 mAh)",
      "Battery power: −15.2 W  (12.34 V, -1.234 A)",
      "Rate now: −24.7% per hour",
      "System use: 15.2 W",
      "From the adapter: 28.4 W  (20.1 V, 1.41 A)",
      "Adapter rating: 30 W",
      "Capacity vs design, raw: 98% (5000 of 5100 mAh)",
      "Nominal charge capacity: 5050 mAh (99%)",
      "Apple’s own health figure uses its own method and can differ.",
      "Cycle count: 123",
      "Temperature: 30.5 °C",
  };
  EXPECT_EQ(details(reading), expected);
}

TEST(Details, ContainTheTimeToFullWhileCharging) {
  Reading reading = onBattery();
  reading.external = true;
  reading.charging = true;
  reading.adapterName = "96W USB-C Power Adapter";
  reading.adapterWatts = 96;
  reading.batteryAmps = 1.5;
  reading.batteryWatts = 18.51;
  reading.minutes = 59;
  const Lines expected = {
      "Charging on 96W USB-C Power Adapter",
      "Charge: 76% (3800 of 5000 mAh)",
      "Time to full: 59 min",
      "Battery power: +18.5 W  (12.34 V, +1.500 A)",
      "Rate now: +30.0% per hour",
      "System use: 15.2 W",
      "From the adapter: 0.0 W  (0.0 V, 0.00 A)",
      "Adapter rating: 96 W",
      "Capacity vs design, raw: 98% (5000 of 5100 mAh)",
      "Nominal charge capacity: 5050 mAh (99%)",
      "Apple’s own health figure uses its own method and can differ.",
      "Cycle count: 123",
      "Temperature: 30.5 °C",
  };
  EXPECT_EQ(details(reading), expected);
}

TEST(Details, ReportCalculatingWhileChargingWithoutAnEstimate) {
  Reading reading;
  reading.charging = true;
  EXPECT_EQ(details(reading)[2], "Time to full: calculating");
  EXPECT_FALSE(has(details(reading), "From the adapter:")) << "this line requires external power";
}

TEST(Details, OmitTheTimeOnPowerWhenNotCharging) {
  Reading reading = onBattery();
  reading.external = true;
  EXPECT_FALSE(has(details(reading), "Time to"));
}

TEST(Details, OmitTheRateAtExactly10Milliamperes) {
  Reading reading = onBattery();
  for (const double amps : {0.01, -0.01}) {
    reading.batteryAmps = amps;
    EXPECT_FALSE(has(details(reading), "Rate now:")) << amps;
  }
  reading.batteryAmps = 0.011;
  EXPECT_TRUE(has(details(reading), "Rate now: +0.2% per hour"));
}

TEST(Details, OmitAllCapacityLinesWithoutADesignCapacity) {
  Reading reading;
  reading.nominal = 5050;
  EXPECT_EQ(details(reading).size(), 6U);
  EXPECT_FALSE(has(details(reading), "Nominal"));
}

TEST(Details, OmitOnlyTheNominalLineWithoutANominalCapacity) {
  Reading reading = onBattery();
  reading.nominal = 0;
  EXPECT_TRUE(has(details(reading), "Capacity vs design"));
  EXPECT_FALSE(has(details(reading), "Nominal"));
  EXPECT_TRUE(has(details(reading), "Apple’s own health figure"));
}

TEST(Details, ContainALineForEachValueOfExactly1) {
  Reading reading;
  reading.external = true;
  reading.adapterWatts = 1;
  reading.rawMax = 1;
  reading.design = 1;
  reading.nominal = 1;
  const Lines expected = {
      "On power, not charging",
      "Charge: 0% (0 of 1 mAh)",
      "Battery power: +0.0 W  (0.00 V, +0.000 A)",
      "System use: 0.0 W",
      "From the adapter: 0.0 W  (0.0 V, 0.00 A)",
      "Adapter rating: 1 W",
      "Capacity vs design, raw: 100% (1 of 1 mAh)",
      "Nominal charge capacity: 1 mAh (100%)",
      "Apple’s own health figure uses its own method and can differ.",
      "Cycle count: 0",
  };
  EXPECT_EQ(details(reading), expected);
}

TEST(Details, PrintSignsOfAdapterVoltageAndCurrentButNotOfPowers) {
  Reading reading;
  reading.external = true;
  reading.wallWatts = -28.44;
  reading.wallVolts = -20.1;
  reading.wallAmps = -1.414;
  reading.systemWatts = -15.2;
  EXPECT_TRUE(has(details(reading), "From the adapter: 28.4 W  (-20.1 V, -1.41 A)"));
  EXPECT_TRUE(has(details(reading), "System use: 15.2 W"));
}

TEST(Details, RoundCapacityPercentagesComputedInDoubles) {
  // The exact percentages are 57.5 and 54.5. Halves round to the even digit, so they would be
  // printed as 58% and 54%. The percentages computed in doubles are 57.49999999999999 and
  // 54.50000000000001.
  Reading reading;
  reading.design = 4000;
  for (const auto& [capacity, percent] : {std::pair(2300, "57%"), std::pair(2180, "55%")}) {
    reading.rawMax = capacity;
    reading.nominal = capacity;
    const std::string figure = std::to_string(capacity);
    EXPECT_TRUE(has(details(reading), "Capacity vs design, raw: " + std::string(percent) + " (" +
                                          figure + " of 4000 mAh)"));
    EXPECT_TRUE(
        has(details(reading), "Nominal charge capacity: " + figure + " mAh (" + percent + ")"));
  }
}

TEST(Details, RoundTheRateComputedInDoubles) {
  // The exact rate is 61.25. The rate computed in doubles is 61.25000000000001.
  Reading reading;
  reading.rawMax = 5760;
  reading.batteryAmps = 3.528;
  EXPECT_TRUE(has(details(reading), "Rate now: +61.3% per hour"));
}

TEST(Details, DoNotClampTheCapacityPercentage) {
  Reading reading;
  reading.rawMax = 5000;
  reading.design = 4000;
  EXPECT_TRUE(has(details(reading), "Capacity vs design, raw: 125% (5000 of 4000 mAh)"));
}

TEST(Details, ContainTheAdapterRatingOnlyIfPositiveAndOnPower) {
  Reading reading;
  reading.adapterWatts = 30;
  EXPECT_FALSE(has(details(reading), "Adapter rating:"));
  reading.external = true;
  EXPECT_TRUE(has(details(reading), "Adapter rating: 30 W"));
  reading.adapterWatts = 0;
  EXPECT_FALSE(has(details(reading), "Adapter rating:"));
}

}  // namespace lumowatt
