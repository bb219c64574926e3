#include "platform/linux/power_supply/pack.h"

#include <gtest/gtest.h>

#include "support/mock_machine.h"

namespace lumowatt::power_supply {

namespace {

Pack packOf(const Attributes& attributes, const std::string& name = "BAT0") {
  const MockMachine machine;
  machine.supply(name, attributes);
  const sysfs::Class supplies(machine.powerSupplyFolder());
  sysfs::Device device(supplies, name);
  return readPack(device);
}

double milliamps(const Pack& pack) { return pack.battery.microamps / 1000; }
double milliwatts(const Pack& pack) { return pack.battery.picowatts / 1e9; }

}  // namespace

TEST(PackStatus, IsParsedFromTheKernelsText) {
  const auto status = [](const std::string& text) {
    return packOf(chargePack({{"status", text}})).status;
  };
  EXPECT_EQ(status("Charging\n"), Status::charging);
  EXPECT_EQ(status("Discharging"), Status::discharging);
  EXPECT_EQ(status("Not charging\n"), Status::notCharging);
  EXPECT_EQ(status("Full\n"), Status::full);
  EXPECT_EQ(status("Unknown\n"), Status::unknown);
}

TEST(PackStatus, IsUnknownIfMissingOrInvalid) {
  EXPECT_EQ(packOf(chargePack({{"status", missing}})).status, Status::unknown);
  EXPECT_EQ(packOf(chargePack({{"status", ""}})).status, Status::unknown);
  EXPECT_EQ(packOf(chargePack({{"status", "\xFFlat"}})).status, Status::unknown);
}

TEST(PackCharge, HasTheUnitChargeIfTheFullChargeIsKnown) {
  const Store store = packOf(chargePack({{"energy_full", "44000000"}})).battery.store.value();
  EXPECT_EQ(store.unit, Unit::charge);
  EXPECT_EQ(store.full, 4e6);
  EXPECT_EQ(store.now, 2e6);
  EXPECT_EQ(store.design, 5e6);
}

TEST(PackCharge, HasTheUnitEnergyIfTheFullChargeIsMissingOrZero) {
  EXPECT_EQ(packOf(energyPack()).battery.store.value().unit, Unit::energy);
  const Store store =
      packOf(energyPack({{"charge_full", "0"}, {"charge_now", "1000000"}})).battery.store.value();
  EXPECT_EQ(store.unit, Unit::energy);
  EXPECT_EQ(store.full, 50e12);
  EXPECT_EQ(store.now, 25e12);
  EXPECT_EQ(store.design, 60e12);
}

TEST(PackCharge, IsUnknownWithoutAFullCapacity) {
  EXPECT_FALSE(packOf(chargePack({{"charge_full", missing}})).battery.store);
  EXPECT_FALSE(packOf(chargePack({{"charge_full", "-4000000"}})).battery.store);
}

TEST(PackCharge, HasNoDesignCapacityIfTheDriverReports0) {
  EXPECT_EQ(packOf(chargePack({{"charge_full_design", "0"}})).battery.store->design, std::nullopt);
}

TEST(PackCharge, DerivesAMissingPresentChargeFromThePercentage) {
  EXPECT_EQ(packOf(chargePack({{"charge_now", missing}, {"capacity", "25"}})).battery.store->now,
            1e6);
}

TEST(PackCharge, ReplacesAnImplausiblePresentChargeByThePercentage) {
  const auto now = [](const std::string& chargeNow) {
    return packOf(chargePack({{"charge_now", chargeNow}, {"capacity", "25"}})).battery.store->now;
  };
  EXPECT_EQ(now("44000000"), 1e6);
  EXPECT_EQ(now("-1"), 1e6);
  EXPECT_EQ(now("6000001"), 1e6);
  EXPECT_EQ(now("6000000"), 6e6) << "1.5 times the full charge is still plausible";
  EXPECT_EQ(now("0"), 0.0);
}

TEST(PackCharge, AcceptsAFullCapacityOfOneMicroampereHour) {
  EXPECT_EQ(packOf(chargePack({{"charge_full", "1"}})).battery.store->full, 1.0);
}

TEST(PackCharge, ComputesThePresentChargeWithoutRounding) {
  const auto now = [](const std::string& chargeNow) {
    return packOf(chargePack(
                      {{"charge_full", "16777217"}, {"charge_now", chargeNow}, {"capacity", "75"}}))
        .battery.store->now;
  };
  EXPECT_EQ(now("25165825"), 25'165'825.0) << "1.5 times the full charge is 25165825.5";
  EXPECT_EQ(now("25165826"), 12'582'912.75);
}

TEST(PackCharge, IsZeroIfThePercentageIsNegative) {
  EXPECT_EQ(packOf(chargePack({{"charge_now", missing}, {"capacity", "-5"}})).battery.store->now,
            0.0);
}

TEST(PackCharge, HasNoPresentChargeWithoutChargeAndPercentage) {
  EXPECT_EQ(packOf(chargePack({{"charge_now", missing}, {"capacity", missing}})).battery.store->now,
            std::nullopt);
}

TEST(PackVoltage, FallsBackToTheAverageIfZeroOrMissing) {
  EXPECT_EQ(packOf(chargePack()).battery.microvolts, 12e6);
  EXPECT_EQ(packOf(chargePack({{"voltage_now", "0"}})).battery.microvolts, std::nullopt);
  EXPECT_EQ(
      packOf(chargePack({{"voltage_now", "0"}, {"voltage_avg", "11900000"}})).battery.microvolts,
      11.9e6);
  EXPECT_EQ(packOf(chargePack({{"voltage_now", missing}, {"voltage_avg", "0"}})).battery.microvolts,
            std::nullopt);
}

TEST(PackDesignVoltage, FallsBackFromMinimumToMaximumToPresentVoltage) {
  const auto volts = [](const std::string& least, const std::string& greatest) {
    return packOf(energyPack({{"voltage_min_design", least}, {"voltage_max_design", greatest}}))
        .battery.designMicrovolts;
  };
  EXPECT_EQ(volts("10000000", "13000000"), 10e6);
  EXPECT_EQ(volts("0", "13000000"), 13e6);
  EXPECT_EQ(volts(missing, "13000000"), 13e6);
  EXPECT_EQ(volts("1000000", "13000000"), 13e6) << "1 V is not above 1 V";
  EXPECT_EQ(volts("1000001", "13000000"), 1000001);
  EXPECT_EQ(volts("0", "0"), 12.5e6);
  EXPECT_EQ(volts(missing, missing), 12.5e6);
}

TEST(PackDesignVoltage, IsReadOnlyIfTheChargeIsKnown) {
  EXPECT_EQ(packOf(chargePack()).battery.designMicrovolts, 11e6);
  EXPECT_EQ(packOf(energyPack()).battery.designMicrovolts, 10e6);
  EXPECT_EQ(packOf(chargePack({{"charge_full", missing}})).battery.designMicrovolts, std::nullopt);
}

TEST(PackFlow, HasTheDirectionOfTheStatus) {
  EXPECT_EQ(milliamps(packOf(chargePack())), -500);
  EXPECT_EQ(milliamps(packOf(chargePack({{"current_now", "-500000"}}))), -500);
  EXPECT_EQ(milliamps(packOf(chargePack({{"status", "Charging"}}))), 500);
  EXPECT_EQ(milliamps(packOf(chargePack({{"status", "Charging"}, {"current_now", "-500000"}}))),
            500);
}

TEST(PackFlow, IsZeroIfThePackIsFull) {
  const Pack pack = packOf(chargePack({{"status", "Full"}, {"power_now", "6000000"}}));
  EXPECT_EQ(milliamps(pack), 0);
  EXPECT_EQ(milliwatts(pack), 0);
}

TEST(PackFlow, IsZeroBelow5MilliamperesIfTheStatusIsIdle) {
  for (const char* status : {"Unknown", "Not charging"}) {
    const auto current = [status](const std::string& now) {
      return milliamps(packOf(chargePack({{"status", status}, {"current_now", now}})));
    };
    EXPECT_EQ(current("4999"), 0);
    EXPECT_EQ(current("-4999"), 0);
    EXPECT_EQ(current("5000"), 5);
    EXPECT_EQ(current("-5000"), -5);
    EXPECT_EQ(current("700000"), 700);
  }
}

TEST(PackFlow, IsZeroBelow5ComputedMilliamperesIfTheStatusIsIdle) {
  const auto power = [](const std::string& now) {
    return milliwatts(packOf(energyPack({{"status", "Unknown"}, {"power_now", now}})));
  };
  EXPECT_EQ(power("62000"), 0) << "4.96 mA at 12.5 V";
  EXPECT_EQ(power("63000"), 63);
  EXPECT_EQ(power("-63000"), -63);
}

TEST(PackFlow, IsZeroBelow5MilliwattsWithoutVoltageIfTheStatusIsIdle) {
  const auto power = [](const std::string& now) {
    return milliwatts(
        packOf(energyPack({{"status", "Unknown"}, {"voltage_now", missing}, {"power_now", now}})));
  };
  EXPECT_EQ(power("4999"), 0);
  EXPECT_EQ(power("-4999"), 0);
  EXPECT_EQ(power("5000"), 5);
  EXPECT_EQ(power("-5000"), -5);
}

TEST(PackFlow, ComputesCurrentFromPowerAndPowerFromCurrent) {
  const Pack charge = packOf(chargePack());
  EXPECT_EQ(milliamps(charge), -500);
  EXPECT_EQ(milliwatts(charge), -6000);
  const Pack energy = packOf(energyPack());
  EXPECT_EQ(milliamps(energy), -400);
  EXPECT_EQ(milliwatts(energy), -5000);
}

TEST(PackFlow, ComputesTheCurrentExactly) {
  const Pack pack = packOf(energyPack({{"power_now", "167772170"}, {"voltage_now", "10000000"}}));
  EXPECT_EQ(pack.battery.microamps, -16'777'217.0);
}

TEST(PackFlow, ConsistsOfBothCurrentAndPowerIfReported) {
  const Pack pack = packOf(chargePack({{"power_now", "-5900000"}}));
  EXPECT_EQ(milliamps(pack), -500);
  EXPECT_EQ(milliwatts(pack), -5900);
}

TEST(PackFlow, FallsBackToAverages) {
  EXPECT_EQ(milliamps(packOf(chargePack({{"current_now", missing}, {"current_avg", "480000"}}))),
            -480);
  EXPECT_EQ(milliwatts(packOf(energyPack({{"power_now", "unknown"}, {"power_avg", "4900000"}}))),
            -4900);
}

TEST(PackFlow, ComputesNothingWithoutAVoltage) {
  const Pack charge = packOf(chargePack({{"voltage_now", missing}}));
  EXPECT_EQ(milliamps(charge), -500);
  EXPECT_EQ(milliwatts(charge), 0);
  const Pack energy = packOf(energyPack({{"voltage_now", "0"}}));
  EXPECT_EQ(milliamps(energy), 0);
  EXPECT_EQ(milliwatts(energy), -5000);
}

TEST(PackFlow, IsZeroIfNotReported) {
  const Pack pack = packOf(chargePack({{"current_now", missing}}));
  EXPECT_EQ(pack.status, Status::discharging);
  EXPECT_EQ(milliamps(pack), 0);
  EXPECT_EQ(milliwatts(pack), 0);
}

TEST(PackFlow, OverridesStatusChargingIfASignedDriverReportsOutflow) {
  for (const char* name : {"qcom-battmgr-bat", "macsmc-battery", "sbs-9-000b", "bq27541-0"}) {
    const Pack pack =
        packOf(chargePack({{"status", "Charging"}, {"current_now", "-700000"}}), name);
    EXPECT_EQ(pack.status, Status::discharging) << name;
    EXPECT_EQ(milliamps(pack), -700) << name;
    EXPECT_EQ(milliwatts(pack), -8400) << name;
  }
}

TEST(PackFlow, PreservesStatusChargingIfASignedDriverReportsInflow) {
  const Pack pack = packOf(chargePack({{"status", "Charging"}}), "sbs-9-000b");
  EXPECT_EQ(pack.status, Status::charging);
  EXPECT_EQ(milliamps(pack), 500);
}

TEST(PackFlow, OverridesStatusChargingEvenIfTheOutflowIsMinimal) {
  const Attributes charging = {{"status", "Charging"}, {"current_now", "-1"}};
  EXPECT_EQ(packOf(chargePack(charging), "sbs-9-000b").status, Status::discharging);
  EXPECT_EQ(
      packOf(energyPack({{"status", "Charging"}, {"power_now", "-1"}}), "macsmc-battery").status,
      Status::discharging);
}

TEST(PackFlow, OverridesOnlyTheStatusCharging) {
  for (const auto& [text, status] :
       {std::pair("Unknown", Status::unknown), std::pair("Not charging", Status::notCharging)}) {
    const Pack pack =
        packOf(chargePack({{"status", text}, {"current_now", "-700000"}}), "sbs-9-000b");
    EXPECT_EQ(pack.status, status);
    EXPECT_EQ(milliamps(pack), -700);
  }
}

TEST(PackFlow, AcceptsTheSmallestInteger) {
  EXPECT_EQ(packOf(chargePack({{"current_now", "-9223372036854775808"}})).battery.microamps,
            -9223372036854775808.0);
}

TEST(PackEstimate, MatchesTheDirectionAndPrefersPresentToAverage) {
  const Attributes estimates = {{"time_to_empty_now", "7200"},
                                {"time_to_empty_avg", "7800"},
                                {"time_to_full_now", "3600"},
                                {"time_to_full_avg", "3660"}};
  const auto secondsLeft = [&estimates](Attributes changes) {
    changes.insert(estimates.begin(), estimates.end());
    return packOf(chargePack(changes)).battery.secondsLeft;
  };
  EXPECT_EQ(secondsLeft({}), 7200);
  EXPECT_EQ(secondsLeft({{"time_to_empty_now", "0"}}), 7800);
  EXPECT_EQ(secondsLeft({{"status", "Charging"}}), 3600);
  EXPECT_EQ(secondsLeft({{"status", "Charging"}, {"time_to_full_now", "3932100"}}), 3660);
  EXPECT_EQ(secondsLeft({{"status", "Unknown"}, {"current_now", "-500000"}}), 7200);
  EXPECT_EQ(secondsLeft({{"status", "Full"}}), std::nullopt);
}

TEST(PackEstimate, IsIgnoredOutside1To65534Minutes) {
  const auto secondsLeft = [](const std::string& seconds) {
    return packOf(chargePack({{"time_to_empty_now", seconds}})).battery.secondsLeft;
  };
  EXPECT_EQ(secondsLeft("59"), std::nullopt);
  EXPECT_EQ(secondsLeft("60"), 60);
  EXPECT_EQ(secondsLeft("3932099"), 3932099);
  EXPECT_EQ(secondsLeft("3932100"), std::nullopt);
  EXPECT_EQ(secondsLeft("-120"), std::nullopt);
}

TEST(PackEstimate, IsUsedIfNeitherCurrentNorPowerIsReported) {
  const auto secondsLeft = [](const Attributes& pack) { return packOf(pack).battery.secondsLeft; };
  const Attributes discharging = {{"current_now", missing}, {"time_to_empty_now", "7200"}};
  EXPECT_EQ(secondsLeft(chargePack(discharging)), 7200);
  const Attributes charging = {
      {"power_now", "unknown"}, {"status", "Charging"}, {"time_to_full_avg", "3600"}};
  EXPECT_EQ(secondsLeft(energyPack(charging)), 3600);
  const Attributes withoutStore = {
      {"charge_full", missing}, {"current_now", missing}, {"time_to_empty_avg", "5400"}};
  EXPECT_EQ(secondsLeft(chargePack(withoutStore)), 5400);
  for (const char* status : {"Full", "Unknown", "Not charging"}) {
    const Attributes idle = {{"status", status},
                             {"current_now", missing},
                             {"time_to_empty_now", "7200"},
                             {"time_to_full_now", "3600"}};
    EXPECT_EQ(secondsLeft(chargePack(idle)), std::nullopt) << status;
  }
}

TEST(PackEstimate, IsIgnoredIfTheReportedCurrentOrPowerIsAlmostZero) {
  const auto isUsed = [](Attributes pack, const std::string& status) {
    pack.insert({{"time_to_empty_now", "7200"}, {"time_to_full_now", "7200"}});
    pack["status"] = status;
    return packOf(pack).battery.secondsLeft.has_value();
  };
  for (const char* status : {"Charging", "Discharging"}) {
    for (const char* current : {"0", "9950", "10000", "-10000"}) {
      EXPECT_FALSE(isUsed(chargePack({{"current_now", current}}), status)) << current;
      EXPECT_FALSE(isUsed(energyPack({{"power_now", current}}), status)) << current;
    }
    for (const char* current : {"10001", "-10001"}) {
      EXPECT_TRUE(isUsed(chargePack({{"current_now", current}}), status)) << current;
      EXPECT_TRUE(isUsed(energyPack({{"power_now", current}}), status)) << current;
    }
  }
}

TEST(PackEstimate, DependsOnTheCurrentElseThePowerIfTheChargeIsUnknown) {
  const auto isUsed = [](const Attributes& changes) {
    Attributes pack = {{"status", "Discharging"}, {"time_to_empty_now", "7200"}};
    pack.insert(changes.begin(), changes.end());
    return packOf(pack).battery.secondsLeft.has_value();
  };
  EXPECT_TRUE(isUsed({{"current_now", "10001"}}));
  EXPECT_FALSE(isUsed({{"current_now", "10000"}, {"power_now", "120000"}}));
  EXPECT_TRUE(isUsed({{"power_now", "10001"}}));
  EXPECT_FALSE(isUsed({{"power_now", "10000"}}));
}

TEST(PackCycles, AreUnknownUnlessPositive) {
  EXPECT_EQ(packOf(chargePack({{"cycle_count", "312"}})).battery.cycles, 312);
  EXPECT_EQ(packOf(chargePack({{"cycle_count", "1"}})).battery.cycles, 1);
  EXPECT_EQ(packOf(chargePack({{"cycle_count", missing}})).battery.cycles, std::nullopt);
  EXPECT_EQ(packOf(chargePack({{"cycle_count", "0"}})).battery.cycles, std::nullopt);
  EXPECT_EQ(packOf(chargePack({{"cycle_count", "-1"}})).battery.cycles, std::nullopt);
}

}  // namespace lumowatt::power_supply
