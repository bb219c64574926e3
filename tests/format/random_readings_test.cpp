#include <gtest/gtest.h>

#include <algorithm>
#include <random>

#include "format/details.h"
#include "format/figures.h"

namespace lumowatt {

namespace {

/// Generates random readings. Each field is independent of the others, and its value can be
/// implausible.
class RandomReadings {
 public:
  Reading next() {
    Reading reading;
    reading.percent = integer(-5, 130);
    reading.rawCurrent = capacity();
    reading.rawMax = capacity();
    reading.design = capacity();
    reading.nominal = capacity();
    reading.cycles = integer(0, 2000);
    reading.batteryVolts = real(0, 21);
    reading.batteryAmps = flow(5);
    reading.external = chance();
    reading.charging = chance();
    reading.full = chance();
    if (chance()) reading.minutes = integer(1, 65534);
    if (chance()) reading.adapterName = "61W USB-C Power Adapter";
    reading.adapterWatts = integer(-1, 140);
    reading.wallVolts = real(0, 28);
    reading.wallAmps = real(0, 5);
    reading.wallWatts = real(0, 140);
    reading.systemWatts = real(-1, 100);
    reading.batteryWatts = flow(100);
    if (chance()) reading.temperatureC = real(-20, 80);
    return reading;
  }

 private:
  std::int64_t integer(std::int64_t least, std::int64_t most) {
    return std::uniform_int_distribution(least, most)(random_);
  }

  double real(double least, double most) {
    return std::uniform_real_distribution(least, most)(random_);
  }

  /// Returns a capacity in mAh, often from -1 to 1. A capacity below 1 mAh counts as unknown.
  std::int64_t capacity() { return chance() ? integer(2, 9000) : integer(-1, 1); }

  bool chance() { return integer(0, 1) == 1; }

  /// Returns a current or a power of either sign, often within or at the limits of a dead band.
  double flow(double most) {
    constexpr double special[] = {0.0, -0.0, 0.01, -0.01, 0.3, -0.3};
    return chance() ? real(-most, most) : special[integer(0, 5)];
  }

  std::mt19937_64 random_{20260101};
};

/// Returns the first line that starts with `start`, or an empty string if there is no such line.
std::string lineOf(const std::vector<std::string>& lines, const std::string& start) {
  const auto found = std::find_if(lines.begin(), lines.end(), [&start](const std::string& line) {
    return line.starts_with(start);
  });
  return found == lines.end() ? "" : *found;
}

constexpr int iterations = 20000;

}  // namespace

TEST(RandomReadings, HaveARateLineIfAndOnlyIfTheyHaveARate) {
  RandomReadings readings;
  int withRate = 0;
  for (int i = 0; i < iterations; ++i) {
    const Reading reading = readings.next();
    const auto rate = percentPerHour(reading);
    const std::string line = lineOf(details(reading), "Rate now:");
    ASSERT_EQ(rate.has_value(), !line.empty());
    if (!rate) continue;
    ++withRate;
    ASSERT_TRUE(line.starts_with(*rate < 0 ? "Rate now: −" : "Rate now: +")) << line;
    ASSERT_EQ(*rate < 0, reading.batteryAmps < 0);
  }
  EXPECT_GT(withRate, iterations / 4);
  EXPECT_LT(withRate, iterations);
}

TEST(RandomReadings, HaveAPowerLineWhoseSignMatchesTheTrend) {
  RandomReadings readings;
  for (int i = 0; i < iterations; ++i) {
    const Reading reading = readings.next();
    const std::string line = lineOf(details(reading), "Battery power:");
    ASSERT_TRUE(line.starts_with("Battery power: " + watts(reading.batteryWatts, true) + "  ("));
    switch (trend(reading)) {
      case Trend::up:
        ASSERT_TRUE(line.starts_with("Battery power: +")) << line;
        break;
      case Trend::down:
        ASSERT_TRUE(line.starts_with("Battery power: −")) << line;
        break;
      case Trend::steady:
        const bool isInDeadBand = reading.batteryWatts <= 0.3 && reading.batteryWatts >= -0.3;
        ASSERT_TRUE(isInDeadBand || (reading.full && reading.external));
        break;
    }
  }
}

TEST(RandomReadings, HaveDetailsOfSixToThirteenLinesWithoutLineBreaks) {
  RandomReadings readings;
  std::size_t fewest = 99;
  std::size_t most = 0;
  for (int i = 0; i < iterations; ++i) {
    const Reading reading = readings.next();
    const std::vector<std::string> lines = details(reading);
    fewest = std::min(fewest, lines.size());
    most = std::max(most, lines.size());
    ASSERT_EQ(lines.front(), statusLine(reading));
    for (const std::string& line : lines) {
      ASSERT_FALSE(line.empty());
      ASSERT_EQ(line.find_first_of("\n\r"), std::string::npos) << line;
    }
  }
  EXPECT_EQ(fewest, 6U);
  EXPECT_EQ(most, 13U);
}

}  // namespace lumowatt
