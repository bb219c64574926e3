#include <gtest/gtest.h>

#include <random>

#include "support/mock_machine.h"

namespace lumowatt::power_supply {

namespace {

using nlohmann::json;

/// Generator of random machines. Most values are plausible; any attribute may be missing or
/// invalid.
class RandomMachines {
 public:
  void fill(const MockMachine& machine) {
    const int packs = number(1, 3);
    for (int i = 0; i < packs; ++i) {
      machine.supply(oneOf({"BAT", "sbs-", "macsmc-"}) + std::to_string(i), pack());
    }
    const int chargers = number(0, 2);
    for (int i = 0; i < chargers; ++i) machine.supply("port" + std::to_string(i), charger());
  }

 private:
  int number(int least, int most) { return std::uniform_int_distribution(least, most)(random_); }

  std::string oneOf(const std::vector<std::string>& choices) {
    return choices[static_cast<std::size_t>(number(0, static_cast<int>(choices.size()) - 1))];
  }

  /// Returns a number in the range with a probability of 80 %, otherwise an invalid or extreme
  /// value.
  std::string figure(int least, int most) {
    if (number(0, 9) > 1) return std::to_string(number(least, most)) + "\n";
    return oneOf({missing, "", "0", "-1", "9223372036854775807", "-9223372036854775808", "x"});
  }

  Attributes pack() {
    const std::string store = oneOf({"charge", "energy"});
    return {{"type", "Battery\n"},
            {"status", oneOf({"Charging", "Discharging", "Not charging", "Full", "Unknown", "?"})},
            {"capacity", figure(0, 105)},
            {store + "_full", figure(1'000'000, 90'000'000)},
            {store + "_full_design", figure(1'000'000, 90'000'000)},
            {store + "_now", figure(0, 90'000'000)},
            {oneOf({"current_now", "power_now", "current_avg"}), figure(-9'000'000, 9'000'000)},
            {"voltage_now", figure(3'000'000, 21'000'000)},
            {"voltage_min_design", figure(3'000'000, 16'000'000)},
            {"time_to_empty_now", figure(0, 40'000)},
            {"time_to_full_now", figure(0, 40'000)},
            {"temp", figure(-200, 600)},
            {"cycle_count", figure(0, 2000)}};
  }

  Attributes charger() {
    return {{"type", oneOf({"Mains", "USB", "Wireless", "USB_PD"})},
            {"online", oneOf({"0", "1", "2", ""})},
            {"voltage_max", figure(5'000'000, 28'000'000)},
            {"current_max", figure(500'000, 5'000'000)},
            {"manufacturer", oneOf({missing, "Acme", "\xFF", "\x1B[0m\n"})}};
  }

  std::mt19937_64 random_{20260102};
};

std::int64_t valueOr(const json& object, const std::string& key, std::int64_t fallback) {
  return object.contains(key) ? object[key].get<std::int64_t>() : fallback;
}

}  // namespace

TEST(RandomMachines, HaveConsistentProperties) {
  RandomMachines machines;
  int charging = 0;
  int onBattery = 0;
  for (int i = 0; i < 500; ++i) {
    const MockMachine machine;
    machines.fill(machine);
    const json properties = machine.properties();
    ASSERT_TRUE(properties.is_object());
    const json& telemetry = properties["PowerTelemetryData"];
    const bool isCharging = properties["IsCharging"] == 1;
    const bool isExternal = properties["ExternalConnected"] == 1;
    charging += isCharging ? 1 : 0;
    onBattery += isExternal ? 0 : 1;

    const std::int64_t percent = valueOr(properties, "CurrentCapacity", 0);
    ASSERT_TRUE(percent >= 0 && percent <= 100) << properties;
    for (const char* key : {"AppleRawCurrentCapacity", "AppleRawMaxCapacity", "DesignCapacity",
                            "CycleCount", "Voltage"}) {
      ASSERT_GE(valueOr(properties, key, 0), 0) << key << properties;
    }

    ASSERT_TRUE(isExternal || !isCharging) << properties;
    ASSERT_TRUE(isExternal || !properties.contains("AdapterDetails")) << properties;
    ASSERT_TRUE(!isExternal || !telemetry.contains("SystemPowerIn")) << properties;
    if (telemetry.contains("SystemLoad")) {
      ASSERT_EQ(telemetry["SystemLoad"], -telemetry["BatteryPower"].get<std::int64_t>());
    }

    const std::int64_t amps = valueOr(properties, "Amperage", 0);
    const std::int64_t watts = valueOr(telemetry, "BatteryPower", 0);
    ASSERT_FALSE((amps > 0 && watts < 0) || (amps < 0 && watts > 0)) << properties;
    ASSERT_TRUE(!isCharging || amps >= 0) << properties;

    const std::int64_t toEmpty = properties["AvgTimeToEmpty"];
    const std::int64_t toFull = properties["AvgTimeToFull"];
    ASSERT_TRUE(toEmpty >= 1 && toEmpty <= unknownMinutes) << properties;
    ASSERT_TRUE(toFull >= 1 && toFull <= unknownMinutes) << properties;
    ASSERT_TRUE(toEmpty == unknownMinutes || toFull == unknownMinutes) << properties;
    ASSERT_EQ(properties["TimeRemaining"], isCharging ? toFull : toEmpty) << properties;
  }
  EXPECT_GT(charging, 50);
  EXPECT_GT(onBattery, 50);
}

}  // namespace lumowatt::power_supply
