#include "telemetry/read.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdlib>
#include <vector>

#include "fakes/scripted_battery.h"
#include "support/fixtures.h"
#include "support/json_properties.h"

namespace lumowatt {

namespace {

using nlohmann::json;

Reading readingOf(const json& properties) {
  ScriptedBattery battery(propertiesFromJson(properties));
  return read(battery).value();
}

}  // namespace

TEST(Read, ReturnsNothingWithoutProperties) {
  ScriptedBattery battery;
  EXPECT_FALSE(read(battery));
}

TEST(Read, QueriesTheServiceOnce) {
  ScriptedBattery battery(PropertyDictionary{});
  EXPECT_TRUE(read(battery));
  EXPECT_EQ(battery.callCount, 1);
}

TEST(Read, ReturnsDefaultsForAnEmptyDictionary) {
  const Reading reading = readingOf(json::object());
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

TEST(Read, ReturnsDefaultsForValuesOfTheWrongType) {
  json properties;
  for (const char* key :
       {"BatteryData", "AppleRawCurrentCapacity", "AppleRawMaxCapacity", "DesignCapacity",
        "NominalChargeCapacity", "CycleCount", "MaxCapacity", "CurrentCapacity", "Voltage",
        "Amperage", "ExternalConnected", "IsCharging", "FullyCharged", "Temperature",
        "AvgTimeToFull", "AvgTimeToEmpty", "TimeRemaining", "AdapterDetails",
        "PowerTelemetryData"}) {
    properties[key] = "100";
  }
  const Reading reading = readingOf(properties);
  EXPECT_EQ(reading.percent, 0);
  EXPECT_EQ(reading.rawMax, 0);
  EXPECT_EQ(reading.batteryVolts, 0.0);
  EXPECT_FALSE(reading.external);
  EXPECT_FALSE(reading.charging);
  EXPECT_FALSE(reading.full);
  EXPECT_EQ(reading.minutes, std::nullopt);
  EXPECT_EQ(reading.temperatureC, std::nullopt);
  EXPECT_EQ(reading.adapterWatts, 0);
  EXPECT_EQ(reading.systemWatts, 0.0);
}

TEST(ReadPercent, IsCurrentCapacityIfMaxCapacityIs100) {
  const Reading reading = readingOf({{"MaxCapacity", 100},
                                     {"CurrentCapacity", 87},
                                     {"AppleRawCurrentCapacity", 1},
                                     {"AppleRawMaxCapacity", 2}});
  EXPECT_EQ(reading.percent, 87);
}

TEST(ReadPercent, IsNotClampedAndDefaultsToZeroIfMaxCapacityIs100) {
  EXPECT_EQ(readingOf({{"MaxCapacity", 100}, {"CurrentCapacity", 104}}).percent, 104);
  EXPECT_EQ(readingOf({{"MaxCapacity", 100}}).percent, 0);
}

TEST(ReadPercent, IsComputedFromRawCapacitiesIfMaxCapacityIsNot100) {
  const auto percent = [](int raw, int rawMax) {
    return readingOf({{"MaxCapacity", 5000},
                      {"CurrentCapacity", 77},
                      {"AppleRawCurrentCapacity", raw},
                      {"AppleRawMaxCapacity", rawMax}})
        .percent;
  };
  EXPECT_EQ(percent(2500, 5000), 50);
  EXPECT_EQ(percent(1, 8), 13) << "12.5 rounds away from zero";
  EXPECT_EQ(percent(-1, 8), -13);
  EXPECT_EQ(percent(2, 3), 67);
  EXPECT_EQ(percent(5200, 5000), 104) << "not clamped";
  EXPECT_EQ(percent(2500, 0), 0);
  EXPECT_EQ(percent(2500, -5000), 0);
}

TEST(ReadPercent, RoundsTheQuotientComputedInDoubles) {
  // 23 / 40 is exactly 57.5 %. In doubles, 23.0 / 40.0 * 100.0 is 57.49999999999999.
  EXPECT_EQ(readingOf({{"AppleRawCurrentCapacity", 23}, {"AppleRawMaxCapacity", 40}}).percent, 57);
}

TEST(ReadPercent, AcceptsAFullChargeCapacityOf1) {
  EXPECT_EQ(readingOf({{"AppleRawCurrentCapacity", 1}, {"AppleRawMaxCapacity", 1}}).percent, 100);
}

TEST(ReadPercentDeathTest, ExitsIfTheResultOverflows64Bits) {
  const json properties = {{"AppleRawCurrentCapacity", 9000000000000000000},
                           {"AppleRawMaxCapacity", 1}};
  EXPECT_EXIT(readingOf(properties), testing::ExitedWithCode(1),
              "^lumowatt: cannot compute the charge in percent: it does not fit 64 bits\n$");
}

TEST(ReadCapacities, PreferBatteryDataToTheTopLevel) {
  const Reading reading = readingOf({{"BatteryData",
                                      {{"AppleRawCurrentCapacity", 1},
                                       {"AppleRawMaxCapacity", 2},
                                       {"DesignCapacity", 3},
                                       {"NominalChargeCapacity", 4}}},
                                     {"AppleRawCurrentCapacity", 11},
                                     {"AppleRawMaxCapacity", 12},
                                     {"DesignCapacity", 13},
                                     {"NominalChargeCapacity", 14}});
  EXPECT_EQ(reading.rawCurrent, 1);
  EXPECT_EQ(reading.rawMax, 2);
  EXPECT_EQ(reading.design, 3);
  EXPECT_EQ(reading.nominal, 4);
}

TEST(ReadCapacities, FallBackToTheTopLevelForEachMissingOrInvalidKey) {
  const Reading reading = readingOf({{"BatteryData", {{"DesignCapacity", "3"}}},
                                     {"AppleRawMaxCapacity", 12},
                                     {"DesignCapacity", 13}});
  EXPECT_EQ(reading.rawMax, 12);
  EXPECT_EQ(reading.design, 13);
  EXPECT_EQ(reading.nominal, 0);
}

TEST(ReadCapacities, FallBackToTheTopLevelIfBatteryDataIsNoDictionary) {
  const Reading reading = readingOf({{"BatteryData", 7},
                                     {"AppleRawCurrentCapacity", 11},
                                     {"AppleRawMaxCapacity", 12},
                                     {"DesignCapacity", 13},
                                     {"NominalChargeCapacity", 14}});
  EXPECT_EQ(reading.rawCurrent, 11);
  EXPECT_EQ(reading.rawMax, 12);
  EXPECT_EQ(reading.design, 13);
  EXPECT_EQ(reading.nominal, 14);
}

TEST(ReadCapacities, DoNotFallBackToTheTopLevelIfBatteryDataHasZeros) {
  const Reading reading = readingOf({{"BatteryData",
                                      {{"AppleRawCurrentCapacity", 0},
                                       {"AppleRawMaxCapacity", 0},
                                       {"DesignCapacity", 0},
                                       {"NominalChargeCapacity", 0}}},
                                     {"AppleRawCurrentCapacity", 11},
                                     {"AppleRawMaxCapacity", 12},
                                     {"DesignCapacity", 13},
                                     {"NominalChargeCapacity", 14}});
  EXPECT_EQ(reading.rawCurrent, 0);
  EXPECT_EQ(reading.rawMax, 0);
  EXPECT_EQ(reading.design, 0);
  EXPECT_EQ(reading.nominal, 0);
}

TEST(ReadCapacities, AreTheOnlyValuesReadFromBatteryData) {
  const Reading reading =
      readingOf({{"BatteryData", {{"CycleCount", 9}, {"Voltage", 12000}, {"MaxCapacity", 100}}}});
  EXPECT_EQ(reading.cycles, 0);
  EXPECT_EQ(reading.batteryVolts, 0.0);
}

TEST(ReadStates, AreTrueForEveryNumberExceptZero) {
  using States = std::vector<bool>;
  const auto states = [](const json& value) {
    const Reading reading =
        readingOf({{"ExternalConnected", value}, {"IsCharging", value}, {"FullyCharged", value}});
    return States{reading.external, reading.charging, reading.full};
  };
  EXPECT_EQ(states(true), States({true, true, true}));
  EXPECT_EQ(states(2), States({true, true, true}));
  EXPECT_EQ(states(18446744073709551615U), States({true, true, true})) << "the bits of -1";
  EXPECT_EQ(states(false), States({false, false, false}));
  EXPECT_EQ(states(0), States({false, false, false}));
}

TEST(ReadCurrent, DecodesNegativeMilliamperesFromTwosComplement) {
  const Reading reading = readingOf({{"Amperage", 18446744073709550616U}});
  EXPECT_EQ(reading.batteryAmps, -1.0);
}

TEST(ReadBatteryPower, IsVoltageTimesCurrentWithoutTelemetry) {
  EXPECT_EQ(readingOf({{"Voltage", 12000}, {"Amperage", -1000}}).batteryWatts, -12.0);
  EXPECT_EQ(readingOf({{"Voltage", 12000}, {"Amperage", 1000}}).batteryWatts, 12.0);
}

TEST(ReadBatteryPower, IsVoltageTimesCurrentEvenForSmallCurrents) {
  EXPECT_DOUBLE_EQ(readingOf({{"Voltage", 12000}, {"Amperage", 1}}).batteryWatts, 0.012);
  EXPECT_DOUBLE_EQ(readingOf({{"Voltage", 12000}, {"Amperage", 10}}).batteryWatts, 0.12);
  EXPECT_DOUBLE_EQ(readingOf({{"Voltage", 12000}, {"Amperage", -1}}).batteryWatts, -0.012);
  EXPECT_DOUBLE_EQ(readingOf({{"Voltage", 12000}, {"Amperage", 1010}}).batteryWatts, 12.12);
}

TEST(ReadBatteryPower, IsNegativeZeroOnlyIfTheBatteryDischargesAtZeroVolts) {
  const auto isNegativeZero = [](int millivolts, int milliamperes) {
    const Reading reading = readingOf({{"Voltage", millivolts}, {"Amperage", milliamperes}});
    EXPECT_EQ(reading.batteryWatts, 0.0);
    return std::signbit(reading.batteryWatts);
  };
  EXPECT_TRUE(isNegativeZero(0, -1000));
  EXPECT_FALSE(isNegativeZero(0, 1000));
  EXPECT_FALSE(isNegativeZero(12000, 0));
  EXPECT_FALSE(isNegativeZero(-12000, 0)) << "not computed from the voltage without current";
}

TEST(ReadBatteryPower, IsVoltageTimesCurrentIfTelemetryReportsZero) {
  EXPECT_EQ(
      readingOf(
          {{"Voltage", 12000}, {"Amperage", -1000}, {"PowerTelemetryData", {{"BatteryPower", 0}}}})
          .batteryWatts,
      -12.0);
}

TEST(ReadBatteryPower, NegatesPositiveTelemetryWhileDischarging) {
  const json telemetry = {{"BatteryPower", 8000}};
  EXPECT_EQ(readingOf({{"Voltage", 12000}, {"Amperage", -1000}, {"PowerTelemetryData", telemetry}})
                .batteryWatts,
            -8.0);
}

TEST(ReadBatteryPower, IsNegativeWhileDischargingBelowOneWatt) {
  for (const int milliwatts : {500, -500, 1, -1}) {
    const json telemetry = {{"BatteryPower", milliwatts}};
    EXPECT_EQ(readingOf({{"Amperage", -40}, {"PowerTelemetryData", telemetry}}).batteryWatts,
              -std::abs(milliwatts) / 1000.0);
  }
}

TEST(ReadBatteryPower, PreservesNegativeTelemetryWhileCharging) {
  const json telemetry = {{"BatteryPower", -8000}};
  EXPECT_EQ(readingOf({{"Amperage", 1000}, {"PowerTelemetryData", telemetry}}).batteryWatts, -8.0);
}

TEST(ReadBatteryPower, UsesTelemetryAndThenZeroIfNoCurrentFlows) {
  EXPECT_EQ(readingOf({{"Voltage", 12000}, {"Amperage", 0}}).batteryWatts, 0.0);
  EXPECT_EQ(readingOf({{"PowerTelemetryData", {{"BatteryPower", 2500}}}}).batteryWatts, 2.5);
}

TEST(ReadTelemetry, ConvertsThousandthsToUnits) {
  const Reading reading = readingOf({{"PowerTelemetryData",
                                      {{"SystemPowerIn", 7455},
                                       {"SystemLoad", 7456},
                                       {"SystemVoltageIn", 27962},
                                       {"SystemCurrentIn", 266}}}});
  EXPECT_EQ(reading.wallWatts, 7.455);
  EXPECT_EQ(reading.systemWatts, 7.456);
  EXPECT_EQ(reading.wallVolts, 27.962);
  EXPECT_EQ(reading.wallAmps, 0.266);
}

TEST(ReadMinutes, AreOnlyTheTimeToFullWhileCharging) {
  const auto minutes = [](int toFull) {
    return readingOf({{"IsCharging", true},
                      {"AvgTimeToFull", toFull},
                      {"AvgTimeToEmpty", 300},
                      {"TimeRemaining", 240}})
        .minutes;
  };
  EXPECT_EQ(minutes(91), 91);
  EXPECT_EQ(minutes(65535), std::nullopt);
  EXPECT_EQ(minutes(0), std::nullopt);
}

TEST(ReadMinutes, PreferTimeToEmptyToTimeRemainingOnBattery) {
  EXPECT_EQ(readingOf({{"AvgTimeToEmpty", 300}, {"TimeRemaining", 240}}).minutes, 300);
}

TEST(ReadMinutes, AcceptATimeToEmptyOf1Minute) {
  EXPECT_EQ(readingOf({{"AvgTimeToEmpty", 1}, {"TimeRemaining", 240}}).minutes, 1);
}

TEST(ReadMinutes, FallBackToTimeRemainingIfTimeToEmptyIsUnknown) {
  EXPECT_EQ(readingOf({{"AvgTimeToEmpty", 65535}, {"TimeRemaining", 240}}).minutes, 240);
  EXPECT_EQ(readingOf({{"AvgTimeToEmpty", -3}, {"TimeRemaining", 240}}).minutes, 240);
  EXPECT_EQ(readingOf({{"TimeRemaining", 240}}).minutes, 240);
}

TEST(ReadMinutes, AreEmptyIfNoEstimateIsKnown) {
  EXPECT_EQ(readingOf({{"AvgTimeToEmpty", 0}}).minutes, std::nullopt);
  EXPECT_EQ(readingOf({{"AvgTimeToEmpty", 0}, {"TimeRemaining", -1}}).minutes, std::nullopt);
}

TEST(ReadMinutes, RangeFrom1To65534) {
  EXPECT_EQ(readingOf({{"TimeRemaining", 1}}).minutes, 1);
  EXPECT_EQ(readingOf({{"TimeRemaining", 65534}}).minutes, 65534);
  EXPECT_EQ(readingOf({{"TimeRemaining", 65535}}).minutes, std::nullopt);
  EXPECT_EQ(readingOf({{"AvgTimeToEmpty", 65536}, {"TimeRemaining", 240}}).minutes, std::nullopt);
}

TEST(ReadTemperature, ConvertsHundredthsToDegrees) {
  EXPECT_EQ(readingOf({{"Temperature", 3050}}).temperatureC, 30.5);
  EXPECT_EQ(readingOf({{"Temperature", -150}}).temperatureC, -1.5);
}

TEST(ReadTemperature, IsKnownIfZero) {
  EXPECT_EQ(readingOf({{"Temperature", 0}}).temperatureC, 0.0);
}

TEST(ReadAdapter, HasWattsEvenIfTheNameIsMissingOrInvalid) {
  const Reading nameless = readingOf({{"AdapterDetails", {{"Watts", 96}}}});
  EXPECT_EQ(nameless.adapterName, "");
  EXPECT_EQ(nameless.adapterWatts, 96);
  const Reading numbered = readingOf({{"AdapterDetails", {{"Watts", 96}, {"Name", 5}}}});
  EXPECT_EQ(numbered.adapterName, "");
  EXPECT_EQ(numbered.adapterWatts, 96);
}

class ReadRegistry : public testing::TestWithParam<std::string> {};

TEST_P(ReadRegistry, ReturnsTheExpectedReading) {
  const json machine = jsonFile(fixturePath("registry", GetParam()));
  const json& expected = machine["expected"];
  const Reading reading = readingOf(machine["properties"]);

  const auto optional = [](const auto& value) { return value ? json(*value) : json(nullptr); };
  EXPECT_EQ(reading.percent, expected["percent"]);
  EXPECT_EQ(reading.rawCurrent, expected["rawCurrent"]);
  EXPECT_EQ(reading.rawMax, expected["rawMax"]);
  EXPECT_EQ(reading.design, expected["design"]);
  EXPECT_EQ(reading.nominal, expected["nominal"]);
  EXPECT_EQ(reading.cycles, expected["cycles"]);
  EXPECT_EQ(reading.batteryVolts, expected["batteryVolts"]);
  EXPECT_EQ(reading.batteryAmps, expected["batteryAmps"]);
  EXPECT_EQ(reading.external, expected["external"]);
  EXPECT_EQ(reading.charging, expected["charging"]);
  EXPECT_EQ(reading.full, expected["full"]);
  EXPECT_EQ(optional(reading.minutes), expected["minutes"]);
  EXPECT_EQ(reading.adapterName, expected["adapterName"].get<std::string>());
  EXPECT_EQ(reading.adapterWatts, expected["adapterWatts"]);
  EXPECT_EQ(reading.wallVolts, expected["wallVolts"]);
  EXPECT_EQ(reading.wallAmps, expected["wallAmps"]);
  EXPECT_EQ(reading.wallWatts, expected["wallWatts"]);
  EXPECT_EQ(reading.systemWatts, expected["systemWatts"]);
  EXPECT_EQ(reading.batteryWatts, expected["batteryWatts"]);
  EXPECT_EQ(optional(reading.temperatureC), expected["temperatureC"]);
}

INSTANTIATE_TEST_SUITE_P(Fixtures, ReadRegistry, testing::ValuesIn(fixtureNames("registry")),
                         [](const auto& test) { return testName(test.param); });

}  // namespace lumowatt
