#include "platform/linux/power_supply/dictionary.h"

#include <gtest/gtest.h>

#include "support/json_properties.h"

namespace lumowatt::power_supply {

namespace {

using nlohmann::json;

/// Returns the state of an idle battery: 2000 of 4000 mAh at 12 V. The design values are 5000 mAh
/// and 11 V. If `unit` is energy, the capacities are multiplied by 11 V.
PowerState idleState(Unit unit = Unit::charge) {
  PowerState state;
  const double scale = unit == Unit::charge ? 1 : 11e6;
  state.battery.store = Store{unit, 4e6 * scale, 2e6 * scale, 5e6 * scale};
  state.battery.microvolts = 12e6;
  state.battery.designMicrovolts = 11e6;
  return state;
}

/// Returns the state of a battery with this current. A positive current charges it from external
/// power; a negative current discharges it.
PowerState stateWithCurrent(double amps, Unit unit = Unit::charge) {
  PowerState state = idleState(unit);
  state.battery.microamps = amps * 1e6;
  state.battery.picowatts = amps * 12e12;
  state.charging = state.external = amps > 0;
  state.discharging = amps < 0;
  return state;
}

json propertiesOf(const PowerState& state, const MeasuredPower& measured = {}) {
  return jsonFromProperties(dictionary(state, measured));
}

std::int64_t percentOf(double now, double full) {
  PowerState state = idleState();
  state.battery.store->now = now;
  state.battery.store->full = full;
  return propertiesOf(state)["CurrentCapacity"];
}

}  // namespace

TEST(Dictionary, DescribesAnIdleBattery) {
  EXPECT_EQ(propertiesOf(idleState()), json({{"MaxCapacity", 100},
                                             {"CurrentCapacity", 50},
                                             {"AppleRawCurrentCapacity", 2000},
                                             {"AppleRawMaxCapacity", 4000},
                                             {"DesignCapacity", 5000},
                                             {"Voltage", 12000},
                                             {"Amperage", 0},
                                             {"ExternalConnected", 0},
                                             {"IsCharging", 0},
                                             {"FullyCharged", 0},
                                             {"AvgTimeToEmpty", unknownMinutes},
                                             {"AvgTimeToFull", unknownMinutes},
                                             {"TimeRemaining", unknownMinutes},
                                             {"PowerTelemetryData", {{"BatteryPower", 0}}}}));
}

TEST(Dictionary, OmitsUnknownValues) {
  EXPECT_EQ(propertiesOf(PowerState()), json({{"MaxCapacity", 100},
                                              {"Voltage", 0},
                                              {"Amperage", 0},
                                              {"ExternalConnected", 0},
                                              {"IsCharging", 0},
                                              {"FullyCharged", 0},
                                              {"AvgTimeToEmpty", unknownMinutes},
                                              {"AvgTimeToFull", unknownMinutes},
                                              {"TimeRemaining", unknownMinutes},
                                              {"PowerTelemetryData", {{"BatteryPower", 0}}}}));
}

TEST(CurrentCapacity, IsTheDriversPercentageClampedTo0To100) {
  PowerState state = idleState();
  state.battery.capacity = 49;
  EXPECT_EQ(propertiesOf(state)["CurrentCapacity"], 49);
  state.battery.capacity = 104;
  EXPECT_EQ(propertiesOf(state)["CurrentCapacity"], 100);
  state.battery.capacity = -3;
  EXPECT_EQ(propertiesOf(state)["CurrentCapacity"], 0);
}

TEST(CurrentCapacity, IsComputedIfTheDriverReportsNoPercentage) {
  EXPECT_EQ(percentOf(1, 8), 13) << "12.5 rounds away from zero";
  EXPECT_EQ(percentOf(2, 3), 67);
  EXPECT_EQ(percentOf(5200, 5000), 100);
}

TEST(CurrentCapacity, IsRoundedOnce) {
  EXPECT_EQ(percentOf(20'030, 4'006'000), 1) << "0.5 %, regardless of the order of operations";
  EXPECT_EQ(percentOf(29'699'999, 60'000'000), 49) << "49.4999983";
}

TEST(CurrentCapacity, IsOmittedWithoutAPercentageAndAStore) {
  PowerState state = idleState();
  state.battery.store.reset();
  EXPECT_FALSE(propertiesOf(state).contains("CurrentCapacity"));
}

TEST(CurrentCapacity, NeedsNoDesignVoltage) {
  PowerState state = idleState(Unit::energy);
  state.battery.designMicrovolts.reset();
  const json properties = propertiesOf(state);
  EXPECT_EQ(properties["CurrentCapacity"], 50);
  EXPECT_FALSE(properties.contains("AppleRawCurrentCapacity"));
  EXPECT_FALSE(properties.contains("AppleRawMaxCapacity"));
  EXPECT_FALSE(properties.contains("DesignCapacity"));
}

TEST(RawCapacities, AreConvertedFromEnergiesWithTheDesignVoltage) {
  const json properties = propertiesOf(idleState(Unit::energy));
  EXPECT_EQ(properties["AppleRawCurrentCapacity"], 2000);
  EXPECT_EQ(properties["AppleRawMaxCapacity"], 4000);
  EXPECT_EQ(properties["DesignCapacity"], 5000);
}

TEST(RawCapacities, AreOmittedIfUnknown) {
  PowerState state = idleState();
  state.battery.store->now.reset();
  state.battery.store->design.reset();
  const json properties = propertiesOf(state);
  EXPECT_FALSE(properties.contains("CurrentCapacity"));
  EXPECT_FALSE(properties.contains("AppleRawCurrentCapacity"));
  EXPECT_EQ(properties["AppleRawMaxCapacity"], 4000);
  EXPECT_FALSE(properties.contains("DesignCapacity"));
}

TEST(DictionaryNumbers, AreRoundedHalfAwayFromZero) {
  PowerState state = stateWithCurrent(-0.0005);
  state.battery.picowatts = -1.5e9;
  state.battery.microvolts = 12'000'500;
  const json properties = propertiesOf(state);
  EXPECT_EQ(properties["Amperage"], -1);
  EXPECT_EQ(properties["PowerTelemetryData"]["BatteryPower"], -2);
  EXPECT_EQ(properties["Voltage"], 12001);
}

TEST(DictionaryNumbers, AreRoundedTowardZeroIfBarelyBelowAHalf) {
  PowerState state = stateWithCurrent(-40);
  state.battery.microamps = -40'000'499;
  state.battery.picowatts = -61'499'999'999;
  state.battery.microvolts = 40'000'499;
  const json properties = propertiesOf(state);
  EXPECT_EQ(properties["Amperage"], -40'000) << "40000.499 mA";
  EXPECT_EQ(properties["Voltage"], 40'000) << "40000.499 mV";
  EXPECT_EQ(properties["PowerTelemetryData"]["BatteryPower"], -61) << "61.499999999 mW";
  PowerState energy = idleState(Unit::energy);
  energy.battery.store->full = 44'005'499e6;
  EXPECT_EQ(propertiesOf(energy)["AppleRawMaxCapacity"], 4000) << "4000.49991 mAh at 11 V";
}

TEST(DictionaryNumbers, AreOmittedIfTheyExceed64Bits) {
  PowerState state = stateWithCurrent(-1e17);
  const json properties = propertiesOf(state);
  EXPECT_FALSE(properties.contains("Amperage"));
  EXPECT_FALSE(properties["PowerTelemetryData"].contains("BatteryPower"));
}

TEST(Temperature, IsReportedInHundredthsOfADegree) {
  PowerState state = idleState();
  state.battery.temperature = -15;
  EXPECT_EQ(propertiesOf(state)["Temperature"], -150);
  state.battery.temperature = 123'456'789;
  EXPECT_EQ(propertiesOf(state)["Temperature"], 1'234'567'890) << "implausible but exact";
}

TEST(CycleCount, IsReported) {
  PowerState state = idleState();
  state.battery.cycles = 312;
  EXPECT_EQ(propertiesOf(state)["CycleCount"], 312);
}

TEST(RemainingMinutes, AreTheTimeToEmptyWhileDischarging) {
  const json properties = propertiesOf(stateWithCurrent(-0.7));
  EXPECT_EQ(properties["AvgTimeToEmpty"], 171) << "2000 mAh at 700 mA are 171.4 min";
  EXPECT_EQ(properties["AvgTimeToFull"], unknownMinutes);
  EXPECT_EQ(properties["TimeRemaining"], 171);
}

TEST(RemainingMinutes, AreTheTimeToFullWhileCharging) {
  PowerState state = stateWithCurrent(0.7);
  state.battery.store->now = 3e6;
  const json properties = propertiesOf(state);
  EXPECT_EQ(properties["AvgTimeToEmpty"], unknownMinutes);
  EXPECT_EQ(properties["AvgTimeToFull"], 86) << "1000 mAh at 700 mA are 85.7 min";
  EXPECT_EQ(properties["TimeRemaining"], 86);
}

TEST(RemainingMinutes, AreComputedInTheUnitOfThePack) {
  EXPECT_EQ(propertiesOf(stateWithCurrent(-0.5, Unit::charge))["TimeRemaining"], 240);
  EXPECT_EQ(propertiesOf(stateWithCurrent(-0.5, Unit::energy))["TimeRemaining"], 220)
      << "22 Wh at 6 W";
}

TEST(RemainingMinutes, AreTheDriversEstimateRoundedDown) {
  PowerState state = stateWithCurrent(-0.5);
  state.battery.secondsLeft = 7199;
  EXPECT_EQ(propertiesOf(state)["TimeRemaining"], 119);
}

TEST(RemainingMinutes, UseTheDriversEstimateOnlyForThePresentDirection) {
  PowerState discharging = stateWithCurrent(-0.5);
  discharging.battery.secondsLeft = 7200;
  EXPECT_EQ(propertiesOf(discharging)["AvgTimeToEmpty"], 120);
  EXPECT_EQ(propertiesOf(discharging)["AvgTimeToFull"], unknownMinutes);
  PowerState charging = stateWithCurrent(0.5);
  charging.battery.secondsLeft = 7200;
  EXPECT_EQ(propertiesOf(charging)["AvgTimeToEmpty"], unknownMinutes);
  EXPECT_EQ(propertiesOf(charging)["AvgTimeToFull"], 120);
}

TEST(RemainingMinutes, UseTheDriversEstimateIfNoFlowIsKnown) {
  PowerState state = idleState();
  state.discharging = true;
  EXPECT_EQ(propertiesOf(state)["TimeRemaining"], unknownMinutes);
  state.battery.secondsLeft = 7200;
  EXPECT_EQ(propertiesOf(state)["TimeRemaining"], 120);
}

TEST(RemainingMinutes, AreRoundedDownIfBarelyBelowAHalf) {
  PowerState state = stateWithCurrent(-5, Unit::energy);
  state.battery.store->now = 61'499'999e6;
  state.battery.picowatts = -60e12;
  EXPECT_EQ(propertiesOf(state)["TimeRemaining"], 61) << "61.499999 Wh at 60 W";
}

TEST(RemainingMinutes, AreUnknownOutsideTheRange1To65534) {
  const auto minutesOf = [](double microampHours) {
    PowerState state = stateWithCurrent(-0.5);
    state.battery.store->now = microampHours;
    return propertiesOf(state)["TimeRemaining"];
  };
  EXPECT_EQ(minutesOf(4'166), unknownMinutes) << "0.49992";
  EXPECT_EQ(minutesOf(4'167), 1) << "0.50004";
  EXPECT_EQ(minutesOf(12'500), 2) << "1.5";
  EXPECT_EQ(minutesOf(546'116'666), 65'534) << "65533.99992";
  EXPECT_EQ(minutesOf(546'133'333), unknownMinutes) << "65535.99996";
  EXPECT_EQ(minutesOf(1e30), unknownMinutes);
}

TEST(RemainingMinutes, AreUnknownUntilFullUnlessCharging) {
  PowerState state = stateWithCurrent(0.5);
  state.charging = false;
  EXPECT_EQ(propertiesOf(state)["AvgTimeToFull"], unknownMinutes);
}

TEST(RemainingMinutes, AreUnknownWithoutAPresentCharge) {
  PowerState state = stateWithCurrent(-0.5);
  state.battery.store->now.reset();
  EXPECT_EQ(propertiesOf(state)["TimeRemaining"], unknownMinutes);
}

TEST(RemainingMinutes, AreUnknownAtUpTo10MilliamperesOrMilliwatts) {
  PowerState charge = stateWithCurrent(-0.010);
  EXPECT_EQ(propertiesOf(charge)["TimeRemaining"], unknownMinutes);
  charge.battery.microamps = -10'001;
  EXPECT_EQ(propertiesOf(charge)["TimeRemaining"], 11'999)
      << "2000 mAh at 10.001 mA are 11998.8 min";
  PowerState energy = stateWithCurrent(-1, Unit::energy);
  energy.battery.picowatts = -10e9;
  EXPECT_EQ(propertiesOf(energy)["TimeRemaining"], unknownMinutes);
  energy.battery.picowatts = -20e9;
  EXPECT_EQ(propertiesOf(energy)["TimeRemaining"], unknownMinutes) << "66000, too long";
  energy.battery.picowatts = -22e9;
  EXPECT_EQ(propertiesOf(energy)["TimeRemaining"], 60000);
}

TEST(RemainingMinutes, AreUnknownIfAChargingBatteryIsFull) {
  PowerState state = stateWithCurrent(0.5);
  state.battery.store->now = state.battery.store->full;
  EXPECT_EQ(propertiesOf(state)["AvgTimeToFull"], unknownMinutes);
  state.battery.store->now = 4.1e6;
  EXPECT_EQ(propertiesOf(state)["AvgTimeToFull"], unknownMinutes);
}

TEST(RemainingMinutes, AreUnknownIfTheFlowContradictsTheState) {
  PowerState state = stateWithCurrent(0.5);
  state.charging = false;
  state.discharging = true;
  EXPECT_EQ(propertiesOf(state)["AvgTimeToEmpty"], unknownMinutes);
}

TEST(RemainingMinutes, UseTheDriversEstimateWithoutAStore) {
  PowerState state = stateWithCurrent(-0.5);
  state.battery.store.reset();
  EXPECT_EQ(propertiesOf(state)["TimeRemaining"], unknownMinutes);
  state.battery.secondsLeft = 7200;
  EXPECT_EQ(propertiesOf(state)["TimeRemaining"], 120);
}

TEST(AdapterDetails, ContainOnlyKnownValues) {
  PowerState state = stateWithCurrent(1);
  EXPECT_FALSE(propertiesOf(state).contains("AdapterDetails"));
  state.adapterWatts = 1;
  EXPECT_EQ(propertiesOf(state)["AdapterDetails"], json({{"Watts", 1}}));
  state.adapterWatts = 65;
  EXPECT_EQ(propertiesOf(state)["AdapterDetails"], json({{"Watts", 65}}));
  state.adapterName = "Acme Brick";
  EXPECT_EQ(propertiesOf(state)["AdapterDetails"], json({{"Watts", 65}, {"Name", "Acme Brick"}}));
  state.adapterWatts = 0;
  EXPECT_EQ(propertiesOf(state)["AdapterDetails"], json({{"Name", "Acme Brick"}}));
}

TEST(PowerTelemetry, EquatesSystemLoadWithBatteryPowerOnBattery) {
  EXPECT_EQ(propertiesOf(stateWithCurrent(-0.5))["PowerTelemetryData"],
            json({{"BatteryPower", -6000}, {"SystemLoad", 6000}, {"SystemPowerIn", 0}}));
}

TEST(PowerTelemetry, ContainsOnlyMeasuredValuesOnExternalPower) {
  EXPECT_EQ(propertiesOf(stateWithCurrent(0.5))["PowerTelemetryData"],
            json({{"BatteryPower", 6000}}));
  MeasuredPower measured;
  measured.inputMilliwatts = 30123.4;
  measured.inputMillivolts = 20000;
  measured.inputMilliamps = 1506;
  measured.systemMilliwatts = 24000;
  EXPECT_EQ(propertiesOf(stateWithCurrent(0.5), measured)["PowerTelemetryData"],
            json({{"BatteryPower", 6000},
                  {"SystemPowerIn", 30123},
                  {"SystemVoltageIn", 20000},
                  {"SystemCurrentIn", 1506},
                  {"SystemLoad", 24000}}));
}

TEST(PowerTelemetry, OmitsPowerInWhenDischargingOnExternalPower) {
  PowerState state = stateWithCurrent(-0.5);
  state.external = true;
  EXPECT_EQ(propertiesOf(state)["PowerTelemetryData"], json({{"BatteryPower", -6000}}));
}

}  // namespace lumowatt::power_supply
