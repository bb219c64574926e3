#include "platform/linux/power_supply/equivalent_battery.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace lumowatt::power_supply {

namespace {

/// Returns a pack that reports energies. Parameters are in Wh, W and V.
Pack packOfEnergy(double full, double now, double watts, double designVolts = 10,
                  double volts = 12) {
  Pack pack;
  pack.battery.store = Store{Unit::energy, full * 1e12, now * 1e12, full * 1.25e12};
  pack.battery.picowatts = watts * 1e12;
  pack.battery.microamps = watts / volts * 1e6;
  pack.battery.microvolts = volts * 1e6;
  pack.battery.designMicrovolts = designVolts * 1e6;
  pack.battery.capacity = 1;
  return pack;
}

/// Returns a pack that reports charges. Parameters are in Ah, A and V.
Pack packOfCharge(double full, double now, double amps, double designVolts, double volts) {
  Pack pack = packOfEnergy(full, now, amps * volts, designVolts, volts);
  pack.battery.store = Store{Unit::charge, full * 1e6, now * 1e6, full * 1.25e6};
  return pack;
}

}  // namespace

TEST(EquivalentBattery, EqualsASinglePack) {
  Pack pack = packOfCharge(4, 2, -0.5, 11, 12);
  pack.battery.secondsLeft = 7200;
  const Battery battery = equivalentBattery({pack});
  EXPECT_EQ(battery.store->unit, Unit::charge);
  EXPECT_EQ(battery.store->full, 4e6);
  EXPECT_EQ(battery.capacity, 1);
  EXPECT_EQ(battery.secondsLeft, 7200);
}

TEST(EquivalentBattery, AddsEnergiesAndPowers) {
  const Battery battery = equivalentBattery({packOfEnergy(20, 5, 0), packOfEnergy(60, 30, -6)});
  EXPECT_EQ(battery.store->unit, Unit::energy);
  EXPECT_DOUBLE_EQ(battery.store->full, 80e12);
  EXPECT_DOUBLE_EQ(battery.store->now.value(), 35e12);
  EXPECT_DOUBLE_EQ(battery.store->design.value(), 100e12);
  EXPECT_DOUBLE_EQ(battery.picowatts, -6e12);
}

TEST(EquivalentBattery, HasTheVoltagesOfTheLargestPack) {
  const Battery battery =
      equivalentBattery({packOfEnergy(20, 5, 0, 15, 16), packOfEnergy(60, 30, -6, 10, 12)});
  EXPECT_EQ(battery.microvolts, 12e6);
  EXPECT_EQ(battery.designMicrovolts, 10e6);
  EXPECT_DOUBLE_EQ(battery.microamps, -0.5e6) << "6 W at 12 V";
}

TEST(EquivalentBattery, ComputesTheCurrentExactly) {
  Pack pack = packOfEnergy(20, 5, -160, 10, 10);
  pack.battery.picowatts = -167'772'170e6;
  const Battery battery = equivalentBattery({pack, packOfEnergy(20, 5, 0)});
  EXPECT_EQ(battery.microamps, -16'777'217.0) << "167.77217 W at 10 V";
}

TEST(EquivalentBattery, HasNoCurrentIfTheLargestPackHasNoVoltage) {
  Pack pack = packOfEnergy(60, 30, -6);
  pack.battery.microvolts.reset();
  const Battery battery = equivalentBattery({packOfEnergy(20, 5, 0), pack});
  EXPECT_EQ(battery.microvolts, std::nullopt);
  EXPECT_EQ(battery.microamps, 0);
  EXPECT_DOUBLE_EQ(battery.picowatts, -6e12);
}

TEST(EquivalentBattery, HasTheVoltagesOfTheFirstOfEquallyLargePacks) {
  const Battery battery =
      equivalentBattery({packOfEnergy(20, 5, 0, 15, 16), packOfEnergy(20, 5, 0, 10, 12)});
  EXPECT_EQ(battery.microvolts, 16e6);
}

TEST(EquivalentBattery, ConvertsChargesToEnergiesWithDesignVoltages) {
  const Battery battery =
      equivalentBattery({packOfCharge(5, 1, 0, 4, 4.2), packOfEnergy(22, 11, 0, 11, 12)});
  EXPECT_EQ(battery.designMicrovolts, 11e6) << "20 Wh versus 22 Wh";
  EXPECT_DOUBLE_EQ(battery.store->full, 42e12);
  EXPECT_DOUBLE_EQ(battery.store->now.value(), 15e12);
  EXPECT_DOUBLE_EQ(battery.store->design.value(), 52.5e12);
}

TEST(EquivalentBattery, SubtractsOpposingPowers) {
  const Battery battery = equivalentBattery({packOfEnergy(20, 5, 8), packOfEnergy(60, 30, -6)});
  EXPECT_DOUBLE_EQ(battery.picowatts, 2e12);
  EXPECT_GT(direction(battery), 0);
}

TEST(EquivalentBattery, OmitsPercentagesAndEstimatesOfDrivers) {
  Pack pack = packOfEnergy(20, 5, -2);
  pack.battery.secondsLeft = 60;
  const Battery battery = equivalentBattery({pack, pack});
  EXPECT_EQ(battery.capacity, std::nullopt);
  EXPECT_EQ(battery.secondsLeft, std::nullopt);
}

TEST(EquivalentBattery, HasTheHighestTemperatureAndCycleCount) {
  Pack first = packOfEnergy(20, 5, 0);
  first.battery.temperature = -50;
  Pack second = packOfEnergy(60, 5, 0);
  second.battery.cycles = 78;
  Pack third = packOfEnergy(10, 5, 0);
  third.battery.temperature = -60;
  third.battery.cycles = 236;
  const Battery battery = equivalentBattery({first, second, third});
  EXPECT_EQ(battery.temperature, -50);
  EXPECT_EQ(battery.cycles, 236);
}

TEST(EquivalentBattery, AddsNoEnergyForPacksOfUnknownEnergy) {
  Pack unknown = packOfEnergy(100, 50, -3, 20, 20);
  unknown.battery.store.reset();
  Pack unmeasured = packOfEnergy(30, 15, 0);
  unmeasured.battery.store->now.reset();
  Pack unmeasuredCharge = packOfCharge(3, 1, 0, 10, 12);
  unmeasuredCharge.battery.store->now.reset();
  Pack withoutVoltage = packOfCharge(5, 1, 0, 11, 12);
  withoutVoltage.battery.designMicrovolts.reset();
  Pack unknownCharge = packOfCharge(10, 5, 0, 20, 20);
  unknownCharge.battery.store.reset();
  std::vector<Pack> packs = {unknown,        unmeasured,    unmeasuredCharge,
                             withoutVoltage, unknownCharge, packOfEnergy(60, 30, -6)};
  for (int order = 0; order < 2; ++order) {
    const Battery battery = equivalentBattery(packs);
    EXPECT_DOUBLE_EQ(battery.store->full, 60e12);
    EXPECT_DOUBLE_EQ(battery.store->now.value(), 30e12);
    EXPECT_DOUBLE_EQ(battery.picowatts, -9e12) << "its power still counts";
    EXPECT_EQ(battery.designMicrovolts, 10e6);
    std::reverse(packs.begin(), packs.end());
  }
}

TEST(EquivalentBattery, HasNoDesignCapacityIfThatOfAnyPackIsUnknown) {
  for (const Pack& known : {packOfEnergy(60, 30, 0), packOfCharge(6, 3, 0, 10, 12)}) {
    Pack unknown = known;
    unknown.battery.store->design.reset();
    const std::vector<Pack> combinations[] = {
        {unknown, known}, {known, unknown}, {unknown, unknown}, {known, unknown, known}};
    for (const auto& packs : combinations) {
      EXPECT_EQ(equivalentBattery(packs).store->design, std::nullopt);
    }
  }
}

TEST(EquivalentBattery, HasThePercentageOfOnePackIfNoEnergyIsKnown) {
  Pack pack;
  pack.battery.capacity = 40;
  Pack other;
  other.battery.capacity = 60;
  const Battery battery = equivalentBattery({pack, other});
  EXPECT_FALSE(battery.store);
  EXPECT_EQ(battery.capacity, 40);
  EXPECT_EQ(battery.microamps, 0);
}

}  // namespace lumowatt::power_supply
